#include "tavik/codec/json/json.h"
#include "tests/codec/shop/shop.h"

#include <gtest/gtest.h>

namespace {

using namespace Tavik;

/// A text that is refused, with the place "line:column", the path and the reason that must be told.
struct Refused {
    std::string_view text;
    std::string_view place;
    std::string_view path;
    std::string_view reason;
};

void ExpectRefused(const Refused& expected, const Json::DecodeOptions& options = {}) {
    try {
        Json::Decode(expected.text, options);
        ADD_FAILURE() << "was accepted: " << expected.text;
    } catch (const Json::DecodeError& error) {
        EXPECT_EQ(std::to_string(error.GetLine()) + ':' + std::to_string(error.GetColumn()), expected.place)
            << expected.text;
        EXPECT_EQ(error.GetPath(), expected.path) << expected.text;
        EXPECT_EQ(error.GetReason(), expected.reason) << expected.text;
    }
}

TEST(JsonErrorsTest, TellsWhatIsWrongWithTheSyntax) {
    const Refused cases[] = {
        {"", "1:1", "", "the text is empty"},
        {" \n ", "2:2", "", "the text is empty"},
        {"\xEF\xBB\xBF{}", "1:1", "", "the text begins with a byte order mark; expected UTF-8 without one"},
        {"nonsense", "1:1", "", "expected a value"},
        {R"({"$type": "ShopLocation"} x)", "1:27", "", "expected nothing more after the value"},
        {R"({"$type": "ShopLocation"}{})", "1:26", "", "expected nothing more after the value"},
        {"{\"$type\": \"ShopLocation\",}", "1:26", "", "expected a member's name in quotes"},
        {R"({"$type" "ShopLocation"})", "1:10", "", "expected ':'"},
        {R"({"$type": "ShopLocation" "a": 1})", "1:26", "", "expected ',' or '}'"},
        {R"({"$type": "ShopMachine", "tag": ["a" "b"]})", "1:38", "tag[1]", "expected ',' or ']'"},
        {R"({"$type": "ShopMachine", "tag": ["a",]})", "1:38", "tag[1]", "expected a value"},
        {R"({"$type": "ShopMachine", "cpuCount": 007})", "1:39", "", "expected ',' or '}'"},
        {R"({"$type": "ShopMachine", "cpuCount": +7})", "1:38", "cpuCount", "expected a value"},
        {R"({"$type": "ShopMachine", "load": 1e99999999999})", "1:34", "load",
         "the number's exponent is too large"},
        {R"({'a': 1})", "1:2", "", "expected a member's name in quotes or '}'"},
        {R"({"$type": // comment)", "1:11", "", "expected a value"},
        {"{\"$type\": \"Shop\nLocation\"}", "1:16", "",
         "a control character in a string must be written as an escape"},
        {R"({"$type": "\x"})", "1:13", "",
         "a backslash in a string must begin an escape such as \\n or \\u00e4"},
        {R"({"$type": "\u12g4 and what follows"})", "1:12", "", "expected four hexadecimal digits after \\u"},
        {R"({"$type": "\udc00 and what follows"})", "1:12", "",
         "expected a \\u escape for half of a surrogate pair to be followed by one for the other half"},
        {"{\"$type\": \"\xC0\x80\"}", "1:12", "", "the text is not well-formed UTF-8"},
        {"{\"$type\": \"\xED\xA0\x80\"}", "1:12", "", "the text is not well-formed UTF-8"},
        {"{\"$type\": \"\xC3\xA4\xC3\xA4\xFF\"}", "1:14", "", "the text is not well-formed UTF-8"},
        {"{\"$type\": \xFF}", "1:11", "", "the text is not well-formed UTF-8"},
        {"{\"$type\":\n \"Shop", "2:7", "", "the text ends inside a string"},
        {"{\"$type\":", "1:10", "", "the text ends too early: expected a value"},
    };
    for (const Refused& refused : cases) {
        ExpectRefused(refused);
    }
    ExpectRefused({std::string_view("{\0}", 3), "1:2", "", "expected a member's name in quotes or '}'"});
}

TEST(JsonErrorsTest, TellsWhichTypeWasExpected) {
    const Refused cases[] = {
        {"5", "1:1", "", R"(expected an object that begins with "$type", found a number)"},
        {"null", "1:1", "", R"(expected an object that begins with "$type", found null)"},
        {"[]", "1:1", "", R"(expected an object that begins with "$type", found an array)"},
        {" {}", "1:3", "", R"(expected an object that begins with "$type", found an empty object)"},
        {R"({"name": "m", "$type": "ShopMachine"})", "1:2", "",
         R"(expected "$type" as the first member, found "name")"},
        {R"({"$type": 5})", "1:11", "", "expected a string with the wire name of a type"},
        {R"({"$type": {}})", "1:11", "", "expected a string with the wire name of a type"},
        {R"({"$type": null})", "1:11", "", "expected a string with the wire name of a type"},
        {R"({"$type": "ShopMachin"})", "1:11", "",
         R"(there is no type with the wire name "ShopMachin"; did you mean "ShopMachine"?)"},
        {R"({"$type": "shop.Machine"})", "1:11", "",
         R"(there is no type with the wire name "shop.Machine"; the type of that name has the wire name "ShopMachine")"},
        {R"({"$type": "nothing of the kind"})", "1:11", "",
         R"(there is no type with the wire name "nothing of the kind")"},
        {R"({"$type": "anyType"})", "1:11", "",
         "expected the wire name of the value's own type, found anyType"},
        {R"({"$type": "ShopHost"})", "1:11", "",
         R"(expected the wire name of a type of values; a reference is written {"mo": "ShopHost", "id": ...})"},
        {R"({"$type": "boolean[]", "value": []})", "1:11", "", "there are no arrays of boolean"},
        {R"({"$type": "int[][]"})", "1:11", "", R"(there is no type with the wire name "int[]")"},
        {R"({"$type": "int"})", "1:16", "", R"(the member "value" is missing)"},
        {R"({"$type": "int", "value": null})", "1:27", "", "expected an int, found null"},
        {R"({"$type": "int", "value": 1, "value": 2})", "1:30", "", R"(there is a second member "value")"},
        {R"({"$type": "int", "valve": 1})", "1:18", "", R"(expected the member "value", found "valve")"},
        {R"({"$type": "int[]", "value": 1})", "1:29", "", "expected an array of int, found a number"},
        {R"({"mo": "ShopHost"})", "1:18", "", R"(the member "id" of the reference is missing)"},
        {R"({"id": "x"})", "1:11", "", R"(the member "mo" of the reference is missing)"},
        {R"({"mo": "ShopHost", "id": 5})", "1:26", "", "expected a string"},
        {R"({"mo": "ShopHost", "id": "x", "x": 1})", "1:31", "",
         R"(a reference has the members "mo" and "id" only, found "x")"},
        {R"({"mo": "ShopDisk", "id": "x"})", "1:8", "",
         "expected the wire name of a managed type, found ShopDisk"},
    };
    for (const Refused& refused : cases) {
        ExpectRefused(refused);
    }
    Json::DecodeOptions options;
    options.expectedType = Shop::Find("ShopLocation");
    ExpectRefused(
        {R"({"$type": "ShopDisk"})", "1:11", "",
         "expected an object of type ShopLocation or derived from it, found type ShopDisk"},
        options);
    ExpectRefused(
        {R"({"$type": "ShopLokation"})", "1:11", "",
         R"(there is no type with the wire name "ShopLokation"; did you mean "ShopLocation"?)"},
        options);
}

TEST(JsonErrorsTest, TellsWhichPropertyIsWrong) {
    // In a machine's text; the members begin at column 26.
    const Refused cases[] = {
        {R"("nmae": "m"})", "1:26", "", R"(ShopMachine has no property "nmae"; did you mean "name"?)"},
        {"\"\\u0001\xC3\xA4\": 1}", "1:26", "", "ShopMachine has no property \"\\u0001\xC3\xA4\""},
        {R"("name": "m", "$type": "ShopMachine"})", "1:39", "", R"("$type" must be the first member)"},
        {R"("name": "m", "name": "m"})", "1:39", "", R"(there is a second member "name")"},
        {R"("name": null, "name": "m"})", "1:40", "", R"(there is a second member "name")"},
        {R"("cpuCount": 1})", "1:39", "", R"(ShopMachine lacks the required "name")"},
        {R"("name": null})", "1:38", "", R"(ShopMachine lacks the required "name")"},
        {R"("name": 5})", "1:34", "name", "expected a string, found a number"},
        {R"("name": {}})", "1:34", "name", "expected a string, found an object"},
        {R"("name": ["m"]})", "1:34", "name", "expected a string, found an array"},
        {"\"name\":\n\n \ttrue}", "3:3", "name", "expected a string, found a boolean"},
        {R"("running": "true"})", "1:37", "running", "expected true or false, found a string"},
        {R"("running": 0})", "1:37", "running", "expected true or false, found a number"},
        {R"("priority": 128})", "1:38", "priority", "expected a byte between -128 and 127, found 128"},
        {R"("priority": -1000})", "1:38", "priority", "expected a byte between -128 and 127, found -1000"},
        {R"("cpuCount": 3000000000})", "1:38", "cpuCount",
         "expected an int between -2147483648 and 2147483647, found 3000000000"},
        {R"("cpuCount": 18446744073709551616})", "1:38", "cpuCount",
         "expected an int between -2147483648 and 2147483647, found 18446744073709551616"},
        {R"("cpuCount": 1.0})", "1:38", "cpuCount",
         "expected an int, found a number with a fraction or an exponent"},
        {R"("cpuCount": 1e3})", "1:38", "cpuCount",
         "expected an int, found a number with a fraction or an exponent"},
        {R"("cpuCount": "1"})", "1:38", "cpuCount", "expected an int, found a string"},
        {R"("uptime": 9223372036854775808})", "1:36", "uptime",
         "expected a long between -9223372036854775808 and 9223372036854775807, found 9223372036854775808"},
        {R"("uptime": "1 "})", "1:36", "uptime",
         "expected a long, found a string that is not a decimal number"},
        {R"("uptime": ""})", "1:36", "uptime",
         "expected a long, found a string that is not a decimal number"},
        {R"("load": 1e400})", "1:34", "load",
         "expected a float between -3.4028235e38 and 3.4028235e38, found 1e400"},
        {R"("load": -3.5e38})", "1:34", "load",
         "expected a float between -3.4028235e38 and 3.4028235e38, found -3.5e38"},
        {R"("load": "NaN"})", "1:34", "load", "expected a float, found a string"},
        {R"("created": 5})", "1:37", "created",
         R"(expected a dateTime such as "2024-02-29T23:59:59Z", found a number)"},
        {R"("image": "A"})", "1:35", "image",
         "expected a base64 string, found one that is not base64 with padding"},
        {R"("image": "AB=="})", "1:41", "", R"(ShopMachine lacks the required "name")"},
        {R"("mac": [1, 2]})", "1:33", "mac", "expected bytes as a base64 string, found an array"},
        {R"("power": "powerdOff"})", "1:35", "power",
         R"(expected a string with a tag of ShopPower, found "powerdOff"; did you mean "poweredOff"?; )"
         "the tags are poweredOn, poweredOff, suspended"},
        {R"("power": 1})", "1:35", "power", "expected a string with a tag of ShopPower, found a number"},
        {R"("tag": "a"})", "1:33", "tag", "expected an array of string, found a string"},
        {R"("tag": ["a", null]})", "1:39", "tag[1]", "expected a string, found null"},
        {R"("tag": ["a", "a\"b", 5]})", "1:47", "tag[2]", "expected a string, found a number"},
        {R"("history": ["poweredOn", "a\\"]})", "1:51", "history[1]",
         R"(expected a string with a tag of ShopPower, found "a\\"; the tags are poweredOn, poweredOff, suspended)"},
        {R"("location": 5})", "1:38", "location", "expected an object of type ShopLocation, found a number"},
        {R"("location": {"hostname": "h"}})", "1:39", "location",
         R"(ShopLocation has no property "hostname")"},
        {R"("location": {"$type": "ShopLiveLocation", "port": "x"}})", "1:76", "location.port",
         "expected an int, found a string"},
        {R"("location": {"$type": "ShopLiveLocation", "port": 1}})", "1:77", "location",
         R"(ShopLiveLocation lacks the required "hostname")"},
        {R"("location": {"$type": "ShopDisk"}})", "1:48", "location",
         "expected an object of type ShopLocation or derived from it, found type ShopDisk"},
        {R"("disk": [{"size": 1, "format": "f"}, {}]})", "1:64", "disk[1]",
         R"(ShopDisk lacks the required "size" and "format")"},
        {R"("disk": [{"parent": {"parent": {"size": "x"}}}]})", "1:66", "disk[0].parent.parent.size",
         "expected a long, found a string that is not a decimal number"},
        {R"("disk": [[]]})", "1:35", "disk[0]", "expected an object of type ShopDisk, found an array"},
        {R"("host": "h"})", "1:34", "host",
         R"(expected a reference {"mo": ..., "id": ...} to a ShopHost, found a string)"},
        {R"("host": {"$type": "ShopHost"}})", "1:35", "host",
         R"(a reference has the members "mo" and "id" only, found "$type")"},
        {R"("host": {"mo": "ManagedObject"}})", "1:41", "host",
         "expected the wire name of ShopHost or a type derived from it, found ManagedObject"},
        {R"("extra": 5})", "1:35", "extra", R"(expected an object that begins with "$type", found a number)"},
        {R"("extras": [{"$type": "ShopLiveLocation", "port": 1.5}]})", "1:75", "extras[0].port",
         "expected an int, found a number with a fraction or an exponent"},
    };
    for (const Refused& refused : cases) {
        const std::string text = R"({"$type": "ShopMachine", )" + std::string(refused.text);
        ExpectRefused({text, refused.place, refused.path, refused.reason});
    }
    ExpectRefused(
        {R"({"$type": "ShopFleet", "machine": []})", "1:37", "",
         R"(ShopFleet lacks the required elements of "machine")"});
}

