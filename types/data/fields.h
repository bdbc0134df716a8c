#pragma once

#include "tavik/descriptor/field_layout.h"
#include "tavik/descriptor/records.h"
#include "tavik/type/data_object_type.h"
#include "tavik/value/cast.h"
#include "tavik/value/field_storage.h"
#include "types/data/field_words.h"

#include <string>

namespace Tavik {
class PropertyDiffSet;
}

/// The field table of a data class and what works from it: copying, equality, difference, and access by
/// index.
namespace Morvane::Support {

/// Checks the class of a value for a reference; throws `Pellum::TypeMismatchException`.
using ClassCheck = void (*)(Tavik::Any* value);

/// The own properties of a class, in descriptor order, and where the inherited ones are.
struct FieldTable : Tavik::DataLayout {
    /// The same properties by words: what copying, equality and difference go over.
    WordMap map;
    const Tavik::PropertyDescriptor* properties;
    /// The checks of references by index, null for other properties; null when there are no references.
    const ClassCheck* checks;
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

/// The check of a member of type `Member`; null unless that is a reference.
template <class Member>
inline constexpr ClassCheck kCheckOf = nullptr;

template <class T>
inline constexpr ClassCheck kCheckOf<Pellum::Ref<T>> = &CheckClass<T>;

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
