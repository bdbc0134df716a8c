#include "tavik/value/primitive.h"

#include "pellum/error/type_mismatch.h"
#include "tavik/type/data_object_type.h"
#include "tavik/type/type_registry.h"
#include "tests/sample/api/colour.h"
#include "tests/sample/api/level4.h"
#include "tests/sample/api/point.h"
#include "tests/sample/api/thing.h"

#include <gtest/gtest.h>

namespace {

using Pellum::MakeRef;
using Pellum::Ref;

TEST(SharedBooleans, AreWhatTheTypeBoxes) {
    for (const bool value : {true, false}) {
        EXPECT_EQ(
            Tavik::GetBuiltinType(Tavik::TypeKind::Boolean)->Box(&value),
            Tavik::Primitive<bool>::Factory::Get(value));
    }
}

template <class T>
class Boxed : public testing::Test {};

struct Names {
    template <class T>
    static std::string GetName(int /*index*/) {
        return std::string(Tavik::TypeOf<T>() == nullptr ? "enumeration" : Tavik::TypeOf<T>()->GetName());
    }
};

using Scalars = testing::Types<
    signed char, std::int32_t, std::int64_t, float, std::string, Pellum::System::DateTime,
    std::vector<std::uint8_t>, Tavik::TypeName, Tavik::PropertyPath, Sample::Colour>;
TYPED_TEST_SUITE(Boxed, Scalars, Names);

template <class T>
T Other() {
    if constexpr (
        std::is_same_v<
            T, std::string> || std::is_same_v<T, Tavik::TypeName> || std::is_same_v<T, Tavik::PropertyPath>) {
        return T(std::string("x"));
    } else if constexpr (std::is_same_v<T, std::vector<std::uint8_t>>) {
        return {1, 2};
    } else if constexpr (std::is_same_v<T, Pellum::System::DateTime>) {
        return T::FromUtcTime(1);
    } else {
        return static_cast<T>(1);
    }
}

TYPED_TEST(Boxed, IsAValueLikeAnyOther) {
    Tavik::TypeRegistry::Instance().Load();
    using Box = Tavik::Primitive<TypeParam>;
    const Ref<Box> one(new Box(TypeParam{}));
    const Ref<Box> two(new Box(Other<TypeParam>()));
    EXPECT_FALSE(one->_IsEqual(two.Get(), true));
    const Ref<Box> clone(two->_Clone());
    EXPECT_NE(clone.Get(), two.Get());
    EXPECT_EQ(clone->GetRefCount(), 1);
    EXPECT_TRUE(clone->_IsEqual(two.Get(), false));

    const Tavik::Type* type = one->_GetType();
    ASSERT_EQ(type, Tavik::TypeOf<TypeParam>());
    const Ref<Tavik::Any> boxed(type->Box(two->_GetValuePointer()));
    ASSERT_NE(dynamic_cast<Box*>(boxed.Get()), nullptr);
    EXPECT_TRUE(boxed->_IsEqual(two.Get(), false));

    // An array of the type takes such values, and clones deeply.
    const Ref<Tavik::ArrayBase> array(type->NewArray());
    auto& elements = dynamic_cast<Tavik::Array<TypeParam>&>(*array);
    elements._Append(two->_GetValuePointer());
    EXPECT_EQ(array->GetLength(), 1U);
    EXPECT_EQ(array->_GetType(), Tavik::Type::GetArrayType(type));
    const Ref<Tavik::Any> copy(array->_Clone());
    EXPECT_TRUE(copy->_IsEqual(array.Get(), false));
    elements.Append(TypeParam{});
    EXPECT_FALSE(copy->_IsEqual(array.Get(), true));
    Tavik::PropertyDiffSet diffs;
    copy->_DiffProperties(array.Get(), "a", diffs);
    ASSERT_EQ(diffs.GetSize(), 1U);
    EXPECT_EQ(diffs[0], "a[1]");
}

TEST(DataArray, TakesElementsOfItsClassOnly) {
    Tavik::DataArray<Sample::Level3> array;
    EXPECT_THROW(array.AppendChecked(MakeRef<Sample::Point>().Get()), Pellum::TypeMismatchException);
    EXPECT_THROW(array.AppendChecked(MakeRef<Sample::Level2>().Get()), Pellum::TypeMismatchException);
    EXPECT_TRUE(array.IsEmpty());
    const auto derived = MakeRef<Sample::Level4>();
    array.AppendChecked(derived.Get());
    array.AppendChecked(nullptr);
    EXPECT_EQ(array.GetLength(), 2U);
    EXPECT_EQ(derived->GetRefCount(), 2);

    const Ref<Tavik::DataArray<Sample::Level3>> clone(array._Clone());
    EXPECT_NE(clone->GetElement(0), derived.Get());
    EXPECT_NE(dynamic_cast<Sample::Level4*>(clone->GetElement(0)), nullptr);
    EXPECT_EQ(clone->GetElement(1), nullptr);
    array.Remove(0);
    EXPECT_EQ(derived->GetRefCount(), 1);
    array.SetElement(0, derived.Get());
    array.SetElement(0, derived.Get());
    EXPECT_EQ(derived->GetRefCount(), 2);
}

TEST(ReferenceArray, TakesReferencesOnly) {
    Tavik::Array<Ref<Tavik::MoRef>> array;
    EXPECT_THROW(
        array._Append(static_cast<Tavik::Any*>(MakeRef<Sample::Point>().Get())),
        Pellum::TypeMismatchException);
    EXPECT_TRUE(array.IsEmpty());
    const auto reference = MakeRef<Tavik::MoRef>(&Sample::gSampleThingTypeInfo, "1");
    array._Append(static_cast<Tavik::Any*>(reference.Get()));
    EXPECT_EQ(array[0], reference);
    const Ref<Tavik::Any> clone(array._Clone());
    EXPECT_TRUE(clone->_IsEqual(&array, false));
}

} // namespace
