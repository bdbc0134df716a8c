#define WIN32_LEAN_AND_MEAN
#include <windows.h>

/// The compiler's start-up code looks here for what prepares thread-local variables. This library has none,
/// and a library that is prepared for them is told of threads whatever it asks for.
extern "C" const PIMAGE_TLS_CALLBACK __dyn_tls_init_callback = nullptr;

/// The library's entry point: it has nothing to do for threads, and its start-up runs by itself.
extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID /*reserved*/) {
    if (reason == DLL_PROCESS_ATTACH) {
        DisableThreadLibraryCalls(module);
    }
    return TRUE;
}
