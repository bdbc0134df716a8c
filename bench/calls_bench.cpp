#include "bench/calls_bench.h"

#include "tavik/codec/json/message_codec.h"
#include "tavik/managed/managed_method.h"
#include "tavik/managed/server_object.h"
#include "tavik/rpc/access_policy.h"
#include "tavik/rpc/dispatcher.h"
#include "tavik/rpc/in_process_adapter.h"
#include "tavik/rpc/object_table.h"
#include "tavik/type/managed_object_type.h"
#include "tavik/value/boxing.h"
#include "types/api/core/diagnostic_manager.h"
#include "types/api/core/diagnostic_manager_stub.h"

#include <benchmark/benchmark.h>

#include <string>

/// Calls of one method with small arguments: what carrying them costs beside writing and reading the
/// messages, and what packing and dispatch cost alone.
namespace Bench {

namespace {

using Morvane::DiagnosticManager;
using Morvane::DiagnosticManagerStub;

constexpr const char* kKey = "task-1204";
constexpr std::int64_t kPageSize = 4096;

class LogBundles final : public DiagnosticManager, public Tavik::ServerObject {
public:
    LogBundles() : ServerObject(Morvane::gMorvaneDiagnosticManagerTypeInfo, "diagnostics") {}

    void GenerateTaskLogBundle(Tavik::MoRef*, Pellum::Ref<TaskLogBundleInfo>&) override {}

    void GenerateLogBundle(Morvane::ComputerSpec*, Pellum::Ref<TaskLogBundleInfo>&) override {}

    std::string RetrieveTaskLogBundle(const std::string& key, std::int64_t, std::int64_t) override {
        return key;
    }

    std::string RetrieveTaskLogBundleUrl(const std::string& key) override { return key; }

    void DeleteTaskLogBundle(const std::string&) override {}
};

/// Hands the packed arguments to the dispatch function, without any message.
class DirectAdapter final : public Tavik::StubAdapter {
public:
    explicit DirectAdapter(Tavik::ManagedObject& target) : m_target(&target) {}

    void Invoke(const Call& call, Pellum::Ref<Tavik::Any>& result) override {
        call.method.GetOwner().GetManagedTypeInfo().dispatch(
            m_target.Get(), call.method.GetIndex(), const_cast<Tavik::Arguments&>(call.arguments), result);
    }

    void StartInvoke(
        const Call&, const Tavik::Completion&, Pellum::Ref<Pellum::System::ScheduledItem>&) override {}

private:
    Pellum::Ref<Tavik::ManagedObject> m_target;
};

/// A stub of the one object; `adapter` is any that reaches it.
Pellum::Ref<DiagnosticManagerStub> MakeStub(LogBundles& bundles, Tavik::StubAdapter& adapter) {
    return Pellum::MakeRef<DiagnosticManagerStub>(bundles._GetRef(), &adapter, nullptr);
}

void CallOnce(DiagnosticManagerStub& stub) {
    benchmark::DoNotOptimize(stub.RetrieveTaskLogBundle(kKey, 0, kPageSize));
}

/// The messages of one call, written and read as both sides do, and nothing else.
class Messages {
public:
    explicit Messages(Tavik::MoRef& target)
        : m_target(target), m_method(*Morvane::gMorvaneDiagnosticManagerMethodObjects[2]) {
        m_arguments.push_back(Tavik::Boxing<std::string>::Box(kKey));
        m_arguments.push_back(Tavik::Boxing<std::int64_t>::Box(0));
        m_arguments.push_back(Tavik::Boxing<std::int64_t>::Box(kPageSize));
    }

    void Run() const {
        const Tavik::StubAdapter::Call call{m_target, m_method, m_arguments, nullptr};
        std::string request;
        m_codec.EncodeRequest({call, kCorrelationId, std::nullopt}, request);
        const Tavik::Arguments arguments = m_codec.DecodeRequest(request, [this](Tavik::RequestHeader&&) {
            return Tavik::RequestForm{m_method, nullptr};
        });
        const Tavik::ResponseForm form{m_method, nullptr, kCorrelationId};
        std::string response;
        m_codec.EncodeResult(form, arguments.front().Get(), response);
        benchmark::DoNotOptimize(m_codec.DecodeResponse(response, form));
    }

private:
    static constexpr const char* kCorrelationId = "4f1c-1204";

    Tavik::MoRef& m_target;
    const Tavik::ManagedMethod& m_method;
    Tavik::Arguments m_arguments;
    Tavik::Json::MessageCodec m_codec;
};

/// Calls per second of many threads on one stub.
void RunThreads(benchmark::State& state, DiagnosticManagerStub& stub) {
    for (auto _ : state) {
        CallOnce(stub);
    }
    state.SetItemsProcessed(state.iterations());
}

} // namespace

void RegisterCalls() {
    static const auto bundles = Pellum::MakeRef<LogBundles>();
    static const auto objects = Pellum::MakeRef<Tavik::ObjectTable>();
    objects->Register(*bundles);
    static const auto connection = Pellum::MakeRef<Tavik::InProcessAdapter>(
        std::make_unique<Tavik::Json::MessageCodec>(),
        Pellum::MakeRef<Tavik::Dispatcher>(objects.Get(), Pellum::MakeRef<Tavik::AllowAll>().Get()).Get());
    static const auto direct = MakeStub(*bundles, *Pellum::MakeRef<DirectAdapter>(*bundles));
    static const auto stub = MakeStub(*bundles, *connection);
    static const Messages messages(*bundles->_GetRef());

    const auto add = [](const char* name, auto body) {
        return benchmark::RegisterBenchmark(name, [body](benchmark::State& state) {
            for (auto _ : state) {
                body();
            }
            state.SetItemsProcessed(state.iterations());
        });
    };
    add("packing and dispatch/morvane", [] { CallOnce(*direct); });
    add("call/morvane", [] { CallOnce(*stub); })->UseRealTime();
    add("call/its messages alone", [] { messages.Run(); })->UseRealTime();
    benchmark::RegisterBenchmark(
        "calls of threads", [](benchmark::State& state) { RunThreads(state, *stub); })
        ->Threads(1)
        ->Threads(2)
        ->Threads(8)
        ->Threads(64)
        ->UseRealTime();
}

} // namespace Bench
