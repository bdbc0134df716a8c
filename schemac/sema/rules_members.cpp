#include "pellum/http/response_code.h"
#include "schemac/diagnostic/catalogue.h"
#include "schemac/sema/describe.h"
#include "schemac/sema/rules.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Schemac::Sema {

namespace {

using Model::Property;
using Syntax::PropertyDecl;

/// Calls `visit(what, property, decl)` for every property, parameter and result of a type.
template <typename Visit>
void ForEachUse(const TypeEntry& entry, const Visit& visit) {
    const auto visitAll = [&](std::string_view what, const auto& properties, const auto& decls) {
        for (std::size_t index = 0; index < properties.size(); ++index) {
            visit(what, properties[index], decls[index]);
        }
    };
    if (const Model::DataType* data = entry.Data()) {
        visitAll("a property", data->properties, entry.decl->properties);
    } else if (const Model::ManagedType* managed = entry.Managed()) {
        visitAll("a managed property", managed->properties, entry.decl->properties);
        for (std::size_t index = 0; index < managed->methods.size(); ++index) {
            const Syntax::MethodDecl& decl = entry.decl->methods[index];
            visitAll("a parameter", managed->methods[index].parameters, decl.parameters);
            if (decl.result) {
                visit("a result", managed->methods[index].result, *decl.result);
            }
        }
    }
}

template <typename Decl>
void CheckNamesOnce(Program& program, std::string_view what, const std::vector<Decl>& decls) {
    std::unordered_map<std::string, Span> seen;
    for (const Decl& decl : decls) {
        const auto [found, isNew] = seen.emplace(decl.name.text, decl.name.span);
        if (!isNew) {
            program.reporter.Report(decl.name.span, Diagnostics::kDuplicateMember, what, decl.name.text)
                .AddNote(found->second, Diagnostics::kFirstDeclaredHere);
        }
    }
}

enum Flag : unsigned { kNone = 0, kArray = 1, kOptional = 2, kSecret = 4 };

struct FlagsRow {
    std::string_view what;
    unsigned flags;
};

/// Every allowed set of flags.
constexpr FlagsRow kAllowedFlags[] = {
    {"a property", kNone},
    {"a property", kArray},
    {"a property", kOptional},
    {"a property", kArray | kOptional},
    {"a property", kSecret},
    {"a property", kOptional | kSecret},
    {"a managed property", kNone},
    {"a managed property", kOptional},
    {"a managed property", kArray | kOptional},
    {"a parameter", kNone},
    {"a parameter", kArray},
    {"a parameter", kOptional},
    {"a parameter", kSecret},
    {"a result", kNone},
    {"a result", kArray},
    {"a result", kOptional},
    {"a result", kArray | kOptional},
};

std::string FlagsText(unsigned flags) {
    std::string text;
    const auto add = [&](Flag flag, std::string_view word) {
        if ((flags & flag) != 0) {
            text += text.empty() ? "" : " and ";
            text += word;
        }
    };
    add(kArray, "an array");
    add(kOptional, "optional");
    add(kSecret, "secret");
    return text;
}

/// Reports a member that is there in a version where its owner is not.
void CheckNotOlder(
    Program& program, std::string_view what, const std::string& name, const Model::Version* version,
    const Model::Version* owner, const Span& place) {
    if (version != nullptr && owner != nullptr && !version->Includes(*owner)) {
        program.reporter
            .Report(place, Diagnostics::kOlderThanOwner, what, name, version->fullName, owner->fullName)
            .AddNote(owner->span, Diagnostics::kDeclaredHere, owner->fullName);
    }
}

/// Reports a member that is there in a version where its type is not.
void CheckTypeNotYounger(Program& program, std::string_view what, const Property& property) {
    const Model::Version* needed = property.type != nullptr ? property.type->version : nullptr;
    if (property.version != nullptr && needed != nullptr && !property.version->Includes(*needed)) {
        program.reporter
            .Report(
                property.span, Diagnostics::kYoungerType, what, property.name, property.version->fullName,
                needed->fullName, property.type->dottedName)
            .AddNote(property.type->span, Diagnostics::kDeclaredHere, property.type->dottedName);
    }
}

void CheckVersionsOf(
    Program& program, std::string_view what, const std::vector<Property>& properties,
    const Model::Version* owner) {
    for (const Property& property : properties) {
        CheckNotOlder(program, what, property.name, property.version, owner, property.span);
        CheckTypeNotYounger(program, what, property);
    }
}

} // namespace

void CheckDuplicateMembers(Program& program, const TypeEntry& entry) {
    CheckNamesOnce(program, "property", entry.decl->properties);
    CheckNamesOnce(program, "method", entry.decl->methods);
    CheckNamesOnce(program, "tag", entry.decl->tags);
    for (const Syntax::MethodDecl& method : entry.decl->methods) {
        CheckNamesOnce(program, "parameter", method.parameters);
    }
}

void CheckRepeatedInherited(Program& program, const TypeEntry& entry) {
    const Model::DataType* data = entry.Data();
    if (data == nullptr) {
        return;
    }
    for (const Property& property : data->properties) {
        for (const Model::Type* base = data->base; base != nullptr; base = base->Base()) {
            const Model::DataType* baseData = base->AsData();
            if (baseData == nullptr) {
                break;
            }
            const auto& inherited = baseData->properties;
            const auto found = std::find_if(inherited.begin(), inherited.end(), [&](const Property& other) {
                return other.name == property.name;
            });
            if (found != inherited.end()) {
                program.reporter
                    .Report(
                        property.span, Diagnostics::kRepeatsInherited, property.name, baseData->dottedName)
                    .AddNote(found->span, Diagnostics::kFirstDeclaredHere);
                break;
            }
        }
    }
}

