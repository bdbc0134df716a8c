#pragma once

#include "pellum/object/optional.h"
#include "tavik/value/cast.h"
#include "tavik/value/primitive.h"

#include <cstddef>
#include <typeinfo>

namespace Tavik {

/// How the arguments and results of calls travel as values: scalars, texts and enumeration values in a
/// `Primitive`, objects as themselves, an unset optional as null. `Unbox` throws
/// `Pellum::TypeMismatchException` for a value of another class.
template <class T>
struct Boxing {
    static Pellum::Ref<Any> Box(const T& value) { return Pellum::Ref<Any>(new Primitive<T>(value)); }

    /// Null, which stands for no value, is a mismatch, too.
    static const T& Unbox(Any* value) {
        if (value == nullptr) {
            Pellum::ThrowTypeMismatchException(typeid(Primitive<T>), typeid(std::nullptr_t));
        }
        return CastReference<Primitive<T>>(value)->GetValue();
    }
};

/// The two boxed booleans are shared; boxing one makes nothing.
template <>
inline Pellum::Ref<Any> Boxing<bool>::Box(const bool& value) {
    return Pellum::Ref<Any>(Primitive<bool>::Factory::Get(value));
}

template <class T>
struct Boxing<Pellum::Optional<T>> {
    static Pellum::Ref<Any> Box(const Pellum::Optional<T>& value) {
        const T* held = value.Peek();
        return held == nullptr ? nullptr : Boxing<T>::Box(*held);
    }

    static Pellum::Optional<T> Unbox(Any* value) {
        Pellum::Optional<T> unboxed;
        if (value != nullptr) {
            unboxed = Boxing<T>::Unbox(value);
        }
        return unboxed;
    }
};

/// Data objects, arrays, managed references, and `Any` itself; null stays null. What is unboxed is borrowed.
template <class T>
struct Boxing<T*> {
    static Pellum::Ref<Any> Box(T* value) { return Pellum::Ref<Any>(value); }

    static T* Unbox(Any* value) { return CastReference<T>(value); }
};

/// The same, with a count.
template <class T>
struct Boxing<Pellum::Ref<T>> {
    static Pellum::Ref<Any> Box(const Pellum::Ref<T>& value) { return value; }

    static Pellum::Ref<T> Unbox(Any* value) { return Pellum::Ref<T>(CastReference<T>(value)); }
};

} // namespace Tavik
