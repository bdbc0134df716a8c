#pragma once

#include "tavik/export.h"

#include <string>

namespace Tavik {

class Any;
class OpenValue;
class Type;
class Version;

/// How a value is written as JSON.
struct PrintOptions {
    /// Else every secret is written as "***": what its property is flagged to be, and inside of open content
    /// what its name says (`IsSecretName`).
    bool showSecrets = false;
    int indent = 0; ///< spaces a level; 0 writes one line
    /// Leave out what this version does not have, borrowed; null writes everything.
    const Version* version = nullptr;
    /// Type of the place that the value stands in, which may be an array's, borrowed; "$type" is left out
    /// where it is that one. Null for none.
    const Type* declaredType = nullptr;
    /// Take it for a problem, which `TryPrint` tells of, when something required is unset or a reference is
    /// of another type than its place is declared with: a peer would refuse the value.
    bool requireComplete = false;
};

/// What kept a value from being written exactly, and where.
struct PrintProblem {
    std::string path; ///< "source.location"; empty for the value itself
    std::string what;
};

/// The value as JSON. Null is written as `null`. What JSON has no form for is replaced: bytes that are no
/// UTF-8 by U+FFFD, a number that is no value of its enumeration by itself. Used for logs and people: see the
/// codec for peers.
TAVIK_API std::string Print(const Any* value, const PrintOptions& options = {});

/// The same for a value inside of open content; `version` and `declaredType` are of no meaning then.
TAVIK_API std::string Print(const OpenValue& value, const PrintOptions& options = {});

/// Appends the value to `out` like `Print`, but tells of the first problem, if there is one; returns whether
/// there was none.
TAVIK_API bool TryPrint(
    const Any* value, const PrintOptions& options, std::string& out, PrintProblem& problem);

} // namespace Tavik
