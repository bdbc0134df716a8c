#include "tools/morvane/command.h"

#include <sstream>

namespace Tool {

CLI::App& CommandSet::Add(const CommandText& text) {
    CLI::App& command = *m_root.add_subcommand(text.name, text.summary);
    std::string footer = "Examples:\n";
    std::istringstream examples(text.examples);
    for (std::string line; std::getline(examples, line);) {
        footer += (line.empty() ? "" : "  ") + line + '\n';
    }
    footer += "\nExit codes: " + std::string(text.exitCodes) + ", 2 wrong usage, bad input or another error.";
    command.footer(footer);
    return command;
}

void CommandSet::RefuseEmptyArguments() {
    const auto refuseEmpty = [](const std::string& argument) {
        return argument.empty() ? std::string("must not be empty") : std::string();
    };
    for (CLI::App* command : m_root.get_subcommands([](const CLI::App*) { return true; })) {
        for (CLI::Option* option : command->get_options()) {
            if (option->get_items_expected_max() > 0) {
                option->check(refuseEmpty, "", "not empty");
            }
        }
    }
}

ExitCode CommandSet::Run(Console& console) const {
    return m_actions.at(m_root.get_subcommands().front())(console);
}

} // namespace Tool
