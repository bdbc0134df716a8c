#pragma once

#include "pellum/export.h"

#include <string>
#include <typeinfo>

namespace Pellum {

/// The name as written in source code, or `mangled` itself where it cannot be read.
[[nodiscard]] PELLUM_API std::string Demangle(const char* mangled);
[[nodiscard]] PELLUM_API std::string Demangle(const std::type_info& type);

} // namespace Pellum
