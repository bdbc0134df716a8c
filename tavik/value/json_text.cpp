#include "tavik/value/json_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace Tavik {

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD"; // U+FFFD
constexpr std::string_view kBase64 = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

bool IsContinuation(unsigned char byte) {
    return (byte & 0xC0U) == 0x80U;
}

/// Length of the well-formed UTF-8 sequence at the start of `text`, which is not empty; 0 when it is none.
std::size_t SequenceLength(std::string_view text) {
    const auto at = [&](std::size_t i) { return static_cast<unsigned char>(i < text.size() ? text[i] : 0); };
    const unsigned char lead = at(0);
    if (lead < 0x80) {
        return 1;
    }
    if (lead >= 0xC2 && lead <= 0xDF) {
        return IsContinuation(at(1)) ? 2 : 0;
    }
    if (lead >= 0xE0 && lead <= 0xEF) {
        // Neither overlong forms nor surrogates.
        const bool second = at(1) >= (lead == 0xE0 ? 0xA0 : 0x80) && at(1) <= (lead == 0xED ? 0x9F : 0xBF);
        return second && IsContinuation(at(2)) ? 3 : 0;
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        const bool second = at(1) >= (lead == 0xF0 ? 0x90 : 0x80) && at(1) <= (lead == 0xF4 ? 0x8F : 0xBF);
        return second && IsContinuation(at(2)) && IsContinuation(at(3)) ? 4 : 0;
    }
    return 0;
}

/// Appends a character of the basic plane as "\u...".
void AppendUnicodeEscape(std::string& out, std::uint32_t character) {
    constexpr std::string_view digits = "0123456789abcdef";
    out += "\\u";
    for (const unsigned shift : {12U, 8U, 4U, 0U}) {
        out += digits[(character >> shift) & 0xFU];
    }
}

void AppendEscaped(std::string& out, char c) {
    switch (c) {
    case '"': out += "\\\""; break;
    case '\\': out += "\\\\"; break;
    case '\n': out += "\\n"; break;
    case '\r': out += "\\r"; break;
    case '\t': out += "\\t"; break;
    default: {
        AppendUnicodeEscape(out, static_cast<unsigned char>(c));
    }
    }
}

/// Characters beyond ASCII that would steer a terminal or turn the direction of what is shown: the C1
/// controls and the marks of bidirectional text. `sequence` is one well-formed UTF-8 sequence of two or more
/// bytes.
std::uint32_t SteeringCharacter(std::string_view sequence) {
    const auto bits = [&](std::size_t i) { return static_cast<unsigned char>(sequence[i]) & 0x3FU; };
    std::uint32_t character = 0;
    if (sequence.size() == 2) {
        character = ((static_cast<unsigned char>(sequence[0]) & 0x1FU) << 6U) | bits(1);
    } else if (sequence.size() == 3) {
        character = ((static_cast<unsigned char>(sequence[0]) & 0xFU) << 12U) | (bits(1) << 6U) | bits(2);
    }
    const bool steers = character <= 0x9F || character == 0x61C || character == 0x200E || character == 0x200F
                     || (character >= 0x202A && character <= 0x202E)
                     || (character >= 0x2066 && character <= 0x2069);
    return steers ? character : 0;
}

bool NeedsEscape(char c) {
    return static_cast<unsigned char>(c) < 0x20 || c == '"' || c == '\\' || c == '\x7F';
}

constexpr std::array<std::int8_t, 256> MakeBase64Values() {
    std::array<std::int8_t, 256> values{};
    for (auto& value : values) {
        value = -1;
    }
    for (std::size_t i = 0; i < kBase64.size(); ++i) {
        values[static_cast<unsigned char>(kBase64[i])] = static_cast<std::int8_t>(i);
    }
    return values;
}

constexpr std::array<std::int8_t, 256> kBase64Values = MakeBase64Values();

} // namespace

