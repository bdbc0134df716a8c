#pragma once

#include "tavik/export.h"

#include <cstddef>
#include <string>
#include <string_view>

/// The texts of JSON: how strings, numbers and bytes are written. Appends to one buffer; no state.
namespace Tavik {

class TextBuffer;

/// Appends `text` quoted and escaped. Bytes that are no UTF-8 become U+FFFD; false tells that there were any.
TAVIK_API bool AppendQuoted(TextBuffer& out, std::string_view text);
TAVIK_API bool AppendQuoted(std::string& out, std::string_view text);
/// Appends the bytes as quoted base64 with padding.
TAVIK_API void AppendBase64(TextBuffer& out, const void* bytes, std::size_t size);
TAVIK_API void AppendBase64(std::string& out, const void* bytes, std::size_t size);
/// Appends the shortest text that reads back as the same number. False, with a quoted name appended, for
/// infinities and not-a-number, which JSON has no numbers for.
TAVIK_API bool AppendFloat(TextBuffer& out, float value);
TAVIK_API bool AppendFloat(std::string& out, float value);
/// Whether the text is a number as JSON writes it, all of it.
TAVIK_API bool IsNumberLiteral(std::string_view text);
/// Decodes base64, with padding, into `out`; false when the text is none.
TAVIK_API bool DecodeBase64(std::string_view text, std::string& out);
/// Whether the text is well-formed UTF-8.
TAVIK_API bool IsUtf8(std::string_view text);
/// Position of the first byte that is no part of well-formed UTF-8; `npos` when there is none.
TAVIK_API std::size_t FindInvalidUtf8(std::string_view text);

} // namespace Tavik
