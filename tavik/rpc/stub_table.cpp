#include "tavik/rpc/stub_table.h"

#include "tavik/managed/stub_impl.h"
#include "tavik/type/managed_object_type.h"

#include <vector>

namespace Tavik::Rpc {

StubTable::~StubTable() = default;

void StubTable::Add(StubImpl& stub) {
    MoRef* const reference = stub._GetRef();
    const std::lock_guard lock(m_mutex);
    m_entries.emplace(reference->GetId(), Entry{&stub, &stub, Pellum::Ref<MoRef>(reference)});
}

void StubTable::Remove(StubImpl& stub) noexcept {
    const std::lock_guard lock(m_mutex);
    const auto [begin, end] = m_entries.equal_range(stub._GetRef()->GetId());
    for (auto entry = begin; entry != end; ++entry) {
        if (entry->second.stub == &stub) {
            m_entries.erase(entry);
            return;
        }
    }
}

void StubTable::OnUnregistered(const MoRef& reference, const ManagedObjectType& type) noexcept {
    std::vector<Pellum::Ref<StubImpl>> stubs;
    try {
        const std::lock_guard lock(m_mutex);
        const auto [begin, end] = m_entries.equal_range(reference.GetId());
        for (auto entry = begin; entry != end; ++entry) {
            stubs.reserve(stubs.size() + 1); // what comes after the count was taken does not throw
            const Type* const known = entry->second.reference->_GetType();
            if (type.IsA(known) && entry->second.counted->TryIncRef()) {
                stubs.push_back(Pellum::Ref<StubImpl>::Adopt(entry->second.stub));
            }
        }
    } catch (const std::bad_alloc&) {
        // The stubs learn of it by the server's answer to their next call.
    }
    for (const auto& stub : stubs) {
        stub->_Unregistered();
    }
}

} // namespace Tavik::Rpc
