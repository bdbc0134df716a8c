#include "tavik/managed/create_stub.h"

#include "pellum/error/exception.h"
#include "tavik/type/managed_object_type.h"
#include "tavik/type/type_registry.h"
#include "tavik/value/mo_ref.h"

#include <new>
#include <string>

namespace Tavik {

namespace {

/// The registered type of a reference.
const ManagedObjectType& GetTypeOf(const MoRef* reference) {
    if (reference == nullptr) {
        throw Pellum::Exception("a stub needs a reference");
    }
    TypeRegistry::Instance().Load();
    const auto* type = dynamic_cast<const ManagedObjectType*>(reference->_GetType());
    if (type == nullptr) {
        throw Pellum::Exception(
            std::string("no library has registered the managed type ") + reference->GetTypeInfo().name);
    }
    return *type;
}

Pellum::Ref<ManagedObject> Create(
    const ManagedObjectType& type, MoRef* reference, StubAdapter* adapter, RequestContext* context) {
    const StubFactoryFunction create = type.GetManagedTypeInfo().createStub;
    if (create == nullptr) {
        throw Pellum::Exception(std::string("there are no stubs of ") + type.GetName());
    }
    Pellum::Ref<ManagedObject> stub(create(reference, adapter, context));
    if (!stub) {
        throw std::bad_alloc();
    }
    return stub;
}

} // namespace

Pellum::Ref<ManagedObject> CreateStub(MoRef* reference, StubAdapter* adapter, RequestContext* context) {
    return Create(GetTypeOf(reference), reference, adapter, context);
}

Pellum::Ref<ManagedObject> CreateStub(
    ManagedObjectType* (*wanted)(), MoRef* reference, StubAdapter* adapter, RequestContext* context) {
    const ManagedObjectType& named = GetTypeOf(reference);
    const ManagedObjectType* type = wanted();
    if (named.IsA(type)) {
        type = &named;
    } else if (!type->IsA(&named)) {
        throw Pellum::Exception(
            std::string("a reference to ") + named.GetName() + " is none to " + type->GetName());
    }
    return Create(*type, reference, adapter, context);
}

} // namespace Tavik
