#include "tools/morvane/demo/steps.h"
#include "tools/morvane/model/library.h"
#include "tools/morvane/model/type_facts.h"
#include "tools/morvane/model/words.h"
#include "tools/morvane/terminal/table.h"
#include "tools/morvane/value/differences.h"
#include "types/api/core/computer_spec.h"
#include "types/api/info/computer_os_info.h"
#include "types/api/info/service_info.h"
#include "types/api/params/cloning_params.h"
#include "types/api/params/conversion_params.h"
#include "types/api/params/storage_params.h"
#include "types/api/task/task_spec.h"
#include "types/util/morvane_types_util.h"

#include <cstdint>
#include <map>
#include <utility>

namespace Tool {

namespace {

using Morvane::Info::StorageInfo;
using Morvane::Params::StorageParams;
using Morvane::Task::TaskSpec;
using Volume = StorageParams::VolumeCloningParams;

constexpr std::int64_t kGiB = std::int64_t{1} << 30;

StorageParams& GetStorageParams(TaskSpec& request) {
    auto* cloning = request.GetConversionParams()->GetCloningParams();
    Expect(
        cloning != nullptr && cloning->GetStorageParams() != nullptr,
        "the conversion request says nothing of disks");
    return *cloning->GetStorageParams();
}

/// Calls `act` for each volume that is to be copied.
template <class Act>
void ForEachVolume(StorageParams& params, Act act) {
    auto& disks = *params.GetTargetDiskParams();
    for (std::size_t i = 0; i < disks.GetLength(); ++i) {
        auto& volumes = *disks[i]->GetVolumesToClone();
        for (std::size_t j = 0; j < volumes.GetLength(); ++j) {
            act(*volumes[j]);
        }
    }
}

void Check(TaskSpec& request, Narrator& narrator) {
    narrator.Heading("Read a whole conversion request and check it");
    ExpectValid(request);
    StorageParams& params = GetStorageParams(request);
    std::size_t volumes = 0;
    std::size_t resized = 0;
    ForEachVolume(params, [&](const Volume& volume) {
        const auto* source = Morvane::MorvaneTypesUtil::FindVolumeInfoById(
            request.GetHardwareInfo(), volume.GetSourceVolumeId());
        Expect(source != nullptr, "the source has no volume " + volume.GetSourceVolumeId());
        ++volumes;
        resized += volume.IsResize().ValueOr(false) ? 1U : 0U;
    });
    narrator.Say(
        "It is complete. It puts " + Count(volumes, "volume") + " onto "
        + Count(params.GetTargetDiskParams()->GetLength(), "disk") + ", gives " + std::to_string(resized)
        + " of them another size, and describes the source down to "
        + Count(
            request.GetOsInfo() == nullptr ? 0 : request.GetOsInfo()->GetServices()->GetLength(), "service")
        + ". It holds " + Count(CountSecrets(request), "secret") + '.');
}

void ChangeOneVolume(TaskSpec& request, Narrator& narrator) {
    narrator.Heading("Clone it and give one volume of the clone another size");
    const Pellum::Ref<TaskSpec> changed(request._Clone());
    Expect(changed->_IsEqual(&request, false), "a clone is not equal to what it was made of");
    Volume* volume = nullptr;
    ForEachVolume(GetStorageParams(*changed), [&](Volume& each) {
        if (volume == nullptr && each.PeekNewCapacityInBytes() != nullptr) {
            volume = &each;
        }
    });
    Expect(volume != nullptr, "the conversion request resizes no volume");
    volume->SetNewCapacityInBytes(*volume->PeekNewCapacityInBytes() + 20 * kGiB);
    const auto differences = FindDifferences(request, *changed, false);
    Expect(differences.size() == 1, "one change makes " + Count(differences.size(), "difference"));
    narrator.Say(
        volume->GetSourceVolumeId() + " gets 20 GiB more. Of the whole request that is what differs:");
    PrintDifferences(narrator.GetOutput(), differences, Narrator::kIndent);
}

void Send(TaskSpec& request, const char* versionName, Narrator& narrator) {
    const Tavik::Version& version = *FindVersion(versionName);
    // The same property of many volumes counts as one.
    std::map<std::string, std::pair<std::size_t, const Tavik::Version*>> leftOut;
    for (const SetProperty& property : SendTo(version, request)) {
        auto& [times, since] = leftOut[property.path.substr(property.path.rfind('.') + 1)];
        ++times;
        since = property.version;
    }
    if (leftOut.empty()) {
        narrator.Say("A service of version " + GetShortName(&version) + " gets all of it.", Style::Good);
        return;
    }
    narrator.Say(
        "One of version " + GetShortName(&version) + " gets it without what that version does not have:");
    Table table({{"LEFT OUT"}, {"TIMES", Align::Right}, {"SINCE"}});
    for (const auto& [name, what] : leftOut) {
        table.AddRow({{name, Style::Name}, std::to_string(what.first), GetShortName(what.second)});
    }
    table.Print(narrator.GetOutput(), Narrator::kIndent);
}

} // namespace

void ShowConversionRequest(const std::filesystem::path& folder, Narrator& narrator) {
    const auto request = ReadExample<TaskSpec>(folder, "conversion_request.json");
    Check(*request, narrator);
    ChangeOneVolume(*request, narrator);
    narrator.Heading("Send it to services of two versions");
    Send(*request, "9.0", narrator);
    Send(*request, "6.6", narrator);
}

} // namespace Tool
