#include "types/util/morvane_types_util.h"

#include "pellum/error/verify.h"
#include "tavik/value/data_array.h"
#include "types/api/params/cloning_params.h"

#include <cstddef>
#include <cstdint>

namespace Morvane::MorvaneTypesUtil {

namespace {

using Agent::Params::AgentCloningParams;
using Agent::Params::StorageMapping;
using Info::ComputerHardwareInfo;
using Info::StorageInfo;
using Params::StorageParams;

constexpr unsigned kDefaultSectorSize = 512;
constexpr unsigned char kProtectivePartitionType = 0xEE;

/// The first element for which `matches(element)` holds; null when there is none, or no array.
template <class T, class Matches>
const T* FindFirst(const Tavik::DataArray<T>* elements, Matches matches) {
    const std::size_t length = elements == nullptr ? 0 : elements->GetLength();
    for (std::size_t i = 0; i < length; ++i) {
        const T* element = (*elements)[i];
        if (element != nullptr && matches(*element)) {
            return element;
        }
    }
    return nullptr;
}

/// The first element whose text is set and equals `id`.
template <class T>
const T* FindById(
    const Tavik::DataArray<T>* elements, const std::string* (T::*peekId)() const, const std::string& id) {
    return FindFirst(elements, [&](const T& element) {
        const std::string* text = (element.*peekId)();
        return text != nullptr && *text == id;
    });
}

const StorageInfo* GetStorage(const ComputerHardwareInfo* hardware) {
    return hardware == nullptr ? nullptr : hardware->GetStorage();
}

const Tavik::DataArray<StorageInfo::VolumeInfo>* GetVolumes(const ComputerHardwareInfo* hardware) {
    const StorageInfo* storage = GetStorage(hardware);
    return storage == nullptr ? nullptr : storage->PeekVolume();
}

const StorageMapping* GetMapping(const AgentCloningParams* params) {
    return params == nullptr ? nullptr : params->GetStorageMapping();
}

/// The sector size of the only disk of the volume, which `findDisk(id)` looks up.
template <class FindDisk>
unsigned FindSectorSize(const StorageInfo::VolumeInfo& volume, FindDisk findDisk) {
    const Tavik::Array<std::string>* diskIds = volume.PeekDiskId();
    if (diskIds == nullptr || diskIds->GetLength() != 1) {
        return kDefaultSectorSize;
    }
    const auto* disk = findDisk((*diskIds)[0]);
    const std::int32_t* sectorSize = disk == nullptr ? nullptr : disk->PeekSectorSize();
    return sectorSize == nullptr ? kDefaultSectorSize : static_cast<unsigned>(*sectorSize);
}

} // namespace

const StorageInfo::DiskInfo* FindDiskInfoById(const StorageInfo* storage, const std::string& id) {
    return storage == nullptr ? nullptr
                              : FindById(storage->PeekDisk(), &StorageInfo::DiskInfo::PeekDiskId, id);
}

const StorageInfo::DiskInfo* FindDiskInfoById(const ComputerHardwareInfo* hardware, const std::string& id) {
    return FindDiskInfoById(GetStorage(hardware), id);
}

const StorageInfo::VolumeInfo* FindVolumeInfoById(
    const ComputerHardwareInfo* hardware, const std::string& id) {
    return FindById(GetVolumes(hardware), &StorageInfo::VolumeInfo::PeekVolumeId, id);
}

const StorageMapping::DiskMapping* FindDiskMappingById(
    const AgentCloningParams* params, const std::string& id) {
    const StorageMapping* mapping = GetMapping(params);
    return mapping == nullptr
             ? nullptr
             : FindById(mapping->PeekDiskMapping(), &StorageMapping::DiskMapping::PeekSourceDiskId, id);
}

const StorageMapping::VolumeMapping* FindVolumeMappingById(
    const AgentCloningParams* params, const std::string& id) {
    const StorageMapping* mapping = GetMapping(params);
    return mapping == nullptr
             ? nullptr
             : FindById(mapping->PeekVolumeMapping(), &StorageMapping::VolumeMapping::PeekSourceVolumeId, id);
}

const StorageParams::VolumeCloningParams* FindVolumeCloningParamsById(
    const StorageParams* params, const std::string& id) {
    if (params == nullptr) {
        return nullptr;
    }
    const Tavik::DataArray<StorageParams::TargetDiskParams>* disks = params->PeekTargetDiskParams();
    const StorageParams::VolumeCloningParams* found = nullptr;
    for (std::size_t i = 0; found == nullptr && disks != nullptr && i < disks->GetLength(); ++i) {
        if (const StorageParams::TargetDiskParams* disk = (*disks)[i]) {
            found = FindById(
                disk->PeekVolumesToClone(), &StorageParams::VolumeCloningParams::PeekSourceVolumeId, id);
        }
    }
    return found;
}

const StorageParams::VolumeCloningParams* FindVolumeCloningParamsById(
    const Params::ConversionParams* params, const std::string& id) {
    const Params::CloningParams* cloning = params == nullptr ? nullptr : params->GetCloningParams();
    return cloning == nullptr ? nullptr : FindVolumeCloningParamsById(cloning->GetStorageParams(), id);
}

unsigned FindSectorSizeByVolume(
    const StorageInfo::VolumeInfo* volume, const Tavik::DataArray<StorageInfo::DiskInfo>* disks) {
    Pellum::Verify(volume != nullptr);
    Pellum::Verify(disks != nullptr);
    return FindSectorSize(*volume, [disks](const std::string& id) {
        return FindById(disks, &StorageInfo::DiskInfo::PeekDiskId, id);
    });
}

unsigned FindSectorSizeByVolume(const StorageInfo::VolumeInfo* volume, const AgentCloningParams* params) {
    Pellum::Verify(volume != nullptr);
    Pellum::Verify(params != nullptr);
    return FindSectorSize(
        *volume, [params](const std::string& id) { return FindDiskMappingById(params, id); });
}

bool HasGptDisk(const ComputerHardwareInfo* hardware) {
    // The accessor's type is signed, the byte on the disk is not.
    return FindFirst(
               GetVolumes(hardware),
               [](const StorageInfo::VolumeInfo& volume) {
                   const signed char* type = volume.PeekPartitionType();
                   return type != nullptr && static_cast<unsigned char>(*type) == kProtectivePartitionType;
               })
        != nullptr;
}

} // namespace Morvane::MorvaneTypesUtil
