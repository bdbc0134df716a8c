#include "tavik/value/copy_properties.h"

#include "tavik/type/data_object_type.h"
#include "tavik/type/type_registry.h"
#include "tavik/value/data_object.h"
#include "tavik/value/open_content.h"

#include <new>

namespace Tavik {

void CopyProperties(DataObjectType* (*type)(), DataObject& target, const DataObject& source) {
    if (type() == nullptr) {
        TypeRegistry::Instance().Load();
    }
    if (const OpenContent* content = type()->GetOpenContent(source)) {
        *type()->GetOpenContent(target) = *content;
    }
    for (const Property* property : type()->GetProperties()) {
        if (!property->IsSet(&source)) {
            continue;
        }
        if (!property->IsCounted()) {
            property->Set(&target, property->GetFieldPointer(&source));
            continue;
        }
        const Pellum::Ref<Any> copy(property->GetCounted(&source)->_Clone());
        if (copy == nullptr) {
            throw std::bad_alloc();
        }
        property->Set(&target, copy.Get());
    }
}

} // namespace Tavik
