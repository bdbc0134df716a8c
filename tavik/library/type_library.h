#pragma once

#include "tavik/descriptor/records.h"
#include "tavik/export.h"
#include "tavik/type/data_object_type.h"
#include "tavik/type/enum_type.h"
#include "tavik/type/managed_object_type.h"
#include "tavik/type/type_info_loader.h"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <span>
#include <string_view>

/// What a library of generated types is made of, and how its type objects are created from it.
namespace Tavik {

/// A descriptor field that points into another library. It is null in the image, because the address of
/// another library's data is no constant everywhere, and is stored at start-up.
struct ImportedReference {
    const TypeInfo** field;
    std::uint16_t import; ///< position in the list of the library's imports
};

/// One enumeration of a library. `create` makes an object of the library's own class derived from `EnumType`,
/// or null when out of memory.
struct EnumRegistration {
    const EnumTypeInfo* info;
    const EnumFuncs* functions;
    EnumType* (*create)(const EnumTypeInfo* info, const EnumFuncs* functions);
};

/// The traits of one of a library's data types that has some.
struct DataTypeTraitsRow {
    std::size_t index; ///< among the data types
    DataTypeTraits traits;
};

/// `PropertyIndexFunction` over a list of property names, inherited ones first. A name that is declared again
/// stands for the most derived declaration.
template <const auto& names>
int FindPropertyIndex(const char* name, std::size_t length) {
    int index = static_cast<int>(std::size(names)) - 1;
    while (index >= 0 && names[index] != std::string_view(name, length)) {
        --index;
    }
    return index;
}

/// The tables of one library, all borrowed. `slots` has one entry per type: data and fault types first, then
/// enumerations, then managed types.
struct TypeLibrary {
    std::span<const DataTypeInfo> dataTypes;
    std::span<const DataTypeTraitsRow> traits;  ///< by rising index
    std::span<const DataLayout* const> layouts; ///< of the data types, in their order; empty when not known
    std::span<const EnumRegistration> enums;
    std::span<const ManagedTypeInfo> managedTypes;
    Type** slots;
    /// Not used: refers to the library's start-up, so that a linker that takes it from an archive takes that,
    /// too.
    const TypeInfoLoader* registration;
};

/// What a library's loader function does: creates the type objects in slot order, stores them in the slots,
/// sets `count` and returns the slots.
TAVIK_API Type** CreateTypes(const TypeLibrary& library, int& count);

} // namespace Tavik
