#pragma once

#include "tavik/rpc/object_table.h"
#include "tavik/value/mo_ref.h"

#include <map>
#include <mutex>
#include <string>

namespace Tavik {

class StubImpl;

namespace Rpc {

/// The live stubs of an adapter; tells them when the objects that they stand for are unregistered.
class StubTable final : public ObjectTable::Listener {
public:
    /// The stub is borrowed until `Remove`. Both are called from its constructor and destructor.
    void Add(StubImpl& stub);
    void Remove(StubImpl& stub) noexcept;

    void OnUnregistered(const MoRef& reference, const ManagedObjectType& type) noexcept override;

private:
    ~StubTable() override;

    struct Entry {
        StubImpl* stub;
        /// The counted part of the stub. The way there leads through the stub's table of virtual functions,
        /// which other threads must not use before the stub is complete, nor once it is being destroyed.
        Pellum::ObjectImpl* counted;
        Pellum::Ref<MoRef> reference;
    };

    std::mutex m_mutex;
    std::multimap<std::string, Entry, std::less<>> m_entries; ///< by the object's identifier
};

} // namespace Rpc
} // namespace Tavik
