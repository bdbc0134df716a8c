#include "tavik/codec/json/json.h"
#include "tavik/descriptor/builtin.h"
#include "tavik/value/primitive.h"
#include "tests/codec/repeat.h"
#include "tests/codec/shop/shop.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace Tavik;
using CodecTests::Repeat;

/// Something in a string: what it means, or why it does not belong there.
struct Piece {
    std::string_view written;
    std::string_view meaning;
    std::string_view reason;
};

TEST(JsonParts, StringsEndWhereTheyEndWhereverThingsStandInThem) {
    const Piece pieces[] = {
        {"", "", ""},
        {"\x7f", "\x7f", ""},
        {"\\\"", "\"", ""},
        {"\\\\", "\\", ""},
        {"\\u0020\\n", " \n", ""},
        {"\\uD83D\\ude00", "\xF0\x9F\x98\x80", ""},
        {"\xF0\x9F\x98\x80", "\xF0\x9F\x98\x80", ""},
        {"\xC3\xA4\\/", "\xC3\xA4/", ""},
        {"\x1f", "", "a control character in a string must be written as an escape"},
        {"\xC3", "", "the text is not well-formed UTF-8"},
        {"\xC3\\n", "", "the text is not well-formed UTF-8"},
        {"\xED\xA0\x80", "", "the text is not well-formed UTF-8"},
        {"\\x", "", "a backslash in a string must begin an escape such as \\n or \\u00e4"},
        {"\\u00g0", "", "expected four hexadecimal digits after \\u"},
        {"\\ude00", "",
         "expected a \\u escape for half of a surrogate pair to be followed by one for the other half"},
        {"\" ", "", "expected nothing more after the value"},
    };
    Json::DecodeOptions options;
    options.expectedType = GetBuiltinType(TypeKind::String);
    for (const Piece& piece : pieces) {
        for (std::size_t length = 0; length < 20; ++length) {
            for (std::size_t before = 0; before <= length; ++before) {
                const std::string start = Repeat("a", before);
                const std::string end = Repeat("z", length - before);
                const std::string text = '"' + start + std::string(piece.written) + end + '"';
                // A copy of its own, so that a sanitizer sees reading past the end.
                const std::vector<char> copy(text.begin(), text.end());
                try {
                    const auto value = Json::Decode({copy.data(), copy.size()}, options);
                    EXPECT_EQ(piece.reason, "") << text;
                    EXPECT_EQ(
                        static_cast<const Primitive<std::string>&>(*value).GetValue(),
                        start + std::string(piece.meaning) + end);
                } catch (const Json::DecodeError& error) {
                    EXPECT_EQ(error.GetReason(), piece.reason) << text;
                }
            }
        }
    }
}

TEST(JsonParts, MembersAreFoundInAnyOrderWithAnyOfThemLeftOut) {
    // In the order in which the type declares them.
    const std::vector<std::string> members = {
        R"("name": "m")",
        R"("running": true)",
        R"("priority": -1)",
        R"("cpuCount": 2)",
        R"("load": 1.5)",
        R"("created": "2024-02-29T22:59:59Z")",
        R"("power": "poweredOff")",
        R"("history": ["poweredOn"])",
        R"("tag": ["a", ""])",
        R"("port": [1, -2])",
        R"("location": {"$type": "ShopLiveLocation", "hostname": "h"})",
        R"("disk": [{"size": 1, "format": "f"}, {"size": 2, "format": "g"}])",
        R"("host": {"mo": "ShopHost", "id": "h"})",
        R"("formerHost": [{"mo": "ShopHost", "id": "i"}])",
        R"("password": "p")",
        R"("rack": "r")",
    };
    const auto write = [](const std::vector<std::string>& parts) {
        std::string text = R"({"$type": "ShopMachine")";
        for (const std::string& part : parts) {
            text += ", " + part;
        }
        return text + '}';
    };
    std::mt19937 random(11);
    for (int round = 0; round < 500; ++round) {
        std::vector<std::string> chosen = {members.front()};
        std::copy_if(members.begin() + 1, members.end(), std::back_inserter(chosen), [&](const auto&) {
            return random() % 3 != 0;
        });
        const std::string inOrder = write(chosen);
        std::shuffle(chosen.begin(), chosen.end(), random);
        EXPECT_EQ(Json::Encode(Json::Decode(write(chosen)).Get()), inOrder);

        std::string again = chosen[random() % chosen.size()];
        const std::string name = again.substr(0, again.find(':'));
        if (round % 2 == 0) {
            again.insert(
                1, "\\u00" + std::string(1, "0123456789abcdef"[again[1] / 16])
                       + "0123456789abcdef"[again[1] % 16]);
            again.erase(7, 1);
        }
        chosen.push_back(again);
        try {
            Json::Decode(write(chosen));
            ADD_FAILURE() << write(chosen);
        } catch (const Json::DecodeError& error) {
            EXPECT_EQ(error.GetReason(), "there is a second member " + name);
        }
    }
}

} // namespace
