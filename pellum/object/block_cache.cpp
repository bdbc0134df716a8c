#include "pellum/object/block_cache.h"

#include <cstdint>
#include <new>

namespace Pellum {

#ifdef PELLUM_KEEPS_BLOCKS

namespace {

constexpr std::size_t kStep = 16; ///< sizes are rounded up to a multiple of it
constexpr std::size_t kLargest = 256;
constexpr std::size_t kMostBytes = std::size_t{16} * 1024; ///< of one size

struct FreeList {
    void* first = nullptr;  ///< each block begins with the address of the next one
    std::uint32_t room = 0; ///< blocks that may still be added
};

/// Has no destructor, so that every access is a plain one: `Closer` frees what is in it.
struct Cache {
    FreeList lists[kLargest / kStep + 1];
    bool isOpened = false; ///< and stays so when the thread has closed it
};

constinit thread_local Cache cache;

/// Of the list for blocks of the size; one of nothing takes one of the smallest.
constexpr std::size_t IndexOf(std::size_t size) {
    return size == 0 ? 1 : (size + kStep - 1) / kStep;
}

void*& Next(void* block) {
    return *static_cast<void**>(block);
}

/// Frees the blocks of a thread that ends.
struct Closer {
    Closer() = default;

    ~Closer() {
        ReleaseCachedBlocks();
        for (FreeList& list : cache.lists) {
            list.room = 0;
        }
    }

    Closer(const Closer&) = delete;
    Closer& operator=(const Closer&) = delete;
};

/// Prepares the thread for keeping blocks; false when that was done, or when it is too late.
[[gnu::noinline]] bool Open() {
    if (cache.isOpened) {
        return false;
    }
    static thread_local const Closer closer;
    cache.isOpened = true;
    for (std::size_t i = 1; i <= kLargest / kStep; ++i) {
        cache.lists[i].room = static_cast<std::uint32_t>(kMostBytes / (i * kStep));
    }
    return true;
}

} // namespace

void* AllocateBlock(std::size_t size) noexcept {
    const std::size_t index = IndexOf(size);
    if (size > kLargest) {
        return ::operator new(size, std::nothrow);
    }
    FreeList& list = cache.lists[index];
    void* const block = list.first;
    if (block == nullptr) {
        const std::size_t rounded = index * kStep;
        return ::operator new(rounded, std::nothrow);
    }
    list.first = Next(block);
    ++list.room;
    return block;
}

void FreeBlock(void* block, std::size_t size) noexcept {
    const std::size_t index = IndexOf(size);
    if (block == nullptr || size > kLargest || (cache.lists[index].room == 0 && !Open())) {
        ::operator delete(block);
        return;
    }
    FreeList& list = cache.lists[index];
    Next(block) = list.first;
    list.first = block;
    --list.room;
}

void ReleaseCachedBlocks() noexcept {
    for (FreeList& list : cache.lists) {
        while (void* const block = list.first) {
            list.first = Next(block);
            ++list.room;
            ::operator delete(block);
        }
    }
}

#else

void* AllocateBlock(std::size_t size) noexcept {
    return ::operator new(size, std::nothrow);
}

void FreeBlock(void* block, std::size_t /*size*/) noexcept {
    ::operator delete(block);
}

void ReleaseCachedBlocks() noexcept {}

#endif

} // namespace Pellum
