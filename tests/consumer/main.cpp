#include "tavik/codec/json/json.h"
#include "tavik/codec/json/message_codec.h"
#include "tavik/managed/server_object.h"
#include "tavik/rpc/dispatcher.h"
#include "tavik/rpc/in_process_adapter.h"
#include "tavik/type/type_registry.h"
#include "types/api/core/computer_spec.h"
#include "types/api/core/service_instance.h"
#include "types/api/core/service_instance_content.h"
#include "types/api/core/service_instance_stub.h"

#include <iostream>

namespace {

class Clock final : public Morvane::ServiceInstance, public Tavik::ServerObject {
public:
    Clock() : ServerObject(Morvane::gMorvaneServiceInstanceTypeInfo, "clock") {}

    void GetContent(Pellum::Ref<Morvane::ServiceInstanceContent>& result) override { result.Reset(); }

    Pellum::System::DateTime GetCurrentTime() override {
        return Pellum::System::DateTime::FromUtcTime(1'700'000'000);
    }

    void RetrieveContent(Pellum::Ref<Morvane::ServiceInstanceContent>& result) override { result.Reset(); }
};

bool ValuesWork() {
    const Pellum::Ref<Morvane::ComputerSpec> source(new Morvane::ComputerSpec);
    source->SetLocation(new Morvane::ComputerSpec::VmLocation);
    const std::string text = source->ToString();
    std::cout << text << '\n';
    const Tavik::Type* type = Tavik::TypeRegistry::Instance().FindByName("morvane.ComputerSpec");
    const auto same = Tavik::Json::DecodeAs<Morvane::ComputerSpec>(text);
    return type != nullptr && type == source->_GetType() && same->_IsEqual(source.Get(), false);
}

bool CallsWork() {
    const auto objects = Pellum::MakeRef<Tavik::ObjectTable>();
    const auto clock = Pellum::MakeRef<Clock>();
    objects->Register(*clock);
    const auto server =
        Pellum::MakeRef<Tavik::Dispatcher>(objects.Get(), Pellum::MakeRef<Tavik::AllowAll>().Get());
    const auto connection =
        Pellum::MakeRef<Tavik::InProcessAdapter>(std::make_unique<Tavik::Json::MessageCodec>(), server.Get());
    const auto stub =
        Pellum::MakeRef<Morvane::ServiceInstanceStub>(clock->_GetRef(), connection.Get(), nullptr);
    if (stub->GetCurrentTime() != clock->GetCurrentTime()) {
        return false;
    }
    objects->Unregister(*clock);
    try {
        static_cast<void>(stub->GetCurrentTime());
    } catch (const Tavik::RuntimeFault::Exception& failure) { // thrown in one library, caught in another
        std::cout << failure.what() << '\n';
        return true;
    }
    return false;
}

} // namespace

int main() {
    return ValuesWork() && CallsWork() ? 0 : 1;
}
