#include "tavik/codec/json/message_codec.h"
#include "tavik/fault/runtime_faults.h"
#include "tests/rpc/desk.h"
#include "tests/rpc/jam.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <list>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace std::chrono_literals;
using Pellum::Ref;
using Pellum::System::ScheduledItem;
using Tavik::InProcessOptions;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// How a call ended: the exception's class, or "done".
template <class Wait>
std::string EndOf(Wait wait) {
    try {
        wait();
        return "done";
    } catch (const Tavik::CallTimedOutException&) {
        return "timed out";
    } catch (const Tavik::CallCancelledException&) {
        return "cancelled";
    } catch (const Tavik::ConnectionClosedException&) {
        return "closed";
    } catch (const Tavik::QueueFullException&) {
        return "queue full";
    } catch (const std::exception& error) {
        return error.what();
    }
}

/// An asynchronous call of `act`.
Tavik::CallFuture<void> StartAct(Desk::PrinterStub& stub, const std::string& what = {}) {
    return Tavik::StartFuture<void>([&](auto& done, auto& item) { stub.Act(what, done, item); });
}

std::string EndOf(Tavik::CallFuture<void>& call) {
    if (call.GetFuture().wait_for(20s) != std::future_status::ready) {
        return "lost";
    }
    return EndOf([&] { call.Get(); });
}

/// A desktop whose printer waits at the newest gate when it is told to "wait".
class AdapterTest : public testing::Test {
protected:
    void Open(InProcessOptions options = {}) {
        gate = &m_gates.emplace_back();
        desk = std::make_unique<Desktop>(std::move(options));
        desk->printer->onAct = [this, own = gate](const std::string& what) -> Pellum::Optional<std::string> {
            if (what == "wait") {
                ++m_inside;
                own->Wait();
                wasCancelled = Tavik::ServerCall::Current()->IsCancelled();
                --m_inside;
            }
            return what;
        };
        stub = desk->Connect();
    }

    void TearDown() override {
        for (Gate& any : m_gates) {
            any.Open();
        }
        while (m_inside > 0) { // methods that an adapter has left behind
            std::this_thread::yield();
        }
    }

    /// Occupies a thread of the pool.
    Tavik::CallFuture<void> Occupy() {
        auto call = StartAct(*stub, "wait");
        EXPECT_TRUE(gate->AwaitVisitor());
        return call;
    }

    std::atomic<bool> wasCancelled = false;

private:
    std::list<Gate> m_gates;
    std::atomic<int> m_inside = 0;

protected:
    Gate* gate = nullptr;
    std::unique_ptr<Desktop> desk;
    Ref<Desk::PhotoPrinterStub> stub;
};

