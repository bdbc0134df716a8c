#pragma once

#include "tools/morvane/terminal/output.h"

#include <CLI/CLI.hpp>

#include <functional>
#include <map>
#include <string>

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

/// The program's subcommands: their arguments and what they do.
class CommandSet {
public:
    /// `root` is borrowed and outlives this object.
    explicit CommandSet(CLI::App& root) : m_root(root) {}

    CLI::App& GetRoot() const { return m_root; }

    /// A new command, owned by the root.
    CLI::App& Add(const CommandText& text);

    void SetAction(const CLI::App& command, Action action) { m_actions[&command] = std::move(action); }

    /// Makes an argument that is empty, a variable that was not set for example, a wrong usage. To be called
    /// when all commands are there.
    void RefuseEmptyArguments();

    /// Runs the command that was given.
    ExitCode Run(Console& console) const;

private:
    CLI::App& m_root;
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
