#pragma once

#include "tavik/export.h"

#include <cstddef>
#include <new>

namespace Tavik {

class Any;
class Property;

/// Stores a counted deep copy of `source`, or null for null, in the `Pellum::Ref` at `slot` (see
/// `ref_slot.h`). The slot must stay in place until the outermost clone has returned: very deep parts are
/// copied then, so that the stack used does not grow with the depth. Throws `std::bad_alloc`.
TAVIK_API void CloneInto(void* slot, const Any* source);

/// The same into a counted property of `target`, which must stay in place as the slot must.
TAVIK_API void CloneInto(Any& target, const Property& property, const Any* source);

/// Makes the compiler forget what it knows of the bytes of an object that was just constructed: the empty
/// assembler statement may have read and written them.
template <class T>
T* KeepStorage(T* object) noexcept {
    asm volatile("" : "+r"(object) : : "memory");
    return object;
}

/// Builds a clone in zero-filled storage with `construct` (which may throw) and finishes its deep parts. Null
/// when out of memory for the storage.
TAVIK_API Any* CloneWith(
    const Any& source, std::size_t size, Any* (*construct)(void* storage, const Any& source));

/// Fills `copy`, a new object without a count, with `fill(*copy, source, context)` (which may throw) and
/// finishes its deep parts. Returns `copy`, null when that is null; deletes it when something throws.
TAVIK_API Any* FillClone(
    Any* copy, const Any& source, void (*fill)(Any& copy, const Any& source, const void* context),
    const void* context);

/// Gives `CloneObject` access to copy constructors that are not public: classes name it as a friend.
struct ObjectCloner {
    template <class T>
    static Any* Construct(void* storage, const Any& source) {
        return KeepStorage(::new (storage) T(static_cast<const T&>(source)));
    }
};

/// What `_Clone` of a class returns: a new copy with no count, null when out of memory for the object itself.
/// It is to be returned as it is: very deep parts of it may be copied only when the clone around it is
/// finished.
template <class T>
T* CloneObject(const T& source) {
    return static_cast<T*>(CloneWith(source, sizeof(T), &ObjectCloner::Construct<T>));
}

} // namespace Tavik
