#pragma once

#include "schemac/sema/program.h"

#include <string>

/// Finding what a name means, and what it may have been meant to be. A name that means nothing is reported
/// and gives null.
namespace Schemac::Sema {

/// A dotted name is looked for in `scope` (the dotted name of a type or namespace) and outward, then as
/// a full name. A name with '::' is a full class path.
const Model::Type* FindType(
    const Program& program, const Syntax::QualifiedName& name, const std::string& scope);

/// A single word is a version of `nameSpace` or of one around it; a dotted name is a full name.
const Model::Version* FindVersion(
    const Program& program, const Syntax::QualifiedName& name, const std::string& nameSpace);

} // namespace Schemac::Sema
