#pragma once

#include "tests/support/regex.h"

#include <csignal>
#include <string>

#ifdef _WIN32
#define WIN32_LEAN_AND_MEAN
#include <windows.h>
#endif

/// What `EXPECT_EXIT` is given for the ways in which the library ends the process.
namespace TestSupport {

/// Whether a process ended by `std::abort`.
inline bool HasAborted(int status) {
#ifdef _WIN32
    return status == 3;
#else
    return testing::KilledBySignal(SIGABRT)(status);
#endif
}

/// Whether a process ended by `Pellum::FailFast`. What the trap is reported as differs between processors and
/// under sanitizers; an orderly exit is never right.
inline bool HasFailedFast(int status) {
#ifdef _WIN32
    return static_cast<DWORD>(status) == STATUS_STACK_BUFFER_OVERRUN;
#else
    return WIFSIGNALED(status) || WEXITSTATUS(status) > 1;
#endif
}

/// Matches what a process that has aborted wrote: that message and nothing else, but for the run-time's own.
inline testing::Matcher<const std::string&> IsAbortMessage(const std::string& pattern) {
#ifdef _WIN32
    return ContainsRegex("^" + pattern + "\n(\n|$)");
#else
    return ContainsRegex("^" + pattern + "\n$");
#endif
}

/// Matches what a process that failed fast wrote. Windows reports the code in its own way.
inline testing::Matcher<const std::string&> IsFailFastMessage([[maybe_unused]] unsigned code) {
#ifdef _WIN32
    return testing::Eq("");
#else
    return testing::Eq("fail-fast trap, code " + std::to_string(code) + '\n');
#endif
}

} // namespace TestSupport
