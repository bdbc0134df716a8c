#include "tavik/managed/managed_method.h"

#include "tavik/type/type.h"
#include "tavik/type/version.h"

#include <algorithm>

namespace Tavik {

namespace {

bool IsIn(const Version* introduced, const Version* version) {
    return version == nullptr || introduced == nullptr || version->Includes(*introduced);
}

} // namespace

bool CallValue::IsPartOf(const Version* wanted) const {
    return IsIn(version, wanted);
}

bool ManagedMethod::IsPartOf(const Version* version) const {
    return IsIn(m_version, version);
}

bool ManagedMethod::Declares(const Type& fault) const {
    return std::any_of(
        m_faults.begin(), m_faults.end(), [&](const Type* declared) { return fault.IsA(declared); });
}

} // namespace Tavik
