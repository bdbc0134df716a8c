#pragma once

#include "pellum/object/ref.h"
#include "tavik/managed/stub_adapter.h"
#include "tavik/value/mo_ref.h"

#include <memory>

namespace Example {

/// A conversion service that keeps everything in memory: users log in, start conversions, watch them and read
/// what happened. What it converts is make-believe, all else is not: calls travel as messages, and the
/// service answers them on threads of its own.
///
/// Begin to read in `service.cpp`; every managed object has a file of its own.
class Service {
public:
    Service();
    /// Ends all connections and what still runs.
    ~Service();
    Service(const Service&) = delete;
    Service& operator=(const Service&) = delete;

    /// A new connection for the stubs of a client. Not from several threads at once.
    Pellum::Ref<Tavik::StubAdapter> Connect();

    /// The object that leads to all others.
    static Pellum::Ref<Tavik::MoRef> GetServiceInstance();

private:
    struct Parts;

    std::unique_ptr<Parts> m_parts;
};

} // namespace Example
