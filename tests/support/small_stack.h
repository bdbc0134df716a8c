#pragma once

#include <functional>

namespace TestSupport {

/// Runs something on a thread with a stack of 256 KiB, where whatever recurses for every level of a deep
/// value ends the process; waits for its end. `run` must not throw.
void RunOnSmallStack(const std::function<void()>& run);

} // namespace TestSupport
