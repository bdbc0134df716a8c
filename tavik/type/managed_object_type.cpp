#include "tavik/type/managed_object_type.h"

#include "tavik/type/type_registry.h"
#include "tavik/value/mo_ref.h"
#include "tavik/value/scalar_array.h"

#include <new>
#include <string>

namespace Tavik {

ManagedObjectType::ManagedObjectType(const ManagedTypeInfo* info) : Type(info->type), m_managedInfo(info) {
    const auto add = [&](const MethodDescriptor* method, const PropertyDescriptor* property) {
        const int index = static_cast<int>(m_methods.size());
        m_methods.push_back(std::make_unique<ManagedMethod>(this, index, method, property));
        if (info->methodObjects != nullptr) {
            info->methodObjects[index] = m_methods.back().get();
        }
    };
    for (const MethodDescriptor* method = info->methods; method != nullptr && method->name != nullptr;
         ++method) {
        add(method, nullptr);
    }
    m_ownMethodCount = m_methods.size();
    for (const PropertyDescriptor* row = info->properties; row != nullptr && row->name != nullptr; ++row) {
        add(nullptr, row);
    }
}

ManagedObjectType::~ManagedObjectType() = default;

void ManagedObjectType::Resolve(TypeRegistry& registry) {
    if (m_managedInfo->base == nullptr) {
        return;
    }
    const Type* base = registry.FindLoading(m_managedInfo->base);
    if (base == nullptr || base->GetKind() != TypeKind::Managed) {
        registry.ReportError(
            std::string("base ") + m_managedInfo->base->name + " of type " + GetName()
            + " is not a registered managed type");
        return;
    }
    if (base->IsA(this)) {
        registry.ReportError(std::string("type ") + GetName() + " is derived from itself");
        return;
    }
    m_base = const_cast<ManagedObjectType*>(static_cast<const ManagedObjectType*>(base));
}

ArrayBase* ManagedObjectType::NewArray() const {
    return new (std::nothrow) Array<Pellum::Ref<MoRef>>;
}

ManagedObjectType* CreateManagedObjectType(const ManagedTypeInfo* info) {
    return new ManagedObjectType(info);
}

} // namespace Tavik
