#include "pellum/error/fail_fast.h"
#include "pellum/error/panic.h"
#include "pellum/error/verify.h"
#include "tests/support/death.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>

namespace {

using TestSupport::HasAborted;
using TestSupport::HasFailedFast;
using TestSupport::IsAbortMessage;
using TestSupport::IsFailFastMessage;

class FatalDeathTest : public testing::Test {
protected:
    FatalDeathTest() { testing::FLAGS_gtest_death_test_style = "threadsafe"; }
};

/// Leaves a trace on standard error when it is unwound, or when the process exits in an orderly way.
class Trace {
public:
    Trace() {
        std::atexit([] { std::fputs("exit handler ran\n", stderr); });
    }

    Trace(const Trace&) = delete;
    Trace& operator=(const Trace&) = delete;

    ~Trace() { std::fputs("unwound\n", stderr); }
};

TEST_F(FatalDeathTest, PanicFormatsItsMessageAndAborts) {
    const auto panic = [] {
        const Trace trace;
        Pellum::Panic("VERIFY %s:%d\n", "storage.cpp", 17);
    };
    EXPECT_EXIT(panic(), HasAborted, IsAbortMessage("VERIFY storage.cpp:17"));
}

TEST_F(FatalDeathTest, VerifyTellsTheFileWithoutItsFolders) {
    Pellum::Verify(true);
    const auto verify = [](const char* file) {
        const Trace trace;
        Pellum::Verify(false, file, 203);
    };
    EXPECT_EXIT(
        verify("/build/of/somebody/storage.cpp"), HasAborted, IsAbortMessage("VERIFY storage.cpp:203"));
    EXPECT_EXIT(verify("storage.cpp"), HasAborted, IsAbortMessage("VERIFY storage.cpp:203"));
    EXPECT_EXIT(verify("C:\\build\\storage.cpp"), HasAborted, IsAbortMessage("VERIFY storage.cpp:203"));
    EXPECT_EXIT(Pellum::Verify(false), HasAborted, IsAbortMessage("VERIFY fatal_test.cpp:[0-9]+"));
}

#ifdef _WIN32

/// The code that a debugger is told when this program, asked to by a variable, fails fast; 0 when it does
/// not.
unsigned GetCodeSeenByDebugger() {
    char program[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, program, MAX_PATH);
    std::string line = '"' + std::string(program) + "\" --gtest_filter=FatalDeathTest.FailFast*";
    STARTUPINFOA startUp{};
    startUp.cb = sizeof(startUp);
    PROCESS_INFORMATION child{};
    SetEnvironmentVariableA("PELLUM_TESTS_FAIL_FAST", "1");
    const BOOL hasStarted = CreateProcessA(
        nullptr, line.data(), nullptr, nullptr, FALSE, DEBUG_ONLY_THIS_PROCESS, nullptr, nullptr, &startUp,
        &child);
    SetEnvironmentVariableA("PELLUM_TESTS_FAIL_FAST", nullptr); // not for the processes that are to die later
    if (hasStarted == 0) {
        return 0;
    }
    unsigned code = 0;
    DEBUG_EVENT event{};
    while (WaitForDebugEvent(&event, INFINITE) != 0 && event.dwDebugEventCode != EXIT_PROCESS_DEBUG_EVENT) {
        DWORD answer = DBG_CONTINUE;
        if (event.dwDebugEventCode == EXCEPTION_DEBUG_EVENT) {
            const EXCEPTION_RECORD& record = event.u.Exception.ExceptionRecord;
            answer = record.ExceptionCode == EXCEPTION_BREAKPOINT ? DBG_CONTINUE : DBG_EXCEPTION_NOT_HANDLED;
            if (record.ExceptionCode == STATUS_STACK_BUFFER_OVERRUN && record.NumberParameters > 0) {
                code = static_cast<unsigned>(record.ExceptionInformation[0]);
            }
        }
        ContinueDebugEvent(event.dwProcessId, event.dwThreadId, answer);
    }
    ContinueDebugEvent(event.dwProcessId, event.dwThreadId, DBG_CONTINUE);
    CloseHandle(child.hThread);
    CloseHandle(child.hProcess);
    return code;
}

#endif

TEST_F(FatalDeathTest, FailFastTellsTheCodeAndRunsNothing) {
#ifdef _WIN32
    if (std::getenv("PELLUM_TESTS_FAIL_FAST") != nullptr) {
        Pellum::FailFast(Pellum::kBadPropertyIndex);
    }
    EXPECT_EQ(GetCodeSeenByDebugger(), 37U);
#endif
    const auto failFast = [](unsigned code) {
        const Trace trace;
        Pellum::FailFast(code);
    };
    EXPECT_EXIT(failFast(Pellum::kBadPropertyIndex), HasFailedFast, IsFailFastMessage(37));
    EXPECT_EXIT(failFast(4294967295U), HasFailedFast, IsFailFastMessage(4294967295U));
}

} // namespace
