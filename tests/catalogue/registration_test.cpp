#include "pellum/text/demangle.h"
#include "tavik/type/type_registry.h"
#include "tavik/value/array_base.h"
#include "tests/catalogue/catalogue.h"
#include "tests/support/dotted_names.h"

#include <gmock/gmock.h>

#include <set>

/// What the library registers as a whole, and that every type is where it is looked for.
namespace {

using namespace CatalogueTests;
using Pellum::Ref;

TEST(CatalogueRegistration, FindsEveryTypeByEveryName) {
    Tavik::TypeRegistry& registry = Tavik::TypeRegistry::Instance();
    std::set<std::string> names;
    for (const Tavik::Type* type : GetTypes()) {
        const std::string name = type->GetName();
        SCOPED_TRACE(name);
        EXPECT_TRUE(names.insert(name).second);
        EXPECT_TRUE(names.insert(type->GetWireName()).second);
        EXPECT_EQ(registry.FindByName(name), type);
        EXPECT_EQ(registry.FindByWireName(type->GetWireName()), type);
        EXPECT_EQ(registry.FindByInfo(&type->GetInfo()), type);
        const Tavik::TypeInfo copy = type->GetInfo(); // as the linker makes it for programs
        EXPECT_EQ(registry.FindByInfo(&copy), type);
        EXPECT_EQ(registry.FindByName(type->GetWireName()), nullptr);
        EXPECT_EQ(registry.FindByWireName(name), nullptr);
        EXPECT_EQ(registry.FindByName(name + ' '), nullptr);
        ASSERT_NE(type->GetVersion(), nullptr);
        EXPECT_EQ(type->GetVersion()->GetName(), type->GetInfo().version);
    }
    EXPECT_THAT(registry.GetErrors(), testing::IsEmpty());
}

TEST(CatalogueRegistration, EveryTypeHasTheClassOfItsName) {
    for (const Tavik::DataObjectType* type : GetDataTypes()) {
        SCOPED_TRACE(type->GetName());
        const Ref<Tavik::DataObject> object(type->New());
        EXPECT_EQ(object->_GetDataType(), type); // which the class looks up
        const Tavik::DataObject& value = *object;
        EXPECT_EQ(Pellum::Demangle(typeid(value)), TestSupport::ToPath(type->GetName(), "::"));
        const Ref<Tavik::ArrayBase> array(type->NewArray());
        EXPECT_EQ(array->_GetElementType(), type);
        EXPECT_EQ(array->_GetType(), Tavik::Type::GetArrayType(type));
    }
}

TEST(CatalogueRegistration, TypesDeriveAsTheirRecordsSay) {
    for (const Tavik::DataObjectType* type : GetDataTypes()) {
        SCOPED_TRACE(type->GetName());
        const Tavik::DataTypeInfo& record = type->GetDataTypeInfo();
        ASSERT_NE(type->GetBaseType(), nullptr);
        EXPECT_EQ(&type->GetBaseType()->GetInfo(), record.base);
        EXPECT_EQ(&type->GetInfo(), record.type);
        // Arrays of the base take the object: so the classes derive like the types.
        const Ref<Tavik::DataObject> object(type->New());
        const Ref<Tavik::ArrayBase> array(type->GetBaseType()->NewArray());
        EXPECT_NO_THROW(dynamic_cast<Tavik::DataArrayBase&>(*array).AppendChecked(object.Get()));
        for (const Tavik::Property* property : type->GetProperties()) {
            EXPECT_EQ(type->FindProperty(property->GetName()), property) << property->GetName();
            EXPECT_TRUE(Derives(*type, property->GetOwner()));
        }
        EXPECT_EQ(type->FindProperty("noSuchProperty"), nullptr);
    }
}

} // namespace
