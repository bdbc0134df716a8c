#pragma once

#include "pellum/object/ref.h"
#include "tavik/export.h"
#include "tavik/fault/method_fault.h"
#include "tavik/managed/stub_adapter.h"

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace Tavik {

class ManagedMethod;
class Version;

/// All that a request says before its arguments, as it came: nothing of it has been looked up yet.
struct RequestHeader {
    std::string member;        ///< wire name of the method, or name of the property
    bool isProperty = false;   ///< a property is to be read
    std::string declaringType; ///< wire name of the type that declares the member
    std::string targetType;    ///< wire name of the type that the object is known by
    std::string targetId;      ///< the object's identifier
    std::string version;       ///< name of the API version that the caller speaks; empty for none
    std::string sessionKey;    ///< a secret; empty outside of a session
    std::string locale;        ///< empty for the server's choice
    std::string correlationId; ///< names the call in logs; may be empty
    std::optional<std::chrono::milliseconds> timeout; ///< how long the caller waits; not negative
};

/// What the arguments of a request have to be read as.
struct RequestForm {
    const ManagedMethod& method;
    const Version* version; ///< null for no restriction
};

/// What a request asks for, borrowed for the time of the function that is given it.
struct Request {
    const StubAdapter::Call& call;
    std::string_view correlationId;
    std::optional<std::chrono::milliseconds> timeout;
};

/// What a response says. Both are null for a method that has no result, or none this time.
struct Response {
    Pellum::Ref<Any> result;
    Pellum::Ref<MethodFault> fault;
};

/// What a response answers, borrowed for the time of the function that is given it.
struct ResponseForm {
    const ManagedMethod& method;
    const Version* version; ///< that the caller speaks; null for no restriction
    std::string_view correlationId;
};

/// The form of the messages that calls travel as. A codec holds no state, so that threads share one.
///
/// What is written for a version leaves out what the version does not have, but a value that is of a type
/// which it does not have can not be written. What is read may have nothing that the version has not.
class TAVIK_API MessageCodec {
public:
    virtual ~MessageCodec();

    /// Appends the message, secrets included. Throws `MessageException` when an argument can not be written,
    /// with a path that begins with "arguments.".
    virtual void EncodeRequest(const Request& request, std::string& out) const = 0;

    /// Reads a request: once the header is complete `begin` is given it, looks up the method and tells how
    /// the arguments are to be read. What it throws passes through, and nothing more is read then.
    ///
    /// Throws `MessageException` for what can not be understood. The path is "arguments" or begins with
    /// "arguments." for what is wrong with them.
    /// That required arguments are there is not checked.
    using BeginFunction = std::function<RequestForm(RequestHeader&& header)>;
    virtual Arguments DecodeRequest(std::string_view message, const BeginFunction& begin) const = 0;

    /// Append the response, secrets included. `result` is null for none. Throw `MessageException` when the
    /// value can not be written, or the peer would refuse it because something required is unset or a
    /// reference is of the wrong type; `out` may have a part of it then.
    virtual void EncodeResult(const ResponseForm& form, const Any* result, std::string& out) const = 0;
    virtual void EncodeFault(
        const MethodFault& fault, const Version* version, std::string_view correlationId,
        std::string& out) const = 0;

    /// Reads what answers a call of the method; throws `MessageException` when it can not be understood, or
    /// answers another call.
    virtual Response DecodeResponse(std::string_view message, const ResponseForm& form) const = 0;

    /// The message for logs, with every secret shown as "***": arguments that are flagged, the
    /// session key, and what is secret in a result. Of a message that can not be understood it is only told
    /// why. Do not throw for the message's content.
    virtual std::string PrintRequest(std::string_view message) const = 0;
    virtual std::string PrintResponse(std::string_view message, const ManagedMethod& method) const = 0;

protected:
    MessageCodec() = default;
    MessageCodec(const MessageCodec&) = default;
    MessageCodec& operator=(const MessageCodec&) = default;
};

/// The method or property getter that a header names, borrowed; null when no library has registered it.
TAVIK_API const ManagedMethod* FindMethod(const RequestHeader& header);

} // namespace Tavik
