#include "tools/morvane/describe/type_describer.h"

#include "tavik/type/data_object_type.h"
#include "tavik/type/type_registry.h"
#include "tools/morvane/describe/page.h"
#include "tools/morvane/model/documentation.h"
#include "tools/morvane/model/type_facts.h"
#include "tools/morvane/model/usages.h"
#include "tools/morvane/model/words.h"

#include <algorithm>
#include <string>
#include <vector>

namespace Tool {

namespace {

std::string GetDocumentation(const Tavik::Type& type, std::string_view member = {}) {
    return std::string(FindDocumentation(type.GetName(), member));
}

Table MakePropertyTable() {
    return Table({{"NAME"}, {"TYPE"}, {"FLAGS"}, {"SINCE"}, {"DOCUMENTATION"}});
}

void AddProperty(Table& table, const Tavik::PropertyDescriptor& property, const std::string& text) {
    table.AddRow(
        {{property.name, Style::Name},
         GetTypeText(property),
         {GetFlagsText(property), property.IsSecret() ? Style::Caution : Style::Plain},
         GetShortVersion(property.version),
         text});
}

/// "string[] (optional)"
std::string GetTypeAndFlags(const Tavik::PropertyDescriptor& descriptor, const std::string& since = {}) {
    std::string notes = GetFlagsText(descriptor);
    if (!since.empty()) {
        notes += (notes.empty() ? "" : ", ") + since;
    }
    return GetTypeText(descriptor) + (notes.empty() ? "" : " (" + notes + ')');
}

std::string GetMarks(const Tavik::MethodDescriptor& method) {
    std::string marks = method.longRunning != 0 ? "long-running" : "";
    if (method.credentials != 0) {
        marks += marks.empty() ? "carries credentials" : ", carries credentials";
    }
    return marks;
}

/// How to call it: "login(userName, locale?) -> morvane.UserSession"; a question mark follows what may be
/// left out.
std::string GetSignature(const Tavik::MethodDescriptor& method) {
    std::string text = std::string(method.name) + '(';
    for (const auto* parameter = method.parameters; parameter->name != nullptr; ++parameter) {
        text += parameter == method.parameters ? "" : ", ";
        text += parameter->name;
        text += parameter->IsOptional() ? "?" : "";
    }
    return text + ')' + (method.result.type == nullptr ? "" : " -> " + GetTypeAndFlags(method.result));
}

/// What to include and name in C++.
void DescribeClass(const Tavik::Type& type, Page& page) {
    const std::string header = GetHeaderPath(type);
    if (header.empty()) {
        return;
    }
    const std::string name = GetClassName(type.GetName());
    page.Fact("class", name);
    page.Fact("header", header);
    if (const std::string stubHeader = GetStubHeaderPath(type); !stubHeader.empty()) {
        page.Fact("stub", name + "Stub");
        page.Fact("its header", stubHeader);
    }
}

class TypeDescriber {
public:
    TypeDescriber(const Tavik::Type& type, Output& output) : m_type(type), m_page(output) {}

    void Describe() {
        DescribeIdentity();
        DescribeInheritance();
        const auto* dataType = dynamic_cast<const Tavik::DataObjectType*>(&m_type);
        if (dataType != nullptr && dataType->IsOpen()) {
            m_page.Heading("Open");
            m_page.Paragraph("Carries whatever other properties arrive, as they came.");
        }
        DescribeValues();
        for (const Tavik::Type* owner : GetLine(m_type)) {
            DescribeProperties(*owner);
        }
        for (const Tavik::Type* owner : GetLine(m_type)) {
            DescribeMethods(*owner);
        }
        DescribeNestedTypes();
        DescribeUsages();
    }

private:
    void DescribeIdentity() {
        m_page.Title(m_type.GetName());
        m_page.Paragraph(GetDocumentation(m_type));
        m_page.GetOutput().WriteLine();
        m_page.Fact("wire name", m_type.GetWireName());
        m_page.Fact("kind", GetKindName(m_type.GetKind()));
        m_page.Fact("since", GetFullName(m_type.GetVersion()));
        const auto* dataType = dynamic_cast<const Tavik::DataObjectType*>(&m_type);
        if (dataType != nullptr && dataType->IsFault()) {
            const Pellum::Http::ResponseCode::Info& status = dataType->GetHttpStatus();
            m_page.Fact("HTTP status", std::to_string(status.code) + " " + status.reason);
        }
        DescribeClass(m_type, m_page);
    }

