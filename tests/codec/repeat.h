#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace CodecTests {

/// The text so many times.
inline std::string Repeat(std::string_view text, std::size_t count) {
    std::string repeated;
    repeated.reserve(text.size() * count);
    for (std::size_t i = 0; i < count; ++i) {
        repeated += text;
    }
    return repeated;
}

} // namespace CodecTests
