#pragma once

#include "schemac/emit/emitter.h"

namespace Schemac::Emit {

/// Adds everything that is generated for a module, section by section. Throws std::runtime_error for what the
/// language knows and the emitters do not.
void EmitAll(const Model::Module& module, OutputSet& output);

} // namespace Schemac::Emit
