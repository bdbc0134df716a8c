#pragma once

#include "schemac/emit/output.h"
#include "schemac/model/module.h"

namespace Schemac::Emit {

/// Writes one section of the output from the resolved model.
class Emitter {
public:
    virtual ~Emitter() = default;

    /// Adds this emitter's files to `output`. Throws std::logic_error when a template and the
    /// values given to it do not match.
    virtual void Emit(const Model::Module& module, OutputSet& output) = 0;
};

} // namespace Schemac::Emit
