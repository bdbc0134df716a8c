#include "schemac/diagnostic/catalogue.h"
#include "schemac/model/naming.h"
#include "schemac/sema/rules.h"

#include <algorithm>
#include <set>
#include <string>

namespace Schemac::Sema {

namespace {

using Model::Property;

bool Derives(const Model::Type& type, const Model::Type& base) {
    const Model::Type* ancestor = &type;
    while (ancestor != nullptr && ancestor != &base) {
        ancestor = ancestor->Base();
    }
    return ancestor != nullptr;
}

/// Whether a getter of `base` can answer with the value of `own`.
bool CanReplace(const Property& own, const Property& base) {
    const bool isObject = own.isArray || !(own.type->IsScalar() || own.type->AsEnum() != nullptr);
    if (base.type->Is(Model::BuiltinKind::AnyType) && !base.isArray) {
        return isObject;
    }
    if (own.isArray != base.isArray) {
        return false;
    }
    // Arrays of different classes have nothing to do with each other; references are all one class.
    const bool mayDerive = isObject && (!own.isArray || own.IsReference());
    return mayDerive ? Derives(*own.type, *base.type)
                     : own.type == base.type && (isObject || own.isOptional == base.isOptional);
}

} // namespace

void CheckManagedNotNested(Program& program, const TypeEntry& entry) {
    if (entry.Managed() != nullptr && entry.type->IsNested()) {
        program.reporter.Report(entry.type->span, Diagnostics::kManagedNested, entry.type->name);
    }
}

void CheckReplacedProperties(Program& program, const TypeEntry& entry) {
    const Model::ManagedType* managed = entry.Managed();
    if (managed == nullptr) {
        return;
    }
    for (const Property& property : managed->properties) {
        for (const Model::ManagedType* base = managed->base->AsManaged(); base != nullptr;
             base = base->base->AsManaged()) {
            const auto found =
                std::find_if(base->properties.begin(), base->properties.end(), [&](const Property& other) {
                    return other.name == property.name;
                });
            if (found == base->properties.end() || property.type == nullptr || found->type == nullptr) {
                continue;
            }
            if (!CanReplace(property, *found)) {
                program.reporter
                    .Report(property.span, Diagnostics::kReplacedProperty, property.name, base->dottedName)
                    .AddNote(found->span, Diagnostics::kFirstDeclaredHere);
                break;
            }
        }
    }
}

void CheckParameterNames(Program& program, const TypeEntry& entry) {
    for (const Syntax::MethodDecl& method : entry.decl->methods) {
        std::set<std::string> written;
        std::set<std::string> names;
        for (const Syntax::PropertyDecl& parameter : method.parameters) {
            const std::string name = Naming::ParameterName(parameter.name.text);
            // A second of the name has its own error.
            if (written.insert(parameter.name.text).second && !names.insert(name).second) {
                program.reporter.Report(
                    parameter.name.span, Diagnostics::kParameterClash, parameter.name.text, name);
            }
        }
    }
}

void CheckStubs(Program& program) {
    for (const TypeEntry& entry : program.types) {
        const auto found = entry.type->IsManaged() ? program.typesByClass.find(Naming::StubClass(*entry.type))
                                                   : program.typesByClass.end();
        if (found != program.typesByClass.end()) {
            program.reporter
                .Report(
                    found->second->span, Diagnostics::kStubClash, found->second->dottedName,
                    entry.type->dottedName)
                .AddNote(entry.type->span, Diagnostics::kDeclaredHere, entry.type->dottedName);
        }
    }
}

} // namespace Schemac::Sema
