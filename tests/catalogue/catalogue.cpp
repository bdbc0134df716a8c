#include "tests/catalogue/catalogue.h"

#include "tavik/type/type_registry.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string>

namespace CatalogueTests {

namespace {

constexpr int kMostFailures = 20;
constexpr unsigned kRandomObjects = 3;

/// A version of the interface and the newest version that it includes of each namespace it stands on.
struct VersionRow {
    std::string_view own;
    std::string_view zabro;
    std::string_view query;
};

constexpr std::array<VersionRow, kVersionCount> kVersions = {
    VersionRow{"version1", "version3", "version2"},
    {"version2", "version6", "version3"},
    {"version3", "version7", "version4"},
    {"version4", "version8", "version4"},
    {"version5", "version9", "version4"},
    {"version6", "version10", "version4"},
    {"version7", "version10", "version4"},
    {"v6_4", "v8_0_0_1", "version4"},
    {"v6_6", "v8_0_0_1", "version4"},
    {"v6_8", "v8_0_0_1", "version4"},
    {"v9_0", "v9_0_0_0", "version4"},
};
constexpr std::size_t k68 = 9;
constexpr std::size_t k90 = 10;

constexpr std::array<std::string_view, 12> kZabroVersions = {"version1", "version2",  "version3", "version4",
                                                             "version5", "version6",  "version7", "version8",
                                                             "version9", "version10", "v8_0_0_1", "v9_0_0_0"};

constexpr std::array<std::string_view, 4> kQueryVersions = {"version1", "version2", "version3", "version4"};

constexpr std::string_view kOwnPrefix = "morvane.version.";

/// The names of the table's own column, to look into like the others.
constexpr auto kOwnVersions = [] {
    std::array<std::string_view, kVersionCount> names;
    std::transform(
        kVersions.begin(), kVersions.end(), names.begin(), [](const VersionRow& row) { return row.own; });
    return names;
}();

/// The position of a version in one column of the table's order; `name` is its full name.
template <class Rows>
std::size_t FindVersion(const Rows& rows, std::string_view name) {
    name.remove_prefix(name.rfind('.') + 1);
    const auto found = std::find(rows.begin(), rows.end(), name);
    if (found == rows.end()) {
        throw std::logic_error("no version " + std::string(name));
    }
    return static_cast<std::size_t>(found - rows.begin());
}

template <class T>
std::vector<const T*> SelectTypes() {
    std::vector<const T*> found;
    for (const Tavik::Type* type : GetTypes()) {
        if (const auto* wanted = dynamic_cast<const T*>(type)) {
            found.push_back(wanted);
        }
    }
    return found;
}

bool HasFailedEnough() {
    const testing::TestResult& result = *testing::UnitTest::GetInstance()->current_test_info()->result();
    return result.Failed() && result.total_part_count() >= kMostFailures;
}

} // namespace

const std::vector<Tavik::Type*>& GetTypes() {
    static const std::vector<Tavik::Type*> types = [] {
        for (const Tavik::LoadedLibrary& library : Tavik::TypeRegistry::Instance().GetLibraries()) {
            if (library.versions->namespaceName == std::string_view("morvane")) {
                return library.types;
            }
        }
        throw std::logic_error("the library has not registered");
    }();
    return types;
}

const DataTypes& GetDataTypes() {
    static const DataTypes types = SelectTypes<Tavik::DataObjectType>();
    return types;
}

std::vector<const Tavik::EnumType*> GetEnumTypes() {
    return SelectTypes<Tavik::EnumType>();
}

std::vector<const Tavik::ManagedObjectType*> GetManagedTypes() {
    return SelectTypes<Tavik::ManagedObjectType>();
}

bool IsDescribed(const Tavik::DataObjectType& type) {
    return !type.IsOpen();
}

bool Derives(const Tavik::DataObjectType& type, const Tavik::Type& base) {
    const Tavik::DataObjectType* ancestor = &type;
    while (ancestor != nullptr && ancestor != &base) {
        const Tavik::TypeInfo* info = ancestor->GetDataTypeInfo().base;
        ancestor =
            dynamic_cast<const Tavik::DataObjectType*>(Tavik::TypeRegistry::Instance().FindByInfo(info));
    }
    return ancestor != nullptr;
}

const Tavik::DataObjectType& GetUnrelatedType(const Tavik::Type& declared, std::size_t number) {
    const DataTypes& types = GetDataTypes();
    while (Derives(*types[number % types.size()], declared)) {
        ++number;
    }
    return *types[number % types.size()];
}

const Tavik::Version& GetVersion(std::size_t number) {
    const std::string name = std::string(kOwnPrefix) + std::string(kVersions[number].own);
    const Tavik::Version* version = Tavik::TypeRegistry::Instance().FindVersion(name);
    if (version == nullptr) {
        throw std::logic_error("no version " + name);
    }
    return *version;
}

bool Has(std::size_t number, std::string_view introduced) {
    const VersionRow& row = kVersions[number];
    if (introduced.starts_with("zabro.version.")) {
        return FindVersion(kZabroVersions, introduced) <= FindVersion(kZabroVersions, row.zabro);
    }
    if (introduced.starts_with("orlin.query.version.")) {
        return FindVersion(kQueryVersions, introduced) <= FindVersion(kQueryVersions, row.query);
    }
    if (introduced.starts_with(kOwnPrefix)) {
        const std::size_t since = FindVersion(kOwnVersions, introduced);
        return since <= number && !(number == k90 && since == k68);
    }
    return introduced == "orlin.version.version0";
}

void ForEachObject(Fill fill, const std::function<void(const Subject&)>& check, unsigned round) {
    unsigned seed = 1000 * (10 * static_cast<unsigned>(fill) + round);
    for (const Tavik::DataObjectType* type : GetDataTypes()) {
        ++seed;
        SCOPED_TRACE(
            std::string(type->GetName()) + ", fill " + std::to_string(static_cast<int>(fill)) + ", seed "
            + std::to_string(seed));
        check({*type, TestSupport::RandomObjects(fill, seed).Make(*type), seed});
        if (HasFailedEnough()) {
            FAIL() << "and no further";
        }
    }
}

void ForEachObject(const std::function<void(const Subject&)>& check) {
    ForEachObject(Fill::Least, check);
    ForEachObject(Fill::All, check);
    for (unsigned i = 0; i < kRandomObjects; ++i) {
        ForEachObject(Fill::Some, check, i);
    }
}

} // namespace CatalogueTests
