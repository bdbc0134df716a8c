#include "tavik/codec/json/json.h"
#include "tavik/value/compare.h"
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
