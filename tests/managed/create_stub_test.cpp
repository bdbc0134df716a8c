#include "tavik/managed/create_stub.h"

#include "tavik/descriptor/builtin.h"
#include "tavik/property_collector_stub.h"
#include "tavik/type/managed_object_type.h"
#include "tests/managed/fixture.h"
#include "tests/sample/api/special_thing_stub.h"

namespace {

using Pellum::MakeRef;
using Pellum::Ref;
using Tavik::MoRef;

std::string ClassOf(const Tavik::ManagedObject& object) {
    return Pellum::Demangle(typeid(object));
}

class CreateStub : public CallerTest {
protected:
    /// The class of the stub, or why there is none.
    template <class Wanted>
    std::string Made(const Tavik::TypeInfo& type) const {
        const auto reference = MakeRef<MoRef>(&type, "id");
        try {
            const auto made = Tavik::CreateStub<Wanted>(reference.Get(), adapter.Get());
            EXPECT_EQ(made->_GetRef(), reference.Get());
            EXPECT_EQ(made->GetRefCount(), 1);
            return ClassOf(*made);
        } catch (const Pellum::Exception& error) {
            return error.what();
        }
    }

    std::string MadeUntyped(const Tavik::TypeInfo& type) const {
        const auto reference = MakeRef<MoRef>(&type, "id");
        try {
            const auto made = Tavik::CreateStub(reference.Get(), adapter.Get());
            return ClassOf(*made);
        } catch (const Pellum::Exception& error) {
            return error.what();
        }
    }
};

TEST_F(CreateStub, MakesWhatTheReferenceOrTheCallerNames) {
    using Sample::gSampleSpecialThingTypeInfo;
    using Sample::gSampleThingTypeInfo;
    const Tavik::TypeInfo unknown = {Tavik::TypeKind::Managed, "else.Thing", "ElseThing", nullptr};
    const std::string special = "Sample::SpecialThingStub";
    const std::string missing = "no library has registered the managed type else.Thing";
    EXPECT_EQ(Made<Sample::Thing>(gSampleThingTypeInfo), "Sample::ThingStub");
    EXPECT_EQ(Made<Sample::Thing>(gSampleSpecialThingTypeInfo), special);
    EXPECT_EQ(Made<Sample::SpecialThing>(gSampleThingTypeInfo), special);
    EXPECT_EQ(Made<Sample::SpecialThingStub>(gSampleThingTypeInfo), special);
    EXPECT_EQ(Made<Sample::Thing>(Tavik::gOrlinManagedObjectTypeInfo), "Sample::ThingStub");
    EXPECT_EQ(
        Made<Sample::Caller>(gSampleSpecialThingTypeInfo),
        "a reference to sample.SpecialThing is none to sample.Caller");
    EXPECT_EQ(Made<Sample::Thing>(unknown), missing);
    EXPECT_EQ(
        Made<Orlin::Query::PropertyCollectorStub>(Orlin::gOrlinQueryPropertyCollectorTypeInfo),
        "Orlin::Query::PropertyCollectorStub");
    EXPECT_EQ(MadeUntyped(gSampleSpecialThingTypeInfo), special);
    EXPECT_EQ(MadeUntyped(unknown), missing);
    EXPECT_EQ(MadeUntyped(Tavik::gOrlinManagedObjectTypeInfo), "there are no stubs of orlin.ManagedObject");
}

TEST_F(CreateStub, NeedsAReferenceAndAnAdapter) {
    EXPECT_THROW(
        static_cast<void>(Tavik::CreateStub<Sample::Thing>(nullptr, adapter.Get())), Pellum::Exception);
    EXPECT_THROW(
        static_cast<void>(Tavik::CreateStub<Sample::Thing>(stub->_GetRef(), nullptr)), Pellum::Exception);
    const auto context = MakeRef<Tavik::RequestContext>();
    const auto made = Tavik::CreateStub<Sample::Caller>(stub->_GetRef(), adapter.Get(), context.Get());
    EXPECT_EQ(dynamic_cast<Sample::CallerStub&>(*made)._GetRequestContext(), context.Get());
}

} // namespace
