#include "tests/support/small_stack.h"

#include <gtest/gtest.h>

#ifdef _WIN32
#define WIN32_LEAN_AND_MEAN
#include <windows.h>
#else
#include <pthread.h>
#endif

namespace TestSupport {

namespace {

constexpr std::size_t kStackSize = std::size_t{256} * 1024;

#ifdef _WIN32

DWORD WINAPI Run(void* run) {
    (*static_cast<const std::function<void()>*>(run))();
    return 0;
}

#else

void* Run(void* run) {
    (*static_cast<const std::function<void()>*>(run))();
    return nullptr;
}

#endif

} // namespace

void RunOnSmallStack(const std::function<void()>& run) {
    void* argument = const_cast<std::function<void()>*>(&run);
#ifdef _WIN32
    // Without the flag the size is what is committed at first, and the program's stack size is what is
    // reserved.
    const HANDLE thread =
        CreateThread(nullptr, kStackSize, &Run, argument, STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
    ASSERT_NE(thread, nullptr);
    ASSERT_EQ(WaitForSingleObject(thread, INFINITE), WAIT_OBJECT_0);
    CloseHandle(thread);
#else
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, kStackSize), 0);
    pthread_t thread;
    ASSERT_EQ(pthread_create(&thread, &attributes, &Run, argument), 0);
    pthread_attr_destroy(&attributes);
    ASSERT_EQ(pthread_join(thread, nullptr), 0);
#endif
}

} // namespace TestSupport
