// Runs the compiler as a build does.

#include "tests/schemac/test_support.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <sys/wait.h>

namespace Schemac::Test {
namespace {

class CommandLine : public testing::Test {
protected:
    /// Runs the compiler in the temporary folder and returns its exit code; what it printed is in `m_output`.
    int Run(const std::string& arguments) {
        const auto log = m_folder.GetPath() / "log";
        const std::string command = "cd '" + m_folder.GetPath().string() + "' && '" SCHEMAC_EXECUTABLE "' "
                                  + arguments + " >'" + log.string() + "' 2>&1";
        const int status = std::system(command.c_str());
        m_output = ReadFile(log);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    void SetUp() override {
        WriteFile(
            m_folder.GetPath() / "good.tavik",
            "namespace m;\nversion version1;\n/// D.\ndata A wire A since version1;\n");
        WriteFile(m_folder.GetPath() / "bad.tavik", "namespace m\n");
    }

    TemporaryFolder m_folder;
    std::string m_output;
};

TEST_F(CommandLine, ExitCodes) {
    EXPECT_EQ(Run("--check good.tavik"), 0);
    EXPECT_EQ(m_output, "");
    EXPECT_EQ(Run("--check bad.tavik"), 1);
    EXPECT_EQ(
        m_output,
        "bad.tavik:1:12: error: expected ';' after the namespace [E0104]\nnamespace m\n           ^\n");
    EXPECT_EQ(Run("--check missing.tavik"), 1);
    EXPECT_EQ(m_output, "schemac: error: cannot read 'missing.tavik': No such file or directory [E0001]\n");
    EXPECT_EQ(Run("--help"), 0);
    EXPECT_EQ(Run(""), 2);
    EXPECT_EQ(Run("good.tavik"), 2);
    EXPECT_EQ(Run("--check --dump good.tavik"), 2);
    EXPECT_EQ(Run("--out out --depfile d good.tavik"), 2);
}

TEST_F(CommandLine, DumpPrintsTheModel) {
    EXPECT_EQ(Run("--dump --library lib good.tavik"), 0);
    EXPECT_TRUE(m_output.starts_with("{\n  \"library\": \"lib\",\n")) << m_output;
    EXPECT_NE(m_output.find("\"name\": \"m.A\""), std::string::npos);
}

TEST_F(CommandLine, WritesStampAndDepfile) {
    WriteFile(m_folder.GetPath() / "other.tavik", "namespace n;\n");
    EXPECT_EQ(Run("--library lib --out out --import other.tavik --depfile d --stamp s good.tavik"), 0)
        << m_output;
    EXPECT_EQ(ReadFile(m_folder.GetPath() / "d"), "s: \\\n  good.tavik \\\n  other.tavik\n");
    EXPECT_TRUE(std::filesystem::exists(m_folder.GetPath() / "s"));
}

TEST_F(CommandLine, KindsOfOutputShareAFolder) {
    const auto out = m_folder.GetPath() / "out";
    EXPECT_EQ(Run("--library lib --out out good.tavik"), 0) << m_output;
    EXPECT_EQ(Run("--library lib --out out --emit proto good.tavik"), 0) << m_output;
    EXPECT_TRUE(std::filesystem::exists(out / "a.h"));
    EXPECT_NE(ReadFile(out / "good.proto").find("\npackage lib;\n"), std::string::npos);
    EXPECT_EQ(Run("--library lib --out both --emit cpp --emit proto --package a.b good.tavik"), 0)
        << m_output;
    EXPECT_TRUE(std::filesystem::exists(m_folder.GetPath() / "both/a.h"));
    EXPECT_NE(ReadFile(m_folder.GetPath() / "both/good.proto").find("\npackage a.b;\n"), std::string::npos);
    EXPECT_EQ(Run("--out out --emit perl good.tavik"), 2);
    EXPECT_EQ(Run("--out out --emit proto --package a..b good.tavik"), 2);
    EXPECT_EQ(Run("--out out --emit proto good.tavik"), 2); // called like nothing
}

TEST_F(CommandLine, NothingIsWrittenUnlessEverythingCanBe) {
    WriteFile(
        m_folder.GetPath() / "clash.tavik",
        "namespace m;\nversion version1;\n/// D.\ndata A wire A since version1 { aB : int; a_b : int; }\n");
    EXPECT_EQ(Run("--library lib --out out --emit cpp --emit proto --stamp s clash.tavik"), 1);
    EXPECT_EQ(
        m_output, "schemac: error: type 'm.A': property 'a_b' needs the protobuf name 'a_b', which property "
                  "'aB' has\n");
    EXPECT_FALSE(std::filesystem::exists(m_folder.GetPath() / "out"));
    EXPECT_FALSE(std::filesystem::exists(m_folder.GetPath() / "s"));
}

TEST_F(CommandLine, ErrorsLeaveNoStamp) {
    EXPECT_EQ(Run("--library lib --out out --stamp s bad.tavik"), 1);
    EXPECT_FALSE(std::filesystem::exists(m_folder.GetPath() / "s"));
    EXPECT_FALSE(std::filesystem::exists(m_folder.GetPath() / "out"));
}

} // namespace
} // namespace Schemac::Test
