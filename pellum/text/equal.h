#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace Pellum {

/// Whether two texts are the same bytes. For texts that are mostly short, such as names: no call for those.
[[gnu::always_inline]] inline bool AreEqual(std::string_view a, std::string_view b) {
    constexpr std::size_t kStep = 2 * sizeof(std::uint64_t);
    const std::size_t size = a.size();
    if (size != b.size()) {
        return false;
    }
    if (size > 4 * kStep) {
        return std::memcmp(a.data(), b.data(), size) == 0;
    }
    const auto difference = [&]<class Word>(std::size_t at, Word left) {
        Word right = 0;
        std::memcpy(&left, a.data() + at, sizeof(Word));
        std::memcpy(&right, b.data() + at, sizeof(Word));
        return left ^ right;
    };
    // Without a branch for each word. Words at the end that overlap those at the begin cover what is no
    // multiple of their length.
    if (size >= kStep) {
        std::uint64_t evenWords = 0;
        std::uint64_t oddWords = 0;
        const auto addStep = [&](std::size_t at) {
            evenWords |= difference(at, std::uint64_t{});
            oddWords |= difference(at + sizeof(std::uint64_t), std::uint64_t{});
        };
        addStep(0);
        addStep(size - kStep);
        if (size > 2 * kStep) {
            addStep(kStep);
            addStep(size - 2 * kStep);
        }
        return (evenWords | oddWords) == 0;
    }
    const auto haveSameEnds = [&]<class Word>(Word word) {
        return (difference(0, word) | difference(size - sizeof(Word), word)) == 0;
    };
    if (size >= sizeof(std::uint64_t)) {
        return haveSameEnds(std::uint64_t{});
    }
    if (size >= sizeof(std::uint32_t)) {
        return haveSameEnds(std::uint32_t{});
    }
    return size == 0 || (a[0] == b[0] && a[size / 2] == b[size / 2] && a[size - 1] == b[size - 1]);
}

} // namespace Pellum
