// Reads a conversion request and prints which volume of the source goes where.
//
//     volume_plan examples/conversion_request.json
#include "pellum/error/exception.h"
#include "tavik/codec/json/file.h"
#include "tavik/codec/json/json.h"
#include "types/api/params/cloning_params.h"
#include "types/api/params/conversion_params.h"
#include "types/api/task/task_spec.h"
#include "types/util/morvane_types_util.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>

using namespace Morvane::MorvaneTypesUtil;
using Morvane::Info::StorageInfo;
using Morvane::Params::StorageParams;

namespace {

std::string InGiB(std::int64_t bytes) {
    char text[32];
    std::snprintf(text, sizeof(text), "%.1f", static_cast<double>(bytes) / (1024.0 * 1024 * 1024));
    return text;
}

void PrintRow(
    const std::string& volume, const std::string& fileSystem, const std::string& sector,
    const std::string& size, const std::string& newSize, const std::string& target) {
    std::printf(
        "%-20s %-6s %6s %9s %9s  %s\n", volume.c_str(), fileSystem.c_str(), sector.c_str(), size.c_str(),
        newSize.c_str(), target.c_str());
}

void PrintVolume(
    const StorageInfo& storage, const StorageInfo::VolumeInfo& volume,
    const StorageParams::VolumeCloningParams* params, const std::string& target) {
    std::string newSize = "-";
    if (params != nullptr) {
        const bool resized = params->IsResize().ValueOr(false) && params->PeekNewCapacityInBytes() != nullptr;
        newSize = InGiB(resized ? *params->PeekNewCapacityInBytes() : volume.GetCapacityInBytes());
    }
    PrintRow(
        volume.GetVolumeId(), volume.GetFileSystem().ValueOr("?"),
        std::to_string(FindSectorSizeByVolume(&volume, storage.GetDisk())),
        InGiB(volume.GetCapacityInBytes()), newSize, target);
}

void PrintPlan(const Morvane::Task::TaskSpec& request) {
    const Morvane::Info::ComputerHardwareInfo* hardware = request.GetHardwareInfo();
    const Morvane::Params::ConversionParams* conversion = request.GetConversionParams();
    const Morvane::Params::CloningParams* cloning = conversion->GetCloningParams();
    if (hardware == nullptr || hardware->GetStorage() == nullptr || cloning == nullptr
        || cloning->GetStorageParams() == nullptr) {
        throw Pellum::Exception("the request tells nothing of disks");
    }
    const StorageInfo& storage = *hardware->GetStorage();
    std::cout << "GUID partition tables: " << (HasGptDisk(hardware) ? "yes" : "no") << std::endl;
    PrintRow("VOLUME", "TYPE", "SECTOR", "GiB", "NEW GiB", "TARGET");
    const auto& targets = *cloning->GetStorageParams()->GetTargetDiskParams();
    for (std::size_t i = 0; i < targets.GetLength(); ++i) {
        const StorageParams::TargetDiskParams& disk = *targets[i];
        std::string target = "disk " + std::to_string(i);
        if (const auto* managed = dynamic_cast<const StorageParams::ManagedTargetDiskParams*>(&disk)) {
            target += " on " + managed->GetDatastoreName();
        }
        const auto& volumes = *disk.GetVolumesToClone();
        for (std::size_t j = 0; j < volumes.GetLength(); ++j) {
            const auto* volume = FindVolumeInfoById(hardware, volumes[j]->GetSourceVolumeId());
            if (volume == nullptr) {
                throw Pellum::Exception("the source has no volume " + volumes[j]->GetSourceVolumeId());
            }
            PrintVolume(storage, *volume, volumes[j], target);
        }
    }
    const auto& all = *storage.GetVolume();
    for (std::size_t i = 0; i < all.GetLength(); ++i) {
        if (FindVolumeCloningParamsById(conversion, all[i]->GetVolumeId()) == nullptr) {
            PrintVolume(storage, *all[i], nullptr, "left out");
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: volume_plan FILE\n";
        return 2;
    }
    try {
        Tavik::Json::DecodeOptions options;
        options.sourceName = argv[1];
        const std::string text = Tavik::Json::ReadInput(argv[1], options.limits.inputBytes);
        PrintPlan(*Tavik::Json::DecodeAs<Morvane::Task::TaskSpec>(text, options));
    } catch (const Pellum::Exception& error) {
        std::cerr << "volume_plan: " << error.what() << '\n';
        return 1;
    }
}
