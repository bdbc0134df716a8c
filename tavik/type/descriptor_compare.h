#pragma once

#include <string>

namespace Tavik {

class Type;

/// In what the descriptions of two types differ, in plain words; empty when they are equal.
std::string DescribeDifference(const Type& known, const Type& other);

} // namespace Tavik
