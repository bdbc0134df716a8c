#pragma once

#include "tavik/export.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Tavik {

/// The paths of the properties in which two values differ, each once, in the order in which they were found.
/// Not synchronised.
class TAVIK_API PropertyDiffSet {
public:
    using const_iterator = std::vector<std::string>::const_iterator;

    /// Adds a path unless it is the one added last.
    void Add(std::string path);
    bool Contains(std::string_view path) const;

    bool IsEmpty() const { return m_paths.empty(); }

    std::size_t GetSize() const { return m_paths.size(); }

    const std::string& operator[](std::size_t index) const { return m_paths[index]; }

    const_iterator begin() const { return m_paths.begin(); }

    const_iterator end() const { return m_paths.end(); }

private:
    std::vector<std::string> m_paths;
};

/// Makes the path of an array that of an element: "disk" and 2 give "disk[2]".
TAVIK_API void AppendIndex(std::string& path, std::size_t index);

} // namespace Tavik
