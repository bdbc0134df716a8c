#pragma once

#include <string>
#include <string_view>

namespace Tavik {

class MethodFault;

/// What the names of those properties of faults end with whose texts are a message for people, in whatever
/// case: `msg`, `errMessage`, `description`; and what says where to look: which argument, which line of a
/// log.
inline constexpr std::string_view kMessageWords[] = {
    "msg",   "message", "why",     "reason",          "description",   "error",
    "cause", "detail",  "details", "invalidproperty", "correlationid",
};

/// Whether the name is a message's by `kMessageWords`, and no secret's.
bool IsMessageName(std::string_view name);

/// What the exception of a fault says: the dotted name of its type, its messages, and the references in its
/// open content. No secret is among them, control characters are escaped, and long texts are cut. Loads
/// pending libraries, without which a fault does not know its type. Empty when out of memory. `fault` may be
/// null.
std::string DescribeFault(const MethodFault* fault) noexcept;

/// The name of the fault's type as far as it is known, a constant.
const char* NameOfFault(const MethodFault* fault) noexcept;

} // namespace Tavik
