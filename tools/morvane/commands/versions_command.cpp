#include "tavik/type/managed_object_type.h"
#include "tavik/type/type_registry.h"
#include "tools/morvane/command.h"
#include "tools/morvane/model/library.h"
#include "tools/morvane/model/type_facts.h"
#include "tools/morvane/terminal/table.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

namespace Tool {

namespace {

using VersionList = std::vector<const Tavik::Version*>;

struct VersionsOptions {
    std::string version;
    bool all = false;
    bool names = false;
};

/// What one version brings.
struct Additions {
    std::vector<std::string> types;
    std::vector<std::string> properties; ///< of older types, "morvane.ComputerSpec.location"
    std::vector<std::string> methods;    ///< of older types
};

Additions FindAdditions(const Tavik::Version& version) {
    Additions additions;
    for (const Tavik::Type* type : GetAllTypes()) {
        if (type->GetVersion() == &version) {
            additions.types.emplace_back(type->GetName());
            continue; // its members come with it
        }
        const std::string prefix = std::string(type->GetName()) + '.';
        if (const auto* dataType = dynamic_cast<const Tavik::DataObjectType*>(type)) {
            for (const Tavik::Property& property : dataType->GetOwnProperties()) {
                if (property.GetVersion() == &version) {
                    additions.properties.push_back(prefix + property.GetName());
                }
            }
        } else if (const auto* managedType = dynamic_cast<const Tavik::ManagedObjectType*>(type)) {
            for (const auto& member : managedType->GetMethodObjects()) {
                if (member->GetVersionName() == version.GetName()) {
                    auto& list = member->IsPropertyGetter() ? additions.properties : additions.methods;
                    list.push_back(prefix + member->GetName());
                }
            }
        }
    }
    return additions;
}

std::string Join(const VersionList& versions, const char* before = "") {
    std::string text;
    for (const Tavik::Version* version : versions) {
        text += text.empty() ? before : ", ";
        text += version->GetNamespace() == kOwnNamespace ? GetShortName(version) : version->GetName();
    }
    return text;
}

/// The older versions of the namespace that are no part of `version`: it is not on their branch.
VersionList FindMissing(const Tavik::Version& version, const VersionList& siblings) {
    VersionList missing;
    const auto self = std::find(siblings.begin(), siblings.end(), &version);
    std::copy_if(
        siblings.begin(), self, std::back_inserter(missing),
        [&version](const Tavik::Version* older) { return !version.Includes(*older); });
    return missing;
}

/// The direct inclusions that are, or are not, of the version's own namespace.
VersionList FindIncluded(const Tavik::Version& version, bool own) {
    VersionList included;
    for (const Tavik::Version* direct : version.GetDirectInclusions()) {
        if ((direct->GetNamespace() == version.GetNamespace()) == own) {
            included.push_back(direct);
        }
    }
    return included;
}

std::vector<std::string> FindNamespaces() {
    std::vector<std::string> namespaces{std::string(kOwnNamespace)};
    for (const Tavik::Version* version : Tavik::TypeRegistry::Instance().GetVersions()) {
        if (std::find(namespaces.begin(), namespaces.end(), version->GetNamespace()) == namespaces.end()) {
            namespaces.push_back(version->GetNamespace());
        }
    }
    return namespaces;
}

std::string CountCell(std::size_t number) {
    return number == 0 ? "-" : '+' + std::to_string(number);
}

void PrintVersionTable(Console& console, bool all) {
    Table table(
        {{"LABEL", Align::Right},
         {"VERSION"},
         {"TYPES", Align::Right},
         {"PROPERTIES", Align::Right},
         {"METHODS", Align::Right},
         {"INCLUDES"}});
    for (const std::string& space :
         all ? FindNamespaces() : std::vector<std::string>{std::string(kOwnNamespace)}) {
        const VersionList versions = GetVersions(space);
        for (const Tavik::Version* version : versions) {
            const Additions additions = FindAdditions(*version);
            table.AddRow(
                {{version->GetLabel().empty() ? "-" : version->GetLabel(), Style::Heading},
                 {version->GetName(), Style::Name},
                 CountCell(additions.types.size()),
                 CountCell(additions.properties.size()),
                 CountCell(additions.methods.size()),
                 Join(FindIncluded(*version, true)) + Join(FindMissing(*version, versions), ", but not ")});
        }
    }
    table.Print(console.out);
    if (console.out.IsTerminal()) {
        console.out.WriteLine(console.out.Paint(
            Style::Faint, "Properties and methods are counted where they came to older types."));
    }
}

void PrintList(Output& output, const std::string& title, const std::vector<std::string>& names) {
    if (names.empty()) {
        return;
    }
    output.WriteLine();
    output.WriteLine(
        output.Paint(Style::Heading, title) + ' ' + output.Paint(Style::Faint, std::to_string(names.size())));
    for (const std::string& name : names) {
        output.WriteLine("  " + name);
    }
}

void PrintVersion(Output& output, const Tavik::Version& version) {
    const auto fact = [&output](const char* name, const std::string& text) {
        if (!text.empty()) {
            output.WriteLine("  " + output.Paint(Style::Faint, Pad(name, 10)) + text);
        }
    };
    const VersionList siblings = GetVersions(version.GetNamespace());
    VersionList included;
    std::copy_if(
        siblings.begin(), siblings.end(), std::back_inserter(included),
        [&](const Tavik::Version* other) { return other != &version && version.Includes(*other); });
    output.WriteLine(output.Paint(Style::Heading, GetFullName(&version)));
    fact("follows", Join(FindIncluded(version, true)));
    fact("includes", Join(included));
    fact("lacks", Join(FindMissing(version, siblings)));
    fact("stands on", Join(FindIncluded(version, false)));
    const Additions additions = FindAdditions(version);
    PrintList(output, "New types", additions.types);
    PrintList(output, "New properties of older types", additions.properties);
    PrintList(output, "New methods of older types", additions.methods);
}

ExitCode RunVersions(const VersionsOptions& options, Console& console) {
    if (options.names) {
        for (const Tavik::Version* version : GetVersions(kOwnNamespace)) {
            console.out.WriteLine(GetShortName(version));
        }
    } else if (options.version.empty()) {
        PrintVersionTable(console, options.all);
    } else {
        PrintVersion(console.out, *FindVersion(options.version));
    }
    return kDone;
}

} // namespace

void AddVersionsCommand(CommandSet& commands) {
    Command command = commands.Add(
        {"versions", "List the versions and what each of them adds", "0 done",
         "morvane versions\n"
         "morvane versions 9.0\n"
         "morvane versions --all"});
    auto options = std::make_shared<VersionsOptions>();
    const Argument version = command.Add("version", options->version, "VERSION", "Tell all of this version");
    Argument all = command.AddFlag("--all", options->all, "List the versions of the other libraries, too");
    command.AddFlag("--names", options->names, "Print the labels only, one a line")
        .Exclude(version)
        .Exclude(all);
    all.Exclude(version);
    commands.SetAction(command, [options](Console& console) { return RunVersions(*options, console); });
}

} // namespace Tool
