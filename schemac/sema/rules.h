#pragma once

#include "schemac/sema/program.h"

/// The rules of the language, one function each, listed in rules.cpp. A rule reports every place that breaks
/// it and relies on no other rule. Only a library's own types are judged: those of another were when it was
/// built.
namespace Schemac::Sema {

// Names (rules_names.cpp)
void CheckTypeName(Program& program, const TypeEntry& entry);
void CheckMemberNames(Program& program, const TypeEntry& entry);
void CheckNamespaceNames(Program& program);
void CheckVersionNames(Program& program);
void CheckWireNames(Program& program);

// Members (rules_members.cpp)
void CheckDuplicateMembers(Program& program, const TypeEntry& entry);
void CheckRepeatedInherited(Program& program, const TypeEntry& entry);
void CheckFlags(Program& program, const TypeEntry& entry);
void CheckSecrets(Program& program, const TypeEntry& entry);
void CheckArrayElements(Program& program, const TypeEntry& entry);
void CheckOpenType(Program& program, const TypeEntry& entry);
void CheckHttpStatus(Program& program, const TypeEntry& entry);
void CheckEnumHasTags(Program& program, const TypeEntry& entry);
void CheckThrows(Program& program, const TypeEntry& entry);
void CheckResultSince(Program& program, const TypeEntry& entry);
void CheckMemberVersions(Program& program, const TypeEntry& entry);
void CheckTypeDocumented(Program& program, const TypeEntry& entry);

// Names in generated code (rules_cpp.cpp)
void CheckNestedLikeEncloser(Program& program, const TypeEntry& entry);
void CheckReservedInFaults(Program& program, const TypeEntry& entry);
void CheckBaseInside(Program& program, const TypeEntry& entry);
void CheckCppMembers(Program& program, const TypeEntry& entry);
void CheckTypesAgainstNamespaces(Program& program);
void CheckConstants(Program& program);
void CheckGlobals(Program& program);

// Managed types (rules_managed.cpp)
void CheckManagedNotNested(Program& program, const TypeEntry& entry);
void CheckReplacedProperties(Program& program, const TypeEntry& entry);
void CheckParameterNames(Program& program, const TypeEntry& entry);
void CheckStubs(Program& program);

} // namespace Schemac::Sema
