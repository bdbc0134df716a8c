#pragma once

#include "tavik/value/any.h"

#include <cstring>

/// Access to the storage of a `Pellum::Ref<T>` without knowing `T`, for any `T` that derives from `Any` by
/// single inheritance: such a reference is one pointer, and the pointer has the value of the pointer to its
/// `Any`.
namespace Tavik {

/// The held value, borrowed; null when unset.
inline Any* LoadRef(const void* slot) noexcept {
    Any* value = nullptr;
    std::memcpy(&value, slot, sizeof(void*));
    return value;
}

/// Takes a count of `value`, stores it and only then releases the old value.
inline void StoreRef(void* slot, Any* value) noexcept {
    if (value != nullptr) {
        value->IncRef();
    }
    const Any* old = LoadRef(slot);
    std::memcpy(slot, &value, sizeof(void*));
    if (old != nullptr) {
        old->DecRef();
    }
}

/// Stores `value` together with a count that the caller holds, and releases the old value.
inline void StoreCounted(void* slot, Any* value) noexcept {
    const Any* old = LoadRef(slot);
    std::memcpy(slot, &value, sizeof(void*));
    if (old != nullptr) {
        old->DecRef();
    }
}

} // namespace Tavik
