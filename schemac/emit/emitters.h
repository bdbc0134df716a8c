#pragma once

#include "schemac/emit/emitter.h"

#include <string>

namespace Schemac::Emit {

/// Adds the C++ of a module, section by section.
void EmitCpp(const Model::Module& module, OutputSet& output);

/// Adds the module as protobuf, all in the protobuf package of that name. Throws std::runtime_error when two
/// things would have one name there.
void EmitProto(const Model::Module& module, const std::string& package, OutputSet& output);

} // namespace Schemac::Emit
