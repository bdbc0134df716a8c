#include "tavik/codec/json/property_access.h"

#include "pellum/text/equal.h"
#include "pellum/text/text_cache.h"

#include <algorithm>
#include <string>

namespace Tavik::Json {

namespace {

/// Optional properties that are left out in a row, so that the next one is found without looking up its name.
constexpr std::size_t kMostSkipped = 8;

} // namespace

std::size_t FindPosition(const DataObjectType& type, std::size_t next, std::string_view name) {
    const auto properties = type.GetProperties();
    const std::size_t end = std::min(next + kMostSkipped, properties.size());
    for (std::size_t position = next; position < end; ++position) {
        if (Pellum::AreEqual(name, properties[position]->GetNameText())) {
            return position;
        }
    }
    const Property* const found = type.FindProperty(name);
    return found != nullptr ? type.GetPosition(*found) : properties.size();
}

void SetString(const Property& property, Any& object, std::string_view value) {
    const FieldLayout layout = property.GetLayout();
    void* const member = GetMember(&object, layout);
    if (layout.form == FieldForm::String) {
        Pellum::CopyText(InlineStorage<std::string>::As(member), value);
    } else if (layout.form == FieldForm::OptionalString) {
        OptionalStorage<std::string>::As(member).SetValue(value);
    } else {
        const std::string text(value);
        property.Set(&object, &text);
    }
}

void SetCounted(const Property& property, Any& object, Pellum::Ref<Any> value) {
    const FieldLayout layout = property.GetLayout();
    if (layout.form == FieldForm::Object || layout.form == FieldForm::Array) {
        StoreCounted(GetMember(&object, layout), value.Detach());
    } else {
        property.Set(&object, value.Get());
    }
}

} // namespace Tavik::Json
