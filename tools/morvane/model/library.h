#pragma once

#include "tavik/type/data_object_type.h"
#include "tavik/type/type_registry.h"
#include "tavik/type/version.h"

#include <string>
#include <string_view>
#include <vector>

/// Finds libraries, types and versions by what a person calls them.
namespace Tool {

/// The namespace of the interface itself.
inline constexpr std::string_view kOwnNamespace = "morvane";

/// The interface's own library; throws `Pellum::Exception` when it is not there.
Tavik::LoadedLibrary GetOwnLibrary();
/// The versions of a namespace, oldest first, borrowed.
std::vector<const Tavik::Version*> GetVersions(std::string_view namespaceName);

/// The type of a dotted or wire name; names of the interface's own types may be without the namespace. Throws
/// `Pellum::Exception`, with a suggestion, when there is none.
const Tavik::Type& FindType(const std::string& name);
/// The same for a data object or fault type.
const Tavik::DataObjectType& FindDataType(const std::string& name);
/// The version of a label ("7.0"), a short name ("version7") or a full one; null for an empty text. Labels
/// and short names are the interface's own. Throws `Pellum::Exception`, with a suggestion, when there is
/// none.
const Tavik::Version* FindVersion(const std::string& name);

} // namespace Tool
