#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace Schemac::Emit {

/// The files of one run, collected in memory and then brought to disk with as few changes as possible.
class OutputSet {
public:
    /// What WriteTo did.
    struct Summary {
        std::size_t written = 0;
        std::size_t unchanged = 0;
        std::size_t removed = 0;
    };

    /// Adds a file. `path` is relative to the output folder, with '/'. Throws std::logic_error for
    /// a path that was added before, is absolute or leaves the folder.
    void Add(const std::string& path, std::string content);

    const std::map<std::string, std::string>& Files() const { return m_files; }

    /// Writes what differs from the files in `directory` and removes what an earlier run wrote there and this
    /// one did not; the earlier run is known from a manifest in the folder, one for each `owner`, so that
    /// several runs share a folder. Files of others stay. Throws std::runtime_error naming the file that
    /// cannot be written.
    Summary WriteTo(const std::filesystem::path& directory, std::string_view owner = {}) const;

private:
    std::map<std::string, std::string> m_files;
};

/// Text of a make-style rule: `target` depends on `inputs`, with what make would read otherwise escaped.
std::string DepfileText(const std::string& target, const std::vector<std::string>& inputs);

/// Writes `content` unless the file holds it already. Returns whether it wrote. Throws
/// std::runtime_error naming the file.
bool WriteIfChanged(const std::filesystem::path& path, const std::string& content);

} // namespace Schemac::Emit
