#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Tool {

/// Columns that a text in UTF-8 takes up at a terminal: two for the wide characters of East Asia and for
/// pictographs, none for marks that combine with what is before them, one for all else.
std::size_t GetDisplayWidth(std::string_view text);
/// The text with spaces behind it up to that width.
std::string Pad(std::string_view text, std::size_t width);
/// The text if it has room in that width; otherwise as much of its beginning as has room together with "…".
std::string Abbreviate(std::string_view text, std::size_t width);

} // namespace Tool
