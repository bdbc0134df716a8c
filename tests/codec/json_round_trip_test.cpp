#include "tavik/codec/json/json.h"
#include "tavik/value/compare.h"
#include "tavik/value/data_object.h"
#include "tavik/value/primitive.h"
#include "tavik/value/print.h"
#include "tests/codec/shop/shop.h"

#include <gtest/gtest.h>

#include <array>
#include <cfloat>
#include <cstdint>
#include <limits>

namespace {

using namespace Tavik;

/// Every kind of property in every form, as `Encode` writes it.
constexpr std::string_view kFullMachine =
    R"({"$type": "ShopMachine", "name": "m\u0000\"\\\n\u007f ä€😀", "running": false, "priority": -128, )"
    R"("cpuCount": -2147483648, "uptime": 9223372036854775807, "load": 0.1, )"
    R"("created": "2024-02-29T22:59:59.25Z", "image": "AP8Q", "mac": "AP8=", "kind": "ShopDisk", )"
    R"("watched": "disk[2].size", "power": "suspended", "history": ["poweredOn", "suspended"], )"
    R"("tag": ["", "b"], "port": [0, 65535], )"
    R"("location": {"$type": "ShopLiveLocation", "hostname": "h", "port": 22}, )"
    R"("disk": [{"size": 1, "parent": {"$type": "ShopFastDisk", "size": 2, "format": "f", "speed": 3}, )"
    R"("format": "g"}, {"size": 3, "format": ""}], )"
    R"("host": {"mo": "ShopClusterHost", "id": "host-1"}, "formerHost": [{"mo": "ShopHost", "id": ""}], )"
    R"("extra": {"$type": "ShopPower", "value": "poweredOff"}, )"
    R"("extras": [{"$type": "int", "value": 5}, {"$type": "byte[]", "value": "AQ=="}, )"
    R"({"mo": "ShopHost", "id": "host-2"}, {"$type": "ShopLocation"}, )"
    R"({"$type": "anyType[]", "value": [{"$type": "boolean", "value": true}]}, )"
    R"({"$type": "ShopDisk[]", "value": []}], )"
    R"("password": "hunter2", "rack": "r"})";

TEST(JsonRoundTripTest, KeepsEveryKindOfProperty) {
    const auto value = Json::Decode(kFullMachine);
    EXPECT_EQ(Json::Encode(value.Get()), kFullMachine);

    Json::EncodeOptions indented;
    indented.indent = 2;
    const std::string pretty = Json::Encode(value.Get(), indented);
    EXPECT_NE(pretty, kFullMachine);
    EXPECT_EQ(Json::Encode(Json::Decode(pretty).Get()), kFullMachine);
    EXPECT_TRUE(AreEqualAnysInt(value.Get(), Json::Decode(pretty).Get(), 0, false));
}

TEST(JsonRoundTripTest, KeepsBoxedValues) {
    const float floats[] = {0.0F,    -0.0F,        1.0F / 3,    FLT_MAX, -FLT_MAX,
                            FLT_MIN, FLT_TRUE_MIN, 16777217.0F, 1e10F};
    for (const float number : floats) {
        const Pellum::Ref<Any> boxed(new Primitive<float>(number));
        const auto back = Json::Decode(Json::Encode(boxed.Get()));
        EXPECT_EQ(dynamic_cast<const Primitive<float>&>(*back).GetValue(), number);
    }
    const std::int64_t longs[] = {std::numeric_limits<std::int64_t>::min(), -1, 9007199254740993};
    for (const std::int64_t number : longs) {
        const Pellum::Ref<Any> boxed(new Primitive<std::int64_t>(number));
        const auto back = Json::Decode(Json::Encode(boxed.Get()));
        EXPECT_EQ(dynamic_cast<const Primitive<std::int64_t>&>(*back).GetValue(), number);
    }
    std::string allBytes;
    for (int i = 0; i < 128; ++i) {
        allBytes += static_cast<char>(i);
    }
    const Pellum::Ref<Any> boxed(new Primitive<std::string>(allBytes));
    EXPECT_TRUE(AreEqualAnysInt(boxed.Get(), Json::Decode(Json::Encode(boxed.Get())).Get(), 0, false));
}

TEST(JsonRoundTripTest, RefusesToWriteWhatHasNoForm) {
    EXPECT_THROW(Json::Encode(nullptr), Json::EncodeError);
    const Pellum::Ref<Any> values[] = {
        new Primitive<std::string>("\xC0\x80"),
        new Primitive<float>(std::numeric_limits<float>::infinity()),
        Shop::Find("ShopPower")->Box(std::array<std::int32_t, 1>{3}.data()),
    };
    for (const auto& value : values) {
        EXPECT_THROW(Json::Encode(value.Get()), Json::EncodeError) << Print(value.Get());
    }
}

} // namespace
