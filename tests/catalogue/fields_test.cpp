#include "pellum/error/type_mismatch.h"
#include "pellum/object/optional.h"
#include "pellum/text/demangle.h"
#include "tavik/value/mo_ref.h"
#include "tavik/value/primitive.h"
#include "tavik/value/scalar_array.h"
#include "tests/catalogue/catalogue.h"
#include "tests/catalogue/content.h"
#include "tests/sample/api/thing.h"
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
    const void* const held = property.GetFieldPointer(object.Get());
    swap(object.Get(), property.GetIndex(), &member);
    EXPECT_EQ(property.IsSet(object.Get()), !canBeUnset);
    for (const std::string& difference : FindDifferences(subject.object.Get(), object.Get())) {
        EXPECT_EQ(difference.substr(0, difference.find('[')), std::string(".") + property.GetName());
    }
    swap(object.Get(), property.GetIndex(), &member);
    EXPECT_EQ(property.IsSet(object.Get()), isSet);
    EXPECT_EQ(property.GetFieldPointer(object.Get()), held) << "the member itself, and no copy";
    EXPECT_THAT(FindDifferences(subject.object.Get(), object.Get()), IsEmpty());
}

TEST(CatalogueFields, CreateMakesAnEmptyObjectOfTheType) {
    for (const Tavik::DataObjectType* type : GetDataTypes()) {
        SCOPED_TRACE(type->GetName());
        const Ref<Tavik::DataObject> object(type->New());
        EXPECT_EQ(object->_GetType(), type);
        for (const Tavik::Property* property : type->GetProperties()) {
            const bool canBeUnset = property->IsOptional() || property->IsCounted();
            EXPECT_EQ(property->IsSet(object.Get()), !canBeUnset) << property->GetName();
            EXPECT_EQ(property->GetFieldPointer(object.Get()) == nullptr, canBeUnset) << property->GetName();
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
            T untyped{};
            property.Get(subject.object.Get(), static_cast<void*>(&untyped));
            EXPECT_TRUE(value == untyped);
            property.Set(copy.Get(), &value);
            auto* const held = static_cast<T*>(const_cast<void*>(property.GetFieldPointer(copy.Get())));
            EXPECT_TRUE(value == *held);
            property.Get(copy.Get(), held); // from and to itself
            property.Set(copy.Get(), held);
            EXPECT_TRUE(value == *static_cast<const T*>(property.GetFieldPointer(copy.Get())));
            if constexpr (!std::is_same_v<T, bool> && !std::is_same_v<T, std::string>) {
                if (property.IsOptional()) { // what stands behind the mark stays, and can be read
                    property.Reset(copy.Get());
                    T old{};
                    property.Get(copy.Get(), &old);
                    EXPECT_TRUE(value == old);
                }
            }
        });
    });
}

