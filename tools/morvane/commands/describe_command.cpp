#include "tavik/type/enum_type.h"
#include "tavik/type/managed_object_type.h"
#include "tavik/type/type_registry.h"
#include "tools/morvane/command.h"
#include "tools/morvane/model/library.h"
#include "tools/morvane/model/type_facts.h"
#include "tools/morvane/terminal/table.h"

#include <memory>
#include <string>
#include <vector>

namespace Tool {

namespace {

constexpr std::size_t kIndent = 2;

/// Writes all that is known of one type, section by section.
class TypeDescriber {
public:
    TypeDescriber(const Tavik::Type& type, Output& output) : m_type(type), m_output(output) {}

    void Describe() {
        DescribeIdentity();
        DescribeInheritance();
        if (const auto* dataType = dynamic_cast<const Tavik::DataObjectType*>(&m_type)) {
            DescribeProperties(*dataType);
        } else if (const auto* enumType = dynamic_cast<const Tavik::EnumType*>(&m_type)) {
            DescribeValues(*enumType);
        } else if (const auto* managedType = dynamic_cast<const Tavik::ManagedObjectType*>(&m_type)) {
            DescribeProperties(*managedType);
            DescribeMethods(*managedType);
        }
    }

private:
    static std::string Documentation(std::string_view type, const char* member = nullptr) {
        const char* text = FindDocumentation(type, member);
        return text == nullptr ? std::string() : std::string(text);
    }

    static std::string ShortVersion(const char* name) {
        return GetShortName(Tavik::TypeRegistry::Instance().FindVersion(name));
    }

    void Heading(const std::string& title) {
        m_output.WriteLine();
        m_output.WriteLine(m_output.Paint(Style::Heading, title));
    }

    void Paragraph(const std::string& text, std::size_t indent) {
        const std::size_t width = m_output.GetWidth();
        for (const std::string& line : Wrap(text, width == Output::kUnlimited ? width : width - indent)) {
            m_output.WriteLine(std::string(indent, ' ') + line);
        }
    }

    void Fact(const char* name, const std::string& text) {
        if (!text.empty()) {
            m_output.WriteLine("  " + m_output.Paint(Style::Faint, Pad(name, 10)) + text);
        }
    }

    void DescribeIdentity() {
        m_output.WriteLine(m_output.Paint(Style::Heading, m_type.GetName()));
        Paragraph(Documentation(m_type.GetName()), kIndent);
        m_output.WriteLine();
        Fact("wire name", m_type.GetWireName());
        Fact("kind", GetKindName(m_type.GetKind()));
        Fact("since", GetFullName(m_type.GetVersion()));
        if (const std::string header = GetHeaderPath(m_type.GetName()); !header.empty()) {
            Fact("class", GetClassName(m_type.GetName()));
            Fact("header", header);
        }
    }

    /// The bases, each below its own, then the type, then what derives from it directly.
    void DescribeInheritance() {
        std::vector<const Tavik::Type*> chain;
        for (const Tavik::Type* type = &m_type; type != nullptr; type = type->GetBaseType()) {
            chain.insert(chain.begin(), type);
        }
        std::vector<const Tavik::Type*> derived;
        for (const Tavik::Type* type : GetDerivedTypes(m_type)) {
            if (type->GetBaseType() == &m_type) {
                derived.push_back(type);
            }
        }
        if (chain.size() + derived.size() == 1) {
            return;
        }
        Heading("Inheritance");
        std::size_t indent = kIndent;
        for (const Tavik::Type* type : chain) {
            const bool isRoot = type == chain.front();
            m_output.WriteLine(
                std::string(indent, ' ') + (isRoot ? "" : "└─ ")
                + m_output.Paint(type == &m_type ? Style::Heading : Style::Plain, type->GetName()));
            indent += isRoot ? 0 : 3;
        }
        for (const Tavik::Type* type : derived) {
            m_output.WriteLine(
                std::string(indent, ' ') + (type == derived.back() ? "└─ " : "├─ ")
                + m_output.Paint(Style::Faint, type->GetName()));
        }
    }

    static Table MakePropertyTable() {
        return Table({{"NAME"}, {"TYPE"}, {"FLAGS"}, {"SINCE"}, {"DOCUMENTATION"}});
    }

