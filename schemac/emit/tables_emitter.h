#pragma once

#include "schemac/emit/emitter.h"

namespace Schemac::Emit {

/// Writes the tables of the library as a whole: the records of all types in slot order, the slots, the type
/// accessors, the versions.
class TablesEmitter final : public Emitter {
public:
    void Emit(const Model::Module& module, OutputSet& output) override;
};

} // namespace Schemac::Emit