/// Programs reach fields inline, foreign runtimes by the functions of the records.
TEST(CatalogueFields, RecordsGiveWhatIsReachedInline) {
    ForEachProperty([](const Subject& subject, const Tavik::Property& property) {
        const Tavik::DataTypeInfo& record = property.GetOwner().GetDataTypeInfo();
        const int index = property.GetIndex();
        const Tavik::DataObject* const full = subject.object.Get();
        const Ref<Tavik::DataObject> empty(subject.type.New());
        for (const Tavik::DataObject* object : {full, static_cast<const Tavik::DataObject*>(empty.Get())}) {
            EXPECT_EQ(record.isSet(object, index), property.IsSet(object));
            EXPECT_EQ(record.fieldPointer(object, index), property.GetFieldPointer(object));
        }
        if (property.IsCounted()) {
            Ref<Any> value;
            EXPECT_EQ(record.get(full, index, &value), &value);
            EXPECT_EQ(value.Get(), property.GetCounted(full));
            return;
        }
        TestSupport::WithPlainType(property.GetType()->GetKind(), [&]<class T>(std::type_identity<T>) {
            T value{};
            EXPECT_EQ(record.get(full, index, &value), &value);
            EXPECT_TRUE(value == *static_cast<const T*>(property.GetFieldPointer(full)));
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
        property.Reset(object.Get()); // of an unset one, too
        EXPECT_FALSE(property.IsSet(object.Get()));
        EXPECT_EQ(property.GetFieldPointer(object.Get()), nullptr);
        EXPECT_THAT(
            FindDifferences(subject.object.Get(), object.Get()),
            ElementsAre(std::string(".") + property.GetName()));
        // What stands behind an unset mark does not count.
        const Ref<Tavik::DataObject> empty(subject.type.New());
        const Ref<Tavik::DataObject> emptied(subject.type.New());
        TestSupport::RandomObjects(Fill::All, subject.seed).SetRandom(*emptied, property);
        property.Reset(emptied.Get());
        EXPECT_TRUE(empty->_IsEqual(emptied.Get(), false));
    });
}

TEST(CatalogueFields, GetAndSetCountReferences) {
    ForEachProperty([](const Subject& subject, const Tavik::Property& property) {
        if (!property.IsCounted()) {
            return;
        }
        const Ref<Tavik::DataObject> object = Clone(*subject.object);
        const Ref<Any> held(property.GetCounted(subject.object.Get())->_Clone());
        const std::int32_t count = held->GetRefCount();
        property.Set(object.Get(), held.Get());
        property.Set(object.Get(), held.Get());
        Ref<Any> out(const_cast<Any*>(property.GetCounted(subject.object.Get())));
        property.GetOwner().GetDataTypeInfo().get(object.Get(), property.GetIndex(), &out);
        if (dynamic_cast<const Tavik::Primitive<bool>*>(held.Get())
            == nullptr) { // of which there are two, for all
            EXPECT_EQ(held->GetRefCount(), count + 2);
        }
        out.Reset();
        property.Set(object.Get(), nullptr);
        EXPECT_FALSE(property.IsSet(object.Get()));
        EXPECT_EQ(held->GetRefCount(), count);
        if (property.IsArray()) {
            const Ref<Tavik::ArrayBase> empty(property.GetType()->NewArray());
            property.Set(object.Get(), static_cast<Any*>(empty.Get()));
            EXPECT_EQ(empty->GetRefCount(), 2);
            EXPECT_FALSE(property.IsSet(object.Get()));
            EXPECT_EQ(property.GetFieldPointer(object.Get()), nullptr);
        }
    });
}

TEST(CatalogueFields, SetRefusesOtherClasses) {
    const Ref<Any> wrong[] = {
        Ref<Any>(new Tavik::DynamicData), Ref<Any>(new Tavik::Primitive<std::int32_t>(1)),
        Ref<Any>(new Tavik::MoRef(&Sample::gSampleThingTypeInfo, "1")), Ref<Any>(new Tavik::Array<float>{1})};
    ForEachProperty([&](const Subject& subject, const Tavik::Property& property) {
        if (!property.IsCounted()) {
            return;
        }
        const Any& held = *property.GetCounted(subject.object.Get());
        const bool takesAll = property.GetType()->GetKind() == Tavik::TypeKind::Any && !property.IsArray();
        for (const Ref<Any>& value : wrong) {
            const Any& other = *value;
            const Ref<Tavik::DataObject> object = Clone(*subject.object);
            const void* const before = property.GetFieldPointer(object.Get());
            try {
                property.Set(object.Get(), value.Get());
                EXPECT_TRUE(takesAll || typeid(other) == typeid(held)) << other.ToString();
            } catch (const Pellum::TypeMismatchException& mismatch) {
                EXPECT_FALSE(takesAll);
                EXPECT_EQ(mismatch.GetReceived(), Pellum::Demangle(typeid(other)));
                EXPECT_EQ(property.GetFieldPointer(object.Get()), before);
                EXPECT_EQ(value->GetRefCount(), 1);
            }
        }
    });
}

} // namespace
