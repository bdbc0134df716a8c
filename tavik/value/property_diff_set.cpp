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

void AppendIndex(std::string& path, std::size_t index) {
    path += '[';
    path += std::to_string(index);
    path += ']';
}

} // namespace Tavik
