#include "tests/tools/tool_runner.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <ostream>
#include <string>
#include <utility>
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

/// A version of the interface that does not have all of an example.
struct TooYoung {
    const char* file;
    const char* version;
    const char* refusal; ///< what a peer of that version says of the file
    /// The first property that is left out for such a peer, or why the file can not be sent to it.
    const char* leftOut;
    bool canBeSent = true;

    friend std::ostream& operator<<(std::ostream& stream, const TooYoung& value) {
        return stream << value.file << " for " << value.version;
    }
};

class OlderVersion : public testing::TestWithParam<TooYoung> {};

TEST_P(OlderVersion, RefusesWhatItDoesNotHaveAndReadsTheRest) {
    const auto& [file, version, refusal, leftOut, canBeSent] = GetParam();
    const RunResult checked = RunTool({"check", "--version", version, Example(file)});
    EXPECT_EQ(checked.exitCode, 1);
    EXPECT_THAT(checked.err, HasSubstr(refusal));
    const RunResult converted =
        RunTool({"convert", "--show-secrets", "--to-version", version, Example(file)});
    EXPECT_THAT(converted.err, HasSubstr(leftOut));
    EXPECT_EQ(converted.exitCode, canBeSent ? 0 : 2);
    if (canBeSent) {
        const RunResult arrived = RunTool({"check", "--version", version, "-"}, converted.out);
        EXPECT_EQ(arrived.exitCode, 0) << arrived.GetAll();
    }
}

INSTANTIATE_TEST_SUITE_P(
    Examples, OlderVersion,
    testing::Values(
        TooYoung{
            "conversion_request.json", "6.8",
            ":13:7: error: source.location: property \"sslCertificate\" of "
            "MorvaneComputerSpecLiveComputerLocation"
            " is not part of version morvane.version.v6_8; it was introduced by morvane.version.v9_0",
            "source.location.sslCertificate is left out: it came with 9.0"},
        TooYoung{
            "linux_machine.json", "6.6", "hardwareInfo.storage.volume[1].xfsFeatures: property \"crc\"",
            "osInfo.rsync is left out: it came with 9.0"},
        TooYoung{
            "windows_machine.json", "1.0",
            ":2:12: error: type MorvaneComputerInfo is not part of version morvane.version.version1; it was"
            " introduced by morvane.version.version2",
            "which version morvane.version.version1 does not have", false},
        TooYoung{
            "conversion_job_tasks.json", "4.0", "[1].data: property \"maxConnection\"",
            "[1].data.maxConnection is left out: it came with 5.0"},
        TooYoung{
            "events.json", "6.4", "type MorvaneUnixP2VPatchLvmDevicesEvent is not part of version",
            "is of type morvane.event.UnixP2VPatchLvmDevicesEvent, which version morvane.version.v6_4 does "
            "not"
            " have",
            false}));

TEST(OldestVersion, OfAnExampleLeavesNothingOut) {
    const std::pair<const char*, const char*> cases[] = {
        {"windows_machine.json", "6.6"}, {"windows_machine.json", "6.8"},
        {"events.json", "6.6"},          {"conversion_job_tasks.json", "5.0"},
        {"user_session.json", "1.0"},    {"log_bundle.json", "1.0"},
        {"pattern.json", "2.0"}};
    for (const auto& [file, version] : cases) {
        SCOPED_TRACE(file);
        EXPECT_EQ(RunTool({"check", "--version", version, Example(file)}).exitCode, 0);
        const RunResult converted =
            RunTool({"convert", "--show-secrets", "--to-version", version, Example(file)});
        EXPECT_THAT(converted.err, IsEmpty());
        EXPECT_EQ(converted.out, ReadFile(Example(file)));
    }
}

} // namespace

} // namespace ToolTests
