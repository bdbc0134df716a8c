#include "tavik/managed/async.h"

#include "tests/rpc/desk.h"
#include "tests/rpc/jam.h"

#include <gtest/gtest.h>

#include <coroutine>
#include <future>
#include <string>
#include <utility>

namespace {

using Pellum::Ref;

/// A coroutine that runs by itself, or is destroyed while it waits.
struct Job {
    // NOLINTNEXTLINE(readability-identifier-naming): the language's own name.
    struct promise_type {
        Job get_return_object() { return {std::coroutine_handle<promise_type>::from_promise(*this)}; }

        std::suspend_never initial_suspend() noexcept { return {}; }

        std::suspend_never final_suspend() noexcept { return {}; }

        void return_void() {}

        void unhandled_exception() { std::terminate(); }
    };

    std::coroutine_handle<promise_type> handle;
};

TEST(AsyncTest, FuturesHaveTheResult) {
    Desktop desk;
    const auto stub = desk.Connect();
    desk.printer->onAct = [](const std::string& what) { return what; };
    auto text = Tavik::StartFuture<Pellum::Optional<std::string>>(
        [&](auto& done, auto& item) { stub->Act("a", done, item); });
    auto number =
        Tavik::StartFuture<std::int64_t>([&](auto& done, auto& item) { stub->Align(2, done, item); });
    auto reference =
        Tavik::StartFuture<Ref<Tavik::MoRef>>([&](auto& done, auto& item) { stub->Neighbour(done, item); });
    auto nothing = Tavik::StartFuture<void>([&](auto& done, auto& item) { stub->Reset(done, item); });
    auto wrong = Tavik::StartFuture<std::string>([&](auto& done, auto& item) { stub->Align(2, done, item); });
    EXPECT_EQ(*text.Get().Peek(), "a");
    EXPECT_EQ(number.Get(), 2'000'000'000);
    EXPECT_EQ(reference.Get()->GetId(), "1");
    nothing.Get();
    EXPECT_THROW(wrong.Get(), Pellum::TypeMismatchException);
    EXPECT_FALSE(nothing.Cancel());
    (void)Tavik::StartFuture<void>([&](auto& done, auto& item) { stub->Reset(done, item); }); // let go of
    desk.adapter->Shutdown();
    EXPECT_GE(desk.printer->runs, 2);
}

Job Talk(Desktop& desk, std::promise<std::string>& said) {
    const auto stub = desk.Connect();
    std::string text;
    const auto number =
        co_await Tavik::Call<std::int64_t>([&](auto& done, auto& item) { stub->Align(3, done, item); });
    text += std::to_string(number);
    co_await Tavik::Call<void>([&](auto& done, auto& item) { stub->Reset(done, item); });
    try {
        co_await Tavik::Call<void>([&](auto& done, auto& item) { stub->Act("ink", done, item); });
    } catch (const Desk::Jam::Exception& jam) {
        text += ' ' + jam.GetFault()->GetWhy();
    }
    desk.printer->onAct = [](const std::string&) { return std::string("text"); };
    try {
        co_await Tavik::Call<std::int32_t>([&](auto& done, auto& item) { stub->Act("", done, item); });
    } catch (const Pellum::TypeMismatchException&) {
        text += " mismatch";
    }
    desk.adapter->Shutdown();
    try { // ends before the coroutine waits
        co_await Tavik::Call<void>([&](auto& done, auto& item) { stub->Reset(done, item); });
    } catch (const Tavik::ConnectionClosedException&) {
        text += " closed";
    }
    said.set_value(text);
}

TEST(AsyncTest, CoroutinesGoOnWithTheResult) {
    Desktop desk;
    desk.printer->onAct = [](const std::string& what) -> Pellum::Optional<std::string> {
        throw Desk::Jam::Exception(1, what);
    };
    std::promise<std::string> said;
    Talk(desk, said);
    EXPECT_EQ(said.get_future().get(), "3000000000 ink mismatch closed");
}

Job WaitFor(Desk::PrinterStub& stub, bool& wentOn) {
    co_await Tavik::Call<void>([&](auto& done, auto& item) { stub.Act("", done, item); });
    wentOn = true;
}

TEST(AsyncTest, CoroutinesMayGoWhileTheyWait) {
    Gate gate;
    std::atomic<bool> wasCancelled = false;
    Desktop desk;
    const auto stub = desk.Connect();
    desk.printer->onAct = [&](const std::string&) -> Pellum::Optional<std::string> {
        gate.Wait();
        wasCancelled = Tavik::ServerCall::Current()->IsCancelled();
        return {};
    };
    bool wentOn = false;
    const Job job = WaitFor(*stub, wentOn);
    ASSERT_TRUE(gate.AwaitVisitor());
    job.handle.destroy();
    gate.Open();
    desk.adapter->Shutdown();
    EXPECT_TRUE(wasCancelled);
    EXPECT_FALSE(wentOn);
}

} // namespace
