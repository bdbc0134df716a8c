#pragma once

#include "schemac/emit/emitter.h"

namespace Schemac::Emit {

/// Writes the header of every stub.
class StubEmitter final : public Emitter {
public:
    void Emit(const Model::Module& module, OutputSet& output) override;
};

/// Definitions of the stub of a managed type.
std::string StubDefinitions(const Model::ManagedType& type);

} // namespace Schemac::Emit
