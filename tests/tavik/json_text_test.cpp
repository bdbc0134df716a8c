#include "tavik/value/json_text.h"

#include "tavik/value/text_buffer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace {

TEST(Utf8, IsCheckedToTheLetter) {
    struct Case {
        const char* text;
        std::size_t invalid;
    };

    constexpr std::size_t kNone = std::string_view::npos;
    for (const Case& row : {
             Case{"", kNone},
             {"plain", kNone},
             {"\xC3\xBC\xE2\x82\xAC\xF0\x9F\x90\xA7", kNone},
             {"\xED\x9F\xBF\xEE\x80\x80", kNone}, // around the surrogates
             {"\xF4\x8F\xBF\xBF", kNone},         // the last code point
             {"a\x80", 1},                        // continuation alone
             {"a\xC3", 1},                        // cut off
             {"ab\xE2\x82", 2},                   // cut off
             {"\xC0\xAF", 0},                     // overlong
             {"\xE0\x9F\xBF", 0},                 // overlong
             {"\xF0\x8F\xBF\xBF", 0},             // overlong
             {"\xED\xA0\x80", 0},                 // surrogate
             {"\xF4\x90\x80\x80", 0},             // beyond the last code point
             {"\xFF", 0},
         }) {
        SCOPED_TRACE(testing::PrintToString(std::string(row.text)));
        EXPECT_EQ(Tavik::FindInvalidUtf8(row.text), row.invalid);
        std::string out;
        EXPECT_EQ(Tavik::AppendQuoted(out, row.text), row.invalid == kNone);
        EXPECT_TRUE(Tavik::IsUtf8(out));
    }
    std::string out;
    EXPECT_FALSE(Tavik::AppendQuoted(out, "a\xFFz\n\x01\x7F\"\\"));
    EXPECT_EQ(out, "\"a\xEF\xBF\xBDz\\n\\u0001\\u007f\\\"\\\\\"");
}

TEST(Quoted, LetsNothingSteerTheTerminal) {
    std::string out;
    EXPECT_TRUE(Tavik::AppendQuoted(
        out, "a\xC2\x9B"
             "31m\xE2\x80\xAE\xD8\x9C\xE2\x81\xA6 \xC2\xA0\xE2\x82\xAC\xF0\x9F\x90\xA7"));
    EXPECT_EQ(out, "\"a\\u009b31m\\u202e\\u061c\\u2066 \xC2\xA0\xE2\x82\xAC\xF0\x9F\x90\xA7\"");
}

/// A text and how it stands between quotes.
struct Piece {
    std::string text;
    std::string written;
    bool isUtf8 = true;
};

std::vector<Piece> AllPieces() {
    std::vector<Piece> pieces = {
        {"\xC3\xBC", "\xC3\xBC"},
        {"\xC2\x85", "\\u0085"},
        {"\xE2\x82\xAC", "\xE2\x82\xAC"},
        {"\xE2\x80\xAE", "\\u202e"},
        {"\xF0\x9F\x90\xA7", "\xF0\x9F\x90\xA7"},
        {"\xE2\x82", "\xEF\xBF\xBD\xEF\xBF\xBD", false},
        {"\"\\\n\"", R"(\"\\\n\")"}};
    for (int byte = 0; byte < 256; ++byte) {
        const char c = static_cast<char>(byte);
        char escape[16];
        std::snprintf(escape, sizeof(escape), "\\u%04x", byte);
        const bool isControl = byte < 0x20 || byte == 0x7F;
        const std::size_t named = std::string_view("\"\\\n\r\t").find(c);
        pieces.push_back(
            named != std::string_view::npos ? Piece{{c}, std::string("\\") + "\"\\nrt"[named]}
            : byte >= 0x80                  ? Piece{{c}, "\xEF\xBF\xBD", false}
            : isControl                     ? Piece{{c}, escape}
                                            : Piece{{c}, {c}});
    }
    return pieces;
}

TEST(Quoted, IsTheSameWhereverACharacterStands) {
    constexpr std::size_t kMost = 18; // more than two blocks
    for (const Piece& piece : AllPieces()) {
        for (std::size_t before = 0; before <= kMost; ++before) {
            for (std::size_t after = 0; after <= kMost; ++after) {
                // Ends where its storage does, for the sanitizer to see what is read behind it.
                const std::string text = std::string(before, 'a') + piece.text + std::string(after, 'z');
                const std::vector<char> exact(text.begin(), text.end());
                const std::string_view view(exact.data(), exact.size());
                std::string out = "kept";
                ASSERT_EQ(Tavik::AppendQuoted(out, view), piece.isUtf8);
                ASSERT_EQ(
                    out, "kept\"" + std::string(before, 'a') + piece.written + std::string(after, 'z') + '"');
                ASSERT_EQ(Tavik::FindInvalidUtf8(view), piece.isUtf8 ? std::string_view::npos : before);
            }
        }
    }
}

TEST(TextBuffer, GrowsAsFarAsNeeded) {
    std::string out(5000, 'o');
    std::string expected = out;
    {
        Tavik::TextBuffer buffer(out);
        for (std::size_t size = 0; size < 400; ++size) {
            const std::string text(size, static_cast<char>('a' + size % 26));
            buffer.Append(text);
            buffer.AppendRepeated(size % 7, '.');
            buffer.AppendNumber(std::numeric_limits<std::int64_t>::min());
            buffer.Append(',');
            Tavik::AppendQuoted(buffer, std::string(size, '\x01')); // six times as long
            expected += text + std::string(size % 7, '.') + "-9223372036854775808,\"";
            for (std::size_t i = 0; i < size; ++i) {
                expected += "\\u0001";
            }
            expected += '"';
        }
    }
    EXPECT_EQ(out, expected);
}

TEST(Base64, RoundTrips) {
    const std::string bytes = std::string("\0\xFF\x7F", 3) + "any bytes";
    for (std::size_t length = 0; length <= bytes.size(); ++length) {
        std::string text;
        Tavik::AppendBase64(text, bytes.data(), length);
        std::string back;
        ASSERT_TRUE(Tavik::DecodeBase64(std::string_view(text).substr(1, text.size() - 2), back));
        EXPECT_EQ(back, bytes.substr(0, length));
    }
    for (const char* wrong :
         {"a", "ab", "abc", "a===", "====", "ab=c", "ab==abcd", "ab c", "ab-_", "abcd="}) {
        std::string out;
        EXPECT_FALSE(Tavik::DecodeBase64(wrong, out)) << wrong;
    }
}

TEST(Float, IsWrittenShortAndExact) {
    for (const float value : {0.0F, -0.0F, 0.1F, 1e-45F, std::numeric_limits<float>::max(), 16777217.0F}) {
        std::string text;
        EXPECT_TRUE(Tavik::AppendFloat(text, value));
        EXPECT_EQ(std::strtof(text.c_str(), nullptr), value) << text;
    }
    std::string text;
    EXPECT_FALSE(Tavik::AppendFloat(text, -std::numeric_limits<float>::infinity()));
    EXPECT_FALSE(Tavik::AppendFloat(text, std::nanf("")));
    EXPECT_EQ(text, "\"-Infinity\"\"NaN\"");
}

} // namespace
