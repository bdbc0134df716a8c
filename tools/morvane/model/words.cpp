#include "tools/morvane/model/words.h"

#include <algorithm>

namespace Tool {

namespace {

char ToLowerLetter(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

} // namespace

std::string ToLower(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), &ToLowerLetter);
    return lower;
}

bool ContainsWord(std::string_view text, std::string_view word) {
    const auto isSame = [](char a, char b) { return ToLowerLetter(a) == ToLowerLetter(b); };
    return word.empty()
        || std::search(text.begin(), text.end(), word.begin(), word.end(), isSame) != text.end();
}

std::string Count(std::size_t number, const std::string& noun, const char* plural) {
    return std::to_string(number) + ' ' + noun + (number == 1 ? "" : plural);
}

std::string ListSome(const std::vector<std::string>& names, std::size_t most) {
    std::string text;
    // Nothing is gained by saying "and 1 more" in the place of a name.
    const std::size_t shown = names.size() <= most + 1 ? names.size() : most;
    for (std::size_t i = 0; i < shown; ++i) {
        text += (i == 0 ? "" : ", ") + names[i];
    }
    return shown == names.size() ? text : text + " and " + std::to_string(names.size() - shown) + " more";
}

std::string DidYouMean(const std::string& near) {
    return near.empty() ? std::string() : "; did you mean \"" + near + "\"?";
}

} // namespace Tool
