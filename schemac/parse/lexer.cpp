#include "schemac/parse/lexer.h"

#include "schemac/diagnostic/catalogue.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace Schemac {

namespace {

bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool IsWordCharacter(char c) {
    return IsLetter(c) || IsDigit(c);
}

/// Length of the UTF-8 sequence at the start of `text`; 0 when there is none.
std::size_t Utf8Length(std::string_view text) {
    const auto byteAt = [&](std::size_t index) -> unsigned {
        return index < text.size() ? static_cast<unsigned char>(text[index]) : 0U;
    };
    const unsigned first = byteAt(0);
    if (first < 0x80) {
        return 1;
    }
    const std::size_t length = first >= 0xC2 && first <= 0xDF ? 2
                             : first >= 0xE0 && first <= 0xEF ? 3
                             : first >= 0xF0 && first <= 0xF4 ? 4
                                                              : 0;
    for (std::size_t index = 1; index < length; ++index) {
        if ((byteAt(index) & 0xC0U) != 0x80U) {
            return 0;
        }
    }
    const unsigned second = byteAt(1);
    const bool overlong = (first == 0xE0 && second < 0xA0) || (first == 0xF0 && second < 0x90);
    const bool surrogate = first == 0xED && second > 0x9F;
    const bool tooLarge = first == 0xF4 && second > 0x8F;
    return overlong || surrogate || tooLarge ? 0 : length;
}

std::string HexByte(char byte) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    const auto value = static_cast<unsigned char>(byte);
    return {'0', 'x', kDigits[value >> 4U], kDigits[value & 0xFU]};
}

class Lexer {
public:
    Lexer(const SourceManager& sources, std::uint32_t file, Reporter& reporter)
        : m_text(sources.Text(file)), m_file(file), m_reporter(reporter) {}

    std::vector<Token> Run() {
        if (IsPlainText()) {
            while (SkipToToken()) {
                ReadToken();
            }
        }
        m_position = m_text.size();
        Add(TokenKind::End, m_position, {});
        return std::move(m_tokens);
    }

private:
    char Peek(std::size_t ahead = 0) const {
        return m_position + ahead < m_text.size() ? m_text[m_position + ahead] : '\0';
    }

    Span SpanFrom(std::size_t start) const {
        return {m_file, static_cast<std::uint32_t>(start), static_cast<std::uint32_t>(m_position - start)};
    }

    /// Refuses the file at the first byte that no text holds.
    bool IsPlainText() {
        for (std::size_t at = 0; at < m_text.size();) {
            const char c = m_text[at];
            const std::size_t length = Utf8Length(m_text.substr(at, 4));
            const Span place{m_file, static_cast<std::uint32_t>(at), 1};
            if (length == 0) {
                m_reporter.Report(place, Diagnostics::kInvalidUtf8);
                return false;
            }
            const bool isControl = static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
            if (isControl && c != '\t' && c != '\n' && c != '\r') {
                m_reporter.Report(place, Diagnostics::kControlCharacter, HexByte(c));
                return false;
            }
            at += length;
        }
        return true;
    }

    /// Skips blanks and comments, keeping documentation. False at the end of the text.
    bool SkipToToken() {
        while (m_position < m_text.size()) {
            const char c = Peek();
            if (c == '\n') {
                m_startsLine = true;
                ++m_position;
            } else if (c == ' ' || c == '\t' || c == '\r') {
                ++m_position;
            } else if (c == '/' && Peek(1) == '/') {
                ReadComment();
            } else {
                return true;
            }
        }
        return false;
    }

    void ReadComment() {
        const std::size_t start = m_position;
        m_position = std::min(m_text.find('\n', start), m_text.size());
        std::string_view comment = m_text.substr(start, m_position - start);
        if (comment.ends_with('\r')) {
            comment.remove_suffix(1);
        }
        if (!comment.starts_with("///") || comment.starts_with("////")) {
            return;
        }
        if (comment.ends_with('\\')) {
            m_reporter.Report(SpanFrom(start), Diagnostics::kDocBackslash);
        }
        comment.remove_prefix(3);
        if (comment.starts_with(' ')) {
            comment.remove_prefix(1);
        }
        comment = comment.substr(0, comment.find_last_not_of(" \t") + 1);
        if (!m_docSpan.IsValid()) {
            m_docSpan = SpanFrom(start);
        } else {
            m_doc += '\n';
        }
        m_doc += comment;
    }

