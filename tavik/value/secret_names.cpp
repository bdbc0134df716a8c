#include "tavik/value/secret_names.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace Tavik {

namespace {

/// The name as the words are written.
std::string Fold(std::string_view name) {
    std::string folded;
    folded.reserve(name.size());
    for (const char c : name) {
        if (c != '_' && c != '-' && c != ' ') {
            folded += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
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