bool AppendQuoted(std::string& out, std::string_view text) {
    bool wellFormed = true;
    out += '"';
    std::size_t copied = 0; // what is before has been appended
    std::size_t i = 0;
    while (i < text.size()) {
        const char c = text[i];
        if (static_cast<unsigned char>(c) < 0x80 && !NeedsEscape(c)) {
            ++i;
            continue;
        }
        const std::size_t length = SequenceLength(text.substr(i));
        const std::uint32_t steering = length > 1 ? SteeringCharacter(text.substr(i, length)) : 0;
        if (length > 1 && steering == 0) {
            i += length;
            continue;
        }
        out.append(text, copied, i - copied);
        if (steering != 0) {
            AppendUnicodeEscape(out, steering);
        } else if (length == 1) {
            AppendEscaped(out, c);
        } else {
            out += kReplacement;
            wellFormed = false;
        }
        i += std::max<std::size_t>(length, 1);
        copied = i;
    }
    out.append(text, copied);
    out += '"';
    return wellFormed;
}

std::size_t FindInvalidUtf8(std::string_view text) {
    std::size_t position = 0;
    while (position < text.size()) {
        const std::size_t length = SequenceLength(text.substr(position));
        if (length == 0) {
            return position;
        }
        position += length;
    }
    return std::string_view::npos;
}

bool IsUtf8(std::string_view text) {
    return FindInvalidUtf8(text) == std::string_view::npos;
}

void AppendBase64(std::string& out, const void* bytes, std::size_t size) {
    const auto* data = static_cast<const unsigned char*>(bytes);
    out.reserve(out.size() + (size + 2) / 3 * 4 + 2);
    out += '"';
    for (std::size_t i = 0; i < size; i += 3) {
        const std::size_t count = size - i < 3 ? size - i : 3;
        std::uint32_t group = 0;
        for (std::size_t k = 0; k < 3; ++k) {
            group = (group << 8U) | (k < count ? data[i + k] : 0U);
        }
        for (std::size_t k = 0; k < 4; ++k) {
            out += k <= count ? kBase64[(group >> (18U - 6U * k)) & 0x3FU] : '=';
        }
    }
    out += '"';
}

bool DecodeBase64(std::string_view text, std::string& out) {
    out.clear();
    if (text.size() % 4 != 0) {
        return false;
    }
    const std::size_t padding = text.ends_with("==") ? 2 : (text.ends_with("=") ? 1 : 0);
    out.reserve(text.size() / 4 * 3);
    for (std::size_t i = 0; i < text.size(); i += 4) {
        const bool last = i + 4 == text.size();
        std::uint32_t group = 0;
        for (std::size_t k = 0; k < 4; ++k) {
            const bool pad = last && k >= 4 - padding;
            const int value = pad ? 0 : kBase64Values[static_cast<unsigned char>(text[i + k])];
            if (value < 0) {
                return false;
            }
            group = (group << 6U) | static_cast<std::uint32_t>(value);
        }
        for (std::size_t k = 0; k < 3 - (last ? padding : 0); ++k) {
            out += static_cast<char>((group >> (16U - 8U * k)) & 0xFFU);
        }
    }
    return true;
}

bool AppendFloat(std::string& out, float value) {
    if (!std::isfinite(value)) {
        out += std::isnan(value) ? "\"NaN\"" : (value > 0 ? "\"Infinity\"" : "\"-Infinity\"");
        return false;
    }
    std::array<char, 32> text{};
    const auto result = std::to_chars(text.data(), text.data() + text.size(), value);
    out.append(text.data(), result.ptr);
    return true;
}

bool IsNumberLiteral(std::string_view text) {
    const auto take = [&text](char c) {
        const bool isNext = text.starts_with(c);
        text.remove_prefix(isNext ? 1 : 0);
        return isNext;
    };
    const auto takeDigits = [&text] {
        const std::size_t count = std::min(text.find_first_not_of("0123456789"), text.size());
        text.remove_prefix(count);
        return count > 0;
    };
    take('-');
    if (!take('0') && !takeDigits()) {
        return false;
    }
    if (take('.') && !takeDigits()) {
        return false;
    }
    if (take('e') || take('E')) {
        if (!take('+')) {
            take('-');
        }
        if (!takeDigits()) {
            return false;
        }
    }
    return text.empty();
}

} // namespace Tavik
