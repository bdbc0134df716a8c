#pragma once

#include "schemac/diagnostic/reporter.h"
#include "schemac/parse/token.h"
#include "schemac/source/source_manager.h"

#include <cstdint>
#include <vector>

namespace Schemac {

/// Cuts a source file into tokens; the last one is always TokenKind::End. A file that is not text at all is
/// reported and gives the end token alone.
std::vector<Token> Tokenize(const SourceManager& sources, std::uint32_t file, Reporter& reporter);

} // namespace Schemac
