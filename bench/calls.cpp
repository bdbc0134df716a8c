#include "bench/calls.h"

#include "bench/measure.h"
#include "bench/names.h"
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

#include <string>

/// Calls of one method with small arguments: what carrying them costs beside writing and reading the
/// messages, and what packing and dispatch cost alone.
namespace Bench {

namespace {

using Morvane::DiagnosticManager;
using Morvane::DiagnosticManagerStub;

constexpr const char* kKey = "task-1204";
constexpr std::int64_t kPageSize = 4096;
constexpr const char* kCorrelationId = "4f1c-1204";

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

/// Writes and reads all messages and has them served, on the caller's thread.
class SerialAdapter final : public Tavik::StubAdapter {
public:
    explicit SerialAdapter(Tavik::ObjectTable& objects)
        : m_dispatcher(
            Pellum::MakeRef<Tavik::Dispatcher>(&objects, Pellum::MakeRef<Tavik::AllowAll>().Get())) {}

    void Invoke(const Call& call, Pellum::Ref<Tavik::Any>& result) override {
        std::string request;
        m_codec.EncodeRequest({call, kCorrelationId, std::nullopt}, request);
        const std::string response = m_dispatcher->Serve(m_codec, request, {});
        result = m_codec.DecodeResponse(response, {call.method, nullptr, kCorrelationId}).result;
    }

    void StartInvoke(
        const Call&, const Tavik::Completion&, Pellum::Ref<Pellum::System::ScheduledItem>&) override {}

private:
    Tavik::Json::MessageCodec m_codec;
    Pellum::Ref<Tavik::Dispatcher> m_dispatcher;
};

/// A stub of the one object; `adapter` is any that reaches it.
Pellum::Ref<DiagnosticManagerStub> MakeStub(LogBundles& bundles, Tavik::StubAdapter& adapter) {
    return Pellum::MakeRef<DiagnosticManagerStub>(bundles._GetRef(), &adapter, nullptr);
}

std::string CallOnce(DiagnosticManagerStub& stub) {
    return stub.RetrieveTaskLogBundle(kKey, 0, kPageSize);
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

    Tavik::Response Run() const {
        const Tavik::StubAdapter::Call call{m_target, m_method, m_arguments, nullptr};
        std::string request;
        m_codec.EncodeRequest({call, kCorrelationId, std::nullopt}, request);
        const Tavik::Arguments arguments = m_codec.DecodeRequest(request, [this](Tavik::RequestHeader&&) {
            return Tavik::RequestForm{m_method, nullptr};
        });
        const Tavik::ResponseForm form{m_method, nullptr, kCorrelationId};
        std::string response;
        m_codec.EncodeResult(form, arguments.front().Get(), response);
        return m_codec.DecodeResponse(response, form);
    }

private:
    Tavik::MoRef& m_target;
    const Tavik::ManagedMethod& m_method;
    Tavik::Arguments m_arguments;
    Tavik::Json::MessageCodec m_codec;
};

/// The server's side.
struct Server {
    Pellum::Ref<LogBundles> bundles = Pellum::MakeRef<LogBundles>();
    Pellum::Ref<Tavik::ObjectTable> objects = Pellum::MakeRef<Tavik::ObjectTable>();

    Server() { objects->Register(*bundles); }
};

Server& GetServer() {
    static Server server;
    return server;
}

} // namespace

std::function<std::string()> MakeSerialCall() {
    Server& server = GetServer();
    const auto adapter = Pellum::MakeRef<SerialAdapter>(*server.objects);
    return [stub = MakeStub(*server.bundles, *adapter)] { return CallOnce(*stub); };
}

void AddCalls() {
    const auto& [bundles, objects] = GetServer();
    static const auto connection = Pellum::MakeRef<Tavik::InProcessAdapter>(
        std::make_unique<Tavik::Json::MessageCodec>(),
        Pellum::MakeRef<Tavik::Dispatcher>(objects.Get(), Pellum::MakeRef<Tavik::AllowAll>().Get()).Get());
    static const auto serial = MakeSerialCall();
    static const auto direct = MakeStub(*bundles, *Pellum::MakeRef<DirectAdapter>(*bundles));
    static const auto stub = MakeStub(*bundles, *connection);
    static const Messages messages(*bundles->_GetRef());

    const auto add = [](const std::string& what, const std::string& party, auto body) {
        return AddRate(BenchmarkName(kCalls + what, "a small method", party), body);
    };
    const std::string onOneThread = "on 1 thread";
    add(onOneThread, kOurs, [] { return CallOnce(*stub); });
    add(onOneThread, "without a thread", [] { return serial(); });
    add(onOneThread, kMessagesAlone, [] { return messages.Run(); });
    add(onOneThread, "dispatch alone", [] { return CallOnce(*direct); });
    for (const int threads : {2, 8, 64}) {
        add("on " + std::to_string(threads) + " threads", kOurs, [] {
            return CallOnce(*stub);
        })->Threads(threads);
    }
}

} // namespace Bench
