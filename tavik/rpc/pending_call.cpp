#include "tavik/rpc/pending_call.h"

#include "tavik/managed/request_context.h"
#include "tavik/rpc/call_failure.h"
#include "tavik/rpc/call_pool.h"
#include "tavik/rpc/errors.h"

#include <algorithm>
#include <thread>

namespace Tavik::Rpc {

namespace {

std::string ToMilliseconds(Clock::duration duration) {
    return std::to_string(std::chrono::duration_cast<std::chrono::milliseconds>(duration).count()) + " ms";
}

} // namespace

CallFacts::CallFacts(const StubAdapter::Call& call, std::optional<Clock::duration> defaultTimeout)
    : target(&call.target), method(&call.method) {
    if (call.context != nullptr) {
        version = call.context->GetVersion();
        correlationId = call.context->GetCorrelationId();
        deadline = call.context->GetDeadline();
    }
    if (!deadline && defaultTimeout) {
        deadline = startedAt + std::min(*defaultTimeout, kForever);
    }
    if (deadline && *deadline >= startedAt + kForever) {
        deadline.reset();
    }
}

std::optional<std::chrono::milliseconds> CallFacts::GetTimeout() const {
    if (!deadline) {
        return {};
    }
    const Clock::time_point now = Clock::now();
    return std::chrono::ceil<std::chrono::milliseconds>(std::max(*deadline, now) - now);
}

std::unique_ptr<Pellum::Exception> CallFacts::MakeException(Outcome outcome) const {
    const std::string call = DescribeCall(*method, *target);
    const std::string after = " after " + ToMilliseconds(Clock::now() - startedAt)
                            + (correlationId.empty() ? "" : " (call " + correlationId + ')');
    switch (outcome) {
    case Outcome::TimedOut: return std::make_unique<CallTimedOutException>(call + " timed out" + after);
    case Outcome::Cancelled: return std::make_unique<CallCancelledException>(call + " was cancelled" + after);
    case Outcome::Closed:
        return std::make_unique<ConnectionClosedException>(call + ": the connection was closed" + after);
    case Outcome::QueueFull:
        return std::make_unique<QueueFullException>(call + ": too many calls wait already" + after);
    default: return std::make_unique<CallException>(call + ": out of memory" + after);
    }
}

PendingCall::PendingCall(CallPool& pool, CallFacts facts, std::string request, Completion completion)
    : m_pool(&pool),
      m_facts(std::move(facts)),
      m_request(std::move(request)),
      m_isSynchronous(completion == nullptr),
      m_completion(std::move(completion)) {}

PendingCall::~PendingCall() = default;

bool PendingCall::Cancel() {
    return m_pool->Cancel(*this);
}

bool PendingCall::IsDone() const {
    return m_done.load(std::memory_order_acquire);
}

void PendingCall::Signal(Outcome outcome, std::string response) {
    {
        const std::lock_guard lock(m_mutex);
        m_response = std::move(response);
        m_outcome = outcome;
        m_isOver.store(true, std::memory_order_release);
    }
    m_signalled.notify_one(); // who signals has a count of the call, too
}

Outcome PendingCall::Wait(const std::optional<Clock::time_point>& until) {
    YieldUntil([this] { return m_isOver.load(std::memory_order_acquire); });
    std::unique_lock lock(m_mutex);
    const auto isOver = [this] { return m_outcome != Outcome::None; };
    if (until) {
        m_signalled.wait_until(lock, *until, isOver);
    } else {
        m_signalled.wait(lock, isOver);
    }
    return m_outcome;
}

void CallQueue::PushBack(PendingCall& call) {
    call.IncRef();
    call.m_previous = m_last;
    call.m_next = nullptr;
    (m_last != nullptr ? m_last->m_next : m_first) = &call;
    m_last = &call;
    ++m_size;
}

Pellum::Ref<PendingCall> CallQueue::PopFront() {
    return m_first != nullptr ? Remove(*m_first) : nullptr;
}

Pellum::Ref<PendingCall> CallQueue::Remove(PendingCall& call) {
    (call.m_previous != nullptr ? call.m_previous->m_next : m_first) = call.m_next;
    (call.m_next != nullptr ? call.m_next->m_previous : m_last) = call.m_previous;
    call.m_next = call.m_previous = nullptr;
    --m_size;
    return Pellum::Ref<PendingCall>::Adopt(&call);
}

} // namespace Tavik::Rpc
