# Writes OUT, a header that lists the headers of the generated classes below ROOT.

file(GLOB_RECURSE headers RELATIVE "${ROOT}" "${ROOT}/*/api/*.h")
list(SORT headers)

set(lines "")
foreach(header IN LISTS headers)
    string(APPEND lines "    \"${header}\",\n")
endforeach()
file(CONFIGURE OUTPUT "${OUT}" @ONLY CONTENT [[
// Written by tools/morvane/list_headers.cmake. Do not edit.
#pragma once

#include <string_view>

namespace Tool {

/// The headers of the generated classes, as they are included.
inline constexpr std::string_view kGeneratedHeaders[] = {
@lines@};

} // namespace Tool
]])
file(TOUCH "${OUT}")
