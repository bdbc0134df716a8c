#pragma once

#include "tavik/type/type_registry.h"

#include <functional>
#include <string>

namespace Tool {

/// What the registered descriptors of a library say, as a JSON document of one type a line:
///
///     {"types": [
///     {"slot": 0, "name": "...", "wire": "...", "class": "...", "kind": "data", "base": "...", "version":
///     "...",
///      "properties": [...], "values": [...], "methods": [...]},
///     ...
///     ]}
///
/// Types that `accepts` refuses are left out.
std::string WriteTypesDocument(
    const Tavik::LoadedLibrary& library, const std::function<bool(const Tavik::Type&)>& accepts);

} // namespace Tool
