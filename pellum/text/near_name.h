#pragma once

#include "pellum/export.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Pellum {

/// The number of edits that lead from one name to the other: a letter added, left out, changed or exchanged
/// with its neighbour; upper and lower case count as equal.
[[nodiscard]] PELLUM_API std::size_t EditDistance(std::string_view left, std::string_view right);

/// The candidate that `name` was probably meant to be: the one with the smallest edit distance. Empty when
/// none is near. Of candidates that are equally near the alphabetically first is taken.
[[nodiscard]] PELLUM_API std::string FindNearName(
    std::string_view name, const std::vector<std::string>& candidates);

} // namespace Pellum
