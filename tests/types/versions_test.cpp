#include "pellum/error/exception.h"
#include "tavik/type/type_registry.h"
#include "tavik/type/version.h"

#include <gmock/gmock.h>

namespace {

const Tavik::Version& Find(const std::string& name) {
    const Tavik::Version* version = Tavik::TypeRegistry::Instance().FindVersion(name);
    if (version == nullptr) {
        throw std::logic_error("no version " + name);
    }
    return *version;
}

/// The line of the versions.
constexpr const char* kNames[] = {"version1", "version2", "version3", "version4", "version5", "version6",
                                  "version7", "v6_4",     "v6_6",     "v6_8",     "v9_0"};

const std::string kOwn = "morvane.version.";
const std::string kZabro = "zabro.version.";
const std::string kQuery = "orlin.query.version.";

TEST(VersionGraph, IncludesWhatTheChainsReach) {
    // Own versions by their places in the line; 9.0 branches off before 6.8.
    for (std::size_t i = 0; i < std::size(kNames); ++i) {
        for (std::size_t j = 0; j < std::size(kNames); ++j) {
            const bool branch = std::string(kNames[i]) == "v9_0" && std::string(kNames[j]) == "v6_8";
            EXPECT_EQ(Find(kOwn + kNames[i]).Includes(Find(kOwn + kNames[j])), j <= i && !branch)
                << kNames[i] << " " << kNames[j];
        }
    }

    struct Case {
        std::string version;
        std::string included;
        bool expected;
    };

    for (const Case& row : {
             Case{kOwn + "version1", kZabro + "version3", true},
             {kOwn + "version1", kZabro + "version4", false},
             {kOwn + "version1", kQuery + "version1", true},
             {kOwn + "version1", kQuery + "version3", false},
             {kOwn + "version1", "orlin.version.version0", true},
             {kOwn + "v6_8", kZabro + "v9_0_0_0", false},
             {kOwn + "v9_0", kZabro + "v9_0_0_0", true},
             {kOwn + "v9_0", kZabro + "v8_0_0_1", true},
             {kZabro + "v9_0_0_0", kOwn + "version1", false},
             {"orlin.version.version0", kOwn + "version1", false},
         }) {
        EXPECT_EQ(Find(row.version).Includes(Find(row.included)), row.expected)
            << row.version << " " << row.included;
    }
}

TEST(Versions, AreFoundByWhatPeopleCallThem) {
    const auto get = [](std::string_view name) -> const Tavik::Version& {
        return Tavik::TypeRegistry::Instance().GetVersion(name, "morvane");
    };
    for (const char* name : {"morvane.version.v9_0", "v9_0", "9.0"}) {
        EXPECT_EQ(&get(name), &Find("morvane.version.v9_0")) << name;
    }
    EXPECT_EQ(get("zabro.version.version3").GetNamespace(), "zabro");
    for (const char* name : {"9.1", "", "morvane", "version33"}) {
        EXPECT_THROW(static_cast<void>(get(name)), Pellum::Exception) << name;
    }
    EXPECT_THROW(
        static_cast<void>(Tavik::TypeRegistry::Instance().GetVersion("9.0", "zabro")), Pellum::Exception);
    try {
        static_cast<void>(get("v9_1"));
    } catch (const Pellum::Exception& error) {
        EXPECT_THAT(error.what(), testing::HasSubstr("did you mean \"v9_0\"?"));
    }
}

} // namespace
