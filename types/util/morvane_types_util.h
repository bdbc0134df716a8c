#pragma once

#include "types/api/agent/params/agent_cloning_params.h"
#include "types/api/agent/params/storage_mapping.h"
#include "types/api/info/computer_hardware_info.h"
#include "types/api/info/storage_info.h"
#include "types/api/params/conversion_params.h"
#include "types/api/params/storage_params.h"
#include "types/export.h"

#include <string>

/// Looks up the parts of storage descriptions and requests by their identifiers.
///
/// Identifiers match byte by byte: neither case nor surrounding blanks are ignored. Of several entries with
/// one identifier the first counts. Every pointer that is passed is borrowed for the call. Every pointer that
/// is returned is borrowed from the object searched, whose reference count is not touched, and is valid as
/// long as that object holds the entry. The look-ups change nothing: any number of threads may search an
/// object at a time while none changes it.
///
/// The functions named `Find...ById` and `HasGptDisk` take whatever is missing (a null argument, an unset
/// property, a null element) for a search without success, and never throw.
namespace Morvane::MorvaneTypesUtil {

/// The disk with that `diskId`, or null.
TYPES_API const Info::StorageInfo::DiskInfo* FindDiskInfoById(
    const Info::StorageInfo* storage, const std::string& id);
/// The disk with that `diskId` in the machine's `storage`, or null.
TYPES_API const Info::StorageInfo::DiskInfo* FindDiskInfoById(
    const Info::ComputerHardwareInfo* hardware, const std::string& id);

/// The volume with that `volumeId` in the machine's `storage`, or null.
TYPES_API const Info::StorageInfo::VolumeInfo* FindVolumeInfoById(
    const Info::ComputerHardwareInfo* hardware, const std::string& id);

/// The mapping of the disk with that `sourceDiskId`, or null. Mappings without one are passed over.
TYPES_API const Agent::Params::StorageMapping::DiskMapping* FindDiskMappingById(
    const Agent::Params::AgentCloningParams* params, const std::string& id);

/// The mapping of the volume with that `sourceVolumeId`, or null.
TYPES_API const Agent::Params::StorageMapping::VolumeMapping* FindVolumeMappingById(
    const Agent::Params::AgentCloningParams* params, const std::string& id);

/// What is asked for the volume with that `sourceVolumeId`: the first entry, by target disk and then by
/// volume, or null.
TYPES_API const Params::StorageParams::VolumeCloningParams* FindVolumeCloningParamsById(
    const Params::StorageParams* params, const std::string& id);
/// The same, in the `storageParams` of the request's `cloningParams`.
TYPES_API const Params::StorageParams::VolumeCloningParams* FindVolumeCloningParamsById(
    const Params::ConversionParams* params, const std::string& id);

/// Bytes in a sector of the volume: those of the only disk that it lies on, as `disks` describes it. 512
/// where the volume lies on no disk or several, the disk is not among `disks`, or its sector size is unset. A
/// size that is set is returned unchecked. Ends the process when an argument is null.
TYPES_API unsigned FindSectorSizeByVolume(
    const Info::StorageInfo::VolumeInfo* volume, const Tavik::DataArray<Info::StorageInfo::DiskInfo>* disks);
/// The same for a volume of the source, where the mapping of its disk says the sector size.
TYPES_API unsigned FindSectorSizeByVolume(
    const Info::StorageInfo::VolumeInfo* volume, const Agent::Params::AgentCloningParams* params);

/// Whether a volume of the machine has the partition type 0xEE, which gives away a disk with a GUID partition
/// table. What the disks say of themselves (`gpt`) does not count.
TYPES_API bool HasGptDisk(const Info::ComputerHardwareInfo* hardware);

} // namespace Morvane::MorvaneTypesUtil
