#pragma once

#include "tavik/descriptor/records.h"
#include "tavik/export.h"

namespace Tavik {

class ManagedObjectType;

/// One callable of a managed type: a method, or the getter of a property.
class TAVIK_API ManagedMethod {
public:
    /// All borrowed. Exactly one of `method` and `property` is given.
    ManagedMethod(
        const ManagedObjectType* owner, int index, const MethodDescriptor* method,
        const PropertyDescriptor* property)
        : m_owner(owner), m_index(index), m_method(method), m_property(property) {}

    const ManagedObjectType& GetOwner() const { return *m_owner; }

    /// Index for the owner's dispatch function.
    int GetIndex() const { return m_index; }

    const char* GetName() const { return m_method != nullptr ? m_method->name : m_property->name; }

    const char* GetVersionName() const {
        return m_method != nullptr ? m_method->version : m_property->version;
    }

    bool IsPropertyGetter() const { return m_property != nullptr; }

    /// Null for a property getter.
    const MethodDescriptor* GetMethodDescriptor() const { return m_method; }

    /// Null for a method.
    const PropertyDescriptor* GetPropertyDescriptor() const { return m_property; }

private:
    const ManagedObjectType* m_owner;
    int m_index;
    const MethodDescriptor* m_method;
    const PropertyDescriptor* m_property;
};

} // namespace Tavik
