#include "pellum/error/exception.h"
#include "pellum/text/path_name.h"
#include "tools/morvane/command.h"
#include "tools/morvane/model/library.h"
#include "tools/morvane/model/lookup.h"
#include "tools/morvane/model/template_writer.h"
#include "tools/morvane/model/type_facts.h"
#include "tools/morvane/model/words.h"

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

namespace Tool {

namespace {

/// More choices than this are told by the command that lists them.
constexpr std::size_t kMostOthers = 5;

struct NewOptions {
    std::vector<std::string> types;
    std::string version;
    std::string folder;
    bool full = false;
};

void PrintChoices(const std::vector<TemplateChoice>& choices, Output& output) {
    for (const TemplateChoice& choice : choices) {
        std::vector<std::string> others;
        for (const Tavik::Type* type : choice.others) {
            others.emplace_back(type->GetWireName());
        }
        output.WriteLine(
            "morvane: " + output.Paint(Style::Faint, "hint:") + ' '
            + (choice.path.empty() ? "the value" : choice.path) + " may also be "
            + ListSome(others, kMostOthers)
            + (others.size() <= kMostOthers + 1
                   ? ""
                   : "; see morvane types --base " + std::string(choice.declared->GetName())));
    }
}

void WriteFile(const std::filesystem::path& path, const std::string& text) {
    if (std::filesystem::exists(path)) {
        throw Pellum::Exception(Pellum::ToName(path) + " is there already");
    }
    std::ofstream file(path, std::ios::binary);
    file << text;
    file.close();
    if (!file) {
        throw Pellum::Exception("cannot write " + Pellum::ToName(path));
    }
}

ExitCode RunNew(const NewOptions& options, Console& console) {
    if (options.types.size() > 1 && options.folder.empty()) {
        throw Pellum::Exception("several templates go to files: --into says to which folder");
    }
    const Tavik::Version* version = FindVersion(options.version);
    for (const std::string& name : options.types) {
        const Tavik::DataObjectType& type = FindDataType(name);
        if (!type.IsPartOf(version)) {
            throw Pellum::Exception(
                std::string(type.GetName()) + " is not part of version " + GetFullName(version)
                + "; it was introduced by " + GetFullName(type.GetVersion()));
        }
        const Template made = WriteTemplate(type, {options.full, version});
        if (options.folder.empty()) {
            console.out.Write(made.text);
            console.out.Flush(); // before what is said of it
            PrintChoices(made.choices, console.err);
        } else {
            WriteFile(Pellum::ToPath(options.folder) / (std::string(type.GetName()) + ".json"), made.text);
        }
    }
    if (!options.folder.empty()) {
        console.out.WriteLine(Count(options.types.size(), "template") + " written to " + options.folder);
    }
    return kDone;
}

} // namespace

void AddNewCommand(CommandSet& commands) {
    Command command = commands.Add(
        {"new", "Print a value of a type to fill in, as JSON", "0 done",
         "morvane new ComputerSpec > request.json\n"
         "morvane new LiveComputerLocation --full\n"
         "morvane new ConversionParams --version 6.8 | morvane check --version 6.8 -\n"
         "morvane new --into templates ComputerSpec ConversionParams\n"
         "\n"
         "Where values of several types can stand, hints beside the template name the others."});
    auto options = std::make_shared<NewOptions>();
    command.Add("type", options->types, "TYPE", "Data or fault types").Require();
    command.AddFlag(
        "--full", options->full, "With the optional properties, and derived types where there are some");
    command.Add(
        "--version,--api-version", options->version, "VERSION", "Only with what this API version has");
    command.Add("--into", options->folder, "DIR", "Write each template to a file in this folder, TYPE.json");
    commands.SetAction(command, [options](Console& console) { return RunNew(*options, console); });
}

} // namespace Tool
