#pragma once

#include "tavik/type/type_registry.h"
#include "tavik/type/version.h"

#include <string>
#include <string_view>
#include <vector>

/// Finds libraries and versions by what a person calls them.
namespace Tool {

/// The namespace of the interface itself.
inline constexpr std::string_view kOwnNamespace = "morvane";

/// The interface's own library; throws `Pellum::Exception` when it is not there.
Tavik::LoadedLibrary GetOwnLibrary();
/// The versions of a namespace, oldest first, borrowed.
std::vector<const Tavik::Version*> GetVersions(std::string_view namespaceName);

/// The version of a label ("7.0"), a short name ("version7") or a full one; null for an empty text. Labels
/// and short names are the interface's own. Throws `Pellum::Exception`, with a suggestion, when there is
/// none.
const Tavik::Version* FindVersion(const std::string& name);

} // namespace Tool
