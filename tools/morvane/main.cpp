#include "pellum/text/near_name.h"
#include "tools/morvane/command.h"
#include "tools/morvane/value/read_value.h"

#include <exception>
#include <iostream>
#include <map>
#include <new>
#include <string>
#include <vector>

namespace {

using Tool::Console;

constexpr const char* kProgram = "morvane";

/// What is wrong with the arguments; a mistyped command is named, not just missed.
std::string DescribeUsageError(const CLI::App& app, const CLI::ParseError& error, int argc, char** argv) {
    if (!app.get_subcommands().empty() || argc < 2 || argv[1][0] == '-') {
        return error.what();
    }
    std::vector<std::string> names;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
        names.push_back(command->get_name());
    }
    const std::string near = Pellum::FindNearName(argv[1], names);
    return "there is no command \"" + std::string(argv[1]) + '"'
         + (near.empty() ? "" : "; did you mean \"" + near + "\"?");
}

Tool::ExitCode FailUsage(
    Console& console, const CLI::App& app, const CLI::ParseError& error, int argc, char** argv) {
    console.WriteError(kProgram, DescribeUsageError(app, error, argc, argv));
    const auto chosen = app.get_subcommands();
    console.err.WriteLine(
        "Run \"morvane " + (chosen.empty() ? std::string() : chosen.front()->get_name() + ' ')
        + "--help\" for what it takes.");
    return Tool::kError;
}

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
    Console console;
    CLI::App app(
        "Looks at the types of the conversion service's interface, and at values of them.", "morvane");
    Tool::ColourChoice colours = Tool::ColourChoice::Auto;
    const std::map<std::string, Tool::ColourChoice> choices = {
        {"auto", Tool::ColourChoice::Auto},
        {"always", Tool::ColourChoice::Always},
        {"never", Tool::ColourChoice::Never}};
    app.add_option_function<std::string>(
           "--color", [&](const std::string& word) { colours = choices.at(word); },
           "Use colours; auto: at a terminal without NO_COLOR")
        ->check(CLI::IsMember({"auto", "always", "never"}))
        ->type_name("WHEN");
    app.require_subcommand(1);
    app.fallthrough();
    app.footer("A file named - is standard input. Secrets are shown as \"***\" unless a command\n"
               "that has the option --show-secrets is given it.\n"
               "\n"
               "Exit codes: 0 done, equal or matching; 1 the answer is no: different, no match,\n"
               "problems found; 2 wrong usage, bad input or another error.\n"
               "\n"
               "Run \"morvane COMMAND --help\" for a command's arguments and examples,\n"
               "\"morvane demo\" for a tour.");

    Tool::CommandSet commands(app);
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

    commands.RefuseEmptyArguments();

    if (argc == 1) {
        console.err.Write(app.help());
        return Tool::kError;
    }
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& request) { // --help
        app.exit(request);
        std::cout.flush();
        return std::cout ? Tool::kDone : Tool::kError;
    } catch (const CLI::ParseError& error) {
        return FailUsage(console, app, error, argc, argv);
    }
    console.out.SetColourChoice(colours);
    console.err.SetColourChoice(colours);
    return Run(commands, console);
}
