#include "pellum/text/near_name.h"

#include <gtest/gtest.h>

namespace {

TEST(NearNameTest, FindsWhatWasProbablyMeant) {
    const std::vector<std::string> names = {"hostname", "port",     "password", "powerOn",
                                            "powerOff", "userName", "id"};

    const struct {
        std::string_view name;
        std::string_view expected;
    } cases[] = {
        {"hostnmae", "hostname"}, // exchanged
        {"hostnam", "hostname"},  // left out
        {"HostName", "hostname"}, // only the case differs
        {"passwort", "password"},
        {"powerOm", "powerOn"}, // nearer than powerOff
        {"user_name", "userName"},
        {"Id", "id"},
        {"post", "port"},
        {"xy", ""},
        {"completelyDifferent", ""},
        {"", ""},
    };

    for (const auto& [name, expected] : cases) {
        EXPECT_EQ(Pellum::FindNearName(name, names), expected) << name;
    }
}

TEST(NearNameTest, TakesTheFirstOfEqualsWhateverTheirOrder) {
    EXPECT_EQ(Pellum::FindNearName("disk1", {"disk3", "disk2", "disk4"}), "disk2");
    EXPECT_EQ(Pellum::FindNearName("disk1", {}), "");
}

TEST(NearNameTest, DoesNotLabourOverHugeNames) {
    const std::string huge(1'000'000, 'a');
    EXPECT_EQ(Pellum::FindNearName(huge, {huge}), "");
}

} // namespace
