#pragma once

/// What the definitions of generated classes stand on. Included by generated sources only.

#include "tavik/library/type_library.h"
#include "types/data/data_object.h"
#include "types/data/enum_functions.h"
#include "types/data/field_functions.h"
#include "types/data/fields.h"

#include <cstring>
#include <new>
#include <type_traits>
#include <utility>

// Data classes have virtual functions and one base each, for which the compilers give offsets their plain
// meaning.
#pragma GCC diagnostic ignored "-Winvalid-offsetof"

/// A row of a field table.
#define TYPES_FIELD(Class, member, suffix)                                                                   \
    Morvane::Support::FieldOf<decltype(Class::member)>::Make(offsetof(Class, member), suffix)

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
    void* storage = Tavik::AllocateZeroed(sizeof(T));
    return storage == nullptr ? nullptr : Tavik::KeepStorage(::new (storage) T);
}

template <class T>
Tavik::DataArrayBase* FieldFunctions<T>::CreateArray() {
    return new (std::nothrow) Tavik::DataArray<T>;
}

/// `_IsEqual` of a class: inherited properties first, by the base's own function when the base is generated,
/// too.
template <class T, class Base>
bool IsEqual(const T& self, const Tavik::Any* other, bool partial) {
    if constexpr (!std::is_same_v<Base, Tavik::DynamicData>) {
        if (!self.Base::_IsEqual(other, partial)) {
            return false;
        }
    }
    return AreFieldsEqual(ClassTraits<T>::kTable, &self, other, partial);
}

/// `_DiffProperties` of a class, in the same order.
template <class T, class Base>
void DiffProperties(
    const T& self, const Tavik::Any* other, const std::string& prefix, Tavik::PropertyDiffSet& diffs) {
    if constexpr (!std::is_same_v<Base, Tavik::DynamicData>) {
        self.Base::_DiffProperties(other, prefix, diffs);
    }
    DiffFields(ClassTraits<T>::kTable, &self, other, prefix, diffs);
}

/// Zero-fills raw storage so that the zeros outlast the construction that follows.
template <class T>
void ZeroFill(T* storage, std::size_t size) {
    std::memset(static_cast<void*>(storage), 0, size);
    static_cast<void>(Tavik::KeepStorage(storage));
}

/// Copies the value of a set optional to `out`; whether it was set.
template <class T>
bool GetOptional(const Pellum::Optional<T>& member, T& out) {
    const T* value = member.Peek();
    if (value != nullptr) {
        out = *value;
    }
    return value != nullptr;
}

/// The array of a property, made first when there is none.
template <class A>
A* GetOrCreateArray(Pellum::Ref<A>& member) {
    if (!member) {
        member.Reset(new A);
    }
    return member.Get();
}

/// The array of a property, null when it is absent or empty.
template <class A>
const A* PeekArray(const Pellum::Ref<A>& member) {
    return member && !member->IsEmpty() ? member.Get() : nullptr;
}

} // namespace Morvane::Support
