#include "tavik/codec/json/json.h"
#include "tavik/managed/managed_method.h"
#include "tavik/type/type_registry.h"
#include "tavik/value/mo_ref.h"
#include "tavik/value/validate.h"
#include "tests/catalogue/catalogue.h"
#include "tests/catalogue/document.h"
#include "tests/support/managed_calls.h"
#include "types/api/agent/agent_session_manager.h"
#include "types/api/agent/disk_ticket_dispatcher.h"
#include "types/api/agent/internal/disposable.h"
#include "types/api/agent/morvane_agent.h"
#include "types/api/agent/morvane_manager.h"
#include "types/api/agent/plinthos_proxy.h"
#include "types/api/agent/task/agent_task.h"
#include "types/api/core/diagnostic_manager.h"
#include "types/api/core/history_collector.h"
#include "types/api/core/query_manager.h"
#include "types/api/core/service_instance.h"
#include "types/api/core/session_manager.h"
#include "types/api/event/event_history_collector.h"
#include "types/api/event/event_manager.h"
#include "types/api/helper/morvane_helper.h"
#include "types/api/helper/service_instance.h"
#include "types/api/helper/session_manager.h"
#include "types/api/server/agent_manager.h"
#include "types/api/server/conversion/conversion_folder.h"
#include "types/api/server/conversion/conversion_job.h"
#include "types/api/server/conversion/conversion_job_history_collector.h"
#include "types/api/server/conversion/conversion_manager.h"
#include "types/api/server/job/job.h"
#include "types/api/server/managed_entity.h"
#include "types/api/server/server_diagnostic_manager.h"
#include "types/api/task/scheduled_task_manager.h"
#include "types/api/task/task.h"
#include "types/api/task/task_history_collector.h"
#include "types/api/task/task_manager.h"
#include "types/api/worker/morvane_worker.h"

#include <gmock/gmock.h>

#include <set>

