#include "pellum/error/panic.h"

/// The tables of interfaces have a function in every slot that nobody has implemented. With one of the
/// library's own those slots are complete when the library is linked; the compiler's would be looked up for
/// each of 2,400 slots whenever the library is loaded.
// NOLINTNEXTLINE(bugprone-reserved-identifier): the compiler's name.
extern "C" [[noreturn]] __attribute__((visibility("hidden"))) void __cxa_pure_virtual() {
    Pellum::Panic("a function that its class does not have was called\n");
}
