#pragma once

#include "tavik/type/data_object_type.h"
#include "tavik/type/type.h"
#include "tavik/type/version.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// What can be said of the registered types without knowing them.
namespace Tool {

/// "data", "fault", "enum", "managed"; "built-in" for the runtime's own scalars.
const char* GetKindName(Tavik::TypeKind kind);
/// The C++ class of a dotted name: "morvane.ComputerSpec" gives "Morvane::ComputerSpec".
std::string GetClassName(std::string_view dottedName);
/// Path to include for the class of a dotted name, "types/api/core/computer_spec.h"; empty when no header is
/// known.
std::string GetHeaderPath(std::string_view dottedName);
/// The area that a dotted name belongs to, "params" of "morvane.params.StorageParams"; empty when it names
/// none.
std::string_view GetArea(std::string_view dottedName);

/// The label, or else the last part of the name; "-" for null.
std::string GetShortName(const Tavik::Version* version);
/// "7.0 (morvane.version.version7)"; "every version" for null.
std::string GetFullName(const Tavik::Version* version);

/// "string[]"
std::string GetTypeText(const Tavik::PropertyDescriptor& descriptor);
/// "optional, secret"; empty when there is nothing special about it.
std::string GetFlagsText(const Tavik::PropertyDescriptor& descriptor);
/// The properties of a type that `version` has, inherited ones included; null for no restriction.
std::size_t CountProperties(const Tavik::DataObjectType& type, const Tavik::Version* version);
/// The text that the schema has for a type, or for one of its members; null when there is none.
const char* FindDocumentation(std::string_view type, const char* member = nullptr);

/// The types of all loaded libraries but the runtime's own, library by library in slot order, borrowed.
std::vector<const Tavik::Type*> GetAllTypes();
/// The interface's own types, in slot order, borrowed; without empty slots.
std::vector<const Tavik::Type*> GetOwnTypes();
/// The types that derive from `base`, directly or not, in slot order.
std::vector<const Tavik::Type*> GetDerivedTypes(const Tavik::Type& base);

} // namespace Tool
