#include "tavik/value/copy_properties.h"

#include "tavik/type/data_object_type.h"
#include "tavik/type/type_registry.h"
#include "tavik/value/clone.h"
#include "tavik/value/data_object.h"
#include "tavik/value/open_content.h"

namespace Tavik {

void CopyProperties(DataObjectType* (*type)(), DataObject& target, const DataObject& source) {
    TypeRegistry::Instance().Load(); // the types are complete from then on, whoever is loading them
    if (const OpenContent* content = type()->GetOpenContent(source)) {
        *type()->GetOpenContent(target) = *content;
    }
    for (const Property* property : type()->GetProperties()) {
        if (!property->IsSet(&source)) {
            continue;
        }
        if (property->IsCounted()) {
            CloneInto(target, *property, property->GetCounted(&source));
        } else {
            property->Set(&target, property->GetFieldPointer(&source));
        }
    }
}

} // namespace Tavik
