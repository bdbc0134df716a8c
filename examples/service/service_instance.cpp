#include "examples/service/service_instance.h"

#include <utility>

namespace Example {

ServiceInstance::ServiceInstance(std::string id, Morvane::ServiceInstanceContent& content)
    : ServerObject(Morvane::gMorvaneServiceInstanceTypeInfo, std::move(id)), m_content(&content) {}

void ServiceInstance::GetContent(Pellum::Ref<Morvane::ServiceInstanceContent>& result) {
    result = m_content;
}

Pellum::System::DateTime ServiceInstance::GetCurrentTime() {
    return Pellum::System::DateTime::Now();
}

void ServiceInstance::RetrieveContent(Pellum::Ref<Morvane::ServiceInstanceContent>& result) {
    result = m_content;
}

} // namespace Example
