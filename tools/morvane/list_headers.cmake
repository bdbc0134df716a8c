# Writes OUT, a header that says which of the generated headers below ROOT declares which type.

file(GLOB_RECURSE headers RELATIVE "${ROOT}" "${ROOT}/*/api/*.h")
list(SORT headers)

set(lines "")
foreach(header IN LISTS headers)
    # Every generated class and enumeration names its wire name in its comment.
    file(STRINGS "${ROOT}/${header}" comments REGEX "^ */// Wire name `[A-Za-z0-9_]+`;")
    foreach(comment IN LISTS comments)
        string(REGEX REPLACE "^[^`]*`([^`]*)`.*$" "\\1" wireName "${comment}")
        string(APPEND lines "    {\"${wireName}\", \"${header}\"},\n")
    endforeach()
endforeach()
file(CONFIGURE OUTPUT "${OUT}" @ONLY CONTENT [[
// Written by tools/morvane/list_headers.cmake. Do not edit.
#pragma once

#include <string_view>

namespace Tool {

struct GeneratedHeader {
    std::string_view wireName;
    std::string_view path; ///< as it is included
};

/// The header of each generated type.
inline constexpr GeneratedHeader kGeneratedHeaders[] = {
@lines@};

} // namespace Tool
]])
file(TOUCH "${OUT}")
