#include "tests/tools/tool_runner.h"

#include <gmock/gmock.h>

#include <functional>
#include <ostream>
#include <string>
#include <vector>

namespace ToolTests {

namespace {

struct HostileInput {
    const char* name;
    int exitCode;
    const char* message;
    std::function<std::string()> make;

    friend std::ostream& operator<<(std::ostream& stream, const HostileInput& input) {
        return stream << input.name;
    }
};

std::string Repeat(const std::string& text, int count) {
    std::string all;
    for (int i = 0; i < count; ++i) {
        all += text;
    }
    return all;
}

class HostileInputs : public testing::TestWithParam<HostileInput> {};

TEST_P(HostileInputs, AreRefusedSoonAndWithLittleMemory) {
    const TemporaryFolder folder;
    const std::string file = folder.Write("input.json", GetParam().make());
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"check", "--lenient", file},
          {"convert", "--lenient", file},
          {"diff", "--lenient", file, file}}) {
        const RunResult result = RunTool(arguments);
        EXPECT_EQ(result.exitCode, arguments.front() == "check" ? GetParam().exitCode : 2) << result.err;
        EXPECT_THAT(result.err, testing::HasSubstr(GetParam().message));
        if (!kIsSanitized) {
            EXPECT_LT(result.duration.count(), 1000 * kSlowness);
            EXPECT_LT(result.peakKiB, 200 * 1024);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, HostileInputs,
    testing::Values(
        HostileInput{"Empty", 1, "error", [] { return std::string(); }},
        HostileInput{
            "Truncated", 1, "ends inside a string",
            [] { return ReadFile(Example("broken/4_truncated.json")); }},
        HostileInput{"DeepArrays", 1, "expected an object", [] { return Repeat("[", 10'000); }},
        HostileInput{
            "DeepObjects", 1, "64",
            [] { return R"({"$type": "MorvaneComputerSpec", "x": )" + Repeat(R"({"a": )", 10'000); }},
        HostileInput{
            "ManyValues", 1, "1000000",
            [] {
                return R"({"$type": "MorvaneDiagnosticManagerTaskLogBundleInfo", "content": ["agentLogs")"
                     + Repeat(R"(,"agentLogs")", 1'100'000) + "]}";
            }},
        HostileInput{"Large", 2, "longer than the limit", [] { return std::string(100U << 20U, ' '); }},
        HostileInput{
            "Binary", 1, "error",
            [] {
                std::string bytes;
                for (unsigned i = 0; i < 100'000; ++i) {
                    bytes += static_cast<char>((i * 2654435761U) >> 13U);
                }
                return bytes;
            }}),
    [](const auto& test) { return test.param.name; });

} // namespace

} // namespace ToolTests
