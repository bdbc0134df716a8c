#pragma once

/// What generated enumerations stand on.

#include "tavik/template_export.h"    // IWYU pragma: export
#include "tavik/type/type_of.h"       // IWYU pragma: export
#include "tavik/value/primitive.h"    // IWYU pragma: export
#include "tavik/value/scalar_array.h" // IWYU pragma: export

// NOLINTBEGIN(bugprone-macro-parentheses)

/// What stands behind the classes of a header, once for each enumeration: its registered type, and the
/// classes of its boxed values and arrays, which belong to the library that has the enumeration.
#define TYPES_ENUM_TYPE(API, Enum)                                                                           \
    template <>                                                                                              \
    API Tavik::EnumType* Tavik::GetEnumType<Enum>();                                                         \
    TAVIK_DECLARE_INSTANTIATION(API, Tavik::Primitive<Enum>)                                                 \
    TAVIK_DECLARE_INSTANTIATION(API, Tavik::Array<Enum>)

/// Compiles those classes, once in the library.
#define TYPES_ENUM_CLASSES(Enum)                                                                             \
    TAVIK_DEFINE_INSTANTIATION(Tavik::Primitive<Enum>)                                                       \
    TAVIK_DEFINE_INSTANTIATION(Tavik::Array<Enum>)

// NOLINTEND(bugprone-macro-parentheses)
