#include "pellum/error/exception.h"
#include "pellum/error/type_mismatch.h"
#include "tavik/codec/json/json.h"
#include "tavik/type/version.h"
#include "tavik/value/primitive.h"
#include "tavik/value/scalar_array.h"
#include "tavik/value/validate.h"
#include "tests/catalogue/catalogue.h"
#include "tests/catalogue/document.h"
#include "types/api/task/task_info.h"

#include <gmock/gmock.h>

#include <cstring>

/// Every enumeration: a tag is its number, boxed, in arrays and in documents.
namespace {

using namespace CatalogueTests;
using Pellum::Ref;
using Tavik::Any;
using testing::HasSubstr;

void ForEachEnumeration(const std::function<void(const Tavik::EnumType&)>& check) {
    const auto types = GetEnumTypes();
    EXPECT_GT(types.size(), 38U);
    for (const Tavik::EnumType* type : types) {
        SCOPED_TRACE(type->GetName());
        check(*type);
    }
}

/// The tags as the descriptor lists them.
std::vector<std::string> GetTags(const Tavik::EnumType& type) {
    std::vector<std::string> tags;
    for (const char* const* tag = type.GetEnumTypeInfo().values; *tag != nullptr; ++tag) {
        tags.emplace_back(*tag);
    }
    return tags;
}

template <class Call>
std::string GetError(Call call) {
    try {
        call();
    } catch (const Pellum::Exception& error) {
        return error.what();
    }
    return "none";
}

TEST(CatalogueEnumerations, TagsAreNumbersAndBack) {
    ForEachEnumeration([](const Tavik::EnumType& type) {
        const std::vector<std::string> tags = GetTags(type);
        ASSERT_FALSE(tags.empty());
        EXPECT_EQ(std::vector<std::string>(type.GetTags().begin(), type.GetTags().end()), tags);
        for (std::int32_t i = 0; i < static_cast<std::int32_t>(tags.size()); ++i) {
            const std::string& tag = tags[static_cast<std::size_t>(i)];
            EXPECT_EQ(type.GetTag(i), tag);
            EXPECT_EQ(type.GetValue(tag), i);
            EXPECT_EQ(type.FindValue(tag), i);
        }
    });
}

TEST(CatalogueEnumerations, BoxedValuesKeepNumberAndTag) {
    const Ref<Any> number(new Tavik::Primitive<std::int32_t>(0));
    const Ref<Any> state(new Tavik::Primitive(Morvane::Task::TaskInfo::State::queued));
    ForEachEnumeration([&](const Tavik::EnumType& type) {
        const std::vector<std::string> tags = GetTags(type);
        for (std::int32_t i = 0; i < static_cast<std::int32_t>(tags.size()); ++i) {
            const std::string& tag = tags[static_cast<std::size_t>(i)];
            const Ref<Any> made(type.GetFunctions().box(i));
            const Ref<Any> boxed(type.Box(&i));
            EXPECT_EQ(made->_GetType(), &type);
            EXPECT_EQ(type.GetFunctions().unbox(made.Get()), i);
            EXPECT_EQ(type.GetFunctions().tagOfBoxed(made.Get()), tag);
            EXPECT_TRUE(made->_IsEqual(boxed.Get(), false));
            EXPECT_TRUE(made->_IsEqual(Ref<Any>(made->_Clone()).Get(), false));
            EXPECT_EQ(made->_IsEqual(Ref<Any>(type.GetFunctions().box(0)).Get(), false), i == 0);
            const std::string text =
                "{\"$type\": " + Quoted(type.GetWireName()) + ", \"value\": " + Quoted(tag) + '}';
            EXPECT_EQ(Tavik::Json::Encode(made.Get()), text);
            EXPECT_EQ(type.GetFunctions().unbox(Tavik::Json::Decode(text).Get()), i);
        }
        for (const Any* other : {number.Get(), state->_GetType() != &type ? state.Get() : nullptr}) {
            EXPECT_THROW(type.GetFunctions().unbox(other), Pellum::TypeMismatchException);
            EXPECT_THROW(type.GetFunctions().tagOfBoxed(other), Pellum::TypeMismatchException);
        }
    });
}

TEST(CatalogueEnumerations, ArraysAreMadeOfTags) {
    ForEachEnumeration([](const Tavik::EnumType& type) {
        std::vector<std::string> tags = GetTags(type);
        std::reverse(tags.begin(), tags.end());
        const Tavik::EnumFuncs& functions = type.GetFunctions();
        const Ref<Tavik::ArrayBase> made(functions.arrayFromTags(Tavik::Array<std::string>(tags)));
        ASSERT_EQ(made->GetLength(), tags.size());
        ASSERT_EQ(made->_GetElementType(), &type); // what the class knows
        EXPECT_EQ(made->_GetType(), Tavik::Type::GetArrayType(&type));
        const Ref<Tavik::ArrayBase> empty(functions.createArray());
        EXPECT_TRUE(empty->IsEmpty());
        EXPECT_TRUE(Ref<Tavik::ArrayBase>(functions.arrayFromTags({}))->IsEmpty());
        for (std::size_t i = 0; i < tags.size(); ++i) {
            std::int32_t number = -1;
            std::memcpy(
                &number, dynamic_cast<Tavik::ScalarArrayBase&>(*made)._GetElementPointer(i), sizeof(number));
            EXPECT_EQ(number, static_cast<std::int32_t>(tags.size() - 1 - i));
            dynamic_cast<Tavik::ScalarArrayBase&>(*empty)._Append(&number);
        }
        EXPECT_TRUE(made->_IsEqual(empty.Get(), false));
        const Ref<Any> back = Tavik::Json::Decode(Tavik::Json::Encode(made.Get()));
        EXPECT_TRUE(made->_IsEqual(back.Get(), false));
    });
}

TEST(CatalogueEnumerations, RefuseWhatIsNoTag) {
    ForEachEnumeration([](const Tavik::EnumType& type) {
        const std::vector<std::string> tags = GetTags(type);
        for (const std::string& wrong :
             {std::string(), std::string("noSuchTag"), tags[0] + ' ', tags[0].substr(1), std::string("0")}) {
            SCOPED_TRACE(wrong);
            EXPECT_EQ(type.FindValue(wrong), -1);
            EXPECT_THAT(GetError([&] { type.GetValue(wrong); }), HasSubstr(type.GetName()));
            EXPECT_THAT(
                GetError([&] {
                    const Ref<Any> array(type.GetFunctions().arrayFromTags({tags[0], wrong}));
                }),
                HasSubstr(wrong));
            EXPECT_THAT(
                GetError([&] {
                    Tavik::Json::Decode(
                        "{\"$type\": " + Quoted(type.GetWireName()) + ", \"value\": " + Quoted(wrong) + '}');
                }),
                testing::AllOf(HasSubstr(type.GetWireName()), HasSubstr(Quoted(wrong))));
        }
        for (const std::int32_t number : {-1, static_cast<std::int32_t>(tags.size()), INT32_MAX, INT32_MIN}) {
            EXPECT_THAT(GetError([&] { type.GetTag(number); }), HasSubstr(type.GetName()));
            const Ref<Any> boxed(type.GetFunctions().box(number));
            EXPECT_EQ(type.GetFunctions().unbox(boxed.Get()), number);
            EXPECT_THROW(type.GetFunctions().tagOfBoxed(boxed.Get()), Pellum::Exception);
            EXPECT_THROW(Tavik::Json::Encode(boxed.Get()), Tavik::Json::EncodeError);
        }
    });
}

TEST(CatalogueEnumerations, AreRefusedByOlderVersions) {
    std::size_t refused = 0;
    ForEachEnumeration([&](const Tavik::EnumType& type) {
        const Ref<Any> boxed(type.GetFunctions().box(0));
        for (std::size_t i = 0; i < kVersionCount; ++i) {
            Tavik::Json::EncodeOptions options;
            options.version = &GetVersion(i);
            const std::string error = GetError([&] { Tavik::Json::Encode(boxed.Get(), options); });
            EXPECT_EQ(Tavik::Validate(boxed.Get(), &GetVersion(i)).empty(), Has(i, type.GetInfo().version));
            if (Has(i, type.GetInfo().version)) {
                EXPECT_EQ(error, "none");
            } else {
                ++refused;
                EXPECT_THAT(
                    error, testing::AllOf(HasSubstr(type.GetName()), HasSubstr(GetVersion(i).GetName())));
            }
        }
    });
    EXPECT_GT(refused, 5U);
}

} // namespace
