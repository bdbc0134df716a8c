#pragma once

#include "pellum/object/object.h"
#include "pellum/object/ref.h"
#include "tavik/managed/managed_object.h"
#include "tavik/value/mo_ref.h"

#include <atomic>
#include <string>

namespace Tavik {

/// The part of a server's object that every interface asks for: its reference, its count, and whether it is
/// still registered. A server's class derives from the interface and from this:
///
///     class Clock final : public Morvane::ServiceInstance, public Tavik::ServerObject { ... };
///
/// Calls come from many threads at once; what the class itself holds has to be guarded by it.
class TAVIK_API ServerObject : public virtual Pellum::ObjectImpl, public virtual ManagedObject {
public:
    [[nodiscard]] MoRef* _GetRef() const override;
    void _Unregistered() override;

    /// Whether the object was told that calls no longer reach it.
    [[nodiscard]] bool IsUnregistered() const noexcept;

protected:
    /// `type` is borrowed: the descriptor of the interface's type. Identifiers are the server's to choose,
    /// each one once in a type.
    ServerObject(const TypeInfo& type, std::string id);
    ~ServerObject() override;

private:
    Pellum::Ref<MoRef> m_reference;
    std::atomic<bool> m_unregistered = false;
};

} // namespace Tavik
