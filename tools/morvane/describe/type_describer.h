#pragma once

#include "tools/morvane/model/members.h"
#include "tools/morvane/terminal/output.h"

namespace Tool {

/// Writes all that is known of a type, section by section.
void DescribeType(const Tavik::Type& type, Output& output);
/// Writes all that is known of one member of a type, which the type may have inherited.
void DescribeMember(const Member& member, Output& output);

} // namespace Tool