void CheckFlags(Program& program, const TypeEntry& entry) {
    ForEachUse(entry, [&](std::string_view what, const Property& property, const PropertyDecl& decl) {
        const unsigned flags = (property.isArray ? kArray : kNone) | (property.isOptional ? kOptional : kNone)
                             | (property.isSecret ? kSecret : kNone);
        const bool isAllowed =
            std::any_of(std::begin(kAllowedFlags), std::end(kAllowedFlags), [&](const FlagsRow& row) {
                return row.what == what && row.flags == flags;
            });
        if (!isAllowed) {
            const Span& place = decl.secret.IsValid() ? decl.secret
                              : decl.array.IsValid()  ? decl.array
                                                      : decl.optional;
            const std::string wrong = flags == kArray ? "an array without being optional" : FlagsText(flags);
            program.reporter.Report(place, Diagnostics::kFlags, what, wrong);
        }
    });
}

void CheckSecrets(Program& program, const TypeEntry& entry) {
    ForEachUse(entry, [&](std::string_view, const Property& property, const PropertyDecl& decl) {
        if (property.isSecret && property.type != nullptr && !property.type->Is(Model::BuiltinKind::String)) {
            program.reporter.Report(decl.secret, Diagnostics::kSecretNotString, property.type->dottedName);
        }
    });
}

void CheckArrayElements(Program& program, const TypeEntry& entry) {
    ForEachUse(entry, [&](std::string_view, const Property& property, const PropertyDecl& decl) {
        if (property.isArray && property.type != nullptr && property.type->Is(Model::BuiltinKind::Boolean)) {
            program.reporter.Report(decl.array, Diagnostics::kArrayOfBoolean);
        }
    });
}

void CheckOpenType(Program& program, const TypeEntry& entry) {
    if (entry.decl->isOpen && !entry.decl->properties.empty()) {
        const Span& place = entry.decl->properties.front().name.span;
        program.reporter.Report(place, Diagnostics::kOpenTypeMember, entry.type->name);
    }
}

void CheckHttpStatus(Program& program, const TypeEntry& entry) {
    const std::optional<Syntax::Name>& written = entry.decl->httpStatus;
    if (!written) {
        return;
    }
    const Pellum::Http::ResponseCode::Info* status =
        Pellum::Http::ResponseCode::Find(entry.Data()->httpStatus);
    if (status == nullptr || status->code < Pellum::Http::ResponseCode::kBadRequest.code) {
        program.reporter.Report(written->span, Diagnostics::kNotAnErrorStatus, written->text);
    }
}

void CheckEnumHasTags(Program& program, const TypeEntry& entry) {
    if (entry.Enum() != nullptr && entry.decl->tags.empty()) {
        program.reporter.Report(entry.type->span, Diagnostics::kEmptyEnum, entry.type->name);
    }
}

void CheckThrows(Program& program, const TypeEntry& entry) {
    const Model::ManagedType* managed = entry.Managed();
    for (std::size_t method = 0; managed != nullptr && method < managed->methods.size(); ++method) {
        std::vector<const Model::Type*> seen;
        for (std::size_t index = 0; index < managed->methods[method].faults.size(); ++index) {
            const Model::Type* fault = managed->methods[method].faults[index];
            const Span& place = entry.decl->methods[method].faults[index].span;
            if (fault == nullptr) {
                continue;
            }
            if (FamilyOf(*fault) != Family::Fault) {
                program.reporter
                    .Report(place, Diagnostics::kNotAFault, fault->dottedName, Article(FamilyOf(*fault)))
                    .AddNote(fault->span, Diagnostics::kDeclaredHere, fault->dottedName);
            } else if (std::find(seen.begin(), seen.end(), fault) != seen.end()) {
                program.reporter.Report(place, Diagnostics::kDuplicateFault, fault->dottedName);
            }
            seen.push_back(fault);
        }
    }
}

void CheckResultSince(Program& program, const TypeEntry& entry) {
    for (const Syntax::MethodDecl& method : entry.decl->methods) {
        if (method.resultSince && !method.result) {
            program.reporter.Report(
                method.resultSince->span, Diagnostics::kResultSinceWithoutResult, method.name.text);
        }
    }
}

void CheckMemberVersions(Program& program, const TypeEntry& entry) {
    const Model::Version* version = entry.type->version;
    if (const Model::DataType* data = entry.Data()) {
        CheckVersionsOf(program, "property", data->properties, version);
    } else if (const Model::ManagedType* managed = entry.Managed()) {
        CheckVersionsOf(program, "property", managed->properties, version);
        for (const Model::Method& method : managed->methods) {
            CheckNotOlder(program, "method", method.name, method.version, version, method.span);
            CheckVersionsOf(program, "parameter", method.parameters, method.version);
        }
    }
}

void CheckTypeDocumented(Program& program, const TypeEntry& entry) {
    if (entry.type->doc.find_first_not_of(" \t\n") == std::string::npos) {
        program.reporter.Report(entry.type->span, Diagnostics::kMissingDoc, entry.type->name);
    }
}

} // namespace Schemac::Sema
