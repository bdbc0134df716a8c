#pragma once

#include "pellum/text/path_name.h"

#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <string_view>
#include <system_error>

namespace TestSupport {

/// A folder that is empty at first and lives as long as this object.
class TemporaryFolder {
public:
    TemporaryFolder()
        : m_path(
            std::filesystem::temp_directory_path()
            / ("morvane-test-" + std::to_string(std::random_device()()))) {
        std::filesystem::create_directories(m_path);
    }

    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& GetPath() const { return m_path; }

    /// Writes a file and returns its path. Both names are UTF-8.
    std::string Write(const std::string& name, std::string_view content) const {
        const std::filesystem::path path = m_path / Pellum::ToPath(name);
        std::ofstream(path, std::ios::binary) << content;
        return Pellum::ToName(path);
    }

private:
    std::filesystem::path m_path;
};

} // namespace TestSupport
