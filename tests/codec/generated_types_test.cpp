#include "tavik/codec/json/json.h"
#include "tavik/value/compare.h"
#include "tests/sample/api/node.h"

#include <gtest/gtest.h>

namespace {

using namespace Tavik;

// NOLINTBEGIN(bugprone-suspicious-missing-comma): long documents are written on several lines.

/// Objects of generated classes with properties of every kind, as `Encode` writes them.
constexpr std::string_view kDocuments[] = {
    R"({"$type": "SampleRequiredKinds", "stringValue": "", "intValue": 0, "longValue": -1, )"
    R"("booleanValue": false, "byteValue": 127, "floatValue": -0, "dateTimeValue": "0001-01-01T00:00:00Z", )"
    R"("binaryValue": "", "typeNameValue": "", "propertyPathValue": "", )"
    R"("anyValue": {"$type": "SamplePoint", "x": 1}, "enumValue": "blue", "dataValue": {"x": 1, "y": 0}, )"
    R"("faultValue": {"part": "p"}, "referenceValue": {"mo": "SampleSpecialThing", "id": "t"}, )"
    R"("methodFaultValue": {"$type": "SampleThingBroken", "part": "q", "cause": {}}, "secretValue": "s"})",

    R"({"$type": "SampleOptionalKinds", "stringValue": "", "booleanValue": false, )"
    R"("anyValue": {"$type": "SampleColour[]", "value": ["green"]}, "enumValue": "red", "secretValue": ""})",

    R"({"$type": "SampleArrayKinds", "stringList": [""], "intList": [0], "longList": [1], "byteList": "AA==", )"
    R"("floatList": [0.5, 1e-45], "dateTimeList": ["9999-12-31T23:59:59.999999Z"], "binaryList": ["", "AP8="], )"
    R"("typeNameList": ["a"], "propertyPathList": ["b[1].c"], "anyList": [{"$type": "binary", "value": "AA=="}], )"
    R"("enumList": ["red", "blue"], "dataList": [{"x": 1}], "faultList": [{"part": ""}], )"
    R"("referenceList": [{"mo": "SampleThing", "id": ""}], )"
    R"("methodFaultList": [{}, {"$type": "SampleBadlyFailed", "why": "w"}]})",

    R"({"$type": "SampleOptionalArrayKinds"})",

    R"({"$type": "SampleLevel5", "first": "1", "point": {"x": 1}, "third": 3, "late": "l", "fourth": true, )"
    R"("fifth": ["red"]})",

    R"({"$type": "SampleNode", "n": {"n": {"label": "x"}}, "children": [{}, {"any": {"$type": "SampleEmpty"}}]})",
};

// NOLINTEND(bugprone-suspicious-missing-comma)

TEST(GeneratedTypesTest, SurviveEncodingAndDecoding) {
    for (const std::string_view document : kDocuments) {
        const auto value = Json::Decode(document);
        EXPECT_EQ(Json::Encode(value.Get()), document);
        const Pellum::Ref<Any> clone(value->_Clone());
        EXPECT_EQ(Json::Encode(clone.Get()), document);
        EXPECT_TRUE(AreEqualAnysInt(value.Get(), clone.Get(), 0, false));
    }
}

TEST(GeneratedTypesTest, LackEveryRequiredPropertyThatIsNotRead) {
    for (const std::string_view name : {"SampleRequiredKinds", "SampleArrayKinds"}) {
        try {
            Json::Decode(R"({"$type": ")" + std::string(name) + "\"}");
            ADD_FAILURE() << name;
        } catch (const Json::DecodeError& error) {
            const auto* const type =
                static_cast<const DataObjectType*>(TypeRegistry::Instance().FindByWireName(name));
            for (const Property* property : type->GetProperties()) {
                EXPECT_NE(
                    error.GetReason().find('"' + std::string(property->GetName()) + '"'), std::string::npos)
                    << error.GetReason();
            }
        }
    }
}

TEST(GeneratedTypesTest, AreReadAsTheirClass) {
    const auto node = Json::DecodeAs<Sample::Node>(R"({"label": "root", "children": [{"label": "leaf"}]})");
    EXPECT_EQ(node->GetLabel(), "root");
}

} // namespace
