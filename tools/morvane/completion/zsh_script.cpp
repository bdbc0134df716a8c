#include "tools/morvane/completion/scripts.h"

#include <cstring>

namespace Tool {

namespace {

/// A text for use inside of single quotes, with a backslash before what has a meaning there.
std::string Escape(const std::string& text) {
    std::string escaped;
    for (const char c : text) {
        if (c == '\'') {
            escaped += "'\\''";
            continue;
        }
        if (std::strchr("[]:\\", c) != nullptr) {
            escaped += '\\';
        }
        escaped += c;
    }
    return escaped;
}

/// What the values of a set are completed by.
std::string Action(const ValueSet& values) {
    switch (values.kind) {
    case ValueSet::Kind::File: return "_files";
    case ValueSet::Kind::Folder: return "_files -/";
    case ValueSet::Kind::Type: return "_morvane_types";
    case ValueSet::Kind::Area: return "_morvane_areas";
    case ValueSet::Kind::Version: return "_morvane_versions";
    case ValueSet::Kind::Words: {
        std::string words;
        for (const std::string& word : values.words) {
            words += (words.empty() ? "" : " ") + word;
        }
        return '(' + words + ')';
    }
    default: return " ";
    }
}

void AppendArguments(std::string& script, const CommandArguments& command, const std::string& margin) {
    for (const OptionArgument& option : command.options) {
        for (const std::string& name : option.names) {
            script += " \\\n" + margin + '\'' + name + '[' + Escape(option.description) + ']';
            if (option.values.kind != ValueSet::Kind::None) {
                script += ':' + option.valueName + ':' + Action(option.values);
            }
            script += '\'';
        }
    }
    std::size_t position = 1;
    for (const PositionalArgument& argument : command.positionals) {
        const std::string place = argument.repeats ? "*" : std::to_string(position++);
        script +=
            " \\\n" + margin + '\'' + place + ':' + argument.valueName + ':' + Action(argument.values) + '\'';
    }
}

constexpr const char* kZshHead = R"zsh(#compdef morvane
# Zsh completion for morvane. Load it with: source <(morvane completion zsh)

_morvane_types()
{
    compadd -- ${(f)"$(morvane types --all --names 2>/dev/null)"}
}

_morvane_areas()
{
    compadd -- ${(f)"$(morvane types --areas 2>/dev/null | cut -f1)"}
}

_morvane_versions()
{
    compadd -- ${(f)"$(morvane versions --names 2>/dev/null)"}
}

_morvane()
{
    local curcontext="$curcontext" state line
    local -a commands
    commands=(
)zsh";

} // namespace

std::string WriteZshScript(const std::vector<CommandArguments>& commands) {
    std::string script = kZshHead;
    for (std::size_t i = 1; i < commands.size(); ++i) {
        script += "        '" + commands[i].name + ':' + Escape(commands[i].description) + "'\n";
    }
    script += "    )\n    _arguments -C";
    AppendArguments(script, commands.front(), "        ");
    script += " \\\n        '1:command:->command' \\\n        '*::argument:->argument'\n";
    script += "    case $state in\n    command) _describe command commands ;;\n    argument)\n"
              "        case $line[1] in\n";
    for (std::size_t i = 1; i < commands.size(); ++i) {
        script += "        " + commands[i].name + ")\n            _arguments";
        AppendArguments(script, commands[i], "                ");
        script += "\n            ;;\n";
    }
    script += "        esac\n        ;;\n    esac\n}\n\ncompdef _morvane morvane\n";
    return script;
}

} // namespace Tool
