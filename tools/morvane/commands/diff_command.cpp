#include "pellum/error/exception.h"
#include "tools/morvane/command.h"
#include "tools/morvane/value/differences.h"
#include "tools/morvane/value/read_value.h"

#include <memory>
#include <string>

namespace Tool {

namespace {

struct DiffOptions {
    std::string first;
    std::string second;
    InputOptions input;
    bool paths = false;
    bool showSecrets = false;
};

ExitCode RunDiff(const DiffOptions& options, Console& console) {
    if (options.first == "-" && options.second == "-") {
        throw Pellum::Exception("standard input can be read only once");
    }
    const auto first = ReadValue(options.first, options.input);
    const auto second = ReadValue(options.second, options.input);
    const auto differences = FindDifferences(*first, *second, options.showSecrets);
    if (options.paths) {
        for (const Difference& difference : differences) {
            console.out.WriteLine(difference.path);
        }
    } else {
        PrintDifferences(console.out, differences);
    }
    return differences.empty() ? kDone : kNo;
}

} // namespace

void AddDiffCommand(CommandSet& commands) {
    Command command = commands.Add(
        {"diff", "Show in which properties two values differ", "0 they are equal, 1 they differ",
         "morvane diff before.json after.json\n"
         "morvane diff --paths before.json after.json\n"
         "morvane convert --show-secrets before.json | morvane diff - after.json"});
    auto options = std::make_shared<DiffOptions>();
    command.Add("a", options->first, "FILE", "The value to compare with").Require();
    command.Add("b", options->second, "FILE", "The value to compare").Require();
    AddInputOptions(command, options->input, "--version,--api-version");
    command.AddFlag("--paths", options->paths, "Print the paths only, one a line");
    command.AddFlag("--show-secrets", options->showSecrets, "Show secrets as they are");
    commands.SetAction(command, [options](Console& console) { return RunDiff(*options, console); });
}

} // namespace Tool
