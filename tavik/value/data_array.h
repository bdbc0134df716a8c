#pragma once

#include "tavik/type/type_of.h"
#include "tavik/value/array_base.h"
#include "tavik/value/clone.h"

#include <cstddef>

namespace Tavik {

/// For range-based loops over the elements of a `DataArray`, borrowed, as `T*`. Good until the array is
/// changed.
template <class T>
class DataArrayIterator {
public:
    using difference_type = std::ptrdiff_t;
    using value_type = T*;

    DataArrayIterator() = default;

    explicit DataArrayIterator(const Pellum::Ref<DataObject>* position) : m_position(position) {}

    T* operator*() const { return static_cast<T*>(m_position->Get()); }

    DataArrayIterator& operator++() {
        ++m_position;
        return *this;
    }

    DataArrayIterator operator++(int) { return DataArrayIterator(m_position++); }

    friend bool operator==(const DataArrayIterator&, const DataArrayIterator&) = default;

private:
    const Pellum::Ref<DataObject>* m_position = nullptr;
};

/// An array of data objects of class `T` or derived from it. Elements are counted references and may be null.
///
/// There are as many arrays as there are classes, so next to nothing is compiled for each. Its functions
/// belong to the library that makes the array; the runtime's are named again here, so that the function table
/// is complete when the library is linked and costs nothing when it is loaded.
template <class T>
class TAVIK_TEMPLATE_API DataArray final : public DataArrayBase {
public:
    DataArray() noexcept = default;

    TAVIK_TEMPLATE_MEMBER Type* _GetType() const override { return Type::GetArrayType(GetDoType<T>()); }

    TAVIK_TEMPLATE_MEMBER DataArray* _Clone() const override {
        return static_cast<DataArray*>(CloneArray(new (std::nothrow) DataArray));
    }

    TAVIK_TEMPLATE_MEMBER Type* _GetElementType() const override { return GetDoType<T>(); }

    /// The element at `index` (below the length), borrowed.
    TAVIK_TEMPLATE_MEMBER T* operator[](std::size_t index) const {
        return static_cast<T*>(GetElement(index));
    }

    using Iterator = DataArrayIterator<T>;

    TAVIK_TEMPLATE_MEMBER Iterator begin() const { return Iterator(m_elements.data()); }

    TAVIK_TEMPLATE_MEMBER Iterator end() const { return Iterator(m_elements.data() + m_elements.size()); }

    /// Appends an element; takes a count of it.
    TAVIK_TEMPLATE_MEMBER void Append(T* element) { AppendElement(element); }

    /// Replaces the element at `index` (below the length); takes a count of the new one.
    TAVIK_TEMPLATE_MEMBER void SetElement(std::size_t index, T* element) { ReplaceElement(index, element); }
};

} // namespace Tavik
