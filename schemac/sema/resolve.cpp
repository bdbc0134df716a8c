#include "schemac/diagnostic/catalogue.h"
#include "schemac/model/naming.h"
#include "schemac/sema/describe.h"
#include "schemac/sema/lookup.h"
#include "schemac/sema/steps.h"

#include <algorithm>
#include <charconv>

namespace Schemac::Sema {

namespace {

/// The base that `entry` names if it can be one, else the root that its kind has.
const Model::Type& ResolveBase(const Program& program, const TypeEntry& entry) {
    const Family family = FamilyOf(*entry.type);
    const Model::Type& fallback = RootOf(family, program.module);
    if (!entry.decl->base) {
        if (family == Family::Fault) {
            program.reporter.Report(entry.type->span, Diagnostics::kFaultWithoutBase, entry.type->name);
        }
        return fallback;
    }
    // Looked for where the type itself stands: nothing inside it can be its base.
    const std::string& scope =
        entry.type->enclosing != nullptr ? entry.type->enclosing->dottedName : entry.nameSpace;
    const Model::Type* base = FindType(program, *entry.decl->base, scope);
    if (base == nullptr) {
        return fallback;
    }
    if (FamilyOf(*base) != family) {
        program.reporter
            .Report(
                entry.decl->base->span, Diagnostics::kWrongBase, Article(family), Article(family),
                base->dottedName, Article(FamilyOf(*base)))
            .AddNote(base->span, Diagnostics::kDeclaredHere, base->dottedName);
        return fallback;
    }
    return *base;
}

/// Resolves what stands inside one type.
class MemberResolver {
public:
    MemberResolver(const Program& program, const TypeEntry& entry) : m_program(program), m_entry(entry) {}

    void Run() {
        if (Model::DataType* data = m_entry.Data()) {
            data->isOpen = m_entry.decl->isOpen;
            data->httpStatus = ResolveHttpStatus();
            data->properties = ResolveProperties(m_entry.decl->properties, m_entry.type->version);
        } else if (Model::ManagedType* managed = m_entry.Managed()) {
            managed->properties = ResolveProperties(m_entry.decl->properties, m_entry.type->version);
            for (const Syntax::MethodDecl& decl : m_entry.decl->methods) {
                managed->methods.push_back(ResolveMethod(decl));
            }
        } else if (Model::EnumType* enumeration = m_entry.Enum()) {
            for (const Syntax::TagDecl& decl : m_entry.decl->tags) {
                enumeration->tags.push_back({decl.name.text, decl.doc, decl.name.span});
            }
        }
    }

private:
    const Model::Version* ResolveSince(
        const std::optional<Syntax::QualifiedName>& since, const Model::Version* inherited) const {
        return since ? FindVersion(m_program, *since, m_entry.nameSpace) : inherited;
    }

    /// Zero for a number that is no status: a rule reports it.
    int ResolveHttpStatus() const {
        const std::optional<Syntax::Name>& digits = m_entry.decl->httpStatus;
        int status = 0;
        if (digits) {
            std::from_chars(digits->text.data(), digits->text.data() + digits->text.size(), status);
        }
        return status;
    }

    Model::Property ResolveProperty(const Syntax::PropertyDecl& decl, const Model::Version* inherited) const {
        Model::Property property;
        property.name = decl.name.text;
        property.type = FindType(m_program, decl.type, m_entry.type->dottedName);
        property.isArray = decl.array.IsValid();
        property.isOptional = decl.optional.IsValid();
        property.isSecret = decl.secret.IsValid();
        property.version = ResolveSince(decl.since, inherited);
        property.doc = decl.doc;
        property.span = decl.name.span;
        return property;
    }

    std::vector<Model::Property> ResolveProperties(
        const std::vector<Syntax::PropertyDecl>& decls, const Model::Version* inherited) const {
        std::vector<Model::Property> properties;
        properties.reserve(decls.size());
        for (const Syntax::PropertyDecl& decl : decls) {
            properties.push_back(ResolveProperty(decl, inherited));
        }
        return properties;
    }

    Model::Method ResolveMethod(const Syntax::MethodDecl& decl) const {
        Model::Method method;
        method.name = decl.name.text;
        method.wireName =
            decl.wire ? decl.wire->text : Naming::DefaultMethodWireName(m_entry.nameSpace, method.name);
        method.privilege = decl.privilege ? decl.privilege->text : "";
        method.version = ResolveSince(decl.since, m_entry.type->version);
        method.parameters = ResolveProperties(decl.parameters, method.version);
        method.isLongRunning = decl.longRunning.IsValid();
        method.carriesCredentials = decl.credentials.IsValid();
        method.doc = decl.doc;
        method.span = decl.name.span;
        for (const Syntax::QualifiedName& fault : decl.faults) {
            method.faults.push_back(FindType(m_program, fault, m_entry.type->dottedName));
        }
        if (decl.result) {
            method.result = ResolveProperty(*decl.result, &m_program.module.BaseVersion());
            // A result is as old as its type; that of a built-in type as the runtime itself.
            if (decl.resultSince) {
                method.result.version = FindVersion(m_program, *decl.resultSince, m_entry.nameSpace);
            } else if (method.result.type != nullptr && !method.result.type->IsBuiltin()) {
                method.result.version = method.result.type->version;
            }
        } else {
            method.result.name = "result";
            method.result.version = &m_program.module.BaseVersion();
        }
        return method;
    }

    const Program& m_program;
    const TypeEntry& m_entry;
};

} // namespace

void ResolveIncludes(Program& program) {
    for (const VersionEntry& entry : program.versions) {
        for (const Syntax::QualifiedName& name : entry.decl->includes) {
            const Model::Version* included = FindVersion(program, name, entry.version->nameSpace);
            std::vector<const Model::Version*>& includes = entry.version->includes;
            if (included == nullptr) {
                continue;
            }
            if (std::find(includes.begin(), includes.end(), included) != includes.end()) {
                program.reporter.Report(name.span, Diagnostics::kDuplicateInclude, included->fullName);
                continue;
            }
            includes.push_back(included);
        }
    }
}

void ResolveBases(Program& program) {
    for (const TypeEntry& entry : program.types) {
        entry.type->version = FindVersion(program, *entry.decl->since, entry.nameSpace);
        if (Model::DataType* data = entry.Data()) {
            data->base = &ResolveBase(program, entry);
        } else if (Model::ManagedType* managed = entry.Managed()) {
            managed->base = &ResolveBase(program, entry);
        }
    }
}

void ResolveMembers(Program& program) {
    for (const TypeEntry& entry : program.types) {
        MemberResolver(program, entry).Run();
    }
}

} // namespace Schemac::Sema
