#pragma once

#include "pellum/export.h"

namespace Pellum {

/// Codes of `FailFast`.
inline constexpr unsigned kBadPropertyIndex = 37;

/// Ends the process at once through the platform's fail-fast trap: nothing is unwound, no exit handler runs,
/// no memory is allocated. Elsewhere than on Windows, which records the code itself, one line on standard
/// error tells it.
[[noreturn]] PELLUM_API void FailFast(unsigned code) noexcept;

} // namespace Pellum
