#pragma once

#include "tavik/export.h"

#include <string>
#include <vector>

namespace Tavik {

class Any;
class Version;

/// One thing that is wrong with a value.
struct Problem {
    std::string path; ///< "source.location.hostname"; empty for the value itself
    std::string what; ///< in plain words; never a secret's content
};

/// What is wrong with a value that a peer of `version` (borrowed; null for the newest) would have to refuse:
/// required properties that are unset, types that the version does not have, numbers that are no value of
/// their enumeration, texts that are no UTF-8, references whose type is not the declared one. Empty when all
/// is well.
TAVIK_API std::vector<Problem> Validate(const Any* value, const Version* version = nullptr);

} // namespace Tavik