/// Every managed type: its class, its methods and how its properties are found by name.
namespace {

using namespace CatalogueTests;
using Tavik::ManagedMethod;
using Tavik::ManagedObjectType;
using Tavik::PropertyDescriptor;

/// A class of the library and what it exports.
struct Exported {
    ManagedObjectType* (*type)();
    ManagedMethod** methodObjects;
    std::size_t length;
};

template <class T, std::size_t length>
Exported Describe(ManagedMethod* (&methodObjects)[length]) {
    return {&Tavik::GetMoType<T>, methodObjects, length};
}

const Exported kClasses[] = {
    Describe<Morvane::Agent::AgentSessionManager>(Morvane::gMorvaneAgentAgentSessionManagerMethodObjects),
    Describe<Morvane::Agent::DiskTicketDispatcher>(Morvane::gMorvaneAgentDiskTicketDispatcherMethodObjects),
    Describe<Morvane::Agent::Internal::Disposable>(Morvane::gMorvaneAgentInternalDisposableMethodObjects),
    Describe<Morvane::Agent::MorvaneAgent>(Morvane::gMorvaneAgentMorvaneAgentMethodObjects),
    Describe<Morvane::Agent::MorvaneManager>(Morvane::gMorvaneAgentMorvaneManagerMethodObjects),
    Describe<Morvane::Agent::PlinthosProxy>(Morvane::gMorvaneAgentPlinthosProxyMethodObjects),
    Describe<Morvane::Agent::Task::AgentTask>(Morvane::gMorvaneAgentTaskAgentTaskMethodObjects),
    Describe<Morvane::DiagnosticManager>(Morvane::gMorvaneDiagnosticManagerMethodObjects),
    Describe<Morvane::HistoryCollector>(Morvane::gMorvaneHistoryCollectorMethodObjects),
    Describe<Morvane::QueryManager>(Morvane::gMorvaneQueryManagerMethodObjects),
    Describe<Morvane::ServiceInstance>(Morvane::gMorvaneServiceInstanceMethodObjects),
    Describe<Morvane::SessionManager>(Morvane::gMorvaneSessionManagerMethodObjects),
    Describe<Morvane::Event::EventHistoryCollector>(Morvane::gMorvaneEventEventHistoryCollectorMethodObjects),
    Describe<Morvane::Event::EventManager>(Morvane::gMorvaneEventEventManagerMethodObjects),
    Describe<Morvane::Agent::Helper::MorvaneHelper>(Morvane::gMorvaneAgentHelperMorvaneHelperMethodObjects),
    Describe<Morvane::Agent::Helper::ServiceInstance>(
        Morvane::gMorvaneAgentHelperServiceInstanceMethodObjects),
    Describe<Morvane::Agent::Helper::SessionManager>(Morvane::gMorvaneAgentHelperSessionManagerMethodObjects),
    Describe<Morvane::Server::AgentManager>(Morvane::gMorvaneServerAgentManagerMethodObjects),
    Describe<Morvane::Server::Conversion::ConversionFolder>(
        Morvane::gMorvaneServerConversionConversionFolderMethodObjects),
    Describe<Morvane::Server::Conversion::ConversionJob>(
        Morvane::gMorvaneServerConversionConversionJobMethodObjects),
    Describe<Morvane::Server::Conversion::ConversionJobHistoryCollector>(
        Morvane::gMorvaneServerConversionConversionJobHistoryCollectorMethodObjects),
    Describe<Morvane::Server::Conversion::ConversionManager>(
        Morvane::gMorvaneServerConversionConversionManagerMethodObjects),
    Describe<Morvane::Server::Job::Job>(Morvane::gMorvaneServerJobJobMethodObjects),
    Describe<Morvane::Server::ManagedEntity>(Morvane::gMorvaneServerManagedEntityMethodObjects),
    Describe<Morvane::Server::ServerDiagnosticManager>(
        Morvane::gMorvaneServerServerDiagnosticManagerMethodObjects),
    Describe<Morvane::Task::ScheduledTaskManager>(Morvane::gMorvaneTaskScheduledTaskManagerMethodObjects),
    Describe<Morvane::Task::Task>(Morvane::gMorvaneTaskTaskMethodObjects),
    Describe<Morvane::Task::TaskHistoryCollector>(Morvane::gMorvaneTaskTaskHistoryCollectorMethodObjects),
    Describe<Morvane::Task::TaskManager>(Morvane::gMorvaneTaskTaskManagerMethodObjects),
    Describe<Morvane::Worker::MorvaneWorker>(Morvane::gMorvaneWorkerMorvaneWorkerMethodObjects),
};

void ForEachManagedType(const std::function<void(const ManagedObjectType&)>& check) {
    const auto types = GetManagedTypes();
    EXPECT_EQ(types.size(), 30U);
    for (const ManagedObjectType* type : types) {
        SCOPED_TRACE(type->GetName());
        check(*type);
    }
}

/// The names of a type's properties, inherited ones first.
std::vector<std::string> GetPropertyNames(const ManagedObjectType& type) {
    std::vector<std::string> names;
    const Tavik::Type* base = Tavik::TypeRegistry::Instance().FindByInfo(type.GetManagedTypeInfo().base);
    if (const auto* managed = dynamic_cast<const ManagedObjectType*>(base)) {
        names = GetPropertyNames(*managed);
    }
    const PropertyDescriptor* row = type.GetManagedTypeInfo().properties;
    for (; row != nullptr && row->name != nullptr; ++row) {
        names.emplace_back(row->name);
    }
    return names;
}

template <class Row>
std::size_t CountRows(const Row* rows) {
    std::size_t count = 0;
    while (rows != nullptr && rows[count].name != nullptr) {
        ++count;
    }
    return count;
}

TEST(CatalogueManagedTypes, BelongToTheirClasses) {
    Tavik::TypeRegistry::Instance().Load();
    std::set<const ManagedObjectType*> found;
    for (const Exported& exported : kClasses) {
        const ManagedObjectType* type = exported.type();
        ASSERT_NE(type, nullptr);
        SCOPED_TRACE(type->GetName());
        found.insert(type);
        const Tavik::ManagedTypeInfo& record = type->GetManagedTypeInfo();
        EXPECT_EQ(record.methodObjects, exported.methodObjects);
        EXPECT_EQ(exported.length, CountRows(record.methods) + CountRows(record.properties));
    }
    const auto types = GetManagedTypes();
    EXPECT_EQ(found, std::set<const ManagedObjectType*>(types.begin(), types.end()));
}

TEST(CatalogueManagedTypes, FindPropertiesByName) {
    std::size_t without = 0;
    ForEachManagedType([&](const ManagedObjectType& type) {
        const auto find = type.GetManagedTypeInfo().propertyIndex;
        const std::vector<std::string> names = GetPropertyNames(type);
        ASSERT_EQ(find == nullptr, names.empty());
        if (find == nullptr) {
            ++without;
            return;
        }
        for (const std::string& name : names) {
            // Of two declarations of one name the most derived one counts.
            const auto last = std::find(names.rbegin(), names.rend(), name).base() - 1;
            EXPECT_EQ(find(name.data(), name.size()), last - names.begin()) << name;
            // The name need not end where it is stored.
            const std::string longer = name + "Info";
            EXPECT_EQ(find(longer.data(), name.size()), last - names.begin()) << name;
            const std::string upper = static_cast<char>(name[0] - 'a' + 'A') + name.substr(1);
            for (const std::string& unknown : {longer, name.substr(1), name + '\0', upper, std::string()}) {
                const bool isKnown = std::find(names.begin(), names.end(), unknown) != names.end();
                EXPECT_EQ(find(unknown.data(), unknown.size()) != -1, isKnown) << unknown;
            }
            EXPECT_EQ(find(name.data(), name.size() - 1), -1) << name;
        }
    });
    EXPECT_EQ(without, 10U);
}

TEST(CatalogueManagedTypes, HaveAMethodObjectForEveryMethodAndProperty) {
    ForEachManagedType([](const ManagedObjectType& type) {
        const Tavik::ManagedTypeInfo& record = type.GetManagedTypeInfo();
        const std::size_t methods = CountRows(record.methods);
        const std::size_t properties = CountRows(record.properties);
        ASSERT_EQ(type.GetMethodObjects().size(), methods + properties);
        EXPECT_EQ(type.GetOwnMethodCount(), methods);
        for (std::size_t i = 0; i < methods + properties; ++i) {
            const ManagedMethod& object = *type.GetMethodObjects()[i];
            const bool isGetter = i >= methods;
            EXPECT_EQ(record.methodObjects[i], &object);
            EXPECT_EQ(object.GetIndex(), static_cast<int>(i));
            EXPECT_EQ(&object.GetOwner(), &type);
            EXPECT_EQ(object.IsPropertyGetter(), isGetter);
            EXPECT_EQ(object.GetMethodDescriptor(), isGetter ? nullptr : record.methods + i);
            EXPECT_EQ(object.GetPropertyDescriptor(), isGetter ? record.properties + (i - methods) : nullptr);
            EXPECT_EQ(
                object.GetName(),
                std::string(isGetter ? record.properties[i - methods].name : record.methods[i].name));
        }
    });
}

TEST(CatalogueManagedTypes, PassEveryCallThroughDispatchAndStub) {
    std::size_t own = 0;
    ForEachManagedType([&](const ManagedObjectType& type) {
        std::size_t calls = 0;
        for (const ManagedObjectType* base = &type; base != nullptr; base = base->GetBaseType()) {
            calls += base->GetMethodObjects().size();
        }
        for (unsigned seed = 1; seed <= 20; ++seed) {
            SCOPED_TRACE("seed " + std::to_string(seed));
            EXPECT_EQ(TestSupport::ExpectCallsToPass(type, seed), static_cast<int>(calls));
        }
        own += type.GetMethodObjects().size();
    });
    EXPECT_EQ(own, 107U + 40U);
}

TEST(CatalogueManagedTypes, AreReferredToByVersionsThatHaveThem) {
    std::size_t refused = 0;
    ForEachManagedType([&](const ManagedObjectType& type) {
        const Pellum::Ref<Tavik::Any> reference(new Tavik::MoRef(&type.GetInfo(), "r-1"));
        const std::string text = "{\"mo\": " + Quoted(type.GetWireName()) + ", \"id\": \"r-1\"}";
        EXPECT_TRUE(Tavik::Json::Decode(text)->_IsEqual(reference.Get(), false));
        for (std::size_t number = 0; number < kVersionCount; ++number) {
            SCOPED_TRACE(GetVersion(number).GetName());
            Tavik::Json::EncodeOptions encode;
            encode.version = &GetVersion(number);
            Tavik::Json::DecodeOptions decode;
            decode.version = encode.version;
            if (Has(number, type.GetInfo().version)) {
                EXPECT_EQ(Tavik::Json::Encode(reference.Get(), encode), text);
                EXPECT_NO_THROW(Tavik::Json::Decode(text, decode));
                EXPECT_THAT(Tavik::Validate(reference.Get(), encode.version), testing::IsEmpty());
                continue;
            }
            ++refused;
            EXPECT_THROW(Tavik::Json::Encode(reference.Get(), encode), Tavik::Json::EncodeError);
            EXPECT_THROW(Tavik::Json::Decode(text, decode), Tavik::Json::DecodeError);
            EXPECT_EQ(Tavik::Validate(reference.Get(), encode.version).size(), 1U);
        }
    });
    EXPECT_GT(refused, 10U);
}

} // namespace
