#pragma once

#include "tavik/type/type_of.h"
#include "tavik/value/array_base.h"
#include "tavik/value/clone.h"

#include <cstddef>

namespace Tavik {

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

    /// For range-based loops over the elements, borrowed, as `T*`. Good until the array is changed.
    class Iterator {
    public:
        using difference_type = std::ptrdiff_t;
        using value_type = T*;

        TAVIK_TEMPLATE_MEMBER T* operator*() const { return static_cast<T*>(m_position->Get()); }

        TAVIK_TEMPLATE_MEMBER Iterator& operator++() {
            ++m_position;
            return *this;
        }

        TAVIK_TEMPLATE_MEMBER Iterator operator++(int) { return Iterator(m_position++); }

        friend bool operator==(const Iterator&, const Iterator&) = default;

    private:
        friend class DataArray;

        TAVIK_TEMPLATE_MEMBER explicit Iterator(const Pellum::Ref<DataObject>* position)
            : m_position(position) {}

        const Pellum::Ref<DataObject>* m_position;
    };

    TAVIK_TEMPLATE_MEMBER Iterator begin() const { return Iterator(m_elements.data()); }

    TAVIK_TEMPLATE_MEMBER Iterator end() const { return Iterator(m_elements.data() + m_elements.size()); }

    /// Appends an element; takes a count of it.
    TAVIK_TEMPLATE_MEMBER void Append(T* element) { m_elements.emplace_back(element); }

    /// Replaces the element at `index` (below the length); takes a count of the new one.
    TAVIK_TEMPLATE_MEMBER void SetElement(std::size_t index, T* element) { m_elements[index].Reset(element); }
};

} // namespace Tavik
