#include "tests/support/managed_calls.h"

#include "tavik/descriptor/builtin.h"
#include "tavik/managed/managed_object.h"
#include "tavik/type/type_registry.h"
#include "tavik/value/primitive.h"
#include "tests/support/random_object.h"
#include "tests/support/recording_adapter.h"

#include <gtest/gtest.h>

#include <string_view>
#include <typeinfo>

namespace TestSupport {

namespace {

using Pellum::Ref;
using Tavik::Any;
using Tavik::ManagedMethod;
using Tavik::ManagedObjectType;
using Tavik::PropertyDescriptor;

/// Objects pass as themselves; scalars are boxed anew, but for booleans, of which there are two.
void ExpectPassed(const Any* given, const Any* received) {
    const auto* scalar = dynamic_cast<const Tavik::PrimitiveBase*>(given);
    if (given == received || scalar == nullptr || dynamic_cast<const Tavik::Primitive<bool>*>(given)) {
        EXPECT_EQ(given, received);
        return;
    }
    ASSERT_NE(received, nullptr);
    ASSERT_TRUE(typeid(*received) == typeid(*given)) << received->ToString();
    EXPECT_TRUE(received->_IsEqual(given, false)) << given->ToString() << " became " << received->ToString();
}

/// The arguments and the result that a call is declared with.
struct Declared {
    explicit Declared(const ManagedMethod& method) {
        if (const Tavik::MethodDescriptor* descriptor = method.GetMethodDescriptor()) {
            parameters = descriptor->parameters;
            result = descriptor->result.type != nullptr ? &descriptor->result : nullptr;
        } else {
            result = method.GetPropertyDescriptor();
        }
    }

    const PropertyDescriptor* parameters = nullptr;
    const PropertyDescriptor* result;
};

} // namespace

std::vector<const ManagedObjectType*> AllManagedTypes() {
    std::vector<const ManagedObjectType*> found;
    for (const Tavik::LoadedLibrary& library : Tavik::TypeRegistry::Instance().GetLibraries()) {
        for (const Tavik::Type* type : library.types) {
            const auto* managed = dynamic_cast<const ManagedObjectType*>(type);
            if (managed != nullptr && managed->GetManagedTypeInfo().createStub != nullptr) {
                found.push_back(managed);
            }
        }
    }
    return found;
}

const ManagedMethod* FindMostDerived(const ManagedMethod& method, const ManagedObjectType& derived) {
    for (const ManagedObjectType* type = &derived; method.IsPropertyGetter() && type != &method.GetOwner();
         type = type->GetBaseType()) {
        for (const auto& other : type->GetMethodObjects()) {
            const PropertyDescriptor* property = other->GetPropertyDescriptor();
            if (property != nullptr && property->name == std::string_view(method.GetName())
                && property->type == method.GetPropertyDescriptor()->type) {
                return other.get();
            }
        }
    }
    return &method;
}

int ExpectCallsToPass(const ManagedObjectType& type, unsigned seed) {
    RandomObjects random(RandomObjects::Fill::Some, seed);
    const auto adapter = Pellum::MakeRef<RecordingAdapter>();
    const Ref<Tavik::MoRef> reference(new Tavik::MoRef(&type.GetInfo(), "r"));
    const Ref<Tavik::ManagedObject> stub(
        type.GetManagedTypeInfo().createStub(reference.Get(), adapter.Get(), nullptr));
    EXPECT_EQ(stub->_GetType(), &type);
    for (const ManagedObjectType* base = &type; base != nullptr; base = base->GetBaseType()) {
        for (const auto& method : base->GetMethodObjects()) {
            SCOPED_TRACE(std::string(base->GetName()) + "." + method->GetName());
            const Declared declared(*method);
            Tavik::Arguments arguments;
            for (const PropertyDescriptor* row = declared.parameters; row != nullptr && row->name != nullptr;
                 ++row) {
                arguments.push_back(random.MakeValue(*row));
            }
            const Tavik::Arguments given = arguments;
            adapter->answer = declared.result != nullptr ? random.MakeValue(*declared.result) : nullptr;
            Ref<Any> result;
            base->GetManagedTypeInfo().dispatch(stub.Get(), method->GetIndex(), arguments, result);
            EXPECT_EQ(adapter->method, FindMostDerived(*method, type));
            EXPECT_EQ(adapter->target, reference);
            EXPECT_EQ(adapter->arguments.size(), given.size());
            for (std::size_t i = 0; i < std::min(given.size(), adapter->arguments.size()); ++i) {
                ExpectPassed(given[i].Get(), adapter->arguments[i].Get());
            }
            ExpectPassed(adapter->answer.Get(), result.Get());
        }
    }
    return adapter->count;
}

} // namespace TestSupport
