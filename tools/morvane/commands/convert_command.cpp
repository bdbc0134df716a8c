#include "tools/morvane/command.h"
#include "tools/morvane/model/library.h"
#include "tools/morvane/model/type_facts.h"
#include "tools/morvane/value/read_value.h"
#include "tools/morvane/value/write_value.h"

#include <memory>
#include <string>

namespace Tool {

namespace {

struct ConvertOptions {
    std::string file;
    InputOptions input;
    std::string toVersion;
    int indent = 2;
    bool compact = false;
    bool showSecrets = false;
};

void Warn(Console& console, const std::string& text) {
    console.err.WriteLine("morvane: " + console.err.Paint(Style::Caution, "warning:") + ' ' + text);
}

ExitCode RunConvert(const ConvertOptions& options, Console& console) {
    const Tavik::Version* version = FindVersion(options.toVersion);
    const auto value = ReadValue(options.file, options.input);
    const std::string text =
        WriteValue(*value, version, options.compact ? 0 : options.indent, options.showSecrets);
    if (version != nullptr) {
        for (const SetProperty& property : FindVanishing(*value, *version)) {
            Warn(console, property.path + " is left out: it came with " + GetFullName(property.version));
        }
    }
    const std::size_t secrets = options.showSecrets ? 0 : CountSecrets(*value, version);
    if (secrets > 0) {
        Warn(
            console, std::to_string(secrets) + (secrets == 1 ? " secret is" : " secrets are")
                         + " written as \"***\"; --show-secrets writes what they are");
    }
    console.out.WriteLine(text);
    return kDone;
}

} // namespace

void AddConvertCommand(CommandSet& commands) {
    CLI::App& command = commands.Add(
        {"convert", "Write a value again, also for another version", "0 done",
         "morvane convert request.json --compact\n"
         "morvane convert request.json --to-version 6.8 --show-secrets > older.json"});
    auto options = std::make_shared<ConvertOptions>();
    command.add_option("file", options->file, "File to read")->required()->type_name("FILE");
    AddInputOptions(command, options->input, "--from-version");
    command.add_option("--to-version", options->toVersion, "Leave out what this API version does not have")
        ->type_name("VERSION");
    auto* indent = command.add_option("--indent", options->indent, "Spaces a level, 2 unless said otherwise")
                       ->check(CLI::Range(0, 16))
                       ->type_name("N");
    command.add_flag("--compact", options->compact, "Write one line")->excludes(indent);
    command.add_flag("--show-secrets", options->showSecrets, "Write secrets as they are");
    commands.SetAction(command, [options](Console& console) { return RunConvert(*options, console); });
}

} // namespace Tool
