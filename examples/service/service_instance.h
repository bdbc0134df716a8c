#pragma once

#include "tavik/managed/server_object.h"
#include "types/api/core/service_instance.h"
#include "types/api/core/service_instance_content.h"

#include <string>

namespace Example {

/// Tells clients where everything is.
class ServiceInstance final : public Morvane::ServiceInstance, public Tavik::ServerObject {
public:
    /// Takes a count of `content`, which is not changed any more.
    ServiceInstance(std::string id, Morvane::ServiceInstanceContent& content);

    void GetContent(Pellum::Ref<Morvane::ServiceInstanceContent>& result) override;
    Pellum::System::DateTime GetCurrentTime() override;
    void RetrieveContent(Pellum::Ref<Morvane::ServiceInstanceContent>& result) override;

private:
    const Pellum::Ref<Morvane::ServiceInstanceContent> m_content;
};

} // namespace Example
