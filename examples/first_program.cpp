#include "examples/service/service.h"
#include "types/api/core/computer_spec.h"
#include "types/api/core/service_instance_content.h"
#include "types/api/core/service_instance_stub.h"
#include "types/api/core/session_manager_stub.h"
#include "types/api/core/user_session.h"
#include "types/api/params/conversion_params.h"
#include "types/api/task/task_info.h"
#include "types/api/task/task_manager_stub.h"
#include "types/api/task/task_spec.h"
#include "types/api/task/task_stub.h"

#include <chrono>
#include <iostream>
#include <thread>

int main() {
    Example::Service service; // keeps everything in memory; calls travel as messages all the same
    const auto connection = service.Connect();
    auto context = Pellum::MakeRef<Tavik::RequestContext>();
    const auto open = [&]<class Stub>(Pellum::Ref<Stub>& stub, Tavik::MoRef* object) {
        stub = Pellum::MakeRef<Stub>(object, connection.Get(), context.Get());
    };

    // One object is known, and leads to all others.
    Pellum::Ref<Morvane::ServiceInstanceStub> instance;
    open(instance, Example::Service::GetServiceInstance().Get());
    Pellum::Ref<Morvane::ServiceInstanceContent> content;
    instance->RetrieveContent(content);

    Pellum::Ref<Morvane::SessionManagerStub> sessions;
    open(sessions, content->GetSessionManager());
    Pellum::Ref<Morvane::UserSession> session;
    sessions->Login("operator", "open sesame", {}, session);
    context = context->WithSessionKey(session->GetKey());

    // The machine to convert.
    const auto location = Pellum::MakeRef<Morvane::ComputerSpec::LiveComputerLocation>();
    location->SetHostname("db-07.plant.example");
    location->SetOsType("linux");
    location->SetPassword("a secret");
    const auto source = Pellum::MakeRef<Morvane::ComputerSpec>();
    source->SetLocation(location.Get());
    const auto request = Pellum::MakeRef<Morvane::Task::TaskSpec>();
    request->SetSource(source.Get());
    request->SetConversionParams(Pellum::MakeRef<Morvane::Params::ConversionParams>().Get());
    std::cout << request->ToString() << '\n';

    Pellum::Ref<Morvane::Task::TaskManagerStub> tasks;
    open(tasks, content->GetTaskManager());
    Pellum::Ref<Morvane::Task::TaskInfo> info;
    tasks->CreateTask(request.Get(), info);
    Pellum::Ref<Morvane::Task::TaskStub> task;
    open(task, info->GetTask());
    while (info->PeekCompleteTime() == nullptr) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
        task->GetInfo(info);
    }
    std::cout << info->ToString() << '\n';
}
