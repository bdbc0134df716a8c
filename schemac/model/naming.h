#pragma once

#include "schemac/model/type.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Every name of generated code is made here and nowhere else.
namespace Schemac::Naming {

/// First letter raised: "hostname" gives "Hostname".
std::string Capitalised(std::string_view name);

/// All letters raised: "ostrelVM" gives "OSTRELVM".
std::string UpperCase(std::string_view name);

/// "SSLCertificateData" gives "ssl_certificate_data".
std::string SnakeCase(std::string_view name);

/// Parts between the separators: "a.b" gives {"a", "b"}.
std::vector<std::string> Split(std::string_view text, std::string_view separator);
std::string Join(const std::vector<std::string>& parts, std::string_view separator);

/// "morvane.propertyInfo.Y" gives {"Morvane", "PropertyInfo", "Y"}.
std::vector<std::string> ClassPath(std::string_view dottedName);

/// "Morvane::ComputerSpec::LiveComputerLocation"; "Tavik::DynamicData" for a built-in class.
std::string QualifiedClassName(const Model::Type& type);

/// "Morvane::Info" for a top-level type of morvane.info, the namespace around the outermost class of any
/// other.
std::string CppNamespace(const Model::Type& type);

/// The name itself, with a trailing '_' when C++ reserves it.
std::string Escaped(std::string_view name);

/// Parameter of a generated function, from a parameter or property name.
std::string ParameterName(std::string_view name);

/// Data member of a property: "m_hostname".
std::string MemberName(std::string_view property);

/// Enumerator of a tag, spelled like the tag where C++ allows it.
std::string Enumerator(std::string_view tag);

/// "VMTYPE_OSTRELVM" for the tag "ostrelVM" of VmType.
std::string TagConstant(const Model::EnumType& type, std::string_view tag);

/// "METHOD_LOGIN".
std::string MethodConstant(std::string_view method);

/// Member function of an interface for a method: "Login"; gets a trailing '_' when the interface already
/// has a member of that name (its constructor, or one inherited from the runtime).
std::string MethodFunction(std::string_view method, const Model::Type& owner);

/// The class that is thrown for a fault, nested in the fault's: "Exception"; gets a trailing '_' where that
/// is the fault's own name.
std::string ExceptionClass(const Model::Type& fault);

/// Parameter of that class's constructor, from a property name: never that of a class that it derives from.
std::string ExceptionParameter(std::string_view property);

/// Whether a fault's class, or one nested in it, of that name would clash with what is generated or inherited
/// there.
bool IsFaultMember(std::string_view name);

/// Prefixes of the accessors of a property.
enum class Accessor : std::uint8_t { Get, Is, GetPtr, Peek, IsSet, Set, Swap, Unset };

/// The accessors that a property of a data type gets, in the order in which they are declared.
/// A property of a managed type has the single accessor Get.
std::vector<Accessor> AccessorsOf(const Model::Property& property, const Model::Type& owner);

/// "GetHostname", "IsVerifyPeer"; gets a trailing '_' where MethodFunction would.
std::string AccessorName(Accessor accessor, std::string_view property, const Model::Type& owner);

/// Stub of a managed type, "Morvane::SessionManagerStub"; what all stubs stand on for the runtime's root.
std::string StubClass(const Model::Type& type);

/// A path without the extension of its file, if that has one: "types/api/core/session" of "….tavik".
std::string PathStem(const std::string& path);

/// Header that declares the stub: "types/api/core/session_manager_stub.h".
std::string StubHeaderPath(const Model::Type& type);

/// Exported record of a type: "gMorvaneComputerSpecTypeInfo"; "gBoolTypeInfo" for a built-in one.
std::string DescriptorGlobal(const Model::Type& type);

/// Exported array of a managed type: "gMorvaneSessionManagerMethodObjects".
std::string MethodObjectsGlobal(const Model::ManagedType& type);

/// "MorvaneLogin": wire name of a method that is not given another.
std::string DefaultMethodWireName(std::string_view nameSpace, std::string_view method);

/// Header that declares a type, by its outermost enclosing type: "types/api/core/computer_spec.h".
/// Empty for a built-in type.
std::string HeaderPath(const Model::Type& type);

/// Field of a protobuf message, from a property or wire name: "ssl_certificate_data".
std::string ProtoField(std::string_view name);

/// What protobuf calls a field in JSON unless it is told: "sslCertificateData".
std::string ProtoJsonName(std::string_view field);

/// Value of a protobuf enumeration, where all share one scope: "MORVANE_EVENT_TYPE_INFO".
std::string ProtoEnumValue(const Model::EnumType& type, std::string_view tag);

/// Message that holds an object of the type, or of one derived from it: "MorvaneEventOrDerived".
std::string ProtoChoice(const Model::Type& type);

/// True for the keywords and alternative tokens of C++20.
bool IsCppKeyword(std::string_view word);

} // namespace Schemac::Naming
