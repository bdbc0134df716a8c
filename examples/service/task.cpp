#include "examples/service/task.h"

#include "examples/service/event_manager.h"
#include "pellum/system/date_time.h"
#include "tavik/fault/runtime_faults.h"
#include "types/api/agent/internal/fault/cancel.h"
#include "types/api/core/computer_spec.h"
#include "types/api/core/ssl_certificate_data.h"
#include "types/api/event/cloning_failed_event.h"
#include "types/api/event/task_event.h"
#include "types/api/event/volume_cloning_canceled_event.h"
#include "types/api/event/volume_cloning_completed_event.h"
#include "types/api/event/volume_cloning_started_event.h"
#include "types/api/fault/ssl_verification_fault.h"
#include "types/api/params/cloning_params.h"
#include "types/api/params/conversion_params.h"
#include "types/api/params/storage_params.h"
#include "types/api/task/task_manager.h"

#include <chrono>
#include <iostream>
#include <thread>
#include <utility>
#include <vector>

namespace Example {

namespace {

using Morvane::Task::TaskInfo;
using Pellum::System::DateTime;

constexpr int kStepsOfVolume = 4;
constexpr auto kStepTime = std::chrono::milliseconds(10);

/// The certificates that this service trusts: a machine, and the fingerprint of what it shows.
struct TrustedMachine {
    const char* hostname;
    const char* thumbprint;
};

constexpr TrustedMachine kTrusted = {
    "erp-03.example.com", "3B:18:25:13:E2:78:4F:1D:28:DF:3E:B8:B3:DF:6D:E1:FB:BA:4C:C8"};

std::vector<std::string> FindVolumes(const Morvane::Task::TaskSpec& request) {
    std::vector<std::string> volumes;
    const auto* cloning = request.GetConversionParams()->GetCloningParams();
    const auto* storage = cloning == nullptr ? nullptr : cloning->GetStorageParams();
    const auto* disks = storage == nullptr ? nullptr : storage->PeekTargetDiskParams();
    for (std::size_t i = 0; disks != nullptr && i < disks->GetLength(); ++i) {
        const auto* chosen = (*disks)[i]->PeekVolumesToClone();
        for (std::size_t j = 0; chosen != nullptr && j < chosen->GetLength(); ++j) {
            volumes.push_back((*chosen)[j]->GetSourceVolumeId());
        }
    }
    return volumes;
}

} // namespace

Task::Task(std::string id, std::string userName, Morvane::Task::TaskSpec& request, EventManager& events)
    : ServerObject(Morvane::gMorvaneTaskTaskTypeInfo, std::move(id)),
      m_request(&request),
      m_events(events),
      m_userName(std::move(userName)),
      m_chain(events.NewChain()),
      m_info(Pellum::MakeRef<TaskInfo>()) {
    m_info->SetKey(_GetRef()->GetId());
    m_info->SetTask(_GetRef());
    m_info->SetDescriptionId(Morvane::Task::TaskManager::METHOD_CREATETASK);
    m_info->SetUserName(Pellum::Optional<std::string>(m_userName));
    m_info->SetState(TaskInfo::State::queued);
    m_info->SetCancelled(false);
    m_info->SetCancelable(true);
    m_info->SetProgress(Pellum::Optional<std::int32_t>(0));
    m_info->SetQueueTime(DateTime::Now());
    m_info->SetEventChainId(m_chain);
}

void Task::Run(const std::stop_token& stop) {
    Change([](TaskInfo& info) {
        info.SetState(TaskInfo::State::running);
        info.SetStartTime(Pellum::Optional<DateTime>(DateTime::Now()));
    });
    Pellum::Ref<Tavik::MethodFault> error;
    try {
        Convert(stop);
    } catch (Tavik::MethodFault::Exception& failure) {
        error = failure.GetFault();
    } catch (const std::exception& failure) {
        // What went wrong inside is for the log; the client learns where to look.
        std::cerr << _GetRef()->GetId() << ": " << failure.what() << '\n';
        error = Pellum::MakeRef<Orlin::Fault::SystemError>("the conversion failed", _GetRef()->GetId());
    }
    if (error) {
        m_events.Record<Morvane::Event::CloningFailedEvent>(
            m_chain, m_userName, [](auto& event) { event.SetType(Morvane::Event::Event::Type::error); });
    }
    Change([&](TaskInfo& info) {
        info.SetState(error ? TaskInfo::State::error : TaskInfo::State::success);
        info.SetError(error.Get());
        if (!error) {
            info.SetProgress(Pellum::Optional<std::int32_t>(100));
        }
        info.SetCancelled(m_cancelled.stop_requested());
        info.SetCancelable(false);
        info.SetCompleteTime(Pellum::Optional<DateTime>(DateTime::Now()));
    });
    m_events.Record<Morvane::Event::TaskEvent>(
        m_chain, m_userName, [&](auto& event) { event.SetInfo(GetState().Get()); });
}

void Task::Convert(const std::stop_token& stop) {
    CheckSource();
    const std::vector<std::string> volumes = FindVolumes(*m_request);
    for (std::size_t i = 0; i < volumes.size(); ++i) {
        const auto percent = [&](std::size_t done) { return static_cast<int>(100 * done / volumes.size()); };
        CopyVolume(volumes[i], percent(i), percent(i + 1), stop);
    }
}

void Task::CheckSource() const {
    const auto* source = m_request->GetSource();
    const auto* location =
        source == nullptr
            ? nullptr
            : dynamic_cast<const Morvane::ComputerSpec::LiveComputerLocation*>(source->GetLocation());
    if (location == nullptr || location->GetHostname() != kTrusted.hostname) {
        return; // nothing is known of the machine
    }
    const std::string thumbprint = location->GetSslThumbprint().ValueOr("");
    if (thumbprint != kTrusted.thumbprint) {
        const std::string certificate = location->GetSslCertificate().ValueOr("none");
        const auto data = Pellum::MakeRef<Morvane::SSLCertificateData>();
        data->GetData()->GetElements().assign(certificate.begin(), certificate.end());
        const auto chain = Pellum::MakeRef<Tavik::DataArray<Morvane::SSLCertificateData>>();
        chain->Append(data.Get());
        throw Morvane::Fault::SSLVerificationFault::Exception(
            location->GetHostname(), true, thumbprint, "the certificate is not the one that is trusted", {},
            chain.Get(), certificate);
    }
}

void Task::CopyVolume(const std::string& volume, int first, int last, const std::stop_token& stop) {
    const auto name = [&](auto& event) { event.SetVolumePath(volume); };
    m_events.Record<Morvane::Event::VolumeCloningStartedEvent>(m_chain, m_userName, name);
    for (int step = 1; step <= kStepsOfVolume; ++step) {
        std::this_thread::sleep_for(kStepTime);
        if (stop.stop_requested() || m_cancelled.stop_requested()) {
            m_events.Record<Morvane::Event::VolumeCloningCanceledEvent>(m_chain, m_userName, name);
            throw Morvane::Agent::Internal::Fault::Cancel::Exception();
        }
        Change([&](TaskInfo& info) {
            info.SetProgress(Pellum::Optional<std::int32_t>(first + (last - first) * step / kStepsOfVolume));
        });
    }
    m_events.Record<Morvane::Event::VolumeCloningCompletedEvent>(m_chain, m_userName, name);
}

void Task::Change(const std::function<void(TaskInfo&)>& change) {
    const std::lock_guard lock(m_mutex);
    change(*m_info);
}

Pellum::Ref<TaskInfo> Task::GetState() const {
    const std::lock_guard lock(m_mutex);
    return Pellum::Ref<TaskInfo>(m_info->_Clone());
}

bool Task::HasEnded() const {
    const std::lock_guard lock(m_mutex);
    return m_info->PeekCompleteTime() != nullptr;
}

void Task::GetInfo(Pellum::Ref<TaskInfo>& result) {
    result = GetState();
}

void Task::GetEvent(Pellum::Ref<EventList>& result) {
    result = m_events.FindChain(m_chain);
}

void Task::GetSpec(Pellum::Ref<Morvane::Task::TaskSpec>& result) {
    result = m_request;
}

void Task::GetChild(Pellum::Ref<TaskInfoList>& result) {
    result.Reset(); // a conversion starts no others here
}

void Task::Cancel() {
    m_cancelled.request_stop();
}

} // namespace Example
