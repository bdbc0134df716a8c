#include "tests/support/regex.h"
#include "tests/tools/tool_runner.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <ostream>

namespace ToolTests {

namespace {

using testing::AllOf;
using testing::HasSubstr;
using TestSupport::ContainsRegex;

TEST(Demo, ShowsWhatTheExamplesHold) {
    const RunResult result = RunTool({"demo", "--examples", Example("")});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_THAT(
        result.out, AllOf(
                        HasSubstr("\"hostname\": \"db-07.plant.example\""),
                        HasSubstr("\"password\": \"***\""), HasSubstr("location.clientPrivateKey  7.0"),
                        HasSubstr("did you mean \"password\"?"), HasSubstr("broken/4_truncated.json:6:35"),
                        HasSubstr("16 volumes onto 4 disks, gives 6 of them another size"),
                        HasSubstr("storageParams.targetDiskParams[0].volumesToClone[2].newCapacityInBytes\n"
                                  "     - 64424509440\n     + 85899345920\n"),
                        HasSubstr("version 9.0 gets all of it"), ContainsRegex("metadataCsum +5 +9\\.0")));
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

constexpr const char* kNothingToCopy =
    R"({"$type": "MorvaneTaskSpec", "conversionParams": {"doClone": false}})";

constexpr const char* kUnknownVolume =
    R"({"$type": "MorvaneTaskSpec", "conversionParams": {"cloningParams": {"storageParams": {"targetDiskParams": [
        {"volumesToClone": [{"sourceVolumeId": "/dev/sda1"}]}]}}}})";

constexpr const char* kNothingResized =
    R"({"$type": "MorvaneTaskSpec", "conversionParams": {"cloningParams": {"storageParams": {}}}})";

INSTANTIATE_TEST_SUITE_P(
    Files, SpoiltDemo,
    testing::Values(
        Change{"connection_request.json", "{", "connection_request.json:1:2"},
        Change{"connection_request.json", kOtherMachine, "lacks a password or a key"},
        Change{"pattern.json", kOtherMachine, "the request does not match"},
        Change{"conversion_request.json", "[", "conversion_request.json:1:1"},
        Change{"conversion_request.json", kNothingToCopy, "the conversion request says nothing of disks"},
        Change{"conversion_request.json", kUnknownVolume, "the source has no volume /dev/sda1"},
        Change{"conversion_request.json", kNothingResized, "the conversion request resizes no volume"},
        Change{"broken/1_wrong_kind.json", kOtherMachine, "1_wrong_kind.json was read as if it were well"}));

} // namespace

} // namespace ToolTests
