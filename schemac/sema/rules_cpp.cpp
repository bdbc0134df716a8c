#include "schemac/diagnostic/catalogue.h"
#include "schemac/model/naming.h"
#include "schemac/sema/rules.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace Schemac::Sema {

namespace {

/// The members of one generated class and what each is for.
class CppMembers {
public:
    explicit CppMembers(Program& program) : m_program(program) {}

    /// Reports and returns false when the member is taken.
    bool Check(const std::string& member, std::string_view what, const std::string& name, const Span& place) {
        const auto found = m_users.find(member);
        if (found != m_users.end()) {
            const User& other = found->second;
            m_program.reporter
                .Report(place, Diagnostics::kMemberClash, what, name, member, other.what, other.name)
                .AddNote(other.place, Diagnostics::kFirstDeclaredHere);
        }
        return found == m_users.end();
    }

    /// The same, and enters it otherwise.
    bool Add(const std::string& member, std::string_view what, const std::string& name, const Span& place) {
        const bool isFree = Check(member, what, name, place);
        if (isFree) {
            m_users.emplace(member, User{what, name, place});
        }
        return isFree;
    }

    /// Enters without a look at what is there.
    void Inherit(
        const std::string& member, std::string_view what, const std::string& name, const Span& place) {
        m_users.insert_or_assign(member, User{what, name, place});
    }

private:
    struct User {
        std::string_view what;
        std::string name;
        Span place;
    };

    Program& m_program;
    std::unordered_map<std::string, User> m_users;
};

void AddProperties(
    CppMembers& members, const std::vector<Model::Property>& properties, const Model::Type& owner,
    const std::set<std::string>& inherited) {
    std::set<std::string> seen = inherited; // a second of the name has its own error
    for (const Model::Property& property : properties) {
        if (property.type == nullptr || !seen.insert(property.name).second) {
            continue;
        }
        for (const Naming::Accessor accessor : Naming::AccessorsOf(property, owner)) {
            const std::string name = Naming::AccessorName(accessor, property.name, owner);
            if (!members.Add(name, "property", property.name, property.span)) {
                break;
            }
        }
    }
}

/// Enters the accessors that a data type inherits and returns the names of the properties.
std::set<std::string> InheritProperties(CppMembers& members, const Model::DataType& data) {
    std::set<std::string> names;
    for (const Model::Type* base = data.base; base != nullptr && base->AsData() != nullptr;
         base = base->Base()) {
        for (const Model::Property& property : base->AsData()->properties) {
            if (property.type == nullptr) {
                continue;
            }
            names.insert(property.name);
            for (const Naming::Accessor accessor : Naming::AccessorsOf(property, *base)) {
                members.Inherit(
                    Naming::AccessorName(accessor, property.name, *base), "inherited property", property.name,
                    property.span);
            }
        }
    }
    return names;
}

/// Enters the methods and getters that an interface inherits and returns the names of the properties.
std::set<std::string> InheritOperations(CppMembers& members, const Model::ManagedType& managed) {
    std::set<std::string> names;
    for (const Model::ManagedType* base = managed.base->AsManaged(); base != nullptr;
         base = base->base->AsManaged()) {
        for (const Model::Property& property : base->properties) {
            names.insert(property.name);
            members.Inherit(
                Naming::AccessorName(Naming::Accessor::Get, property.name, *base), "inherited property",
                property.name, property.span);
        }
        for (const Model::Method& method : base->methods) {
            members.Inherit(
                Naming::MethodFunction(method.name, *base), "inherited method", method.name, method.span);
        }
    }
    return names;
}

/// The functions of an interface and of its stub.
void AddOperations(CppMembers& members, const Model::ManagedType& managed) {
    const std::set<std::string> inherited = InheritOperations(members, managed);
    for (const std::string& name : {managed.name, managed.name + "Stub"}) {
        members.Check(name, "type", managed.name, managed.span);
    }
    AddProperties(members, managed.properties, managed, inherited);
    std::set<std::string> seen;
    for (const Model::Method& method : managed.methods) {
        if (seen.insert(method.name).second) {
            members.Add(Naming::MethodFunction(method.name, managed), "method", method.name, method.span);
        }
    }
}

/// What is called like functions and types of the class, but in capitals.
void CheckAgainstConstants(CppMembers& members, const Model::Type& type) {
    if (const Model::ManagedType* managed = type.AsManaged()) {
        for (const Model::Method& method : managed->methods) {
            members.Check(Naming::MethodConstant(method.name), "method", method.name, method.span);
        }
    }
    for (const Model::Type* nested : type.nested) {
        if (const Model::EnumType* enumeration = nested->AsEnum()) {
            for (const Model::EnumTag& tag : enumeration->tags) {
                members.Check(Naming::TagConstant(*enumeration, tag.name), "tag", tag.name, tag.span);
            }
        }
    }
}

} // namespace

void CheckNestedLikeEncloser(Program& program, const TypeEntry& entry) {
    if (entry.type->enclosing != nullptr && entry.type->enclosing->name == entry.type->name) {
        program.reporter.Report(entry.type->span, Diagnostics::kNestedLikeEncloser, entry.type->name)
            .AddNote(entry.type->enclosing->span, Diagnostics::kFirstDeclaredHere);
    }
}

