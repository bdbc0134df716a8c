#include "examples/service/caller.h"

#include "tavik/rpc/server_call.h"

namespace Example {

std::string GetCallerKey() {
    const Tavik::ServerCall* call = Tavik::ServerCall::Current();
    return call == nullptr ? std::string() : call->GetContext().GetSessionKey();
}

} // namespace Example