    /// The bases, each below its own, then the type, then what derives from it, level by level.
    void DescribeInheritance() {
        const std::vector<const Tavik::Type*> derived = GetDerivedTypes(m_type);
        std::vector<const Tavik::Type*> line = GetLine(m_type);
        if (line.size() == 1 && derived.empty()) {
            return;
        }
        m_page.Heading("Inheritance");
        std::string margin(Page::kIndent, ' ');
        std::reverse(line.begin(), line.end());
        for (const Tavik::Type* type : line) {
            const bool isRoot = type == line.front();
            m_page.GetOutput().WriteLine(
                margin + (isRoot ? "" : "└─ ")
                + m_page.GetOutput().Paint(type == &m_type ? Style::Heading : Style::Plain, type->GetName()));
            margin += isRoot ? "" : "   ";
        }
        if (IsBuiltIn(m_type)) {
            m_page.Paragraph(
                Count(derived.size(), "type") + " derive from it: morvane types --all --base "
                + m_type.GetName());
        } else {
            PrintDerived(m_type, derived, margin);
        }
    }

    void PrintDerived(
        const Tavik::Type& base, const std::vector<const Tavik::Type*>& types, const std::string& margin) {
        std::vector<const Tavik::Type*> direct;
        std::copy_if(
            types.begin(), types.end(), std::back_inserter(direct),
            [&base](const Tavik::Type* type) { return type->GetBaseType() == &base; });
        for (const Tavik::Type* type : direct) {
            const bool isLast = type == direct.back();
            m_page.GetOutput().WriteLine(
                margin + (isLast ? "└─ " : "├─ ") + m_page.GetOutput().Paint(Style::Faint, type->GetName()));
            PrintDerived(*type, types, margin + (isLast ? "   " : "│  "));
        }
    }

    void DescribeValues() {
        Table table({{"VALUE", Align::Right}, {"TAG"}, {"DOCUMENTATION"}});
        std::size_t number = 0;
        for (const Member& member : GetOwnMembers(m_type)) {
            if (member.kind == MemberKind::Value) {
                table.AddRow(
                    {std::to_string(number++),
                     {member.name, Style::Name},
                     GetDocumentation(m_type, member.name)});
            }
        }
        m_page.Section("Values", table);
    }

    /// What an owner of members adds to the title of their section.
    std::string NameOwner(const Tavik::Type& owner) const {
        return &owner == &m_type ? "" : " of " + std::string(owner.GetName());
    }

    void DescribeProperties(const Tavik::Type& owner) {
        Table table = MakePropertyTable();
        for (const Member& member : GetOwnMembers(owner)) {
            if (member.property != nullptr) {
                AddProperty(table, *member.property, GetDocumentation(owner, member.name));
            }
        }
        m_page.Section("Properties" + NameOwner(owner), table);
    }

    void DescribeMethods(const Tavik::Type& owner) {
        bool isFirst = true;
        for (const Member& member : GetOwnMembers(owner)) {
            if (member.method == nullptr) {
                continue;
            }
            if (isFirst) {
                m_page.Heading("Methods" + NameOwner(owner));
            } else {
                m_page.GetOutput().WriteLine();
            }
            isFirst = false;
            DescribeMethod(owner, *member.method);
        }
    }

