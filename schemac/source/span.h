#pragma once

#include <compare>
#include <cstdint>

namespace Schemac {

/// A piece of a source file. Line and column are computed from it only when a message is printed.
struct Span {
    std::uint32_t file = 0;   ///< number given by the SourceManager, from 1; 0 means no place at all
    std::uint32_t offset = 0; ///< in bytes
    std::uint32_t length = 0; ///< in bytes

    bool IsValid() const { return file != 0; }

    auto operator<=>(const Span&) const = default;
};

} // namespace Schemac
