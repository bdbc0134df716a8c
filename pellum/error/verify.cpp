#include "pellum/error/verify.h"

#include "pellum/error/panic.h"

namespace Pellum {

void PanicOnVerify(const char* file, int line) {
    const char* name = file;
    for (const char* c = file; *c != '\0'; ++c) {
        if (*c == '/' || *c == '\\') {
            name = c + 1;
        }
    }
    Panic("VERIFY %s:%d\n", name, line);
}

} // namespace Pellum
