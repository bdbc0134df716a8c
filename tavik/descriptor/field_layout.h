#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace Tavik {

/// The form in which an object holds a property. Forms, not types: a boolean is held as a byte is, an
/// enumeration value as a number.
enum class FieldForm : std::uint8_t {
    Unknown, ///< only the functions of the type's record know
    Byte,
    Int,
    Long,
    Float,
    String,
    DateTime,
    Binary,
    TypeNameText,
    PropertyPathText,
    OptionalBoolean,
    OptionalByte,
    OptionalInt,
    OptionalLong,
    OptionalFloat,
    OptionalString,
    OptionalDateTime,
    OptionalBinary,
    OptionalTypeNameText,
    OptionalPropertyPathText,
    Object, ///< a counted reference to anything but an array
    Array,  ///< a counted reference to an array
};

/// Where and in what form objects of a class hold a property.
struct FieldLayout {
    std::uint32_t offset = 0; ///< bytes from the object's start
    FieldForm form = FieldForm::Unknown;
    /// Properties from this one on that stand next to each other and are equal when their bytes are, and how
    /// many bytes they are together: copied and compared at once.
    std::uint8_t runFields = 1;
    std::uint16_t runBytes = 0;
};

/// Bytes of a form that is its bytes, without padding; 0 for the others.
constexpr std::uint16_t GetPlainBytes(FieldForm form) {
    switch (form) {
    case FieldForm::Byte: return 1;
    case FieldForm::Int: return 4;
    case FieldForm::Long: return 8;
    default: return 0;
    }
}

/// The layout of a class's own properties with the runs in it.
template <std::size_t kCount>
constexpr std::array<FieldLayout, kCount> WithRuns(std::array<FieldLayout, kCount> fields) {
    constexpr std::uint8_t kMostFields = 255;
    for (std::size_t i = kCount; i-- > 0;) {
        FieldLayout& field = fields[i];
        field.runBytes = GetPlainBytes(field.form);
        if (field.runBytes != 0 && i + 1 < kCount && fields[i + 1].runBytes != 0
            && fields[i + 1].runFields < kMostFields
            && field.offset + field.runBytes == fields[i + 1].offset) {
            field.runBytes = static_cast<std::uint16_t>(field.runBytes + fields[i + 1].runBytes);
            field.runFields = static_cast<std::uint8_t>(fields[i + 1].runFields + 1);
        }
    }
    return fields;
}

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
