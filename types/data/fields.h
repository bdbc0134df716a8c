#pragma once

#include "tavik/descriptor/records.h"
#include "tavik/type/data_object_type.h"
#include "tavik/value/cast.h"
#include "types/data/storage.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace Tavik {
class PropertyDiffSet;
}

/// The field table of a data class and what works from it: copying, equality, difference, and access by
/// index.
namespace Morvane::Support {

/// One property of a class: where and in what form the object holds it. The descriptor row of the same index
/// says the rest.
struct Field {
    const StorageOps* storage;
    ClassCheck check;   ///< for references, else null
    const char* suffix; ///< the property's name behind a full stop
    std::uint32_t offset;
};

/// The own properties of a class, in descriptor order, and where the inherited ones are.
struct FieldTable {
    const Field* fields;
    const Tavik::PropertyDescriptor* properties;
    int count;
    /// Of the base, when that is generated into the same library; else null.
    const FieldTable* base;
    /// The type of a base that another library holds; null when there is none but the runtime's roots.
    Tavik::DataObjectType* (*foreignBase)();
    /// A new object of the class; null when out of memory.
    Tavik::DataObject* (*create)();
    /// The open content that the class adds to its base; null when it adds none.
    Tavik::OpenContentFunction content;
};

template <class T>
void CheckClass(Tavik::Any* value) {
    static_cast<void>(Tavik::CastReference<T>(value));
}

/// Describes a member of type `Member` at `offset`.
template <class Member>
struct FieldOf {
    static constexpr Field Make(std::size_t offset, const char* suffix) {
        return {&StorageOf<Member>::Ops::kOps, nullptr, suffix, static_cast<std::uint32_t>(offset)};
    }
};

template <class T>
struct FieldOf<Pellum::Ref<T>> {
    static constexpr Field Make(std::size_t offset, const char* suffix) {
        return {
            &StorageOf<Pellum::Ref<T>>::Ops::kOps, &CheckClass<T>, suffix,
            static_cast<std::uint32_t>(offset)};
    }
};

/// A deep copy of an object of exactly the class, inherited properties included. Null when out of memory for
/// the object itself; throws `std::bad_alloc` when out of memory for a part.
Tavik::Any* CloneData(const FieldTable& table, const Tavik::Any& source);
/// Whether all fields are equal, those of bases in the same library included. With `partial`, optional fields
/// that are unset in `b` match anything.
bool AreFieldsEqual(const FieldTable& table, const Tavik::Any* a, const Tavik::Any* b, bool partial);
/// Adds the paths of the fields that differ, those of bases in the same library included and first.
void DiffFields(
    const FieldTable& table, const Tavik::Any* a, const Tavik::Any* b, const std::string& prefix,
    Tavik::PropertyDiffSet& diffs);

/// The field functions of `DataTypeInfo`, for a class with that table. A bad index is a fail-fast trap.
void* GetField(const FieldTable& table, const void* object, int index, void* out);
const void* GetFieldPointer(const FieldTable& table, const void* object, int index);
void SetField(const FieldTable& table, void* object, int index, const void* in);
void SwapField(const FieldTable& table, void* object, int index, void* other);
bool IsFieldSet(const FieldTable& table, const void* object, int index);
void ResetField(const FieldTable& table, void* object, int index);

} // namespace Morvane::Support
