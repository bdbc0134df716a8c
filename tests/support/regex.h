#pragma once

#include <gmock/gmock.h>

#include <regex>
#include <string>

/// GoogleTest's own matchers of these names understand next to nothing on Windows.
namespace TestSupport {

MATCHER_P(ContainsRegex, pattern, "") {
    return std::regex_search(std::string(arg), std::regex(pattern));
}

MATCHER_P(MatchesRegex, pattern, "") {
    return std::regex_match(std::string(arg), std::regex(pattern));
}

} // namespace TestSupport
