#include "tavik/value/any.h"

#include "tavik/value/print.h"

namespace Tavik {

namespace {

/// Values nested this deep are destroyed by plain recursion; deeper ones wait in a list threaded through
/// their headers.
constexpr int kMaxDestructionDepth = 64;

thread_local int destructionDepth = 0;
thread_local const Any* waitingForDestruction = nullptr;

} // namespace

Any::~Any() = default;

std::string Any::ToString() const {
    return Print(this);
}

std::int32_t Any::GetRefCount() const noexcept {
    return static_cast<std::int32_t>(m_header.load(std::memory_order_relaxed));
}

void Any::DecRef() const noexcept {
    if (m_header.fetch_sub(1, std::memory_order_acq_rel) != 1) {
        return;
    }
    if (destructionDepth == kMaxDestructionDepth) {
        m_header.store(reinterpret_cast<std::uintptr_t>(waitingForDestruction), std::memory_order_relaxed);
        waitingForDestruction = this;
        return;
    }
    ++destructionDepth;
    delete this;
    if (destructionDepth == 1) {
        while (const Any* next = waitingForDestruction) {
            waitingForDestruction =
                reinterpret_cast<const Any*>(next->m_header.load(std::memory_order_relaxed));
            delete next;
        }
    }
    --destructionDepth;
}

} // namespace Tavik
