#include "tests/catalogue/catalogue.h"

#include "tavik/type/type_registry.h"

#include <gtest/gtest.h>

#include <array>
#include <stdexcept>
#include <string>

namespace CatalogueTests {

namespace {

constexpr int kMostFailures = 20;
constexpr unsigned kRandomObjects = 3;

constexpr std::array<const char*, kVersionCount> kVersions = {"version1", "version2", "version3", "version4",
                                                              "version5", "version6", "version7", "v6_4",
                                                              "v6_6",     "v6_8",     "v9_0"};

const Tavik::Version& FindVersion(const std::string& name) {
    const Tavik::Version* version = Tavik::TypeRegistry::Instance().FindVersion(name);
    return version != nullptr ? *version : throw std::logic_error("no version " + name);
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

const std::vector<const Tavik::Type*>& GetTypes() {
    static const std::vector<const Tavik::Type*> types = [] {
        std::vector<const Tavik::Type*> all;
        for (const Tavik::LoadedLibrary& library : Tavik::TypeRegistry::Instance().GetLibraries()) {
            all.insert(all.end(), library.types.begin(), library.types.end());
        }
        return all;
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
    return FindVersion(std::string("morvane.version.") + kVersions[number]);
}

bool Has(std::size_t number, std::string_view introduced) {
    return GetVersion(number).Includes(FindVersion(std::string(introduced)));
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
