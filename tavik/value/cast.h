#pragma once

#include "pellum/error/type_mismatch.h"
#include "tavik/value/any.h"

#include <typeinfo>

namespace Tavik {

/// `value` as a `T`; throws `Pellum::TypeMismatchException` when it is another class. Null stays null.
template <class T>
T* CastReference(Any* value) {
    T* cast = dynamic_cast<T*>(value);
    if (value != nullptr && cast == nullptr) {
        Pellum::ThrowTypeMismatchException(typeid(T), typeid(*value));
    }
    return cast;
}

} // namespace Tavik
