#pragma once

#include "schemac/emit/emitter.h"

namespace Schemac::Emit {

/// Writes one source file for every schema file: descriptors, field tables and the definitions of the
/// classes.
class SourceEmitter final : public Emitter {
public:
    void Emit(const Model::Module& module, OutputSet& output) override;
};

} // namespace Schemac::Emit
