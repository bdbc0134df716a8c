#pragma once

#include <string>

namespace Example {

/// The session key of the call that this thread is answering; empty when it comes without one.
std::string GetCallerKey();

} // namespace Example
