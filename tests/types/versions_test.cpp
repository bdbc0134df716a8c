#include "pellum/error/exception.h"
#include "tavik/descriptor/records.h"
#include "tavik/type/type_registry.h"
#include "tavik/type/version.h"
#include "types/registry/version_record.h"

#include <gmock/gmock.h>

namespace {

/// The version record that the library has registered with.
const Tavik::OrlinVersions& Record() {
    for (const Tavik::LoadedLibrary& library : Tavik::TypeRegistry::Instance().GetLibraries()) {
        if (library.versions->namespaceId == &Morvane::orlinNamespaceId) {
            return *library.versions;
        }
    }
    throw std::logic_error("the library is not loaded");
}

const Tavik::Version& Find(const std::string& name) {
    const Tavik::Version* version = Tavik::TypeRegistry::Instance().FindVersion(name);
    if (version == nullptr) {
        throw std::logic_error("no version " + name);
    }
    return *version;
}

/// A version, its label and what it includes itself.
struct Row {
    const char* name;
    const char* label;
    const char* own;
    const char* zabro;
    const char* query;
};

constexpr Row kRows[] = {
    {"version1", "1.0", nullptr, "version3", "version2"},
    {"version2", "2.0", "version1", "version6", "version3"},
    {"version3", "3.0", "version2", "version7", "version4"},
    {"version4", "4.0", "version3", "version8", "version4"},
    {"version5", "5.0", "version4", "version9", "version4"},
    {"version6", "6.0", "version5", "version10", "version4"},
    {"version7", "7.0", "version6", "version10", "version4"},
    {"v6_4", "6.4", "version7", "v8_0_0_1", "version4"},
    {"v6_6", "6.6", "v6_4", "v8_0_0_1", "version4"},
    {"v6_8", "6.8", "v6_6", "v8_0_0_1", "version4"},
    {"v9_0", "9.0", "v6_6", "v9_0_0_0", "version4"},
};

const std::string kOwn = "morvane.version.";
const std::string kZabro = "zabro.version.";
const std::string kQuery = "orlin.query.version.";

TEST(VersionRecord, IsComplete) {
    const Tavik::OrlinVersions& record = Record();
    EXPECT_STREQ(record.namespaceName, "morvane");
    EXPECT_THAT(
        std::vector<std::string>(record.dependencies, record.dependencies + record.dependencyCount),
        testing::ElementsAre("orlin.query", "zabro"));
    EXPECT_EQ(record.officialVersions, Morvane::officialVersions);
    EXPECT_EQ(record.internalVersions, Morvane::internalVersions);
    EXPECT_EQ(*record.releaseCandidateVersion, Morvane::GetRcVersion());
    EXPECT_EQ(record.versionCount, 11U);
    EXPECT_EQ(record.officialCount, 11U);
    EXPECT_EQ(record.inclusionCount, 32U);
    EXPECT_EQ(record.dependencyCount, 2U);
    EXPECT_EQ(record.index0, 9U);
    EXPECT_EQ(record.index1, 9U);
    for (const std::uint32_t reserved :
         {record.reserved0, record.reserved1, record.reserved2, record.reserved3}) {
        EXPECT_EQ(reserved, 0U);
    }
    for (std::uint32_t i = 0; i < record.versionCount; ++i) {
        const Tavik::VersionRecord& version = record.versions[i];
        const Row& row = kRows[record.versionCount - 1 - i]; // stored newest first
        EXPECT_EQ(version.name, kOwn + row.name);
        EXPECT_STREQ(version.label, row.label);
        EXPECT_STREQ(version.namespaceName, "morvane");
        EXPECT_STREQ(version.taskType, "morvane.task.Task");
        EXPECT_STREQ(version.taskNamespace, "morvane");
        EXPECT_EQ(version.reserved0, 0U);
        EXPECT_EQ(version.reserved1, 0U);
        EXPECT_EQ(version.flags, row.own == nullptr ? 6U : 4U);
    }
}

TEST(VersionRecord, StoresInclusionsInOrder) {
    std::vector<std::pair<std::string, std::string>> expected;
    for (const Row& row : kRows) {
        if (row.own != nullptr) {
            expected.emplace_back(kOwn + row.name, kOwn + row.own);
        }
        expected.emplace_back(kOwn + row.name, kZabro + row.zabro);
        expected.emplace_back(kOwn + row.name, kQuery + row.query);
    }
    std::vector<std::pair<std::string, std::string>> stored;
    for (std::uint32_t i = 0; i < Record().inclusionCount; ++i) {
        stored.emplace_back(Record().inclusions[i].version, Record().inclusions[i].included);
    }
    EXPECT_EQ(stored, expected);
}

TEST(VersionGraph, IncludesWhatTheChainsReach) {
    // Own versions by their places in the line; 9.0 branches off before 6.8.
    for (std::size_t i = 0; i < std::size(kRows); ++i) {
        for (std::size_t j = 0; j < std::size(kRows); ++j) {
            const bool branch = std::string(kRows[i].name) == "v9_0" && std::string(kRows[j].name) == "v6_8";
            EXPECT_EQ(Find(kOwn + kRows[i].name).Includes(Find(kOwn + kRows[j].name)), j <= i && !branch)
                << kRows[i].name << " " << kRows[j].name;
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
