#pragma once

#include "tavik/export.h"

namespace Tavik {

class DataObject;
class DataObjectType;

/// Deep-copies all properties of `type`, inherited ones included, from `source` to `target` by way of the
/// type's field functions. Both are of the type's class or derived from it; `target` has nothing set. Loads
/// the types first. Throws `std::bad_alloc`.
TAVIK_API void CopyProperties(DataObjectType* (*type)(), DataObject& target, const DataObject& source);

} // namespace Tavik
