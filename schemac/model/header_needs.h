#pragma once

#include "schemac/model/type.h"

#include <vector>

namespace Schemac::Model {

/// What the header of a top-level type has to know about other top-level types. Both lists are
/// free of duplicates, in order of first use, and never name the type itself or a built-in type.
struct HeaderNeeds {
    /// Headers to include: a type of theirs is derived from, is an enumeration, or is nested
    /// and so cannot be declared ahead.
    std::vector<const Type*> includes;
    /// Classes that a forward declaration serves.
    std::vector<const Type*> forwards;
};

/// Collects over `topLevel` and all types nested in it.
HeaderNeeds CollectHeaderNeeds(const Type& topLevel);

} // namespace Schemac::Model
