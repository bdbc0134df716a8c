#include "tavik/rpc/call_pool.h"

#include "tavik/managed/managed_method.h"
#include "tavik/managed/request_context.h"

#include <charconv>
#include <iterator>
#include <random>
#include <system_error>
#include <utility>

namespace Tavik::Rpc {

namespace {

/// What this thread is to a pool.
struct ThreadRole {
    const CallPool* pool = nullptr;
    bool isWorker = false;
    /// Whether the call that it runs was given up; null when it runs none.
    const std::atomic<bool>* givenUp = nullptr;
    std::size_t nesting = 0; ///< calls inside of that
};

thread_local ThreadRole tRole;

} // namespace

CallPool::CallPool(std::unique_ptr<const MessageCodec> codec, Dispatcher* server, InProcessOptions options)
    : m_codec(std::move(codec)),
      m_server(server),
      m_options(std::move(options)),
      m_outOfMemory(std::make_unique<CallException>("a call failed, because there is no memory")) {
    if (m_codec == nullptr || server == nullptr) {
        throw Pellum::Exception("an adapter needs a codec and a server");
    }
    if (m_options.threads == 0 || m_options.queueLimit == 0) {
        throw Pellum::Exception("an adapter needs a thread and room for a call");
    }
    m_workers.reserve(m_options.threads);
}

CallPool::~CallPool() = default;

std::string CallPool::Encode(const StubAdapter::Call& call, CallFacts& facts) {
    if (facts.correlationId.empty()) {
        facts.correlationId = m_correlationIds.Next();
    }
    std::string request;
    request.reserve(256);
    try {
        m_codec->EncodeRequest({call, facts.correlationId, facts.GetTimeout()}, request);
    } catch (const MessageException& error) {
        throw error.Of(DescribeCall(call.method, call.target));
    }
    return request;
}

Response CallPool::Decode(const CallFacts& facts, std::string_view bytes) const {
    try {
        return m_codec->DecodeResponse(bytes, facts.GetForm());
    } catch (const MessageException& error) {
        throw error.Of(DescribeCall(*facts.method, *facts.target));
    }
}

void CallPool::SetRole() const {
    tRole.pool = this;
}

bool CallPool::IsOwnThread() const {
    return tRole.pool == this;
}

void CallPool::Throw(const CallFacts& facts, Outcome outcome) {
    const std::unique_ptr<Pellum::Exception> exception = facts.MakeException(outcome);
    exception->Throw();
}

void CallPool::TakeResponse(const CallFacts& facts, std::string_view bytes, Pellum::Ref<Any>& result) const {
    Response response = Decode(facts, bytes);
    if (response.fault.Get() != nullptr) {
        response.fault->Throw();
    }
    result = std::move(response.result);
}

void CallPool::Invoke(const StubAdapter::Call& call, Pellum::Ref<Any>& result) {
    CallFacts facts(call, m_options.defaultTimeout);
    if (m_closed.load(std::memory_order_acquire)) {
        Throw(facts, Outcome::Closed);
    }
    std::string request = Encode(call, facts);
    if (IsOwnThread() && tRole.isWorker) {
        InvokeInline(facts, request, result);
        return;
    }
    const auto pending =
        Pellum::MakeRef<PendingCall>(*this, std::move(facts), std::move(request), Completion());
    const CallFacts& kept = pending->GetFacts();
    {
        Lock lock(m_mutex);
        if (const Outcome refused = Enqueue(*pending, lock); refused != Outcome::None) {
            lock.unlock();
            Throw(kept, refused);
        }
    }
    Outcome outcome = pending->Wait(kept.deadline);
    if (outcome == Outcome::None) {
        Lock lock(m_mutex);
        if (End(*pending, Outcome::TimedOut)) {
            lock.unlock();
            Throw(kept, Outcome::TimedOut);
        }
        lock.unlock();
        outcome = pending->Wait({}); // who claimed it says so in a moment
    }
    if (outcome != Outcome::Response) {
        Throw(kept, outcome);
    }
    TakeResponse(kept, pending->GetResponse(), result);
}

void CallPool::InvokeInline(const CallFacts& facts, std::string_view request, Pellum::Ref<Any>& result) {
    if (tRole.nesting >= m_options.nestingLimit) {
        throw CallException(
            DescribeCall(*facts.method, *facts.target) + ": " + std::to_string(tRole.nesting)
            + " calls run inside of each other on this thread, which is the limit");
    }
    if (facts.IsLate(Clock::now())) {
        Throw(facts, Outcome::TimedOut);
    }
    ++tRole.nesting;
    std::string response;
    try {
        response = m_server->Serve(*m_codec, request, {facts.startedAt, tRole.givenUp});
    } catch (...) {
        --tRole.nesting;
        throw;
    }
    --tRole.nesting;
    if (facts.IsLate(Clock::now())) {
        Throw(facts, Outcome::TimedOut);
    }
    TakeResponse(facts, response, result);
}

void CallPool::StartInvoke(
    const StubAdapter::Call& call, const Completion& completion,
    Pellum::Ref<Pellum::System::ScheduledItem>& item) {
    CallFacts facts(call, m_options.defaultTimeout);
    std::string request;
    std::unique_ptr<Pellum::Exception> problem;
    try {
        request = Encode(call, facts);
    } catch (const MessageException& error) {
        problem = std::make_unique<MessageException>(error);
    }
    const auto pending = Pellum::MakeRef<PendingCall>(
        *this, std::move(facts), std::move(request),
        completion ? completion : [](auto* /*item*/, auto* /*exception*/, auto* /*result*/) {});
    item = pending; // before it can complete
    if (problem == nullptr) {
        problem = Start(*pending);
    }
    if (problem != nullptr && pending->Claim()) {
        CallBack(*pending, problem.get(), nullptr);
    }
}

std::unique_ptr<Pellum::Exception> CallPool::Start(PendingCall& call) {
    Outcome refused = Outcome::None;
    try {
        Lock lock(m_mutex);
        if (!m_closed && !m_completer.joinable()) {
            m_completer = std::thread([self = Pellum::Ref<CallPool>(this)] { self->RunCompleter(); });
        }
        refused = Enqueue(call, lock);
    } catch (const CallException& error) {
        return std::make_unique<CallException>(error);
    } catch (const std::system_error& error) {
        return std::make_unique<CallException>(std::string("no thread can be started: ") + error.what());
    }
    return refused == Outcome::None ? nullptr : call.GetFacts().MakeException(refused);
}

Outcome CallPool::Enqueue(PendingCall& call, Lock& lock) {
    const auto& deadline = call.GetFacts().deadline;
    while (!m_closed && m_queue.GetSize() >= m_options.queueLimit) {
        if (!call.IsSynchronous()) {
            return Outcome::QueueFull;
        }
        if (call.GetFacts().IsLate(Clock::now())) {
            return Outcome::TimedOut;
        }
        ++m_waitingForRoom;
        if (deadline) {
            m_room.wait_until(lock, *deadline);
        } else {
            m_room.wait(lock);
        }
        --m_waitingForRoom;
    }
    if (m_closed) {
        return Outcome::Closed;
    }
    if (m_queue.GetSize() >= m_idle + m_looking && m_workers.size() < m_options.threads) {
        StartWorker();
    }
    if (deadline && !call.IsSynchronous()) {
        call.m_timer = m_timers.emplace(*deadline, &call);
        if (*call.m_timer == m_timers.begin()) {
            m_completerWork.notify_one();
        }
    }
    m_queue.PushBack(call);
    call.m_isQueued = true;
    m_queued.store(m_queue.GetSize(), std::memory_order_relaxed);
    if (m_idle > 0 && m_queue.GetSize() > m_looking) {
        m_work.notify_one();
    }
    return Outcome::None;
}

void CallPool::StartWorker() {
    auto worker = std::make_unique<Worker>();
    try {
        worker->thread = std::thread(
            [self = Pellum::Ref<CallPool>(this), worker = worker.get()] { self->RunWorker(*worker); });
    } catch (const std::system_error& error) {
        if (m_workers.empty()) {
            throw CallException(std::string("no thread can be started: ") + error.what());
        }
        return; // the others will do
    }
    m_workers.push_back(std::move(worker)); // there is room
    ++m_living;
}

void CallPool::LookForWork(Lock& lock) {
    ++m_looking;
    lock.unlock();
    YieldUntil([this] { return m_queued.load(std::memory_order_relaxed) != 0; });
    lock.lock();
    --m_looking;
}

void CallPool::RunWorker(Worker& worker) {
    SetRole();
    tRole.isWorker = true;
    Lock lock(m_mutex);
    for (;;) {
        if (m_queue.IsEmpty() && !m_closed) {
            LookForWork(lock);
        }
        while (m_queue.IsEmpty() && !m_closed) {
            ++m_idle;
            m_work.wait(lock);
            --m_idle;
        }
        if (m_queue.IsEmpty()) {
            break;
        }
        worker.current = m_queue.PopFront();
        PendingCall& call = *worker.current;
        call.m_isQueued = false;
        m_queued.store(m_queue.GetSize(), std::memory_order_relaxed);
        if (m_waitingForRoom > 0) {
            m_room.notify_one();
        }
        lock.unlock();
        Run(call);
        lock.lock();
        RemoveTimer(call);
        worker.current.Reset();
    }
    worker.finished = true;
    --m_living;
    StopCompleterWhenIdle();
    m_finished.notify_all();
}

void CallPool::Run(PendingCall& call) {
    if (call.IsClaimed()) {
        return;
    }
    const CallFacts& facts = call.GetFacts();
    if (facts.IsLate(Clock::now())) {
        const Lock lock(m_mutex);
        End(call, Outcome::TimedOut);
        return;
    }
    tRole.givenUp = &call.IsGivenUp();
    std::string response;
    Outcome outcome = Outcome::Response;
    try {
        response = m_server->Serve(*m_codec, call.GetRequest(), {facts.startedAt, &call.IsGivenUp()});
    } catch (...) {
        outcome = Outcome::NoMemory;
    }
    if (call.IsSynchronous()) {
        if (call.Claim()) {
            call.Signal(outcome, std::move(response));
        }
    } else {
        // Counted before it is claimed, so that the shutdown waits for what it can not claim.
        m_callbacks.fetch_add(1);
        tRole.givenUp = nullptr;
        if (outcome == Outcome::Response) {
            Complete(call, response);
        } else if (call.Claim()) {
            Finish(call, outcome);
        }
        if (m_callbacks.fetch_sub(1) == 1 && m_closed.load()) {
            const Lock lock(m_mutex);
            m_finished.notify_all();
        }
    }
    tRole.givenUp = nullptr;
}

void CallPool::Complete(PendingCall& call, std::string_view bytes) {
    Response response;
    std::unique_ptr<Pellum::Exception> exception;
    bool failed = false;
    try {
        response = Decode(call.GetFacts(), bytes);
        if (response.fault.Get() != nullptr) {
            failed = true;
            exception.reset(response.fault->CreateException());
        }
    } catch (const Pellum::Exception& error) {
        failed = true;
        exception.reset(error.Clone());
    } catch (...) {
        failed = true;
    }
    if (!call.Claim()) {
        return;
    }
    if (failed && exception == nullptr) {
        Finish(call, Outcome::NoMemory);
    } else {
        CallBack(call, exception.get(), response.result.Get());
    }
}

void CallPool::Finish(PendingCall& call, Outcome outcome) {
    std::unique_ptr<Pellum::Exception> exception;
    try {
        exception = call.GetFacts().MakeException(outcome);
    } catch (const std::bad_alloc&) { // NOLINT(bugprone-empty-catch): see below.
    }
    CallBack(call, exception != nullptr ? exception.get() : m_outOfMemory.get(), nullptr);
}

void CallPool::CallBack(PendingCall& call, Pellum::Exception* exception, Any* result) const {
    {
        // What the completion holds is let go of before the call is done.
        const Completion completion = call.TakeCompletion();
        try {
            completion(&call, exception, result);
        } catch (...) {
            const CallFacts& facts = call.GetFacts();
            Report(
                m_options.failureLog,
                {facts.correlationId, facts.method, facts.target.Get(), std::current_exception()});
        }
    }
    call.MarkDone();
}

} // namespace Tavik::Rpc