TEST(JsonErrorsTest, RefusesWhatAVersionDoesNotHave) {
    Json::DecodeOptions options;
    options.version = Shop::GetVersion1();
    const Refused cases[] = {
        {R"({"$type": "ShopFastDisk", "size": 1})", "1:11", "",
         "type ShopFastDisk is not part of version shop.version.version1; it was introduced by "
         "shop.version.version2"},
        {R"({"$type": "ShopMachine", "rack": "r"})", "1:26", "",
         R"(property "rack" of ShopMachine is not part of version shop.version.version1; )"
         "it was introduced by shop.version.version2"},
        {R"({"mo": "ShopClusterHost", "id": "h"})", "1:8", "",
         "type ShopClusterHost is not part of version shop.version.version1; it was introduced by "
         "shop.version.version2"},
    };
    for (const Refused& refused : cases) {
        ExpectRefused(refused, options);
    }
}

TEST(JsonErrorsTest, TheMessageNamesSourcePlaceAndPath) {
    Json::DecodeOptions options;
    options.sourceName = "spec.json";
    const std::string_view text = "{\"$type\": \"ShopMachine\",\n\"name\": 5}";
    for (const auto& [name, message] :
         {std::pair{"spec.json", "spec.json:2:9: name: expected a string, found a number"},
          std::pair{"", "line 2, column 9: name: expected a string, found a number"}}) {
        options.sourceName = name;
        try {
            Json::Decode(text, options);
            ADD_FAILURE();
        } catch (const Pellum::Exception& error) {
            EXPECT_STREQ(error.what(), message);
        }
    }
}

TEST(JsonErrorsTest, NeverShowsASecret) {
    // Wherever a reader stumbles, the value of a secret property stands there or nearby.
    const std::string_view members[] = {
        R"("password": ["S3cret"])",
        R"("password": 987654321)",
        R"("password": {"S3cret": 1})",
        R"("password": "S3cret" 5)",
        R"("password": "S3cret)",
        R"("password": "S3cret\q")",
        R"("password": S3cret)",
        R"("password": "S3cret", "password": "S3cret")",
        R"("password": "S3cret", "pasword": "S3cret")",
        R"("password": "S3cret", "cpuCount": 5000000000)",
    };
    for (const std::string_view member : members) {
        try {
            Json::Decode(R"({"$type": "ShopMachine", )" + std::string(member) + "}");
            ADD_FAILURE() << "was accepted: " << member;
        } catch (const Json::DecodeError& error) {
            EXPECT_EQ(std::string_view(error.what()).find("S3cret"), std::string_view::npos) << error.what();
            EXPECT_EQ(std::string_view(error.what()).find("987654321"), std::string_view::npos)
                << error.what();
        }
    }
}

} // namespace
