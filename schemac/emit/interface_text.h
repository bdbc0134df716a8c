#pragma once

#include <string>

#include "schemac/model/type.h"

namespace Schemac::Emit {

/// The interface class of a managed type; `nested` are the declarations of the types inside it.
std::string InterfaceClass(const Model::ManagedType& type, const std::string& api, const std::string& nested);

/// Definitions of the interface: what is not pure virtual, and the names of its methods.
std::string InterfaceDefinitions(const Model::ManagedType& type);

/// What the type's record holds: the dispatch function and the stub factory, made from a list of the
/// methods.
std::string DispatchDefinitions(const Model::ManagedType& type);

/// What a managed type's record holds of functions: "&...::Dispatch, &...::CreateStub".
std::string ManagedFunctions(const Model::ManagedType& type);

} // namespace Schemac::Emit
