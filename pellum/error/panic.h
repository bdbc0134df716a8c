#pragma once

#include "pellum/export.h"

namespace Pellum {

/// Ends the process over a broken internal precondition: writes the printf-style message to standard error
/// and aborts. Nothing is unwound.
[[noreturn]] PELLUM_API void Panic(const char* format, ...) __attribute__((format(printf, 1, 2)));

} // namespace Pellum
