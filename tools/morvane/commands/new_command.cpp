#include "pellum/error/exception.h"
#include "tools/morvane/command.h"
#include "tools/morvane/model/library.h"
#include "tools/morvane/model/template_writer.h"
#include "tools/morvane/model/type_facts.h"

#include <memory>
#include <string>

namespace Tool {

namespace {

struct NewOptions {
    std::string type;
    std::string version;
    bool full = false;
};

ExitCode RunNew(const NewOptions& options, Console& console) {
    const Tavik::DataObjectType& type = FindDataType(options.type);
    const Tavik::Version* version = FindVersion(options.version);
    if (!type.IsPartOf(version)) {
        throw Pellum::Exception(
            std::string(type.GetName()) + " is not part of version " + GetFullName(version)
            + "; it was introduced by " + GetFullName(type.GetVersion()));
    }
    console.out.Write(WriteTemplate(type, {options.full, version}));
    return kDone;
}

} // namespace

void AddNewCommand(CommandSet& commands) {
    CLI::App& command = commands.Add(
        {"new", "Print a value of a type to fill in, as JSON", "0 done",
         "morvane new ComputerSpec > request.json\n"
         "morvane new ComputerSpec.LiveComputerLocation --full\n"
         "morvane new UserSession --version 6.8 | morvane check -"});
    auto options = std::make_shared<NewOptions>();
    command.add_option("type", options->type, "Dotted or wire name of a data or fault type")
        ->required()
        ->type_name("TYPE");
    command.add_flag(
        "--full", options->full, "With the optional properties, and derived types where there are some");
    command.add_option("--version", options->version, "Only with what this API version has")
        ->type_name("VERSION");
    commands.SetAction(command, [options](Console& console) { return RunNew(*options, console); });
}

} // namespace Tool
