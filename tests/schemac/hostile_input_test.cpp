#include "schemac/dump/dump.h"
#include "schemac/emit/template.h"
#include "tests/schemac/test_support.h"
#include "tests/support/pace.h"

#include <gtest/gtest.h>

#include <sstream>

namespace Schemac::Test {
namespace {

std::string Repeat(std::string_view text, std::size_t count) {
    std::string result;
    for (std::size_t index = 0; index < count; ++index) {
        result += text;
    }
    return result;
}

/// Prints as well: an error that cannot be shown is no better than a crash.
std::string CompileAndPrint(const std::string& text) {
    const auto compiled = CompileText(text);
    std::ostringstream out;
    PrintDiagnostics(compiled->reporter, compiled->sources, {}, out);
    if (compiled->module != nullptr) {
        out << DumpModule(*compiled->module);
    }
    return out.str();
}

TEST(HostileInput, BrokenOffAnywhere) {
    const std::string text = ReadFile(DataFolder() / "good/everything.tavik");
    for (std::size_t length = 0; length < text.size(); ++length) {
        CompileAndPrint(text.substr(0, length));
    }
}

TEST(HostileInput, AnyByteReplaced) {
    const std::string text = ReadFile(DataFolder() / "good/keywords.tavik");
    for (std::size_t at = 0; at < text.size(); ++at) {
        for (const char c : {'\0', '\xFF', '{', '}', ';', '"', ':', '_', '('}) {
            std::string changed = text;
            changed[at] = c;
            CompileAndPrint(changed);
        }
    }
}

struct HostileCase {
    const char* name;
    std::string text;
    const char* errors;
};

class HostileText : public testing::TestWithParam<HostileCase> {};

TEST_P(HostileText, IsRefused) {
    const auto compiled = CompileText(GetParam().text);
    EXPECT_EQ(ErrorText(*compiled), GetParam().errors);
}

const std::string kHead = "namespace m; version v; ";

const HostileCase kHostileCases[] = {
    {"Nul", std::string("namespace m;\0", 13), "E0003: control character 0x00 is not allowed in a schema\n"},
    {"ControlInComment", "// \x1B[31m", "E0003: control character 0x1B is not allowed in a schema\n"},
    {"InvalidUtf8", "// \xC3(", "E0002: the file is not valid UTF-8 from here on\n"},
    {"OverlongUtf8", "// \xC0\x80", "E0002: the file is not valid UTF-8 from here on\n"},
    {"Surrogate", "// \xED\xA0\x80", "E0002: the file is not valid UTF-8 from here on\n"},
    {"CutUtf8", "// \xE2\x82", "E0002: the file is not valid UTF-8 from here on\n"},
    {"TooDeep", kHead + Repeat("data A wire A since v { ", 65) + Repeat("} ", 65),
     "E0107: types are nested more than 64 deep\n"},
    {"VeryDeep", kHead + Repeat("data A wire A since v { ", 100000),
     "E0107: types are nested more than 64 deep\nE0103: expected '}', found the end of the file\n"},
};

INSTANTIATE_TEST_SUITE_P(Texts, HostileText, testing::ValuesIn(kHostileCases), [](const auto& test) {
    return test.param.name;
});

TEST(HostileInput, LongChainsOfBasesAndVersions) {
    std::string text = "namespace m;\nversion v0;\n";
    const int count = TestSupport::kIsSanitized ? 10'000 : 30'000; // more than a stack has room for
    const std::string last = "T" + std::to_string(count - 1);
    for (int index = 1; index < count; ++index) {
        const std::string number = std::to_string(index);
        const std::string before = std::to_string(index - 1);
        text += Emit::Fill(
            "version v$this$ includes v$last$;\n/// D.\ndata T$last$ : T$this$ wire T$last$ since v0;\n",
            {{"this", number}, {"last", before}});
    }
    const auto closed = CompileText(text + "/// D.\ndata " + last + " : T0 wire " + last + " since v0;\n");
    EXPECT_EQ(closed->reporter.ErrorCount(), 1U); // one long circle
    EXPECT_LT(ErrorText(*closed).size(), 300U);
    const auto open = CompileText(text + "/// D.\ndata " + last + " wire " + last + " since v0;\n");
    ASSERT_NE(open->module, nullptr) << ErrorText(*open).substr(0, 500);
    EXPECT_EQ(open->module->DataTypes().front()->name, last);
}

TEST(HostileInput, LinesOfMegabytes) {
    const std::string line = kHead + "data A wire A since v { a : " + Repeat("x", 1 << 20U) + "; }";
    EXPECT_LT(CompileAndPrint(line + Repeat(" ", 1 << 20U) + "\x7F").size(), 1000U);
    EXPECT_NE(CompileAndPrint(line), "");
}

TEST(HostileInput, FilesThatCannotBeRead) {
    const TemporaryFolder folder;
    const auto root = folder.GetPath() / "root";
    WriteFile(root / "good.tavik", "");
    WriteFile(folder.GetPath() / "outside.tavik", "");
    std::filesystem::create_directories(root / "folder.tavik");
    const auto compiled = CompileFiles(
        root, {root / "good.tavik", root / "missing.tavik", root / "folder.tavik",
               root / "../root/good.tavik", folder.GetPath() / "outside.tavik"});
    const auto quoted = [](const std::filesystem::path& path) { return "'" + path.string() + "'"; };
    EXPECT_EQ(
        ErrorText(*compiled), "E0001: cannot read " + quoted(root / "missing.tavik")
                                  + ": No such file or directory\n"
                                    "E0001: cannot read "
                                  + quoted(root / "folder.tavik")
                                  + ": it is a folder\n"
                                    "E0005: "
                                  + quoted(root / "../root/good.tavik")
                                  + " is given twice\n"
                                    "E0004: "
                                  + quoted(folder.GetPath() / "outside.tavik")
                                  + " does not lie below the source root\n");
}

} // namespace
} // namespace Schemac::Test
