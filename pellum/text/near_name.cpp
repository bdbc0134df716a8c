#include "pellum/text/near_name.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <numeric>

namespace Pellum {

namespace {

/// Longer names are compared with nothing: they bear no resemblance to a name, and the effort grows with the
/// square.
constexpr std::size_t kLongestName = 128;

char ToLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

} // namespace

std::size_t EditDistance(std::string_view left, std::string_view right) {
    std::vector<std::size_t> older(right.size() + 1);
    std::vector<std::size_t> old(right.size() + 1);
    std::vector<std::size_t> row(right.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 1; i <= left.size(); ++i) {
        older.swap(old);
        old.swap(row);
        row[0] = i;
        for (std::size_t j = 1; j <= right.size(); ++j) {
            const char a = ToLower(left[i - 1]);
            const char b = ToLower(right[j - 1]);
            row[j] = std::min({old[j] + 1, row[j - 1] + 1, old[j - 1] + (a == b ? 0 : 1)});
            const bool exchanged = i > 1 && j > 1 && a == ToLower(right[j - 2]) && ToLower(left[i - 2]) == b;
            if (exchanged) {
                row[j] = std::min(row[j], older[j - 2] + 1);
            }
        }
    }
    return row.back();
}

std::string FindNearName(std::string_view name, const std::vector<std::string>& candidates) {
    if (name.empty() || name.size() > kLongestName) {
        return {};
    }
    std::size_t limit = std::clamp<std::size_t>(name.size() / 3, 1, 4);
    const std::string* nearest = nullptr;
    for (const std::string& candidate : candidates) {
        const auto [shorter, longer] = std::minmax({name.size(), candidate.size()});
        if (candidate.empty() || longer - shorter > limit) {
            continue;
        }
        const std::size_t distance = EditDistance(name, candidate);
        const bool isOther = distance >= longer; // nothing is left of the name
        if (isOther || distance > limit) {
            continue;
        }
        if (nearest == nullptr || distance < limit || candidate < *nearest) {
            nearest = &candidate;
        }
        limit = distance;
    }
    return nearest != nullptr ? *nearest : std::string();
}

} // namespace Pellum
