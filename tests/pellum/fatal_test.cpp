#include "pellum/error/fail_fast.h"
#include "pellum/error/panic.h"
#include "pellum/error/verify.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>

#ifndef _WIN32

namespace {

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
    EXPECT_EXIT(panic(), testing::KilledBySignal(SIGABRT), "^VERIFY storage.cpp:17\n$");
}

TEST_F(FatalDeathTest, VerifyTellsTheFileWithoutItsFolders) {
    Pellum::Verify(true);
    const auto verify = [](const char* file) {
        const Trace trace;
        Pellum::Verify(false, file, 203);
    };
    EXPECT_EXIT(
        verify("/build/of/somebody/storage.cpp"), testing::KilledBySignal(SIGABRT),
        "^VERIFY storage.cpp:203\n$");
    EXPECT_EXIT(verify("storage.cpp"), testing::KilledBySignal(SIGABRT), "^VERIFY storage.cpp:203\n$");
    EXPECT_EXIT(
        verify("C:\\build\\storage.cpp"), testing::KilledBySignal(SIGABRT), "^VERIFY storage.cpp:203\n$");
    EXPECT_EXIT(Pellum::Verify(false), testing::KilledBySignal(SIGABRT), "^VERIFY fatal_test.cpp:[0-9]+\n$");
}

/// What the trap is reported as differs between processors and under sanitizers; an orderly exit is never
/// right.
bool DiedOfASignal(int status) {
    return WIFSIGNALED(status) || WEXITSTATUS(status) > 1;
}

TEST_F(FatalDeathTest, FailFastTellsTheCodeAndRunsNothing) {
    const auto failFast = [](unsigned code) {
        const Trace trace;
        Pellum::FailFast(code);
    };
    EXPECT_EXIT(failFast(Pellum::kBadPropertyIndex), DiedOfASignal, "^fail-fast trap, code 37\n$");
    EXPECT_EXIT(failFast(4294967295U), DiedOfASignal, "^fail-fast trap, code 4294967295\n$");
}

} // namespace

#endif
