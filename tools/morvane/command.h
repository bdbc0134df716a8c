#pragma once

#include "tools/morvane/terminal/output.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

// The parser is for implementation files: reading it takes longer than compiling a command.
namespace CLI {
class App;
class Option;
} // namespace CLI

namespace Tool {

/// What the program's exit code tells.
enum ExitCode : int {
    kDone = 0,  ///< done; equal; it matches
    kNo = 1,    ///< the answer is no: different, no match, problems found
    kError = 2, ///< wrong usage, bad input or another error
};

using Action = std::function<ExitCode(Console& console)>;

/// What the help of a command says.
struct CommandText {
    const char* name;
    const char* summary;   ///< one line
    const char* exitCodes; ///< what 0 and 1 mean, such as "0 equal, 1 different"
    const char* examples;  ///< one a line
};

/// An argument of a command. A handle, good for as long as the set of the command lives.
class Argument {
public:
    explicit Argument(CLI::Option& option) : m_option(&option) {}

    /// Has to be given.
    Argument& Require();
    /// Takes one of these words, and nothing else.
    Argument& TakeOnly(const std::vector<std::string>& words);
    /// Not together with the other one.
    Argument& Exclude(const Argument& other);

private:
    CLI::Option* m_option;
};

/// Declares the arguments of a command, or of the program. A handle, too. Names are separated by commas; one
/// without dashes is that of a positional argument. What is filled in is borrowed and outlives the parsing;
/// what is not given keeps its value.
class Command {
public:
    explicit Command(CLI::App& app) : m_app(&app) {}

    /// `valueName` is what the help calls the value; completion goes by it, too.
    Argument Add(const char* names, std::string& value, const char* valueName, const char* description);
    /// One value or more.
    Argument Add(
        const char* names, std::vector<std::string>& values, const char* valueName, const char* description);
    /// A number from `least` to `most`.
    Argument AddNumber(
        const char* names, int& value, int least, int most, const char* valueName, const char* description);
    /// Takes no value; set when given.
    Argument AddFlag(const char* names, bool& value, const char* description);

private:
    friend class CommandSet;

    CLI::App* m_app;
};

/// The program's subcommands: their arguments and what they do.
class CommandSet {
public:
    /// `footer` stands below the program's help.
    CommandSet(const char* program, const char* summary, const char* footer);
    ~CommandSet();
    CommandSet(const CommandSet&) = delete;
    CommandSet& operator=(const CommandSet&) = delete;

    /// What all commands take.
    Command GetProgram() { return Command(*m_root); }

    /// For what reads all arguments off it: completion. Borrowed from this object.
    const CLI::App& GetParser() const { return *m_root; }

    /// A new command.
    Command Add(const CommandText& text);

    void SetAction(const Command& command, Action action) { m_actions[command.m_app] = std::move(action); }

    /// Fills in what was given. The exit code where that is all: after printing help, or what is wrong. To be
    /// called once, when all commands are there.
    std::optional<ExitCode> Parse(const std::vector<std::string>& arguments, Console& console);

    /// Runs the command that was given.
    ExitCode Run(Console& console) const;

private:
    std::unique_ptr<CLI::App> m_root;
    std::map<const CLI::App*, Action> m_actions;
};

void AddTypesCommand(CommandSet& commands);
void AddDescribeCommand(CommandSet& commands);
void AddVersionsCommand(CommandSet& commands);
void AddNewCommand(CommandSet& commands);
void AddCheckCommand(CommandSet& commands);
void AddConvertCommand(CommandSet& commands);
void AddDiffCommand(CommandSet& commands);
void AddMatchCommand(CommandSet& commands);
void AddDemoCommand(CommandSet& commands);
void AddCompletionCommand(CommandSet& commands);

} // namespace Tool
