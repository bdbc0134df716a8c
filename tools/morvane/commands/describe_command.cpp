#include "pellum/error/exception.h"
#include "tavik/type/type_registry.h"
#include "tools/morvane/command.h"
#include "tools/morvane/describe/type_describer.h"
#include "tools/morvane/model/lookup.h"
#include "tools/morvane/model/types_document.h"

#include <algorithm>
#include <memory>
#include <string>

namespace Tool {

namespace {

struct DescribeOptions {
    std::string name;
    bool json = false;
};

/// What the descriptor of one type says, in the form of `types --json`.
std::string WriteDocument(const Tavik::Type& type) {
    for (const Tavik::LoadedLibrary& library : Tavik::TypeRegistry::Instance().GetLibraries()) {
        if (std::find(library.types.begin(), library.types.end(), &type) != library.types.end()) {
            return WriteTypesDocument(library, [&type](const Tavik::Type& other) { return &other == &type; });
        }
    }
    throw Pellum::Exception(std::string(type.GetName()) + " is built in: no library describes it");
}

ExitCode RunDescribe(const DescribeOptions& options, Console& console) {
    if (options.json) {
        console.out.Write(WriteDocument(FindType(options.name)));
        return kDone;
    }
    const Subject subject = FindSubject(options.name);
    if (subject.member) {
        DescribeMember(*subject.member, console.out);
    } else {
        DescribeType(*subject.type, console.out);
    }
    return kDone;
}

} // namespace

void AddDescribeCommand(CommandSet& commands) {
    Command command = commands.Add(
        {"describe", "Explain one type and all that it holds, or one method", "0 done",
         "morvane describe ComputerSpec\n"
         "morvane describe LiveComputerLocation        the end of a name, where it is clear\n"
         "morvane describe MorvaneUserSession          wire name\n"
         "morvane describe Morvane::Server::AgentManager\n"
         "morvane describe AgentManager.installAgent   a method, with what its faults mean\n"
         "morvane describe MorvaneInstallAgent         the same by its wire name"});
    auto options = std::make_shared<DescribeOptions>();
    command
        .Add(
            "type", options->name, "TYPE",
            "Dotted name or the end of it, wire name or class of a type; TYPE.MEMBER; or a method's name")
        .Require();
    command.AddFlag("--json", options->json, "Print what its descriptor says, in the form of types --json");
    commands.SetAction(command, [options](Console& console) { return RunDescribe(*options, console); });
}

} // namespace Tool
