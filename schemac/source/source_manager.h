#pragma once

#include "schemac/source/span.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Schemac {

/// Line and column of a place, both from 1; the column counts characters, not bytes.
struct Position {
    std::size_t line = 0;
    std::size_t column = 0;
};

/// Holds the text of every source file of a run and tells where a span lies in it.
/// Texts stay at their address until the manager is destroyed. Not thread-safe.
class SourceManager {
public:
    /// Files beyond this size are refused: no schema is that long.
    static constexpr std::size_t kMaxFileSize = std::size_t{16} << 20;

    /// Reads a file and returns its number. Throws std::runtime_error telling why it cannot be read.
    std::uint32_t Load(const std::string& path);

    /// Takes a text that is in memory already; `path` is the name that messages show. Returns its number.
    /// A byte order mark is dropped.
    std::uint32_t AddText(std::string path, std::string text);

    const std::string& Path(std::uint32_t file) const { return Get(file).path; }

    std::string_view Text(std::uint32_t file) const { return Get(file).text; }

    /// Position of the first byte of `span`, which must be valid.
    Position Locate(const Span& span) const;

    /// Text of a line, from 1, without its end.
    std::string_view Line(std::uint32_t file, std::size_t line) const;

private:
    struct File {
        std::string path;
        std::string text;
        std::vector<std::size_t> lineStarts;
    };

    const File& Get(std::uint32_t file) const { return *m_files.at(file - 1); }

    std::vector<std::unique_ptr<File>> m_files;
};

} // namespace Schemac
