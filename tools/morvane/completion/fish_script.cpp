#include "tools/morvane/completion/scripts.h"

namespace Tool {

namespace {

/// A text in single quotes.
std::string Quote(const std::string& text) {
    std::string quoted = "'";
    for (const char c : text) {
        if (c == '\'' || c == '\\') {
            quoted += '\\';
        }
        quoted += c;
    }
    return quoted + '\'';
}

/// The options of `complete` that offer the values of a set.
std::string OfferArguments(const ValueSet& values) {
    switch (values.kind) {
    case ValueSet::Kind::None: return "";
    case ValueSet::Kind::File: return " -r -F";
    case ValueSet::Kind::Folder: return " -x -a '(__fish_complete_directories)'";
    case ValueSet::Kind::Type: return " -x -a '(morvane types --all --names 2>/dev/null)'";
    case ValueSet::Kind::Area: return " -x -a '(morvane types --areas 2>/dev/null | cut -f1)'";
    case ValueSet::Kind::Version: return " -x -a '(morvane versions --names 2>/dev/null)'";
    case ValueSet::Kind::Words: {
        std::string words;
        for (const std::string& word : values.words) {
            words += (words.empty() ? "" : " ") + word;
        }
        return " -x -a " + Quote(words);
    }
    case ValueSet::Kind::Anything: break;
    }
    return " -x";
}

void AppendOptions(std::string& script, const CommandArguments& command, const std::string& line) {
    for (const OptionArgument& option : command.options) {
        script += line;
        for (const std::string& name : option.names) {
            script += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
        }
        script += OfferArguments(option.values) + " -d " + Quote(option.description) + '\n';
    }
}

} // namespace

std::string WriteFishScript(const std::vector<CommandArguments>& commands) {
    std::string script = "# Fish completion for morvane. Load it with: morvane completion fish | source\n\n"
                         "complete -c morvane -f\n";
    AppendOptions(script, commands.front(), "complete -c morvane");
    for (std::size_t i = 1; i < commands.size(); ++i) {
        const CommandArguments& command = commands[i];
        script += "\ncomplete -c morvane -n __fish_use_subcommand -a " + command.name + " -d "
                + Quote(command.description) + '\n';
        const std::string line = "complete -c morvane -n '__fish_seen_subcommand_from " + command.name + '\'';
        AppendOptions(script, command, line);
        if (!command.positionals.empty()) {
            script += line + OfferArguments(command.positionals.back().values) + '\n';
        }
    }
    return script;
}

} // namespace Tool
