#include "tavik/codec/json/message_codec.h"
#include "tests/rpc/desk.h"
#include "tests/rpc/fire.h"
#include "tests/rpc/jam.h"
#include "tests/support/pace.h"

#include <gtest/gtest.h>

#include <atomic>
#include <mutex>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace {

using Pellum::Ref;
using Pellum::System::ScheduledItem;

/// A server that many adapters reach, whose printers come and go.
class Stress {
public:
    Stress() : m_objects(new Tavik::ObjectTable), m_policy(new Tavik::AllowAll) {
        m_server = new Tavik::Dispatcher(m_objects.Get(), m_policy.Get());
        for (int i = 0; i < kPrinters; ++i) {
            Replace(i);
        }
        Reconnect();
    }

    ~Stress() { m_adapter->Shutdown(); }

    /// What one thread does.
    void Run(unsigned seed, int rounds) {
        std::mt19937 random(seed);
        for (int i = 0; i < rounds; ++i) {
            const auto what = static_cast<unsigned>(random() % 100);
            const int number = static_cast<int>(random() % kPrinters);
            if (what < 2) {
                Replace(number);
            } else if (what < 3) {
                Reconnect();
            } else {
                Call(number, what, random);
            }
        }
    }

    int GetStarted() const { return m_started; }

    int GetTold() const { return m_told; }

    void End() { GetAdapter()->Shutdown(); }

private:
    static constexpr int kPrinters = 4;

    void Replace(int number) {
        const Ref<TestPrinter> printer(new TestPrinter(std::to_string(number)));
        printer->onAct = [this, number](const std::string& what) -> Pellum::Optional<std::string> {
            if (what == "jam") {
                throw Desk::Jam::Exception(number, what);
            }
            if (what == "fire") {
                throw Desk::Fire::Exception(what);
            }
            if (what == "int") {
                throw number;
            }
            if (what == "call") {
                Connect(number)->Reset();
            }
            return what;
        };
        m_objects->Unregister(*printer->_GetRef());
        try {
            m_objects->Register(*printer);
        } catch (const Pellum::Exception&) {
            // Another thread was first.
        }
    }

    void Reconnect() {
        Ref<Tavik::InProcessAdapter> adapter(new Tavik::InProcessAdapter(
            std::make_unique<Tavik::Json::MessageCodec>(), m_server.Get(), {.threads = 3, .queueLimit = 20}));
        {
            const std::lock_guard lock(m_mutex);
            m_adapter.Swap(adapter);
        }
        if (adapter.Get() != nullptr) {
            adapter->Shutdown();
        }
    }

    Ref<Tavik::InProcessAdapter> GetAdapter() {
        const std::lock_guard lock(m_mutex);
        return m_adapter;
    }

    Ref<Desk::PrinterStub> Connect(int number, Tavik::RequestContext* context = nullptr) {
        const auto reference =
            Pellum::MakeRef<Tavik::MoRef>(&Desk::gDeskPrinterTypeInfo, std::to_string(number));
        return Pellum::MakeRef<Desk::PrinterStub>(reference.Get(), GetAdapter().Get(), context);
    }

    void Call(int number, unsigned what, std::mt19937& random) {
        const char* const texts[] = {"jam", "fire", "int", "call", "text"};
        const std::string text = texts[what % 5];
        const Ref<Tavik::RequestContext> context =
            what % 3 == 0 ? Within(static_cast<int>(what % 4)) : nullptr;
        const auto stub = Connect(number, context.Get());
        if (what < 50) {
            try {
                stub->Act(text);
            } catch (const Pellum::Exception&) {
                // However it ends.
            }
            return;
        }
        ++m_started;
        Ref<ScheduledItem> item;
        stub->Act(
            text, [this](auto*, auto*, auto*) { ++m_told; }, item);
        if (random() % 3 == 0) {
            item->Cancel();
        }
    }

    std::mutex m_mutex;
    Ref<Tavik::ObjectTable> m_objects;
    Ref<Tavik::AccessPolicy> m_policy;
    Ref<Tavik::Dispatcher> m_server;
    Ref<Tavik::InProcessAdapter> m_adapter;
    std::atomic<int> m_started = 0;
    std::atomic<int> m_told = 0;
};

TEST(StressTest, ThreadsMixWhatTheyLike) {
    Stress stress;
    std::vector<std::thread> threads;
    for (unsigned i = 0; i < 64; ++i) {
        threads.emplace_back([&stress, i] { stress.Run(20'240'229 + i, 1000 / TestSupport::kSlowness); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    stress.End();
    EXPECT_GT(stress.GetStarted(), 5000);
    EXPECT_EQ(stress.GetTold(), stress.GetStarted()); // each one once
}

TEST(StressTest, CallsWithFaultsLeaveNothingBehind) {
    Desktop desk;
    const Ref<Desk::Jam> fault = Pellum::MakeRef<Desk::Jam>();
    desk.printer->onAct = [&](const std::string&) -> Pellum::Optional<std::string> {
        throw Desk::Jam::Exception(fault.Get());
    };
    const auto stub = desk.Connect();
    const int calls = TestSupport::kIsSanitized ? 20'000 : 100'000; // sanitizers make throwing slow
    for (int i = 0; i < calls; ++i) {
        EXPECT_THROW(stub->Act(""), Desk::Jam::Exception);
    }
    desk.adapter->Shutdown();
    EXPECT_EQ(fault->GetRefCount(), 1);
    EXPECT_EQ(stub->GetRefCount(), 1);
    EXPECT_EQ(desk.printer->GetRefCount(), 2); // its own, and the table's
}

} // namespace
