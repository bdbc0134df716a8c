#include "tests/layout/reading.h"

/// The record of the interface's versions, read byte by byte, and the arrays that the runtime fills.
namespace {

using namespace LayoutTests;
using testing::Each;
using testing::ElementsAre;

constexpr std::size_t kVersionCount = 11;

/// `count` pointers from an address on.
std::vector<const void*> ReadArray(const void* address, std::size_t count) {
    std::vector<const void*> pointers;
    for (std::size_t i = 0; i < count; ++i) {
        pointers.push_back(Raw(address).Pointer(i * sizeof(void*)));
    }
    return pointers;
}

using GetRcVersion = const void*();

/// What the runtime fills: two arrays, the namespace's identity, and the release candidate.
std::vector<const void*> ReadFilled() {
    std::vector<const void*> filled;
    for (const char* array : {"Morvane::officialVersions", "Morvane::internalVersions"}) {
        const auto entries = ReadArray(FindSymbol(array), kVersionCount);
        filled.insert(filled.end(), entries.begin(), entries.end());
    }
    filled.push_back(Raw(FindSymbol("Morvane::orlinNamespaceId")).Pointer(0));
    filled.push_back(Raw::AsFunction<GetRcVersion>(FindSymbol("Morvane::GetRcVersion()"))());
    return filled;
}

/// As the image has it: taken before any test runs.
const std::vector<const void*> kFilledInImage = ReadFilled();

/// A version, its label and what it includes itself.
struct Row {
    std::string name;
    std::string label;
    std::string own;
    std::string zabro;
    std::string query;
};

const Row kRows[kVersionCount] = {
    {"version1", "1.0", "", "version3", "version2"},
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

TEST(VersionsRecord, IsComplete) {
    const Record record(kVersions, GetLibrary().versions);
    EXPECT_EQ(record.Text(0), "morvane");
    EXPECT_EQ(record.Pointer(4), FindSymbol("Morvane::orlinNamespaceId"));
    std::vector<std::string> dependencies;
    for (const void* name : ReadArray(record.Pointer(8), 2)) {
        dependencies.emplace_back(static_cast<const char*>(name));
    }
    EXPECT_THAT(dependencies, ElementsAre("orlin.query", "zabro"));
    EXPECT_EQ(record.Pointer(24), FindSymbol("Morvane::officialVersions"));
    EXPECT_EQ(record.Pointer(28), FindSymbol("Morvane::internalVersions"));
    EXPECT_EQ(Raw(record.Pointer(32)).Pointer(0), ReadFilled().back());
    std::vector<std::uint32_t> words = {record.Word(12)};
    for (std::size_t offset = 36; offset < 72; offset += 4) {
        words.push_back(record.Word(offset));
    }
    EXPECT_THAT(words, ElementsAre(0, 11, 11, 32, 2, 0, 0, 9, 9, 0));
}

TEST(VersionsRecord, ListsTheVersionsNewestFirst) {
    Record version(kVersion, Record(kVersions, GetLibrary().versions).Pointer(16));
    for (std::size_t i = kVersionCount; i-- > 0; version = version.Next()) {
        SCOPED_TRACE(kRows[i].name);
        EXPECT_EQ(version.Text(0), "morvane.version." + kRows[i].name);
        EXPECT_EQ(version.Text(4), "morvane");
        EXPECT_EQ(version.Text(8), kRows[i].label);
        EXPECT_EQ(version.Word(12), 0U);
        EXPECT_EQ(version.Text(16), "morvane.task.Task");
        EXPECT_EQ(version.Text(20), "morvane");
        EXPECT_EQ(version.Word(24), 0U);
        EXPECT_EQ(version.Word(28), i == 0 ? 6U : 4U);
    }
}

TEST(VersionsRecord, ListsTheInclusionsOldestFirst) {
    std::vector<std::string> expected;
    for (const Row& row : kRows) {
        const std::string prefix = "morvane.version." + row.name + " > ";
        if (!row.own.empty()) {
            expected.push_back(prefix + "morvane.version." + row.own);
        }
        expected.push_back(prefix + "zabro.version." + row.zabro);
        expected.push_back(prefix + "orlin.query.version." + row.query);
    }
    std::vector<std::string> stored;
    Record pair(kInclusion, Record(kVersions, GetLibrary().versions).Pointer(20));
    for (; stored.size() < 32; pair = pair.Next()) {
        stored.push_back(std::string(pair.Text(0)) + " > " + std::string(pair.Text(4)));
    }
    EXPECT_EQ(stored, expected);
}

TEST(VersionsRecord, PointsToWhatTheRuntimeFills) {
    EXPECT_THAT(kFilledInImage, Each(nullptr));
    GetLibrary();
    EXPECT_THAT(ReadFilled(), Each(testing::Ne(nullptr)));
}

} // namespace
