#include "tavik/codec/json/json.h"
#include "tavik/descriptor/builtin.h"
#include "tavik/managed/create_stub.h"
#include "tavik/type/managed_object_type.h"
#include "tavik/value/property_diff_set.h"
#include "tavik/value/validate.h"
#include "tests/support/recording_adapter.h"
#include "tests/zabro/client/own_spec.h"
#include "tests/zabro/client/own_task.h"
#include "tests/zabro/client/plan.h"
#include "tests/zabro/client/plan_failed.h"
#include "tests/zabro/client/planner.h"
#include "tests/zabro/client/wide_collector_stub.h"
#include "zabro/api/about_info.h"
#include "zabro/api/config_info.h"
#include "zabro/api/config_spec.h"
#include "zabro/api/disk_dimensions.h"
#include "zabro/api/not_found.h"
#include "zabro/api/task_stub.h"

#include <gmock/gmock.h>

namespace {

using namespace Tavik;
using testing::ElementsAre;
using testing::IsEmpty;

struct Row {
    const char* name;
    const char* wireName;
    TypeKind kind;
    const char* base;
};

constexpr const char* kData = "orlin.DynamicData";
constexpr const char* kManaged = "orlin.ManagedObject";
constexpr const char* kFault = "zabro.fault.ZabroFault";

constexpr Row kTypes[] = {
    {"zabro.AboutInfo", "AboutInfo", TypeKind::Data, kData},
    {"zabro.ElementDescription", "ElementDescription", TypeKind::Data, kData},
    {"zabro.HostServiceTicket", "HostServiceTicket", TypeKind::Data, kData},
    {"zabro.vm.ConfigSpec", "VmConfigSpec", TypeKind::Data, kData},
    {"zabro.vm.ConfigInfo", "VmConfigInfo", TypeKind::Data, kData},
    {"zabro.vm.device.VirtualDevice", "VmDeviceVirtualDevice", TypeKind::Data, kData},
    {"zabro.vm.customization.Specification", "VmCustomizationSpecification", TypeKind::Data, kData},
    {"zabro.host.DiskDimensions", "HostDiskDimensions", TypeKind::Data, kData},
    {"zabro.host.DiskDimensions.Chs", "HostDiskDimensionsChs", TypeKind::Data, kData},
    {"zabro.scheduler.ScheduledTaskSpec", "SchedulerScheduledTaskSpec", TypeKind::Data, kData},
    {"zabro.scheduler.ScheduledTaskInfo", "SchedulerScheduledTaskInfo", TypeKind::Data, kData},
    {"zabro.fault.ZabroFault", "ZabroFault", TypeKind::Fault, "orlin.MethodFault"},
    {"zabro.fault.InvalidLogin", "InvalidLogin", TypeKind::Fault, kFault},
    {"zabro.fault.InvalidLocale", "InvalidLocale", TypeKind::Fault, kFault},
    {"zabro.fault.SSPIChallenge", "SSPIChallenge", TypeKind::Fault, kFault},
    {"zabro.fault.NoClientCertificate", "NoClientCertificate", TypeKind::Fault, kFault},
    {"zabro.fault.NoPermission", "NoPermission", TypeKind::Fault, kFault},
    {"zabro.fault.NotFound", "NotFound", TypeKind::Fault, kFault},
    {"zabro.fault.InvalidState", "InvalidState", TypeKind::Fault, kFault},
    {"zabro.fault.InvalidName", "InvalidName", TypeKind::Fault, kFault},
    {"zabro.fault.DuplicateName", "DuplicateName", TypeKind::Fault, kFault},
    {"zabro.fault.HostConnectFault", "HostConnectFault", TypeKind::Fault, kFault},
    {"zabro.fault.CannotDeleteFile", "CannotDeleteFile", TypeKind::Fault, kFault},
    {"zabro.fault.LogBundlingFailed", "LogBundlingFailed", TypeKind::Fault, kFault},
    {"zabro.VirtualMachine", "VirtualMachine", TypeKind::Managed, kManaged},
    {"zabro.HostSystem", "HostSystem", TypeKind::Managed, kManaged},
    {"zabro.Datastore", "Datastore", TypeKind::Managed, kManaged},
    {"zabro.Folder", "Folder", TypeKind::Managed, kManaged},
    {"zabro.ResourcePool", "ResourcePool", TypeKind::Managed, kManaged},
    {"zabro.ComputeResource", "ComputeResource", TypeKind::Managed, kManaged},
    {"zabro.Task", "Task", TypeKind::Managed, kManaged},
    {"zabro.scheduler.ScheduledTask", "SchedulerScheduledTask", TypeKind::Managed, kManaged},
};

TEST(InfrastructureTypes, AreRegisteredWithTheirPlaceInTheTree) {
    TypeRegistry& registry = TypeRegistry::Instance();
    std::size_t known = 0;
    for (const LoadedLibrary& library : registry.GetLibraries()) {
        known += std::string_view(library.versions->namespaceName) == "zabro" ? library.types.size() : 0;
    }
    EXPECT_EQ(known, std::size(kTypes));
    for (const Row& row : kTypes) {
        SCOPED_TRACE(row.name);
        const Type* type = registry.FindByName(row.name);
        ASSERT_NE(type, nullptr);
        EXPECT_EQ(registry.FindByWireName(row.wireName), type);
        EXPECT_STREQ(type->GetInfo().version, "zabro.version.version1");
        EXPECT_EQ(type->GetKind(), row.kind);
        EXPECT_EQ(type->GetBaseType(), registry.FindByName(row.base));
        if (const auto* data = dynamic_cast<const DataObjectType*>(type)) {
            EXPECT_TRUE(data->IsOpen());
            EXPECT_THAT(data->GetProperties(), IsEmpty());
            EXPECT_EQ(data->GetDataTypeInfo().properties->name, nullptr);
            EXPECT_EQ(data->GetDataTypeInfo().reserved, 0U);
            const Pellum::Ref<DataObject> object(data->New());
            EXPECT_EQ(object->_GetDataType(), data);
        }
    }
    EXPECT_EQ(registry.GetErrors(), std::vector<std::string>());
}

TEST(InfrastructureTypes, AreReferredToByOtherLibraries) {
    TypeRegistry::Instance().Load();
    const ManagedTypeInfo& info = GetMoType<Client::Planner>()->GetManagedTypeInfo();
    EXPECT_EQ(info.properties[0].type, &Orlin::gOrlinQueryPropertyCollectorTypeInfo);
    std::vector<std::string> faults;
    for (const TypeInfo* const* fault = info.methods[0].faults; *fault != nullptr; ++fault) {
        faults.emplace_back((*fault)->name);
    }
    EXPECT_THAT(
        faults, ElementsAre("client.PlanFailed", "zabro.fault.NotFound", "orlin.fault.InvalidArgument"));
    EXPECT_STREQ(info.methods[0].result.type->name, "zabro.Task");
}

constexpr std::string_view kPlan =
    R"({"$type": "ClientPlan", "spec": {"$type": "ClientOwnSpec", "owner": "o", )"
    R"("name": "m", "memoryMB": 4096, "deviceChange": [{"operation": "add", "device": )"
    R"({"$type": "VirtualDisk", "capacityInKB": 18446744073709551616, "unit": null}}]}, )"
    R"("config": {"changeVersion": "1.50", "guest": {"adminPassword": "sesame"}}, )"
    R"("labels": [{"key": "a", "label": "A"}, {}], "chs": {"cylinder": 1023, "head": 255, "sector": 63}, )"
    R"("target": {"mo": "Folder", "id": "f"}, "hosts": [{"mo": "HostSystem", "id": "h"}], "about": {}})";

TEST(InfrastructureTypes, PassThroughObjectsThatHoldThem) {
    const auto plan = Json::DecodeAs<Client::Plan>(kPlan);
    EXPECT_EQ(Json::Encode(plan.Get()), kPlan);
    EXPECT_THAT(Validate(plan.Get()), IsEmpty());
    EXPECT_EQ(plan->ToString().find("sesame"), std::string::npos);

    const Pellum::Ref<Client::Plan> changed(plan->_Clone());
    changed->GetSpec()->_GetContent().SetNumber("memoryMB", 8192);
    changed->GetConfig()->_GetContent().Remove("guest");
    EXPECT_EQ(plan->GetSpec()->_GetContent().Find("memoryMB")->GetText(), "4096");
    EXPECT_FALSE(plan->_IsEqual(changed.Get(), false));
    PropertyDiffSet diffs;
    plan->_DiffProperties(changed.Get(), "", diffs);
    EXPECT_THAT(
        std::vector<std::string>(diffs.begin(), diffs.end()), ElementsAre(".spec.memoryMB", ".config.guest"));
    changed->GetSpec()->_GetContent().Remove("memoryMB");
    EXPECT_TRUE(plan->_IsEqual(changed.Get(), true));
}

TEST(InfrastructureTypes, OfFaultsCarryWhatTheyAreTold) {
    constexpr std::string_view text =
        R"({"$type": "ClientPlanFailed", "plan": {"spec": {}}, "why": [1, {"sessionId": "sesame"}]})";
    const auto fault = Json::DecodeAs<Client::PlanFailed>(text);
    EXPECT_EQ(Json::Encode(fault.Get()), text);
    EXPECT_EQ(fault->ToString().find("sesame"), std::string::npos);
    const Pellum::Ref<Client::PlanFailed> other(fault->_Clone());
    other->_GetContent().SetNull("why");
    other->GetPlan()->GetSpec()->_GetContent().SetNull("x");
    PropertyDiffSet diffs;
    fault->_DiffProperties(other.Get(), "fault", diffs);
    EXPECT_THAT(
        std::vector<std::string>(diffs.begin(), diffs.end()), ElementsAre("fault.plan.spec.x", "fault.why"));
    EXPECT_THROW(
        static_cast<void>(Json::DecodeAs<Zabro::Fault::NotFound>(R"({"$type": "InvalidState"})")),
        Json::DecodeError);
}

TEST(InfrastructureTypes, AreInterfacesForTypesOfOtherLibraries) {
    const auto adapter = Pellum::MakeRef<TestSupport::RecordingAdapter>();
    const auto make = [&](const TypeInfo& type) {
        return CreateStub(Pellum::MakeRef<MoRef>(&type, "id").Get(), adapter.Get());
    };
    const auto own = make(Client::gClientOwnTaskTypeInfo);
    const auto wide = make(Client::gClientWideCollectorTypeInfo);
    EXPECT_NE(dynamic_cast<Zabro::TaskStub*>(own.Get()), nullptr);
    EXPECT_NE(dynamic_cast<Orlin::Query::PropertyCollectorStub*>(wide.Get()), nullptr);
    // A type without methods looks at the target all the same.
    for (const auto* type : {GetMoType<Zabro::Task>(), GetMoType<Orlin::Query::PropertyCollector>()}) {
        const DispatchFunction dispatch = type->GetManagedTypeInfo().dispatch;
        const bool isTask = type->GetName() == std::string_view("zabro.Task");
        Arguments none;
        Pellum::Ref<Any> result;
        EXPECT_NO_THROW(dispatch((isTask ? own : wide).Get(), 0, none, result));
        EXPECT_THROW(dispatch((isTask ? wide : own).Get(), 0, none, result), Pellum::TypeMismatchException);
        EXPECT_EQ(result, nullptr);
    }
}

} // namespace
