#pragma once

#include "pellum/object/object.h"
#include "tavik/rpc/correlation_ids.h"
#include "tavik/rpc/dispatcher.h"
#include "tavik/rpc/errors.h"
#include "tavik/rpc/in_process_adapter.h"
#include "tavik/rpc/message_codec.h"
#include "tavik/rpc/pending_call.h"

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace Tavik::Rpc {

/// The threads of an `InProcessAdapter` and the calls on their way. Its threads count it, so that it outlives
/// the adapter where one of them ends that.
class CallPool final : public Pellum::ObjectImpl {
public:
    CallPool(std::unique_ptr<const MessageCodec> codec, Dispatcher* server, InProcessOptions options);

    Dispatcher& GetServer() const { return *m_server; }

    /// See `StubAdapter`, and `InProcessAdapter` for the last.
    void Invoke(const StubAdapter::Call& call, Pellum::Ref<Any>& result);
    void StartInvoke(
        const StubAdapter::Call& call, const Completion& completion,
        Pellum::Ref<Pellum::System::ScheduledItem>& item);
    void Shutdown();
    /// After `Shutdown`: lets go of the threads that could not be waited for.
    void LeaveThreads();

    bool Cancel(PendingCall& call);

private:
    /// A thread of the pool.
    struct Worker {
        std::thread thread;
        Pellum::Ref<PendingCall> current; ///< the call that it runs
        bool finished = false;
    };

    using Lock = std::unique_lock<std::mutex>;

    ~CallPool() override;

    /// The request; gives the call an identifier if it has none.
    std::string Encode(const StubAdapter::Call& call, CallFacts& facts);
    static void Throw(const CallFacts& facts, Outcome outcome);
    /// What the server has answered.
    Response Decode(const CallFacts& facts, std::string_view bytes) const;

    void InvokeInline(const CallFacts& facts, std::string_view request, Pellum::Ref<Any>& result);
    void TakeResponse(const CallFacts& facts, std::string_view bytes, Pellum::Ref<Any>& result) const;

    /// Why the call did not get into the queue; `None` when it did. Waits for room.
    Outcome Enqueue(PendingCall& call, Lock& lock);
    void StartWorker();
    /// Why an asynchronous call could not be started; null when it was.
    std::unique_ptr<Pellum::Exception> Start(PendingCall& call);

    /// Says that the calling thread is one of the pool's.
    void SetRole() const;
    bool IsOwnThread() const;

    void WaitForEnd();
    void RunWorker(Worker& worker);
    /// For a worker that has nothing to do: waits a moment without sleeping.
    void LookForWork(Lock& lock);
    void RunCompleter();
    void Run(PendingCall& call);
    void Complete(PendingCall& call, std::string_view bytes);
    /// The end of an asynchronous call, for who claimed it, while no lock is held.
    void Finish(PendingCall& call, Outcome outcome);
    void CallBack(PendingCall& call, Pellum::Exception* exception, Any* result) const;

    // Under the lock.

    /// Ends a call the way that `outcome` says, unless it has been claimed; returns whether it had not.
    bool End(PendingCall& call, Outcome outcome);
    void RemoveTimer(PendingCall& call);
    void EndLateCalls();
    void StopCompleterWhenIdle();
    /// One that can be joined; null when there is none. The completer has been told to stop.
    std::thread* FindEndedThread();

    const std::unique_ptr<const MessageCodec> m_codec;
    const Pellum::Ref<Dispatcher> m_server;
    const InProcessOptions m_options;
    CorrelationIds m_correlationIds;
    /// For when there is no memory to make another.
    const std::unique_ptr<Pellum::Exception> m_outOfMemory;

    std::mutex m_shutdownMutex; ///< held by one thread that waits for the end; taken before the other
    std::mutex m_mutex;         ///< guards what follows
    CallQueue m_queue;
    CallQueue m_ready; ///< claimed, for the completer
    Timers m_timers;   ///< of the asynchronous calls that have a deadline
    std::vector<std::unique_ptr<Worker>> m_workers;
    std::size_t m_idle = 0;                ///< workers that sleep
    std::size_t m_looking = 0;             ///< workers that are about to, and will look at the queue before
    std::atomic<std::size_t> m_queued = 0; ///< size of the queue, to be read without the lock
    std::size_t m_living = 0;              ///< workers that have not finished
    std::size_t m_waitingForRoom = 0;
    std::thread m_completer;
    bool m_stopCompleter = false;
    bool m_hasEnded = false;
    std::condition_variable m_work;
    std::condition_variable m_room;
    std::condition_variable m_completerWork;
    std::condition_variable m_finished;       ///< a worker, or a callback on one
    std::atomic<bool> m_closed = false;       ///< written under the lock
    std::atomic<std::size_t> m_callbacks = 0; ///< that run on workers, or are about to
};

} // namespace Tavik::Rpc
