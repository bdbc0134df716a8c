#pragma once

#include "pellum/object/object.h"
#include "tavik/export.h"

namespace Tavik {

class ServerCall;

/// Methods that need this privilege may be called by anybody, outside of a session, too.
inline constexpr const char* kAnonymousPrivilege = "System.Anonymous";

/// Decides which calls a server lets through. Asked from many threads at once.
class TAVIK_API AccessPolicy : public Pellum::ObjectImpl {
public:
    /// Throws when the call may not be made; a fault reaches the client as it is, anything else as a
    /// `SystemError`. Asked before the arguments are read, about every call but those of methods that need
    /// `kAnonymousPrivilege`. The method's descriptor names the privilege that it needs, null for none; the
    /// call's context has the key of the session.
    virtual void Check(const ServerCall& call) = 0;

protected:
    AccessPolicy() = default;
    ~AccessPolicy() override;
};

/// Lets every call through. For tools and tests: a server that others reach needs a policy of its own.
class TAVIK_API AllowAll final : public AccessPolicy {
public:
    AllowAll() = default;
    void Check(const ServerCall& call) override;

private:
    ~AllowAll() override;
};

} // namespace Tavik
