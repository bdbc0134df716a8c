#include "tavik/codec/json/json.h"
#include "tests/codec/repeat.h"
#include "tests/codec/shop/shop.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

using namespace Tavik;
using CodecTests::Repeat;

/// The reason that the text is refused for; empty when it is accepted.
std::string ReasonOf(std::string_view text, const Json::DecodeOptions& options = {}) {
    try {
        Json::Decode(text, options);
        return {};
    } catch (const Json::DecodeError& error) {
        EXPECT_GE(error.GetLine(), 1U);
        EXPECT_GE(error.GetColumn(), 1U);
        EXPECT_LE(error.GetColumn(), text.size() + 1);
        return error.GetReason();
    }
}

const std::string kDocument =
    R"({"$type": "ShopMachine", "name": "mä\u00e4\n", "running": true, "cpuCount": -12, "load": 1.5e3,)"
    "\r\n\t"
    R"("created": "2024-02-29T22:59:59.25Z", "mac": "AP8=", "history": ["poweredOn"], "location": null,)"
    R"("disk": [{"$type": "ShopFastDisk", "size": "5", "format": "f", "speed": 1, "parent": {"size": 1, )"
    R"("format": ""}}], "host": {"mo": "ShopHost", "id": "1"}, "password": "\ud83d\ude00",)"
    R"("extras": [{"$type": "int[]", "value": [1, 2]}, {"$type": "ShopDisk[]", "value": []}]})";

TEST(JsonHostileTest, EveryTruncationIsAnError) {
    ASSERT_EQ(ReasonOf(kDocument), "");
    Json::DecodeOptions lenient;
    lenient.lenient = true;
    for (std::size_t length = 0; length < kDocument.size(); ++length) {
        // A copy of its own, so that a sanitizer sees reading past the end.
        const std::vector<char> part(
            kDocument.begin(), kDocument.begin() + static_cast<std::ptrdiff_t>(length));
        const std::string_view text(part.data(), part.size());
        EXPECT_NE(ReasonOf(text), "") << length;
        EXPECT_NE(ReasonOf(text, lenient), "") << length;
    }
}

TEST(JsonHostileTest, ChangedBytesNeverCrash) {
    std::mt19937 random(20240229); // fixed, so that a failure can be repeated
    std::uniform_int_distribution<std::size_t> position(0, kDocument.size() - 1);
    std::uniform_int_distribution<int> byte(0, 255);
    std::uniform_int_distribution<int> count(1, 4);
    const std::string_view structural = "{}[]\",:\\0-e.u\x00"
                                        "n";
    Json::DecodeOptions options;
    int accepted = 0;
    for (int round = 0; round < 20'000; ++round) {
        std::string text = kDocument;
        for (int change = count(random); change > 0; --change) {
            const int value = byte(random);
            text[position(random)] = (value & 1) != 0
                                       ? static_cast<char>(value)
                                       : structural[static_cast<std::size_t>(value) % structural.size()];
        }
        options.lenient = round % 2 == 0;
        accepted += ReasonOf(text, options).empty() ? 1 : 0;
    }
    // Changes inside of strings and numbers are harmless; most others are not.
    EXPECT_GT(accepted, 0);
    EXPECT_LT(accepted, 10'000);
}

TEST(JsonHostileTest, DepthIsLimitedWhereverItComesFrom) {
    const std::string reason = "objects and arrays are nested deeper than the limit of 64";
    Json::DecodeOptions lenient;
    lenient.lenient = true;
    const std::string open = R"({"$type": "ShopMachine", "name": "m", )";
    const std::string anyNest = R"({"$type": "anyType[]", "value": [)";
    const std::string diskNest = R"({"size": 1, "format": "f", "parent": )";
    const std::string skipped = open + R"("x": )";
    EXPECT_EQ(ReasonOf(open + R"("extra": )" + Repeat(anyNest, 10'000)), reason);
    EXPECT_EQ(ReasonOf(open + R"("disk": [)" + Repeat(diskNest, 10'000)), reason);
    EXPECT_EQ(ReasonOf(skipped + Repeat("[", 10'000), lenient), reason);
    EXPECT_EQ(ReasonOf(skipped + Repeat(R"({"a":)", 10'000), lenient), reason);
    EXPECT_EQ(
        ReasonOf(Repeat("[", 10'000'000)), "expected an object that begins with \"$type\", found an array");
    EXPECT_EQ(ReasonOf(skipped + Repeat("[", 63) + Repeat("]", 63) + "}", lenient), "");
    EXPECT_EQ(ReasonOf(skipped + Repeat("[", 64) + Repeat("]", 64) + "}", lenient), reason);

    Json::DecodeOptions deep;
    deep.limits.depth = Json::kMaxDepth;
    const auto nest = [&](std::size_t depth) {
        return Repeat(anyNest, depth) + R"({"$type": "int", "value": 1})" + Repeat("]}", depth);
    };
    EXPECT_EQ(ReasonOf(nest((Json::kMaxDepth - 1) / 2), deep), "");
    EXPECT_NE(ReasonOf(nest(Json::kMaxDepth / 2), deep), "");
    deep.limits.depth = Json::kMaxDepth + 1;
    EXPECT_THROW(Json::Decode("{}", deep), Pellum::Exception);
}

TEST(JsonHostileTest, InputAndValuesAreLimited) {
    Json::DecodeOptions options;
    options.limits.inputBytes = 100;
    options.expectedType = GetBuiltinType(TypeKind::String);
    EXPECT_EQ(ReasonOf('"' + Repeat("a", 98) + '"', options), "");
    EXPECT_EQ(
        ReasonOf('"' + Repeat("a", 99) + '"', options), "the text is longer than the limit of 100 bytes");

    const std::string reason = "there are more than 1000000 values, which is the limit";
    const std::string open = R"({"$type": "int[]", "value": [1)";
    // The object, its array and the elements; naming a type is a value, too.
    EXPECT_EQ(ReasonOf(open + Repeat(",1", 1'000'000 - 4) + "]}"), "");
    EXPECT_EQ(ReasonOf(open + Repeat(",1", 1'000'000 - 3) + "]}"), reason);
    Json::DecodeOptions lenient;
    lenient.lenient = true;
    EXPECT_EQ(
        ReasonOf(
            R"({"$type": "ShopMachine", "name": "m", "x": [{})" + Repeat(",{}", 1'000'000) + "]}", lenient),
        reason);
    EXPECT_EQ(
        ReasonOf(R"({"$type": "ShopMachine", "name": "m")" + Repeat(R"(, "x": 1)", 1'000'000) + "}", lenient),
        reason);
}

TEST(JsonHostileTest, HugeTokensAreReadInFullAndNotRepeated) {
    const std::string huge = Repeat("a\\n\xC3\xA4", 500'000);
    EXPECT_EQ(ReasonOf(R"({"$type": "string", "value": ")" + huge + "\"}"), "");
    for (const std::string& text :
         {R"({"$type": ")" + huge + "\"}", R"({"$type": "ShopMachine", ")" + huge + "\": 1}",
          R"({"$type": "ShopPower", "value": ")" + huge + "\"}",
          R"({"$type": "dateTime", "value": ")" + huge + "\"}",
          R"({"$type": "int", "value": )" + Repeat("9", 1'000'000) + "}",
          R"({"$type": "float", "value": )" + Repeat("9", 1'000'000) + "}"}) {
        const std::string reason = ReasonOf(text);
        EXPECT_NE(reason, "");
        EXPECT_LT(reason.size(), 300U);
    }
}

} // namespace
