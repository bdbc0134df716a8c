#pragma once

#include "examples/service/task.h"
#include "tavik/managed/server_object.h"
#include "types/api/task/task_manager.h"

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <map>
#include <mutex>
#include <string>
#include <thread>

namespace Tavik {
class ObjectTable;
}

namespace Example {

class EventManager;
class SessionManager;

/// Starts tasks, one after the other, and keeps those that have ended.
class TaskManager final : public Morvane::Task::TaskManager, public Tavik::ServerObject {
public:
    using TaskSpec = Morvane::Task::TaskSpec;
    using TaskInfo = Morvane::Task::TaskInfo;
    using TaskList = Tavik::Array<Pellum::Ref<Tavik::MoRef>>;

    /// All borrowed; they outlive this object.
    TaskManager(
        std::string id, Tavik::ObjectTable& objects, EventManager& events, const SessionManager& sessions);
    /// Cancels what is running and waits for it.
    ~TaskManager() override;

    void GetDescription(Pellum::Ref<Morvane::Task::TaskDescription>& result) override;
    std::int32_t GetMaxTask() override;
    std::int32_t GetMaxConnection() override;
    void GetRecentTask(Pellum::Ref<TaskList>& result) override;
    std::int32_t GetMaxCollector() override;

    void SetMaxTask(std::int32_t maxTask) override;
    void SetMaxConnection(std::int32_t maxConnection) override;
    void CreateCollector(Morvane::Task::TaskFilterSpec* filter, Pellum::Ref<Tavik::MoRef>& result) override;
    void CreateTask(TaskSpec* taskSpec, Pellum::Ref<TaskInfo>& result) override;
    void GetTaskInfo(Tavik::MoRef* task, Pellum::Ref<TaskInfo>& result) override;
    void GetTaskSpec(Tavik::MoRef* task, Pellum::Ref<TaskSpec>& result) override;
    void DestroyTask(Tavik::MoRef* task) override;
    Pellum::Optional<std::int32_t> EstimateTimeToComplete(
        TaskSpec* taskSpec, Morvane::Task::RuntimeEnvironmentInfo* envInfo) override;
    void GetChildTask(Tavik::MoRef* task, Pellum::Ref<Task::TaskInfoList>& result) override;
    bool IsEnableTelemetry() override;
    void SetEnableTelemetry(bool enable) override;
    std::string GetUuid() override;

private:
    /// Throws the fault "not found" when there is no such task.
    Pellum::Ref<Task> Find(const Tavik::MoRef& reference) const;
    void RunQueue(const std::stop_token& stop);

    Tavik::ObjectTable& m_objects;
    EventManager& m_events;
    const SessionManager& m_sessions;
    mutable std::mutex m_mutex;
    std::condition_variable_any m_queueChanged;
    std::deque<Pellum::Ref<Task>> m_queue;            ///< waiting, the next one first
    std::map<std::string, Pellum::Ref<Task>> m_tasks; ///< all, by key
    int m_lastKey = 0;
    std::int32_t m_maxConnection = 8;
    bool m_telemetry = false;
    std::jthread m_runner; ///< last, so that it ends before what it works on
};

} // namespace Example
