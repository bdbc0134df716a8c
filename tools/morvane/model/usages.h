#pragma once

#include "tools/morvane/model/members.h"

#include <string>
#include <vector>

namespace Tool {

/// A place where a type is declared to stand.
struct Usage {
    Member member;
    const char* role;         ///< "property", "parameter", "result", "fault"
    std::string place;        ///< "morvane.ComputerSpec.location", "morvane.SessionManager.login(userName)"
    const Tavik::Type* named; ///< the type that the place names: the one asked for or a base of it
};

/// All places that name the type, or a base of it that is not a root: its values can stand there. Those of
/// the type itself go first, then those of its nearest base; properties before parameters, results and
/// faults.
std::vector<Usage> FindUsages(const Tavik::Type& type);

} // namespace Tool
