#pragma once

#include <string>

namespace Tool {

/// The folder with the examples that belong to this program: of its installation, or of the source it was
/// built from. Throws `Pellum::Exception` when there is none.
std::string FindExamplesFolder();

} // namespace Tool
