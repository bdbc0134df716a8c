#pragma once

#include "tavik_json/export.h"

#include <cstddef>
#include <string>

namespace Tavik::Json {

/// The content of the file at `path`, or of standard input for "-". Throws `Pellum::Exception`, which names
/// the path, when there is nothing to read or more than `limit` bytes, of which no more are read than it
/// takes to tell. A byte order mark in front, which editors on Windows write, is left out.
TAVIK_JSON_API std::string ReadInput(const std::string& path, std::size_t limit);

} // namespace Tavik::Json
