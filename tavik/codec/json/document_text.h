#pragma once

#include "tavik/codec/json/errors.h"

#include <cstddef>
#include <string>
#include <string_view>

/// What is told of the text of a document once it is known to be wrong somewhere. Nothing here quotes the
/// text.
namespace Tavik::Json {

/// Line and column of a position, which is at most the length of the text.
TextPlace FindPlace(std::string_view text, std::size_t position);

/// Where the string ends whose closing quote is at `position` begins.
std::size_t FindStringStart(std::string_view text, std::size_t position);
/// Where the word begins (`true`, `false`, `null`) that has a letter at `position` or ends right before it.
std::size_t FindWordStart(std::string_view text, std::size_t position);
/// Where the number begins that `position` is in or ends at.
std::size_t FindNumberStart(std::string_view text, std::size_t position);
/// Where the escape in a string begins that `position` is in.
std::size_t FindEscapeStart(std::string_view text, std::size_t position);
/// Position of the first character from `position` on that is not white space; `npos` when there is none.
std::size_t FindText(std::string_view text, std::size_t position = 0);

/// Why the text can not go on at `position`, where a parser gave up; what comes before is well-formed.
std::string DescribeSyntaxError(std::string_view text, std::size_t position);

} // namespace Tavik::Json
