#include "tavik/rpc/server_call.h"

#include <utility>

namespace Tavik {

namespace {

thread_local const ServerCall* tCurrent = nullptr;

} // namespace

const ServerCall* ServerCall::Current() noexcept {
    return tCurrent;
}

bool ServerCall::IsCancelled() const noexcept {
    if (m_cancelled != nullptr && m_cancelled->load(std::memory_order_acquire)) {
        return true;
    }
    const auto& deadline = m_context->GetDeadline();
    return deadline && RequestContext::Clock::now() >= *deadline;
}

ServerCall::Scope::Scope(const ServerCall& call) noexcept : m_outer(std::exchange(tCurrent, &call)) {}

ServerCall::Scope::~Scope() {
    tCurrent = m_outer;
}

} // namespace Tavik
