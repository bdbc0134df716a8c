#pragma once

#include "schemac/emit/emitter.h"

namespace Schemac::Emit {

/// Adds everything that is generated for a module, section by section.
void EmitAll(const Model::Module& module, OutputSet& output);

} // namespace Schemac::Emit
