#include "tests/tools/tool_runner.h"
#include "tools/morvane/terminal/display_width.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <sstream>
#include <string>

namespace ToolTests {

namespace {

using testing::HasSubstr;
using testing::Not;

class Terminal : public testing::Test {
protected:
    void SetUp() override {
        if (!kHasTerminals) {
            GTEST_SKIP() << "takes a pseudo-terminal";
        }
    }
};

TEST_F(Terminal, ShowsOneTypeALineWithinItsWidth) {
    for (const int columns : {1, 16, 40, 80, 200}) {
        const RunResult result = RunToolAtTerminal({"types", "--area", "agent"}, columns, {"NO_COLOR=1"});
        EXPECT_EQ(result.exitCode, 0);
        std::istringstream lines(result.out);
        std::string line;
        std::size_t count = 0;
        while (std::getline(lines, line)) {
            ++count;
            if (columns >= 16) { // with less, the kinds and versions stay
                EXPECT_LE(Tool::GetDisplayWidth(line), static_cast<std::size_t>(columns)) << line;
            }
        }
        const std::string names = RunTool({"types", "--area", "agent", "--names"}).out;
        // The title and the summary stand around them.
        EXPECT_EQ(count, static_cast<std::size_t>(std::count(names.begin(), names.end(), '\n')) + 2);
    }
}

TEST_F(Terminal, ShowsHowManyTypesThereAre) {
    EXPECT_THAT(
        RunToolAtTerminal({"types", "--base", "ComputerSpec.VmLocation"}, 80, {"NO_COLOR=1"}).out,
        testing::EndsWith("\n3 types: 3 data\n"));
}

TEST_F(Terminal, HasColoursUnlessTheyAreUnwanted) {
    const std::vector<std::string> arguments = {"describe", "ComputerSpec.LiveComputerLocation"};
    EXPECT_THAT(RunToolAtTerminal(arguments, 80).out, HasSubstr("\x1b["));
    for (const char* variable : {"NO_COLOR=1", "TERM=dumb"}) {
        EXPECT_THAT(RunToolAtTerminal(arguments, 80, {variable}).out, Not(HasSubstr("\x1b[")));
    }
    EXPECT_THAT(
        RunToolAtTerminal({"--color", "never", "describe", "ComputerSpec"}, 80).out, Not(HasSubstr("\x1b[")));
}

} // namespace

} // namespace ToolTests
