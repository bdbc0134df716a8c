#pragma once

#include <algorithm>
#include <string>
#include <string_view>

/// How names of C++ follow from those of types. Worked out here again: no test takes them from what it tests.
namespace TestSupport {

inline char ToUpperCase(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

inline std::string ToUpperCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](char c) { return ToUpperCase(c); });
    return text;
}

/// Every component capitalised, and `separator` in place of the points: "morvane.task.Task" with "::" gives
/// "Morvane::Task::Task".
inline std::string ToPath(std::string_view dotted, std::string_view separator) {
    std::string path;
    bool begins = true;
    for (const char c : dotted) {
        if (c == '.') {
            path += separator;
        } else {
            path += begins ? ToUpperCase(c) : c;
        }
        begins = c == '.';
    }
    return path;
}

} // namespace TestSupport
