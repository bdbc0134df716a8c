#include "tests/tools/tool_runner.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace ToolTests {

namespace {

using testing::HasSubstr;
using testing::IsEmpty;

/// The names of the examples that are meant to be well.
std::vector<std::string> GetExampleNames() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(EXAMPLES_FOLDER)) {
        if (entry.path().extension() == ".json") {
            names.push_back(entry.path().filename().string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

class EachExample : public testing::TestWithParam<std::string> {};

TEST_P(EachExample, IsValidAndWrittenTheWayTheToolWritesIt) {
    const std::string path = Example(GetParam());
    const RunResult checked = RunTool({"check", "--version", "9.0", path});
    EXPECT_EQ(checked.exitCode, 0) << checked.GetAll();
    const RunResult converted = RunTool({"convert", "--show-secrets", path});
    EXPECT_EQ(converted.out, ReadFile(path));
    EXPECT_THAT(converted.err, IsEmpty());
    EXPECT_THAT(ReadFile(Example("README.md")), HasSubstr("`" + GetParam() + "`"));
}

INSTANTIATE_TEST_SUITE_P(Files, EachExample, testing::ValuesIn(GetExampleNames()), [](const auto& example) {
    return std::filesystem::path(example.param).stem().string();
});

} // namespace

} // namespace ToolTests
