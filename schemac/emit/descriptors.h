#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "schemac/model/module.h"

/// The constant records of types, as C++.
namespace Schemac::Emit {

/// "Tavik::TypeKind::Data".
std::string KindName(const Model::Type& type);

/// Name of the property table of a type: "gMorvaneComputerSpecProperties".
std::string PropertiesName(const Model::Type& type);

/// Name of the field table of a data class: "gMorvaneComputerSpecFields".
std::string FieldTableName(const Model::Type& type);

/// What the type has of properties, which decides what field functions it has: "None", "Required" (no
/// optional one), "WithOptional".
std::string_view PropertiesKind(const Model::DataType& type);

/// Name of the method table of a managed type: "gMorvaneSessionManagerMethods".
std::string MethodsName(const Model::Type& type);

/// Name of a schema file's list of imported references: "types_api_core_connection_imports".
std::string ImportListName(const Model::SourceFile& file);

/// The own properties of a data, fault or managed type.
const std::vector<Model::Property>& PropertiesOf(const Model::Type& type);

/// Length of the method-object array of a managed type: its methods, then its property getters.
std::size_t MethodObjectCount(const Model::ManagedType& type);

/// Declaration of that array, without storage class and semicolon; empty when it has no entry.
std::string MethodObjectsArray(const Model::ManagedType& type);

/// Calls `visit` for every type that a method of a managed type names; does nothing for other types.
void ForEachMethodType(const Model::Type& type, const std::function<void(const Model::Type*)>& visit);

/// Definition of a table of property rows named `table`. Rows for types of other libraries hold null; what
/// start-up has to store in them is appended to `imports`.
std::string PropertyTable(
    const Model::Type& owner, const std::string& table, const std::vector<Model::Property>& properties,
    bool isManaged, std::string& imports);

/// Definitions of the method table of a managed type and of all that it points to.
std::string MethodTable(const Model::ManagedType& type, std::string& imports);

} // namespace Schemac::Emit
