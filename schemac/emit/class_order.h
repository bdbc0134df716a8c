#pragma once

#include <vector>

#include "schemac/model/type.h"

namespace Schemac::Emit {

/// A top-level type and all types nested in it that are classes, in an order in which C++ can define them one
/// after the other: what encloses or is derived from stands first; schema order otherwise.
std::vector<const Model::Type*> ClassesInOrder(const Model::Type& topLevel);

/// The top-level type, if it is one, and all nested enumerations.
std::vector<const Model::EnumType*> Enumerations(const Model::Type& topLevel);

} // namespace Schemac::Emit
