#pragma once

#include <string>

#include "schemac/model/type.h"

/// What the class of a fault has beside that of any data type: the class that is thrown for it.
namespace Schemac::Emit {

/// The header that the members need.
inline constexpr const char* kFaultHeader = "types/fault/fault_object.h";

/// Members of the class, for its header: the exception class, and what throws it. Empty for other data types.
std::string FaultMembers(const Model::DataType& type, const std::string& exportMacro);

/// Their definitions, for the source.
std::string FaultDefinitions(const Model::DataType& type);

} // namespace Schemac::Emit
