#include "tavik/value/property_diff_set.h"

#include <algorithm>
#include <utility>

namespace Tavik {

void PropertyDiffSet::Add(std::string path) {
    // Every path is visited once by a comparison, so a repetition can only follow directly.
    if (m_paths.empty() || m_paths.back() != path) {
        m_paths.push_back(std::move(path));
    }
}

bool PropertyDiffSet::Contains(std::string_view path) const {
    return std::find(m_paths.begin(), m_paths.end(), path) != m_paths.end();
}

std::string ElementPath(const std::string& array, std::size_t index) {
    return array + '[' + std::to_string(index) + ']';
}

} // namespace Tavik
