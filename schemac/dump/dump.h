#pragma once

#include "schemac/model/module.h"

#include <string>

namespace Schemac {

/// The resolved module as JSON: the same text for the same module, always.
std::string DumpModule(const Model::Module& module);

} // namespace Schemac
