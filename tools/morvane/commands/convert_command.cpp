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
    Command command = commands.Add(
        {"convert", "Write a value again, also for another version", "0 done",
         "morvane convert request.json --compact\n"
         "morvane convert request.json --to-version 6.8 --show-secrets > older.json"});
    auto options = std::make_shared<ConvertOptions>();
    command.Add("file", options->file, "FILE", "File to read").Require();
    AddInputOptions(command, options->input, "--from-version");
    command.Add(
        "--to-version", options->toVersion, "VERSION", "Leave out what this API version does not have");
    const Argument indent =
        command.AddNumber("--indent", options->indent, 0, 16, "N", "Spaces a level, 2 unless said otherwise");
    command.AddFlag("--compact", options->compact, "Write one line").Exclude(indent);
    command.AddFlag("--show-secrets", options->showSecrets, "Write secrets as they are");
    commands.SetAction(command, [options](Console& console) { return RunConvert(*options, console); });
}

} // namespace Tool
