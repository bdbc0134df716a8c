#include "tavik/value/any.h"

#include "pellum/object/block_cache.h"
#include "tavik/value/print.h"

namespace Tavik {

namespace {

/// Values nested this deep are destroyed by plain recursion; deeper ones wait in a list threaded through
/// their headers.
constexpr int kMaxDestructionDepth = 64;

struct DestructionState {
    int depth = 0;
    const Any* waiting = nullptr;
};

constinit thread_local DestructionState destruction;

} // namespace

void* Any::operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return Pellum::AllocateZeroedBlock(size);
}

void* Any::operator new(std::size_t size) {
    void* const storage = Pellum::AllocateZeroedBlock(size);
    if (storage == nullptr) {
        throw std::bad_alloc();
    }
    return storage;
}

void Any::operator delete(void* storage, std::size_t size) noexcept {
    Pellum::FreeBlock(storage, size);
}

void Any::operator delete(void* storage, const std::nothrow_t& /*tag*/) noexcept {
    ::operator delete(storage); // of unknown size
}

std::string Any::ToString() const {
    return Print(this);
}

std::int32_t Any::GetRefCount() const noexcept {
    return static_cast<std::int32_t>(m_header.load(std::memory_order_relaxed));
}

void Any::DecRef() const noexcept {
    // Whoever holds the only count is alone with the value: nobody can take another one meanwhile.
    if (m_header.load(std::memory_order_acquire) != 1
        && m_header.fetch_sub(1, std::memory_order_acq_rel) != 1) {
        return;
    }
    DestructionState& state = destruction;
    if (state.depth == kMaxDestructionDepth) {
        m_header.store(reinterpret_cast<std::uintptr_t>(state.waiting), std::memory_order_relaxed);
        state.waiting = this;
        return;
    }
    ++state.depth;
    delete this;
    if (state.depth == 1) {
        while (const Any* next = state.waiting) {
            state.waiting = reinterpret_cast<const Any*>(next->m_header.load(std::memory_order_relaxed));
            delete next;
        }
    }
    --state.depth;
}

} // namespace Tavik
