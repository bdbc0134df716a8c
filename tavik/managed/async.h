#pragma once

#include "pellum/error/exception.h"
#include "pellum/object/ref.h"
#include "pellum/system/scheduled_item.h"
#include "tavik/export.h"
#include "tavik/managed/stub_adapter.h"
#include "tavik/value/any.h"
#include "tavik/value/boxing.h"

#include <atomic>
#include <coroutine>
#include <exception>
#include <functional>
#include <future>
#include <memory>
#include <type_traits>
#include <utility>

/// Asynchronous calls as futures and as awaitables, made of the form with a callback:
///
///     auto login = Tavik::StartFuture<Pellum::Ref<Morvane::UserSession>>(
///         [&](auto& done, auto& item) { sessions->Login("anna", password, {}, done, item); });
///     const Pellum::Ref<Morvane::UserSession> session = login.Get();
///
///     co_await Tavik::Call<void>([&](auto& done, auto& item) { task->Cancel(done, item); });
///
/// The type in the brackets is that of the synchronous form's result: `void`, the scalar, `Pellum::Optional`
/// of one, or `Pellum::Ref` of the class. A result of another class is a `Pellum::TypeMismatchException`.
/// Faults and other exceptions are thrown as their own classes.
namespace Tavik {

/// Starts a call with the completion that it is given, and sets the item that stands for it.
template <class Start>
concept CallStarter =
    requires(Start& start, const Completion& completion, Pellum::Ref<Pellum::System::ScheduledItem>& item) {
    std::invoke(start, completion, item);
};

namespace Async {

template <class R>
R Unbox(Any* value) {
    static_assert(!std::is_pointer_v<R>, "the result would be gone: take a Pellum::Ref");
    if constexpr (!std::is_void_v<R>) {
        return Boxing<R>::Unbox(value);
    }
}

/// The same exception, to be thrown later on any thread.
TAVIK_API std::exception_ptr Keep(Pellum::Exception& exception);

/// What a coroutine that waits for a call shares with its completion.
class TAVIK_API AwaitedCall {
public:
    AwaitedCall();
    ~AwaitedCall();
    AwaitedCall(const AwaitedCall&) = delete;
    AwaitedCall& operator=(const AwaitedCall&) = delete;

    /// The call has ended; resumes the coroutine if it waits.
    void Complete(Pellum::Exception* exception, Any* result);
    /// The coroutine waits from here on, unless the call has ended already: false then.
    [[nodiscard]] bool Wait(std::coroutine_handle<> waiting);
    /// The coroutine is gone, or waits no more; returns whether it was waiting.
    bool Leave();
    /// The result, borrowed; throws the exception that the call ended by.
    Any* GetResult();

private:
    enum class Phase { Started, Waiting, Complete, Left };

    std::atomic<Phase> m_phase = Phase::Started;
    std::coroutine_handle<> m_waiting;
    std::unique_ptr<Pellum::Exception> m_exception;
    bool m_failed = false;
    Pellum::Ref<Any> m_result;
};

} // namespace Async

/// A call that was started, and its result. Letting go of it does not cancel the call.
template <class R>
class CallFuture {
public:
    /// Both are parts of one call.
    CallFuture(std::future<R> future, Pellum::Ref<Pellum::System::ScheduledItem> item)
        : m_future(std::move(future)), m_item(std::move(item)) {}

    std::future<R>& GetFuture() { return m_future; }

    /// Waits for the end and gives the result, once. Not for callbacks, which must not wait.
    R Get() { return m_future.get(); }

    /// See `ScheduledItem::Cancel`.
    bool Cancel() { return m_item.Get() != nullptr && m_item->Cancel(); }

private:
    std::future<R> m_future;
    Pellum::Ref<Pellum::System::ScheduledItem> m_item;
};

/// Starts a call. Throws what `start` throws, which is only for want of memory.
template <class R, CallStarter Start>
[[nodiscard]] CallFuture<R> StartFuture(Start&& start) {
    auto promise = std::make_shared<std::promise<R>>();
    std::future<R> future = promise->get_future();
    const Completion completion = [promise = std::move(promise)](
                                      Pellum::System::ScheduledItem*, Pellum::Exception* exception,
                                      Any* result) {
        try {
            if (exception != nullptr) {
                promise->set_exception(Async::Keep(*exception));
            } else if constexpr (std::is_void_v<R>) {
                promise->set_value();
            } else {
                R value = Async::Unbox<R>(result); // what this throws is thrown before the promise is kept
                promise->set_value(std::move(value));
            }
        } catch (...) {
            promise->set_exception(std::current_exception());
        }
    };
    Pellum::Ref<Pellum::System::ScheduledItem> item;
    std::invoke(start, completion, item);
    return {std::move(future), std::move(item)};
}

/// What `Call` gives to `co_await`.
template <class R, CallStarter Start>
class [[nodiscard]] CallAwaiter {
public:
    explicit CallAwaiter(Start start) : m_start(std::move(start)) {}

    CallAwaiter(const CallAwaiter&) = delete;
    CallAwaiter& operator=(const CallAwaiter&) = delete;

    ~CallAwaiter() {
        if (m_call != nullptr && m_call->Leave() && m_item.Get() != nullptr) {
            m_item->Cancel();
        }
    }

    bool await_ready() const noexcept { return false; }

    bool await_suspend(std::coroutine_handle<> waiting) {
        m_call = std::make_shared<Async::AwaitedCall>();
        // This object is gone as soon as another thread resumes the coroutine.
        const std::shared_ptr<Async::AwaitedCall> call = m_call;
        const Completion completion =
            [call](Pellum::System::ScheduledItem*, Pellum::Exception* exception, Any* result) {
                call->Complete(exception, result);
            };
        std::invoke(m_start, completion, m_item);
        return call->Wait(waiting);
    }

    R await_resume() { return Async::Unbox<R>(m_call->GetResult()); }

private:
    Start m_start;
    std::shared_ptr<Async::AwaitedCall> m_call;
    Pellum::Ref<Pellum::System::ScheduledItem> m_item;
};

/// A call to be awaited; it is started then. The coroutine goes on where the callback of the call runs, and
/// what goes for callbacks goes for it.
///
/// A coroutine that waits may be destroyed, which cancels the call; but, as with any coroutine, not while
/// another thread resumes it: the two have to be kept apart by who destroys it.
template <class R, CallStarter Start>
CallAwaiter<R, std::decay_t<Start>> Call(Start&& start) {
    return CallAwaiter<R, std::decay_t<Start>>(std::forward<Start>(start));
}

} // namespace Tavik
