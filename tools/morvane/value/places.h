#pragma once

#include "tavik/value/any.h"

#include <map>
#include <string>
#include <vector>

namespace Tool {

/// What stands at one place of a value.
struct Place {
    bool isSet = false;
    bool isSecret = false;
    bool isOptional = false;
    std::string text; ///< the content as one line of JSON; "***" for a secret that is not to be shown
};

/// The places of `value` that the paths name ("location.port", "disk[2].size", "" for the value itself).
/// Paths that lead nowhere are not in the answer.
std::map<std::string, Place> FindPlaces(
    const Tavik::Any& value, const std::vector<std::string>& paths, bool showSecrets);

} // namespace Tool
