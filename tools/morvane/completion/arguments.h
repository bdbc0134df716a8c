#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
} // namespace CLI

namespace Tool {

/// What an argument takes.
struct ValueSet {
    enum class Kind { None, Anything, File, Folder, Type, Area, Version, Words };

    Kind kind = Kind::None;
    std::vector<std::string> words;
};

struct OptionArgument {
    std::vector<std::string> names; ///< with their dashes
    std::string description;
    std::string valueName; ///< "FILE"
    ValueSet values;       ///< of kind `None` for a flag
};

struct PositionalArgument {
    std::string valueName;
    bool repeats = false;
    ValueSet values;
};

struct CommandArguments {
    std::string name;
    std::string description;
    std::vector<OptionArgument> options;
    std::vector<PositionalArgument> positionals;
};

/// What there is to complete, read off the parser: the program's own options first, then one entry a command.
std::vector<CommandArguments> ReadArguments(const CLI::App& root);

} // namespace Tool
