#include "types/util/morvane_types_util.h"

#include "tavik/value/data_array.h"
#include "tavik/value/scalar_array.h"
#include "tests/support/death.h"
#include "types/api/params/cloning_params.h"

#include <gmock/gmock.h>

#include <climits>
#include <initializer_list>
#include <ostream>
#include <string>
#include <vector>

namespace {

using namespace Morvane::MorvaneTypesUtil;
using Morvane::Agent::Params::AgentCloningParams;
using Morvane::Agent::Params::StorageMapping;
using Morvane::Info::ComputerHardwareInfo;
using Morvane::Info::StorageInfo;
using Morvane::Params::CloningParams;
using Morvane::Params::ConversionParams;
using Morvane::Params::StorageParams;
using Pellum::MakeRef;
using Pellum::Ref;

template <class T>
Ref<Tavik::DataArray<T>> MakeArray(std::initializer_list<Ref<T>> elements) {
    auto array = MakeRef<Tavik::DataArray<T>>();
    for (const Ref<T>& element : elements) {
        array->Append(element.Get());
    }
    return array;
}

Ref<StorageInfo::DiskInfo> MakeDisk(
    const std::string& id, const Pellum::Optional<std::int32_t>& sectorSize = {}) {
    auto disk = MakeRef<StorageInfo::DiskInfo>();
    disk->SetDiskId(id);
    disk->SetSectorSize(sectorSize);
    return disk;
}

Ref<StorageInfo::VolumeInfo> MakeVolume(const std::string& id, std::vector<std::string> diskIds = {}) {
    auto volume = MakeRef<StorageInfo::VolumeInfo>();
    volume->SetVolumeId(id);
    volume->SetDiskId(MakeRef<Tavik::Array<std::string>>(std::move(diskIds)).Get());
    return volume;
}

Ref<StorageMapping::DiskMapping> MakeDiskMapping(
    const Pellum::Optional<std::string>& id, const Pellum::Optional<std::int32_t>& sectorSize = {}) {
    auto mapping = MakeRef<StorageMapping::DiskMapping>();
    mapping->SetSourceDiskId(id);
    mapping->SetSectorSize(sectorSize);
    return mapping;
}

Ref<StorageMapping::VolumeMapping> MakeVolumeMapping(const std::string& id) {
    auto mapping = MakeRef<StorageMapping::VolumeMapping>();
    mapping->SetSourceVolumeId(id);
    return mapping;
}

Ref<StorageParams::VolumeCloningParams> MakeVolumeParams(const std::string& id) {
    auto params = MakeRef<StorageParams::VolumeCloningParams>();
    params->SetSourceVolumeId(id);
    return params;
}

/// One object of each kind that is searched, filled from the outside in.
struct Searched {
    Ref<ComputerHardwareInfo> hardware = MakeRef<ComputerHardwareInfo>();
    Ref<StorageInfo> storage = MakeRef<StorageInfo>();
    Ref<AgentCloningParams> agent = MakeRef<AgentCloningParams>();
    Ref<StorageMapping> mapping = MakeRef<StorageMapping>();
    Ref<ConversionParams> conversion = MakeRef<ConversionParams>();
    Ref<CloningParams> cloning = MakeRef<CloningParams>();
    Ref<StorageParams> storageParams = MakeRef<StorageParams>();

    void Connect() const {
        hardware->SetStorage(storage.Get());
        agent->SetStorageMapping(mapping.Get());
        conversion->SetCloningParams(cloning.Get());
        cloning->SetStorageParams(storageParams.Get());
    }

