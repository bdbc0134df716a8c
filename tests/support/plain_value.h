#pragma once

#include "tavik/type/type_of.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <type_traits>
#include <vector>

namespace TestSupport {

/// Calls `use(std::type_identity<T>())` with the C++ type of plain values of a scalar kind; an enumeration's
/// is the 32-bit number.
template <class Use>
void WithPlainType(Tavik::TypeKind kind, Use use) {
    using Tavik::TypeKind;
    switch (kind) {
    case TypeKind::Boolean: return use(std::type_identity<bool>());
    case TypeKind::Byte: return use(std::type_identity<signed char>());
    case TypeKind::Int:
    case TypeKind::Enum: return use(std::type_identity<std::int32_t>());
    case TypeKind::Long: return use(std::type_identity<std::int64_t>());
    case TypeKind::Float: return use(std::type_identity<float>());
    case TypeKind::String: return use(std::type_identity<std::string>());
    case TypeKind::DateTime: return use(std::type_identity<Pellum::System::DateTime>());
    case TypeKind::Binary: return use(std::type_identity<std::vector<std::uint8_t>>());
    case TypeKind::TypeName: return use(std::type_identity<Tavik::TypeName>());
    case TypeKind::PropertyPath: return use(std::type_identity<Tavik::PropertyPath>());
    default: FAIL() << "no scalar kind: " << static_cast<unsigned>(kind);
    }
}

} // namespace TestSupport
