#include "tavik/rpc/errors.h"

#include <utility>

namespace Tavik {

CallException::CallException(const CallException& other) = default;
CallException& CallException::operator=(const CallException& other) = default;
CallException::~CallException() = default;

CallTimedOutException::CallTimedOutException(const CallTimedOutException& other) = default;
CallTimedOutException& CallTimedOutException::operator=(const CallTimedOutException& other) = default;
CallTimedOutException::~CallTimedOutException() = default;

CallCancelledException::CallCancelledException(const CallCancelledException& other) = default;
CallCancelledException& CallCancelledException::operator=(const CallCancelledException& other) = default;
CallCancelledException::~CallCancelledException() = default;

ConnectionClosedException::ConnectionClosedException(const ConnectionClosedException& other) = default;
ConnectionClosedException& ConnectionClosedException::operator=(const ConnectionClosedException& other) =
    default;
ConnectionClosedException::~ConnectionClosedException() = default;

QueueFullException::QueueFullException(const QueueFullException& other) = default;
QueueFullException& QueueFullException::operator=(const QueueFullException& other) = default;
QueueFullException::~QueueFullException() = default;

MessageException::MessageException(std::string path, std::string reason)
    : ExceptionImpl((path.empty() ? std::string() : path + ": ") + reason),
      m_path(std::move(path)),
      m_reason(std::move(reason)) {}

MessageException::MessageException(const MessageException& other, const std::string& call)
    : ExceptionImpl(call + ": " + other.what()), m_path(other.m_path), m_reason(other.m_reason) {}

MessageException MessageException::Of(const std::string& call) const {
    return {*this, call};
}

MessageException::MessageException(const MessageException& other) = default;
MessageException& MessageException::operator=(const MessageException& other) = default;
MessageException::~MessageException() = default;

} // namespace Tavik
