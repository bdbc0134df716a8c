#pragma once

#include "tests/support/pace.h"
#include "tests/support/temporary_folder.h"

#include <chrono>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ToolTests {

using TestSupport::kIsSanitized;
using TestSupport::kSlowness;

/// How a run of a program went.
struct RunResult {
    int exitCode = -1; ///< minus the signal where one ended the program
    std::string out;
    std::string err;
    std::chrono::milliseconds duration{};
    long peakKiB = 0; ///< most memory that was in use

    std::string GetAll() const { return out + err; }
};

/// Runs the `morvane` program of this build, with `input` as its standard input.
RunResult RunTool(const std::vector<std::string>& arguments, std::string_view input = {});
/// Runs any program, by its path.
RunResult RunProgram(
    const std::string& program, const std::vector<std::string>& arguments, std::string_view input = {});

#ifdef _WIN32
inline constexpr bool kHasTerminals = false; ///< whether a test can run a program at a terminal
#else
inline constexpr bool kHasTerminals = true;
#endif

/// Runs the `morvane` program of this build at a terminal of that many columns, with the variables
/// ("NO_COLOR=1") in its environment; what it writes to both streams is in `out`.
RunResult RunToolAtTerminal(
    const std::vector<std::string>& arguments, int columns, const std::vector<std::string>& variables = {});

using TestSupport::TemporaryFolder;

/// Path of a file below the examples.
std::string Example(const std::string& name);
std::string ReadFile(const std::filesystem::path& path);

} // namespace ToolTests