void CheckReservedInFaults(Program& program, const TypeEntry& entry) {
    const Model::Type& type = *entry.type;
    const Model::Type* enclosing = type.enclosing;
    const bool isInFault = enclosing != nullptr && enclosing->kind == Model::TypeKind::Fault;
    const bool isInTheWay =
        (isInFault || type.kind == Model::TypeKind::Fault) && Naming::IsFaultMember(type.name);
    if (isInTheWay || (isInFault && type.name == Naming::ExceptionClass(*enclosing))) {
        program.reporter.Report(type.span, Diagnostics::kReservedInFault, type.name);
    }
    constexpr std::string_view kFunctions[] = {"DecRef", "GetRefCount", "IncRef", "ToString"};
    if (enclosing != nullptr
        && std::find(std::begin(kFunctions), std::end(kFunctions), entry.type->name)
               != std::end(kFunctions)) {
        program.reporter.Report(entry.type->span, Diagnostics::kNestedLikeFunction, entry.type->name);
    }
}

void CheckBaseInside(Program& program, const TypeEntry& entry) {
    const Model::Type* outer = entry.type->Base();
    while (outer != nullptr && outer != entry.type) {
        outer = outer->enclosing;
    }
    if (outer != nullptr) {
        program.reporter.Report(
            entry.type->span, Diagnostics::kBaseInside, entry.type->name, entry.type->Base()->dottedName);
    }
}

void CheckCppMembers(Program& program, const TypeEntry& entry) {
    CppMembers members(program);
    if (const Model::DataType* data = entry.Data()) {
        const std::set<std::string> inherited = InheritProperties(members, *data);
        AddProperties(members, data->properties, *data, inherited);
    } else if (const Model::ManagedType* managed = entry.Managed()) {
        AddOperations(members, *managed);
    }
    std::set<std::string> seen;
    for (const Model::Type* nested : entry.type->nested) {
        if (seen.insert(nested->name).second) {
            members.Add(nested->name, "type", nested->name, nested->span);
        }
    }
    CheckAgainstConstants(members, *entry.type);
}

void CheckTypesAgainstNamespaces(Program& program) {
    std::unordered_map<std::string, Span> namespaces;
    for (const InputFile& file : program.files) {
        for (const Syntax::NamespaceBlock& block : file.tree.blocks) {
            std::string path;
            for (const std::string& part : block.name.parts) {
                path += (path.empty() ? "" : "::") + Naming::Capitalised(part);
                namespaces.emplace(path, block.name.span);
            }
        }
    }
    for (const TypeEntry& entry : program.types) {
        std::vector<std::string> classes{Naming::QualifiedClassName(*entry.type)};
        if (entry.type->IsManaged()) {
            classes.push_back(Naming::StubClass(*entry.type));
        }
        for (const std::string& path : classes) {
            const auto found = namespaces.find(path);
            if (found != namespaces.end()) {
                program.reporter.Report(entry.type->span, Diagnostics::kTypeIsNamespace, path)
                    .AddNote(found->second, Diagnostics::kFirstWrittenHere);
            }
        }
    }
}

void CheckConstants(Program& program) {
    std::unordered_map<std::string, Span> taken;
    const auto add = [&](std::string_view what, const std::string& name, const std::string& scope,
                         const std::string& constant, const Span& place) {
        const auto [found, isNew] = taken.emplace(scope + "." + constant, place);
        if (!isNew) {
            program.reporter.Report(place, Diagnostics::kConstantClash, what, name, constant)
                .AddNote(found->second, Diagnostics::kFirstDeclaredHere);
        }
    };
    for (const TypeEntry& entry : program.types) {
        std::set<std::string> seen; // a second of the name has its own error
        if (entry.type->isImported || program.typesByName.at(entry.type->dottedName) != entry.type) {
            continue;
        }
        if (const Model::EnumType* enumeration = entry.Enum()) {
            const Model::Type* enclosing = enumeration->enclosing;
            const std::string& scope = enclosing != nullptr ? enclosing->dottedName : entry.nameSpace;
            for (const Model::EnumTag& tag : enumeration->tags) {
                if (seen.insert(tag.name).second) {
                    add("tag", tag.name, scope, Naming::TagConstant(*enumeration, tag.name), tag.span);
                }
            }
        } else if (const Model::ManagedType* managed = entry.Managed()) {
            for (const Model::Method& method : managed->methods) {
                if (seen.insert(method.name).second) {
                    add("method", method.name, managed->dottedName, Naming::MethodConstant(method.name),
                        method.span);
                }
            }
        }
    }
}

void CheckGlobals(Program& program) {
    std::unordered_map<std::string, const Model::Type*> taken;
    for (const auto& builtin : program.module.Types()) {
        if (builtin->IsBuiltin()) {
            taken.emplace(Naming::DescriptorGlobal(*builtin), builtin.get());
        }
    }
    for (const TypeEntry& entry : program.types) {
        const std::string global = Naming::DescriptorGlobal(*entry.type);
        const auto [found, isNew] = taken.emplace(global, entry.type);
        if (!isNew && found->second->dottedName != entry.type->dottedName) {
            program.reporter
                .Report(entry.type->span, Diagnostics::kGlobalClash, entry.type->dottedName, global)
                .AddNote(found->second->span, Diagnostics::kFirstDeclaredHere);
        }
    }
}

} // namespace Schemac::Sema
