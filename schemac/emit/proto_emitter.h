#pragma once

#include "schemac/emit/emitter.h"

#include <string>
#include <utility>

namespace Schemac::Emit {

/// Writes the data types, faults and enumerations as protobuf (proto3): messages, and what they need of other
/// libraries. Not the calls: managed types are referred to only.
class ProtoEmitter final : public Emitter {
public:
    /// All is written into the protobuf package of that name.
    explicit ProtoEmitter(std::string package) : m_package(std::move(package)) {}

    /// Throws std::runtime_error that names what would have one name or one file in protobuf.
    void Emit(const Model::Module& module, OutputSet& output) override;

private:
    std::string m_package;
};

} // namespace Schemac::Emit
