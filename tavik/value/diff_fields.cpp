#include "tavik/value/diff_fields.h"

#include "pellum/object/ref.h"
#include "pellum/system/date_time.h"
#include "tavik/type/data_object_type.h"
#include "tavik/value/any.h"
#include "tavik/value/compare.h"
#include "tavik/value/data_object.h"
#include "tavik/value/open_content.h"
#include "tavik/value/property_diff_set.h"
#include "tavik/value/text_values.h"

#include <cstdint>
#include <cstring>
#include <vector>

namespace Tavik {

namespace {

template <class T>
bool AreEqual(const void* a, const void* b) {
    return *static_cast<const T*>(a) == *static_cast<const T*>(b);
}

} // namespace

bool AreScalarsEqual(const Type& type, const void* a, const void* b) {
    switch (type.GetKind()) {
    case TypeKind::Boolean:
    case TypeKind::Byte: return std::memcmp(a, b, 1) == 0;
    case TypeKind::Int:
    case TypeKind::Enum: return std::memcmp(a, b, sizeof(std::int32_t)) == 0;
    case TypeKind::Long: return AreEqual<std::int64_t>(a, b);
    case TypeKind::Float: return AreEqual<float>(a, b);
    case TypeKind::String: return AreEqual<std::string>(a, b);
    case TypeKind::DateTime: return AreEqual<Pellum::System::DateTime>(a, b);
    case TypeKind::Binary: return AreEqual<std::vector<std::uint8_t>>(a, b);
    case TypeKind::TypeName: return AreEqual<TypeName>(a, b);
    case TypeKind::PropertyPath: return AreEqual<PropertyPath>(a, b);
    default: return a == b;
    }
}

void DiffByDescriptors(
    const DataObjectType& type, const Any& a, const Any& b, const std::string& prefix,
    PropertyDiffSet& diffs) {
    for (const Property* property : type.GetProperties()) {
        const std::string suffix = std::string(".") + property->GetName();
        if (property->IsCounted()) {
            DiffAnyPropertiesInt(
                property->GetCounted(&a), property->GetCounted(&b), prefix, suffix.c_str(),
                property->GetFlags(), diffs);
            continue;
        }
        const bool setA = property->IsSet(&a);
        const bool setB = property->IsSet(&b);
        if (setA != setB
            || (setA
                && !AreScalarsEqual(
                    *property->GetType(), property->GetFieldPointer(&a), property->GetFieldPointer(&b)))) {
            diffs.Add(prefix + suffix);
        }
    }
    if (type.IsOpen()) {
        const auto& objectA = static_cast<const DataObject&>(a);
        const auto& objectB = static_cast<const DataObject&>(b);
        type.GetOpenContent(objectA)->Diff(*type.GetOpenContent(objectB), prefix, diffs);
    }
}

} // namespace Tavik
