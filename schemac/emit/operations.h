#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "schemac/model/type.h"

/// The functions of generated interfaces and stubs.
namespace Schemac::Emit {

/// A method of a managed type, or the getter of one of its properties.
struct Operation {
    std::string function;                           ///< "Login", "GetPid"
    const std::vector<Model::Property>* parameters; ///< empty for a getter
    const Model::Property* result;                  ///< null for none
    std::size_t index;                              ///< in the method-object array
    const Model::Method* method;                    ///< null for a getter

    bool IsGetter() const { return method == nullptr; }
};

/// A getter that a type inherits and declares again with another signature.
struct ReplacedGetter {
    const Model::ManagedType* base; ///< declares the one that is replaced
    const Model::Property* property;
    const Model::Property* replacement;
    std::string function;
};

/// The type's own operations, in the order of the method-object array.
std::vector<Operation> OperationsOf(const Model::ManagedType& type);

/// One for each signature that is replaced.
std::vector<ReplacedGetter> ReplacedGettersOf(const Model::ManagedType& type);

/// Whether a getter has the signature of an inherited one.
bool RepeatsInherited(const Operation& operation, const Model::ManagedType& type);

/// What the function returns: "void", "std::string", "Pellum::Optional<std::int32_t>".
std::string ReturnType(const Model::Property* result);

/// What the result is stored in when it is not returned: "Tavik::MoRef", "Tavik::DataArray<...>"; empty
/// otherwise.
std::string OutType(const Model::Property* result);

/// The parameters with the names of the schema, in brackets; `more` stands behind them, types and names by
/// turns.
std::string NamedParameters(
    const std::vector<Model::Property>& parameters, const std::vector<std::string>& more);

/// The parameters of the synchronous form of an operation, as the header names them.
std::string CallParameters(const Operation& operation);

/// The reference to an operation's method object: "Morvane::gMorvaneTaskTaskMethodObjects[0]".
std::string MethodObject(const Model::ManagedType& type, std::size_t index);

} // namespace Schemac::Emit
