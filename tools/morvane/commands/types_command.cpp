#include "tools/morvane/command.h"
#include "tools/morvane/model/documentation.h"
#include "tools/morvane/model/library.h"
#include "tools/morvane/model/type_facts.h"
#include "tools/morvane/model/type_query.h"
#include "tools/morvane/model/types_document.h"
#include "tools/morvane/model/words.h"
#include "tools/morvane/terminal/table.h"

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace Tool {

namespace {

using TypeList = std::vector<const Tavik::Type*>;

struct TypesOptions {
    TypeQuery query;
    bool names = false;
    bool json = false;
    bool areas = false;
};

/// What is said of a type in one line: its documentation, or which members were found.
std::string DescribeInLine(const Tavik::Type& type, const TypeFinder& finder, bool showsMembers) {
    const std::vector<std::string> members =
        showsMembers ? finder.FindMembersWithWords(type) : std::vector<std::string>();
    return members.empty() ? GetSummary(type.GetName()) : "has " + ListSome(members, 6);
}

/// One type a line, cut to the width of the terminal. A long name does not move all other lines.
class TypeTable {
public:
    TypeTable(const TypeList& types, Output& output) : m_output(output) {
        for (const Tavik::Type* type : types) {
            m_nameWidth = std::max(m_nameWidth, GetDisplayWidth(type->GetName()));
        }
        m_nameWidth = std::min(m_nameWidth, GetRoom(kBeforeName) / 5 * 3);
    }

    void PrintTitle() { PrintLine("KIND", "SINCE", "NAME", "DOCUMENTATION", Style::Faint); }

    void PrintType(const Tavik::Type& type, const std::string& text) {
        PrintLine(
            GetKindName(type.GetKind()), GetShortName(type.GetVersion()), type.GetName(), text, Style::Name);
    }

private:
    static constexpr std::size_t kKindWidth = 7;
    static constexpr std::size_t kSinceWidth = 5;
    static constexpr std::size_t kBeforeName = kKindWidth + 2 + kSinceWidth + 2;
    static constexpr std::size_t kLeastText = 8;

    /// Columns of the terminal behind the first ones.
    std::size_t GetRoom(std::size_t first) const {
        return m_output.GetWidth() - std::min(m_output.GetWidth(), first);
    }

    void PrintLine(
        const std::string& kind, const std::string& since, const std::string& name, const std::string& text,
        Style nameStyle) {
        const Style style = nameStyle == Style::Name ? Style::Plain : nameStyle;
        const std::string shownName = Abbreviate(name, GetRoom(kBeforeName));
        const std::size_t textStart = kBeforeName + std::max(m_nameWidth, GetDisplayWidth(shownName)) + 2;
        std::string line =
            m_output.Paint(style, Pad(kind, kKindWidth) + "  " + Pad(since, kSinceWidth) + "  ")
            + m_output.Paint(nameStyle, shownName);
        if (!text.empty() && GetRoom(textStart) >= kLeastText) {
            line += std::string(textStart - kBeforeName - GetDisplayWidth(shownName), ' ')
                  + m_output.Paint(style, Abbreviate(text, GetRoom(textStart)));
        }
        m_output.WriteLine(line);
    }

    Output& m_output;
    std::size_t m_nameWidth = 0;
};

/// "12 types: 8 data, 4 fault"
std::string Summarise(const TypeList& types) {
    std::map<Tavik::TypeKind, std::size_t> counts;
    for (const Tavik::Type* type : types) {
        ++counts[type->GetKind()];
    }
    std::vector<std::string> kinds;
    kinds.reserve(counts.size());
    for (const auto& [kind, count] : counts) {
        kinds.push_back(std::to_string(count) + ' ' + GetKindName(kind));
    }
    return Count(types.size(), "type") + ": " + ListSome(kinds, kinds.size());
}

void PrintAreas(bool all, Output& output) {
    const auto areas = CountTypesOfAreas(all);
    if (!output.IsTerminal()) {
        for (const auto& [area, count] : areas) {
            output.WriteLine(area + '\t' + std::to_string(count));
        }
        return;
    }
    Table table({{"TYPES", Align::Right}, {"AREA"}});
    for (const auto& [area, count] : areas) {
        table.AddRow({std::to_string(count), {area, Style::Name}});
    }
    table.Print(output);
}

void PrintTypes(
    const TypeList& types, const TypeFinder& finder, const TypesOptions& options, Output& output) {
    if (options.names) {
        for (const Tavik::Type* type : types) {
            output.WriteLine(type->GetName());
        }
    } else if (output.IsTerminal()) {
        TypeTable table(types, output);
        table.PrintTitle();
        for (const Tavik::Type* type : types) {
            table.PrintType(*type, DescribeInLine(*type, finder, options.query.members));
        }
        output.WriteLine(output.Paint(Style::Faint, Abbreviate(Summarise(types), output.GetWidth())));
    } else {
        for (const Tavik::Type* type : types) {
            output.WriteLine(
                std::string(type->GetName()) + '\t' + GetKindName(type->GetKind()) + '\t'
                + GetShortName(type->GetVersion()) + '\t'
                + DescribeInLine(*type, finder, options.query.members));
        }
    }
}

ExitCode RunTypes(const TypesOptions& options, Console& console) {
    if (options.areas) {
        PrintAreas(options.query.all, console.out);
        return kDone;
    }
    const TypeFinder finder(options.query);
    const TypeList types = finder.Find();
    if (options.json) {
        const auto accepts = [&finder](const Tavik::Type& type) { return finder.Accepts(type); };
        console.out.Write(WriteTypesDocument(GetOwnLibrary(), accepts));
    } else if (!types.empty()) {
        PrintTypes(types, finder, options, console.out);
    }
    if (types.empty()) {
        console.err.WriteLine("morvane: " + finder.ExplainNothing());
    }
    return types.empty() ? kNo : kDone;
}

} // namespace

void AddTypesCommand(CommandSet& commands) {
    Command command = commands.Add(
        {"types", "List the types of the interface", "0 there are such types, 1 there are none",
         "morvane types\n"
         "morvane types linux source          all words in the name or the documentation\n"
         "morvane types --members key         also in properties, methods and values\n"
         "morvane types --area agent.internal --kind fault\n"
         "morvane types --base ComputerLocation --version 6.8\n"
         "morvane types --since 9.0\n"
         "morvane types --kind managed | cut -f1\n"
         "morvane types --area params --json > params.json\n"
         "\n"
         "Off the terminal the columns are separated by tabs: name, kind, since, documentation."});
    auto options = std::make_shared<TypesOptions>();
    TypeQuery& query = options->query;
    command.Add(
        "words", query.words, "WORD", "Only types with all these words in their names or documentation");
    command.Add("--kind", query.kind, "KIND", "Only types of this kind")
        .TakeOnly({"data", "fault", "enum", "managed"});
    command.Add(
        "--area", query.area, "AREA",
        "Only types of this part of the interface, such as params; see --areas");
    command.Add("--version,--api-version", query.version, "VERSION", "Only what this API version has");
    command.Add("--since", query.since, "VERSION", "Only what this API version introduced");
    command.Add("--base", query.base, "TYPE", "Only types that derive from this one, directly or not");
    command.AddFlag("--members", query.members, "Look for the words in properties, methods and values, too");
    Argument names = command.AddFlag("--names", options->names, "Print the names only, one a line");
    const Argument json =
        command.AddFlag("--json", options->json, "Print all that the descriptors say, as one JSON document");
    command.AddFlag("--all", query.all, "List the types of the other libraries, too").Exclude(json);
    names.Exclude(json);
    command.AddFlag("--areas", options->areas, "List the areas and how many types each has")
        .Exclude(json)
        .Exclude(names);
    commands.SetAction(command, [options](Console& console) { return RunTypes(*options, console); });
}

} // namespace Tool
