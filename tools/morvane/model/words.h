#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Small things to do with names and texts.
namespace Tool {

/// The text with the letters of ASCII in lower case.
std::string ToLower(std::string_view text);
/// Whether `text` holds `word`, upper and lower case being equal. An empty word is in every text.
bool ContainsWord(std::string_view text, std::string_view word);

/// "1 type", "2 types"
std::string Count(std::size_t number, const std::string& noun, const char* plural = "s");
/// "a, b, c"; where there are more than `most`, "a, b and 7 more".
std::string ListSome(const std::vector<std::string>& names, std::size_t most);
/// "; did you mean "near"?"; empty for an empty name.
std::string DidYouMean(const std::string& near);

} // namespace Tool
