#pragma once

#include "schemac/emit/emitter.h"

namespace Schemac::Emit {

/// Writes one header for every top-level type: its class and those nested in it.
class HeaderEmitter final : public Emitter {
public:
    void Emit(const Model::Module& module, OutputSet& output) override;
};

} // namespace Schemac::Emit
