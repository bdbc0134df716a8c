#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace Pellum {

/// Whether two texts are the same bytes. For texts that are mostly short, such as names: no call for those.
inline bool AreEqual(std::string_view a, std::string_view b) {
    constexpr std::size_t kStep = sizeof(std::uint64_t);
    constexpr std::size_t kLongest = 4 * kStep;
    const std::size_t size = a.size();
    if (size != b.size()) {
        return false;
    }
    if (size > kLongest) {
        return std::memcmp(a.data(), b.data(), size) == 0;
    }
    // Two words that overlap cover what is no multiple of their length.
    const auto isEqualAt = [&]<class Word>(std::size_t at, Word left) {
        Word right = 0;
        std::memcpy(&left, a.data() + at, sizeof(Word));
        std::memcpy(&right, b.data() + at, sizeof(Word));
        return left == right;
    };
    if (size >= kStep) {
        for (std::size_t i = 0; i + kStep <= size; i += kStep) {
            if (!isEqualAt(i, std::uint64_t{})) {
                return false;
            }
        }
        return isEqualAt(size - kStep, std::uint64_t{});
    }
    if (size >= sizeof(std::uint32_t)) {
        return isEqualAt(0, std::uint32_t{}) && isEqualAt(size - sizeof(std::uint32_t), std::uint32_t{});
    }
    return size == 0 || (a[0] == b[0] && a[size / 2] == b[size / 2] && a[size - 1] == b[size - 1]);
}

} // namespace Pellum
