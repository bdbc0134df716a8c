#pragma once

#include <vector>

namespace Tavik {

class Type;
struct OrlinVersions;

/// The runtime's own types: scalars first, then data, faults and managed types. Bases stand before what
/// derives from them.
const std::vector<Type*>& GetBuiltinTypes();

/// The version records of the runtime's own namespaces, `orlin` first.
std::vector<const OrlinVersions*> GetBuiltinVersions();

} // namespace Tavik
