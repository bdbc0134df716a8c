#include "examples/service/access.h"

#include "examples/service/session_manager.h"
#include "tavik/managed/managed_method.h"
#include "tavik/rpc/server_call.h"
#include "types/api/core/user_session.h"
#include "zabro/api/no_permission.h"

#include <string_view>

namespace Example {

Access::Access(SessionManager& sessions) : m_sessions(&sessions) {}

Access::~Access() = default;

void Access::Check(const Tavik::ServerCall& call) {
    const auto session = m_sessions->Find(call.GetContext().GetSessionKey());
    const Tavik::MethodDescriptor* method = call.GetMethod().GetMethodDescriptor();
    const bool needsPrivilege = method != nullptr && method->privilege != nullptr;
    // What a task was started with holds the passwords of the machine.
    const std::string_view name = call.GetMethod().GetName();
    const bool showsSecrets = name == "spec" || name == "getTaskSpec";
    if (!session || ((needsPrivilege || showsSecrets) && !session->IsFullAccess().ValueOr(false))) {
        throw Zabro::Fault::NoPermission::Exception();
    }
}

} // namespace Example
