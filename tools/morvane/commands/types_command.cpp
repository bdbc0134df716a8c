#include "tavik/type/enum_type.h"
#include "tavik/type/managed_object_type.h"
#include "tools/morvane/command.h"
#include "tools/morvane/model/library.h"
#include "tools/morvane/model/type_facts.h"
#include "tools/morvane/model/types_document.h"
#include "tools/morvane/terminal/table.h"

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace Tool {

namespace {

struct TypesOptions {
    std::string word;
    std::string kind;
    std::string version;
    std::string base;
    std::string area;
    bool all = false;
    bool names = false;
    bool json = false;
};

char ToLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool ContainsWord(std::string text, std::string word) {
    std::transform(text.begin(), text.end(), text.begin(), ToLower);
    std::transform(word.begin(), word.end(), word.begin(), ToLower);
    return text.find(word) != std::string::npos;
}

/// Decides which types are listed.
class TypeFilter {
public:
    explicit TypeFilter(const TypesOptions& options)
        : m_options(options),
          m_version(FindVersion(options.version)),
          m_base(options.base.empty() ? nullptr : &FindType(options.base)) {}

    bool Accepts(const Tavik::Type& type) const {
        return (m_options.kind.empty() || m_options.kind == GetKindName(type.GetKind()))
            && type.IsPartOf(m_version) && (m_base == nullptr || type.IsA(m_base))
            && (m_options.area.empty() || m_options.area == GetArea(type.GetName()))
            && (ContainsWord(type.GetName(), m_options.word)
                || ContainsWord(type.GetWireName(), m_options.word));
    }

    const Tavik::Version* GetVersion() const { return m_version; }

private:
    const TypesOptions& m_options;
    const Tavik::Version* m_version;
    const Tavik::Type* m_base;
};

/// The number of a type's properties; of a managed type, its own ones. Other types have none.
std::string DescribePropertyCount(const Tavik::Type& type, const Tavik::Version* version) {
    if (const auto* dataType = dynamic_cast<const Tavik::DataObjectType*>(&type)) {
        return std::to_string(CountProperties(*dataType, version));
    }
    if (const auto* managedType = dynamic_cast<const Tavik::ManagedObjectType*>(&type)) {
        return std::to_string(managedType->GetMethodObjects().size() - managedType->GetOwnMethodCount());
    }
    return "-";
}

ExitCode RunTypes(const TypesOptions& options, Console& console) {
    const TypeFilter filter(options);
    const auto accepts = [&filter](const Tavik::Type& type) { return filter.Accepts(type); };
    if (options.json) {
        console.out.Write(WriteTypesDocument(GetOwnLibrary(), accepts));
        return kDone;
    }
    Table table({{"KIND"}, {"SINCE"}, {"PROPERTIES", Align::Right}, {"NAME"}});
    std::size_t count = 0;
    for (const Tavik::Type* type : options.all ? GetAllTypes() : GetOwnTypes()) {
        if (!accepts(*type)) {
            continue;
        }
        ++count;
        if (options.names) {
            console.out.WriteLine(type->GetName());
        } else {
            table.AddRow(
                {GetKindName(type->GetKind()),
                 GetShortName(type->GetVersion()),
                 DescribePropertyCount(*type, filter.GetVersion()),
                 {type->GetName(), Style::Name}});
        }
    }
    if (count == 0) {
        console.err.WriteLine("morvane: no type matches");
    }
    if (!table.IsEmpty()) {
        table.Print(console.out);
    }
    if (console.out.IsTerminal() && !options.names) {
        console.out.WriteLine(
            console.out.Paint(Style::Faint, std::to_string(count) + (count == 1 ? " type" : " types")));
    }
    return kDone;
}

} // namespace

void AddTypesCommand(CommandSet& commands) {
    CLI::App& command = commands.Add(
        {"types", "List the types of the interface", "0 done",
         "morvane types\n"
         "morvane types location\n"
         "morvane types --kind fault --version 7.0\n"
         "morvane types --base ComputerSpec.ComputerLocation\n"
         "morvane types --json > types.json"});
    auto options = std::make_shared<TypesOptions>();
    command.add_option("word", options->word, "Only types with this in their name")->type_name("WORD");
    command.add_option("--kind", options->kind, "Only types of this kind")
        ->check(CLI::IsMember({"data", "fault", "enum", "managed"}))
        ->type_name("KIND");
    command.add_option("--version", options->version, "Only what this API version has")->type_name("VERSION");
    command.add_option("--base", options->base, "Only this type and those derived from it")
        ->type_name("TYPE");
    command.add_option("--area", options->area, "Only types of this part of the interface, such as params")
        ->type_name("AREA");
    auto* names = command.add_flag("--names", options->names, "Print the names only, one a line");
    auto* json =
        command.add_flag("--json", options->json, "Print all that the descriptors say, as one JSON document");
    command.add_flag("--all", options->all, "List the types of the other libraries, too")->excludes(json);
    names->excludes(json);
    commands.SetAction(command, [options](Console& console) { return RunTypes(*options, console); });
}

} // namespace Tool
