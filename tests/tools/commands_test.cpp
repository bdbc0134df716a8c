#include "tests/tools/tool_runner.h"

#include <gmock/gmock.h>

#include <ostream>
#include <string>
#include <vector>

namespace ToolTests {

namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

struct Invocation {
    std::vector<std::string> arguments;
    int exitCode;
    std::string out; ///< part of the output
    std::string err; ///< part of what is said of it

    friend std::ostream& operator<<(std::ostream& stream, const Invocation& invocation) {
        for (const std::string& argument : invocation.arguments) {
            stream << argument << ' ';
        }
        return stream;
    }
};

class Commands : public testing::TestWithParam<Invocation> {};

TEST_P(Commands, AnswerWithTheirExitCode) {
    const RunResult result = RunTool(GetParam().arguments);
    EXPECT_EQ(result.exitCode, GetParam().exitCode) << result.err;
    EXPECT_THAT(result.out, HasSubstr(GetParam().out));
    EXPECT_THAT(
        result.err, GetParam().err.empty() ? testing::Matcher<std::string>(IsEmpty())
                                           : testing::Matcher<std::string>(HasSubstr(GetParam().err)));
    EXPECT_THAT(result.GetAll(), Not(HasSubstr("\x1b["))) << "colours where there is no terminal";
}

const std::string kRequest = Example("connection_request.json");
const std::string kPattern = Example("pattern.json");
const std::string kManagedVm = Example("managed_vm_request.json");
const std::string kSession = Example("user_session.json");
const std::string kWrongKind = Example("broken/1_wrong_kind.json");

INSTANTIATE_TEST_SUITE_P(
    Done, Commands,
    testing::Values(
        Invocation{{"--help"}, 0, "Exit codes", ""}, Invocation{{"check", "--help"}, 0, "Examples:", ""},
        Invocation{
            {"types", "--names", "livecomputer"}, 0, "morvane.ComputerSpec.LiveComputerLocation\n", ""},
        Invocation{{"types", "--names", "--members", "PRIVATE", "key"}, 0, "LiveComputerLocation\n", ""},
        Invocation{{"types", "--areas"}, 0, "core\t", ""},
        Invocation{
            {"types", "morvane.ComputerSpec", "machine", "where"},
            0,
            "morvane.ComputerSpec\tdata\t1.0\tNames one machine by where it is",
            ""},
        Invocation{
            {"describe", "LiveComputerLocation"}, 0, "optional, secret  7.0    Key to log in with", ""},
        Invocation{{"describe", "SSLConnectionFault"}, 0, "Inheritance\n  orlin.DynamicData\n", ""},
        Invocation{
            {"describe", "deploymentSTATUS"}, 0, "result    morvane.server.AgentManager.uninstallAgent", ""},
        Invocation{{"describe", "ServerDiagnosticManager"}, 0, "Methods of morvane.DiagnosticManager", ""},
        Invocation{{"describe", "AgentManager"}, 0, "sslCertificate : string (optional, since 9.0)", ""},
        Invocation{
            {"describe", "AgentManager"}, 0, "morvane.server.AgentManager.AgentDeploymentResult  data", ""},
        Invocation{
            {"describe", "MorvaneRegisterWithAgent"},
            0,
            "zabro.fault.NoPermission  version1  The session lacks the privilege",
            ""},
        Invocation{{"describe", "ComputerSpec.location"}, 0, "kind         property", ""},
        Invocation{{"describe", "--json", "UserSession"}, 0, "{\"types\": [\n{\"slot\": ", ""},
        Invocation{{"types", "--kind", "enum"}, 0, "morvane.DiagnosticManager.BundleFormat", ""},
        Invocation{{"types", "--base", "ComputerSpec.VmLocation"}, 0, "OstrelHostedVmLocation", ""},
        Invocation{{"describe", "MorvaneUserSession"}, 0, "types/api/core/user_session.h", ""},
        Invocation{{"describe", "ComputerSpec.ManagedVmLocation"}, 0, "zabro.VirtualMachine  ", ""},
        Invocation{{"describe", "VmConfigSpec"}, 0, "Carries whatever other properties arrive", ""},
        Invocation{{"new", "zabro.vm.ConfigSpec"}, 0, "{\n  \"$type\": \"VmConfigSpec\"\n}", ""},
        Invocation{{"versions"}, 0, "6.6, but not 6.8", ""},
        Invocation{{"versions", "v9_0"}, 0, "morvane.ZabroConnectionSpec.sslCertificate", ""},
        Invocation{{"versions", "--all"}, 0, "zabro.version.v8_0_0_1", ""},
        Invocation{{"check", kRequest, kPattern, kManagedVm, kSession}, 0, "4 files, 4 ok", ""},
        Invocation{{"check", "--version", "version1", kSession}, 0, "ok, morvane.UserSession", ""},
        Invocation{{"diff", kRequest, kRequest}, 0, "", ""},
        Invocation{{"match", kRequest, kPattern}, 0, "matches", ""}));

INSTANTIATE_TEST_SUITE_P(
    TheAnswerIsNo, Commands,
    testing::Values(
        Invocation{
            {"check", kWrongKind}, 1, "", "1_wrong_kind.json:6:13: error: location.port: expected an int"},
        Invocation{{"check", "--version", "6.8", kRequest}, 1, "", "error: location"},
        Invocation{{"check", kRequest, kWrongKind}, 1, "2 files, 1 ok, 1 with problems", "error"},
        Invocation{
            {"types", "--since", "9.0", "--kind", "managed", "session"}, 1, "", "have the words but not"},
        Invocation{{"types", "locaton"}, 1, "", "\"locaton\" is in none; did you mean \"Location\"?"},
        Invocation{{"types", "PrivateKey"}, 1, "", "is in 0 and in members of 1 (--members)"},
        Invocation{{"types", "--json", "zzz"}, 1, "{\"types\": [\n]}\n", "no type matches"},
        Invocation{{"diff", kRequest, kManagedVm}, 1, "location\n", ""},
        Invocation{{"diff", kRequest, kSession}, 1, "the whole value", ""},
        Invocation{{"diff", "--paths", kRequest, kPattern}, 1, "location.port\nlocation.username\n", ""},
        Invocation{
            {"match", kPattern, kRequest}, 1, "location.password  a secret\n  - unset\n  + \"***\"", ""},
        Invocation{{"match", "--quiet", kSession, kRequest}, 1, "", ""}));

INSTANTIATE_TEST_SUITE_P(
    Errors, Commands,
    testing::Values(
        Invocation{{}, 2, "", "SUBCOMMAND"},
        Invocation{{"chekc", kRequest}, 2, "", "did you mean \"check\"?"},
        Invocation{{"types", "--kind", "class"}, 2, "", "morvane: error: --kind"},
        Invocation{{"check", "--version", "", kSession}, 2, "", "--version: must not be empty"},
        Invocation{{"describe", "\x1b[31m"}, 2, "", "\\x1b[31m"},
        Invocation{{"types", "--json", "--names"}, 2, "", "excludes"},
        Invocation{
            {"types", "--area", "prams"}, 2, "", "did you mean \"params\"?\nThe areas, with their numbers"},
        Invocation{{"types", "--areas", "--json"}, 2, "", "excludes"},
        Invocation{
            {"describe", "VmLocation"}, 2, "", "may be morvane.ComputerSpec.VmLocation, morvane.params"},
        Invocation{{"describe", "ComputerSpec.loction"}, 2, "", "has no member \"loction\"; did you mean"},
        Invocation{
            {"describe", "MorvaneLogin"},
            2,
            "",
            "morvane.SessionManager.login, morvane.agent.helper.Session"},
        Invocation{{"describe", "--json", "orlin.DynamicData"}, 2, "", "is built in"},
        Invocation{{"new", "ComputerSpec", "UserSession"}, 2, "", "--into"},
        Invocation{{"new", "VolumeBasedCloningParams", "--api-version", "0.1"}, 2, "", "no version"},
        Invocation{{"describe", "ComputerSpek"}, 2, "", "did you mean \"morvane.ComputerSpec\"?"},
        Invocation{
            {"describe", "LiveComputerLocaton"}, 2, "", "\"morvane.ComputerSpec.LiveComputerLocation\"?"},
        Invocation{{"new", "DiagnosticManager"}, 2, "", "of kind managed, expected a data or fault type"},
        Invocation{
            {"check", "--version", "6.7", kRequest}, 2, "", "there is no version \"6.7\"; did you mean"},
        Invocation{{"check", "--type", "UserSesion", kRequest}, 2, "", "did you mean"},
        Invocation{
            {"check", "/nowhere/at.all", kRequest},
            2,
            "2 files, 1 ok, 0 with problems, 1 not read",
            "cannot read /nowhere/at.all"},
        Invocation{{"check", Example("")}, 2, "", "it is a directory"},
        Invocation{{"check", "-", "-"}, 2, "", "only once"},
        Invocation{
            {"convert", kWrongKind}, 2, "", "1_wrong_kind.json:6:13: error: location.port: expected an int"},
        Invocation{
            {"convert", "--to-version", "1.0", Example("windows_machine.json")},
            2,
            "",
            "which version morvane.version.version1 does not have"},
        Invocation{{"diff", "-", "-"}, 2, "", "only once"}));

TEST(Convert, WritesWhatReadsBackAsTheSameValue) {
    for (const std::string& file : {kRequest, kManagedVm, kSession, Example("log_bundle.json")}) {
        for (const char* layout : {"--compact", "--indent=4"}) {
            const RunResult converted = RunTool({"convert", "--show-secrets", layout, file});
            EXPECT_EQ(converted.exitCode, 0);
            EXPECT_THAT(converted.err, IsEmpty());
            const RunResult compared = RunTool({"diff", file, "-"}, converted.out);
            EXPECT_EQ(compared.exitCode, 0) << compared.GetAll();
        }
    }
}

TEST(Convert, SaysWhatAnOlderVersionDoesNotHave) {
    const RunResult converted = RunTool({"convert", "--show-secrets", "--to-version", "6.0", kRequest});
    EXPECT_EQ(converted.exitCode, 0);
    EXPECT_THAT(
        converted.err, AllOf(
                           HasSubstr("location.clientPrivateKey is left out: it came with 7.0"),
                           HasSubstr("location.sslCertificate is left out: it came with 9.0")));
    EXPECT_EQ(RunTool({"check", "--version", "6.0", "-"}, converted.out).exitCode, 0);
    EXPECT_EQ(
        RunTool({"diff", "--paths", kRequest, "-"}, converted.out).out,
        "location.clientPrivateKey\nlocation.sslCertificate\n");
    // Of the two secrets one is left out, and not counted as hidden.
    EXPECT_THAT(RunTool({"convert", "--to-version", "6.0", kRequest}).err, HasSubstr("1 secret is written"));
}

/// Two values of an open type, how they differ, and what of the second one as a pattern does not match.
struct OpenComparison {
    const char* first;
    const char* second;
    const char* diff;
    const char* mismatches;
};

TEST(OpenTypes, AreComparedByTheirContent) {
    const OpenComparison cases[] = {
        {R"("a": 1, "b": {"c": [2, 3]})", R"("b": {"c": [2, 3]}, "a": 1)", "", ""},
        {R"("a": 1, "b": {"c": [2, 3]})", R"("b": {"c": [2, 4]})",
         "a\n  - 1\n  + unset\nb.c[1]\n  - 3\n  + 4\n", "b.c[1]\n  - 3\n  + 4\n"},
        {R"("b": {"c": [2, 3], "d": null})", R"("b": {"c": [2]})",
         "b.c[1]\n  - 3\n  + unset\nb.d\n  - null\n  + unset\n", "b.c[1]\n  - 3\n  + unset\n"},
        {R"("a": 1)", R"("a": {}, "two\u001b words": 2)",
         "a\n  - 1\n  + {}\n\"two\\u001b words\"\n  - unset\n  + 2\n",
         "a\n  - 1\n  + {}\n\"two\\u001b words\"\n  - unset\n  + 2\n"},
        {R"("u": {"password": {"x": 1}})", R"("u": {"password": {"x": 2}})",
         "u.password.x  a secret\n  - \"***\"\n  + \"***\"\n",
         "u.password.x  a secret\n  - \"***\"\n  + \"***\"\n"},
    };
    const TestSupport::TemporaryFolder folder;
    const auto write = [&](const char* name, const char* content) {
        return folder.Write(name, R"({"$type": "VmConfigSpec", )" + std::string(content) + "}");
    };
    for (const OpenComparison& test : cases) {
        const std::string first = write("first.json", test.first);
        const std::string second = write("second.json", test.second);
        EXPECT_EQ(RunTool({"diff", first, second}).out, test.diff);
        const RunResult matched = RunTool({"match", first, second});
        const bool matches = *test.mismatches == '\0';
        EXPECT_EQ(matched.exitCode, matches ? 0 : 1);
        EXPECT_THAT(matched.out, EndsWith(matches ? "matches\n" : test.mismatches));
    }
}

TEST(OpenTypes, AreConvertedWhole) {
    const std::string text =
        R"({"$type": "VmConfigSpec", "n": 1.50, "guest": {"adminPassword": "sesame", "tokens": [1]}})";
    const RunResult shown =
        RunTool({"convert", "--show-secrets", "--compact", "--to-version", "1.0", "-"}, text);
    EXPECT_EQ(shown.out, text + "\n");
    const RunResult hidden = RunTool({"convert", "--compact", "-"}, text);
    EXPECT_EQ(
        hidden.out, "{\"$type\": \"VmConfigSpec\", \"n\": 1.50, "
                    "\"guest\": {\"adminPassword\": \"***\", \"tokens\": \"***\"}}\n");
    EXPECT_THAT(hidden.err, HasSubstr("2 secrets are written as \"***\""));
    EXPECT_THAT(
        RunTool({"check", "-"}, R"({"$type": "NotFound", "a": {"password": "sesame", "password": 1}})")
            .GetAll(),
        AllOf(HasSubstr("a: there is a second member"), Not(HasSubstr("sesame"))));
}

TEST(Arguments, ArriveAsTheyWereGiven) {
    const TemporaryFolder folder;
    const std::string file = folder.Write("gr\u00F6\u00DFe-\u65E5\u672C.json", "{");
    EXPECT_THAT(RunTool({"check", file}).GetAll(), HasSubstr(file + ":1:"));
    for (const std::string name : {"a \"b\\\" c\\", "\u00FC\U0001F600", "*"}) {
        EXPECT_THAT(RunTool({"describe", name}).err, HasSubstr(name));
    }
}

TEST(Colours, AreShownOnlyWhenAskedForOffTheTerminal) {
    EXPECT_THAT(
        RunTool({"diff", "--color", "always", kRequest, kPattern}).out, HasSubstr("\x1b[31m- 2222\x1b[0m"));
}

TEST(Completion, KnowsCommandsAndOptionsInEveryShell) {
    for (const char* shell : {"bash", "zsh", "fish"}) {
        EXPECT_THAT(
            RunTool({"completion", shell}).out, AllOf(HasSubstr("describe"), HasSubstr("show-secrets")));
    }
}

TEST(Completion, OffersCommandsOptionsTypesAndWords) {
#ifdef _WIN32
    GTEST_SKIP() << "takes a shell that sources the script";
#endif
    const std::string script = RunTool({"completion", "bash"}).out;
    const std::string folder = std::filesystem::path(MORVANE_PROGRAM).parent_path().string();
    const auto complete = [&](const std::string& words) {
        return RunProgram(
                   "/bin/bash", {"-c", "PATH=" + folder + ":$PATH\n" + script + "COMP_WORDS=(" + words
                                           + "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _morvane;"
                                             " echo \"${COMPREPLY[@]}\""})
            .out;
    };
    EXPECT_EQ(complete("morvane ver"), "versions\n");
    EXPECT_EQ(complete("morvane types --k"), "--kind\n");
    EXPECT_EQ(complete("morvane types --kind m"), "managed\n");
    EXPECT_EQ(complete("morvane types --area agent.internal."), "agent.internal.fault\n");
    EXPECT_EQ(complete("morvane describe morvane.User"), "morvane.UserSession\n");
    EXPECT_EQ(complete("morvane check --version 9"), "9.0\n");
}

} // namespace

} // namespace ToolTests
