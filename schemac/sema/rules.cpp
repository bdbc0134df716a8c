#include "schemac/sema/rules.h"

#include "schemac/sema/steps.h"

namespace Schemac::Sema {

namespace {

using TypeRule = void (*)(Program&, const TypeEntry&);
using ProgramRule = void (*)(Program&);

// One a line, so that a change of the list is a change of one line.
// clang-format off

/// Rules about one type.
constexpr TypeRule kTypeRules[] = {
    CheckTypeName,
    CheckTypeDocumented,
    CheckMemberNames,
    CheckDuplicateMembers,
    CheckRepeatedInherited,
    CheckFlags,
    CheckSecrets,
    CheckArrayElements,
    CheckOpenType,
    CheckHttpStatus,
    CheckEnumHasTags,
    CheckThrows,
    CheckResultSince,
    CheckMemberVersions,
    CheckNestedLikeEncloser,
    CheckReservedInFaults,
    CheckBaseInside,
    CheckCppMembers,
    CheckManagedNotNested,
    CheckReplacedProperties,
    CheckParameterNames,
};

/// Rules about all types and versions together.
constexpr ProgramRule kProgramRules[] = {
    CheckNamespaceNames,
    CheckVersionNames,
    CheckWireNames,
    CheckTypesAgainstNamespaces,
    CheckConstants,
    CheckGlobals,
    CheckStubs,
};

// clang-format on

} // namespace

void ApplyRules(Program& program) {
    for (const TypeEntry& entry : program.types) {
        if (entry.type->isImported) {
            continue;
        }
        for (const TypeRule rule : kTypeRules) {
            rule(program, entry);
        }
    }
    for (const ProgramRule rule : kProgramRules) {
        rule(program);
    }
}

} // namespace Schemac::Sema
