#pragma once

#include "pellum/object/block_allocator.h"
#include "pellum/object/ref.h"
#include "tavik/value/data_object.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace Tavik {

/// A multi-valued value. The virtual functions keep the order in which foreign runtimes call them: behind
/// those of `Any` the element count, then the element type.
class TAVIK_API ArrayBase : public Any {
public:
    ~ArrayBase() override;

    virtual std::size_t GetLength() const = 0;
    /// The elements' registered type, borrowed; null before its library has been loaded by the registry.
    virtual Type* _GetElementType() const = 0;

    bool IsEmpty() const { return GetLength() == 0; }

protected:
    ArrayBase() noexcept = default;
    ArrayBase(const ArrayBase&) noexcept = default;
};

/// An array of data objects: all that does not depend on their class.
class TAVIK_API DataArrayBase : public ArrayBase {
public:
    ~DataArrayBase() override;

    bool _IsEqual(const Any* other, bool partial) const override;
    void _DiffProperties(const Any* other, const std::string& prefix, PropertyDiffSet& diffs) const override;
    std::size_t GetLength() const override;

    /// The element at `index` (below the length), borrowed; may be null.
    DataObject* GetElement(std::size_t index) const { return m_elements[index].Get(); }

    void Reserve(std::size_t count) { m_elements.reserve(count); }

    void Clear() { m_elements.clear(); }

    /// Removes the element at `index` (below the length).
    void Remove(std::size_t index);
    /// Appends an element that is null or of the element type; takes a count of it. Throws
    /// `Pellum::TypeMismatchException`. Loads the types if nobody has done so yet.
    void AppendChecked(Any* element);

    /// Appends an element that is known to be null or of the element type.
    void AppendOwned(Pellum::Ref<DataObject> element) { m_elements.push_back(std::move(element)); }

protected:
    DataArrayBase() noexcept;

    /// What the typed functions of arrays do; takes a count of the element, which may be null.
    void AppendElement(DataObject* element);
    void ReplaceElement(std::size_t index, DataObject* element);

    /// Clones every element into `copy`, a new array of the same class, and returns it. Null for null;
    /// deletes `copy` when it throws `std::bad_alloc`.
    DataArrayBase* CloneArray(DataArrayBase* copy) const;

    std::vector<Pellum::Ref<DataObject>, Pellum::BlockAllocator<Pellum::Ref<DataObject>>> m_elements;
};

} // namespace Tavik
