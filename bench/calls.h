#pragma once

#include <functional>
#include <string>

namespace Bench {

/// Registers the benchmarks of calls.
void AddCalls();

/// A call of a small method, with all its messages, that is served on the caller's thread.
std::function<std::string()> MakeSerialCall();

} // namespace Bench
