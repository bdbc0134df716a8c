#include "tavik/managed/async.h"

#include <cstdlib>
#include <new>

namespace Tavik::Async {

std::exception_ptr Keep(Pellum::Exception& exception) {
    try {
        exception.Throw();
    } catch (...) {
        return std::current_exception();
    }
    std::abort(); // `Throw` throws
}

AwaitedCall::AwaitedCall() = default;
AwaitedCall::~AwaitedCall() = default;

void AwaitedCall::Complete(Pellum::Exception* exception, Any* result) {
    m_failed = exception != nullptr;
    m_exception.reset(m_failed ? exception->Clone() : nullptr);
    m_result.Reset(result);
    if (m_phase.exchange(Phase::Complete, std::memory_order_acq_rel) == Phase::Waiting) {
        m_waiting.resume();
    }
}

bool AwaitedCall::Wait(std::coroutine_handle<> waiting) {
    m_waiting = waiting;
    Phase started = Phase::Started;
    return m_phase.compare_exchange_strong(started, Phase::Waiting, std::memory_order_acq_rel);
}

bool AwaitedCall::Leave() {
    return m_phase.exchange(Phase::Left, std::memory_order_acq_rel) == Phase::Waiting;
}

Any* AwaitedCall::GetResult() {
    if (m_exception != nullptr) {
        m_exception->Throw();
    }
    if (m_failed) {
        throw std::bad_alloc();
    }
    return m_result.Get();
}

} // namespace Tavik::Async
