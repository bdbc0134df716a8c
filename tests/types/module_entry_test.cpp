#include "tavik/descriptor/builtin.h"
#include "tavik/type/type_of.h"
#include "tavik/type/type_registry.h"
#include "types/api/core/computer_spec.h"

#include <gtest/gtest.h>

#ifdef _WIN32
#include "tests/support/redirection_windows.h"

#include <thread>
#endif

namespace {

#ifdef _WIN32

using Entry = BOOL WINAPI(HINSTANCE, DWORD, LPVOID);

/// The module that something belongs to.
HMODULE ModuleOf(const void* address) {
    HMODULE module = nullptr;
    GetModuleHandleExA(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        static_cast<LPCSTR>(address), &module);
    return module;
}

/// What the system calls; it is not exported.
Entry* EntryOf(HMODULE module) {
    auto* image = reinterpret_cast<unsigned char*>(module);
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(image);
    const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(image + dos->e_lfanew);
    return reinterpret_cast<Entry*>(image + headers->OptionalHeader.AddressOfEntryPoint);
}

int notifications = 0;

BOOL WINAPI CountNotification(HINSTANCE /*module*/, DWORD /*reason*/, LPVOID /*reserved*/) {
    ++notifications;
    return TRUE;
}

/// How often a module is told of a thread that begins and ends.
int CountNotifications(HMODULE module) {
    notifications = 0;
    const TestSupport::Redirection redirection(EntryOf(module), &CountNotification);
    std::thread([] {}).join();
    return notifications;
}

HMODULE GetTypes() {
    return ModuleOf(&Morvane::gMorvaneComputerSpecTypeInfo);
}

#endif

TEST(ModuleEntry, IsNotToldOfThreads) {
#ifdef _WIN32
    EXPECT_EQ(CountNotifications(ModuleOf(&Tavik::gStringTypeInfo)), 2) << "others are";
    EXPECT_EQ(CountNotifications(GetTypes()), 0);
#else
    GTEST_SKIP() << "there are no entry points on this system";
#endif
}

TEST(ModuleEntry, SucceedsForEveryReasonAndDoesNothing) {
#ifdef _WIN32
    Tavik::TypeRegistry::Instance().Load();
    const auto* type = Tavik::GetDoType<Morvane::ComputerSpec>();
    for (const DWORD reason : {DWORD{DLL_THREAD_ATTACH}, DWORD{DLL_THREAD_DETACH}, DWORD{4}, ~DWORD{0}}) {
        EXPECT_EQ(EntryOf(GetTypes())(GetTypes(), reason, nullptr), TRUE) << reason;
    }
    EXPECT_EQ(Tavik::GetDoType<Morvane::ComputerSpec>(), type);
#else
    GTEST_SKIP() << "there are no entry points on this system";
#endif
}

} // namespace
