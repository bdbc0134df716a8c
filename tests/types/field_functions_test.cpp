#include "pellum/error/type_mismatch.h"
#include "tavik/type/data_object_type.h"
#include "tavik/type/type_registry.h"
#include "tavik/value/mo_ref.h"
#include "tavik/value/primitive.h"
#include "tests/sample/api/thing.h"
#include "tests/support/plain_value.h"
#include "tests/support/random_object.h"
#include "types/api/core/computer_spec.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <functional>

/// The field functions of every registered type, through the records alone.
namespace {

using Pellum::MakeRef;
using Pellum::Ref;
using Tavik::Any;
using Tavik::DataTypeInfo;
using Tavik::PropertyDescriptor;
using TestSupport::RandomObjects;

/// One own property of one type, and three objects: two full ones and an empty one.
struct Subject {
    const DataTypeInfo& record;
    const PropertyDescriptor& row;
    const Tavik::Property& property;
    int index;
    Ref<Tavik::DataObject> full;
    Ref<Tavik::DataObject> other;
    Ref<Tavik::DataObject> empty;
};

/// Calls `check` for every own property of every type; `kinds` chooses between counted and plain ones.
enum class Kinds { All, Plain, Counted };

void ForEachProperty(Kinds kinds, const std::function<void(Subject&)>& check) {
    Tavik::TypeRegistry::Instance().Load();
    RandomObjects random(RandomObjects::Fill::All);
    int count = 0;
    for (const Tavik::DataObjectType* type : TestSupport::AllDataTypes()) {
        const DataTypeInfo& record = type->GetDataTypeInfo();
        for (const Tavik::Property& property : type->GetOwnProperties()) {
            if (kinds != Kinds::All && property.IsCounted() != (kinds == Kinds::Counted)) {
                continue;
            }
            SCOPED_TRACE(std::string(type->GetName()) + "." + property.GetName());
            Subject subject{
                record,
                property.GetDescriptor(),
                property,
                property.GetIndex(),
                Ref<Tavik::DataObject>(record.create()),
                Ref<Tavik::DataObject>(record.create()),
                Ref<Tavik::DataObject>(record.create())};
            random.SetRandom(*subject.full, property);
            random.SetRandom(*subject.other, property);
            check(subject);
            ++count;
        }
    }
    EXPECT_GT(count, kinds == Kinds::Counted ? 30 : 60);
}

/// The value of a plain property as an object of its own, to be compared.
Ref<Any> Boxed(const Tavik::Property& property, const void* value) {
    return Ref<Any>(property.GetType()->Box(value));
}

bool HasEqual(const Subject& subject, const Any& a, const Any& b) {
    return Boxed(subject.property, subject.record.fieldPointer(&a, subject.index))
        ->_IsEqual(Boxed(subject.property, subject.record.fieldPointer(&b, subject.index)).Get(), false);
}

TEST(FieldFunctions, AreThereWhereTheyHaveSomethingToDo) {
    Tavik::TypeRegistry::Instance().Load();
    for (const Tavik::DataObjectType* type : TestSupport::AllDataTypes()) {
        SCOPED_TRACE(type->GetName());
        const DataTypeInfo& record = type->GetDataTypeInfo();
        bool hasOptional = false;
        int count = 0;
        for (const PropertyDescriptor* row = record.properties; row->name != nullptr; ++row, ++count) {
            hasOptional = hasOptional || row->IsOptional();
        }
        EXPECT_EQ(record.get != nullptr, count > 0);
        EXPECT_EQ(record.fieldPointer != nullptr, count > 0);
        EXPECT_EQ(record.set != nullptr, count > 0);
        EXPECT_EQ(record.swap != nullptr, count > 0);
        EXPECT_EQ(record.reset != nullptr, hasOptional);
        EXPECT_EQ(record.reserved, 0U);

        const Ref<Tavik::DataObject> object(record.create());
        EXPECT_EQ(object->GetRefCount(), 1);
        EXPECT_EQ(object->_GetDataType(), type);
        for (const int index : {-1, count, count + 1, INT_MAX, INT_MIN}) {
            EXPECT_TRUE(record.isSet(object.Get(), index));
        }
        const Ref<Tavik::DataArrayBase> array(record.createArray());
        EXPECT_TRUE(array->IsEmpty());
        EXPECT_EQ(array->_GetElementType(), type);
        EXPECT_EQ(array->_GetType(), Tavik::Type::GetArrayType(type));
        EXPECT_EQ(array->_GetType()->GetName(), std::string(type->GetName()) + "[]");
        array->AppendChecked(object.Get());
        const Ref<Any> clone(array->_Clone());
        EXPECT_TRUE(clone->_IsEqual(array.Get(), false));
    }
}

TEST(FieldFunctions, IsSetAndFieldPointerAgree) {
    ForEachProperty(Kinds::All, [](Subject& it) {
        const bool canBeUnset = it.row.IsOptional() || it.property.IsCounted();
        EXPECT_EQ(it.record.isSet(it.empty.Get(), it.index), !canBeUnset);
        EXPECT_EQ(it.record.fieldPointer(it.empty.Get(), it.index) != nullptr, !canBeUnset);
        EXPECT_TRUE(it.record.isSet(it.full.Get(), it.index));
        EXPECT_NE(it.record.fieldPointer(it.full.Get(), it.index), nullptr);
    });
}

TEST(FieldFunctions, ResetMakesOptionalPropertiesUnset) {
    ForEachProperty(Kinds::All, [](Subject& it) {
        if (!it.row.IsOptional()) {
            return;
        }
        for (int i = 0; i < 2; ++i) { // of an unset one, too
            it.record.reset(it.full.Get(), it.index);
            EXPECT_FALSE(it.record.isSet(it.full.Get(), it.index));
            EXPECT_EQ(it.record.fieldPointer(it.full.Get(), it.index), nullptr);
        }
        EXPECT_TRUE(it.full->_IsEqual(it.empty.Get(), false));
    });
}

TEST(FieldFunctions, GetAndSetPlainValues) {
    ForEachProperty(Kinds::Plain, [](Subject& it) {
        TestSupport::WithPlainType(it.property.GetType()->GetKind(), [&]<class T>(std::type_identity<T>) {
            T value{};
            EXPECT_EQ(it.record.get(it.full.Get(), it.index, &value), &value);
            EXPECT_TRUE(
                Boxed(it.property, &value)
                    ->_IsEqual(
                        Boxed(it.property, it.record.fieldPointer(it.full.Get(), it.index)).Get(), false));
            it.record.set(it.empty.Get(), it.index, &value);
            EXPECT_TRUE(it.record.isSet(it.empty.Get(), it.index));
            EXPECT_TRUE(HasEqual(it, *it.empty, *it.full));
            EXPECT_TRUE(it.empty->_IsEqual(it.full.Get(), false));
            // From and to itself.
            auto* held = const_cast<void*>(it.record.fieldPointer(it.full.Get(), it.index));
            it.record.get(it.full.Get(), it.index, held);
            it.record.set(it.full.Get(), it.index, held);
            EXPECT_TRUE(HasEqual(it, *it.empty, *it.full));
            if constexpr (!std::is_same_v<T, bool> && !std::is_same_v<T, std::string>) {
                if (it.row.IsOptional()) {
                    // The old value stays behind the mark and can be read.
                    it.record.reset(it.full.Get(), it.index);
                    T old{};
                    it.record.get(it.full.Get(), it.index, &old);
                    EXPECT_EQ(old, value);
                }
            }
        });
    });
}

/// Swaps with a member of the form `Member`, there and back, and checks that it was unset in between when it
/// can be.
template <class Member>
void CheckSwap(Subject& it, Member unset) {
    const Ref<Any> before(it.full->_Clone());
    const bool canBeUnset = it.row.IsOptional() || it.property.IsCounted();
    it.record.swap(it.full.Get(), it.index, &unset);
    EXPECT_EQ(it.record.isSet(it.full.Get(), it.index), !canBeUnset);
    EXPECT_TRUE(it.full->_IsEqual(it.empty.Get(), false));
    it.record.swap(it.full.Get(), it.index, &unset);
    EXPECT_TRUE(it.full->_IsEqual(before.Get(), false));
}

TEST(FieldFunctions, SwapExchangesTheWholeMember) {
    ForEachProperty(Kinds::Plain, [](Subject& it) {
        TestSupport::WithPlainType(it.property.GetType()->GetKind(), [&]<class T>(std::type_identity<T>) {
            if (it.row.IsOptional()) {
                CheckSwap(it, Pellum::Optional<T>());
            } else {
                CheckSwap(it, T{});
            }
        });
    });
    ForEachProperty(Kinds::Counted, [](Subject& it) {
        const auto* held = static_cast<const Any*>(it.record.fieldPointer(it.full.Get(), it.index));
        CheckSwap(it, Ref<Any>());
        EXPECT_EQ(it.record.fieldPointer(it.full.Get(), it.index), held);
    });
}

TEST(FieldFunctions, GetAndSetCountReferences) {
    ForEachProperty(Kinds::Counted, [](Subject& it) {
        // One that nobody else holds: boxed booleans are shared.
        const Ref<Any> own(
            static_cast<const Any*>(it.record.fieldPointer(it.full.Get(), it.index))->_Clone());
        it.record.set(it.full.Get(), it.index, own.Get());
        const Any* held = own.Get();
        const std::int32_t count = held->GetRefCount();
        {
            Ref<Any> out(
                const_cast<Any*>(static_cast<const Any*>(it.record.fieldPointer(it.other.Get(), it.index))));
            it.record.get(it.full.Get(), it.index, &out);
            EXPECT_EQ(out.Get(), held);
            EXPECT_EQ(held->GetRefCount(), count + 1);
            it.record.set(it.other.Get(), it.index, out.Get());
            EXPECT_EQ(held->GetRefCount(), count + 2);
            it.record.set(it.other.Get(), it.index, out.Get());
            EXPECT_EQ(held->GetRefCount(), count + 2);
        }
        EXPECT_EQ(it.record.fieldPointer(it.other.Get(), it.index), held);
        it.record.set(it.other.Get(), it.index, nullptr);
        EXPECT_EQ(held->GetRefCount(), count);
        EXPECT_FALSE(it.record.isSet(it.other.Get(), it.index));
        // The only count is the property's own.
        it.record.set(it.full.Get(), it.index, held);
        EXPECT_EQ(held->GetRefCount(), count);
    });
}

TEST(FieldFunctions, SetRefusesOtherClasses) {
    const Ref<Any> wrong[] = {
        Ref<Any>(new Tavik::DynamicData), Ref<Any>(new Tavik::Primitive<std::int32_t>(1)),
        Ref<Any>(new Tavik::MoRef(&Sample::gSampleThingTypeInfo, "1")), Ref<Any>(new Tavik::Array<float>{1})};
    ForEachProperty(Kinds::Counted, [&](Subject& it) {
        if (it.property.GetType()->GetKind() == Tavik::TypeKind::Any && !it.property.IsArray()) {
            for (const Ref<Any>& value : wrong) {
                EXPECT_NO_THROW(it.record.set(it.full.Get(), it.index, value.Get()));
            }
            return;
        }
        const auto* held = static_cast<const Any*>(it.record.fieldPointer(it.full.Get(), it.index));
        int refused = 0;
        for (const Ref<Any>& value : wrong) {
            const Any& other = *value;
            if (typeid(other) == typeid(*held)) {
                continue;
            }
            EXPECT_THROW(it.record.set(it.full.Get(), it.index, value.Get()), Pellum::TypeMismatchException);
            ++refused;
            EXPECT_EQ(it.record.fieldPointer(it.full.Get(), it.index), held);
            EXPECT_EQ(value->GetRefCount(), 1);
        }
        EXPECT_GE(refused, 3);
    });
}

TEST(FieldFunctions, TreatEmptyArraysAsUnset) {
    ForEachProperty(Kinds::Counted, [](Subject& it) {
        if (it.row.IsArray()) {
            const Ref<Tavik::ArrayBase> array(it.property.GetType()->NewArray());
            it.record.set(it.full.Get(), it.index, static_cast<Any*>(array.Get()));
            EXPECT_EQ(array->GetRefCount(), 2);
            EXPECT_FALSE(it.record.isSet(it.full.Get(), it.index));
            EXPECT_EQ(it.record.fieldPointer(it.full.Get(), it.index), nullptr);
            EXPECT_TRUE(it.full->_IsEqual(it.empty.Get(), false));
        }
    });
}

TEST(FieldFunctions, OfALocation) {
    Tavik::TypeRegistry::Instance().Load();
    using LiveLocation = Morvane::ComputerSpec::LiveComputerLocation;
    const DataTypeInfo& record = Tavik::GetDoType<LiveLocation>()->GetDataTypeInfo();
    const auto location = MakeRef<LiveLocation>();
    constexpr int verifyPeer = 6;
    constexpr int port = 1;
    location->SetVerifyPeer(true);
    record.reset(location.Get(), verifyPeer);
    unsigned char byte = 0;
    std::memcpy(&byte, &location->IsVerifyPeer(), 1);
    EXPECT_EQ(byte, 0xFF);
    const bool no = false;
    record.set(location.Get(), verifyPeer, &no);
    EXPECT_TRUE(record.isSet(location.Get(), verifyPeer));
    EXPECT_FALSE(*location->PeekVerifyPeer());

    const std::int32_t number = 902;
    record.set(location.Get(), port, &number);
    std::int32_t stored[2] = {};
    const void* bytes = &location->GetPort();
    std::memcpy(&stored, bytes, sizeof(stored));
    EXPECT_EQ(stored[0], 902);
    record.reset(location.Get(), port);
    std::memcpy(&stored, bytes, 5);
    EXPECT_EQ(stored[0], 902);
    EXPECT_EQ(stored[1] & 0xFF, 0);

    const auto spec = MakeRef<Morvane::ComputerSpec>();
    const DataTypeInfo& specRecord = Tavik::GetDoType<Morvane::ComputerSpec>()->GetDataTypeInfo();
    try {
        specRecord.set(spec.Get(), 0, static_cast<Any*>(spec.Get()));
        FAIL() << "a ComputerSpec is no location";
    } catch (const Pellum::TypeMismatchException& error) {
        EXPECT_NE(error.GetExpected().find("Morvane::ComputerSpec::ComputerLocation"), std::string::npos);
        EXPECT_NE(error.GetReceived().find("Morvane::ComputerSpec"), std::string::npos);
    }
    specRecord.set(spec.Get(), 0, static_cast<Any*>(location.Get()));
    EXPECT_EQ(spec->GetLocation(), location.Get());
}

} // namespace
