#include "tavik/codec/json/json.h"
#include "tests/tools/tool_runner.h"
#include "types/api/event/task_event.h"
#include "types/api/info/boot_config_info.h"
#include "types/api/info/computer_info.h"
#include "types/api/info/computer_os_info.h"
#include "types/api/info/service_info.h"
#include "types/api/params/cloning_params.h"
#include "types/api/params/reconfig_params.h"
#include "types/api/params/service_change_request.h"
#include "types/api/server/conversion/conversion_job.h"
#include "types/api/server/conversion/conversion_job_info.h"
#include "types/api/task/task.h"
#include "types/api/task/task_info.h"
#include "types/api/task/task_spec.h"
#include "types/util/morvane_types_util.h"

#include <gmock/gmock.h>

#include <map>
#include <set>
#include <string>

/// Readers learn from the examples how the parts of messages refer to each other, so these references have to
/// be right.
namespace ToolTests {

namespace {

using namespace Morvane::MorvaneTypesUtil;
using Morvane::Event::Event;
using Morvane::Event::TaskEvent;
using Morvane::Info::ComputerHardwareInfo;
using Morvane::Info::ComputerInfo;
using Morvane::Info::ComputerOsInfo;
using Morvane::Info::ServiceInfo;
using Morvane::Info::StorageInfo;
using Morvane::Params::StorageParams;
using Morvane::Server::Conversion::ConversionJobInfo;
using Morvane::Task::TaskInfo;
using Morvane::Task::TaskSpec;

template <class T>
Pellum::Ref<T> Read(const std::string& name) {
    return Tavik::Json::DecodeAs<T>(ReadFile(Example(name)));
}

template <class T>
Pellum::Ref<Tavik::DataArray<T>> ReadArray(const std::string& name) {
    const Pellum::Ref<Tavik::Any> value = Tavik::Json::Decode(ReadFile(Example(name)));
    return Pellum::Ref<Tavik::DataArray<T>>(&dynamic_cast<Tavik::DataArray<T>&>(*value));
}

/// Calls `act` for each element.
template <class T, class Act>
void ForEach(const Tavik::DataArray<T>* array, Act act) {
    for (std::size_t i = 0; array != nullptr && i < array->GetLength(); ++i) {
        act(*(*array)[i]);
    }
}

const ServiceInfo* FindService(const ComputerOsInfo& os, const std::string& name) {
    const ServiceInfo* found = nullptr;
    ForEach(os.GetServices(), [&](const ServiceInfo& service) {
        found = service.GetServiceName() == name ? &service : found;
    });
    return found;
}

class Machine : public testing::TestWithParam<const char*> {};

TEST_P(Machine, HasRoomForItsVolumesAndNamesOnlyWhatItHas) {
    const auto machine = Read<ComputerInfo>(GetParam());
    const ComputerHardwareInfo* hardware = machine->GetHardwareInfo();
    const StorageInfo& storage = *hardware->GetStorage();
    std::map<std::string, std::int64_t> room;
    std::int64_t allRoom = 0;
    std::int64_t allUsed = 0;
    ForEach(storage.GetDisk(), [&](const StorageInfo::DiskInfo& disk) {
        EXPECT_TRUE(room.emplace(disk.GetDiskId(), disk.GetCapacityInBytes()).second) << disk.GetDiskId();
        EXPECT_LE(*disk.PeekDiskUsageInBytes(), disk.GetCapacityInBytes()) << disk.GetDiskId();
        EXPECT_EQ(disk.GetCapacityInBytes() % *disk.PeekSectorSize(), 0) << disk.GetDiskId();
        allRoom += disk.GetCapacityInBytes();
        allUsed += *disk.PeekDiskUsageInBytes();
    });
    std::set<std::string> volumes;
    ForEach(storage.GetVolume(), [&](const StorageInfo::VolumeInfo& volume) {
        SCOPED_TRACE(volume.GetVolumeId());
        EXPECT_TRUE(volumes.insert(volume.GetVolumeId()).second);
        EXPECT_LE(volume.GetSpaceUsedInBytes(), volume.GetCapacityInBytes());
        for (const std::string& id : volume.GetDiskId()->GetElements()) {
            ASSERT_NE(FindDiskInfoById(hardware, id), nullptr) << id;
        }
        if (volume.GetDiskId()->GetLength() == 1) {
            room[(*volume.GetDiskId())[0]] -= volume.GetCapacityInBytes();
        }
        if (const std::int64_t* cluster = volume.PeekClusterSizeInBytes()) {
            EXPECT_EQ(*cluster % FindSectorSizeByVolume(&volume, storage.GetDisk()), 0);
        }
        allRoom -= volume.GetCapacityInBytes();
        allUsed -= volume.GetSpaceUsedInBytes();
    });
    for (const auto& [id, left] : room) {
        EXPECT_GE(left, 0) << id;
    }
    EXPECT_GE(allRoom, 0);
    EXPECT_EQ(allUsed, 0);
    ForEach(storage.GetBootConfig()->GetBootLoader(), [&](const auto& loader) {
        EXPECT_NE(FindDiskInfoById(hardware, loader.GetBootLoaderLocation()->GetBootDiskId()), nullptr);
    });

    const ComputerOsInfo& os = *machine->GetOsInfo();
    EXPECT_NE(FindVolumeInfoById(hardware, os.GetSystemVolumeId().ValueOr("")), nullptr);
    const auto* active = FindVolumeInfoById(hardware, os.GetActiveVolumeId().ValueOr(""));
    ASSERT_NE(active, nullptr);
    EXPECT_TRUE(active->IsActive().ValueOr(false));
    ForEach(os.GetLogicalVolumeInfo(), [&](const ComputerOsInfo::LogicalVolumeInfo& logical) {
        SCOPED_TRACE(logical.GetVolumeId());
        EXPECT_EQ(volumes.erase(logical.GetVolumeId()), 1U);
        const auto& volume = *FindVolumeInfoById(hardware, logical.GetVolumeId());
        EXPECT_GE(logical.GetVolumeCloneFlags()->GetMinSizeInBytes(), volume.GetSpaceUsedInBytes());
        EXPECT_LE(logical.GetVolumeCloneFlags()->GetMinSizeInBytes(), volume.GetCapacityInBytes());
    });
    EXPECT_THAT(volumes, testing::IsEmpty()) << "volumes that the operating system says nothing of";
}

INSTANTIATE_TEST_SUITE_P(Examples, Machine, testing::Values("linux_machine.json", "windows_machine.json"));

TEST(ConversionRequest, AsksForWhatTheMachineAllows) {
    const auto request = Read<TaskSpec>("conversion_request.json");
    const auto machine = Read<ComputerInfo>("linux_machine.json");
    EXPECT_TRUE(request->GetHardwareInfo()->_IsEqual(machine->GetHardwareInfo(), false));
    EXPECT_TRUE(request->GetOsInfo()->_IsEqual(machine->GetOsInfo(), false));
    const ComputerHardwareInfo* hardware = machine->GetHardwareInfo();
    std::map<std::string, const ComputerOsInfo::VolumeCloneFlags*> flags;
    ForEach(machine->GetOsInfo()->GetLogicalVolumeInfo(), [&](const auto& logical) {
        flags[logical.GetVolumeId()] = logical.GetVolumeCloneFlags();
    });
    const Morvane::Params::CloningParams& cloning = *request->GetConversionParams()->GetCloningParams();
    std::set<std::string> copied;
    ForEach(cloning.GetStorageParams()->GetTargetDiskParams(), [&](const auto& disk) {
        const std::string diskId = disk.GetSourceDiskId().ValueOr("");
        EXPECT_NE(FindDiskInfoById(hardware, diskId), nullptr) << diskId;
        ForEach(disk.GetVolumesToClone(), [&](const StorageParams::VolumeCloningParams& volume) {
            const std::string& id = volume.GetSourceVolumeId();
            SCOPED_TRACE(id);
            EXPECT_TRUE(copied.insert(id).second);
            const auto* source = FindVolumeInfoById(hardware, id);
            ASSERT_NE(source, nullptr);
            EXPECT_TRUE((*source->GetDiskId())[0] == diskId || flags[id]->IsCanBeMovedToAnotherDisk());
            EXPECT_EQ(volume.IsResize().ValueOr(false), volume.PeekNewCapacityInBytes() != nullptr);
            if (const std::int64_t* size = volume.PeekNewCapacityInBytes()) {
                EXPECT_TRUE(flags[id]->IsCanBeResized());
                EXPECT_GE(*size, flags[id]->GetMinSizeInBytes());
            }
            if (volume.PeekNewClusterSizeInBytes() != nullptr) {
                EXPECT_TRUE(flags[id]->IsCanChangeClusterSize().ValueOr(false));
            }
        });
    });
    EXPECT_EQ(copied.size(), hardware->GetStorage()->GetVolume()->GetLength());
    for (const std::string& name : cloning.GetServicesToSuspend()->GetElements()) {
        const ServiceInfo* service = FindService(*machine->GetOsInfo(), name);
        ASSERT_NE(service, nullptr) << name;
        EXPECT_TRUE(service->IsCanBeStopped()) << name;
    }
    ForEach(
        request->GetConversionParams()->GetReconfigParams()->GetServiceChanges(), [&](const auto& change) {
            const ServiceInfo* service = FindService(*machine->GetOsInfo(), change.GetServiceName());
            ASSERT_NE(service, nullptr) << change.GetServiceName();
            EXPECT_NE(service->GetStartType(), change.GetStartType()) << change.GetServiceName();
        });
}

TEST(JobHistory, TellsOneStory) {
    const auto job = Read<ConversionJobInfo>("conversion_job.json");
    std::map<std::string, const TaskInfo*> tasks;
    std::map<int, const TaskInfo*> chains;
    const auto taskArray = ReadArray<TaskInfo>("conversion_job_tasks.json");
    ForEach(taskArray.Get(), [&](const TaskInfo& task) {
        EXPECT_TRUE(tasks.emplace(task.GetKey(), &task).second);
        chains[task.GetEventChainId()] = &task;
        EXPECT_TRUE(task.GetJob()->_IsEqual(job->GetJob(), false));
    });
    EXPECT_EQ(tasks.at(job->GetActiveTask()->GetId())->GetState(), TaskInfo::State::running);

    const auto events = ReadArray<Event>("events.json");
    EXPECT_EQ(events->GetLength(), 100U);
    std::set<const Tavik::Type*> types;
    const Event* last = nullptr;
    ForEach(events.Get(), [&](const Event& event) {
        SCOPED_TRACE(event.GetKey());
        types.insert(event._GetType());
        if (last != nullptr) {
            EXPECT_EQ(event.GetKey(), last->GetKey() + 1);
            EXPECT_LE(last->GetCreatedTime(), event.GetCreatedTime());
        }
        last = &event;
        const auto chain = chains.find(event.GetChainId());
        EXPECT_EQ(chain != chains.end(), event.GetJob() != nullptr);
        if (chain != chains.end()) {
            EXPECT_GE(event.GetCreatedTime(), chain->second->GetQueueTime());
        }
        if (const auto* taskEvent = dynamic_cast<const TaskEvent*>(&event)) {
            const TaskInfo& info = *taskEvent->GetInfo();
            EXPECT_EQ(chain->second->GetKey(), info.GetKey());
            EXPECT_EQ(chain->second->GetQueueTime(), info.GetQueueTime());
            EXPECT_LE(info.GetState(), chain->second->GetState());
        }
    });
    EXPECT_GE(types.size(), 25U);
}

} // namespace

} // namespace ToolTests