TEST_F(AdapterTest, CarriesCopiesBothWays) {
    Open();
    const auto sheet = Pellum::MakeRef<Desk::Sheet>();
    sheet->SetTitle("a");
    sheet->SetPassword(std::string("sesame"));
    Ref<Desk::Sheet> back;
    stub->Echo(sheet.Get(), back);
    EXPECT_NE(back.Get(), sheet.Get());
    EXPECT_TRUE(back->_IsEqual(sheet.Get(), false));
    stub->Echo(nullptr, back);
    EXPECT_EQ(back.Get(), nullptr);
    EXPECT_EQ(stub->Print(sheet.Get(), {}, "1"), 1);
    EXPECT_NE(desk->printer->lastSheet.Get(), sheet.Get());
    Ref<Tavik::DataArray<Desk::Sheet>> queue;
    stub->GetQueue(queue);
    ASSERT_EQ(queue->GetLength(), 1U);
    EXPECT_TRUE((*queue)[0]->_IsEqual(sheet.Get(), false));
    Ref<Tavik::MoRef> neighbour;
    stub->Neighbour(neighbour);
    EXPECT_EQ(neighbour->GetId(), "1");
    EXPECT_EQ(&neighbour->GetTypeInfo(), &Desk::gDeskPhotoPrinterTypeInfo);
    EXPECT_EQ(stub->Align(-3), -3'000'000'000);
}

TEST_F(AdapterTest, ThrowsFaultsAsTheirOwnClasses) {
    Open();
    desk->printer->onAct = [](const std::string& what) -> Pellum::Optional<std::string> {
        throw Desk::Jam::Exception(7, what);
    };
    try {
        stub->Act("ink");
        FAIL();
    } catch (const Desk::Jam::Exception& jam) {
        EXPECT_EQ(jam.GetFault()->GetTray(), 7);
        EXPECT_EQ(jam.GetFault()->GetWhy(), "ink");
    }
    auto call = StartAct(*stub);
    EXPECT_THROW(call.Get(), Desk::Jam::Exception);
    const auto notText = Pellum::MakeRef<Desk::Sheet>();
    notText->SetTitle("\xFF");
    EXPECT_THROW(stub->Print(notText.Get(), {}, ""), Tavik::MessageException);
    notText->SetTitle("");
    desk->printer->lastSheet = Pellum::MakeRef<Desk::Sheet>();
    EXPECT_THROW(stub->Print(nullptr, {}, ""), Orlin::Fault::InvalidArgument::Exception);
    Ref<ScheduledItem> item;
    std::string told;
    stub->Echo(
        [&] {
            notText->SetTitle("\xFF");
            return notText.Get();
        }(),
        [&](ScheduledItem* own, Pellum::Exception* exception, Tavik::Any* result) {
            EXPECT_EQ(own, item.Get());
            EXPECT_EQ(result, nullptr);
            told = exception->what();
        },
        item);
    EXPECT_THAT(told, HasSubstr("arguments.sheet.title")); // on this thread
    EXPECT_TRUE(item->IsDone());
}

TEST_F(AdapterTest, EndsAtTheDeadlineWhateverTheMethodDoes) {
    Open({.threads = 1});
    const auto hurried = desk->Connect(Within(50).Get());
    const auto start = std::chrono::steady_clock::now();
    try {
        hurried->Act("wait");
        ADD_FAILURE();
    } catch (const Tavik::CallTimedOutException& error) {
        EXPECT_THAT(
            error.what(),
            AllOf(HasSubstr("desk.Printer.act on DeskPhotoPrinter \"1\""), HasSubstr(" ms (call ")));
    }
    // The only thread is stuck: these wait for it, and are never run.
    EXPECT_EQ(EndOf([&] { desk->Connect(Within(20).Get())->Act(""); }), "timed out");
    auto call = StartAct(*desk->Connect(Within(20).Get()));
    EXPECT_EQ(EndOf(call), "timed out");
    EXPECT_LT(std::chrono::steady_clock::now() - start, 10s);
    gate->Open();
    stub->Act("");
    EXPECT_EQ(desk->printer->runs, 2);
    EXPECT_TRUE(wasCancelled);
    EXPECT_EQ(EndOf([&] { desk->Connect(Within(-1).Get())->Act(""); }), "timed out");
    EXPECT_EQ(desk->printer->runs, 2);

    Open({.defaultTimeout = 20ms});
    EXPECT_EQ(EndOf([&] { stub->Act("wait"); }), "timed out");
}

TEST_F(AdapterTest, CancelsOnceWhatHasNotCompleted) {
    Open({.threads = 1});
    auto running = Occupy();
    auto queued = StartAct(*stub);
    EXPECT_TRUE(queued.Cancel());
    EXPECT_FALSE(queued.Cancel());
    EXPECT_EQ(EndOf(queued), "cancelled");
    EXPECT_TRUE(running.Cancel());
    EXPECT_EQ(EndOf(running), "cancelled");
    gate->Open();
    auto last = StartAct(*stub);
    EXPECT_EQ(EndOf(last), "done");
    EXPECT_FALSE(last.Cancel());
    EXPECT_EQ(desk->printer->runs, 2);
    EXPECT_TRUE(wasCancelled);
}

TEST_F(AdapterTest, BoundsTheQueue) {
    Open({.threads = 1, .queueLimit = 2});
    auto running = Occupy();
    auto first = StartAct(*stub);
    auto second = StartAct(*stub);
    auto third = StartAct(*stub);
    EXPECT_EQ(EndOf(third), "queue full");
    EXPECT_EQ(EndOf([&] { desk->Connect(Within(20).Get())->Act(""); }), "timed out");
    auto patient = std::async(std::launch::async, [&] { return EndOf([&] { stub->Act(""); }); });
    EXPECT_EQ(patient.wait_for(20ms), std::future_status::timeout);
    EXPECT_TRUE(second.Cancel()); // makes room
    auto fourth = StartAct(*stub);
    gate->Open();
    EXPECT_EQ(patient.get(), "done");
    EXPECT_EQ(EndOf(first), "done");
}

TEST_F(AdapterTest, MethodsCallBackOnTheirOwnThread) {
    Open({.threads = 1, .nestingLimit = 3});
    int depth = 0;
    desk->printer->onAct = [&](const std::string& what) -> Pellum::Optional<std::string> {
        ++depth;
        EXPECT_EQ(&Tavik::ServerCall::Current()->GetTarget(), desk->printer.Get());
        return stub->Act(what);
    };
    EXPECT_EQ(
        EndOf([&] { stub->Act(""); }),
        "orlin.fault.SystemError: reason = \"the server failed to run the call\"");
    EXPECT_EQ(depth, 4);
    EXPECT_THAT(desk->GetLog().front(), HasSubstr("3 calls run inside of each other"));

    desk->printer->onAct = [&](const std::string&) -> Pellum::Optional<std::string> {
        std::this_thread::sleep_for(30ms);
        return {};
    };
    const auto late =
        Tavik::StartFuture<void>([&](auto&, auto& item) { stub->Reset([&](auto*, auto*, auto*) {}, item); });
    std::promise<std::string> nested;
    Ref<ScheduledItem> item;
    stub->Reset(
        [&](auto*, auto*, auto*) {
            nested.set_value(EndOf([&] { desk->Connect(Within(10).Get())->Act(""); }));
        },
        item);
    EXPECT_EQ(nested.get_future().get(), "timed out");
}

TEST_F(AdapterTest, SurvivesAnObjectThatGoesAway) {
    Open();
    desk->printer->onAct = [this](const std::string&) -> Pellum::Optional<std::string> {
        EXPECT_TRUE(desk->objects->Unregister(*desk->printer));
        desk->printer = nullptr; // the call has the last count
        return std::string("the end");
    };
    EXPECT_EQ(*stub->Act("").Peek(), "the end");
    EXPECT_THROW(stub->Act(""), Orlin::Fault::ManagedObjectNotFound::Exception);
    auto call = StartAct(*stub);
    EXPECT_THROW(call.Get(), Orlin::Fault::ManagedObjectNotFound::Exception);
}

TEST_F(AdapterTest, LogsWhatCallbacksThrow) {
    Open();
    Ref<ScheduledItem> item;
    stub->Reset([](auto*, auto*, auto*) { throw 5; }, item);
    while (!item->IsDone()) {
        std::this_thread::yield();
    }
    EXPECT_THAT(desk->GetLog(), ElementsAre(HasSubstr("something was thrown that is no exception")));
}

TEST_F(AdapterTest, ShutdownEndsEveryCall) {
    Open({.threads = 1, .queueLimit = 2, .shutdownTimeout = 20ms});
    auto running = Occupy();
    auto queued = StartAct(*stub);
    auto waiting = std::async(std::launch::async, [&] { return EndOf([&] { stub->Act(""); }); });
    auto crowded = std::async(std::launch::async, [&] { return EndOf([&] { stub->Act(""); }); });
    std::this_thread::sleep_for(20ms);
    desk->adapter->Shutdown();
    EXPECT_EQ(EndOf(running), "closed"); // after the timeout, by then
    EXPECT_EQ(EndOf(queued), "closed");
    EXPECT_EQ(waiting.get(), "closed");
    EXPECT_EQ(crowded.get(), "closed");
    EXPECT_EQ(EndOf([&] { stub->Act(""); }), "closed");
    auto later = StartAct(*stub);
    EXPECT_EQ(EndOf(later), "closed");
    EXPECT_FALSE(running.Cancel());
    desk->adapter->Shutdown();
    EXPECT_EQ(desk->printer->runs, 1);
    gate->Open();
}

TEST_F(AdapterTest, ShutdownWaitsForMethodsAndCallbacks) {
    Open();
    std::atomic<int> finished = 0;
    desk->printer->onAct = [&](const std::string&) -> Pellum::Optional<std::string> {
        gate->Wait();
        std::this_thread::sleep_for(30ms);
        ++finished;
        return {};
    };
    Ref<ScheduledItem> item;
    std::string result;
    stub->Act(
        "",
        [&](ScheduledItem*, Pellum::Exception* exception, Tavik::Any*) {
            std::this_thread::sleep_for(30ms);
            result = exception == nullptr ? "done" : exception->what();
            ++finished;
        },
        item);
    ASSERT_TRUE(gate->AwaitVisitor());
    gate->Open();
    desk->adapter->Shutdown();
    EXPECT_EQ(finished, 2);
    EXPECT_EQ(result, "done");
    EXPECT_TRUE(item->IsDone());
}

TEST_F(AdapterTest, MayBeShutDownAndDestroyedFromWithin) {
    for (const bool fromCompleter : {false, true}) {
        Open({.threads = 2});
        std::promise<void> shut;
        Ref<ScheduledItem> item;
        const auto context = Within(fromCompleter ? 10 : 60'000);
        // The callback holds the last count of the adapter, and of a stub.
        desk->Connect(context.Get())
            ->Act(
                fromCompleter ? "wait" : "",
                [&, last = desk->Connect()](auto*, auto*, auto*) {
                    last->_GetStubAdapter()->IncRef();
                    last->_GetStubAdapter()->DecRef();
                    desk->adapter->Shutdown();
                    EXPECT_EQ(EndOf([&] { last->Act(""); }), "closed");
                    stub = nullptr;
                    desk->adapter = nullptr;
                    shut.set_value();
                },
                item);
        EXPECT_EQ(shut.get_future().wait_for(20s), std::future_status::ready);
        gate->Open();
        while (!item->IsDone()) {
            std::this_thread::yield();
        }
        desk->adapter =
            new Tavik::InProcessAdapter(std::make_unique<Tavik::Json::MessageCodec>(), desk->server.Get());
    }
    EXPECT_THAT(desk->GetLog(), IsEmpty());
}

} // namespace
