#include "pellum/error/fail_fast.h"

#ifndef _WIN32
#include <charconv>
#include <cstring>

#include <unistd.h>
#endif

namespace Pellum {

#ifdef _WIN32

void FailFast(unsigned code) noexcept {
    // The system's fail-fast interrupt takes its code in ecx.
    __asm__ volatile("int $0x29" : : "c"(code));
    __builtin_unreachable();
}

#else

void FailFast(unsigned code) noexcept {
    char text[64] = "fail-fast trap, code ";
    char* end = std::to_chars(text + std::strlen(text), text + sizeof(text) - 1, code).ptr;
    *end++ = '\n';
    [[maybe_unused]] const auto written = write(STDERR_FILENO, text, static_cast<std::size_t>(end - text));
    __builtin_trap();
}

#endif

} // namespace Pellum
