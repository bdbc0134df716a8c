#include "pellum/error/panic.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>

namespace Pellum {

void Panic(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    std::vfprintf(stderr, format, arguments);
    va_end(arguments);
    std::fflush(stderr);
    std::abort();
}

} // namespace Pellum
