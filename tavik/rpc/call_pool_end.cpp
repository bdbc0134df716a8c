// How the calls of a pool end otherwise than by a response, and how the pool itself does.

#include "tavik/rpc/call_pool.h"

#include <algorithm>
#include <utility>

namespace Tavik::Rpc {

bool CallPool::Cancel(PendingCall& call) {
    const Lock lock(m_mutex);
    return End(call, Outcome::Cancelled);
}

bool CallPool::End(PendingCall& call, Outcome outcome) {
    if (!call.Claim()) {
        return false;
    }
    call.GiveUp();
    RemoveTimer(call);
    const Pellum::Ref<PendingCall> kept(&call);
    if (call.m_isQueued) {
        m_queue.Remove(call);
        call.m_isQueued = false;
        m_queued.store(m_queue.GetSize(), std::memory_order_relaxed);
        if (m_waitingForRoom > 0) {
            m_room.notify_one();
        }
    }
    if (call.IsSynchronous()) {
        call.Signal(outcome);
    } else {
        call.SetOutcome(outcome);
        m_ready.PushBack(call);
        m_completerWork.notify_one();
    }
    return true;
}

void CallPool::RemoveTimer(PendingCall& call) {
    if (call.m_timer) {
        m_timers.erase(*call.m_timer);
        call.m_timer.reset();
    }
}

void CallPool::EndLateCalls() {
    const Clock::time_point now = Clock::now();
    while (!m_timers.empty() && m_timers.begin()->first <= now) {
        PendingCall& call = *m_timers.begin()->second;
        if (!End(call, Outcome::TimedOut)) {
            RemoveTimer(call); // it is being completed
        }
    }
}

void CallPool::RunCompleter() {
    SetRole();
    Lock lock(m_mutex);
    for (;;) {
        EndLateCalls();
        if (const Pellum::Ref<PendingCall> call = m_ready.PopFront()) {
            lock.unlock();
            Finish(*call, call->GetOutcome());
            lock.lock();
        } else if (m_stopCompleter) {
            return;
        } else if (m_timers.empty()) {
            m_completerWork.wait(lock);
        } else {
            // A copy: the timer may be gone while this waits.
            const Clock::time_point next = m_timers.begin()->first;
            m_completerWork.wait_until(lock, next);
        }
    }
}

void CallPool::StopCompleterWhenIdle() {
    if (m_closed && m_living == 0) {
        m_stopCompleter = true;
        m_completerWork.notify_one();
    }
}

void CallPool::Shutdown() {
    {
        const Lock lock(m_mutex);
        m_closed = true;
        while (const Pellum::Ref<PendingCall> call = m_queue.GetFirst()) {
            End(*call, Outcome::Closed);
        }
        StopCompleterWhenIdle();
        m_work.notify_all();
        m_room.notify_all();
    }
    if (!IsOwnThread()) {
        const std::lock_guard only(m_shutdownMutex);
        WaitForEnd();
    }
}

void CallPool::WaitForEnd() {
    Lock lock(m_mutex);
    if (!m_hasEnded) { // who is left behind once is not waited for again
        m_finished.wait_for(
            lock, std::min(m_options.shutdownTimeout, kForever), [this] { return m_living == 0; });
    }
    m_hasEnded = true;
    for (const auto& worker : m_workers) {
        if (worker->current.Get() != nullptr) {
            End(*worker->current, Outcome::Closed);
        }
    }
    m_stopCompleter = true;
    m_completerWork.notify_one();
    m_finished.wait(lock, [this] { return m_callbacks.load() == 0; });
    // One by one, which needs no memory: this is part of the adapter's end.
    while (std::thread* const ended = FindEndedThread()) {
        std::thread thread = std::move(*ended);
        lock.unlock();
        thread.join();
        lock.lock();
    }
    lock.unlock();
    LeaveThreads();
}

std::thread* CallPool::FindEndedThread() {
    for (const auto& worker : m_workers) {
        if (worker->finished && worker->thread.joinable()) {
            return &worker->thread;
        }
    }
    return m_completer.joinable() ? &m_completer : nullptr;
}

void CallPool::LeaveThreads() {
    const Lock lock(m_mutex);
    for (const auto& worker : m_workers) {
        if (worker->thread.joinable()) {
            worker->thread.detach();
        }
    }
    if (m_completer.joinable()) {
        m_completer.detach();
    }
}

} // namespace Tavik::Rpc
