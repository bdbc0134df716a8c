#pragma once

#include "schemac/source/span.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace Schemac {

enum class TokenKind : std::uint8_t {
    Name, ///< any word: keywords are names that stand in the right place
    Text, ///< "..." ; the token's text is what stands between the quotes
    LeftBrace,
    RightBrace,
    LeftParen,
    RightParen,
    LeftBracket,
    RightBracket,
    Colon,
    DoubleColon,
    Semicolon,
    Comma,
    Dot,
    Arrow,
    Number, ///< digits only
    Other,  ///< a character, or a word that begins with a digit, that stands nowhere in a schema
    End,
};

struct Token {
    TokenKind kind = TokenKind::End;
    Span span;
    std::string_view text;   ///< piece of the source text, which the SourceManager keeps
    std::string doc;         ///< `///` lines before the token, without the slashes
    Span docSpan;            ///< first of these lines
    bool startsLine = false; ///< nothing but blanks and comments stands before it on its line
};

} // namespace Schemac
