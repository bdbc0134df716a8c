#include "tavik/codec/json/json.h"
#include "tavik/value/data_object.h"
#include "tests/codec/shop/shop.h"

#include <gtest/gtest.h>

namespace {

using namespace Tavik;

/// What is read, and how it is written again.
struct Reading {
    std::string_view text;
    std::string_view written;
};

std::string Machine(std::string_view members) {
    return R"({"$type": "ShopMachine", "name": "m")" + std::string(members.empty() ? "" : ", ")
         + std::string(members) + "}";
}

TEST(JsonDecodeTest, ReadsOtherWaysOfWritingTheSame) {
    const Reading cases[] = {
        {R"("uptime": "-9007199254740993")", R"("uptime": -9007199254740993)"},
        {R"("cpuCount": -0)", R"("cpuCount": 0)"},
        {R"("load": 3)", R"("load": 3)"},
        {R"("load": 1E+2)", R"("load": 100)"},
        {R"("load": 1e-60)", R"("load": 0)"}, // the nearest float there is
        {R"("created": "2024-03-01T00:59:59.250+02:00")", R"("created": "2024-02-29T22:59:59.25Z")"},
        {R"("host": {"id": "h", "mo": "ShopHost"})", R"("host": {"mo": "ShopHost", "id": "h"})"},
        {R"("location": {})", R"("location": {})"},
        {R"("location": {"$type": "ShopLocation"})", R"("location": {})"},
        {R"("cpuCount": null, "disk": null, "location": null)", ""},
        {R"("rack": "r", "cpuCount": 1)", R"("cpuCount": 1, "rack": "r")"}, // any order
        {R"("n\u0061me": null)", "duplicate"},
        {R"("t\u0061g": ["\ud83d\ude00", "\/\b\f"])", R"("tag": ["😀", "/\u0008\u000c"])"},
    };
    for (const auto& [text, written] : cases) {
        if (written == "duplicate") {
            EXPECT_THROW(Json::Decode(Machine(text)), Json::DecodeError);
            continue;
        }
        EXPECT_EQ(Json::Encode(Json::Decode(Machine(text)).Get()), Machine(written)) << text;
    }
}

TEST(JsonDecodeTest, ReadsTheExpectedTypeWithOrWithoutItsName) {
    const struct {
        const Type* expected;
        std::string_view text;
        std::string_view written;
    } cases[] = {
        {GetBuiltinType(TypeKind::Int), "5", R"({"$type": "int", "value": 5})"},
        {GetBuiltinType(TypeKind::Int), R"({"$type": "int", "value": 5})", R"({"$type": "int", "value": 5})"},
        {GetBuiltinType(TypeKind::Any), R"({"$type": "int", "value": 5})", R"({"$type": "int", "value": 5})"},
        {Shop::Find("ShopPower"), R"("suspended")", R"({"$type": "ShopPower", "value": "suspended"})"},
        {Type::GetArrayType(Shop::Find("ShopDisk")), R"([{"size": 1, "format": "f"}])",
         R"({"$type": "ShopDisk[]", "value": [{"size": 1, "format": "f"}]})"},
        {Type::GetArrayType(GetBuiltinType(TypeKind::String)), R"({"$type": "string[]", "value": ["a"]})",
         R"({"$type": "string[]", "value": ["a"]})"},
        {Type::GetArrayType(GetBuiltinType(TypeKind::Byte)), R"("AQI=")",
         R"({"$type": "byte[]", "value": "AQI="})"},
        {Shop::Find("ShopHost"), R"({"mo": "ShopHost", "id": "h"})", R"({"mo": "ShopHost", "id": "h"})"},
        {GetDoType<DynamicData>(), R"({"$type": "ShopLocation"})", R"({"$type": "ShopLocation"})"},
        {nullptr, R"({"mo": "ManagedObject", "id": "h"})", R"({"mo": "ManagedObject", "id": "h"})"},
    };

    for (const auto& [expected, text, written] : cases) {
        Json::DecodeOptions options;
        options.expectedType = expected;
        EXPECT_EQ(Json::Encode(Json::Decode(text, options).Get()), written) << text;
    }
    EXPECT_TRUE(Json::DecodeAs<DynamicData>(R"({"$type": "ShopLocation"})"));
    EXPECT_THROW(Json::DecodeAs<DynamicData>(R"({"$type": "int", "value": 5})"), Json::DecodeError);
}

TEST(JsonDecodeTest, LenientModePassesOverWhatTheTypeDoesNotHave) {
    const Reading cases[] = {
        {R"("x": 1, "cpuCount": 2)", R"("cpuCount": 2)"},
        {R"("x": null, "x": {"$type": "nonsense", "y": [{}, [], {"z": [1]}]}, "cpuCount": 2)",
         R"("cpuCount": 2)"},
        {R"("x": [[], "a", {"b": true}], "disk": [{"y": {}, "size": 1, "format": "f"}])",
         R"("disk": [{"size": 1, "format": "f"}])"},
        {R"("x": {"name": 1, "password": []})", ""},
    };
    Json::DecodeOptions lenient;
    lenient.lenient = true;
    for (const auto& [text, written] : cases) {
        EXPECT_THROW(Json::Decode(Machine(text)), Json::DecodeError) << text;
        EXPECT_EQ(Json::Encode(Json::Decode(Machine(text), lenient).Get()), Machine(written)) << text;
    }
    for (const std::string_view text :
         {R"("x": [1,])", R"("x": {"a" 1})", R"("x": tru)", R"("x": "\ud800")", R"("cpuCount": "x")",
          R"("x": 1e)"}) {
        EXPECT_THROW(Json::Decode(Machine(text), lenient), Json::DecodeError) << text;
    }
}

} // namespace
