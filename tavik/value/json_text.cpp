#include "tavik/value/json_text.h"

#include "tavik/value/text_buffer.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace Tavik {

namespace {

constexpr std::string_view kBase64 = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

bool IsContinuation(unsigned char byte) {
    return (byte & 0xC0U) == 0x80U;
}

/// Length of the well-formed UTF-8 sequence at the start of `text`, which is not empty; 0 when it is none.
/// Inline, as texts beyond ASCII would spend much of their time calling it.
inline std::size_t SequenceLength(std::string_view text) {
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

/// What stands for a character, at most as long as "\u0000".
struct Escape {
    char text[7];
    std::uint8_t size;
};

/// That of a character of the basic plane, by its number.
constexpr Escape MakeUnicodeEscape(std::uint32_t character) {
    constexpr std::string_view digits = "0123456789abcdef";
    Escape escape{"\\u0000", 6};
    for (std::size_t i = 5; i >= 2; --i, character >>= 4U) {
        escape.text[i] = digits[character & 0xFU];
    }
    return escape;
}

/// Those of the ASCII characters; what needs none has one, too.
constexpr std::array<Escape, 0x80> MakeEscapes() {
    std::array<Escape, 0x80> escapes{};
    for (std::uint32_t character = 0; character < escapes.size(); ++character) {
        escapes[character] = MakeUnicodeEscape(character);
    }
    escapes['"'] = {"\\\"", 2};
    escapes['\\'] = {"\\\\", 2};
    escapes['\n'] = {"\\n", 2};
    escapes['\r'] = {"\\r", 2};
    escapes['\t'] = {"\\t", 2};
    return escapes;
}

constexpr std::array<Escape, 0x80> kEscapes = MakeEscapes();
constexpr Escape kReplacement = {"\xEF\xBF\xBD", 3}; // U+FFFD

/// Characters beyond ASCII that would steer a terminal or turn the direction of what is shown: the C1
/// controls and the marks of bidirectional text. `sequence` is one well-formed UTF-8 sequence of two or more
/// bytes.
std::uint32_t SteeringCharacter(std::string_view sequence) {
    const auto lead = static_cast<unsigned char>(sequence.front());
    if (lead != 0xC2 && lead != 0xD8 && lead != 0xE2) {
        return 0; // no such character begins with that byte
    }
    const auto bits = [&](std::size_t i) { return static_cast<unsigned char>(sequence[i]) & 0x3FU; };
    std::uint32_t character = 0;
    if (sequence.size() == 2) {
        character = ((lead & 0x1FU) << 6U) | bits(1);
    } else if (sequence.size() == 3) {
        character = ((lead & 0xFU) << 12U) | (bits(1) << 6U) | bits(2);
    }
    const bool steers = character <= 0x9F || character == 0x61C || character == 0x200E || character == 0x200F
                     || (character >= 0x202A && character <= 0x202E)
                     || (character >= 0x2066 && character <= 0x2069);
    return steers ? character : 0;
}

/// Whether the character is written as it is and needs no look at its neighbours: printable ASCII, but
/// neither the quote nor the backslash.
bool IsPlain(char c) {
    return c >= 0x20 && c < 0x7F && c != '"' && c != '\\';
}

/// Eight characters at once.
using Block = std::uint64_t;

constexpr Block Repeat(unsigned char byte) {
    return ~Block{0} / 0xFF * byte;
}

constexpr Block kHighBits = Repeat(0x80);

template <class T>
T Load(const char* from) {
    T word;
    std::memcpy(&word, from, sizeof(word));
    return word;
}

template <class T>
void Store(char* to, T word) {
    std::memcpy(to, &word, sizeof(word));
}

/// The high bit of every byte that `IsPlain` is not true of. A byte's high bit is set before anything is
/// taken away from it, so that no byte borrows from its neighbour.
Block FindSpecial(Block block) {
    const Block high = block | kHighBits;
    const Block plain = (high - Repeat(0x20)) & ((high ^ Repeat('"')) - Repeat(1))
                      & ((high ^ Repeat('\\')) - Repeat(1)) & ((high ^ Repeat(0x7F)) - Repeat(1));
    return (block | ~plain) & kHighBits;
}

/// Index of the first byte in memory that has a bit set.
std::size_t FirstByte(Block bits) {
    const int before =
        std::endian::native == std::endian::little ? std::countr_zero(bits) : std::countl_zero(bits);
    return static_cast<std::size_t>(before) / 8;
}

/// Copies the plain characters at the start of the text; returns their number. There is room for the whole
/// text at `to`, all of which may be overwritten.
std::size_t CopyPlain(char* to, std::string_view text) {
    const char* const from = text.data();
    const std::size_t size = text.size();
    const auto copyBlock = [&](std::size_t at) {
        const auto block = Load<Block>(from + at);
        Store(to + at, block);
        const Block special = FindSpecial(block);
        return special == 0 ? sizeof(Block) : FirstByte(special);
    };
    if (size >= sizeof(Block)) {
        const std::size_t last = size - sizeof(Block);
        for (std::size_t i = 0; i < last; i += sizeof(Block)) {
            if (const std::size_t count = copyBlock(i); count < sizeof(Block)) {
                return i + count;
            }
        }
        return last + copyBlock(last); // reads some of the last whole block again
    }
    using Half = std::uint32_t;
    if (size >= sizeof(Half)) {
        const std::size_t last = size - sizeof(Half);
        const auto first = Load<Half>(from);
        const auto second = Load<Half>(from + last);
        if (FindSpecial(Block{first} << 32U | second) == 0) {
            Store(to, first);
            Store(to + last, second);
            return size;
        }
    }
    std::size_t count = 0;
    while (count < size && IsPlain(from[count])) {
        to[count] = from[count];
        ++count;
    }
    return count;
}

/// Copies two to four characters without the call that a copy of any size is; returns the end.
char* CopySequence(char* to, std::string_view sequence) {
    Store(to, Load<std::uint16_t>(sequence.data()));
    for (std::size_t i = 2; i < sequence.size() && i < 4; ++i) {
        to[i] = sequence[i];
    }
    return to + sequence.size();
}

/// Returns the end. All that the escape has room for is written.
char* WriteEscape(char* to, const Escape& escape) {
    std::memcpy(to, escape.text, sizeof(escape.text));
    return to + escape.size;
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

bool AppendQuoted(TextBuffer& out, std::string_view text) {
    bool isUtf8 = true;
    char* to = out.Reserve(text.size() + 2);
    *to++ = '"';
    for (;;) {
        const std::size_t count = CopyPlain(to, text);
        to += count;
        text.remove_prefix(count);
        if (text.empty()) {
            *to++ = '"';
            out.Commit(to);
            return isUtf8;
        }
        do {
            const std::size_t length = SequenceLength(text);
            const std::string_view character(text.data(), std::max<std::size_t>(length, 1));
            const std::uint32_t steering = length > 1 ? SteeringCharacter(character) : 0;
            text.remove_prefix(character.size());
            if (length > 1 && steering == 0) {
                to = CopySequence(to, character);
                continue;
            }
            out.Commit(to);
            to = out.Reserve(sizeof(Escape) + text.size() + 1);
            if (length == 1) {
                to = WriteEscape(to, kEscapes[static_cast<unsigned char>(character.front())]);
            } else {
                to = WriteEscape(to, steering != 0 ? MakeUnicodeEscape(steering) : kReplacement);
            }
            isUtf8 = isUtf8 && length != 0;
        } while (!text.empty() && !IsPlain(text.front()));
    }
}

bool AppendQuoted(std::string& out, std::string_view text) {
    TextBuffer buffer(out);
    return AppendQuoted(buffer, text);
}

std::size_t FindInvalidUtf8(std::string_view text) {
    std::size_t position = 0;
    while (position < text.size()) {
        if (text.size() - position >= sizeof(Block)
            && (Load<Block>(text.data() + position) & kHighBits) == 0) {
            position += sizeof(Block);
            continue;
        }
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

void AppendBase64(TextBuffer& out, const void* bytes, std::size_t size) {
    const auto* data = static_cast<const unsigned char*>(bytes);
    char* to = out.Reserve((size + 2) / 3 * 4 + 2);
    const auto write = [&to](std::uint32_t group, std::size_t digits) {
        for (std::size_t k = 0; k < 4; ++k) {
            *to++ = k < digits ? kBase64[(group >> (18U - 6U * k)) & 0x3FU] : '=';
        }
    };
    *to++ = '"';
    std::size_t i = 0;
    for (; size - i >= 3; i += 3) {
        write(std::uint32_t{data[i]} << 16U | std::uint32_t{data[i + 1]} << 8U | data[i + 2], 4);
    }
    if (size - i == 2) {
        write(std::uint32_t{data[i]} << 16U | std::uint32_t{data[i + 1]} << 8U, 3);
    } else if (size - i == 1) {
        write(std::uint32_t{data[i]} << 16U, 2);
    }
    *to++ = '"';
    out.Commit(to);
}

void AppendBase64(std::string& out, const void* bytes, std::size_t size) {
    TextBuffer buffer(out);
    AppendBase64(buffer, bytes, size);
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

bool AppendFloat(TextBuffer& out, float value) {
    if (!std::isfinite(value)) {
        out.Append(std::isnan(value) ? "\"NaN\"" : (value > 0 ? "\"Infinity\"" : "\"-Infinity\""));
        return false;
    }
    constexpr std::size_t kMost = 32;
    char* const to = out.Reserve(kMost);
    out.Commit(std::to_chars(to, to + kMost, value).ptr);
    return true;
}

bool AppendFloat(std::string& out, float value) {
    TextBuffer buffer(out);
    return AppendFloat(buffer, value);
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
