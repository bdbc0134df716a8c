#include "schemac/emit/output.h"

#include <fstream>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace Schemac::Emit {

namespace fs = std::filesystem;

namespace {

/// The file that lists what the last run of an owner wrote, one path a line.
fs::path ManifestPath(const fs::path& directory, std::string_view owner) {
    return directory / (".schemac-manifest" + std::string(owner.empty() ? "" : "-") + std::string(owner));
}

bool IsInsidePath(const std::string& path) {
    const fs::path asPath(path);
    const fs::path normal = asPath.lexically_normal();
    return !path.empty() && asPath.is_relative() && normal.generic_string() == path
        && *normal.begin() != "..";
}

std::string ReadAll(std::istream& stream) {
    std::ostringstream content;
    content << stream.rdbuf();
    return content.str();
}

std::set<std::string> ReadManifest(const fs::path& manifest) {
    std::set<std::string> paths;
    std::ifstream stream(manifest, std::ios::binary);
    for (std::string line; std::getline(stream, line);) {
        if (IsInsidePath(line)) {
            paths.insert(line);
        }
    }
    return paths;
}

/// Removes a file, and the folders that it leaves empty up to `directory`.
bool RemoveFile(const fs::path& directory, const std::string& path) {
    std::error_code error;
    const bool removed = fs::remove(directory / path, error);
    for (fs::path folder = fs::path(path).parent_path(); !folder.empty(); folder = folder.parent_path()) {
        if (!fs::remove(directory / folder, error)) {
            break;
        }
    }
    return removed;
}

/// As make reads a file name: blanks, '#' and a backslash before them are escaped, '$' is doubled.
std::string EscapeForMake(std::string_view path) {
    std::string escaped;
    for (const char c : path) {
        if (c == ' ' || c == '#') {
            escaped += '\\';
        } else if (c == '$') {
            escaped += '$';
        }
        escaped += c;
    }
    return escaped;
}

} // namespace

void OutputSet::Add(const std::string& path, std::string content) {
    if (!IsInsidePath(path)) {
        throw std::logic_error("'" + path + "' is no path inside the output folder");
    }
    if (!m_files.emplace(path, std::move(content)).second) {
        throw std::logic_error("two outputs have the path '" + path + "'");
    }
}

OutputSet::Summary OutputSet::WriteTo(const fs::path& directory, std::string_view owner) const {
    Summary summary;
    const fs::path manifestPath = ManifestPath(directory, owner);
    const std::set<std::string> earlier = ReadManifest(manifestPath);

    // Before anything else, so that what this run writes is known even when it is cut short.
    std::set<std::string> known = earlier;
    std::string manifest;
    for (const auto& [path, content] : m_files) {
        known.insert(path);
        manifest += path + "\n";
    }
    std::string both;
    for (const std::string& path : known) {
        both += path + "\n";
    }
    WriteIfChanged(manifestPath, both);

    for (const auto& [path, content] : m_files) {
        ++(WriteIfChanged(directory / path, content) ? summary.written : summary.unchanged);
    }
    for (const std::string& path : earlier) {
        if (!m_files.contains(path) && RemoveFile(directory, path)) {
            ++summary.removed;
        }
    }
    WriteIfChanged(manifestPath, manifest);
    return summary;
}

std::string DepfileText(const std::string& target, const std::vector<std::string>& inputs) {
    std::string text = EscapeForMake(target) + ":";
    for (const std::string& input : inputs) {
        text += " \\\n  " + EscapeForMake(input);
    }
    return text + "\n";
}

bool WriteIfChanged(const fs::path& path, const std::string& content) {
    {
        std::ifstream present(path, std::ios::binary);
        if (present && ReadAll(present) == content) {
            return false;
        }
    }
    std::error_code error;
    if (path.has_parent_path()) {
        fs::create_directories(path.parent_path(), error);
    }
    std::ofstream stream(path, std::ios::binary | std::ios::trunc);
    stream << content;
    stream.close();
    if (!stream) {
        throw std::runtime_error("cannot write '" + path.string() + "'");
    }
    return true;
}

} // namespace Schemac::Emit
