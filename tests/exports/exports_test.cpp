#include "tavik/type/data_object_type.h"
#include "tavik/type/enum_type.h"
#include "tavik/type/managed_object_type.h"
#include "tavik/type/type_registry.h"
#include "tests/exports/export_list.h"
#include "tests/support/dotted_names.h"
#include "types/registry/version_record.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <ostream>
#include <set>
#include <string>
#include <string_view>
#include <vector>

/// What the libraries of types export, against what their descriptors say that there is.
namespace {

using ExportTests::Export;
using TestSupport::ToPath;
using TestSupport::ToUpperCase;

constexpr std::size_t kMostNames = 40;

/// A library, and what it exports for no type of its own.
struct Library {
    const char* list;
    std::string_view root; ///< the first component of its types' names
    std::size_t typeCount;
    std::set<std::string> others;

    /// Names of tests are to be the same each time.
    friend void PrintTo(const Library& library, std::ostream* out) { *out << library.list; }
};

const Library kLibraries[] = {
    {"types",
     "morvane",
     649,
     {"Morvane::orlinNamespaceId", "Morvane::officialVersions", "Morvane::internalVersions",
      "Morvane::GetRcVersion", "Morvane::MorvaneTypesUtil::FindDiskInfoById",
      "Morvane::MorvaneTypesUtil::FindVolumeInfoById", "Morvane::MorvaneTypesUtil::FindDiskMappingById",
      "Morvane::MorvaneTypesUtil::FindVolumeMappingById",
      "Morvane::MorvaneTypesUtil::FindVolumeCloningParamsById",
      "Morvane::MorvaneTypesUtil::FindSectorSizeByVolume", "Morvane::MorvaneTypesUtil::HasGptDisk"}},
    {"zabro", "zabro", 0, {}},
};

/// What a library has to export, and what it may.
class Expectation {
public:
    explicit Expectation(const Library& library) {
        for (const Tavik::LoadedLibrary& loaded : Tavik::TypeRegistry::Instance().GetLibraries()) {
            const bool isOwn = loaded.versions->namespaceName == library.root;
            for (const Tavik::Type* type : loaded.types) {
                if (isOwn) {
                    ++m_typeCount;
                    Add(*type);
                } else if (!ExportTests::kIsWindows) {
                    // Every library that makes arrays of others' types has a copy of the class.
                    m_classes.insert("Tavik::DataArray<" + ToPath(type->GetName(), "::") + ">");
                }
            }
        }
        for (const std::string& other : library.others) {
            m_required.insert({"", other});
        }
    }

    std::size_t GetTypeCount() const { return m_typeCount; }

    const std::set<Export>& GetRequired() const { return m_required; }

    /// Whether it stands in the list of what is required, or is part of a class of the library.
    bool IsMeant(const Export& found) const {
        const std::vector<std::string> scopes = ExportTests::ScopesOf(found.entity);
        return m_required.count(found) > 0
            || std::any_of(scopes.begin(), scopes.end(), [this](const std::string& scope) {
                   return m_classes.count(scope) > 0;
               });
    }

private:
    void Require(const std::string& entity) { m_required.insert({"", entity}); }

    void AddClass(const std::string& name) {
        m_classes.insert(name);
        m_required.insert({"vtable for ", name});
        m_required.insert({"typeinfo for ", name});
    }

    void Add(const Tavik::Type& type) {
        const std::string_view dotted = type.GetName();
        const std::string name = ToPath(dotted, "::");
        const std::string root = name.substr(0, name.find("::")) + "::";
        const std::string global = root + "g" + ToPath(dotted, "");
        Require(global + "TypeInfo");
        if (const auto* data = dynamic_cast<const Tavik::DataObjectType*>(&type)) {
            AddData(*data, name);
        } else if (const auto* enumeration = dynamic_cast<const Tavik::EnumType*>(&type)) {
            AddEnum(*enumeration, name);
        } else {
            AddManaged(dynamic_cast<const Tavik::ManagedObjectType&>(type), name);
            if (!dynamic_cast<const Tavik::ManagedObjectType&>(type).GetMethodObjects().empty()) {
                Require(global + "MethodObjects");
            }
        }
    }

