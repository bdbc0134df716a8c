#include "tavik/codec/json/message_codec.h"
#include "tests/rpc/desk.h"
#include "tests/support/failing_allocation.h"

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <memory>
#include <new>
#include <string>

namespace {

using Pellum::Ref;
using TestSupport::FailingAllocation;
using Text = Pellum::Optional<std::string>;

const std::string kLong(100, 'a');

Tavik::CallFuture<Text> StartAct(Desk::PrinterStub& stub, const std::string& what) {
    return Tavik::StartFuture<Text>([&](auto& done, auto& item) { stub.Act(what, done, item); });
}

TEST(RpcAllocationTest, ACallThatCanNotBeStartedThrows) {
    Desktop desk;
    desk.printer->onAct = [](const std::string& what) { return what; };
    const auto stub = desk.Connect();
    StartAct(*stub, "").Get(); // the threads are there from now on
    for (int count = 1;; ++count) {
        FailingAllocation failing(count);
        try {
            auto call = StartAct(*stub, kLong);
            const bool hasFailed = failing.HasFailed();
            ASSERT_EQ(*call.Get().Peek(), kLong) << "allocation " << count;
            if (!hasFailed) {
                ASSERT_GT(count, 1);
                break;
            }
        } catch (const std::bad_alloc&) {
            EXPECT_TRUE(failing.HasFailed());
        }
    }
}

TEST(RpcAllocationTest, EveryCallComesToAnEnd) {
    Desktop desk({.threads = 1});
    std::unique_ptr<FailingAllocation> failing; // of the thread that runs methods and callbacks
    int count = 0;
    bool hasFailed = true;
    desk.printer->onAct = [&](const std::string& what) {
        if (what == "stop") {
            hasFailed = failing->HasFailed();
            failing.reset();
        } else {
            failing.reset();
            failing = std::make_unique<FailingAllocation>(count);
        }
        return Text(kLong);
    };
    const auto stub = desk.Connect();
    while (hasFailed) {
        ++count;
        auto call = StartAct(*stub, "");
        ASSERT_EQ(call.GetFuture().wait_for(std::chrono::seconds(10)), std::future_status::ready) << count;
        try {
            EXPECT_EQ(*call.Get().Peek(), kLong);
        } catch (const std::bad_alloc&) {
        } catch (const Pellum::Exception&) {} // but no broken promise
        try {
            stub->Act("stop");
        } catch (const Pellum::Exception&) {} // the failure met this call
    }
    EXPECT_GT(count, 5);
}

TEST(RpcAllocationTest, TheEndNeedsNoMemory) {
    Desktop desk;
    Ref<Tavik::InProcessAdapter> adapter(
        new Tavik::InProcessAdapter(std::make_unique<Tavik::Json::MessageCodec>(), desk.server.Get()));
    {
        const auto stub =
            Pellum::MakeRef<Desk::PhotoPrinterStub>(desk.printer->_GetRef(), adapter.Get(), nullptr);
        stub->Reset();
        Tavik::StartFuture<void>([&](auto& done, auto& item) { stub->Reset(done, item); }).Get();
    }
    const FailingAllocation failing(1);
    adapter->Shutdown();
    adapter.Reset();
    EXPECT_FALSE(failing.HasFailed());
}

} // namespace
