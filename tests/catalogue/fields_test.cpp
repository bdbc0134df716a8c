#include "pellum/object/optional.h"
#include "tavik/value/any.h"
#include "tests/catalogue/catalogue.h"
#include "tests/catalogue/content.h"
#include "tests/support/plain_value.h"

#include <gmock/gmock.h>

/// The field functions of every type, of inherited properties, too: what is done to one property must be seen
/// there and nowhere else in the object.
namespace {

using namespace CatalogueTests;
using Pellum::Ref;
using Tavik::Any;
using testing::ElementsAre;
using testing::IsEmpty;

/// Calls `check` with every property of full objects of every type.
void ForEachProperty(
    const std::function<void(const Subject& subject, const Tavik::Property& property)>& check) {
    int count = 0;
    ForEachObject(Fill::All, [&](const Subject& subject) {
        for (const Tavik::Property* property : subject.type.GetProperties()) {
            SCOPED_TRACE(property->GetName());
            check(subject, *property);
            ++count;
        }
    });
    EXPECT_GT(count, 2000);
}

/// What changes in the object when `member` is swapped with a property, there and back.
template <class Member>
void CheckSwap(const Subject& subject, const Tavik::Property& property, Member member) {
    const Ref<Tavik::DataObject> object = Clone(*subject.object);
    const auto swap = property.GetOwner().GetDataTypeInfo().swap;
    const bool canBeUnset = property.IsOptional() || property.IsCounted();
    const bool isSet = property.IsSet(object.Get());
    swap(object.Get(), property.GetIndex(), &member);
    EXPECT_EQ(property.IsSet(object.Get()), !canBeUnset);
    for (const std::string& difference : FindDifferences(subject.object.Get(), object.Get())) {
        EXPECT_EQ(difference.substr(0, difference.find('[')), std::string(".") + property.GetName());
    }
    swap(object.Get(), property.GetIndex(), &member);
    EXPECT_EQ(property.IsSet(object.Get()), isSet);
    EXPECT_THAT(FindDifferences(subject.object.Get(), object.Get()), IsEmpty());
}

TEST(CatalogueFields, CreateMakesAnEmptyObjectOfTheType) {
    for (const Tavik::DataObjectType* type : GetDataTypes()) {
        SCOPED_TRACE(type->GetName());
        const Ref<Tavik::DataObject> object(type->New());
        EXPECT_EQ(object->_GetDataType(), type);
        EXPECT_EQ(object->_GetType(), type);
        for (const Tavik::Property* property : type->GetProperties()) {
            const bool canBeUnset = property->IsOptional() || property->IsCounted();
            EXPECT_EQ(property->IsSet(object.Get()), !canBeUnset) << property->GetName();
        }
        EXPECT_TRUE(object->_IsEqual(Ref<Any>(type->New()).Get(), false));
    }
}

TEST(CatalogueFields, SetChangesOnePropertyOnly) {
    ForEachProperty([](const Subject& subject, const Tavik::Property& property) {
        const Ref<Tavik::DataObject> object = Clone(*subject.object);
        if (const auto change = Changer(subject.seed).ChangeProperty(*object, property)) {
            EXPECT_THAT(FindDifferences(subject.object.Get(), object.Get()), ElementsAre(change->path));
        } else {
            EXPECT_EQ(property.GetType()->GetKind(), Tavik::TypeKind::Enum);
        }
    });
}

TEST(CatalogueFields, GetGivesWhatIsSet) {
    ForEachProperty([](const Subject& subject, const Tavik::Property& property) {
        ASSERT_TRUE(property.IsSet(subject.object.Get()));
        const void* field = property.GetFieldPointer(subject.object.Get());
        const Ref<Tavik::DataObject> copy(subject.type.New());
        if (property.IsCounted()) {
            Ref<Any> value;
            EXPECT_EQ(property.Get(subject.object.Get(), &value), &value);
            EXPECT_EQ(static_cast<const Any*>(value.Get()), field);
            property.Set(copy.Get(), value.Get());
            EXPECT_EQ(property.GetFieldPointer(copy.Get()), field);
            return;
        }
        TestSupport::WithPlainType(property.GetType()->GetKind(), [&]<class T>(std::type_identity<T>) {
            T value{};
            EXPECT_EQ(property.Get(subject.object.Get(), &value), &value);
            EXPECT_TRUE(value == *static_cast<const T*>(field));
            property.Set(copy.Get(), &value);
            EXPECT_TRUE(value == *static_cast<const T*>(property.GetFieldPointer(copy.Get())));
        });
    });
}

TEST(CatalogueFields, SwapExchangesOnePropertyOnly) {
    ForEachProperty([](const Subject& subject, const Tavik::Property& property) {
        if (property.IsCounted()) {
            CheckSwap(subject, property, Ref<Any>());
            return;
        }
        TestSupport::WithPlainType(property.GetType()->GetKind(), [&]<class T>(std::type_identity<T>) {
            if (property.IsOptional()) {
                CheckSwap(subject, property, Pellum::Optional<T>());
            } else {
                CheckSwap(subject, property, T{});
            }
        });
    });
}

TEST(CatalogueFields, ResetUnsetsOnePropertyOnly) {
    ForEachProperty([](const Subject& subject, const Tavik::Property& property) {
        if (!property.IsOptional()) {
            return;
        }
        const Ref<Tavik::DataObject> object = Clone(*subject.object);
        property.Reset(object.Get());
        EXPECT_FALSE(property.IsSet(object.Get()));
        EXPECT_EQ(property.GetFieldPointer(object.Get()), nullptr);
        EXPECT_THAT(
            FindDifferences(subject.object.Get(), object.Get()),
            ElementsAre(std::string(".") + property.GetName()));
    });
}

} // namespace
