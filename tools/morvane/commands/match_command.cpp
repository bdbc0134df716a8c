#include "pellum/error/exception.h"
#include "tavik/value/compare.h"
#include "tools/morvane/command.h"
#include "tools/morvane/value/differences.h"
#include "tools/morvane/value/read_value.h"

#include <memory>
#include <string>

namespace Tool {

namespace {

struct MatchOptions {
    std::string value;
    std::string pattern;
    InputOptions input;
    bool quiet = false;
    bool showSecrets = false;
};

ExitCode RunMatch(const MatchOptions& options, Console& console) {
    if (options.value == "-" && options.pattern == "-") {
        throw Pellum::Exception("standard input can be read only once");
    }
    const auto value = ReadValue(options.value, options.input);
    const auto pattern = ReadValue(options.pattern, options.input);
    const bool matches = Tavik::AreEqualAnysInt(value.Get(), pattern.Get(), 0, true);
    if (options.quiet) {
        return matches ? kDone : kNo;
    }
    if (matches) {
        console.out.WriteLine(console.out.Paint(Style::Good, "matches"));
        return kDone;
    }
    console.out.WriteLine(
        console.out.Paint(Style::Bad, "does not match") + ": - is the value, + the pattern");
    PrintDifferences(console.out, FindMismatches(*value, *pattern, options.showSecrets));
    return kNo;
}

} // namespace

void AddMatchCommand(CommandSet& commands) {
    Command command = commands.Add(
        {"match", "Say whether a value matches a pattern, whose unset optional properties match anything",
         "0 it matches, 1 it does not",
         "morvane match examples/connection_request.json examples/pattern.json\n"
         "morvane match --quiet request.json pattern.json && echo yes"});
    auto options = std::make_shared<MatchOptions>();
    command.Add("value", options->value, "FILE", "The value").Require();
    command
        .Add(
            "pattern", options->pattern, "FILE",
            "The pattern: a value of the same type, whose unset optional properties match anything")
        .Require();
    AddInputOptions(command, options->input, "--version,--api-version");
    command.AddFlag("--quiet", options->quiet, "Print nothing");
    command.AddFlag("--show-secrets", options->showSecrets, "Show secrets as they are");
    commands.SetAction(command, [options](Console& console) { return RunMatch(*options, console); });
}

} // namespace Tool
