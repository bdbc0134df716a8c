#pragma once

/// What the definitions of generated classes stand on. Included by generated sources only.

#include "pellum/object/block_cache.h"
#include "tavik/library/type_library.h"
#include "types/data/data_object.h"
#include "types/data/enum_functions.h"
#include "types/data/field_functions.h"
#include "types/data/field_words.h"
#include "types/data/fields.h"

#include <array>
#include <new>

// Data classes have virtual functions and one base each, for which the compilers give offsets their plain
// meaning.
#pragma GCC diagnostic ignored "-Winvalid-offsetof"

/// A row of a class's layout, and one of its checks.
#define TYPES_FIELD(Class, member)                                                                           \
    Tavik::FieldLayout {                                                                                     \
        offsetof(Class, member), Tavik::FieldFormOf<decltype(Class::member)>::kForm, sizeof(Class::member)   \
    }
#define TYPES_CHECK(Class, member) Morvane::Support::kCheckOf<decltype(Class::member)>

/// Compiles the field functions of a class, those that `DescribeData` puts into its record, and its array.
#define TYPES_FIELD_FUNCTIONS_None(Class)                                                                    \
    TAVIK_DEFINE_INSTANTIATION(Tavik::DataArray<Class>)                                                      \
    template Tavik::DataObject* Morvane::Support::FieldFunctions<Class>::Create();                           \
    template Tavik::DataArrayBase* Morvane::Support::FieldFunctions<Class>::CreateArray()
#define TYPES_FIELD_FUNCTIONS_Required(Class)                                                                \
    template void* Morvane::Support::FieldFunctions<Class>::Get(const Tavik::Any*, int, void*);              \
    template const void* Morvane::Support::FieldFunctions<Class>::Pointer(const Tavik::Any*, int);           \
    template void Morvane::Support::FieldFunctions<Class>::Set(Tavik::Any*, int, const void*);               \
    template void Morvane::Support::FieldFunctions<Class>::Swap(Tavik::Any*, int, void*);                    \
    template bool Morvane::Support::FieldFunctions<Class>::IsSet(const Tavik::Any*, int);                    \
    TYPES_FIELD_FUNCTIONS_None(Class)
#define TYPES_FIELD_FUNCTIONS_WithOptional(Class)                                                            \
    template void Morvane::Support::FieldFunctions<Class>::Reset(Tavik::Any*, int);                          \
    TYPES_FIELD_FUNCTIONS_Required(Class)

namespace Morvane::Support {

template <class T>
void* FieldFunctions<T>::Get(const Tavik::Any* object, int index, void* out) {
    return GetField(ClassTraits<T>::kTable, object, index, out);
}

template <class T>
const void* FieldFunctions<T>::Pointer(const Tavik::Any* object, int index) {
    return GetFieldPointer(ClassTraits<T>::kTable, object, index);
}

template <class T>
void FieldFunctions<T>::Set(Tavik::Any* object, int index, const void* in) {
    SetField(ClassTraits<T>::kTable, object, index, in);
}

template <class T>
void FieldFunctions<T>::Swap(Tavik::Any* object, int index, void* other) {
    SwapField(ClassTraits<T>::kTable, object, index, other);
}

template <class T>
bool FieldFunctions<T>::IsSet(const Tavik::Any* object, int index) {
    return IsFieldSet(ClassTraits<T>::kTable, object, index);
}

template <class T>
void FieldFunctions<T>::Reset(Tavik::Any* object, int index) {
    ResetField(ClassTraits<T>::kTable, object, index);
}

template <class T>
Tavik::DataObject* FieldFunctions<T>::Create() {
    void* storage = Pellum::AllocateZeroedBlock(sizeof(T));
    return storage == nullptr ? nullptr : Tavik::KeepStorage(::new (storage) T);
}

template <class T>
Tavik::DataArrayBase* FieldFunctions<T>::CreateArray() {
    return new (std::nothrow) Tavik::DataArray<T>;
}

/// `_Clone` of a class.
template <class T>
T* Clone(const T& self) {
    return static_cast<T*>(CloneData(ClassTraits<T>::kTable, self));
}

/// `_IsEqual` of a class, but for inherited properties of another library.
template <class T>
bool IsEqual(const T& self, const Tavik::Any* other, bool partial) {
    return AreFieldsEqual(ClassTraits<T>::kTable, &self, other, partial);
}

/// `_DiffProperties` of a class, likewise.
template <class T>
void DiffProperties(
    const T& self, const Tavik::Any* other, const std::string& prefix, Tavik::PropertyDiffSet& diffs) {
    DiffFields(ClassTraits<T>::kTable, &self, other, prefix, diffs);
}

/// The array of a property, made first when there is none.
template <class A>
A* GetOrCreateArray(Pellum::Ref<A>& member) {
    if (!member) {
        member.Reset(new A);
    }
    return member.Get();
}

} // namespace Morvane::Support
