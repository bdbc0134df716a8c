#pragma once

#include "pellum/error/type_mismatch.h"
#include "pellum/object/ref.h"
#include "tavik/managed/managed_object.h"
#include "tavik/managed/request_context.h"
#include "tavik/managed/stub_adapter.h"
#include "tavik/type/type_of.h"

#include <typeinfo>

namespace Tavik {

/// A new stub of the registered type that `reference` names. Takes a count of the three; `context` may be
/// null. Throws `Pellum::Exception` when the reference is null or its type has no stub, as an unregistered
/// one. Loads the types if nobody has done so yet. Thread safe.
[[nodiscard]] TAVIK_API Pellum::Ref<ManagedObject> CreateStub(
    MoRef* reference, StubAdapter* adapter, RequestContext* context = nullptr);

/// The same, as a stub of `wanted()` at least: where the reference names a base of that type, as a declared
/// result may, of that type itself. Throws `Pellum::Exception` when neither type derives from the other.
[[nodiscard]] TAVIK_API Pellum::Ref<ManagedObject> CreateStub(
    ManagedObjectType* (*wanted)(), MoRef* reference, StubAdapter* adapter, RequestContext* context);

/// The same, of `T`: an interface, or its stub class, which has the asynchronous forms, too.
template <class T>
[[nodiscard]] Pellum::Ref<T> CreateStub(
    MoRef* reference, StubAdapter* adapter, RequestContext* context = nullptr) {
    const Pellum::Ref<ManagedObject> stub = CreateStub(&GetMoType<T>, reference, adapter, context);
    ManagedObject& object = *stub;
    T* const typed = dynamic_cast<T*>(&object);
    if (typed == nullptr) {
        Pellum::ThrowTypeMismatchException(typeid(T), typeid(object));
    }
    return Pellum::Ref<T>(typed);
}

} // namespace Tavik
