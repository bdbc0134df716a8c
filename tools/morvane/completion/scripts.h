#pragma once

#include "tools/morvane/completion/arguments.h"

#include <string>
#include <vector>

namespace Tool {

/// The completion script of each shell. Names of types and versions are asked of the program when they are
/// needed.
std::string WriteBashScript(const std::vector<CommandArguments>& commands);
std::string WriteZshScript(const std::vector<CommandArguments>& commands);
std::string WriteFishScript(const std::vector<CommandArguments>& commands);

} // namespace Tool