    static void AddProperty(
        Table& table, const Tavik::PropertyDescriptor& property, const char* owner, bool inherited) {
        std::string text = Documentation(owner, property.name);
        if (inherited) {
            text = '[' + std::string(owner) + ']' + (text.empty() ? "" : " ") + text;
        }
        table.AddRow(
            {{property.name, Style::Name},
             GetTypeText(property),
             {GetFlagsText(property), property.IsSecret() ? Style::Caution : Style::Plain},
             ShortVersion(property.version),
             text});
    }

    void PrintTable(const std::string& title, const Table& table) {
        if (!table.IsEmpty()) {
            Heading(title);
            table.Print(m_output, kIndent);
        }
    }

    void DescribeProperties(const Tavik::DataObjectType& type) {
        if (type.IsOpen()) {
            Heading("Open");
            Paragraph("Carries whatever other properties arrive, as they came.", kIndent);
        }
        Table table = MakePropertyTable();
        for (const Tavik::Property* property : type.GetProperties()) {
            const Tavik::DataObjectType& owner = property->GetOwner();
            AddProperty(table, property->GetDescriptor(), owner.GetName(), &owner != &type);
        }
        PrintTable("Properties", table);
    }

    void DescribeProperties(const Tavik::ManagedObjectType& type) {
        Table table = MakePropertyTable();
        for (const auto& member : type.GetMethodObjects()) {
            if (member->IsPropertyGetter()) {
                AddProperty(table, *member->GetPropertyDescriptor(), type.GetName(), false);
            }
        }
        PrintTable("Properties", table);
    }

    void DescribeValues(const Tavik::EnumType& type) {
        Table table({{"VALUE", Align::Right}, {"TAG"}, {"DOCUMENTATION"}});
        std::size_t number = 0;
        for (const char* tag : type.GetTags()) {
            table.AddRow({std::to_string(number++), {tag, Style::Name}, Documentation(type.GetName(), tag)});
        }
        PrintTable("Values", table);
    }

    void DescribeMethods(const Tavik::ManagedObjectType& type) {
        if (type.GetOwnMethodCount() == 0) {
            return;
        }
        Heading("Methods");
        for (const auto& member : type.GetMethodObjects()) {
            if (!member->IsPropertyGetter()) {
                DescribeMethod(type, *member->GetMethodDescriptor());
            }
        }
    }

    void DescribeMethod(const Tavik::ManagedObjectType& type, const Tavik::MethodDescriptor& method) {
        const std::string result = method.result.type == nullptr ? "" : " -> " + GetTypeText(method.result);
        m_output.WriteLine("  " + m_output.Paint(Style::Name, method.name) + result);
        Paragraph(Documentation(type.GetName(), method.name), 2 * kIndent);
        MethodFact("wire name", method.wireName);
        MethodFact("since", ShortVersion(method.version));
        MethodFact("privilege", method.privilege == nullptr ? "" : method.privilege);
        MethodFact(
            "special", std::string(method.longRunning != 0 ? "long-running " : "")
                           + (method.credentials != 0 ? "carries credentials" : ""));
        for (const auto* parameter = method.parameters; parameter->name != nullptr; ++parameter) {
            const std::string flags = GetFlagsText(*parameter);
            MethodFact(
                parameter == method.parameters ? "takes" : "",
                std::string(parameter->name) + " : " + GetTypeText(*parameter)
                    + (flags.empty() ? "" : " (" + flags + ')'));
        }
        for (const auto* fault = method.faults; *fault != nullptr; ++fault) {
            MethodFact(fault == method.faults ? "throws" : "", (*fault)->name);
        }
    }

    void MethodFact(const char* name, const std::string& text) {
        if (!text.empty()) {
            m_output.WriteLine("    " + m_output.Paint(Style::Faint, Pad(name, 10)) + text);
        }
    }

    const Tavik::Type& m_type;
    Output& m_output;
};

} // namespace

void AddDescribeCommand(CommandSet& commands) {
    CLI::App& command = commands.Add(
        {"describe", "Explain one type and all that it holds", "0 done",
         "morvane describe ComputerSpec\n"
         "morvane describe morvane.ComputerSpec.LiveComputerLocation\n"
         "morvane describe MorvaneUserSession"});
    auto name = std::make_shared<std::string>();
    command.add_option("type", *name, "Dotted or wire name; \"morvane.\" may be left out")
        ->required()
        ->type_name("TYPE");
    commands.SetAction(command, [name](Console& console) {
        TypeDescriber(FindType(*name), console.out).Describe();
        return kDone;
    });
}

} // namespace Tool
