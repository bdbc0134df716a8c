#include "examples/service/session_manager.h"

#include "examples/service/caller.h"
#include "examples/service/event_manager.h"
#include "pellum/system/date_time.h"
#include "types/api/event/user_failed_authentication_event.h"
#include "types/api/event/user_login_event.h"
#include "types/api/event/user_logout_event.h"
#include "zabro/api/invalid_locale.h"
#include "zabro/api/invalid_login.h"
#include "zabro/api/not_found.h"

#include <algorithm>
#include <array>
#include <random>
#include <string_view>

namespace Example {

namespace {

using Morvane::UserSession;
using Pellum::System::DateTime;

constexpr const char* kLocales[] = {"en_US", "de_DE"};
constexpr const char* kAddress = "127.0.0.1"; // calls come from the same process

struct User {
    const char* name;
    const char* password;
    const char* fullName;
    bool hasFullAccess;
};

// A real service asks a directory of users.
constexpr User kUsers[] = {
    {"operator", "open sesame", "Olga Operator", true},
    {"visitor", "just looking", "Victor Visitor", false},
};

const User* FindUser(std::string_view name, std::string_view password) {
    const auto* user = std::find_if(std::begin(kUsers), std::end(kUsers), [&](const User& each) {
        return each.name == name && each.password == password;
    });
    return user == std::end(kUsers) ? nullptr : user;
}

void CheckLocale(const std::string& locale) {
    if (std::find(std::begin(kLocales), std::end(kLocales), locale) == std::end(kLocales)) {
        throw Zabro::Fault::InvalidLocale::Exception();
    }
}

/// Nobody can guess it: whoever has the key has the session.
std::string NewKey() {
    std::random_device random;
    std::string key;
    for (int i = 0; i < 32; ++i) {
        key += "0123456789abcdef"[random() % 16];
    }
    return key;
}

Pellum::Ref<Tavik::Array<std::string>> MakeLocaleList() {
    auto list = Pellum::MakeRef<Tavik::Array<std::string>>();
    for (const char* locale : kLocales) {
        list->Append(locale);
    }
    return list;
}

} // namespace

SessionManager::SessionManager(std::string id, EventManager& events)
    : ServerObject(Morvane::gMorvaneSessionManagerTypeInfo, std::move(id)), m_events(events) {}

Pellum::Ref<UserSession> SessionManager::Find(const std::string& key) const {
    const std::lock_guard lock(m_mutex);
    const auto found = m_sessions.find(key);
    return found == m_sessions.end() ? nullptr : found->second;
}

void SessionManager::GetSessionList(Pellum::Ref<SessionList>& result) {
    result = Pellum::MakeRef<SessionList>();
    const std::lock_guard lock(m_mutex);
    for (const auto& [key, session] : m_sessions) {
        const Pellum::Ref<UserSession> shown(session->_Clone());
        shown->SetKey("");
        result->Append(shown.Get());
    }
}

void SessionManager::GetCurrentSession(Pellum::Ref<UserSession>& result) {
    result = Find(GetCallerKey());
}

void SessionManager::GetMessageLocaleList(Pellum::Ref<Tavik::Array<std::string>>& result) {
    result = MakeLocaleList();
}

void SessionManager::GetSupportedLocaleList(Pellum::Ref<Tavik::Array<std::string>>& result) {
    result = MakeLocaleList();
}

std::string SessionManager::GetDefaultLocale() {
    return kLocales[0];
}

void SessionManager::Login(
    const std::string& userName, const std::string& password, const Pellum::Optional<std::string>& locale,
    Pellum::Ref<UserSession>& result) {
    const std::string wantedLocale = locale.ValueOr(kLocales[0]);
    CheckLocale(wantedLocale);
    const User* user = FindUser(userName, password);
    const std::int32_t chain = m_events.NewChain();
    if (user == nullptr) {
        m_events.Record<Morvane::Event::UserFailedAuthenticationEvent>(
            chain, userName, [](auto& event) { event.SetIpAddress(kAddress); });
        throw Zabro::Fault::InvalidLogin::Exception();
    }
    const auto session = Pellum::MakeRef<UserSession>();
    session->SetKey(NewKey());
    session->SetUserName(user->name);
    session->SetFullName(user->fullName);
    session->SetLoginTime(DateTime::Now());
    session->SetLastActiveTime(DateTime::Now());
    session->SetLocale(wantedLocale);
    session->SetMessageLocale(wantedLocale);
    session->SetFullAccess(Pellum::Optional<bool>(user->hasFullAccess));
    {
        const std::lock_guard lock(m_mutex);
        m_sessions[session->GetKey()] = session;
    }
    m_events.Record<Morvane::Event::UserLoginEvent>(chain, userName, [&](auto& event) {
        event.SetIpAddress(kAddress);
        event.SetLocale(wantedLocale);
    });
    result = session;
}

// Only users with a password log in here.

void SessionManager::LoginExtension(
    const std::string& /*userName*/, const std::string& /*password*/,
    const Pellum::Optional<std::string>& /*locale*/, Pellum::Ref<UserSession>& /*result*/) {
    throw Zabro::Fault::InvalidLogin::Exception();
}

void SessionManager::LoginSession(
    const std::string& userName, const std::string& sessionId,
    const Pellum::Optional<std::string>& /*locale*/, Pellum::Ref<UserSession>& result) {
    const Pellum::Ref<UserSession> session = Find(sessionId);
    if (!session || session->GetUserName() != userName) {
        throw Zabro::Fault::InvalidLogin::Exception();
    }
    result = session;
}

void SessionManager::LoginBySSPI(
    const std::string& /*base64Token*/, const Pellum::Optional<std::string>& /*locale*/,
    Pellum::Ref<UserSession>& /*result*/) {
    throw Zabro::Fault::InvalidLogin::Exception();
}

void SessionManager::Impersonate(
    const Pellum::Optional<std::string>& /*locale*/, Pellum::Ref<UserSession>& result) {
    result = Find(GetCallerKey());
}

void SessionManager::Logout() {
    Pellum::Ref<UserSession> session;
    {
        const std::lock_guard lock(m_mutex);
        const auto found = m_sessions.find(GetCallerKey());
        if (found == m_sessions.end()) {
            return;
        }
        session = found->second;
        m_sessions.erase(found);
    }
    m_events.Record<Morvane::Event::UserLogoutEvent>(m_events.NewChain(), session->GetUserName());
}

void SessionManager::Terminate(Tavik::Array<std::string>* sessionId) {
    const std::lock_guard lock(m_mutex);
    for (const std::string& key : sessionId->GetElements()) {
        if (m_sessions.erase(key) == 0) {
            throw Zabro::Fault::NotFound::Exception();
        }
    }
}

void SessionManager::SetLocale(const std::string& locale) {
    CheckLocale(locale);
    const std::lock_guard lock(m_mutex);
    if (const auto found = m_sessions.find(GetCallerKey()); found != m_sessions.end()) {
        const Pellum::Ref<UserSession> changed(found->second->_Clone());
        changed->SetLocale(locale);
        changed->SetMessageLocale(locale);
        found->second = changed;
    }
}

} // namespace Example
