#include "tavik/value/array_base.h"

#include "tavik/value/clone.h"
#include "tavik/value/compare.h"
#include "tavik/value/property_diff_set.h"
#include "tavik/value/scalar_array.h"

#include <algorithm>

namespace Tavik {

ArrayBase::~ArrayBase() = default;

DataArrayBase::DataArrayBase() noexcept = default;

DataArrayBase::DataArrayBase(const DataArrayBase& other)
    : ArrayBase(other), m_elements(other.m_elements.size()) {
    for (std::size_t i = 0; i < m_elements.size(); ++i) {
        CloneInto(&m_elements[i], other.GetElement(i));
    }
}

DataArrayBase::~DataArrayBase() = default;

std::size_t DataArrayBase::GetLength() const {
    return m_elements.size();
}

void DataArrayBase::Remove(std::size_t index) {
    m_elements.erase(m_elements.begin() + static_cast<std::ptrdiff_t>(index));
}

void DataArrayBase::AppendChecked(Any* element) {
    m_elements.emplace_back(CheckElement(element));
}

bool DataArrayBase::_IsEqual(const Any* other, bool partial) const {
    const auto& that = static_cast<const DataArrayBase&>(*other);
    return std::equal(
        m_elements.begin(), m_elements.end(), that.m_elements.begin(), that.m_elements.end(),
        [partial](const auto& a, const auto& b) { return AreEqualAnysInt(a.Get(), b.Get(), 0, partial); });
}

void DataArrayBase::_DiffProperties(
    const Any* other, const std::string& prefix, PropertyDiffSet& diffs) const {
    const auto& that = static_cast<const DataArrayBase&>(*other);
    DiffElements(GetLength(), that.GetLength(), prefix, diffs, [&](std::size_t i, const std::string& path) {
        DiffAnyPropertiesInt(GetElement(i), that.GetElement(i), path, "", 0, diffs);
    });
}

} // namespace Tavik
