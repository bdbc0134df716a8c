#pragma once

#include <cstddef>
#include <cstdint>

namespace Tavik {

/// The form in which an object holds a property. Forms, not types: a boolean is held as a byte is, an
/// enumeration value as a number. The order counts: few comparisons tell what the address of a value is.
enum class FieldForm : std::uint8_t {
    Unknown, ///< only the functions of the type's record know
    // Plain members, which always have a value.
    Byte,
    Int,
    Long,
    Float,
    String,
    DateTime,
    Binary,
    TypeNameText,
    PropertyPathText,
    // Those that tell in their own way whether they have one.
    OptionalBoolean,
    OptionalByte,
    OptionalInt,
    OptionalLong,
    OptionalFloat,
    OptionalDateTime,
    OptionalBinary,
    OptionalTypeNameText,
    OptionalPropertyPathText,
    Array, ///< a counted reference to an array
    // Pointers to the value.
    OptionalString,
    Object, ///< a counted reference to anything but an array
};

/// Where and in what form objects of a class hold a property.
struct FieldLayout {
    std::uint32_t offset = 0; ///< bytes from the object's start
    FieldForm form = FieldForm::Unknown;
    std::uint16_t size = 0; ///< bytes of the member, its own padding included
};

inline const void* GetMember(const void* object, FieldLayout layout) {
    return static_cast<const char*>(object) + layout.offset;
}

inline void* GetMember(void* object, FieldLayout layout) {
    return static_cast<char*>(object) + layout.offset;
}

/// The layout of a class's own properties, in descriptor order.
struct DataLayout {
    const FieldLayout* fields; ///< borrowed; null when there are none
    int count;
};

} // namespace Tavik
