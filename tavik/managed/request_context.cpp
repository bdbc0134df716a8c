#include "tavik/managed/request_context.h"

#include "tavik/type/version.h"
#include "tavik/value/json_text.h"

#include <algorithm>
#include <utility>

namespace Tavik {

RequestContext::RequestContext() = default;

RequestContext::RequestContext(Values values) : m_values(std::move(values)) {}

RequestContext::RequestContext(const RequestContext& other) = default;
RequestContext::~RequestContext() = default;

template <class Change>
Pellum::Ref<RequestContext> RequestContext::With(Change change) const {
    Pellum::Ref<RequestContext> copy(new RequestContext(*this));
    change(*copy);
    return copy;
}

Pellum::Ref<RequestContext> RequestContext::WithSessionKey(std::string key) const {
    return With([&](RequestContext& copy) { copy.m_values.sessionKey = std::move(key); });
}

Pellum::Ref<RequestContext> RequestContext::WithVersion(const Version* version) const {
    return With([&](RequestContext& copy) { copy.m_values.version = version; });
}

Pellum::Ref<RequestContext> RequestContext::WithLocale(std::string locale) const {
    return With([&](RequestContext& copy) { copy.m_values.locale = std::move(locale); });
}

Pellum::Ref<RequestContext> RequestContext::WithDeadline(std::optional<Clock::time_point> deadline) const {
    return With([&](RequestContext& copy) { copy.m_values.deadline = deadline; });
}

Pellum::Ref<RequestContext> RequestContext::WithTimeout(Clock::duration timeout) const {
    const Clock::time_point now = Clock::now();
    return WithDeadline(timeout < Clock::time_point::max() - now ? now + timeout : Clock::time_point::max());
}

Pellum::Ref<RequestContext> RequestContext::WithCorrelationId(std::string id) const {
    return With([&](RequestContext& copy) { copy.m_values.correlationId = std::move(id); });
}

std::string RequestContext::ToString() const {
    std::string text = m_values.sessionKey.empty() ? "no session" : "session ***";
    if (m_values.version != nullptr) {
        text += ", version " + m_values.version->GetName();
    }
    if (!m_values.locale.empty()) {
        text += ", locale ";
        AppendQuoted(text, m_values.locale);
    }
    if (m_values.deadline) {
        const Clock::time_point now = Clock::now();
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(std::max(*m_values.deadline, now) - now);
        text += ", " + std::to_string(left.count()) + " ms left";
    }
    if (!m_values.correlationId.empty()) {
        text += ", correlation ";
        AppendQuoted(text, m_values.correlationId); // a peer may have chosen it
    }
    return text;
}

} // namespace Tavik
