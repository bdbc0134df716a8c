#include "tools/morvane/completion/scripts.h"

#include <algorithm>

namespace Tool {

namespace {

std::string Join(const std::vector<std::string>& words, const char* separator) {
    std::string text;
    for (const std::string& word : words) {
        text += (text.empty() ? "" : separator) + word;
    }
    return text;
}

/// The statement that offers the values of a set.
std::string OfferWords(const ValueSet& values) {
    switch (values.kind) {
    case ValueSet::Kind::File: return "_morvane_files -f";
    case ValueSet::Kind::Folder: return "_morvane_files -d";
    case ValueSet::Kind::Type: return "_morvane_words \"$(morvane types --all --names 2>/dev/null)\"";
    case ValueSet::Kind::Area: return "_morvane_words \"$(morvane types --areas 2>/dev/null | cut -f1)\"";
    case ValueSet::Kind::Version: return "_morvane_words \"$(morvane versions --names 2>/dev/null)\"";
    case ValueSet::Kind::Words: return "_morvane_words '" + Join(values.words, " ") + '\'';
    default: return ":";
    }
}

std::string OptionNames(const CommandArguments& command, const CommandArguments& root) {
    std::vector<std::string> names;
    for (const CommandArguments* owner : {&command, &root}) {
        for (const OptionArgument& option : owner->options) {
            for (const std::string& name : option.names) {
                if (std::find(names.begin(), names.end(), name) == names.end()) {
                    names.push_back(name);
                }
            }
        }
    }
    return Join(names, " ");
}

void AppendOptionValues(std::string& script, const std::string& pattern, const CommandArguments& command) {
    for (const OptionArgument& option : command.options) {
        for (const std::string& name : option.names) {
            if (option.values.kind != ValueSet::Kind::None) {
                script += "    " + pattern + ':' + name + ") " + OfferWords(option.values) + "; return ;;\n";
            }
        }
    }
}

constexpr const char* kBashHead =
    R"(# Bash completion for morvane. Load it with: source <(morvane completion bash)

_morvane_words()
{
    COMPREPLY=($(compgen -W "$1" -- "$current"))
}

_morvane_files()
{
    compopt -o filenames
    COMPREPLY=($(compgen "$1" -- "$current"))
}

_morvane()
{
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command= word
    for word in "${COMP_WORDS[@]:1:COMP_CWORD - 1}"; do
        case $word in
)";

} // namespace

std::string WriteBashScript(const std::vector<CommandArguments>& commands) {
    const CommandArguments& root = commands.front();
    std::vector<std::string> names;
    for (std::size_t i = 1; i < commands.size(); ++i) {
        names.push_back(commands[i].name);
    }
    std::string script = kBashHead;
    script += "        " + Join(names, " | ") + ") command=$word; break ;;\n";
    script += "        esac\n    done\n    case $command:$previous in\n";
    AppendOptionValues(script, "*", root);
    for (std::size_t i = 1; i < commands.size(); ++i) {
        AppendOptionValues(script, commands[i].name, commands[i]);
    }
    script += "    esac\n    case $command:$current in\n";
    script += "    :-*) _morvane_words '" + OptionNames(root, root) + "' ;;\n";
    script += "    :*) _morvane_words '" + Join(names, " ") + "' ;;\n";
    for (std::size_t i = 1; i < commands.size(); ++i) {
        const CommandArguments& command = commands[i];
        script += "    " + command.name + ":-*) _morvane_words '" + OptionNames(command, root) + "' ;;\n";
        if (!command.positionals.empty()) {
            script +=
                "    " + command.name + ":*) " + OfferWords(command.positionals.back().values) + " ;;\n";
        }
    }
    script += "    esac\n}\n\ncomplete -F _morvane morvane\n";
    return script;
}

} // namespace Tool
