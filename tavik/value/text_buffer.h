#pragma once

#include "tavik/export.h"

#include <algorithm>
#include <charconv>
#include <concepts>
#include <cstddef>
#include <limits>
#include <string>
#include <string_view>

namespace Tavik {

/// Appends to a string without a check for every character. Text is written into spare room at the string's
/// end, which grows with the text and is cut off when the buffer goes. Not synchronised.
class TAVIK_API TextBuffer {
public:
    /// `out` is borrowed, and only the buffer may touch it while there is one.
    explicit TextBuffer(std::string& out) : m_out(out), m_next(out.data() + out.size()), m_end(m_next) {}

    ~TextBuffer() { m_out.resize(static_cast<std::size_t>(m_next - m_out.data())); }

    TextBuffer(const TextBuffer&) = delete;
    TextBuffer& operator=(const TextBuffer&) = delete;

    /// Where the next `count` bytes may be written, before `Commit` says how far they were. Good until the
    /// next call.
    char* Reserve(std::size_t count) {
        if (static_cast<std::size_t>(m_end - m_next) < count) {
            Grow(count);
        }
        return m_next;
    }

    /// `end` is behind the last byte that was written since `Reserve`.
    void Commit(char* end) { m_next = end; }

    void Append(char c) {
        *Reserve(1) = c;
        ++m_next;
    }

    void Append(std::string_view text) { m_next += text.copy(Reserve(text.size()), text.size()); }

    void AppendRepeated(std::size_t count, char c) {
        std::fill_n(Reserve(count), count, c);
        m_next += count;
    }

    template <std::integral T>
    void AppendNumber(T number) {
        constexpr std::size_t kMost = std::numeric_limits<T>::digits10 + 2; // with a sign
        char* const to = Reserve(kMost);
        Commit(std::to_chars(to, to + kMost, number).ptr);
    }

private:
    void Grow(std::size_t count);

    std::string& m_out; ///< its size is that of the text with the spare room
    char* m_next;
    char* m_end;
};

} // namespace Tavik
