#pragma once

#include "pellum/object/optional.h"
#include "pellum/object/ref.h"
#include "tavik/type/data_object_type.h"
#include "tavik/value/any.h"
#include "tavik/value/field_storage.h"

#include <cstddef>
#include <string_view>

/// What a decoder does with the properties of objects, again and again.
namespace Tavik::Json {

/// Position of the property in the type's list, behind the last one when there is none of that name. It is
/// looked for from `next` on first: members mostly come in the order of the properties, with some left out.
std::size_t FindPosition(const DataObjectType& type, std::size_t next, std::string_view name);

/// Sets a property to a plain value, in its place where that is known.
template <class T>
void SetPlain(const Property& property, Any& object, const T& value) {
    constexpr FieldForm kForm = FieldFormOf<T>::kForm;
    constexpr FieldForm kOptionalForm = FieldFormOf<Pellum::Optional<T>>::kForm;
    const FieldLayout layout = property.GetLayout();
    const auto set = [&](auto storage) { storage.Set(GetMember(&object, layout), &value); };
    if (layout.form == kForm) {
        WithStorage(kForm, set);
    } else if (layout.form == kOptionalForm) {
        WithStorage(kOptionalForm, set);
    } else {
        property.Set(&object, &value);
    }
}

/// The same for a string.
void SetString(const Property& property, Any& object, std::string_view value);
/// The same for a counted value of the property's type.
void SetCounted(const Property& property, Any& object, Pellum::Ref<Any> value);

} // namespace Tavik::Json
