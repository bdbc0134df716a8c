#include "tavik/managed/server_object.h"

#include <utility>

namespace Tavik {

ServerObject::ServerObject(const TypeInfo& type, std::string id)
    : m_reference(Pellum::MakeRef<MoRef>(&type, std::move(id))) {}

ServerObject::~ServerObject() = default;

MoRef* ServerObject::_GetRef() const {
    return m_reference.Get();
}

void ServerObject::_Unregistered() {
    m_unregistered.store(true, std::memory_order_release);
}

bool ServerObject::IsUnregistered() const noexcept {
    return m_unregistered.load(std::memory_order_acquire);
}

} // namespace Tavik