    void ReadToken() {
        const char c = Peek();
        if (IsWordCharacter(c)) {
            ReadWord();
        } else if (c == '"') {
            ReadText();
        } else {
            ReadPunctuation();
        }
    }

    void ReadWord() {
        const std::size_t start = m_position;
        while (IsWordCharacter(Peek())) {
            ++m_position;
        }
        const std::string_view word = m_text.substr(start, m_position - start);
        const bool isNumber = std::all_of(word.begin(), word.end(), IsDigit);
        const TokenKind kind = isNumber              ? TokenKind::Number
                             : IsDigit(word.front()) ? TokenKind::Other
                                                     : TokenKind::Name;
        Add(kind, start, word);
    }

    void ReadText() {
        const std::size_t start = m_position++;
        const std::size_t end = std::min(m_text.find_first_of("\"\n", start + 1), m_text.size());
        if (end < m_text.size() && m_text[end] == '"') {
            m_position = end + 1;
        } else {
            // Most likely only the quote was forgotten: a ';' at the end still counts.
            const std::size_t semicolon = m_text.substr(start, end - start).rfind(';');
            m_position = semicolon != std::string_view::npos ? start + semicolon : end;
            m_reporter.Report(SpanFrom(start), Diagnostics::kUnterminatedText);
        }
        std::string_view content = m_text.substr(start + 1, m_position - start - 1);
        content = content.substr(0, content.find('"'));
        if (content.find('\\') != std::string_view::npos) {
            m_reporter.Report(SpanFrom(start), Diagnostics::kBackslashInText);
        }
        Add(TokenKind::Text, start, content);
    }

    void ReadPunctuation() {
        struct Symbol {
            std::string_view spelling;
            TokenKind kind;
        };

        static constexpr Symbol kSymbols[] = {
            {"::", TokenKind::DoubleColon}, {"->", TokenKind::Arrow},       {"{", TokenKind::LeftBrace},
            {"}", TokenKind::RightBrace},   {"(", TokenKind::LeftParen},    {")", TokenKind::RightParen},
            {"[", TokenKind::LeftBracket},  {"]", TokenKind::RightBracket}, {":", TokenKind::Colon},
            {";", TokenKind::Semicolon},    {",", TokenKind::Comma},        {".", TokenKind::Dot},
        };
        const std::size_t start = m_position;
        for (const Symbol& symbol : kSymbols) {
            if (m_text.substr(start).starts_with(symbol.spelling)) {
                m_position += symbol.spelling.size();
                Add(symbol.kind, start, symbol.spelling);
                return;
            }
        }
        m_position += Utf8Length(m_text.substr(start, 4));
        Add(TokenKind::Other, start, m_text.substr(start, m_position - start));
    }

    void Add(TokenKind kind, std::size_t start, std::string_view text) {
        Token token;
        token.kind = kind;
        token.span = SpanFrom(start);
        token.text = text;
        token.doc = std::exchange(m_doc, {});
        token.docSpan = std::exchange(m_docSpan, {});
        token.startsLine = std::exchange(m_startsLine, false);
        m_tokens.push_back(std::move(token));
    }

    std::string_view m_text;
    std::uint32_t m_file;
    Reporter& m_reporter;
    std::size_t m_position = 0;
    std::string m_doc;
    Span m_docSpan;
    bool m_startsLine = true;
    std::vector<Token> m_tokens;
};

} // namespace

std::vector<Token> Tokenize(const SourceManager& sources, std::uint32_t file, Reporter& reporter) {
    return Lexer(sources, file, reporter).Run();
}

} // namespace Schemac
