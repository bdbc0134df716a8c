#include "tavik/codec/json/json.h"
#include "tavik/value/compare.h"
#include "tavik/value/open_content.h"
#include "tests/codec/repeat.h"
#include "tests/sample/api/bag.h"
#include "tests/sample/api/bag_holder.h"
#include "tests/sample/api/labelled_bag.h"

#include <gmock/gmock.h>

#include <random>

namespace {

using namespace Tavik;
using CodecTests::Repeat;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

std::string Bag(std::string_view members) {
    return R"({"$type": "SampleBag")" + std::string(members.empty() ? "" : ", ") + std::string(members) + "}";
}

TEST(OpenTypesTest, PassThroughUnharmed) {
    const std::string longNumber = Repeat("1234567890", 1000);
    const std::string cases[] = {
        Bag(""),
        Bag(R"("b": 1, "a": 2, "": 3)"),
        Bag(R"("o": {}, "l": [], "n": null, "t": true, "f": false, "s": "")"),
        Bag(R"("l": [[], [[]], {}, [null, {"x": [1, "2", {"y": null}]}]])"),
        Bag(R"("i": [0, -0, 18446744073709551615, 18446744073709551616, -9223372036854775809])"),
        Bag(R"("d": [0.10, 1.0, -0.0, 1e5, 1E5, 1e+05, 1.50E-07, 1e400, -1e-400, 123456789.123456789012345])"),
        Bag("\"long\": " + longNumber + ", \"fraction\": 0." + longNumber + "e-" + "999"),
        Bag(R"("ä€😀": "gr\"\\\n\t\u0000 ü 😀", "two words": "\u007f\u202e")"),
        Bag(R"("x": {"$type": "SamplePoint", "nothing": "of it", "mo": 1})"),
        Bag(R"("x": {"$type": 5}, "y": [{"a": 1, "$type": "no such type"}])"),
        Bag(R"("password": "open sesame", "x": [{"authToken": {"a": ["sesame"]}}])"),
        R"({"$type": "SampleLabelledBag", "label": "l", "inner": {"y": [1], "label": 2}, "z": 1, "a": 2})",
        R"({"$type": "SampleLabelledBag", "label": "l", "inner": {"$type": "SampleBigBag", "y": 1}, "late": 3})",
        R"({"$type": "SampleOpenPoint", "x": 1, "z": 3})",
        R"({"$type": "SampleBagLost", "where": "there", "why": "a hole"})",
        R"({"$type": "SampleBagHolder", "bag": {"$type": "SampleBigBag", "x": 1}, "bags": [{}, {"x": {}}]})",
        R"({"$type": "SampleBagHolder", "bag": {}, "any": {"$type": "SampleBagTorn", "x": [{}]}, "password": "p"})",
        R"({"$type": "SampleBag[]", "value": [{"x": 1}, {}]})",
    };
    Json::DecodeOptions lenient;
    lenient.lenient = true;
    for (const std::string& text : cases) {
        const auto value = Json::Decode(text);
        EXPECT_EQ(Json::Encode(value.Get()), text);
        EXPECT_EQ(Json::Encode(Json::Decode(text, lenient).Get()), text);
        const Pellum::Ref<Any> clone(value->_Clone());
        EXPECT_EQ(Json::Encode(clone.Get()), text);
        EXPECT_TRUE(AreEqualAnysInt(value.Get(), clone.Get(), 0, false));
        Json::EncodeOptions indented;
        indented.indent = 4;
        const auto same = Json::Decode(Json::Encode(value.Get(), indented));
        EXPECT_EQ(Json::Encode(same.Get()), text);
        EXPECT_EQ(value->ToString().find("sesame"), std::string::npos);
    }
}

TEST(OpenTypesTest, AreReadInAnyOrder) {
    // Described properties come before the others when they are written; null is kept of the latter only.
    EXPECT_EQ(
        Json::Encode(
            Json::Decode(R"({"$type": "SampleLabelledBag", "b": null, "late": null, "label": "l", "a": {}})")
                .Get()),
        R"({"$type": "SampleLabelledBag", "label": "l", "b": null, "a": {}})");
    EXPECT_EQ(
        Json::Encode(
            Json::Decode(R"({"$type":"SampleBag","\u0061" :[ 1 ,2.50 ],"\ud83d\ude00":"\/"})").Get()),
        Bag(R"("a": [1, 2.50], "😀": "/")"));
    const auto bag = Json::DecodeAs<Sample::Bag>(R"({"memoryMB": 4096, "disk": [{"label": "d"}]})");
    EXPECT_EQ(bag->_GetContent().Find("memoryMB")->GetText(), "4096");
    const OpenValue disk = (*bag->_GetContent().Find("disk")->GetItems().begin()).value;
    EXPECT_EQ(disk.Find("label")->GetText(), "d");
}

/// A text that is refused, with the place, the path and part of the reason that must be told.
struct RefusedContent {
    std::string text;
    std::string_view place;
    std::string_view path;
    std::string_view reason;
};

TEST(OpenTypesTest, TellWhereTheyAreWrong) {
    const RefusedContent cases[] = {
        {Bag(R"("a": 1, "a": 2)"), "1:32", "", R"(there is a second member "a")"},
        {Bag(R"("a": {"b": [0, {"c": 1, "d": 2, "c": 3}]})"), "1:56", "a.b[1]",
         R"(there is a second member "c")"},
        {Bag(R"("a": {"$type": 1, "$type": 2})"), "1:42", "a", R"(there is a second member "$type")"},
        {Bag(R"("a": 1, "$type": "SampleBag")"), "1:32", "", R"("$type" must be the first member)"},
        {Bag(R"("a": 1, "\u0061": 2)"), "1:32", "", R"(there is a second member "a")"},
        {Bag(R"("a": {"b": [1, tru]})"), "1:39", "a.b[1]", "expected"},
        {Bag(R"("a": {"two words": [[}]})"), "1:45", "a.\"two words\"[0][0]", "expected a value or ']'"},
        {Bag(R"("a": {"b": 1)"), "1:37", "", "the text ends too early: expected ',' or '}'"},
        {Bag(R"("a": 1e99999999999)"), "1:29", "a", "the number's exponent is too large"},
        {R"({"$type": "SampleLabelledBag", "label": "l", "x": 1, "label": 2})", "1:54", "",
         R"(there is a second member "label")"},
        {R"({"$type": "SampleLabelledBag", "x": 1})", "1:38", "", R"(lacks the required "label")"},
        {R"({"$type": "SampleBagHolder", "bag": {}, "bags": [{}, {"x": 1, "x": 2}]})", "1:63", "bags[1]",
         R"(there is a second member "x")"},
        {R"({"$type": "SampleBagHolder", "bag": {"x": 1}, "bagg": 1})", "1:47", "", R"(did you mean "bag"?)"},
        {R"({"$type": "SampleBagHolder", "bag": {"$type": "SamplePoint"}})", "1:47", "bag",
         "expected an object of type SampleBag or derived from it, found type SamplePoint"},
    };
    for (const RefusedContent& refused : cases) {
        try {
            Json::Decode(refused.text);
            ADD_FAILURE() << "was accepted: " << refused.text;
        } catch (const Json::DecodeError& error) {
            EXPECT_EQ(
                std::to_string(error.GetLine()) + ':' + std::to_string(error.GetColumn()), refused.place)
                << refused.text;
            EXPECT_EQ(error.GetPath(), refused.path) << refused.text;
            EXPECT_THAT(error.GetReason(), HasSubstr(refused.reason)) << refused.text;
        }
    }
}

TEST(OpenTypesTest, KeepToTheLimitsInside) {
    Json::DecodeOptions options;
    const auto accepts = [&](const std::string& text) {
        try {
            const auto value = Json::Decode(text, options);
            EXPECT_EQ(Json::Encode(value.Get()), text);
            return true;
        } catch (const Json::DecodeError& error) {
            EXPECT_THAT(error.GetReason(), HasSubstr("limit"));
            return false;
        }
    };
    const auto nest = [](std::size_t depth) {
        return Bag("\"a\": " + Repeat("[", depth) + Repeat("]", depth));
    };
    EXPECT_TRUE(accepts(nest(63)));
    EXPECT_FALSE(accepts(nest(64)));
    options.limits.values = 6;
    EXPECT_TRUE(accepts(Bag(R"("a": [1, {"b": null}])"))); // the bag, its type, and four inside
    EXPECT_FALSE(accepts(Bag(R"("a": [1, {"b": null}, 2])")));
}

TEST(OpenTypesTest, AreReadTheSameAgainOrRefusedHoweverTheTextIsChanged) {
    const std::string document = R"({"$type": "SampleLabelledBag", "label": "l", "a": [1.50, {"b": null, )"
                                 R"("c": "\u00e4"}, []], "inner": {"x": {"y": [true, -1e5]}}, "z": {}})";
    constexpr std::string_view characters = "{}[]\",:\\0-e.ulnab";
    std::mt19937 random(7);
    int accepted = 0;
    for (int round = 0; round < 20'000; ++round) {
        std::string text = document;
        for (auto change = random() % 3 + 1; change > 0; --change) {
            text[random() % text.size()] = characters[random() % characters.size()];
        }
        try {
            const std::string written = Json::Encode(Json::Decode(text).Get());
            EXPECT_EQ(Json::Encode(Json::Decode(written).Get()), written) << text;
            ++accepted;
        } catch (const Json::DecodeError& error) {
            EXPECT_THAT(error.GetReason(), Not(IsEmpty()));
        }
    }
    EXPECT_GT(accepted, 100);
    EXPECT_LT(accepted, 10'000);
}

TEST(OpenTypesTest, GoWholeToEveryVersionThatHasTheType) {
    TypeRegistry& registry = TypeRegistry::Instance();
    Json::EncodeOptions encode;
    encode.version = registry.FindVersion("sample.version.version1");
    ASSERT_NE(encode.version, nullptr);
    const std::string_view text =
        R"({"$type": "SampleLabelledBag", "label": "l", "late": 1, "later": {"late": 2}})";
    const std::string_view older = R"({"$type": "SampleLabelledBag", "label": "l", "later": {"late": 2}})";
    EXPECT_EQ(Json::Encode(Json::Decode(text).Get(), encode), older);
    Json::DecodeOptions decode;
    decode.version = encode.version;
    EXPECT_EQ(Json::Encode(Json::Decode(older, decode).Get()), older);
    // A property that a younger version describes is no unknown one.
    EXPECT_THROW(Json::Decode(text, decode), Json::DecodeError);
    decode.lenient = true;
    EXPECT_EQ(Json::Encode(Json::Decode(text, decode).Get()), older);
}

TEST(OpenTypesTest, AreNotWrittenWithAMemberTwice) {
    TypeRegistry::Instance().Load();
    for (const char* name : {"label", "late", "$type"}) {
        const auto bag = Pellum::MakeRef<Sample::LabelledBag>();
        bag->SetLabel("l");
        bag->_GetContent().SetNumber("other", 1);
        EXPECT_NO_THROW(Json::Encode(bag.Get()));
        bag->_GetContent().SetNull(name);
        try {
            Json::Encode(bag.Get());
            ADD_FAILURE() << name;
        } catch (const Json::EncodeError& error) {
            EXPECT_THAT(std::string(error.what()), HasSubstr(name));
        }
    }
}

} // namespace
