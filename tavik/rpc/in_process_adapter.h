#pragma once

#include "tavik/managed/stub_adapter.h"
#include "tavik/rpc/call_failure.h"

#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>

namespace Tavik {

class Dispatcher;
class MessageCodec;

namespace Rpc {

class CallPool;
class StubTable;

} // namespace Rpc

/// How an `InProcessAdapter` works.
struct InProcessOptions {
    using Duration = std::chrono::steady_clock::duration;

    std::size_t threads = 4;       ///< that run methods and callbacks; started when there is need, at least 1
    std::size_t queueLimit = 1000; ///< calls that wait for a thread, at least 1
    /// How long calls wait whose context has no deadline; nothing for ever.
    std::optional<Duration> defaultTimeout = std::nullopt;
    /// Calls inside of each other on one thread: an object that calls back.
    std::size_t nestingLimit = 16;
    /// How long `Shutdown` lets running methods come to an end.
    Duration shutdownTimeout = std::chrono::seconds(5);
    /// Is told what callbacks throw.
    FailureLog failureLog = nullptr;
};

/// Carries calls to a server in the same process. Nothing passes by pointer: each call is written as bytes,
/// run by a thread of the adapter's own, and answered by bytes, as it would be between machines.
///
/// A synchronous call that a server's object or a callback makes on a thread of the pool runs on that thread,
/// so that the pool can not run dry; there nobody can give up waiting, and the deadline is looked at before
/// and after. All other calls end at their deadline, whatever the method does, with `CallTimedOutException`;
/// one that still waits for a thread then is never run. The method's `ServerCall` says that it was given up,
/// but a method that never ends keeps its thread for ever.
///
/// When as many calls wait as may, synchronous ones wait for room, asynchronous ones fail with
/// `QueueFullException`.
///
/// Callbacks run on the adapter's threads: those of completed calls on one of the pool, those of calls that
/// were cancelled, timed out or cut off on one that they share. A callback may call, and start calls, and
/// shut the adapter down. It must not block for long, nor wait for the callback of another call. A call that
/// can not be started, because it can not be written, the queue is full or the adapter is shut down, is told
/// so on the calling thread, before `StartInvoke` returns.
class TAVIK_API InProcessAdapter final : public StubAdapter {
public:
    /// Takes over the codec and takes a count of the server, which other adapters may share.
    InProcessAdapter(
        std::unique_ptr<const MessageCodec> codec, Dispatcher* server, InProcessOptions options = {});

    void Invoke(const Call& call, Pellum::Ref<Any>& result) override;
    void StartInvoke(
        const Call& call, const Completion& completion,
        Pellum::Ref<Pellum::System::ScheduledItem>& item) override;
    void AddStub(StubImpl& stub) override;
    void RemoveStub(StubImpl& stub) noexcept override;

    /// Ends the connection: calls that wait and later ones fail with `ConnectionClosedException`. Returns
    /// when no callback runs any more, or will, and no method does either; but a method that does not end
    /// within the options' `shutdownTimeout` is left behind on its thread, and its call fails like the
    /// others.
    ///
    /// From a method or callback of this adapter it returns at once, and what is running comes to its end
    /// afterwards. The destructor shuts down, too, and may run there as well.
    void Shutdown();

private:
    ~InProcessAdapter() override;

    Pellum::Ref<Rpc::CallPool> m_pool;
    Pellum::Ref<Rpc::StubTable> m_stubs;
};

} // namespace Tavik
