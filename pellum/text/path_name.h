#pragma once

#include <filesystem>
#include <string>
#include <string_view>

/// Names of files are UTF-8 throughout. `std::filesystem::path` takes and gives plain strings in the code
/// page of the system, which is another one on Windows.
namespace Pellum {

/// The file or folder of a name, which is valid UTF-8.
inline std::filesystem::path ToPath(std::string_view name) {
    return std::u8string(name.begin(), name.end());
}

/// The name of a file or folder.
inline std::string ToName(const std::filesystem::path& path) {
    const std::u8string name = path.u8string();
    return {name.begin(), name.end()};
}

} // namespace Pellum
