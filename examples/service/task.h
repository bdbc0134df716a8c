#pragma once

#include "tavik/managed/server_object.h"
#include "types/api/task/task.h"
#include "types/api/task/task_info.h"
#include "types/api/task/task_spec.h"

#include <cstdint>
#include <functional>
#include <mutex>
#include <stop_token>
#include <string>

namespace Example {

class EventManager;

/// One conversion: the request it came from, and how it stands. It copies nothing, it only takes its time.
class Task final : public Morvane::Task::Task, public Tavik::ServerObject {
public:
    using TaskInfo = Morvane::Task::TaskInfo;
    using TaskInfoList = Tavik::DataArray<TaskInfo>;
    using EventList = Tavik::DataArray<Morvane::Event::Event>;

    /// `events` is borrowed and outlives this object, which takes a count of the request.
    Task(std::string id, std::string userName, Morvane::Task::TaskSpec& request, EventManager& events);

    /// Carries the conversion out. Returns when it has ended: in success, in a fault, or because `Cancel` or
    /// `stop` ended it.
    void Run(const std::stop_token& stop);

    /// How the task stands at this moment: a copy.
    Pellum::Ref<TaskInfo> GetState() const;
    bool HasEnded() const;

    void GetInfo(Pellum::Ref<TaskInfo>& result) override;
    void GetEvent(Pellum::Ref<EventList>& result) override;
    void GetSpec(Pellum::Ref<Morvane::Task::TaskSpec>& result) override;
    void GetChild(Pellum::Ref<TaskInfoList>& result) override;
    void Cancel() override;

private:
    /// Throws what the conversion fails with.
    void Convert(const std::stop_token& stop);
    void CheckSource() const;
    void CopyVolume(const std::string& volume, int first, int last, const std::stop_token& stop);
    void Change(const std::function<void(TaskInfo&)>& change);

    const Pellum::Ref<Morvane::Task::TaskSpec> m_request;
    EventManager& m_events;
    const std::string m_userName;
    const std::int32_t m_chain;
    mutable std::mutex m_mutex;
    Pellum::Ref<TaskInfo> m_info;
    std::stop_source m_cancelled;
};

} // namespace Example
