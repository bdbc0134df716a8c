#include "tavik/value/array_base.h"

#include "pellum/error/type_mismatch.h"
#include "tavik/type/data_object_type.h"
#include "tavik/type/type_registry.h"
#include "tavik/value/clone.h"
#include "tavik/value/compare.h"
#include "tavik/value/property_diff_set.h"
#include "tavik/value/scalar_array.h"

#include <algorithm>

namespace Tavik {

ArrayBase::~ArrayBase() = default;

DataArrayBase::DataArrayBase() noexcept = default;

DataArrayBase::~DataArrayBase() = default;

std::size_t DataArrayBase::GetLength() const {
    return m_elements.size();
}

void DataArrayBase::Remove(std::size_t index) {
    m_elements.erase(m_elements.begin() + static_cast<std::ptrdiff_t>(index));
}

void DataArrayBase::AppendElement(DataObject* element) {
    m_elements.emplace_back(element);
}

void DataArrayBase::ReplaceElement(std::size_t index, DataObject* element) {
    m_elements[index].Reset(element);
}

DataArrayBase* DataArrayBase::CloneArray(DataArrayBase* copy) const {
    const auto fill = [](Any& target, const Any& source, const void* /*context*/) {
        auto& to = static_cast<DataArrayBase&>(target).m_elements;
        const auto& from = static_cast<const DataArrayBase&>(source).m_elements;
        to.resize(from.size());
        for (std::size_t i = 0; i < to.size(); ++i) {
            CloneInto(&to[i], from[i].Get());
        }
    };
    return static_cast<DataArrayBase*>(FillClone(copy, *this, fill, nullptr));
}

void DataArrayBase::AppendChecked(Any* element) {
    TypeRegistry::Instance().Load(); // the types are complete from then on, whoever is loading them
    const auto* object = dynamic_cast<DataObject*>(element);
    const auto* wanted = static_cast<const DataObjectType*>(_GetElementType());
    const DataObjectType* type = object == nullptr ? nullptr : object->_GetDataType();
    if (element != nullptr && (type == nullptr || !type->IsA(wanted))) {
        Pellum::ThrowTypeMismatchException(
            wanted == nullptr ? "a registered type" : wanted->GetName(),
            type == nullptr ? "another class" : type->GetName());
    }
    m_elements.emplace_back(static_cast<DataObject*>(element));
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
        DiffValues(GetElement(i), that.GetElement(i), path, 0, diffs);
    });
}

} // namespace Tavik
