#pragma once

#include <vector>

namespace Tavik {

class Type;
struct OrlinVersions;

/// The runtime's own types: scalars first, then `orlin.DynamicData`, the fault bases and
/// `orlin.ManagedObject`. Bases stand before what derives from them.
const std::vector<Type*>& GetBuiltinTypes();

/// The version records of the runtime's own namespaces, `orlin` first.
std::vector<const OrlinVersions*> GetBuiltinVersions();

} // namespace Tavik
