#define WIN32_LEAN_AND_MEAN
#include <windows.h>

/// The library's entry point: it has nothing to do for threads, and its start-up runs by itself.
extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID /*reserved*/) {
    if (reason == DLL_PROCESS_ATTACH) {
        DisableThreadLibraryCalls(module);
    }
    return TRUE;
}
