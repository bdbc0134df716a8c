#pragma once

#include "pellum/object/ref.h"
#include "pellum/system/date_time.h"
#include "tavik/export.h"
#include "tavik/template_export.h"
#include "tavik/type/enum_type.h"
#include "tavik/value/text_values.h"

#include <cstdint>
#include <string>
#include <type_traits>
#include <vector>

namespace Tavik {

class DataObjectType;
class DynamicData;
class ManagedObjectType;
class MethodFault;
class RuntimeFault;

/// The registered type of a generated class, borrowed; null before its library has been loaded by the
/// registry. Each generated class has its own specialisation.
template <class T>
DataObjectType* GetDoType();
template <class E>
EnumType* GetEnumType();
template <class T>
ManagedObjectType* GetMoType();

template <>
TAVIK_API DataObjectType* GetDoType<DynamicData>();
template <>
TAVIK_API DataObjectType* GetDoType<MethodFault>();
template <>
TAVIK_API DataObjectType* GetDoType<RuntimeFault>();

/// The runtime's built-in scalar type of that kind, or the root of managed types, borrowed; null for the
/// other kinds. Thread safe.
TAVIK_API Type* GetBuiltinType(TypeKind kind);

/// The kind of the built-in type that a C++ type stands for; other C++ types have none.
template <class T>
struct KindOf;

template <>
struct KindOf<bool> : std::integral_constant<TypeKind, TypeKind::Boolean> {};

template <>
struct KindOf<signed char> : std::integral_constant<TypeKind, TypeKind::Byte> {};

template <>
struct KindOf<std::int32_t> : std::integral_constant<TypeKind, TypeKind::Int> {};

template <>
struct KindOf<std::int64_t> : std::integral_constant<TypeKind, TypeKind::Long> {};

template <>
struct KindOf<float> : std::integral_constant<TypeKind, TypeKind::Float> {};

template <>
struct KindOf<std::string> : std::integral_constant<TypeKind, TypeKind::String> {};

template <>
struct KindOf<Pellum::System::DateTime> : std::integral_constant<TypeKind, TypeKind::DateTime> {};

template <>
struct KindOf<std::vector<std::uint8_t>> : std::integral_constant<TypeKind, TypeKind::Binary> {};

template <>
struct KindOf<TypeName> : std::integral_constant<TypeKind, TypeKind::TypeName> {};

template <>
struct KindOf<PropertyPath> : std::integral_constant<TypeKind, TypeKind::PropertyPath> {};

template <>
struct KindOf<Pellum::Ref<Any>> : std::integral_constant<TypeKind, TypeKind::Any> {};

template <>
struct KindOf<Pellum::Ref<MoRef>> : std::integral_constant<TypeKind, TypeKind::Managed> {};

/// The type of values of a C++ type: built-in, or an enumeration's.
template <class T>
Type* TypeOf() {
    if constexpr (std::is_enum_v<T>) {
        return GetEnumType<T>();
    } else {
        return GetBuiltinType(KindOf<T>::value);
    }
}

} // namespace Tavik
