#include "pellum/object/optional.h"

#include "pellum/system/date_time.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace {

using Pellum::DateTime;
using Pellum::Optional;

enum class Colour : std::int32_t { Red, Green };

/// Two different values for each storage form.
template <typename T>
T Sample(int which);

template <>
bool Sample(int which) {
    return which == 1;
}

template <>
std::int32_t Sample(int which) {
    return which == 1 ? -7 : 0;
}

template <>
std::int64_t Sample(int which) {
    return which == 1 ? INT64_MIN : 42;
}

template <>
float Sample(int which) {
    return which == 1 ? 0.5F : 0.0F;
}

template <>
Colour Sample(int which) {
    return which == 1 ? Colour::Green : Colour::Red;
}

template <>
DateTime Sample(int which) {
    return DateTime::FromUtcTime(which);
}

template <>
std::string Sample(int which) {
    return which == 1 ? "a text too long for the small-string form of any library" : "";
}

template <typename T>
class OptionalTest : public testing::Test {};

using Forms = testing::Types<bool, std::int32_t, std::int64_t, float, Colour, DateTime, std::string>;
TYPED_TEST_SUITE(OptionalTest, Forms);

TYPED_TEST(OptionalTest, StartsUnsetAndHoldsWhatIsSet) {
    Optional<TypeParam> optional;
    EXPECT_FALSE(optional.IsSet());
    EXPECT_EQ(optional.Peek(), nullptr);

    for (const int which : {0, 1, 0}) {
        const TypeParam value = Sample<TypeParam>(which);
        optional.SetValue(value);
        EXPECT_TRUE(optional.IsSet());
        EXPECT_EQ(optional.GetValue(), value);
        ASSERT_NE(optional.Peek(), nullptr);
        EXPECT_EQ(*optional.Peek(), value);
        EXPECT_EQ(optional.ValueOr(Sample<TypeParam>(1 - which)), value);
    }

    optional.Unset();
    EXPECT_FALSE(optional.IsSet());
    EXPECT_EQ(optional.Peek(), nullptr);
    EXPECT_EQ(optional.ValueOr(Sample<TypeParam>(1)), Sample<TypeParam>(1));
}

TYPED_TEST(OptionalTest, CopiesAreIndependent) {
    const Optional<TypeParam> set = Sample<TypeParam>(1);
    const Optional<TypeParam> unset;

    Optional<TypeParam> copy = set;
    copy.SetValue(Sample<TypeParam>(0));
    EXPECT_EQ(set, Optional<TypeParam>(Sample<TypeParam>(1)));

    copy = unset;
    EXPECT_EQ(copy, unset);
    copy = set;
    EXPECT_EQ(copy, set);

    const auto& self = copy;
    copy = self;
    EXPECT_EQ(copy, set);

    const Optional<TypeParam> moved = std::move(copy);
    EXPECT_EQ(moved, set);
}

TYPED_TEST(OptionalTest, EqualWhenBothUnsetOrBothSetAlike) {
    const Optional<TypeParam> zero = Sample<TypeParam>(0);
    const Optional<TypeParam> one = Sample<TypeParam>(1);
    Optional<TypeParam> formerlyOne = one;
    formerlyOne.Unset();

    EXPECT_EQ(formerlyOne, Optional<TypeParam>()) << "the value left behind the mark must not count";
    EXPECT_NE(formerlyOne, zero);
    EXPECT_NE(zero, formerlyOne);
    EXPECT_NE(zero, one);
    EXPECT_EQ(one, Sample<TypeParam>(1));
}

TYPED_TEST(OptionalTest, SwapsMarkAndValueTogether) {
    Optional<TypeParam> set = Sample<TypeParam>(1);
    Optional<TypeParam> unset;

    set.Swap(set);
    EXPECT_EQ(set, Sample<TypeParam>(1));

    swap(set, unset);
    EXPECT_FALSE(set.IsSet());
    EXPECT_EQ(unset, Sample<TypeParam>(1));
}

/// The bytes of an optional, which other code relies on.
template <typename T>
std::string Bytes(const Optional<T>& optional) {
    return {reinterpret_cast<const char*>(&optional), sizeof(optional)};
}

TEST(OptionalLayoutTest, AssigningAnUnsetValueLeavesTheOldOneBehindTheMark) {
    Optional<std::int32_t> target = 0x01020304;
    Optional<std::int32_t> unset = 9;
    unset.Unset();
    target = unset;
    EXPECT_EQ(Bytes(target).substr(0, 5), std::string("\x04\x03\x02\x01\x00", 5));
}

TEST(OptionalLayoutTest, StringIsOnePointerThatIsNullWhenUnset) {
    Optional<std::string> optional;
    EXPECT_EQ(Bytes(optional), std::string(sizeof(void*), '\0'));

    optional.SetValue("text");
    const std::string* const held = optional.Peek();
    EXPECT_EQ(Bytes(optional), std::string(reinterpret_cast<const char*>(&held), sizeof(void*)));

    optional.SetValue(std::string("another text"));
    EXPECT_EQ(held, optional.Peek()) << "a new value goes into the string already held";

    optional.SetValue(*optional.Peek());
    EXPECT_EQ(optional, "another text");
    optional.SetValue(std::string_view(*held).substr(8));
    EXPECT_EQ(optional, "text") << "a view of the string already held";

    optional.Unset();
    EXPECT_EQ(Bytes(optional), std::string(sizeof(void*), '\0'));
}

TEST(OptionalLayoutTest, StringTakesTextsInAllForms) {
    struct Name { // is a string as well as a view of one
        std::string text = "a name";

        operator const std::string&() const { return text; }

        operator std::string_view() const { return text; }
    };

    Optional<std::string> optional;
    optional.SetValue(Name());
    EXPECT_EQ(optional, "a name");
    const char text[] = "a text and more";
    optional.SetValue({text, 6});
    EXPECT_EQ(optional, "a text");
    optional.Unset();
    optional.SetValue(std::string_view(text));
    EXPECT_EQ(optional, "a text and more");
    EXPECT_THROW(optional.SetValue(static_cast<const char*>(nullptr)), std::logic_error);
}

static_assert(std::is_convertible_v<const char*, Optional<std::string>>);
static_assert(!std::is_convertible_v<const char*, Optional<bool>>, "a text is no boolean");
static_assert(!std::is_convertible_v<int, Optional<bool>>);

} // namespace
