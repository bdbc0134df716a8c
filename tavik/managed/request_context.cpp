#include "tavik/managed/request_context.h"

#include "tavik/type/version.h"

#include <utility>

namespace Tavik {

RequestContext::RequestContext() = default;
RequestContext::RequestContext(const RequestContext& other) = default;
RequestContext::~RequestContext() = default;

template <class Change>
Pellum::Ref<RequestContext> RequestContext::With(Change change) const {
    Pellum::Ref<RequestContext> copy(new RequestContext(*this));
    change(*copy);
    return copy;
}

Pellum::Ref<RequestContext> RequestContext::WithSessionKey(std::string key) const {
    return With([&](RequestContext& copy) { copy.m_sessionKey = std::move(key); });
}

Pellum::Ref<RequestContext> RequestContext::WithVersion(const Version* version) const {
    return With([&](RequestContext& copy) { copy.m_version = version; });
}

Pellum::Ref<RequestContext> RequestContext::WithLocale(std::string locale) const {
    return With([&](RequestContext& copy) { copy.m_locale = std::move(locale); });
}

Pellum::Ref<RequestContext> RequestContext::WithDeadline(std::optional<Clock::time_point> deadline) const {
    return With([&](RequestContext& copy) { copy.m_deadline = deadline; });
}

Pellum::Ref<RequestContext> RequestContext::WithTimeout(Clock::duration timeout) const {
    return WithDeadline(Clock::now() + timeout);
}

Pellum::Ref<RequestContext> RequestContext::WithCorrelationId(std::string id) const {
    return With([&](RequestContext& copy) { copy.m_correlationId = std::move(id); });
}

std::string RequestContext::ToString() const {
    std::string text = m_sessionKey.empty() ? "no session" : "session ***";
    if (m_version != nullptr) {
        text += ", version " + m_version->GetName();
    }
    if (!m_locale.empty()) {
        text += ", locale " + m_locale;
    }
    if (m_deadline) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(*m_deadline - Clock::now());
        text += ", " + std::to_string(left.count()) + " ms left";
    }
    if (!m_correlationId.empty()) {
        text += ", correlation " + m_correlationId;
    }
    return text;
}

} // namespace Tavik
