#include "examples/service/service.h"

#include "examples/service/access.h"
#include "examples/service/event_manager.h"
#include "examples/service/service_instance.h"
#include "examples/service/session_manager.h"
#include "examples/service/task_manager.h"
#include "tavik/codec/json/message_codec.h"
#include "tavik/property_collector.h"
#include "tavik/rpc/dispatcher.h"
#include "tavik/rpc/in_process_adapter.h"
#include "tavik/rpc/object_table.h"
#include "zabro/api/about_info.h"

#include <iostream>
#include <vector>

namespace Example {

namespace {

constexpr const char* kServiceInstance = "ServiceInstance";

/// What clients are not told of: the exceptions that no method declares.
void Log(const Tavik::CallFailure& failure) {
    std::cerr << failure.ToString() << '\n';
}

} // namespace

/// Everything that the service is made of. Each managed object is registered in a table, where calls find it.
struct Service::Parts {
    Parts() {
        auto content = Pellum::MakeRef<Morvane::ServiceInstanceContent>();
        content->SetPropertyCollector(
            Pellum::MakeRef<Tavik::MoRef>(&Orlin::gOrlinQueryPropertyCollectorTypeInfo, "PropertyCollector")
                .Get());
        content->SetSessionManager(sessions->_GetRef());
        content->SetEventManager(events->_GetRef());
        content->SetTaskManager(tasks->_GetRef());
        const auto about = Pellum::MakeRef<Zabro::AboutInfo>();
        about->_GetContent().SetText("name", "A conversion service in memory");
        content->SetAbout(about.Get());

        const auto instance = Pellum::MakeRef<ServiceInstance>(kServiceInstance, *content);
        objects->Register(*instance);
        objects->Register(*sessions);
        objects->Register(*events);
        objects->Register(*tasks);
    }

    // What is used stands before what uses it, and goes after it.
    const Pellum::Ref<Tavik::ObjectTable> objects = Pellum::MakeRef<Tavik::ObjectTable>();
    const Pellum::Ref<EventManager> events = Pellum::MakeRef<EventManager>("EventManager");
    const Pellum::Ref<SessionManager> sessions = Pellum::MakeRef<SessionManager>("SessionManager", *events);
    const Pellum::Ref<TaskManager> tasks =
        Pellum::MakeRef<TaskManager>("TaskManager", *objects, *events, *sessions);
    const Pellum::Ref<Tavik::Dispatcher> dispatcher =
        Pellum::MakeRef<Tavik::Dispatcher>(objects.Get(), Pellum::MakeRef<Access>(*sessions).Get(), &Log);
    std::vector<Pellum::Ref<Tavik::InProcessAdapter>> connections;
};

Service::Service() : m_parts(std::make_unique<Parts>()) {}

Service::~Service() {
    for (const auto& connection : m_parts->connections) {
        connection->Shutdown(); // no call runs any more when the objects go
    }
    m_parts->objects->Clear();
}

Pellum::Ref<Tavik::StubAdapter> Service::Connect() {
    const auto connection = Pellum::MakeRef<Tavik::InProcessAdapter>(
        std::make_unique<Tavik::Json::MessageCodec>(), m_parts->dispatcher.Get());
    m_parts->connections.push_back(connection);
    return connection;
}

Pellum::Ref<Tavik::MoRef> Service::GetServiceInstance() {
    return Pellum::MakeRef<Tavik::MoRef>(&Morvane::gMorvaneServiceInstanceTypeInfo, kServiceInstance);
}

} // namespace Example
