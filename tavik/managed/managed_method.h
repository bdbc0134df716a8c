#pragma once

#include "tavik/descriptor/records.h"
#include "tavik/export.h"

#include <vector>

namespace Tavik {

class ManagedObjectType;
class Type;
class Version;

/// A parameter or the result of a call: its description, and what that refers to.
struct CallValue {
    const PropertyDescriptor* descriptor = nullptr;
    /// Of the whole value, so that it may be an array's; null for no result, and when the library that owns
    /// the type is not loaded, which the registry reports as an error.
    const Type* type = nullptr;
    const Version* version = nullptr; ///< that introduced it; null when no library has registered it

    /// Whether it is part of `version`; a null version stands for no restriction.
    TAVIK_API bool IsPartOf(const Version* version) const;
};

/// One callable of a managed type: a method, or the getter of a property. Immutable once the type is loaded.
class TAVIK_API ManagedMethod {
public:
    /// All borrowed. Exactly one of `method` and `property` is given.
    ManagedMethod(
        const ManagedObjectType* owner, int index, const MethodDescriptor* method,
        const PropertyDescriptor* property)
        : m_owner(owner), m_index(index), m_method(method), m_property(property) {}

    /// The type that declares it, borrowed.
    const ManagedObjectType& GetOwner() const { return *m_owner; }

    /// Index for the owner's dispatch function.
    int GetIndex() const { return m_index; }

    /// Its name in the schema, "login".
    const char* GetName() const { return m_method != nullptr ? m_method->name : m_property->name; }

    /// Its name in messages, "MorvaneLogin"; a property's is that in the schema.
    const char* GetWireName() const { return m_method != nullptr ? m_method->wireName : m_property->name; }

    /// The version that introduced it, by the name in its descriptor.
    const char* GetVersionName() const {
        return m_method != nullptr ? m_method->version : m_property->version;
    }

    bool IsPropertyGetter() const { return m_property != nullptr; }

    /// Null for a property getter.
    const MethodDescriptor* GetMethodDescriptor() const { return m_method; }

    /// Null for a method.
    const PropertyDescriptor* GetPropertyDescriptor() const { return m_property; }

    /// In declared order; none for a property getter.
    const std::vector<CallValue>& GetParameters() const { return m_parameters; }

    /// Of a property getter the property.
    const CallValue& GetResult() const { return m_result; }

    /// Whether the method declares that it throws faults of this type or of one that it derives from.
    bool Declares(const Type& fault) const;

    /// Whether it is part of `version`; a null version stands for no restriction.
    bool IsPartOf(const Version* version) const;

private:
    friend class ManagedObjectType;

    const ManagedObjectType* m_owner;
    int m_index;
    const MethodDescriptor* m_method;
    const PropertyDescriptor* m_property;
    std::vector<CallValue> m_parameters;
    CallValue m_result;
    std::vector<const Type*> m_faults;
    const Version* m_version = nullptr;
};

} // namespace Tavik
