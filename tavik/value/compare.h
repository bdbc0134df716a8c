#pragma once

#include "tavik/export.h"

#include <cstdint>
#include <string>

namespace Tavik {

class Any;
class PropertyDiffSet;

/// Whether two values held by counted reference are equal; one and the same value always is. Null means
/// unset; an array flagged as such is unset when empty, too. With `partial`, an optional `b` that is unset
/// matches any `a`, and the rule holds inside as well. `flags` are those of the property (`PropertyFlags`).
/// The stack used does not grow with the depth of the values.
TAVIK_API bool AreEqualAnysInt(const Any* a, const Any* b, std::uint32_t flags, bool partial);

/// Adds to `diffs` the path of every difference between two values held by counted reference: `prefix` +
/// `suffix` when they differ as a whole (one is unset, or they are of different classes), else paths below it
/// such as
/// ".target.disk[2].size". Elements that only one of two arrays has are listed each. `suffix` is borrowed.
TAVIK_API void DiffAnyPropertiesInt(
    const Any* a, const Any* b, const std::string& prefix, const char* suffix, std::uint32_t flags,
    PropertyDiffSet& diffs);

/// The same, for those who have the whole path at hand.
TAVIK_API void DiffValues(
    const Any* a, const Any* b, const std::string& path, std::uint32_t flags, PropertyDiffSet& diffs);

} // namespace Tavik
