#pragma once

#include "pellum/error/exception.h"
#include "tavik/export.h"

#include <string>

/// Why a call came to no end that its method gave it: neither a result nor a fault.
namespace Tavik {

/// Base of those below: the call could not be carried. The text names the method and the object.
class TAVIK_API CallException : public Pellum::ExceptionImpl<CallException> {
public:
    using ExceptionImpl::ExceptionImpl;
    CallException(const CallException& other);
    CallException& operator=(const CallException& other);
    ~CallException() override;
};

/// The deadline passed first. The method may run yet, or have run.
class TAVIK_API CallTimedOutException : public Pellum::ExceptionImpl<CallTimedOutException, CallException> {
public:
    using ExceptionImpl::ExceptionImpl;
    CallTimedOutException(const CallTimedOutException& other);
    CallTimedOutException& operator=(const CallTimedOutException& other);
    ~CallTimedOutException() override;
};

/// The call was cancelled by who started it. The method may run yet, or have run.
class TAVIK_API CallCancelledException : public Pellum::ExceptionImpl<CallCancelledException, CallException> {
public:
    using ExceptionImpl::ExceptionImpl;
    CallCancelledException(const CallCancelledException& other);
    CallCancelledException& operator=(const CallCancelledException& other);
    ~CallCancelledException() override;
};

/// The adapter was shut down before the call, or during it.
class TAVIK_API ConnectionClosedException
    : public Pellum::ExceptionImpl<ConnectionClosedException, CallException> {
public:
    using ExceptionImpl::ExceptionImpl;
    ConnectionClosedException(const ConnectionClosedException& other);
    ConnectionClosedException& operator=(const ConnectionClosedException& other);
    ~ConnectionClosedException() override;
};

/// As many calls wait as the adapter lets wait.
class TAVIK_API QueueFullException : public Pellum::ExceptionImpl<QueueFullException, CallException> {
public:
    using ExceptionImpl::ExceptionImpl;
    QueueFullException(const QueueFullException& other);
    QueueFullException& operator=(const QueueFullException& other);
    ~QueueFullException() override;
};

/// A message that can not be written, or not be understood. Nothing that it tells contains a secret's
/// content.
class TAVIK_API MessageException : public Pellum::ExceptionImpl<MessageException, CallException> {
public:
    /// `path` names the place in the message, empty for the message itself; `reason` stands alone.
    MessageException(std::string path, std::string reason);
    MessageException(const MessageException& other);
    MessageException& operator=(const MessageException& other);
    ~MessageException() override;

    /// "arguments.source.location.port"
    const std::string& GetPath() const noexcept { return m_path; }

    /// What is wrong there.
    const std::string& GetReason() const noexcept { return m_reason; }

    /// The same, with the call in its text: what `DescribeCall` gives.
    [[nodiscard]] MessageException Of(const std::string& call) const;

private:
    MessageException(const MessageException& other, const std::string& call);

    std::string m_path;
    std::string m_reason;
};

} // namespace Tavik
