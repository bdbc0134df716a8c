#include "tests/support/failing_allocation.h"

#include "pellum/object/block_cache.h"

#ifdef _WIN32
#include "tests/support/redirection_windows.h"
#endif

#include <atomic>
#include <cstdlib>
#include <new>

namespace TestSupport {

namespace {

std::atomic<std::ptrdiff_t> liveBlocks{0};
thread_local int untilFailure = 0; ///< 0 when nothing is to fail
thread_local bool hasFailed = false;

void* Allocate(std::size_t size) noexcept {
    if (untilFailure > 0 && --untilFailure == 0) {
        hasFailed = true;
        return nullptr;
    }
    void* block = std::malloc(size == 0 ? 1 : size);
    if (block != nullptr) {
        liveBlocks.fetch_add(1, std::memory_order_relaxed);
    }
    return block;
}

void* AllocateOrThrow(std::size_t size) {
    void* block = Allocate(size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}

void Free(void* block) noexcept {
    if (block != nullptr) {
        liveBlocks.fetch_sub(1, std::memory_order_relaxed);
    }
    std::free(block);
}

} // namespace

std::ptrdiff_t CountLiveBlocks() {
    Pellum::ReleaseCachedBlocks();
    return liveBlocks.load(std::memory_order_relaxed);
}

FailingAllocation::FailingAllocation(int count) {
    Pellum::ReleaseCachedBlocks(); // or nothing fails that finds a block there
    hasFailed = false;
    untilFailure = count;
}

FailingAllocation::~FailingAllocation() {
    untilFailure = 0;
}

bool FailingAllocation::HasFailed() const {
    return hasFailed;
}

} // namespace TestSupport

void* operator new(std::size_t size) {
    return TestSupport::AllocateOrThrow(size);
}

void* operator new[](std::size_t size) {
    return TestSupport::AllocateOrThrow(size);
}

void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return TestSupport::Allocate(size);
}

void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return TestSupport::Allocate(size);
}

void operator delete(void* block) noexcept {
    TestSupport::Free(block);
}

void operator delete[](void* block) noexcept {
    TestSupport::Free(block);
}

void operator delete(void* block, std::size_t /*size*/) noexcept {
    TestSupport::Free(block);
}

void operator delete[](void* block, std::size_t /*size*/) noexcept {
    TestSupport::Free(block);
}

void operator delete(void* block, const std::nothrow_t& /*tag*/) noexcept {
    TestSupport::Free(block);
}

void operator delete[](void* block, const std::nothrow_t& /*tag*/) noexcept {
    TestSupport::Free(block);
}

#ifdef _WIN32

namespace {

template <class Function>
Function* FindInRuntime(const char* name) {
    const FARPROC function = GetProcAddress(GetModuleHandleA("libstdc++-6.dll"), name);
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(function));
}

// The libraries call the functions of the C++ run-time library, whatever the program defines. All others of
// it come down to these two.
const TestSupport::Redirection newOfLibraries(
    FindInRuntime<void*(std::size_t)>("_Znwj"), static_cast<void* (*)(std::size_t)>(&operator new));
const TestSupport::Redirection deleteOfLibraries(
    FindInRuntime<void(void*)>("_ZdlPv"), static_cast<void (*)(void*)>(&operator delete));

} // namespace

#endif