    void AddData(const Tavik::DataObjectType& type, const std::string& name) {
        const std::string simple = name.substr(name.rfind(':') + 1);
        Require("Tavik::GetDoType<" + name + ">");
        AddClass(name);
        Require(name + "::" + simple);
        Require(name + "::~" + simple);
        Require(name + "::_Clone");
        AddClass("Tavik::DataArray<" + name + ">");
        if (type.IsFault()) {
            const std::string exception = name + "::Exception" + (simple == "Exception" ? "_" : "");
            AddClass(exception);
            Require(exception + "::Throw");
        }
    }

    void AddEnum(const Tavik::EnumType& type, const std::string& name) {
        const std::size_t end = name.rfind("::") + 2;
        Require("Tavik::GetEnumType<" + name + ">");
        for (const char* tag : type.GetTags()) {
            Require(name.substr(0, end) + ToUpperCase(name.substr(end)) + "_" + ToUpperCase(tag));
        }
        AddClass("Tavik::Array<" + name + ">");
        AddClass("Tavik::Primitive<" + name + ">");
    }

    void AddManaged(const Tavik::ManagedObjectType& type, const std::string& name) {
        Require("Tavik::GetMoType<" + name + ">");
        AddClass(name);
        AddClass(name + "Stub");
        for (const auto& method : type.GetMethodObjects()) {
            const std::string function = ToPath(method->GetName(), "");
            if (method->IsPropertyGetter()) {
                Require(name + "Stub::Get" + function);
            } else {
                Require(name + "::METHOD_" + ToUpperCase(method->GetName()));
                Require(name + "Stub::" + function);
            }
        }
    }

    std::set<Export> m_required;
    std::set<std::string> m_classes;
    std::size_t m_typeCount = 0;
};

/// The first of the names, one a line.
std::string Describe(const std::vector<Export>& names) {
    std::string text = std::to_string(names.size()) + " of them:";
    for (std::size_t i = 0; i < std::min(names.size(), kMostNames); ++i) {
        text += "\n  " + names[i].kind + names[i].entity;
    }
    return text + (names.size() > kMostNames ? "\n  ..." : "");
}

class Exports : public testing::TestWithParam<Library> {
protected:
    static void SetUpTestSuite() {
        Tavik::TypeRegistry::Instance().Load();
        // Uses the library, without which it would not be linked.
        ASSERT_NE(Morvane::GetRcVersion(), nullptr);
    }

    const Expectation m_expected{GetParam()};
    const std::set<Export> m_found = ExportTests::ReadExportList(GetParam().list);
};

TEST_P(Exports, HoldWhatEveryTypeNeeds) {
    if (GetParam().typeCount > 0) {
        EXPECT_EQ(m_expected.GetTypeCount(), GetParam().typeCount);
    }
    std::vector<Export> missing;
    const std::set<Export>& required = m_expected.GetRequired();
    std::set_difference(
        required.begin(), required.end(), m_found.begin(), m_found.end(), std::back_inserter(missing));
    EXPECT_GT(required.size(), m_expected.GetTypeCount());
    EXPECT_TRUE(missing.empty()) << "not exported, " << Describe(missing);
}

TEST_P(Exports, HoldNothingElse) {
    std::vector<Export> foreign;
    std::copy_if(m_found.begin(), m_found.end(), std::back_inserter(foreign), [this](const Export& found) {
        return !m_expected.IsMeant(found) && !ExportTests::IsLeftByCompiler(found);
    });
    EXPECT_TRUE(foreign.empty()) << "exported for nobody, " << Describe(foreign);
}

INSTANTIATE_TEST_SUITE_P(Libraries, Exports, testing::ValuesIn(kLibraries), [](const auto& test) {
    return std::string(test.param.list);
});

} // namespace
