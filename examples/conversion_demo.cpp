#include "examples/service/service.h"
#include "pellum/error/exception.h"
#include "tavik/codec/json/file.h"
#include "tavik/codec/json/json.h"
#include "tavik/managed/async.h"
#include "tavik/type/type_registry.h"
#include "types/api/core/computer_spec.h"
#include "types/api/core/service_instance_content.h"
#include "types/api/core/service_instance_stub.h"
#include "types/api/core/session_manager_stub.h"
#include "types/api/core/user_session.h"
#include "types/api/event/event_filter_spec.h"
#include "types/api/event/event_manager_stub.h"
#include "types/api/fault/ssl_verification_fault.h"
#include "types/api/task/task_info.h"
#include "types/api/task/task_manager_stub.h"
#include "types/api/task/task_spec.h"
#include "types/api/task/task_stub.h"
#include "zabro/api/invalid_login.h"

#include <chrono>
#include <iomanip>
#include <iostream>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include <unistd.h>

/// What a client does with a conversion service: every call below is encoded, carried to the service, decoded
/// there, and answered the same way.
namespace {

using Morvane::Event::Event;
using Morvane::Task::TaskInfo;
using Morvane::Task::TaskSpec;
using Session = Pellum::Ref<Morvane::UserSession>;

class Client {
public:
    Client(Example::Service& service, TaskSpec& request)
        : m_connection(service.Connect()),
          m_context(Pellum::MakeRef<Tavik::RequestContext>()->WithVersion(
              &Tavik::TypeRegistry::Instance().GetVersion("9.0", "morvane"))),
          m_request(&request) {
        // The one object that everybody knows leads to all others.
        Open<Morvane::ServiceInstanceStub>(Example::Service::GetServiceInstance().Get())
            ->RetrieveContent(m_content);
    }

    void LogIn() {
        const auto sessions = Open<Morvane::SessionManagerStub>(m_content->GetSessionManager());
        Session session;
        try {
            sessions->Login("operator", "open barley", {}, session);
        } catch (const Zabro::Fault::InvalidLogin::Exception& refusal) {
            std::cout << "With a wrong password: " << refusal.what() << '\n';
        }
        sessions->Login("operator", "open sesame", {}, session);
        m_context = m_context->WithSessionKey(session->GetKey());
        std::cout << "Logged in as " << session->GetFullName() << ".\n\n";
    }

    void Convert() {
        std::cout << "A conversion from beginning to end:\n";
        const Pellum::Ref<TaskInfo> ended = Watch(*Start(*m_request));
        std::cout << "  " << Describe(*ended) << ". Its events:\n";
        ShowEvents(*ended);
        std::cout << '\n';
    }

    void CancelOne() {
        std::cout << "One that is cancelled on its way:\n";
        const Pellum::Ref<Morvane::Task::TaskStub> task = Start(*m_request);
        const Pellum::Ref<TaskInfo> ended = Watch(*task, 30);
        std::cout << "  " << Describe(*ended) << "\n\n";
    }

    void MeetFault() {
        std::cout << "One whose source shows a certificate that the service does not trust:\n";
        const Pellum::Ref<TaskSpec> request(m_request->_Clone());
        auto* location =
            dynamic_cast<Morvane::ComputerSpec::LiveComputerLocation*>(request->GetSource()->GetLocation());
        if (location == nullptr) {
            throw Pellum::Exception("the source of the request is no live machine");
        }
        location->SetSslThumbprint("00:11:22");
        const Pellum::Ref<TaskInfo> ended = Watch(*Start(*request));
        Tavik::MethodFault* fault = ended->GetError();
        if (fault == nullptr) {
            throw Pellum::Exception("the service knows nothing of the machine's certificate");
        }
        try {
            fault->Throw();
        } catch (const Morvane::Fault::SSLVerificationFault::Exception& failure) {
            std::cout << "  as itself:          thumbprint " << failure.GetFault()->GetThumbprint() << " of "
                      << failure.GetFault()->GetHostname() << '\n';
        }
        try {
            fault->Throw();
        } catch (const Morvane::Fault::MorvaneFault::Exception& failure) {
            std::cout << "  as any of ours:     " << failure.GetFault()->_GetType()->GetName() << '\n';
        }
        try {
            fault->Throw();
        } catch (const std::exception& failure) {
            std::cout << "  as any exception:   " << failure.what() << "\n\n";
        }
    }

