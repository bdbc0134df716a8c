#pragma once

#include "tavik/type/data_object_type.h"
#include "tavik/type/type.h"
#include "tavik/type/version.h"

#include <string>
#include <string_view>
#include <vector>

/// What can be said of the registered types without knowing them.
namespace Tool {

/// "data", "fault", "enum", "managed"; "built-in" for the runtime's own scalars.
const char* GetKindName(Tavik::TypeKind kind);
/// The C++ class of a dotted name: "morvane.ComputerSpec" gives "Morvane::ComputerSpec".
std::string GetClassName(std::string_view dottedName);
/// Path to include for the class of a type, "types/api/core/computer_spec.h"; empty when no header is known.
std::string GetHeaderPath(const Tavik::Type& type);
/// Path to include for the stub of a managed type, whose class is that of the type with "Stub" behind it;
/// empty when there is none.
std::string GetStubHeaderPath(const Tavik::Type& type);
/// The area of the types that stand in the interface's own namespace.
inline constexpr std::string_view kRootArea = "core";

/// The namespace that a dotted name belongs to, without the interface's own one: "agent.internal" of
/// "morvane.agent.internal.VolumeInfo", "core" of "morvane.ComputerSpec", "zabro.fault" of
/// "zabro.fault.NotFound".
std::string GetArea(std::string_view dottedName);
/// Whether the area is `wanted` or a deeper one, in any case.
bool IsInArea(std::string_view area, std::string_view wanted);

/// The label, or else the last part of the name; "-" for null.
std::string GetShortName(const Tavik::Version* version);
/// "7.0 (morvane.version.version7)"; "every version" for null.
std::string GetFullName(const Tavik::Version* version);

/// "string[]"
std::string GetTypeText(const Tavik::PropertyDescriptor& descriptor);
/// "optional, secret"; empty when there is nothing special about it.
std::string GetFlagsText(const Tavik::PropertyDescriptor& descriptor);
/// The short name of a version, given its full one.
std::string GetShortVersion(const char* name);

/// The types of all loaded libraries but the runtime's own, library by library in slot order, borrowed.
std::vector<const Tavik::Type*> GetAllTypes();
/// Whether the type is the runtime's own, such as the roots.
bool IsBuiltIn(const Tavik::Type& type);
/// The interface's own types, in slot order, borrowed; without empty slots.
std::vector<const Tavik::Type*> GetOwnTypes();
/// The types that derive from `base`, directly or not, in slot order.
std::vector<const Tavik::Type*> GetDerivedTypes(const Tavik::Type& base);

} // namespace Tool
