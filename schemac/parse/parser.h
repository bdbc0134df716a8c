#pragma once

#include "schemac/diagnostic/reporter.h"
#include "schemac/parse/syntax_tree.h"
#include "schemac/source/source_manager.h"

#include <cstdint>

namespace Schemac {

/// Types may be nested this deep; beyond it the parser refuses the file.
inline constexpr int kMaxNesting = 64;

/// Parses a source file. Syntax errors are reported, and parsing goes on behind each; the tree is of
/// use only when no error was reported.
Syntax::File Parse(const SourceManager& sources, std::uint32_t file, Reporter& reporter);

} // namespace Schemac
