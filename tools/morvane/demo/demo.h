#pragma once

#include "tools/morvane/terminal/output.h"

#include <string>

namespace Tool {

/// The guided tour: what the library is for, done on the files of one folder. Throws when a step does not do
/// what it should.
void RunDemo(const std::string& examplesFolder, Console& console);

} // namespace Tool
