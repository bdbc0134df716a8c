#pragma once

#include "pellum/object/block_cache.h"

#include <cstddef>
#include <new>

namespace Pellum {

/// Gives a container of the standard library its storage from the thread's cache of blocks (see
/// `block_cache.h`); another thread may free it. `allocate` throws `std::bad_alloc`.
template <class T>
struct BlockAllocator {
    using value_type = T;

    BlockAllocator() noexcept = default;

    template <class U>
    BlockAllocator(const BlockAllocator<U>& /*other*/) noexcept {}

    T* allocate(std::size_t count) {
        static_assert(alignof(T) <= __STDCPP_DEFAULT_NEW_ALIGNMENT__);
        void* const block =
            count <= static_cast<std::size_t>(-1) / sizeof(T) ? AllocateBlock(count * sizeof(T)) : nullptr;
        if (block == nullptr) {
            throw std::bad_alloc();
        }
        return static_cast<T*>(block);
    }

    void deallocate(T* block, std::size_t count) noexcept { FreeBlock(block, count * sizeof(T)); }

    friend bool operator==(const BlockAllocator& /*a*/, const BlockAllocator& /*b*/) noexcept { return true; }
};

} // namespace Pellum
