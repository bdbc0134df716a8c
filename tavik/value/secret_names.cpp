#include "tavik/value/secret_names.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace Tavik {

namespace {

/// The name as the words are written: its letters and digits.
std::string Fold(std::string_view name) {
    std::string folded;
    folded.reserve(name.size());
    for (const char c : name) {
        const bool isUpper = c >= 'A' && c <= 'Z';
        if (isUpper || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9')) {
            folded += isUpper ? static_cast<char>(c - 'A' + 'a') : c;
        }
    }
    return folded;
}

} // namespace

bool IsSecretName(std::string_view name) {
    const std::string folded = Fold(name);
    return std::any_of(std::begin(kSecretWords), std::end(kSecretWords), [&](std::string_view word) {
        return folded.find(word) != std::string::npos;
    });
}

} // namespace Tavik
