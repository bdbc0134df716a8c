#pragma once

#include "tavik/descriptor/records.h"
#include "tavik/export.h"

#include <atomic>

namespace Tavik {

class ArrayBase;
class ArrayType;
class Version;

/// A type at run time. Types are created while a library is loaded, live until the process ends and are
/// immutable once the load is over, so that they are read from any thread without a lock.
class TAVIK_API Type {
public:
    virtual ~Type();
    Type(const Type&) = delete;
    Type& operator=(const Type&) = delete;

    const TypeInfo& GetInfo() const { return *m_info; }

    TypeKind GetKind() const { return m_info->kind; }

    /// Dotted name, "morvane.ComputerSpec".
    const char* GetName() const { return m_info->name; }

    const char* GetWireName() const { return m_info->wireName; }

    /// The version that introduced the type, borrowed; null when no library has registered it.
    virtual const Version* GetVersion() const { return m_version; }

    /// Whether the type is part of `version`; a null version stands for no restriction.
    bool IsPartOf(const Version* version) const { return version == nullptr || IsPartOf(*version); }

    /// The type this one derives from; null for a root, and for types that know no derivation.
    virtual Type* GetBaseType() const;
    /// Whether this is `other` or derives from it.
    bool IsA(const Type* other) const;

    /// A new empty array for elements of this type, created with no count. Null when out of memory.
    virtual ArrayBase* NewArray() const = 0;
    /// A new boxed value from the address of a plain value (see `GetFunction`), created with no count. Null
    /// for types whose values are objects themselves.
    virtual Any* Box(const void* value) const;

    /// The array type of an element type; null for null. Thread safe.
    static ArrayType* GetArrayType(const Type* element);

protected:
    /// `info` is borrowed and must outlive the process's use of types.
    explicit Type(const TypeInfo* info) noexcept : m_info(info) {}

private:
    friend class TypeRegistry;

    bool IsPartOf(const Version& version) const;

    const TypeInfo* m_info;
    const Version* m_version = nullptr;
    mutable std::atomic<ArrayType*> m_arrayType{nullptr};
};

/// The type of an array, made from its element type: "string[]".
class TAVIK_API ArrayType final : public Type {
public:
    ~ArrayType() override;

    const Type* GetElementType() const { return m_element; }

    const Version* GetVersion() const override { return m_element->GetVersion(); }

    ArrayBase* NewArray() const override;

private:
    friend class Type;
    struct Names;
    ArrayType(const Type* element, Names* names);

    const Type* m_element;
    Names* m_names;
};

} // namespace Tavik
