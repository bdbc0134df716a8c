#include "tavik/descriptor/builtin.h"
#include "tavik/type/data_object_type.h"
#include "tavik/type/managed_object_type.h"
#include "tavik/type/type_registry.h"
#include "tests/sample/api/failed.h"
#include "tests/sample/api/level5.h"
#include "tests/sample/api/node.h"
#include "tests/sample/api/point.h"
#include "tests/sample/api/special_thing.h"
#include "tests/sample/api/thing_broken.h"

#include <gmock/gmock.h>

#include <set>

namespace {

using Tavik::TypeInfo;
using Tavik::TypeKind;

/// A row that is expected in a list of properties or parameters.
struct PropertyRow {
    const TypeInfo* type;
    std::uint32_t flags;
    const char* name;
    const char* version;
};

void ExpectRows(const Tavik::PropertyDescriptor* rows, const std::vector<PropertyRow>& expected) {
    for (const PropertyRow& row : expected) {
        ASSERT_NE(rows->name, nullptr) << row.name;
        SCOPED_TRACE(row.name);
        EXPECT_STREQ(rows->name, row.name);
        EXPECT_EQ(rows->type, row.type);
        EXPECT_EQ(rows->flags, row.flags);
        EXPECT_EQ(rows->reserved, 0U);
        EXPECT_STREQ(rows->version, row.version);
        ++rows;
    }
    EXPECT_EQ(rows->name, nullptr);
}

TEST(Descriptors, OfEveryTypeAreWellFormed) {
    Tavik::TypeRegistry& registry = Tavik::TypeRegistry::Instance();
    for (const Tavik::LoadedLibrary& library : registry.GetLibraries()) {
        // Data and fault types first, then enumerations, then managed types.
        int group = 0;
        for (const Tavik::Type* type : library.types) {
            ASSERT_NE(type, nullptr);
            SCOPED_TRACE(type->GetName());
            const TypeKind kind = type->GetKind();
            const int next = kind == TypeKind::Enum ? 1 : (kind == TypeKind::Managed ? 2 : 0);
            EXPECT_GE(next, group);
            group = next;
            EXPECT_EQ(registry.FindByName(type->GetName()), type);
            EXPECT_EQ(registry.FindByWireName(type->GetWireName()), type);
            ASSERT_NE(type->GetVersion(), nullptr);
            if (kind == TypeKind::Enum) {
                continue;
            }
            ASSERT_NE(type->GetBaseType(), nullptr);
            // A type is not older than what it derives from.
            EXPECT_TRUE(type->GetBaseType()->IsPartOf(type->GetVersion()));
            const bool isManaged = kind == TypeKind::Managed;
            const Tavik::PropertyDescriptor* row =
                isManaged
                    ? static_cast<const Tavik::ManagedObjectType*>(type)->GetManagedTypeInfo().properties
                    : static_cast<const Tavik::DataObjectType*>(type)->GetDataTypeInfo().properties;
            const std::set<std::uint32_t> allowed = isManaged
                                                      ? std::set<std::uint32_t>{4, 6, 7}
                                                      : std::set<std::uint32_t>{0, 1, 2, 3, 0x200, 0x202};
            for (; row->name != nullptr; ++row) {
                EXPECT_TRUE(allowed.contains(row->flags)) << row->name;
                EXPECT_NE(registry.FindByInfo(row->type), nullptr) << row->name;
                EXPECT_NE(registry.FindVersion(row->version), nullptr) << row->name;
                EXPECT_EQ(row->reserved, 0U) << row->name;
            }
        }
    }
    EXPECT_EQ(registry.GetErrors(), std::vector<std::string>());
}

TEST(Descriptors, OfManagedTypes) {
    Tavik::TypeRegistry::Instance().Load();
    const Tavik::ManagedObjectType* thing = Tavik::GetMoType<Sample::Thing>();
    const Tavik::ManagedTypeInfo& record = thing->GetManagedTypeInfo();
    const char* v1 = "sample.version.version1";
    EXPECT_EQ(record.base, &Tavik::gOrlinManagedObjectTypeInfo);
    ExpectRows(
        record.properties, {{&Sample::gSampleThingTypeInfo, 6, "owner", v1},
                            {&Sample::gSampleThingTypeInfo, 7, "parts", v1},
                            {&Tavik::gStringTypeInfo, 4, "title", v1}});
    const Tavik::MethodDescriptor& rename = record.methods[0];
    EXPECT_STREQ(rename.name, "rename");
    EXPECT_STREQ(rename.wireName, "SampleRename");
    EXPECT_STREQ(rename.privilege, "Sample.Rename");
    EXPECT_STREQ(rename.version, v1);
    EXPECT_EQ(rename.result.type, &Sample::gSampleNodeTypeInfo);
    EXPECT_EQ(rename.result.flags, 3U);
    EXPECT_STREQ(rename.result.name, "result");
    ExpectRows(
        rename.parameters, {{&Tavik::gStringTypeInfo, 0, "title", v1},
                            {&Tavik::gStringTypeInfo, 0x200, "password", v1},
                            {&Tavik::gStringTypeInfo, 2, "comment", v1},
                            {&Sample::gSamplePointTypeInfo, 1, "points", v1}});
    EXPECT_EQ(rename.faults[0], &Sample::gSampleThingBrokenTypeInfo);
    EXPECT_EQ(rename.faults[1], &Sample::gSampleFailedTypeInfo);
    EXPECT_EQ(rename.faults[2], nullptr);
    const Tavik::MethodDescriptor& stop = record.methods[1];
    EXPECT_EQ(stop.result.type, nullptr);
    EXPECT_STREQ(stop.result.version, "orlin.version.version0");
    EXPECT_EQ(stop.privilege, nullptr);
    EXPECT_EQ(stop.parameters->name, nullptr);
    EXPECT_EQ(stop.faults[0], nullptr);
    EXPECT_EQ(record.methods[2].longRunning, 1);
    EXPECT_EQ(record.methods[2].credentials, 0);
    EXPECT_EQ(record.methods[3].name, nullptr);

    // Inherited properties count first; the methods and getters are the type's own.
    const Tavik::ManagedObjectType* special = Tavik::GetMoType<Sample::SpecialThing>();
    EXPECT_EQ(special->GetBaseType(), thing);
    EXPECT_EQ(special->GetManagedTypeInfo().propertyIndex("owner", 5), 0);
    EXPECT_EQ(special->GetManagedTypeInfo().propertyIndex("special", 7), 3);
    EXPECT_EQ(special->GetManagedTypeInfo().propertyIndex("title", 5), 4);
    EXPECT_EQ(record.propertyIndex("title", 5), 2);
    EXPECT_EQ(special->GetManagedTypeInfo().propertyIndex("titles", 6), -1);
    EXPECT_EQ(special->GetManagedTypeInfo().methods[0].credentials, 1);
    ASSERT_EQ(special->GetMethodObjects().size(), 3U);
    EXPECT_TRUE(special->GetMethodObjects()[1]->IsPropertyGetter());
    ASSERT_EQ(thing->GetMethodObjects().size(), 6U);
    EXPECT_EQ(Sample::gSampleThingMethodObjects[0], thing->GetMethodObjects()[0].get());
    EXPECT_EQ(Sample::gSampleThingMethodObjects[5], thing->GetMethodObjects()[5].get());
    EXPECT_STREQ(Sample::gSampleThingMethodObjects[5]->GetName(), "title");
}

TEST(Descriptors, FollowTheClassTree) {
    Tavik::TypeRegistry::Instance().Load();
    const Tavik::DataObjectType* last = Tavik::GetDoType<Sample::Level5>();
    std::vector<std::string> names;
    for (const Tavik::Property* property : last->GetProperties()) {
        names.emplace_back(property->GetName());
    }
    EXPECT_THAT(names, testing::ElementsAre("first", "point", "third", "late", "fourth", "fifth"));
    EXPECT_EQ(last->FindProperty("third")->GetOwner().GetName(), std::string("sample.Level3"));
    EXPECT_EQ(last->FindProperty("third")->GetIndex(), 0);
    EXPECT_TRUE(last->IsA(Tavik::GetDoType<Sample::Level1>()));
    EXPECT_FALSE(Tavik::GetDoType<Sample::Level1>()->IsA(last));
    EXPECT_TRUE(Tavik::GetDoType<Sample::Failed>()->IsFault());
    EXPECT_EQ(Tavik::GetDoType<Sample::Level2>()->GetDataTypeInfo().properties->name, nullptr);
}

} // namespace
