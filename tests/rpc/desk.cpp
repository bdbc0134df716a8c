#include "tests/rpc/desk.h"

#include "tavik/codec/json/message_codec.h"
#include "tavik/type/type_registry.h"
#include "tavik/value/data_array.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <utility>

TestPrinter::TestPrinter(std::string id) : ServerObject(Desk::gDeskPhotoPrinterTypeInfo, std::move(id)) {}

std::string TestPrinter::GetName() {
    return "printer " + _GetRef()->GetId();
}

void TestPrinter::GetQueue(Pellum::Ref<Tavik::DataArray<Desk::Sheet>>& result) {
    result = Pellum::MakeRef<Tavik::DataArray<Desk::Sheet>>();
    result->Append(lastSheet.Get());
}

std::int32_t TestPrinter::Print(
    Desk::Sheet* sheet, const Pellum::Optional<std::int32_t>& copies, const std::string& /*pin*/) {
    ++runs;
    lastSheet.Reset(sheet);
    return copies.Peek() != nullptr ? *copies.Peek() : 1;
}

Pellum::Optional<std::string> TestPrinter::Act(const std::string& what) {
    ++runs;
    return onAct(what);
}

void TestPrinter::Echo(Desk::Sheet* sheet, Pellum::Ref<Desk::Sheet>& result) {
    result.Reset(sheet);
}

void TestPrinter::Reset() {
    ++runs;
}

std::string TestPrinter::Scan(const Pellum::Optional<std::string>& mode) {
    return mode.Peek() != nullptr ? *mode.Peek() : "grey";
}

void TestPrinter::Neighbour(Pellum::Ref<Tavik::MoRef>& result) {
    result.Reset(_GetRef());
}

std::int64_t TestPrinter::Align(std::int32_t by) {
    return std::int64_t{by} * 1'000'000'000;
}

Desktop::Desktop(Tavik::InProcessOptions options, Tavik::AccessPolicy* policy)
    : printer(new TestPrinter("1")), objects(new Tavik::ObjectTable) {
    const auto log = [this](const Tavik::CallFailure& failure) {
        const std::lock_guard lock(m_mutex);
        m_log.push_back(failure.ToString());
    };
    objects->Register(*printer);
    server = new Tavik::Dispatcher(objects.Get(), policy, log);
    options.failureLog = log;
    adapter = new Tavik::InProcessAdapter(
        std::make_unique<Tavik::Json::MessageCodec>(), server.Get(), std::move(options));
}

Desktop::~Desktop() {
    adapter->Shutdown();
}

Pellum::Ref<Desk::PhotoPrinterStub> Desktop::Connect(Tavik::RequestContext* context) const {
    return Pellum::MakeRef<Desk::PhotoPrinterStub>(printer->_GetRef(), adapter.Get(), context);
}

std::vector<std::string> Desktop::GetLog() {
    const std::lock_guard lock(m_mutex);
    return m_log;
}

Pellum::Ref<Tavik::RequestContext> Within(int milliseconds) {
    return Pellum::MakeRef<Tavik::RequestContext>()->WithTimeout(std::chrono::milliseconds(milliseconds));
}

Pellum::Ref<Tavik::RequestContext> Speaking(const char* version) {
    const Tavik::Version* const found = Tavik::TypeRegistry::Instance().FindVersion(version);
    EXPECT_NE(found, nullptr) << version;
    return Pellum::MakeRef<Tavik::RequestContext>()->WithVersion(found);
}

void Gate::Open() {
    const std::lock_guard lock(m_mutex);
    m_isOpen = true;
    m_changed.notify_all();
}

void Gate::Wait() {
    std::unique_lock lock(m_mutex);
    m_isVisited = true;
    m_changed.notify_all();
    m_changed.wait(lock, [this] { return m_isOpen; });
}

bool Gate::AwaitVisitor() {
    std::unique_lock lock(m_mutex);
    return m_changed.wait_for(lock, std::chrono::seconds(10), [this] { return m_isVisited; });
}