    void ExpectNothing(const std::string& id) const {
        EXPECT_EQ(FindDiskInfoById(storage.Get(), id), nullptr);
        EXPECT_EQ(FindDiskInfoById(hardware.Get(), id), nullptr);
        EXPECT_EQ(FindVolumeInfoById(hardware.Get(), id), nullptr);
        EXPECT_EQ(FindDiskMappingById(agent.Get(), id), nullptr);
        EXPECT_EQ(FindVolumeMappingById(agent.Get(), id), nullptr);
        EXPECT_EQ(FindVolumeCloningParamsById(storageParams.Get(), id), nullptr);
        EXPECT_EQ(FindVolumeCloningParamsById(conversion.Get(), id), nullptr);
        EXPECT_FALSE(HasGptDisk(hardware.Get()));
        EXPECT_EQ(FindSectorSizeByVolume(MakeVolume("v", {id}).Get(), agent.Get()), 512U);
    }
};

TEST(MorvaneTypesUtil, FindsNothingWhereALevelIsMissing) {
    Searched none;
    none.hardware.Reset();
    none.storage.Reset();
    none.conversion.Reset();
    none.storageParams.Reset();
    EXPECT_EQ(FindDiskInfoById(none.storage.Get(), ""), nullptr);
    EXPECT_EQ(FindDiskInfoById(none.hardware.Get(), ""), nullptr);
    EXPECT_EQ(FindVolumeInfoById(none.hardware.Get(), ""), nullptr);
    EXPECT_EQ(FindDiskMappingById(nullptr, ""), nullptr);
    EXPECT_EQ(FindVolumeMappingById(nullptr, ""), nullptr);
    EXPECT_EQ(FindVolumeCloningParamsById(none.storageParams.Get(), ""), nullptr);
    EXPECT_EQ(FindVolumeCloningParamsById(none.conversion.Get(), ""), nullptr);
    EXPECT_FALSE(HasGptDisk(nullptr));

    Searched objects;
    objects.ExpectNothing(""); // the levels are there, but not connected
    objects.conversion->SetCloningParams(objects.cloning.Get());
    objects.ExpectNothing("");
    objects.Connect(); // the arrays are unset
    objects.ExpectNothing("");

    objects.storage->SetDisk(MakeArray<StorageInfo::DiskInfo>({}).Get());
    objects.storage->SetVolume(MakeArray<StorageInfo::VolumeInfo>({}).Get());
    objects.mapping->SetDiskMapping(MakeArray<StorageMapping::DiskMapping>({}).Get());
    objects.mapping->SetVolumeMapping(MakeArray<StorageMapping::VolumeMapping>({}).Get());
    objects.storageParams->SetTargetDiskParams(MakeArray<StorageParams::TargetDiskParams>({}).Get());
    objects.ExpectNothing("");

    // A disk without a list of volumes, and one with an empty list.
    const auto disk = MakeRef<StorageParams::TargetDiskParams>();
    disk->SetVolumesToClone(MakeArray<StorageParams::VolumeCloningParams>({}).Get());
    objects.storageParams->SetTargetDiskParams(
        MakeArray({MakeRef<StorageParams::TargetDiskParams>(), disk}).Get());
    // A mapping without identifier is not one whose identifier is empty.
    objects.mapping->SetDiskMapping(MakeArray({MakeDiskMapping({}, 4096)}).Get());
    objects.ExpectNothing("");
}

TEST(MorvaneTypesUtil, FindsTheFirstOfEqualIdentifiersPastNullElements) {
    const auto disk = MakeDisk("b");
    const auto volume = MakeVolume("b");
    const auto diskMapping = MakeDiskMapping("b");
    const auto volumeMapping = MakeVolumeMapping("b");
    const auto volumeParams = MakeVolumeParams("b");
    Searched objects;
    objects.Connect();
    objects.storage->SetDisk(MakeArray({{}, MakeDisk("a"), disk, MakeDisk("b")}).Get());
    objects.storage->SetVolume(MakeArray({{}, MakeVolume("a"), volume, MakeVolume("b")}).Get());
    objects.mapping->SetDiskMapping(
        MakeArray({{}, MakeDiskMapping({}), diskMapping, MakeDiskMapping("b")}).Get());
    objects.mapping->SetVolumeMapping(
        MakeArray({{}, MakeVolumeMapping("a"), volumeMapping, MakeVolumeMapping("b")}).Get());
    const auto first = MakeRef<StorageParams::TargetDiskParams>();
    first->SetVolumesToClone(MakeArray({{}, MakeVolumeParams("a"), volumeParams}).Get());
    const auto second = MakeRef<StorageParams::TargetDiskParams>();
    second->SetVolumesToClone(MakeArray({MakeVolumeParams("b"), MakeVolumeParams("c")}).Get());
    objects.storageParams->SetTargetDiskParams(
        MakeArray({{}, MakeRef<StorageParams::TargetDiskParams>(), first, second}).Get());

    EXPECT_EQ(FindDiskInfoById(objects.storage.Get(), "b"), disk.Get());
    EXPECT_EQ(FindDiskInfoById(objects.hardware.Get(), "b"), disk.Get());
    EXPECT_EQ(FindVolumeInfoById(objects.hardware.Get(), "b"), volume.Get());
    EXPECT_EQ(FindDiskMappingById(objects.agent.Get(), "b"), diskMapping.Get());
    EXPECT_EQ(FindVolumeMappingById(objects.agent.Get(), "b"), volumeMapping.Get());
    EXPECT_EQ(FindVolumeCloningParamsById(objects.storageParams.Get(), "b"), volumeParams.Get());
    EXPECT_EQ(FindVolumeCloningParamsById(objects.conversion.Get(), "b"), volumeParams.Get());
    EXPECT_EQ(FindVolumeCloningParamsById(objects.conversion.Get(), "c"), (*second->GetVolumesToClone())[1]);
    // One count is the test's own, the other the array's: a search adds none.
    EXPECT_EQ(disk->GetRefCount(), 2);
    EXPECT_EQ(volumeParams->GetRefCount(), 2);
}

TEST(MorvaneTypesUtil, ComparesIdentifiersByteByByte) {
    using namespace std::string_literals;
    Searched objects;
    objects.Connect();
    objects.storage->SetDisk(MakeArray({MakeDisk("Disk\0one"s)}).Get());
    EXPECT_NE(FindDiskInfoById(objects.storage.Get(), "Disk\0one"s), nullptr);
    for (const std::string& id :
         {"disk\0one"s, "Disk"s, "Disk\0one "s, " Disk\0one"s, "Disk\0two"s, "Disk\0"s, ""s}) {
        EXPECT_EQ(FindDiskInfoById(objects.storage.Get(), id), nullptr) << id;
    }
}

struct SectorSizeCase {
    const char* name;
    std::vector<std::string> diskIds;
    unsigned expected;

