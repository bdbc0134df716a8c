#include "tools/morvane/command.h"

#include "pellum/text/near_name.h"

#include <CLI/CLI.hpp>

#include <iostream>
#include <sstream>

namespace Tool {

namespace {

/// Makes an argument that is empty, a variable that was not set for example, a wrong usage.
void RefuseEmptyArguments(CLI::App& root) {
    const auto refuseEmpty = [](const std::string& argument) {
        return argument.empty() ? std::string("must not be empty") : std::string();
    };
    for (CLI::App* command : root.get_subcommands([](const CLI::App*) { return true; })) {
        for (CLI::Option* option : command->get_options()) {
            if (option->get_items_expected_max() > 0) {
                option->check(refuseEmpty, "", "not empty");
            }
        }
    }
}

/// What is wrong with the arguments; a mistyped command is named, not just missed.
std::string DescribeUsageError(
    const CLI::App& root, const CLI::ParseError& error, const std::vector<std::string>& arguments) {
    if (!root.get_subcommands().empty() || arguments.empty() || arguments.front().starts_with('-')) {
        return error.what();
    }
    std::vector<std::string> names;
    for (const CLI::App* command : root.get_subcommands([](const CLI::App*) { return true; })) {
        names.push_back(command->get_name());
    }
    const std::string near = Pellum::FindNearName(arguments.front(), names);
    return "there is no command \"" + arguments.front() + '"'
         + (near.empty() ? "" : "; did you mean \"" + near + "\"?");
}

ExitCode FailUsage(
    Console& console, const CLI::App& root, const CLI::ParseError& error,
    const std::vector<std::string>& arguments) {
    console.WriteError(root.get_name(), DescribeUsageError(root, error, arguments));
    const auto chosen = root.get_subcommands();
    console.err.WriteLine(
        "Run \"" + root.get_name() + ' ' + (chosen.empty() ? std::string() : chosen.front()->get_name() + ' ')
        + "--help\" for what it takes.");
    return kError;
}

} // namespace

Argument& Argument::Require() {
    m_option->required();
    return *this;
}

Argument& Argument::TakeOnly(const std::vector<std::string>& words) {
    m_option->check(CLI::IsMember(words));
    return *this;
}

Argument& Argument::Exclude(const Argument& other) {
    m_option->excludes(other.m_option);
    return *this;
}

Argument Command::Add(const char* names, std::string& value, const char* valueName, const char* description) {
    return Argument(*m_app->add_option(names, value, description)->type_name(valueName));
}

Argument Command::Add(
    const char* names, std::vector<std::string>& values, const char* valueName, const char* description) {
    return Argument(*m_app->add_option(names, values, description)->type_name(valueName));
}

Argument Command::AddNumber(
    const char* names, int& value, int least, int most, const char* valueName, const char* description) {
    return Argument(
        *m_app->add_option(names, value, description)->check(CLI::Range(least, most))->type_name(valueName));
}

Argument Command::AddFlag(const char* names, bool& value, const char* description) {
    return Argument(*m_app->add_flag(names, value, description));
}

CommandSet::CommandSet(const char* program, const char* summary, const char* footer)
    : m_root(std::make_unique<CLI::App>(summary, program)) {
    m_root->allow_windows_style_options(false); // what begins with a slash is a path
    m_root->require_subcommand(1);
    m_root->fallthrough();
    m_root->footer(footer);
}

CommandSet::~CommandSet() = default;

Command CommandSet::Add(const CommandText& text) {
    CLI::App& command = *m_root->add_subcommand(text.name, text.summary);
    std::string footer = "Examples:\n";
    std::istringstream examples(text.examples);
    for (std::string line; std::getline(examples, line);) {
        footer += (line.empty() ? "" : "  ") + line + '\n';
    }
    footer += "\nExit codes: " + std::string(text.exitCodes) + ", 2 wrong usage, bad input or another error.";
    command.footer(footer);
    return Command(command);
}

std::optional<ExitCode> CommandSet::Parse(const std::vector<std::string>& arguments, Console& console) {
    RefuseEmptyArguments(*m_root);
    if (arguments.empty()) {
        console.err.Write(m_root->help());
        return kError;
    }
    try {
        m_root->parse(std::vector<std::string>(arguments.rbegin(), arguments.rend())); // taken from the back
    } catch (const CLI::Success& request) {                                            // --help
        m_root->exit(request);
        std::cout.flush();
        return std::cout ? kDone : kError;
    } catch (const CLI::ParseError& error) {
        return FailUsage(console, *m_root, error, arguments);
    }
    return std::nullopt;
}

ExitCode CommandSet::Run(Console& console) const {
    return m_actions.at(m_root->get_subcommands().front())(console);
}

} // namespace Tool
