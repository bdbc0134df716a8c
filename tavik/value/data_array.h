#pragma once

#include "tavik/type/type_of.h"
#include "tavik/value/array_base.h"
#include "tavik/value/cast.h"
#include "tavik/value/clone.h"

namespace Tavik {

/// The typed access to an array of data objects; apart, so that it is never compiled but where it is used.
template <class T>
class TypedElements : public DataArrayBase {
public:
    /// The element at `index` (below the length), borrowed.
    T* operator[](std::size_t index) const { return static_cast<T*>(GetElement(index)); }

    /// Appends an element; takes a count of it.
    void Append(T* element) { m_elements.emplace_back(element); }

    /// Replaces the element at `index` (below the length); takes a count of the new one.
    void SetElement(std::size_t index, T* element) { m_elements[index].Reset(element); }

protected:
    TypedElements() noexcept = default;
    TypedElements(const TypedElements&) = default;
};

/// An array of data objects of class `T` or derived from it. Elements are counted references and may be null.
template <class T>
class TAVIK_TEMPLATE_API DataArray final : public TypedElements<T> {
public:
    DataArray() noexcept = default;

    Type* _GetType() const override { return Type::GetArrayType(GetDoType<T>()); }

    DataArray* _Clone() const override { return CloneObject(*this); }

    Type* _GetElementType() const override { return GetDoType<T>(); }

protected:
    DataObject* CheckElement(Any* element) const override { return CastReference<T>(element); }

private:
    friend struct ObjectCloner;
    DataArray(const DataArray&) = default;
};

} // namespace Tavik
