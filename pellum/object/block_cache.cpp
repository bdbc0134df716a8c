#include "pellum/object/block_cache.h"

#include "pellum/text/text_cache.h"

#include <cstdint>
#include <cstring>
#include <new>

namespace Pellum {

void* AllocateZeroedBlock(std::size_t size) noexcept {
    void* block = AllocateBlock(size);
    if (block != nullptr) {
        std::memset(block, 0, size);
        asm volatile("" : "+r"(block) : : "memory"); // also where the linker optimises
    }
    return block;
}

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

/// Of the list for blocks of the size. The first list, for blocks of nothing, stays empty.
constexpr std::size_t IndexOf(std::size_t size) {
    return (size + kStep - 1) / kStep;
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

/// Prepares the thread for keeping blocks.
void Open() {
    static thread_local const Closer closer;
    cache.isOpened = true;
    for (std::size_t i = 1; i <= kLargest / kStep; ++i) {
        cache.lists[i].room = static_cast<std::uint32_t>(kMostBytes / (i * kStep));
    }
}

/// Frees a block for which there is no room. The first that a thread frees makes room, unless it is too late.
[[gnu::noinline]] void FreeUnkept(void* block, std::size_t size) noexcept {
    if (block == nullptr || size == 0 || size > kLargest || cache.isOpened) {
        ::operator delete(block);
        return;
    }
    Open();
    FreeBlock(block, size);
}

} // namespace

void* AllocateBlock(std::size_t size) noexcept {
    if (size > kLargest) {
        return ::operator new(size, std::nothrow);
    }
    FreeList& list = cache.lists[IndexOf(size)];
    void* const block = list.first;
    if (block == nullptr) {
        return ::operator new(IndexOf(size) * kStep, std::nothrow);
    }
    list.first = Next(block);
    ++list.room;
    return block;
}

void FreeBlock(void* block, std::size_t size) noexcept {
    if (block != nullptr && size <= kLargest) {
        FreeList& list = cache.lists[IndexOf(size)];
        if (list.room != 0) {
            Next(block) = list.first;
            list.first = block;
            --list.room;
            return;
        }
    }
    FreeUnkept(block, size);
}

void ReleaseCachedBlocks() noexcept {
    ReleaseCachedTexts();
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
