#include "tools/morvane/completion/arguments.h"

#include <CLI/CLI.hpp>

#include <map>
#include <sstream>

namespace Tool {

namespace {

/// The parser's name of a value is "KIND:{data,enum}" where only those words are taken.
ValueSet ReadValueSet(const std::string& typeName) {
    static const std::map<std::string, ValueSet::Kind> kinds = {
        {"FILE", ValueSet::Kind::File}, {"DIR", ValueSet::Kind::Folder},      {"TYPE", ValueSet::Kind::Type},
        {"AREA", ValueSet::Kind::Area}, {"VERSION", ValueSet::Kind::Version},
    };
    const std::size_t open = typeName.find('{');
    const std::size_t close = typeName.rfind('}');
    if (open != std::string::npos && close != std::string::npos) {
        ValueSet set{ValueSet::Kind::Words, {}};
        std::istringstream words(typeName.substr(open + 1, close - open - 1));
        for (std::string word; std::getline(words, word, ',');) {
            set.words.push_back(word);
        }
        return set;
    }
    const auto kind = kinds.find(typeName);
    return {kind == kinds.end() ? ValueSet::Kind::Anything : kind->second, {}};
}

std::string GetValueName(const CLI::Option& option) {
    const std::string typeName = option.get_type_name();
    return typeName.substr(0, typeName.find(':'));
}

CommandArguments ReadCommand(const CLI::App& app) {
    CommandArguments command{app.get_name(), app.get_description(), {}, {}};
    for (const CLI::Option* option : app.get_options()) {
        if (option->get_positional()) {
            command.positionals.push_back(
                {GetValueName(*option), option->get_expected_max() > 1,
                 ReadValueSet(option->get_type_name())});
            continue;
        }
        OptionArgument argument;
        for (const std::string& name : option->get_snames()) {
            argument.names.push_back('-' + name);
        }
        for (const std::string& name : option->get_lnames()) {
            argument.names.push_back("--" + name);
        }
        argument.description = option->get_description();
        if (option->get_items_expected_max() > 0) {
            argument.valueName = GetValueName(*option);
            argument.values = ReadValueSet(option->get_type_name());
        }
        command.options.push_back(std::move(argument));
    }
    return command;
}

} // namespace

std::vector<CommandArguments> ReadArguments(const CLI::App& root) {
    std::vector<CommandArguments> commands{ReadCommand(root)};
    for (const CLI::App* command : root.get_subcommands([](const CLI::App*) { return true; })) {
        commands.push_back(ReadCommand(*command));
    }
    return commands;
}

} // namespace Tool
