#pragma once

#include <string>

namespace Tavik {

class Any;
class DataObjectType;
class PropertyDiffSet;
class Type;

/// Whether two plain values of a scalar type, given by their addresses, are equal.
bool AreScalarsEqual(const Type& type, const void* a, const void* b);

/// `_DiffProperties` for classes that have none of their own: compares two objects of `type` property by
/// property through its descriptors.
void DiffByDescriptors(
    const DataObjectType& type, const Any& a, const Any& b, const std::string& prefix,
    PropertyDiffSet& diffs);

} // namespace Tavik
