#pragma once

#include "bench/names.h"
#include "bench/workload.h"
#include "tavik/codec/json/json.h"
#include "tavik/type/data_object_type.h"
#include "tavik/value/array_base.h"
#include "tavik/value/property_diff_set.h"

namespace Bench {

/// A new value of the class of `value`, by its type.
inline Pellum::Ref<Tavik::Any> CreateLike(const Tavik::Any* value) {
    if (const auto* array = dynamic_cast<const Tavik::ArrayBase*>(value)) {
        return Pellum::Ref<Tavik::Any>(array->_GetElementType()->NewArray());
    }
    return Pellum::Ref<Tavik::Any>(static_cast<const Tavik::DataObject*>(value)->_GetDataType()->New());
}

/// All that takes longer the larger the value is: tells `add(operation, body)` of each. The workload is used
/// by the bodies.
template <class Add>
void ForEachSizedOperation(const Workload& workload, Add add) {
    const Workload* const w = &workload;
    add(kClone, [w] { return Pellum::Ref<Tavik::Any>(w->value->_Clone()); });
    add(kEquality, [w] { return w->value->_IsEqual(w->same.Get(), false); });
    add(kLateInequality, [w] { return w->value->_IsEqual(w->lastDiffers.Get(), false); });
    add(kDifference, [w] {
        Tavik::PropertyDiffSet paths;
        w->value->_DiffProperties(w->lastDiffers.Get(), "", paths);
        return paths;
    });
    add(kEncode, [w] { return Tavik::Json::Encode(w->value.Get()); });
    add(kDecode, [w] { return Tavik::Json::Decode(w->text); });
}

/// Those, and what does not.
template <class Add>
void ForEachOperation(const Workload& workload, Add add) {
    const Tavik::Any* const value = workload.value.Get();
    add(kCreate, [value] { return CreateLike(value); });
    ForEachSizedOperation(workload, add);
}

} // namespace Bench
