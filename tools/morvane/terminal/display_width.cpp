#include "tools/morvane/terminal/display_width.h"

#include <algorithm>
#include <array>

namespace Tool {

namespace {

constexpr std::string_view kEllipsis = "…";

struct Range {
    char32_t first;
    char32_t last;
};

/// Blocks of marks without a width of their own.
constexpr std::array<Range, 7> kCombining = {{
    {0x0300, 0x036F},
    {0x1AB0, 0x1AFF},
    {0x1DC0, 0x1DFF},
    {0x200B, 0x200F},
    {0x20D0, 0x20FF},
    {0xFE00, 0xFE0F},
    {0xFE20, 0xFE2F},
}};

/// Blocks of wide characters.
constexpr std::array<Range, 10> kWide = {{
    {0x1100, 0x115F},   // Hangul initial consonants
    {0x2E80, 0x303E},   // radicals and East Asian punctuation
    {0x3041, 0x4DBF},   // Kana and ideographs
    {0x4E00, 0xA4CF},   // ideographs and Yi
    {0xAC00, 0xD7A3},   // Hangul syllables
    {0xF900, 0xFAFF},   // ideographs
    {0xFE30, 0xFE6F},   // East Asian punctuation
    {0xFF01, 0xFF60},   // full-width forms
    {0x1F300, 0x1FAFF}, // pictographs
    {0x20000, 0x3FFFD}, // ideographs
}};

template <std::size_t size>
bool Contains(const std::array<Range, size>& ranges, char32_t point) {
    return std::any_of(ranges.begin(), ranges.end(), [point](const Range& range) {
        return point >= range.first && point <= range.last;
    });
}

bool IsContinuation(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

/// Size of the code point that a text begins with, together with what belongs to its bytes.
std::size_t GetPointSize(std::string_view text) {
    std::size_t size = 1;
    while (size < text.size() && IsContinuation(text[size])) {
        ++size;
    }
    return size;
}

std::size_t GetPointWidth(std::string_view bytes) {
    const auto lead = static_cast<unsigned char>(bytes.front());
    if (lead < 0xC0) {
        return IsContinuation(bytes.front()) ? 0 : 1;
    }
    char32_t point = lead & (lead < 0xE0 ? 0x1FU : lead < 0xF0 ? 0x0FU : 0x07U);
    for (const char c : bytes.substr(1)) {
        point = (point << 6U) | (static_cast<unsigned char>(c) & 0x3FU);
    }
    return Contains(kCombining, point) ? 0 : Contains(kWide, point) ? 2 : 1;
}

} // namespace

std::size_t GetDisplayWidth(std::string_view text) {
    std::size_t width = 0;
    while (!text.empty()) {
        const std::size_t size = GetPointSize(text);
        width += GetPointWidth(text.substr(0, size));
        text.remove_prefix(size);
    }
    return width;
}

std::string Pad(std::string_view text, std::size_t width) {
    const std::size_t own = GetDisplayWidth(text);
    return std::string(text) + std::string(width > own ? width - own : 0, ' ');
}

std::string Abbreviate(std::string_view text, std::size_t width) {
    if (GetDisplayWidth(text) <= width) {
        return std::string(text);
    }
    std::size_t end = 0;
    for (std::size_t used = GetDisplayWidth(kEllipsis);;) {
        const std::size_t size = GetPointSize(text.substr(end));
        used += GetPointWidth(text.substr(end, size));
        if (used > width) {
            break;
        }
        end += size;
    }
    return std::string(text.substr(0, end)) + (width == 0 ? "" : std::string(kEllipsis));
}

} // namespace Tool
