#include "schemac/emit/output.h"
#include "tests/schemac/test_support.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace Schemac::Emit {
namespace {

namespace fs = std::filesystem;
using Test::ReadFile;
using Test::TemporaryFolder;
using Test::WriteFile;

TEST(OutputSet, WritesOnlyWhatChangedAndRemovesWhatIsGone) {
    const TemporaryFolder folder;
    OutputSet first;
    first.Add("api/a.h", "a1");
    first.Add("api/b.h", "b1");
    first.Add("api/old/c.h", "c1");
    EXPECT_EQ(first.WriteTo(folder.GetPath()).written, 3U);
    WriteFile(folder.GetPath() / "api/by_hand.h", "not ours");
    const auto longAgo = fs::last_write_time(folder.GetPath() / "api/a.h") - std::chrono::hours(1);
    fs::last_write_time(folder.GetPath() / "api/a.h", longAgo);

    OutputSet second;
    second.Add("api/a.h", "a1");
    second.Add("api/b.h", "b2");
    const OutputSet::Summary summary = second.WriteTo(folder.GetPath());
    EXPECT_EQ(summary.written, 1U);
    EXPECT_EQ(summary.unchanged, 1U);
    EXPECT_EQ(summary.removed, 1U);
    EXPECT_EQ(fs::last_write_time(folder.GetPath() / "api/a.h"), longAgo);
    EXPECT_EQ(ReadFile(folder.GetPath() / "api/b.h"), "b2");
    EXPECT_FALSE(fs::exists(folder.GetPath() / "api/old"));
    EXPECT_EQ(ReadFile(folder.GetPath() / "api/by_hand.h"), "not ours");
}

TEST(OutputSet, ManifestCannotReachOutside) {
    const TemporaryFolder folder;
    WriteFile(folder.GetPath() / "precious", "x");
    WriteFile(
        folder.GetPath() / "out/.schemac-manifest",
        "../precious\n" + (folder.GetPath() / "precious").string() + "\n");
    OutputSet().WriteTo(folder.GetPath() / "out");
    EXPECT_TRUE(fs::exists(folder.GetPath() / "precious"));
}

TEST(OutputSet, RefusesBadPaths) {
    OutputSet output;
    output.Add("a.h", "");
    for (const char* path : {"a.h", "", "/tmp/a.h", "../a.h", "b/../../a.h", "./b.h"}) {
        EXPECT_THROW(output.Add(path, ""), std::logic_error) << path;
    }
}

TEST(OutputSet, NamesTheFileThatCannotBeWritten) {
    const TemporaryFolder folder;
    fs::create_directories(folder.GetPath() / "a.h");
    OutputSet output;
    output.Add("a.h", "text");
    try {
        output.WriteTo(folder.GetPath());
        FAIL() << "a folder was written to";
    } catch (const std::runtime_error& error) {
        EXPECT_EQ(std::string(error.what()), "cannot write '" + (folder.GetPath() / "a.h").string() + "'");
    }
}

TEST(Depfile, IsEscapedForMake) {
    EXPECT_EQ(
        DepfileText("out/my stamp", {"a.tavik", "$b#c.tavik"}),
        "out/my\\ stamp: \\\n  a.tavik \\\n  $$b\\#c.tavik\n");
}

} // namespace
} // namespace Schemac::Emit