    void DescribeMethod(const Tavik::Type& owner, const Tavik::MethodDescriptor& method) {
        constexpr std::size_t kDeeper = 2 * Page::kIndent;
        Output& output = m_page.GetOutput();
        const std::string signature = GetSignature(method);
        const std::size_t nameSize = std::string_view(method.name).size();
        output.WriteLine("  " + output.Paint(Style::Name, method.name) + signature.substr(nameSize));
        m_page.Paragraph(GetDocumentation(owner, method.name), kDeeper);
        m_page.Fact("wire name", method.wireName, kDeeper);
        m_page.Fact("since", GetShortVersion(method.version), kDeeper);
        m_page.Fact("privilege", method.privilege == nullptr ? "" : method.privilege, kDeeper);
        m_page.Fact("special", GetMarks(method), kDeeper);
        for (const auto* parameter = method.parameters; parameter->name != nullptr; ++parameter) {
            const std::string since = GetShortVersion(parameter->version);
            m_page.Fact(
                parameter == method.parameters ? "takes" : "",
                std::string(parameter->name) + " : "
                    + GetTypeAndFlags(
                        *parameter, since == GetShortVersion(method.version) ? "" : "since " + since),
                kDeeper);
        }
        for (const auto* fault = method.faults; *fault != nullptr; ++fault) {
            m_page.Fact(fault == method.faults ? "throws" : "", (*fault)->name, kDeeper);
        }
    }

    void DescribeNestedTypes() {
        Table table({{"NAME"}, {"KIND"}, {"SINCE"}, {"DOCUMENTATION"}});
        const std::string prefix = std::string(m_type.GetName()) + '.';
        for (const Tavik::Type* type : GetAllTypes()) {
            if (std::string_view(type->GetName()).starts_with(prefix)) {
                table.AddRow(
                    {{type->GetName(), Style::Name},
                     GetKindName(type->GetKind()),
                     GetShortName(type->GetVersion()),
                     GetSummary(type->GetName())});
            }
        }
        m_page.Section("Nested types", table);
    }

    void DescribeUsages() {
        const std::vector<Usage> usages = FindUsages(m_type);
        const bool isUsedByBase = std::any_of(
            usages.begin(), usages.end(), [this](const Usage& usage) { return usage.named != &m_type; });
        Table table(
            isUsedByBase ? std::vector<Column>{{"USED AS"}, {"IN"}, {"DECLARED AS"}}
                         : std::vector<Column>{{"USED AS"}, {"IN"}});
        for (const Usage& usage : usages) {
            std::vector<Cell> cells = {usage.role, {usage.place, Style::Name}};
            if (isUsedByBase) {
                cells.emplace_back(usage.named == &m_type ? "" : usage.named->GetName());
            }
            table.AddRow(std::move(cells));
        }
        m_page.Section("Usage", table);
    }

    const Tavik::Type& m_type;
    Page m_page;
};

void DescribeMethodInFull(const Member& member, Page& page) {
    const Tavik::MethodDescriptor& method = *member.method;
    page.Fact("call", GetSignature(method));
    page.Fact("wire name", method.wireName);
    page.Fact("privilege", method.privilege == nullptr ? "none is declared" : method.privilege);
    page.Fact("special", GetMarks(method));
    Table parameters = MakePropertyTable();
    for (const auto* parameter = method.parameters; parameter->name != nullptr; ++parameter) {
        AddProperty(
            parameters, *parameter,
            GetDocumentation(*member.owner, std::string(method.name) + '.' + parameter->name));
    }
    page.Section("Parameters", parameters);
    Table faults({{"NAME"}, {"SINCE"}, {"DOCUMENTATION"}});
    for (const auto* fault = method.faults; *fault != nullptr; ++fault) {
        faults.AddRow(
            {{(*fault)->name, Style::Name}, GetShortVersion((*fault)->version), GetSummary((*fault)->name)});
    }
    page.Section("Faults", faults);
    if (faults.IsEmpty()) {
        page.Heading("Faults");
        page.Paragraph("None is declared.");
    }
}

} // namespace

void DescribeType(const Tavik::Type& type, Output& output) {
    TypeDescriber(type, output).Describe();
}

void DescribeMember(const Member& member, Output& output) {
    Page page(output);
    page.Title(std::string(member.owner->GetName()) + '.' + member.name);
    page.Paragraph(GetDocumentation(*member.owner, member.name));
    output.WriteLine();
    page.Fact("kind", GetMemberKindName(member.kind));
    page.Fact("since", GetFullName(Tavik::TypeRegistry::Instance().FindVersion(member.GetVersionName())));
    page.Fact("declared by", member.owner->GetName());
    DescribeClass(*member.owner, page);
    if (member.property != nullptr) {
        page.Fact("type", GetTypeAndFlags(*member.property));
    }
    if (member.method != nullptr) {
        DescribeMethodInFull(member, page);
    }
}

} // namespace Tool
