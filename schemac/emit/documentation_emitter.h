#pragma once

#include "schemac/emit/emitter.h"

namespace Schemac::Emit {

/// Writes the documentation of types and members as a table of its own, which tools link and libraries do
/// not.
class DocumentationEmitter final : public Emitter {
public:
    void Emit(const Model::Module& module, OutputSet& output) override;
};

} // namespace Schemac::Emit
