#include "tavik/value/data_object.h"

#include "tavik/descriptor/builtin.h"
#include "tavik/type/data_object_type.h"
#include "tavik/type/type_of.h"
#include "tavik/type/type_registry.h"
#include "tavik/value/clone.h"
#include "tavik/value/compare.h"
#include "tavik/value/diff_fields.h"

namespace Tavik {

Type* DataObject::_GetType() const {
    return _GetDataType();
}

DynamicData* DynamicData::_Clone() const {
    return CloneObject(*this);
}

bool DynamicData::_IsEqual(const Any* /*other*/, bool /*partial*/) const {
    return true;
}

void DynamicData::_DiffProperties(const Any* other, const std::string& prefix, PropertyDiffSet& diffs) const {
    TypeRegistry::Instance().Load(); // objects know their types from then on
    if (const DataObjectType* type = _GetDataType()) {
        DiffByDescriptors(*type, *this, *other, prefix, diffs);
    }
}

DataObjectType* DynamicData::_GetDataType() const {
    return GetDoType<DynamicData>();
}

} // namespace Tavik
