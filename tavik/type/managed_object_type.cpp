#include "tavik/type/managed_object_type.h"

#include "tavik/type/descriptor_rows.h"
#include "tavik/type/type_registry.h"
#include "tavik/value/mo_ref.h"
#include "tavik/value/scalar_array.h"

#include <algorithm>
#include <new>
#include <string>

namespace Tavik {

namespace {

/// There are few, so that going through them is as fast as a table.
const ManagedMethod* FindIn(
    const std::unique_ptr<ManagedMethod>* begin, const std::unique_ptr<ManagedMethod>* end,
    std::string_view wireName) {
    const auto* found =
        std::find_if(begin, end, [&](const auto& method) { return wireName == method->GetWireName(); });
    return found == end ? nullptr : found->get();
}

} // namespace

ManagedObjectType::ManagedObjectType(const ManagedTypeInfo* info) : Type(info->type), m_managedInfo(info) {
    const auto add = [&](const MethodDescriptor* method, const PropertyDescriptor* property) {
        const int index = static_cast<int>(m_methods.size());
        m_methods.push_back(std::make_unique<ManagedMethod>(this, index, method, property));
        if (info->methodObjects != nullptr) {
            info->methodObjects[index] = m_methods.back().get();
        }
    };
    const auto methods = GetRows(info->methods);
    const auto properties = GetRows(info->properties);
    m_methods.reserve(methods.size() + properties.size());
    for (const MethodDescriptor& method : methods) {
        add(&method, nullptr);
    }
    m_ownMethodCount = m_methods.size();
    for (const PropertyDescriptor& row : properties) {
        add(nullptr, &row);
    }
}

ManagedObjectType::~ManagedObjectType() = default;

void ManagedObjectType::Resolve(TypeRegistry& registry) {
    for (const auto& method : m_methods) {
        ResolveMethod(*method, registry);
    }
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

void ManagedObjectType::ResolveMethod(ManagedMethod& method, TypeRegistry& registry) const {
    const auto find = [&](const TypeInfo* info, const char* user) {
        const Type* const type = registry.FindLoading(info);
        if (type == nullptr) {
            registry.ReportError(
                std::string("type ") + info->name + " of " + user + " of " + method.GetName() + " of "
                + GetName() + " is not registered");
        }
        return type;
    };
    const auto resolve = [&](const PropertyDescriptor& row) {
        const Type* const type = find(row.type, row.name);
        return CallValue{
            &row, row.IsArray() ? Type::GetArrayType(type) : type, registry.FindLoadingVersion(row.version)};
    };
    method.m_version = registry.FindLoadingVersion(method.GetVersionName());
    const MethodDescriptor* const descriptor = method.GetMethodDescriptor();
    if (descriptor == nullptr) {
        method.m_result = resolve(*method.GetPropertyDescriptor());
        return;
    }
    if (descriptor->result.type != nullptr) {
        method.m_result = resolve(descriptor->result);
    }
    const auto parameters = GetRows(descriptor->parameters);
    method.m_parameters.reserve(parameters.size());
    for (const PropertyDescriptor& row : parameters) {
        method.m_parameters.push_back(resolve(row));
    }
    for (const TypeInfo* const* fault = descriptor->faults; fault != nullptr && *fault != nullptr; ++fault) {
        if (const Type* const type = find(*fault, "a fault")) {
            method.m_faults.push_back(type);
        }
    }
}

const ManagedMethod* ManagedObjectType::FindMethod(std::string_view wireName) const {
    return FindIn(m_methods.data(), m_methods.data() + m_ownMethodCount, wireName);
}

const ManagedMethod* ManagedObjectType::FindGetter(std::string_view propertyName) const {
    return FindIn(m_methods.data() + m_ownMethodCount, m_methods.data() + m_methods.size(), propertyName);
}

ArrayBase* ManagedObjectType::NewArray() const {
    return new (std::nothrow) Array<Pellum::Ref<MoRef>>;
}

ManagedObjectType* CreateManagedObjectType(const ManagedTypeInfo* info) {
    return new ManagedObjectType(info);
}

} // namespace Tavik
