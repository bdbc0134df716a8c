#pragma once

#include "bench/table/measurement.h"

#include <ostream>
#include <vector>

namespace Bench {

/// Prints all that was measured, ours beside the peers', with what we want and whether it is so; behind that
/// a line for each goal.
void PrintReport(const std::vector<Measurement>& measurements, bool isMarkdown, std::ostream& out);

} // namespace Bench
