#pragma once

namespace Bench {

/// Registers the benchmarks of calls.
void RegisterCalls();

} // namespace Bench
