#include "tools/morvane/command.h"
#include "tools/morvane/platform.h"
#include "tools/morvane/value/read_value.h"

#include <exception>
#include <map>
#include <new>
#include <string>
#include <vector>

namespace {

using Tool::Console;

constexpr const char* kProgram = "morvane";

Tool::ExitCode Run(const Tool::CommandSet& commands, Console& console) {
    try {
        const Tool::ExitCode code = commands.Run(console);
        console.out.Flush();
        return code;
    } catch (const std::bad_alloc&) {
        console.WriteError(kProgram, "there is not enough memory");
    } catch (const Tool::InputError& error) {
        console.WriteError(error.GetPlace(), error.GetProblem());
    } catch (const std::exception& error) {
        console.WriteError(kProgram, error.what());
    }
    return Tool::kError;
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments = Tool::GetArguments(argc, argv);
    Tool::PrepareOutput();
    Console console;
    Tool::CommandSet commands(
        kProgram, "Looks at the types of the conversion service's interface, and at values of them.",
        "A file named - is standard input. Secrets are shown as \"***\" unless a command\n"
        "that has the option --show-secrets is given it.\n"
        "\n"
        "Exit codes: 0 done, equal or matching; 1 the answer is no: different, no match,\n"
        "problems found; 2 wrong usage, bad input or another error.\n"
        "\n"
        "Run \"morvane COMMAND --help\" for a command's arguments and examples,\n"
        "\"morvane demo\" for a tour.");
    const std::map<std::string, Tool::ColourChoice> choices = {
        {"auto", Tool::ColourChoice::Auto},
        {"always", Tool::ColourChoice::Always},
        {"never", Tool::ColourChoice::Never}};
    std::string colours = "auto";
    commands.GetProgram()
        .Add("--color", colours, "WHEN", "Use colours; auto: at a terminal without NO_COLOR")
        .TakeOnly({"auto", "always", "never"});

    Tool::AddTypesCommand(commands);
    Tool::AddDescribeCommand(commands);
    Tool::AddVersionsCommand(commands);
    Tool::AddNewCommand(commands);
    Tool::AddCheckCommand(commands);
    Tool::AddConvertCommand(commands);
    Tool::AddDiffCommand(commands);
    Tool::AddMatchCommand(commands);
    Tool::AddDemoCommand(commands);
    Tool::AddCompletionCommand(commands);

    if (const auto code = commands.Parse(arguments, console)) {
        return *code;
    }
    console.out.SetColourChoice(choices.at(colours));
    console.err.SetColourChoice(choices.at(colours));
    return Run(commands, console);
}
