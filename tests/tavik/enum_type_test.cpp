#include "tavik/type/enum_type.h"

#include "pellum/error/exception.h"
#include "pellum/error/type_mismatch.h"
#include "tavik/type/type_registry.h"
#include "tavik/value/primitive.h"
#include "tavik/value/scalar_array.h"
#include "tests/sample/api/class.h"
#include "tests/sample/api/colour.h"

#include <gmock/gmock.h>

namespace {

using Pellum::Ref;
using Sample::Colour;
using testing::HasSubstr;
using testing::ThrowsMessage;

class EnumTypeTest : public testing::Test {
protected:
    const Tavik::EnumType& m_type = (Tavik::TypeRegistry::Instance().Load(), *Tavik::GetEnumType<Colour>());
};

TEST_F(EnumTypeTest, ResolvesTagsExactly) {
    const std::vector<std::string> tags(m_type.GetTags().begin(), m_type.GetTags().end());
    EXPECT_THAT(tags, testing::ElementsAre("red", "green", "blue"));
    for (std::int32_t value = 0; value < 3; ++value) {
        EXPECT_STREQ(m_type.GetTag(value), tags[static_cast<std::size_t>(value)].c_str());
        EXPECT_EQ(m_type.GetValue(tags[static_cast<std::size_t>(value)]), value);
    }
    for (const std::int32_t value : {-1, 3, INT32_MAX, INT32_MIN}) {
        EXPECT_THAT(
            [&] { m_type.GetTag(value); },
            ThrowsMessage<Pellum::Exception>(
                testing::AllOf(HasSubstr(std::to_string(value)), HasSubstr("sample.Colour"))));
    }
    for (const char* tag : {"", "Red", "red ", "purple"}) {
        EXPECT_EQ(m_type.FindValue(tag), -1);
        EXPECT_THAT(
            [&] { m_type.GetValue(tag); }, ThrowsMessage<Pellum::Exception>(HasSubstr("sample.Colour")));
    }
}

TEST_F(EnumTypeTest, HasFunctionsForItsOwnValuesOnly) {
    const Tavik::EnumFuncs& functions = m_type.GetFunctions();
    const Ref<Tavik::Any> boxed(functions.box(2));
    EXPECT_EQ(boxed->GetRefCount(), 1);
    EXPECT_EQ(dynamic_cast<Tavik::Primitive<Colour>&>(*boxed).GetValue(), Colour::blue);
    EXPECT_EQ(functions.unbox(boxed.Get()), 2);
    EXPECT_STREQ(functions.tagOfBoxed(boxed.Get()), "blue");

    const Ref<Tavik::Any> number(new Tavik::Primitive<std::int32_t>(2));
    const Ref<Tavik::Any> other(new Tavik::Primitive<Sample::Namespace::Class::Class::Type>(
        Sample::Namespace::Class::Class::Type::xor_));
    for (const Tavik::Any* foreign : {number.Get(), other.Get(), static_cast<Tavik::Any*>(nullptr)}) {
        EXPECT_THROW(functions.unbox(foreign), Pellum::TypeMismatchException);
        EXPECT_THROW(functions.tagOfBoxed(foreign), Pellum::TypeMismatchException);
    }
    const Ref<Tavik::Any> noValue(functions.box(17));
    EXPECT_EQ(functions.unbox(noValue.Get()), 17);
    EXPECT_THROW(functions.tagOfBoxed(noValue.Get()), Pellum::Exception);
}

TEST_F(EnumTypeTest, MakesArrays) {
    const Tavik::EnumFuncs& functions = m_type.GetFunctions();
    const Ref<Tavik::ArrayBase> array(
        functions.arrayFromTags(Tavik::Array<std::string>{"blue", "red", "blue"}));
    const auto& values = dynamic_cast<const Tavik::Array<Colour>&>(*array);
    EXPECT_THAT(values.GetElements(), testing::ElementsAre(Colour::blue, Colour::red, Colour::blue));
    EXPECT_EQ(array->_GetElementType(), &m_type);
    EXPECT_STREQ(array->_GetType()->GetName(), "sample.Colour[]");
    EXPECT_THROW(functions.arrayFromTags(Tavik::Array<std::string>{"blue", "Blue"}), Pellum::Exception);

    const Ref<Tavik::ArrayBase> empty(functions.createArray());
    EXPECT_NE(dynamic_cast<Tavik::Array<Colour>*>(empty.Get()), nullptr);
    EXPECT_TRUE(empty->IsEmpty());
}

} // namespace
