#include "tools/morvane/terminal/display_width.h"

#include <gtest/gtest.h>

namespace ToolTests {

namespace {

struct Text {
    const char* text;
    std::size_t width;
    std::size_t room;
    const char* abbreviated;
};

TEST(DisplayWidth, IsCountedInColumns) {
    const Text texts[] = {
        {"", 0, 0, ""},
        {"plain", 5, 5, "plain"},
        {"plain", 5, 4, "pla…"},
        {"plain", 5, 1, "…"},
        {"plain", 5, 0, ""},
        {"Größe", 5, 3, "Gr…"},
        {"e\u0301te\u0301", 3, 2, "e\u0301…"}, // the marks stay with their letters
        {"東京の機械", 10, 10, "東京の機械"},
        {"東京の機械", 10, 6, "東京…"}, // half of a character does not fit
        {"東京の機械", 10, 7, "東京の…"},
        {"한글", 4, 3, "한…"},
        {"a😀b", 4, 3, "a…"},
        {"├─ x", 4, 4, "├─ x"},
        {"\xff\x80 broken \xe6", 10, 10, "\xff\x80 broken \xe6"},
    };
    for (const Text& test : texts) {
        EXPECT_EQ(Tool::GetDisplayWidth(test.text), test.width) << test.text;
        const std::string abbreviated = Tool::Abbreviate(test.text, test.room);
        EXPECT_EQ(abbreviated, test.abbreviated);
        EXPECT_LE(Tool::GetDisplayWidth(abbreviated), test.room);
        EXPECT_EQ(Tool::GetDisplayWidth(Tool::Pad(test.text, 12)), 12U) << test.text;
    }
}

} // namespace

} // namespace ToolTests
