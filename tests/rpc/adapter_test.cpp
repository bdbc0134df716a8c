#include "tavik/codec/json/message_codec.h"
#include "tavik/fault/runtime_faults.h"
#include "tests/rpc/desk.h"
#include "tests/rpc/jam.h"
#include "tests/support/regex.h"

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
        m_gate = &m_gates.emplace_back();
        m_desk = std::make_unique<Desktop>(std::move(options));
        m_desk->printer->onAct = [this,
                                  own = m_gate](const std::string& what) -> Pellum::Optional<std::string> {
            if (what == "wait") {
                ++m_inside;
                own->Wait();
                m_wasCancelled = Tavik::ServerCall::Current()->IsCancelled();
                --m_inside;
            }
            return what;
        };
        m_stub = m_desk->Connect();
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
        auto call = StartAct(*m_stub, "wait");
        EXPECT_TRUE(m_gate->AwaitVisitor());
        return call;
    }

    std::atomic<bool> m_wasCancelled = false;

private:
    std::list<Gate> m_gates;
    std::atomic<int> m_inside = 0;

protected:
    Gate* m_gate = nullptr;
    std::unique_ptr<Desktop> m_desk;
    Ref<Desk::PhotoPrinterStub> m_stub;
};

TEST_F(AdapterTest, CarriesCopiesBothWays) {
    Open();
    const auto sheet = Pellum::MakeRef<Desk::Sheet>();
    sheet->SetTitle("a");
    sheet->SetPassword(std::string("sesame"));
    Ref<Desk::Sheet> back;
    m_stub->Echo(sheet.Get(), back);
    EXPECT_NE(back.Get(), sheet.Get());
    EXPECT_TRUE(back->_IsEqual(sheet.Get(), false));
    m_stub->Echo(nullptr, back);
    EXPECT_EQ(back.Get(), nullptr);
    EXPECT_EQ(m_stub->Print(sheet.Get(), {}, "1"), 1);
    EXPECT_NE(m_desk->printer->lastSheet.Get(), sheet.Get());
    Ref<Tavik::DataArray<Desk::Sheet>> queue;
    m_stub->GetQueue(queue);
    ASSERT_EQ(queue->GetLength(), 1U);
    EXPECT_TRUE((*queue)[0]->_IsEqual(sheet.Get(), false));
    Ref<Tavik::MoRef> neighbour;
    m_stub->Neighbour(neighbour);
    EXPECT_EQ(neighbour->GetId(), "1");
    EXPECT_EQ(&neighbour->GetTypeInfo(), &Desk::gDeskPhotoPrinterTypeInfo);
    EXPECT_EQ(m_stub->Align(-3), -3'000'000'000);
}

TEST_F(AdapterTest, ThrowsFaultsAsTheirOwnClasses) {
    Open();
    m_desk->printer->onAct = [](const std::string& what) -> Pellum::Optional<std::string> {
        throw Desk::Jam::Exception(7, what);
    };
    try {
        m_stub->Act("ink");
        FAIL();
    } catch (const Desk::Jam::Exception& jam) {
        EXPECT_EQ(jam.GetFault()->GetTray(), 7);
        EXPECT_EQ(jam.GetFault()->GetWhy(), "ink");
    }
    auto call = StartAct(*m_stub);
    EXPECT_THROW(call.Get(), Desk::Jam::Exception);
    const auto notText = Pellum::MakeRef<Desk::Sheet>();
    notText->SetTitle("\xFF");
    EXPECT_THROW(m_stub->Print(notText.Get(), {}, ""), Tavik::MessageException);
    EXPECT_THROW(m_stub->Print(nullptr, {}, ""), Orlin::Fault::InvalidArgument::Exception);
    Ref<ScheduledItem> item;
    std::string told;
    m_stub->Echo(
        notText.Get(),
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
    const auto hurried = m_desk->Connect(Within(50).Get());
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
    EXPECT_EQ(EndOf([&] { m_desk->Connect(Within(20).Get())->Act(""); }), "timed out");
    auto call = StartAct(*m_desk->Connect(Within(20).Get()));
    EXPECT_EQ(EndOf(call), "timed out");
    EXPECT_LT(std::chrono::steady_clock::now() - start, 10s);
    m_gate->Open();
    m_stub->Act("");
    EXPECT_EQ(m_desk->printer->runs, 2);
    EXPECT_TRUE(m_wasCancelled);
    EXPECT_EQ(EndOf([&] { m_desk->Connect(Within(-1).Get())->Act(""); }), "timed out");
    EXPECT_EQ(m_desk->printer->runs, 2);

    Open({.defaultTimeout = 20ms});
    EXPECT_EQ(EndOf([&] { m_stub->Act("wait"); }), "timed out");
}

TEST_F(AdapterTest, TakesTheLongestAndTheShortestTimes) {
    using Clock = Tavik::RequestContext::Clock;
    Open({.defaultTimeout = Clock::duration::max(), .shutdownTimeout = Clock::duration::max()});
    const auto context = Pellum::MakeRef<Tavik::RequestContext>();
    const std::vector<std::pair<Ref<Tavik::RequestContext>, std::string>> table{
        {context, "done"},
        {context->WithTimeout(Clock::duration::max()), "done"},
        {context->WithDeadline(Clock::time_point::max()), "done"},
        {context->WithTimeout(Clock::duration::min()), "timed out"},
        {context->WithDeadline(Clock::time_point::min()), "timed out"},
    };
    for (const auto& [own, end] : table) {
        const auto other = m_desk->Connect(own.Get());
        EXPECT_EQ(EndOf([&] { other->Act(""); }), end) << own->ToString();
        auto call = StartAct(*other);
        EXPECT_EQ(EndOf(call), end) << own->ToString();
    }
    auto running = Occupy();
    auto opener = std::async(std::launch::async, [this] {
        std::this_thread::sleep_for(20ms);
        m_gate->Open();
    });
    m_desk->adapter->Shutdown(); // does not leave the method behind
    EXPECT_EQ(EndOf(running), "done");
}

TEST_F(AdapterTest, CancelsOnceWhatHasNotCompleted) {
    Open({.threads = 1});
    auto running = Occupy();
    auto queued = StartAct(*m_stub);
    EXPECT_TRUE(queued.Cancel());
    EXPECT_FALSE(queued.Cancel());
    EXPECT_EQ(EndOf(queued), "cancelled");
    EXPECT_TRUE(running.Cancel());
    EXPECT_EQ(EndOf(running), "cancelled");
    m_gate->Open();
    auto last = StartAct(*m_stub);
    EXPECT_EQ(EndOf(last), "done");
    EXPECT_FALSE(last.Cancel());
    EXPECT_EQ(m_desk->printer->runs, 2);
    EXPECT_TRUE(m_wasCancelled);
}

TEST_F(AdapterTest, BoundsTheQueue) {
    Open({.threads = 1, .queueLimit = 2});
    auto running = Occupy();
    auto first = StartAct(*m_stub);
    auto second = StartAct(*m_stub);
    auto third = StartAct(*m_stub);
    EXPECT_EQ(EndOf(third), "queue full");
    EXPECT_EQ(EndOf([&] { m_desk->Connect(Within(20).Get())->Act(""); }), "timed out");
    auto patient = std::async(std::launch::async, [&] { return EndOf([&] { m_stub->Act(""); }); });
    EXPECT_EQ(patient.wait_for(20ms), std::future_status::timeout);
    EXPECT_TRUE(second.Cancel()); // makes room
    auto fourth = StartAct(*m_stub);
    m_gate->Open();
    EXPECT_EQ(patient.get(), "done");
    EXPECT_EQ(EndOf(first), "done");
}

TEST_F(AdapterTest, MethodsCallBackOnTheirOwnThread) {
    Open({.threads = 1, .nestingLimit = 3});
    int depth = 0;
    m_desk->printer->onAct = [&](const std::string& what) -> Pellum::Optional<std::string> {
        ++depth;
        EXPECT_EQ(&Tavik::ServerCall::Current()->GetTarget(), m_desk->printer.Get());
        return m_stub->Act(what);
    };
    EXPECT_THAT(
        EndOf([&] { m_stub->Act(""); }),
        TestSupport::MatchesRegex("orlin.fault.SystemError: reason = \"the server failed to run the call\", "
                                  "correlationId = \".+\""));
    EXPECT_EQ(depth, 4);
    EXPECT_THAT(m_desk->GetLog().front(), HasSubstr("3 calls run inside of each other"));

    m_desk->printer->onAct = [&](const std::string&) -> Pellum::Optional<std::string> {
        std::this_thread::sleep_for(30ms);
        return {};
    };
    std::promise<std::string> nested;
    Ref<ScheduledItem> item;
    m_stub->Reset(
        [&](auto*, auto*, auto*) {
            nested.set_value(EndOf([&] { m_desk->Connect(Within(10).Get())->Act(""); }));
        },
        item);
    EXPECT_EQ(nested.get_future().get(), "timed out");
}

TEST_F(AdapterTest, SurvivesAnObjectThatGoesAway) {
    Open();
    m_desk->printer->onAct = [this](const std::string&) -> Pellum::Optional<std::string> {
        EXPECT_TRUE(m_desk->objects->Unregister(*m_desk->printer));
        m_desk->printer = nullptr; // the call has the last count
        return std::string("the end");
    };
    EXPECT_EQ(*m_stub->Act("").Peek(), "the end");
    EXPECT_THROW(m_stub->Act(""), Orlin::Fault::ManagedObjectNotFound::Exception);
    auto call = StartAct(*m_stub);
    EXPECT_THROW(call.Get(), Orlin::Fault::ManagedObjectNotFound::Exception);
    // That is for good, whoever has the identifier now.
    m_desk->printer = Pellum::MakeRef<TestPrinter>("1");
    m_desk->objects->Register(*m_desk->printer);
    EXPECT_THROW(m_stub->Reset(), Orlin::Fault::ManagedObjectNotFound::Exception);
    auto again = StartAct(*m_stub);
    EXPECT_THROW(again.Get(), Orlin::Fault::ManagedObjectNotFound::Exception);
    m_desk->Connect()->Reset();
}

TEST_F(AdapterTest, LogsWhatCallbacksThrow) {
    Open();
    Ref<ScheduledItem> item;
    m_stub->Reset([](auto*, auto*, auto*) { throw 5; }, item);
    while (!item->IsDone()) {
        std::this_thread::yield();
    }
    EXPECT_THAT(m_desk->GetLog(), ElementsAre(HasSubstr("something was thrown that is no exception")));
}

TEST_F(AdapterTest, ShutdownEndsEveryCall) {
    Open({.threads = 1, .queueLimit = 2, .shutdownTimeout = 20ms});
    auto running = Occupy();
    auto queued = StartAct(*m_stub);
    auto waiting = std::async(std::launch::async, [&] { return EndOf([&] { m_stub->Act(""); }); });
    auto crowded = std::async(std::launch::async, [&] { return EndOf([&] { m_stub->Act(""); }); });
    std::this_thread::sleep_for(20ms);
    m_desk->adapter->Shutdown();
    EXPECT_EQ(EndOf(running), "closed"); // after the timeout, by then
    EXPECT_EQ(EndOf(queued), "closed");
    EXPECT_EQ(waiting.get(), "closed");
    EXPECT_EQ(crowded.get(), "closed");
    EXPECT_EQ(EndOf([&] { m_stub->Act(""); }), "closed");
    auto later = StartAct(*m_stub);
    EXPECT_EQ(EndOf(later), "closed");
    EXPECT_FALSE(running.Cancel());
    m_desk->adapter->Shutdown();
    EXPECT_EQ(m_desk->printer->runs, 1);
    m_gate->Open();
}

TEST_F(AdapterTest, ShutdownWaitsForMethodsAndCallbacks) {
    Open();
    std::atomic<int> finished = 0;
    m_desk->printer->onAct = [&](const std::string&) -> Pellum::Optional<std::string> {
        m_gate->Wait();
        std::this_thread::sleep_for(30ms);
        ++finished;
        return {};
    };
    Ref<ScheduledItem> item;
    std::string result;
    m_stub->Act(
        "",
        [&](ScheduledItem*, Pellum::Exception* exception, Tavik::Any*) {
            std::this_thread::sleep_for(30ms);
            result = exception == nullptr ? "done" : exception->what();
            ++finished;
        },
        item);
    ASSERT_TRUE(m_gate->AwaitVisitor());
    m_gate->Open();
    m_desk->adapter->Shutdown();
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
        m_desk->Connect(context.Get())
            ->Act(
                fromCompleter ? "wait" : "",
                [&, last = m_desk->Connect()](auto*, auto*, auto*) {
                    m_desk->adapter->Shutdown();
                    EXPECT_EQ(EndOf([&] { last->Act(""); }), "closed");
                    m_stub = nullptr;
                    m_desk->adapter = nullptr;
                    shut.set_value();
                },
                item);
        EXPECT_EQ(shut.get_future().wait_for(20s), std::future_status::ready);
        m_gate->Open();
        while (!item->IsDone()) {
            std::this_thread::yield();
        }
        m_desk->adapter =
            new Tavik::InProcessAdapter(std::make_unique<Tavik::Json::MessageCodec>(), m_desk->server.Get());
    }
    EXPECT_THAT(m_desk->GetLog(), IsEmpty());
}

} // namespace
