#pragma once

#include "pellum/object/ref.h"
#include "tavik/rpc/access_policy.h"

namespace Example {

class SessionManager;

/// Lets users do what they may: without a session nothing but what everybody may, and what needs a privilege
/// only with full access.
class Access final : public Tavik::AccessPolicy {
public:
    /// Takes a count of `sessions`.
    explicit Access(SessionManager& sessions);

    void Check(const Tavik::ServerCall& call) override;

private:
    ~Access() override;

    const Pellum::Ref<SessionManager> m_sessions;
};

} // namespace Example
