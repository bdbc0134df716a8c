#pragma once

#include "pellum/object/ref.h"
#include "tavik/value/data_array.h"
#include "zabro/api/element_description.h"

#include <initializer_list>
#include <utility>

namespace Example {

using Descriptions = Tavik::DataArray<Zabro::ElementDescription>;

/// Texts for people, by key. What an element holds belongs to the infrastructure: it is open content.
inline Pellum::Ref<Descriptions> Describe(std::initializer_list<std::pair<const char*, const char*>> texts) {
    auto list = Pellum::MakeRef<Descriptions>();
    for (const auto& [key, label] : texts) {
        const auto element = Pellum::MakeRef<Zabro::ElementDescription>();
        element->_GetContent().SetText("key", key);
        element->_GetContent().SetText("label", label);
        list->Append(element.Get());
    }
    return list;
}

} // namespace Example
