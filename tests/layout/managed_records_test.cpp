#include "tavik/managed/managed_method.h"
#include "tavik/managed/managed_object.h"
#include "tavik/type/managed_object_type.h"
#include "tavik/value/mo_ref.h"
#include "tests/layout/reading.h"
#include "tests/support/dotted_names.h"
#include "tests/support/recording_adapter.h"

#include <algorithm>
#include <map>
#include <set>

/// The records of managed types, read byte by byte, and the arrays of method objects.
namespace {

using namespace LayoutTests;
using TestSupport::ToPath;

using PropertyIndex = int(const char* name, std::size_t length);
using Dispatch = void(void* target, int index, void* arguments, void* result);
using CreateStub = void*(void* reference, void* adapter, void* context);

/// A type, what messages call it, and how many methods and properties are its own.
struct Expected {
    std::string_view name;
    std::string_view wireName;
    std::size_t methods;
    std::size_t properties;
};

constexpr Expected kExpected[] = {
    {"morvane.DiagnosticManager", "MorvaneDiagnosticManager", 5, 0},
    {"morvane.HistoryCollector", "MorvaneHistoryCollector", 4, 1},
    {"morvane.QueryManager", "MorvaneQueryManager", 15, 0},
    {"morvane.ServiceInstance", "MorvaneServiceInstance", 1, 2},
    {"morvane.SessionManager", "MorvaneSessionManager", 8, 5},
    {"morvane.agent.AgentSessionManager", "MorvaneAgentSessionManager", 4, 1},
    {"morvane.agent.DiskTicketDispatcher", "MorvaneDiskTicketDispatcher", 1, 1},
    {"morvane.agent.MorvaneAgent", "MorvaneMorvaneAgent", 6, 0},
    {"morvane.agent.MorvaneManager", "MorvaneMorvaneManager", 2, 0},
    {"morvane.agent.PlinthosProxy", "MorvanePlinthosProxy", 1, 1},
    {"morvane.agent.helper.MorvaneHelper", "MorvaneAgentHelperMorvaneHelper", 5, 1},
    {"morvane.agent.helper.ServiceInstance", "MorvaneAgentHelperServiceInstance", 1, 2},
    {"morvane.agent.helper.SessionManager", "MorvaneAgentHelperSessionManager", 2, 0},
    {"morvane.agent.internal.Disposable", "MorvaneAgentInternalDisposable", 2, 0},
    {"morvane.agent.task.AgentTask", "MorvaneTaskAgentTask", 0, 2},
    {"morvane.event.EventHistoryCollector", "MorvaneEventHistoryCollector", 2, 1},
    {"morvane.event.EventManager", "MorvaneEventManager", 2, 2},
    {"morvane.server.AgentManager", "MorvaneAgentManager", 5, 0},
    {"morvane.server.ManagedEntity", "MorvaneManagedEntity", 1, 2},
    {"morvane.server.ServerDiagnosticManager", "MorvaneServerDiagnosticManager", 1, 0},
    {"morvane.server.conversion.ConversionFolder", "MorvaneServerConversionConversionFolder", 0, 1},
    {"morvane.server.conversion.ConversionJob", "MorvaneServerConversionConversionJob", 1, 2},
    {"morvane.server.conversion.ConversionJobHistoryCollector",
     "MorvaneServerConversionConversionJobHistoryCollector", 2, 1},
    {"morvane.server.conversion.ConversionManager", "MorvaneServerConversionConversionManager", 9, 2},
    {"morvane.server.job.Job", "MorvaneServerJobJob", 5, 3},
    {"morvane.task.ScheduledTaskManager", "MorvaneScheduledTaskManager", 3, 0},
    {"morvane.task.Task", "MorvaneTask", 1, 4},
    {"morvane.task.TaskHistoryCollector", "MorvaneTaskHistoryCollector", 2, 1},
    {"morvane.task.TaskManager", "MorvaneTaskManager", 12, 5},
    {"morvane.worker.MorvaneWorker", "MorvaneMorvaneWorker", 4, 0},
};

const void* FindMethodObjects(std::string_view name) {
    return FindSymbol("Morvane::g" + ToPath(name, "") + "MethodObjects");
}

/// All entries of the arrays; a missing array gives none.
std::vector<const void*> ReadMethodObjects() {
    std::vector<const void*> entries;
    for (const Expected& type : kExpected) {
        const void* const array = FindMethodObjects(type.name);
        for (std::size_t i = 0; array != nullptr && i < type.methods + type.properties; ++i) {
            entries.push_back(Raw(array).Pointer(i * sizeof(void*)));
        }
    }
    return entries;
}

/// As the image has them: taken before any test runs.
const std::vector<const void*> kMethodObjectsInImage = ReadMethodObjects();

const Expected& FindExpected(std::string_view name) {
    const auto* const found = std::find_if(
        std::begin(kExpected), std::end(kExpected), [&](const Expected& type) { return type.name == name; });
    return found == std::end(kExpected) ? throw std::logic_error("unexpected type") : *found;
}

TEST(ManagedRecords, HaveArraysThatTheRuntimeFills) {
    EXPECT_EQ(kMethodObjectsInImage, std::vector<const void*>(107 + 40, nullptr));
    GetLibrary();
    const std::vector<const void*> filled = ReadMethodObjects();
    EXPECT_EQ(std::count(filled.begin(), filled.end(), nullptr), 0);
    EXPECT_EQ(std::set<const void*>(filled.begin(), filled.end()).size(), 107U + 40U);
}

/// What is counted over all methods.
struct Totals {
    Extents extents;
    std::size_t parameters = 0;
    std::size_t faults = 0;
    std::map<std::string, int> resultVersions; ///< of those that have a result; "own" is the method's
};

/// By type and method.
const std::set<std::string> kLongRunning = {
    "morvane.agent.MorvaneAgent.clone",
    "morvane.agent.MorvaneAgent.customize",
    "morvane.agent.MorvaneAgent.reconfig",
    "morvane.agent.MorvaneManager.convert",
    "morvane.agent.helper.MorvaneHelper.clone",
    "morvane.agent.helper.MorvaneHelper.convert",
    "morvane.agent.helper.MorvaneHelper.prepareTargetVm",
    "morvane.agent.helper.MorvaneHelper.reconfigure",
    "morvane.worker.MorvaneWorker.convert",
};
const std::set<std::string> kCredentials = {
    "morvane.SessionManager.loginBySSPI",
    "morvane.agent.helper.MorvaneHelper.setUserContext",
    "morvane.server.AgentManager.registerWithAgent",
    "morvane.server.AgentManager.unregisterWithAgent",
};

void ExpectMethod(
    const std::string& type, const Record& row, const Tavik::MethodDescriptor& described, Totals& totals) {
    const std::string_view name = row.Text(0);
    EXPECT_EQ(row.Address(), &described);
    EXPECT_EQ(row.Text(4), "Morvane" + ToPath(name, ""));
    EXPECT_EQ(row.Word(12), 0U);
    EXPECT_NE(Tavik::TypeRegistry::Instance().FindVersion(row.Text(44)), nullptr) << row.Text(44);
    EXPECT_EQ(row.Word(48), 0U);
    EXPECT_EQ(row.Byte(52), 0U);
    EXPECT_EQ(row.Byte(53), kLongRunning.count(type + '.' + std::string(name)));
    EXPECT_EQ(row.Byte(54), kCredentials.count(type + '.' + std::string(name)));
    EXPECT_EQ(row.Byte(55), 0U);

    const Record result = row.Inline(kProperty, 16);
    ExpectRow(result, {0, 1, 2, 3}, described.result);
    EXPECT_EQ(result.Text(8), "result");
    if (result.Pointer(0) == nullptr) {
        EXPECT_EQ(result.Text(16), "orlin.version.version0");
    } else {
        ++totals.resultVersions[std::string(result.Text(16) == row.Text(44) ? "own" : result.Text(16))];
    }
    totals.parameters += ForEachRow(
        kProperty, row.Pointer(36), totals.extents, [&](const Record& parameter, std::size_t index) {
            ExpectRow(parameter, {0, 1, 2, 0x200}, described.parameters[index]);
        });
    for (const void* fault : ReadPointers(row.Pointer(40), totals.extents)) {
        ++totals.faults;
        const Record info(kTypeInfo, fault);
        EXPECT_EQ(info.Word(0), 0x11U);
        EXPECT_EQ(fault, FindTypeInfo(info.Text(4)));
    }
}

TEST(ManagedRecords, DescribeEveryMethodAndProperty) {
    Totals totals;
    std::map<std::string_view, int> bases;
    const auto& types = GetLibrary().types;
    for (std::size_t slot = kDataTypeCount + kEnumCount; slot < types.size(); ++slot) {
        const auto& type = dynamic_cast<const Tavik::ManagedObjectType&>(*types[slot]);
        SCOPED_TRACE(type.GetName());
        const Expected& expected = FindExpected(type.GetName());
        const Tavik::ManagedTypeInfo& described = type.GetManagedTypeInfo();
        const Record record(kManagedTypeInfo, &described);
        ExpectTypeInfo(record.Pointer(0), 0x12, type);
        EXPECT_EQ(Record(kTypeInfo, record.Pointer(0)).Text(8), expected.wireName);
        const Record base(kTypeInfo, record.Pointer(4));
        EXPECT_EQ(base.Address(), FindTypeInfo(base.Text(4)));
        ++bases[base.Text(4).starts_with("orlin.") ? base.Text(4) : "own"];

        EXPECT_EQ(
            expected.properties,
            ForEachRow(
                kProperty, record.Pointer(8), totals.extents, [&](const Record& row, std::size_t index) {
                    ExpectRow(row, {4, 6, 7}, described.properties[index]);
                }));
        EXPECT_EQ(
            expected.methods,
            ForEachRow(
                kMethod, record.Pointer(12), totals.extents, [&](const Record& row, std::size_t index) {
                    ExpectMethod(type.GetName(), row, described.methods[index], totals);
                }));
        const bool inherits = type.GetBaseType() != nullptr
                           && type.GetBaseType()->GetManagedTypeInfo().propertyIndex != nullptr;
        EXPECT_EQ(record.Pointer(16) != nullptr, expected.properties > 0 || inherits);
        EXPECT_NE(record.Pointer(20), nullptr);
        EXPECT_NE(record.Pointer(24), nullptr);

        ASSERT_EQ(record.Pointer(28), FindMethodObjects(expected.name));
        totals.extents.Add(record.Pointer(28), (expected.methods + expected.properties) * sizeof(void*));
        ASSERT_EQ(type.GetMethodObjects().size(), expected.methods + expected.properties);
        for (std::size_t i = 0; i < type.GetMethodObjects().size(); ++i) {
            EXPECT_EQ(Raw(record.Pointer(28)).Pointer(i * sizeof(void*)), type.GetMethodObjects()[i].get());
        }
    }
    totals.extents.ExpectDisjoint();
    EXPECT_EQ(totals.parameters, 153U);
    EXPECT_EQ(totals.faults, 102U);
    EXPECT_EQ(bases["orlin.ManagedObject"], 21);
    EXPECT_EQ(bases["own"], 9);
    EXPECT_EQ(
        totals.resultVersions, (std::map<std::string, int>{
                                   {"own", 45},
                                   {"orlin.version.version0", 11},
                                   {"morvane.version.version1", 9},
                                   {"morvane.version.version2", 2},
                                   {"zabro.version.version1", 1}}));
}

Record FindManagedRecord(const char* name) {
    const Tavik::Type* type = Tavik::TypeRegistry::Instance().FindByName(name);
    return {kManagedTypeInfo, &dynamic_cast<const Tavik::ManagedObjectType&>(*type).GetManagedTypeInfo()};
}

TEST(ManagedRecords, OfASessionManager) {
    const Record record = FindManagedRecord("morvane.SessionManager");
    const std::string_view v1 = "morvane.version.version1";
    ExpectRows(
        record.Pointer(8), {{"morvane.UserSession", 7, "sessionList", v1},
                            {"morvane.UserSession", 6, "currentSession", v1},
                            {"string", 7, "messageLocaleList", v1},
                            {"string", 7, "supportedLocaleList", v1},
                            {"string", 4, "defaultLocale", v1}});
    const Record login(kMethod, record.Pointer(12));
    EXPECT_EQ(login.Text(0), "login");
    EXPECT_EQ(login.Text(4), "MorvaneLogin");
    EXPECT_EQ(login.Text(8), "System.Anonymous");
    EXPECT_EQ(login.Inline(kProperty, 16).Pointer(0), FindTypeInfo("morvane.UserSession"));
    EXPECT_EQ(login.Inline(kProperty, 16).Word(4), 0U);
    ExpectRows(
        login.Pointer(36),
        {{"string", 0, "userName", v1}, {"string", 0x200, "password", v1}, {"string", 2, "locale", v1}});
    EXPECT_EQ(Raw(login.Pointer(40)).Pointer(0), FindTypeInfo("zabro.fault.InvalidLogin"));
    EXPECT_EQ(Raw(login.Pointer(40)).Pointer(sizeof(void*)), FindTypeInfo("zabro.fault.InvalidLocale"));
    EXPECT_EQ(login.Text(44), v1);
    EXPECT_EQ(login.Next(3).Text(0), "loginBySSPI");
    EXPECT_EQ(login.Next(3).Text(44), "morvane.version.version3");
    EXPECT_EQ(login.Next(3).Byte(54), 1U);
    EXPECT_EQ(login.Next(5).Text(0), "logout");
    EXPECT_EQ(login.Next(5).Pointer(8), nullptr);
    EXPECT_EQ(login.Next(5).Inline(kProperty, 16).Pointer(0), nullptr);

    // Its functions, as a foreign runtime calls them.
    auto* const find = record.FunctionAt<PropertyIndex>(16);
    EXPECT_EQ(find("sessionList", 11), 0);
    EXPECT_EQ(find("defaultLocale", 13), 4);
    EXPECT_EQ(find("defaultLocales", 14), -1);
    const auto adapter = Pellum::MakeRef<TestSupport::RecordingAdapter>();
    const auto reference = Pellum::MakeRef<Tavik::MoRef>(
        static_cast<const Tavik::TypeInfo*>(record.Pointer(0)), "session-manager");
    void* const made = record.FunctionAt<CreateStub>(24)(
        reference.Get(), static_cast<Tavik::StubAdapter*>(adapter.Get()), nullptr);
    const Pellum::Ref<Tavik::ManagedObject> stub(static_cast<Tavik::ManagedObject*>(made));
    std::vector<Pellum::Ref<Tavik::Any>> arguments;
    Pellum::Ref<Tavik::Any> result;
    auto* const dispatch = record.FunctionAt<Dispatch>(20);
    dispatch(made, 5, &arguments, &result);
    EXPECT_EQ(adapter->method, Raw(FindMethodObjects("morvane.SessionManager")).Pointer(5 * sizeof(void*)));
    dispatch(made, 13, &arguments, &result); // there is none
    EXPECT_EQ(adapter->count, 1);
}

} // namespace
