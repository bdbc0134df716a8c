#include "schemac/diagnostic/catalogue.h"
#include "schemac/sema/rules.h"

#include <string>
#include <string_view>
#include <unordered_map>

namespace Schemac::Sema {

namespace {

bool BeginsUpper(std::string_view name) {
    return name.front() >= 'A' && name.front() <= 'Z';
}

bool BeginsLower(std::string_view name) {
    return name.front() >= 'a' && name.front() <= 'z';
}

bool IsScalarName(const Program& program, const std::string& name) {
    const auto found = program.typesByName.find(name);
    return found != program.typesByName.end() && found->second->IsBuiltin();
}

void CheckLowerCase(Program& program, std::string_view what, const std::string& name, const Span& place) {
    if (name.front() == '_') {
        program.reporter.Report(place, Diagnostics::kUnderscore, what, name);
    } else if (!BeginsLower(name)) {
        program.reporter.Report(place, Diagnostics::kNotLowerCase, what, name);
    }
}

} // namespace

void CheckTypeName(Program& program, const TypeEntry& entry) {
    const Syntax::Name& name = entry.decl->name;
    if (name.text.front() == '_') {
        program.reporter.Report(name.span, Diagnostics::kUnderscore, "type", name.text);
    } else if (IsScalarName(program, name.text)) {
        program.reporter.Report(name.span, Diagnostics::kBuiltinName, "type", name.text);
    } else if (!BeginsUpper(name.text)) {
        program.reporter.Report(name.span, Diagnostics::kNotUpperCase, "type", name.text);
    }
}

void CheckMemberNames(Program& program, const TypeEntry& entry) {
    for (const Syntax::PropertyDecl& property : entry.decl->properties) {
        CheckLowerCase(program, "property", property.name.text, property.name.span);
    }
    for (const Syntax::MethodDecl& method : entry.decl->methods) {
        // Some methods of the interface begin with a capital, and the wire knows them so.
        if (method.name.text.front() == '_') {
            program.reporter.Report(method.name.span, Diagnostics::kUnderscore, "method", method.name.text);
        }
        for (const Syntax::PropertyDecl& parameter : method.parameters) {
            CheckLowerCase(program, "parameter", parameter.name.text, parameter.name.span);
        }
    }
    for (const Syntax::TagDecl& tag : entry.decl->tags) {
        if (tag.name.text.front() == '_') {
            program.reporter.Report(tag.name.span, Diagnostics::kUnderscore, "tag", tag.name.text);
        }
    }
}

void CheckNamespaceNames(Program& program) {
    for (const InputFile& file : program.files) {
        for (const Syntax::NamespaceBlock& block : file.tree.blocks) {
            for (const std::string& part : block.name.parts) {
                CheckLowerCase(program, "namespace", part, block.name.span);
            }
        }
    }
}

void CheckVersionNames(Program& program) {
    for (const VersionEntry& entry : program.versions) {
        CheckLowerCase(program, "version", entry.decl->name.text, entry.decl->name.span);
    }
}

void CheckWireNames(Program& program) {
    std::unordered_map<std::string, Span> taken;
    for (const TypeEntry& entry : program.types) {
        const Syntax::Name& wire = *entry.decl->wire;
        // The runtime's roots are `orlin.DynamicData` and so on, with the last part as wire name.
        if (IsScalarName(program, wire.text) || IsScalarName(program, "orlin." + wire.text)) {
            program.reporter.Report(wire.span, Diagnostics::kBuiltinName, "wire", wire.text);
        }
        const auto [found, isNew] = taken.emplace(wire.text, wire.span);
        if (!isNew) {
            program.reporter.Report(wire.span, Diagnostics::kDuplicateWire, wire.text)
                .AddNote(found->second, Diagnostics::kFirstWrittenHere);
        }
    }
}

} // namespace Schemac::Sema
