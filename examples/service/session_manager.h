#pragma once

#include "tavik/managed/server_object.h"
#include "types/api/core/session_manager.h"
#include "types/api/core/user_session.h"

#include <map>
#include <mutex>
#include <string>

namespace Example {

class EventManager;

/// Who may log in, and who is logged in.
class SessionManager final : public Morvane::SessionManager, public Tavik::ServerObject {
public:
    using SessionList = Tavik::DataArray<Morvane::UserSession>;

    /// `events` is borrowed and outlives this object.
    SessionManager(std::string id, EventManager& events);

    /// The session of a key; null when there is none.
    Pellum::Ref<Morvane::UserSession> Find(const std::string& key) const;

    void GetSessionList(Pellum::Ref<SessionList>& result) override;
    void GetCurrentSession(Pellum::Ref<Morvane::UserSession>& result) override;
    void GetMessageLocaleList(Pellum::Ref<Tavik::Array<std::string>>& result) override;
    void GetSupportedLocaleList(Pellum::Ref<Tavik::Array<std::string>>& result) override;
    std::string GetDefaultLocale() override;

    void Login(
        const std::string& userName, const std::string& password, const Pellum::Optional<std::string>& locale,
        Pellum::Ref<Morvane::UserSession>& result) override;
    void LoginExtension(
        const std::string& userName, const std::string& password, const Pellum::Optional<std::string>& locale,
        Pellum::Ref<Morvane::UserSession>& result) override;
    void LoginSession(
        const std::string& userName, const std::string& sessionId,
        const Pellum::Optional<std::string>& locale, Pellum::Ref<Morvane::UserSession>& result) override;
    void LoginBySSPI(
        const std::string& base64Token, const Pellum::Optional<std::string>& locale,
        Pellum::Ref<Morvane::UserSession>& result) override;
    void Impersonate(
        const Pellum::Optional<std::string>& locale, Pellum::Ref<Morvane::UserSession>& result) override;
    void Logout() override;
    void Terminate(Tavik::Array<std::string>* sessionId) override;
    void SetLocale(const std::string& locale) override;

private:
    using Sessions = std::map<std::string, Pellum::Ref<Morvane::UserSession>>;

    EventManager& m_events;
    mutable std::mutex m_mutex;
    /// By key. A session is replaced, never changed: others may be reading it.
    Sessions m_sessions;
};

} // namespace Example
