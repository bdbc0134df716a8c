#pragma once

#include "tavik/value/any.h"
#include "tools/morvane/terminal/output.h"
#include "tools/morvane/value/places.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Tool {

/// A place in which two values differ.
struct Difference {
    std::string path; ///< empty for the values themselves
    Place first;
    Place second;
};

/// All places in which two values differ. Values of different types differ as a whole.
std::vector<Difference> FindDifferences(const Tavik::Any& first, const Tavik::Any& second, bool showSecrets);
/// The same without what a partial pattern leaves open: optional properties that are unset in `pattern`.
std::vector<Difference> FindMismatches(const Tavik::Any& value, const Tavik::Any& pattern, bool showSecrets);

/// Writes each difference as its path with both contents below, what the first value has with a minus sign.
void PrintDifferences(Output& output, const std::vector<Difference>& differences, std::size_t indent = 0);

} // namespace Tool
