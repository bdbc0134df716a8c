#pragma once

#include "pellum/export.h"

namespace Pellum {

/// Ends the process through `Panic` with the line "VERIFY <file>:<line>". Of the path only the file's own
/// name is told, for the rest depends on where the code was built. `file` is borrowed.
[[noreturn]] PELLUM_API void PanicOnVerify(const char* file, int line);

/// Ends the process, naming the caller's place, when a condition does not hold that only a programming error
/// can break. Stays in release builds, unlike `assert`.
inline void Verify(bool condition, const char* file = __builtin_FILE(), int line = __builtin_LINE()) {
    if (!condition) [[unlikely]] {
        PanicOnVerify(file, line);
    }
}

} // namespace Pellum
