#pragma once

#include "tavik/descriptor/records.h"

/// The field functions of a generated class, as its descriptor record holds them. Declared here for the
/// tables; defined and instantiated beside the class.
namespace Morvane::Support {

template <class T>
struct FieldFunctions {
    static void* Get(const Tavik::Any* object, int index, void* out);
    static const void* Pointer(const Tavik::Any* object, int index);
    static void Set(Tavik::Any* object, int index, const void* in);
    static void Swap(Tavik::Any* object, int index, void* other);
    static bool IsSet(const Tavik::Any* object, int index);
    static void Reset(Tavik::Any* object, int index);
    static Tavik::DataObject* Create();
    static Tavik::DataArrayBase* CreateArray();
};

/// Whether a property is set of a class that has none: whatever the index, yes.
bool IsAlwaysSet(const Tavik::Any* object, int index);

/// What a class has of properties, which decides what slots of its record are filled.
enum class Properties {
    None,
    Required, ///< no optional one
    WithOptional,
};

/// The record of a class.
template <class T>
constexpr Tavik::DataTypeInfo DescribeData(
    const Tavik::TypeInfo* type, const Tavik::TypeInfo* base, const Tavik::PropertyDescriptor* properties,
    Properties kind) {
    using Functions = FieldFunctions<T>;
    const bool any = kind != Properties::None;
    return {
        .type = type,
        .base = base,
        .properties = properties,
        .get = any ? &Functions::Get : nullptr,
        .fieldPointer = any ? &Functions::Pointer : nullptr,
        .set = any ? &Functions::Set : nullptr,
        .swap = any ? &Functions::Swap : nullptr,
        .isSet = any ? &Functions::IsSet : &IsAlwaysSet,
        .reset = kind == Properties::WithOptional ? &Functions::Reset : nullptr,
        .create = &Functions::Create,
        .createArray = &Functions::CreateArray,
        .reserved = 0,
    };
}

} // namespace Morvane::Support