    void LogOut() {
        Open<Morvane::SessionManagerStub>(m_content->GetSessionManager())->Logout();
        std::cout << "Logged out.\n";
        try {
            Pellum::Ref<TaskInfo> info;
            Open<Morvane::Task::TaskManagerStub>(m_content->GetTaskManager())
                ->CreateTask(m_request.Get(), info);
        } catch (const Pellum::Exception& refusal) {
            std::cout << "Without a session:     " << refusal.what() << '\n';
        }
    }

private:
    template <class Stub>
    Pellum::Ref<Stub> Open(Tavik::MoRef* object) const {
        return Pellum::MakeRef<Stub>(object, m_connection.Get(), m_context.Get());
    }

    Pellum::Ref<Morvane::Task::TaskStub> Start(TaskSpec& request) const {
        Pellum::Ref<TaskInfo> info;
        Open<Morvane::Task::TaskManagerStub>(m_content->GetTaskManager())->CreateTask(&request, info);
        return Open<Morvane::Task::TaskStub>(info->GetTask());
    }

    /// Asks how the task stands until it has ended; cancels it at `cancelAt` percent.
    static Pellum::Ref<TaskInfo> Watch(Morvane::Task::TaskStub& task, int cancelAt = 101) {
        Pellum::Ref<TaskInfo> info;
        for (task.GetInfo(info); info->PeekCompleteTime() == nullptr; task.GetInfo(info)) {
            const int percent = info->GetProgress().ValueOr(0);
            ShowProgress(percent);
            if (percent >= cancelAt && info->IsCancelable()) {
                task.Cancel();
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
        ShowProgress(info->GetProgress().ValueOr(0));
        std::cout << (isatty(STDOUT_FILENO) != 0 ? "\n" : "");
        return info;
    }

    /// A bar that grows in place; nothing where the output is no terminal.
    static void ShowProgress(int percent) {
        if (isatty(STDOUT_FILENO) == 0) {
            return;
        }
        constexpr int kWidth = 40;
        const int filled = percent * kWidth / 100;
        std::cout << "\r  [" << std::string(static_cast<std::size_t>(filled), '#')
                  << std::string(static_cast<std::size_t>(kWidth - filled), '.') << "] " << percent << " %"
                  << std::flush;
    }

    static std::string Describe(const TaskInfo& info) {
        std::string text =
            info.GetKey() + " ended at " + std::to_string(info.GetProgress().ValueOr(0)) + " %";
        if (const Tavik::MethodFault* error = info.GetError(); error != nullptr) {
            text += std::string(info.IsCancelled() ? ", cancelled: " : " in ") + error->_GetType()->GetName();
        }
        return text;
    }

    /// What happened during a task: how many events of which type.
    void ShowEvents(const TaskInfo& info) const {
        const auto filter = Pellum::MakeRef<Morvane::Event::EventFilterSpec>();
        filter->SetEventChainId(Pellum::Optional<std::int32_t>(info.GetEventChainId()));
        const auto events = Open<Morvane::Event::EventManagerStub>(m_content->GetEventManager());
        // The asynchronous form: this thread could do something else until it asks for the result.
        auto call = Tavik::StartFuture<Pellum::Ref<Tavik::DataArray<Event>>>(
            [&](const auto& done, auto& item) { events->QueryEvent(filter.Get(), done, item); });
        std::map<std::string, int> counts;
        const auto list = call.Get();
        for (const Event* event : *list) {
            ++counts[event->_GetType()->GetName()];
        }
        for (const auto& [type, count] : counts) {
            std::cout << "  " << std::setw(3) << count << " x " << type << '\n';
        }
    }

    Pellum::Ref<Tavik::StubAdapter> m_connection;
    Pellum::Ref<Tavik::RequestContext> m_context;
    Pellum::Ref<TaskSpec> m_request;
    Pellum::Ref<Morvane::ServiceInstanceContent> m_content;
};

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: conversion_demo REQUEST.json\n";
        return 2;
    }
    try {
        Tavik::Json::DecodeOptions options;
        options.sourceName = argv[1];
        const auto request = Tavik::Json::DecodeAs<TaskSpec>(
            Tavik::Json::ReadInput(argv[1], options.limits.inputBytes), options);
        Example::Service service;
        Client client(service, *request);
        client.LogIn();
        client.Convert();
        client.CancelOne();
        client.MeetFault();
        client.LogOut();
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "conversion_demo: " << error.what() << '\n';
        return 1;
    }
}
