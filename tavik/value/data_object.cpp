#include "tavik/value/data_object.h"

#include "pellum/object/block_cache.h"
#include "tavik/descriptor/builtin.h"
#include "tavik/type/data_object_type.h"
#include "tavik/type/type_of.h"
#include "tavik/type/type_registry.h"
#include "tavik/value/clone.h"
#include "tavik/value/compare.h"
#include "tavik/value/diff_fields.h"

namespace Tavik {

DataObject::~DataObject() = default;

void* DataObject::operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return AllocateZeroed(size);
}

void* DataObject::operator new(std::size_t size) {
    void* storage = AllocateZeroed(size);
    if (storage == nullptr) {
        throw std::bad_alloc();
    }
    return storage;
}

void DataObject::operator delete(void* storage, std::size_t size) noexcept {
    Pellum::FreeBlock(storage, size);
}

void DataObject::operator delete(void* storage, const std::nothrow_t& /*tag*/) noexcept {
    ::operator delete(storage); // of unknown size
}

Type* DynamicData::_GetType() const {
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
