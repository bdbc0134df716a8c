#pragma once

#include <string>

#include "schemac/model/type.h"

/// How properties are held and passed in generated C++.
namespace Schemac::Emit {

/// The way a property is stored, which decides what accessors look like.
enum class Form {
    Value,    ///< required number, boolean, enumeration value or date-time: passed by value
    Text,     ///< required string, binary, type name or property path: passed by reference
    Optional, ///< optional value or text
    Object,   ///< counted reference to a data object, managed reference or boxed value
    Array,    ///< counted reference to an array
};

Form FormOf(const Model::Property& property);

/// The plain type of one value: "std::string", "Morvane::Info::StorageInfo::DiskInfo", "Tavik::MoRef".
std::string ElementType(const Model::Property& property);

/// The array class of an array property: "Tavik::DataArray<...>", "Tavik::Array<...>".
std::string ArrayType(const Model::Property& property);

/// The type of the member that holds the property.
std::string MemberType(const Model::Property& property);

/// The type of a parameter that is given the property: "const std::string&", "bool", "Tavik::MoRef*".
std::string ParameterType(const Model::Property& property);

/// What a class derives from: "Tavik::DynamicData" or a generated class, with the place for open content
/// around it when the type is the first one to have any.
std::string BaseClass(const Model::DataType& type);

/// The class's name as it is written inside its namespace: "ComputerSpec::LiveComputerLocation".
std::string RelativeName(const Model::Type& type);

/// The bits of the descriptor's flag word, as C++: "Tavik::kArrayFlag | Tavik::kOptionalFlag", "0".
std::string FlagWord(const Model::Property& property, bool isManaged);

/// The namespace of a library's tables: "TypesTables", "SampleTypesTables".
std::string TablesNamespace(const std::string& library);

/// The export macro of a library: "TYPES_API".
std::string ExportMacro(const std::string& library);

/// A descriptor's row name in the list of imports: "kString", "kZabroVirtualMachine".
std::string ImportName(const Model::Type& type);

/// Qualified name of the descriptor: "Morvane::gMorvaneComputerSpecTypeInfo", "Tavik::gStringTypeInfo".
std::string QualifiedDescriptor(const Model::Type& type);

/// Whether the descriptor lives in another library.
bool IsImported(const Model::Type& type);

} // namespace Schemac::Emit
