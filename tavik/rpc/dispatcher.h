#pragma once

#include "pellum/object/object.h"
#include "pellum/object/ref.h"
#include "tavik/managed/request_context.h"
#include "tavik/rpc/access_policy.h"
#include "tavik/rpc/call_failure.h"
#include "tavik/rpc/object_table.h"

#include <atomic>
#include <memory>
#include <string>
#include <string_view>

namespace Tavik {

class MessageCodec;

namespace Rpc {
class CorrelationIds;
}

/// The server's half of a call: from the request's bytes to those of the response. Any transport may use it.
/// Its functions may be called from any thread.
///
/// Before a method runs it is checked, in this order, that there is the object (else
/// `Orlin::Fault::ManagedObjectNotFound`), that its type and the caller's version have the method (else
/// `InvalidRequest`), that the policy lets the caller through, that the arguments can be read and the
/// required ones are there (else `InvalidArgument`, with the parameter's name or the path in it).
///
/// The faults that a method declares reach the client, and those derived from them, and `Orlin::Fault`s.
/// Whatever else it throws reaches it as `Orlin::Fault::SystemError`, which has the call's correlation
/// identifier and a fixed reason: what really happened is for the log. So does a result or fault that the
/// caller's version has no form for.
class TAVIK_API Dispatcher final : public Pellum::ObjectImpl {
public:
    /// Takes a count of both. `log` is told of every exception that became a `SystemError`; null for none.
    Dispatcher(ObjectTable* objects, AccessPolicy* policy, FailureLog log = {});

    /// The table that calls find their objects in, borrowed.
    ObjectTable& GetObjects() const { return *m_objects; }

    /// What the transport knows of a call.
    struct Arrival {
        /// From when the time is counted that the caller waits.
        RequestContext::Clock::time_point receivedAt = RequestContext::Clock::now();
        /// Set once nobody waits for the response; borrowed, null when that is never known.
        const std::atomic<bool>* cancelled = nullptr;
    };

    /// Runs the call that the request asks for and answers it, on this thread. Throws `std::bad_alloc` only,
    /// when there is no memory even for a fault.
    std::string Serve(const MessageCodec& codec, std::string_view request, const Arrival& arrival) const;

private:
    class Attempt;
    ~Dispatcher() override;

    Pellum::Ref<ObjectTable> m_objects;
    Pellum::Ref<AccessPolicy> m_policy;
    FailureLog m_log;
    const std::unique_ptr<Rpc::CorrelationIds> m_correlationIds; ///< for calls that come without one
};

} // namespace Tavik
