#include "examples/service/task_manager.h"

#include "examples/service/caller.h"
#include "examples/service/descriptions.h"
#include "examples/service/event_manager.h"
#include "examples/service/session_manager.h"
#include "tavik/fault/runtime_faults.h"
#include "tavik/rpc/object_table.h"
#include "types/api/core/user_session.h"
#include "types/api/task/runtime_environment_info.h"
#include "types/api/task/task_description.h"
#include "types/api/task/task_filter_spec.h"
#include "zabro/api/invalid_state.h"
#include "zabro/api/not_found.h"

#include <algorithm>
#include <utility>

namespace Example {

using Orlin::Fault::InvalidArgument;

TaskManager::TaskManager(
    std::string id, Tavik::ObjectTable& objects, EventManager& events, const SessionManager& sessions)
    : ServerObject(Morvane::gMorvaneTaskTaskManagerTypeInfo, std::move(id)),
      m_objects(objects),
      m_events(events),
      m_sessions(sessions),
      m_runner([this](const std::stop_token& stop) { RunQueue(stop); }) {}

TaskManager::~TaskManager() = default;

void TaskManager::RunQueue(const std::stop_token& stop) {
    while (!stop.stop_requested()) {
        Pellum::Ref<Task> task;
        {
            std::unique_lock lock(m_mutex);
            if (!m_queueChanged.wait(lock, stop, [this] { return !m_queue.empty(); })) {
                return;
            }
            task = m_queue.front();
            m_queue.pop_front();
        }
        task->Run(stop);
    }
}

Pellum::Ref<Task> TaskManager::Find(const Tavik::MoRef& reference) const {
    const std::lock_guard lock(m_mutex);
    const auto found = m_tasks.find(reference.GetId());
    if (found == m_tasks.end()) {
        throw Zabro::Fault::NotFound::Exception();
    }
    return found->second;
}

void TaskManager::GetDescription(Pellum::Ref<Morvane::Task::TaskDescription>& result) {
    result = Pellum::MakeRef<Morvane::Task::TaskDescription>();
    result->SetMethodInfo(Describe({{METHOD_CREATETASK, "Convert a machine"}}).Get());
    result->SetState(
        Describe({{"queued", "Waiting"}, {"running", "Running"}, {"success", "Done"}, {"error", "Failed"}})
            .Get());
}

std::int32_t TaskManager::GetMaxTask() {
    return 1;
}

std::int32_t TaskManager::GetMaxConnection() {
    const std::lock_guard lock(m_mutex);
    return m_maxConnection;
}

void TaskManager::GetRecentTask(Pellum::Ref<TaskList>& result) {
    result = Pellum::MakeRef<TaskList>();
    const std::lock_guard lock(m_mutex);
    for (const auto& [key, task] : m_tasks) {
        result->Append(Pellum::Ref<Tavik::MoRef>(task->_GetRef()));
    }
}

std::int32_t TaskManager::GetMaxCollector() {
    return 0;
}

void TaskManager::SetMaxTask(std::int32_t maxTask) {
    if (maxTask != 1) {
        // The method declares no fault; the runtime's own may come from every one.
        throw InvalidArgument::Exception(new InvalidArgument("maxTask", "tasks run one after the other"));
    }
}

void TaskManager::SetMaxConnection(std::int32_t maxConnection) {
    const std::lock_guard lock(m_mutex);
    m_maxConnection = maxConnection;
}

void TaskManager::CreateCollector(
    Morvane::Task::TaskFilterSpec* /*filter*/, Pellum::Ref<Tavik::MoRef>& /*result*/) {
    throw Zabro::Fault::InvalidState::Exception(); // getMaxCollector says that there is room for none
}

void TaskManager::CreateTask(TaskSpec* taskSpec, Pellum::Ref<TaskInfo>& result) {
    const Pellum::Ref<Morvane::UserSession> session = m_sessions.Find(GetCallerKey());
    const std::lock_guard lock(m_mutex);
    const std::string key = "task-" + std::to_string(++m_lastKey);
    const auto task = Pellum::MakeRef<Task>(key, session ? session->GetUserName() : "", *taskSpec, m_events);
    m_objects.Register(*task);
    m_tasks[key] = task;
    m_queue.push_back(task);
    m_queueChanged.notify_one();
    result = task->GetState();
}

void TaskManager::GetTaskInfo(Tavik::MoRef* task, Pellum::Ref<TaskInfo>& result) {
    result = Find(*task)->GetState();
}

void TaskManager::GetTaskSpec(Tavik::MoRef* task, Pellum::Ref<TaskSpec>& result) {
    Find(*task)->GetSpec(result);
}

void TaskManager::DestroyTask(Tavik::MoRef* task) {
    const Pellum::Ref<Task> found = Find(*task);
    if (!found->HasEnded()) {
        throw Zabro::Fault::InvalidState::Exception();
    }
    m_objects.Unregister(*task);
    const std::lock_guard lock(m_mutex);
    m_tasks.erase(task->GetId());
}

Pellum::Optional<std::int32_t> TaskManager::EstimateTimeToComplete(
    TaskSpec* /*taskSpec*/, Morvane::Task::RuntimeEnvironmentInfo* /*envInfo*/) {
    return {}; // there is no telling
}

void TaskManager::GetChildTask(Tavik::MoRef* task, Pellum::Ref<Task::TaskInfoList>& result) {
    Find(*task)->GetChild(result);
}

bool TaskManager::IsEnableTelemetry() {
    const std::lock_guard lock(m_mutex);
    return m_telemetry;
}

void TaskManager::SetEnableTelemetry(bool enable) {
    const std::lock_guard lock(m_mutex);
    m_telemetry = enable;
}

std::string TaskManager::GetUuid() {
    return "00000000-0000-4000-8000-000000000001";
}

} // namespace Example
