#pragma once

#include "tavik/export.h"

#include <exception>
#include <functional>
#include <string>
#include <string_view>

namespace Tavik {

class ManagedMethod;
class MoRef;

/// An exception that nobody is told of but the log; borrowed for the time of the function that is given it.
struct TAVIK_API CallFailure {
    std::string_view correlationId; ///< what the client was told; may be empty
    const ManagedMethod* method;    ///< null when it is not known
    const MoRef* target;            ///< the same
    std::exception_ptr exception;

    /// One line for people, whatever the correlation id and the exception say: the call, the exception's
    /// class and text.
    std::string ToString() const;
};

/// Called on the thread where it happened. What it throws is lost.
using FailureLog = std::function<void(const CallFailure&)>;

/// Tells the log, if there is one.
TAVIK_API void Report(const FailureLog& log, const CallFailure& failure) noexcept;

/// "morvane.SessionManager.login on MorvaneSessionManager "sessions"", for the texts of exceptions and logs.
TAVIK_API std::string DescribeCall(const ManagedMethod& method, const MoRef& target);

} // namespace Tavik
