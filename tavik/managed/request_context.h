#pragma once

#include "pellum/object/object.h"
#include "pellum/object/ref.h"
#include "tavik/export.h"

#include <chrono>
#include <optional>
#include <string>

namespace Tavik {

class Version;

/// What a call carries beside its arguments. Immutable, so that stubs and threads may share one; the `With`
/// functions create a copy that differs in one thing.
class TAVIK_API RequestContext final : public Pellum::ObjectImpl {
public:
    using Clock = std::chrono::steady_clock;

    /// All that a context says; see the functions below.
    struct Values {
        std::string sessionKey;
        const Version* version = nullptr;
        std::string locale;
        std::optional<Clock::time_point> deadline;
        std::string correlationId;
    };

    /// No session, no restriction of version, no locale, no deadline.
    RequestContext();
    explicit RequestContext(Values values);

    /// Proves to the server who calls; empty outside of a session. A secret: it is in no text that this class
    /// makes.
    const std::string& GetSessionKey() const { return m_values.sessionKey; }

    /// The API version that the caller speaks, borrowed; null for whatever both sides know.
    const Version* GetVersion() const { return m_values.version; }

    /// "en_US"; empty for the server's choice.
    const std::string& GetLocale() const { return m_values.locale; }

    /// When the caller stops waiting; nothing when it waits for ever.
    const std::optional<Clock::time_point>& GetDeadline() const { return m_values.deadline; }

    /// Names a call in the logs of both sides; where it is empty each call is given one of its own.
    const std::string& GetCorrelationId() const { return m_values.correlationId; }

    [[nodiscard]] Pellum::Ref<RequestContext> WithSessionKey(std::string key) const;
    /// `version` is borrowed, null for no restriction: what `TypeRegistry::GetVersion` gives.
    [[nodiscard]] Pellum::Ref<RequestContext> WithVersion(const Version* version) const;
    [[nodiscard]] Pellum::Ref<RequestContext> WithLocale(std::string locale) const;
    [[nodiscard]] Pellum::Ref<RequestContext> WithDeadline(std::optional<Clock::time_point> deadline) const;
    /// A deadline so long from now; none of the durations is too long.
    [[nodiscard]] Pellum::Ref<RequestContext> WithTimeout(Clock::duration timeout) const;
    [[nodiscard]] Pellum::Ref<RequestContext> WithCorrelationId(std::string id) const;

    /// All but the session key, for people.
    [[nodiscard]] std::string ToString() const override;

private:
    RequestContext(const RequestContext& other);
    ~RequestContext() override;

    template <class Change>
    Pellum::Ref<RequestContext> With(Change change) const;

    Values m_values;
};

} // namespace Tavik