    friend std::ostream& operator<<(std::ostream& stream, const SectorSizeCase& sectorSizeCase) {
        return stream << sectorSizeCase.name;
    }
};

class SectorSize : public testing::TestWithParam<SectorSizeCase> {};

TEST_P(SectorSize, IsTheSameByDiskAndByMapping) {
    const auto volume = MakeVolume("v", GetParam().diskIds);
    const auto disks = MakeArray(
        {MakeDisk("a", 4096), MakeDisk("a", 1024), MakeDisk("b", 4096), MakeDisk("unset"),
         MakeDisk("zero", 0), MakeDisk("negative", -1), MakeDisk("largest", INT_MAX)});
    Searched objects;
    objects.Connect();
    const auto mappings = MakeRef<Tavik::DataArray<StorageMapping::DiskMapping>>();
    for (std::size_t i = 0; i < disks->GetLength(); ++i) {
        mappings->Append(MakeDiskMapping((*disks)[i]->GetDiskId(), (*disks)[i]->GetSectorSize()).Get());
    }
    objects.mapping->SetDiskMapping(mappings.Get());
    EXPECT_EQ(FindSectorSizeByVolume(volume.Get(), disks.Get()), GetParam().expected);
    EXPECT_EQ(FindSectorSizeByVolume(volume.Get(), objects.agent.Get()), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Volumes, SectorSize,
    testing::Values(
        SectorSizeCase{"of the first of two disks with one identifier", {"a"}, 4096},
        SectorSizeCase{"of no disk", {}, 512}, SectorSizeCase{"of two disks", {"a", "b"}, 512},
        SectorSizeCase{"of one disk twice", {"a", "a"}, 512},
        SectorSizeCase{"of an unknown disk", {"A"}, 512},
        SectorSizeCase{"of a disk without sector size", {"unset"}, 512}, SectorSizeCase{"zero", {"zero"}, 0},
        SectorSizeCase{"negative", {"negative"}, UINT_MAX}, SectorSizeCase{"largest", {"largest"}, INT_MAX}));

TEST(MorvaneTypesUtil, TakesAVolumeWithoutDisksForOneOf512) {
    const auto volume = MakeRef<StorageInfo::VolumeInfo>();
    const auto disks = MakeArray({MakeDisk("", 4096)});
    EXPECT_EQ(FindSectorSizeByVolume(volume.Get(), disks.Get()), 512U);
}

TEST(MorvaneTypesUtil, KnowsGptDisksByThePartitionTypeOfTheirVolumes) {
    const auto disk = MakeDisk("a");
    disk->SetGpt(true);
    const auto volume = MakeVolume("v", {"a"});
    Searched objects;
    objects.Connect();
    objects.storage->SetDisk(MakeArray({disk}).Get());
    objects.storage->SetVolume(MakeArray({{}, MakeVolume("w"), volume}).Get());
    EXPECT_FALSE(HasGptDisk(objects.hardware.Get()));
    for (int type = 0; type <= 0xFF; ++type) {
        volume->SetPartitionType(static_cast<signed char>(type));
        EXPECT_EQ(HasGptDisk(objects.hardware.Get()), type == 0xEE) << type;
    }
}

TEST(MorvaneTypesUtilDeathTest, EndsTheProcessOverNullArguments) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    const auto volume = MakeRef<StorageInfo::VolumeInfo>();
    const auto disks = MakeArray<StorageInfo::DiskInfo>({});
    const auto agent = MakeRef<AgentCloningParams>();
    const Tavik::DataArray<StorageInfo::DiskInfo>* noDisks = nullptr;
    const AgentCloningParams* noAgent = nullptr;
    const auto& aborted = TestSupport::HasAborted;
    const auto message = TestSupport::IsAbortMessage("VERIFY morvane_types_util.cpp:[1-9][0-9]*");
    EXPECT_EXIT(FindSectorSizeByVolume(nullptr, disks.Get()), aborted, message);
    EXPECT_EXIT(FindSectorSizeByVolume(volume.Get(), noDisks), aborted, message);
    EXPECT_EXIT(FindSectorSizeByVolume(nullptr, agent.Get()), aborted, message);
    EXPECT_EXIT(FindSectorSizeByVolume(volume.Get(), noAgent), aborted, message);
}

} // namespace
