#pragma once

#include "tavik/managed/managed_method.h"
#include "tavik/type/type.h"

#include <memory>
#include <string_view>
#include <vector>

namespace Tavik {

class TypeRegistry;

/// A managed object type: what a managed reference refers to.
class TAVIK_API ManagedObjectType final : public Type {
public:
    /// `info` is borrowed and outlives the type; its method-object array is filled.
    explicit ManagedObjectType(const ManagedTypeInfo* info);
    ~ManagedObjectType() override;

    /// The record that the type was made from.
    const ManagedTypeInfo& GetManagedTypeInfo() const { return *m_managedInfo; }

    ManagedObjectType* GetBaseType() const override { return m_base; }

    /// The type's own methods in declared order, then one entry per own property: the property getters.
    const std::vector<std::unique_ptr<ManagedMethod>>& GetMethodObjects() const { return m_methods; }

    /// How many of them are methods.
    std::size_t GetOwnMethodCount() const { return m_ownMethodCount; }

    /// The type's own method with that wire name, or the getter of its own property of that name. Borrowed;
    /// null when there is none.
    const ManagedMethod* FindMethod(std::string_view wireName) const;
    const ManagedMethod* FindGetter(std::string_view propertyName) const;

    /// A new empty array of managed references, created with no count.
    ArrayBase* NewArray() const override;

private:
    friend class TypeRegistry;

    void Resolve(TypeRegistry& registry);
    void ResolveMethod(ManagedMethod& method, TypeRegistry& registry) const;

    const ManagedTypeInfo* m_managedInfo;
    ManagedObjectType* m_base = nullptr;
    std::vector<std::unique_ptr<ManagedMethod>> m_methods;
    std::size_t m_ownMethodCount = 0;
};

/// Makes the type object of a record and fills its method-object array; called by a library's loader
/// function. The runtime owns the object.
TAVIK_API ManagedObjectType* CreateManagedObjectType(const ManagedTypeInfo* info);

} // namespace Tavik
