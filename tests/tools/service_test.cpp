#include "examples/service/service.h"
#include "tavik/fault/runtime_faults.h"
#include "types/api/core/service_instance_content.h"
#include "types/api/core/service_instance_stub.h"
#include "types/api/core/session_manager_stub.h"
#include "types/api/core/user_session.h"
#include "types/api/params/cloning_params.h"
#include "types/api/params/conversion_params.h"
#include "types/api/params/storage_params.h"
#include "types/api/task/task_filter_spec.h"
#include "types/api/task/task_info.h"
#include "types/api/task/task_manager_stub.h"
#include "types/api/task/task_spec.h"
#include "types/api/task/task_stub.h"
#include "zabro/api/invalid_state.h"
#include "zabro/api/no_permission.h"
#include "zabro/api/not_found.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

/// What the service of the examples refuses, and what the programs do not ask of it.
namespace {

using Morvane::Params::StorageParams;
using Morvane::Task::TaskInfo;
using Pellum::MakeRef;
using Pellum::Ref;

class ServiceTest : public testing::Test {
protected:
    ServiceTest() {
        Open<Morvane::ServiceInstanceStub>(Example::Service::GetServiceInstance().Get())
            ->RetrieveContent(m_content);
    }

    template <class Stub>
    Ref<Stub> Open(Tavik::MoRef* object) {
        return MakeRef<Stub>(object, m_connection.Get(), m_context.Get());
    }

    Ref<Morvane::Task::TaskManagerStub> LogIn(const std::string& user, const std::string& password) {
        Ref<Morvane::UserSession> session;
        Open<Morvane::SessionManagerStub>(m_content->GetSessionManager())->Login(user, password, {}, session);
        m_context = m_context->WithSessionKey(session->GetKey());
        return Open<Morvane::Task::TaskManagerStub>(m_content->GetTaskManager());
    }

    /// A request for one disk with so many volumes.
    static Ref<Morvane::Task::TaskSpec> MakeRequest(int volumes) {
        const auto disk = MakeRef<StorageParams::TargetDiskParams>();
        for (int i = 0; i < volumes; ++i) {
            const auto volume = MakeRef<StorageParams::VolumeCloningParams>();
            volume->SetSourceVolumeId("volume");
            disk->GetVolumesToClone()->Append(volume.Get());
        }
        const auto storage = MakeRef<StorageParams>();
        storage->GetTargetDiskParams()->Append(disk.Get());
        const auto cloning = MakeRef<Morvane::Params::CloningParams>();
        cloning->SetStorageParams(storage.Get());
        const auto params = MakeRef<Morvane::Params::ConversionParams>();
        params->SetCloningParams(cloning.Get());
        auto request = MakeRef<Morvane::Task::TaskSpec>();
        request->SetConversionParams(params.Get());
        return request;
    }

    Example::Service m_service;
    Ref<Tavik::StubAdapter> m_connection = m_service.Connect();
    Ref<Tavik::RequestContext> m_context = MakeRef<Tavik::RequestContext>();
    Ref<Morvane::ServiceInstanceContent> m_content;
};

TEST_F(ServiceTest, RefusesWithFaultsThatClientsAreTold) {
    const auto visited = LogIn("visitor", "just looking");
    EXPECT_EQ(visited->GetMaxTask(), 1);
    EXPECT_THROW(visited->SetMaxTask(1), Zabro::Fault::NoPermission::Exception);
    const auto tasks = LogIn("operator", "open sesame");
    tasks->SetMaxTask(1);
    try {
        tasks->SetMaxTask(2);
        ADD_FAILURE();
    } catch (const Orlin::Fault::InvalidArgument::Exception& refusal) {
        EXPECT_EQ(refusal.GetFault()->GetInvalidProperty(), "maxTask");
    }
    Ref<Tavik::MoRef> collector;
    EXPECT_THROW(
        tasks->CreateCollector(MakeRef<Morvane::Task::TaskFilterSpec>().Get(), collector),
        Zabro::Fault::InvalidState::Exception);
    Ref<TaskInfo> info;
    tasks->CreateTask(MakeRequest(0).Get(), info);
    Ref<Morvane::Task::TaskSpec> request; // has passwords, which are not everybody's business
    tasks->GetTaskSpec(info->GetTask(), request);
    EXPECT_NE(request, nullptr);
    EXPECT_THROW(visited->GetTaskSpec(info->GetTask(), request), Zabro::Fault::NoPermission::Exception);
}

TEST_F(ServiceTest, EndsTasksWithoutVolumesAndThoseThatAreCancelledInTheQueue) {
    const auto tasks = LogIn("operator", "open sesame");
    Ref<TaskInfo> busy, waiting, empty;
    tasks->CreateTask(MakeRequest(50).Get(), busy);
    tasks->CreateTask(MakeRequest(1).Get(), waiting);
    tasks->CreateTask(MakeRequest(0).Get(), empty);
    EXPECT_THROW(tasks->DestroyTask(waiting->GetTask()), Zabro::Fault::InvalidState::Exception);
    Open<Morvane::Task::TaskStub>(waiting->GetTask())->Cancel();
    Open<Morvane::Task::TaskStub>(busy->GetTask())->Cancel();
    for (const auto& [task, state] :
         {std::pair(busy, TaskInfo::State::error), std::pair(waiting, TaskInfo::State::error),
          std::pair(empty, TaskInfo::State::success)}) {
        const auto stub = Open<Morvane::Task::TaskStub>(task->GetTask());
        Ref<TaskInfo> info;
        for (stub->GetInfo(info); info->PeekCompleteTime() == nullptr; stub->GetInfo(info)) {}
        EXPECT_EQ(info->GetState(), state);
        EXPECT_EQ(info->IsCancelled(), state == TaskInfo::State::error);
    }
    tasks->DestroyTask(waiting->GetTask());
    Ref<TaskInfo> info;
    EXPECT_THROW(tasks->GetTaskInfo(waiting->GetTask(), info), Zabro::Fault::NotFound::Exception);
    EXPECT_THROW(
        Open<Morvane::Task::TaskStub>(waiting->GetTask())->GetInfo(info),
        Orlin::Fault::ManagedObjectNotFound::Exception);
}

} // namespace
