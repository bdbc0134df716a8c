#include "tests/tools/tool_runner.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <ostream>

namespace ToolTests {

namespace {

using testing::AllOf;
using testing::HasSubstr;

TEST(Demo, ShowsWhatTheExamplesHold) {
    const RunResult result = RunTool({"demo", "--examples", Example("")});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_THAT(
        result.out, AllOf(
                        HasSubstr("\"hostname\": \"db-07.plant.example\""),
                        HasSubstr("\"password\": \"***\""), HasSubstr("location.clientPrivateKey  7.0"),
                        HasSubstr("did you mean \"password\"?"), HasSubstr("broken/4_truncated.json:6:35")));
}

TEST(Demo, FindsItsExamples) {
    EXPECT_EQ(RunTool({"demo"}).exitCode, 0);
}

/// One file of the examples, changed so that a step of the demo can not do what it should.
struct Change {
    const char* file;
    const char* content;
    const char* message;

    friend std::ostream& operator<<(std::ostream& stream, const Change& change) {
        return stream << change.message;
    }
};

class SpoiltDemo : public testing::TestWithParam<Change> {};

TEST_P(SpoiltDemo, Fails) {
    const TemporaryFolder folder;
    std::filesystem::copy(EXAMPLES_FOLDER, folder.GetPath(), std::filesystem::copy_options::recursive);
    folder.Write(GetParam().file, GetParam().content);
    const RunResult result = RunTool({"demo", "--examples", folder.GetPath().string()});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_THAT(result.err, HasSubstr(GetParam().message));
}

constexpr const char* kOtherMachine =
    R"({"$type": "MorvaneComputerSpec", "location":
        {"$type": "MorvaneComputerSpecLiveComputerLocation", "hostname": "other", "osType": "linux"}})";

INSTANTIATE_TEST_SUITE_P(
    Files, SpoiltDemo,
    testing::Values(
        Change{"connection_request.json", "{", "connection_request.json:1:2"},
        Change{"connection_request.json", kOtherMachine, "lacks a password or a key"},
        Change{"pattern.json", kOtherMachine, "the request does not match"},
        Change{"broken/1_wrong_kind.json", kOtherMachine, "1_wrong_kind.json was read as if it were well"}));

} // namespace

} // namespace ToolTests
