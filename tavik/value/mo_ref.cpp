#include "tavik/value/mo_ref.h"

#include "tavik/type/type.h"
#include "tavik/type/type_registry.h"
#include "tavik/value/clone.h"
#include "tavik/value/property_diff_set.h"

#include <cstring>
#include <utility>

namespace Tavik {

MoRef::MoRef(const TypeInfo* type, std::string id) : m_type(type), m_id(std::move(id)) {}

MoRef::MoRef(const MoRef&) = default;
MoRef::~MoRef() = default;

Type* MoRef::_GetType() const {
    return const_cast<Type*>(TypeRegistry::Instance().FindByWireName(m_type->wireName));
}

MoRef* MoRef::_Clone() const {
    return CloneObject(*this);
}

bool MoRef::_IsEqual(const Any* other, bool /*partial*/) const {
    const auto& that = static_cast<const MoRef&>(*other);
    return m_id == that.m_id && std::strcmp(m_type->wireName, that.m_type->wireName) == 0;
}

void MoRef::_DiffProperties(const Any* other, const std::string& prefix, PropertyDiffSet& diffs) const {
    if (!_IsEqual(other, false)) {
        diffs.Add(prefix);
    }
}

} // namespace Tavik
