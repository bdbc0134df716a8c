#pragma once

#include "pellum/error/exception.h"
#include "pellum/system/scheduled_item.h"
#include "tavik/managed/stub_adapter.h"
#include "tavik/rpc/message_codec.h"
#include "tavik/value/mo_ref.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>

namespace Tavik::Rpc {

class CallPool;
class PendingCall;

using Clock = std::chrono::steady_clock;

/// Lets other threads run until the time has come, but not for longer than it takes to fall asleep and be
/// woken: in that time a call mostly changes hands.
template <class Ready>
void YieldUntil(Ready isReady) {
    constexpr auto kPatience = std::chrono::microseconds(20);
    const Clock::time_point end = Clock::now() + kPatience;
    while (!isReady() && Clock::now() < end) {
        std::this_thread::yield();
    }
}

using Timers = std::multimap<Clock::time_point, PendingCall*>;

/// Whoever waits longer waits for ever: what the longest durations lead to is more than a clock can count.
inline constexpr Clock::duration kForever = std::chrono::hours(24 * 365 * 10);

/// How a call ended.
enum class Outcome {
    None,
    Response, ///< by what the server answered
    TimedOut,
    Cancelled,
    Closed,
    QueueFull,
    NoMemory,
};

/// What is known of a call as long as it lasts.
struct CallFacts {
    CallFacts(const StubAdapter::Call& call, std::optional<Clock::duration> defaultTimeout);

    ResponseForm GetForm() const { return {*method, version, correlationId}; }

    /// How long the caller waits yet, in whole milliseconds; nothing for ever.
    std::optional<std::chrono::milliseconds> GetTimeout() const;

    bool IsLate(Clock::time_point now) const { return deadline && now >= *deadline; }

    /// The exception for an outcome that is no response; the caller owns it.
    std::unique_ptr<Pellum::Exception> MakeException(Outcome outcome) const;

    Pellum::Ref<MoRef> target;
    const ManagedMethod* method;
    const Version* version = nullptr;
    std::string correlationId;
    Clock::time_point startedAt = Clock::now();
    std::optional<Clock::time_point> deadline;
};

/// A call on its way through the pool. Of those who would end it exactly one claims it: who runs it, its
/// deadline, who cancels it, or the shutdown.
class PendingCall final : public Pellum::System::ScheduledItem {
public:
    /// `completion` is empty for a call that a thread waits for.
    PendingCall(CallPool& pool, CallFacts facts, std::string request, Completion completion);

    bool Cancel() override;
    bool IsDone() const override;

    const CallFacts& GetFacts() const { return m_facts; }

    const std::string& GetRequest() const { return m_request; }

    bool IsSynchronous() const { return m_isSynchronous; }

    /// True for the first one who asks; the call ends the way that this one says.
    bool Claim() { return !m_claimed.exchange(true, std::memory_order_acq_rel); }

    bool IsClaimed() const { return m_claimed.load(std::memory_order_acquire); }

    /// For the method: nobody waits for the result any more.
    void GiveUp() { m_givenUp.store(true, std::memory_order_release); }

    const std::atomic<bool>& IsGivenUp() const { return m_givenUp; }

    // Of a synchronous call.

    /// The end, told by who claimed the call.
    void Signal(Outcome outcome, std::string response = {});
    /// Waits for the end, or the time; `Outcome::None` then.
    Outcome Wait(const std::optional<Clock::time_point>& until);

    /// After `Outcome::Response`.
    const std::string& GetResponse() const { return m_response; }

    // Of an asynchronous one.

    void SetOutcome(Outcome outcome) { m_outcome = outcome; }

    Outcome GetOutcome() const { return m_outcome; }

    /// Gives up the completion, for who claimed the call.
    Completion TakeCompletion() { return std::exchange(m_completion, nullptr); }

    /// Nothing will happen any more.
    void MarkDone() { m_done.store(true, std::memory_order_release); }

private:
    friend class CallPool;
    friend class CallQueue;
    ~PendingCall() override;

    const Pellum::Ref<CallPool> m_pool;
    const CallFacts m_facts;
    const std::string m_request;
    const bool m_isSynchronous;
    std::atomic<bool> m_claimed = false;
    std::atomic<bool> m_givenUp = false;
    std::atomic<bool> m_done = false;

    std::mutex m_mutex; ///< guards the next two for a synchronous call
    Outcome m_outcome = Outcome::None;
    std::string m_response;
    std::condition_variable m_signalled;
    std::atomic<bool> m_isOver = false; ///< there is an outcome
    Completion m_completion;

    // The pool's, under its lock.
    PendingCall* m_next = nullptr;
    PendingCall* m_previous = nullptr;
    bool m_isQueued = false;
    std::optional<Timers::iterator> m_timer;
};

/// Calls in their order, each at most in one queue, which holds a count of it. Needs no memory.
class CallQueue {
public:
    CallQueue() = default;
    CallQueue(const CallQueue&) = delete;
    CallQueue& operator=(const CallQueue&) = delete;

    bool IsEmpty() const { return m_first == nullptr; }

    std::size_t GetSize() const { return m_size; }

    /// Null when there is none.
    Pellum::Ref<PendingCall> GetFirst() const { return m_first; }

    void PushBack(PendingCall& call);
    /// Null when there is none.
    Pellum::Ref<PendingCall> PopFront();
    /// The call is in this queue.
    Pellum::Ref<PendingCall> Remove(PendingCall& call);

private:
    PendingCall* m_first = nullptr;
    PendingCall* m_last = nullptr;
    std::size_t m_size = 0;
};

} // namespace Tavik::Rpc
