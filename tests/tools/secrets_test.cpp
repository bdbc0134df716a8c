#include "tests/tools/tool_runner.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace ToolTests {

namespace {

using testing::HasSubstr;
using testing::Not;

/// Every secret of the examples, or the part of it that stands on one line.
const std::vector<std::string> kSecrets = {"correct-horse",       "BEGIN EXAMPLE KEY",
                                           "VGhpcyBpcyBub3Qg",    "Tm90IGEga2V5IGVpdGhlci",
                                           "not-a-real-password", "52d1f0c4-example-session-key"};

TEST(Secrets, AreShownByNoCommand) {
    const std::vector<std::string> files = {
        "connection_request.json",
        "conversion_job_spec.json",
        "conversion_request.json",
        "managed_vm_request.json",
        "pattern.json",
        "user_session.json",
        "broken/1_wrong_kind.json",
        "broken/2_unknown_property.json",
        "broken/3_missing_property.json",
        "broken/4_truncated.json"};
    const TemporaryFolder folder;
    std::vector<std::vector<std::string>> runs = {{"demo"}};
    for (const std::string& file : files) {
        const std::string path = Example(file);
        runs.push_back({"check", path});
        runs.push_back({"check", "--lenient", path});
        runs.push_back({"convert", path});
        runs.push_back({"convert", "--lenient", "--compact", "--to-version", "9.0", path});
        for (const std::string& other : files) {
            runs.push_back({"diff", path, Example(other)});
            runs.push_back({"match", path, Example(other)});
        }
    }
    for (const auto& arguments : runs) {
        const std::string output = RunTool(arguments).GetAll();
        for (const std::string& secret : kSecrets) {
            EXPECT_THAT(output, Not(HasSubstr(secret))) << testing::PrintToString(arguments);
        }
    }
}

TEST(Secrets, ThatAreWrongAreNotQuoted) {
    const std::string front = R"({"$type": "MorvaneComputerSpec", "location": {"$type":
        "MorvaneComputerSpecLiveComputerLocation", "hostname": "a", "osType": "b", "password": )";
    for (const char* value :
         {"81623947}}", R"("81623947)", R"(["81623947"]}})", R"({"81623947": 1}}})", "\"81623947\xff\"}}",
          R"("81623947"; }})"}) {
        const RunResult result = RunTool({"check", "-"}, front + value);
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_THAT(result.GetAll(), Not(HasSubstr("81623947")));
    }
}

TEST(Secrets, AreShownOnRequest) {
    EXPECT_THAT(
        RunTool({"convert", "--show-secrets", Example("connection_request.json")}).out,
        testing::AllOf(HasSubstr("correct-horse-battery-staple"), HasSubstr("BEGIN EXAMPLE KEY")));
    EXPECT_THAT(
        RunTool({"diff", "--show-secrets", Example("connection_request.json"), Example("pattern.json")}).out,
        HasSubstr("- \"correct-horse-battery-staple\"\n  + unset"));
    EXPECT_THAT(
        RunTool({"convert", Example("connection_request.json")}).err,
        HasSubstr("2 secrets are written as \"***\""));
}

} // namespace

} // namespace ToolTests
