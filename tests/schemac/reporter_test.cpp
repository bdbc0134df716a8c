#include "schemac/diagnostic/catalogue.h"
#include "schemac/diagnostic/reporter.h"

#include <gtest/gtest.h>

#include <sstream>

namespace Schemac {
namespace {

std::string Print(const Reporter& reporter, const SourceManager& sources, const PrintOptions& options = {}) {
    std::ostringstream out;
    PrintDiagnostics(reporter, sources, options, out);
    return out.str();
}

TEST(Reporter, ShowsPlaceLineAndNote) {
    SourceManager sources;
    Reporter reporter;
    const std::uint32_t file = sources.AddText("a.tavik", "data A;\r\n\tï Ab : X;\n");
    reporter.Report({file, 18, 1}, Diagnostics::kUnknownType, "X", "");
    reporter.Report({file, 13, 2}, Diagnostics::kDuplicateType, "Ab")
        .AddNote({file, 5, 1}, Diagnostics::kFirstDeclaredHere)
        .AddNote({}, Diagnostics::kFirstDeclaredHere);
    EXPECT_EQ(
        Print(reporter, sources), "a.tavik:2:4: error: type 'Ab' is declared twice [E0203]\n"
                                  "\tï Ab : X;\n"
                                  "\t  ^~\n"
                                  "a.tavik:1:6: note: first declared here\n"
                                  "data A;\n"
                                  "     ^\n"
                                  "a.tavik:2:9: error: no type is named 'X' [E0201]\n"
                                  "\tï Ab : X;\n"
                                  "\t       ^\n");
}

TEST(Reporter, PlacesAtEndsAndWithoutFile) {
    SourceManager sources;
    Reporter reporter;
    const std::uint32_t file = sources.AddText("a.tavik", "data A");
    reporter.Report({file, 6, 1}, Diagnostics::kDanglingDoc);
    reporter.Report({}, Diagnostics::kFileTwice, "x");
    EXPECT_EQ(
        Print(reporter, sources),
        "schemac: error: 'x' is given twice [E0005]\n"
        "a.tavik:1:7: error: this documentation comment stands before no declaration "
        "[E0105]\n"
        "data A\n"
        "      ^\n");
}

TEST(Reporter, CountsWhatItDoesNotShow) {
    SourceManager sources;
    Reporter reporter;
    const std::uint32_t file = sources.AddText("a.tavik", "x");
    for (int index = 0; index < 5; ++index) {
        reporter.Report({file, 0, 1}, Diagnostics::kDanglingDoc);
    }
    const std::string text = Print(reporter, sources, {false, 3});
    EXPECT_TRUE(text.ends_with("^\nschemac: 2 more errors\n")) << text;
    EXPECT_EQ(text.find('\033'), std::string::npos);
    EXPECT_NE(Print(reporter, sources, {true, 3}).find("\033[1;31merror: \033[0m"), std::string::npos);
}

} // namespace
} // namespace Schemac
