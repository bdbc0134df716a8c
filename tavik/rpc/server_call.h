#pragma once

#include "tavik/export.h"
#include "tavik/managed/managed_method.h"
#include "tavik/managed/managed_object.h"
#include "tavik/managed/request_context.h"

#include <atomic>

namespace Tavik {

/// The call that a server object is running: who asks for what. Lives as long as the method runs; may be read
/// from any thread meanwhile.
class TAVIK_API ServerCall {
public:
    /// All borrowed; `cancelled` is set when nobody waits for the result any more, and null when that is
    /// never known.
    ServerCall(
        RequestContext& context, ManagedObject& target, const ManagedMethod& method,
        const std::atomic<bool>* cancelled)
        : m_context(&context), m_target(&target), m_method(&method), m_cancelled(cancelled) {}

    /// The call that this thread runs, borrowed; null outside of one. Of calls inside of each other the
    /// innermost.
    static const ServerCall* Current() noexcept;

    /// What the caller sent beside the arguments, for other calls on the caller's behalf, too. A count may be
    /// taken.
    RequestContext& GetContext() const { return *m_context; }

    /// The object that was called, borrowed.
    ManagedObject& GetTarget() const { return *m_target; }

    /// What was called: a method, or the getter of a property.
    const ManagedMethod& GetMethod() const { return *m_method; }

    /// Whether nobody waits for the result any more: the deadline has passed, or the caller has cancelled the
    /// call or closed the connection. Methods that take long should look now and then, and stop.
    bool IsCancelled() const noexcept;

    /// Makes a call the current one of this thread for as long as it lives.
    class TAVIK_API Scope {
    public:
        explicit Scope(const ServerCall& call) noexcept;
        ~Scope();
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

    private:
        const ServerCall* m_outer;
    };

private:
    RequestContext* m_context;
    ManagedObject* m_target;
    const ManagedMethod* m_method;
    const std::atomic<bool>* m_cancelled;
};

} // namespace Tavik
