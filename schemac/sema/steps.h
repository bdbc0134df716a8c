#pragma once

#include "schemac/sema/program.h"

/// The steps of the analysis. Each goes over everything and reports all that it finds. Their order is in
/// analyse.cpp.
namespace Schemac::Sema {

/// Enters versions and types under their names; refuses a second declaration of a name.
void DeclareVersions(Program& program);
void DeclareTypes(Program& program);

/// Replaces names by what they name.
void ResolveIncludes(Program& program);
void ResolveBases(Program& program);
void ResolveMembers(Program& program);

/// Hands the order of the enumerations to the module, if the schema gives one.
void ResolveEnumOrder(Program& program);

/// Finds cycles and takes them apart, so that later steps can follow includes and bases to their end.
void BreakVersionCycles(Program& program);
void BreakInheritanceCycles(Program& program);

/// Applies every rule of rules.cpp.
void ApplyRules(Program& program);

/// Finds headers that would have one path, or include each other. Needs a program without errors.
void CheckHeaders(Program& program);

} // namespace Schemac::Sema
