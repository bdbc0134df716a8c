#include "tavik/type/type_registry.h"

#include "tavik/descriptor/builtin.h"
#include "tavik/type/data_object_type.h"
#include "tavik/type/enum_type.h"
#include "tavik/type/managed_object_type.h"
#include "tavik/type/type_of.h"
#include "tavik/type/version.h"
#include "tests/tavik/hand_made_library.h"

#include <gmock/gmock.h>

#include <stdexcept>
#include <string_view>
#include <utility>

namespace {

using Tavik::TypeInfo;
using Tavik::TypeKind;
using testing::AllOf;
using testing::Contains;
using testing::HasSubstr;
using testing::Not;

Tavik::TypeRegistry& Registry() {
    return Tavik::TypeRegistry::Instance();
}

constexpr const char* kBaseVersion = "orlin.version.version0";

TypeInfo Data(const char* name, const char* wireName) {
    return {TypeKind::Data, name, wireName, kBaseVersion};
}

Tavik::PropertyDescriptor Row(const TypeInfo* type, std::uint32_t flags, const char* name) {
    return {type, flags, name, 0, kBaseVersion};
}

TEST(Registry, KnowsTheBuiltInTypes) {
    const std::pair<const char*, const char*> types[] = {
        {"boolean", nullptr},
        {"byte", nullptr},
        {"int", nullptr},
        {"long", nullptr},
        {"float", nullptr},
        {"string", nullptr},
        {"dateTime", nullptr},
        {"binary", nullptr},
        {"typeName", nullptr},
        {"propertyPath", nullptr},
        {"anyType", nullptr},
        {"orlin.DynamicData", nullptr},
        {"orlin.ManagedObject", nullptr},
        {"orlin.MethodFault", "orlin.DynamicData"},
        {"orlin.RuntimeFault", "orlin.MethodFault"},
        {"orlin.fault.InvalidArgument", "orlin.RuntimeFault"},
        {"orlin.fault.InvalidRequest", "orlin.RuntimeFault"},
        {"orlin.fault.ManagedObjectNotFound", "orlin.RuntimeFault"},
        {"orlin.fault.SystemError", "orlin.RuntimeFault"},
        {"orlin.query.PropertyCollector", "orlin.ManagedObject"},
    };
    for (const auto& [name, base] : types) {
        SCOPED_TRACE(name);
        const Tavik::Type* type = Registry().FindByName(name);
        ASSERT_NE(type, nullptr);
        EXPECT_EQ(
            Registry().FindByWireName(std::string_view(name).substr(std::string_view(name).rfind('.') + 1)),
            type);
        EXPECT_EQ(Registry().FindByInfo(&type->GetInfo()), type);
        EXPECT_EQ(type->GetBaseType(), base != nullptr ? Registry().FindByName(base) : nullptr);
        ASSERT_NE(type->GetVersion(), nullptr);
        EXPECT_EQ(type->GetVersion()->GetName(), type->GetInfo().version);
        if (type->GetKind() <= TypeKind::Any) {
            EXPECT_EQ(Tavik::GetBuiltinType(type->GetKind()), type);
        }
    }
    EXPECT_EQ(Tavik::GetBuiltinType(TypeKind::Managed), Registry().FindByName("orlin.ManagedObject"));
    for (const TypeKind kind :
         {TypeKind(), TypeKind::Array, TypeKind::Enum, TypeKind::Data, TypeKind::Fault}) {
        EXPECT_EQ(Tavik::GetBuiltinType(kind), nullptr);
    }
    EXPECT_EQ(Registry().FindByInfo(nullptr), nullptr);
    EXPECT_THAT(
        Registry().GetNames(), AllOf(Contains("sample.Point"), Contains("SamplePoint"), Contains("int")));
}

TEST(Registry, LoadsWhatRegistersLater) {
    HandMadeLibrary& library = HandMadeLibrary::Make("late");
    const TypeInfo* base = library.AddData(
        Data("late.Base", "LateBase"), &Tavik::gOrlinDynamicDataTypeInfo,
        {Row(&Tavik::gStringTypeInfo, 0, "one")});
    library.AddNullSlot();
    const TypeInfo* derived =
        library.AddData(Data("late.Derived", "LateDerived"), base, {Row(base, Tavik::kOptionalFlag, "two")});
    EXPECT_EQ(Registry().FindByInfo(base), nullptr);
    library.Register();
    EXPECT_EQ(library.GetLoadCount(), 0) << "registering only links the library in";
    const auto* type = dynamic_cast<const Tavik::DataObjectType*>(Registry().FindByInfo(derived));
    ASSERT_NE(type, nullptr);
    EXPECT_EQ(type->GetBaseType(), Registry().FindByName("late.Base"));
    ASSERT_EQ(type->GetProperties().size(), 2U);
    EXPECT_STREQ(type->GetProperties()[0]->GetName(), "one");
    EXPECT_FALSE(type->GetProperties()[0]->IsCounted());
    EXPECT_TRUE(type->GetProperties()[1]->IsCounted());
    EXPECT_EQ(type->FindProperty("two"), type->GetProperties()[1]);
    EXPECT_EQ(type->FindProperty("three"), nullptr);
    EXPECT_EQ(type->GetPosition(*type->FindProperty("two")), 1U);
    Registry().Load();
    EXPECT_EQ(library.GetLoadCount(), 1);
    EXPECT_EQ(Registry().GetLibraries().back().types.size(), 3U);
    EXPECT_EQ(Registry().GetLibraries().back().types[1], nullptr);
    EXPECT_THAT(Registry().GetErrors(), Not(Contains(HasSubstr("late."))));
}

/// Registers the same two types again and again, each time with one thing changed.
struct Clash {
    const char* what; ///< part of the error; null when there is none
    std::function<void(HandMadeLibrary&)> add;
};

TEST(Registry, ReportsClashesAndKeepsTheFirst) {
    const auto addUsual = [](HandMadeLibrary& library) {
        library.AddData(
            Data("clash.Type", "ClashType"), &Tavik::gOrlinDynamicDataTypeInfo,
            {Row(&Tavik::gIntTypeInfo, 0, "p"), Row(&Tavik::gStringTypeInfo, Tavik::kOptionalFlag, "q")});
    };
    const auto addData = [](Tavik::TypeInfo type, const TypeInfo* base,
                            const std::vector<Tavik::PropertyDescriptor>& rows) {
        return [=](HandMadeLibrary& library) { library.AddData(type, base, rows); };
    };
    const TypeInfo* root = &Tavik::gOrlinDynamicDataTypeInfo;
    const TypeInfo usual = Data("clash.Type", "ClashType");
    const auto p = Row(&Tavik::gIntTypeInfo, 0, "p");
    const auto q = Row(&Tavik::gStringTypeInfo, Tavik::kOptionalFlag, "q");
    const std::vector<Clash> clashes = {
        {nullptr, addUsual},
        {"wire name is", addData(Data("clash.Type", "ClashOther"), root, {p, q})},
        {"name is", addData(Data("clash.Other", "ClashType"), root, {p, q})},
        {"version is",
         addData({TypeKind::Data, "clash.Type", "ClashType", "orlin.query.version.version1"}, root, {p, q})},
        {"kind is", addData({TypeKind::Fault, "clash.Type", "ClashType", kBaseVersion}, root, {p, q})},
        {"base is", addData(usual, &Tavik::gOrlinMethodFaultTypeInfo, {p, q})},
        {"property 1 is", addData(usual, root, {p})},
        {"property 0 is", addData(usual, root, {q, p})},
        {"type of property p", addData(usual, root, {Row(&Tavik::gLongTypeInfo, 0, "p"), q})},
        {"flag word of property q", addData(usual, root, {p, Row(&Tavik::gStringTypeInfo, 0x202, "q")})},
        {"content is described there and open here",
         [=](HandMadeLibrary& library) {
             library.AddData(usual, root, {p, q}, true);
         }},
        {"kind is",
         [](HandMadeLibrary& library) {
             library.AddEnum({TypeKind::Enum, "clash.Type", "ClashType", kBaseVersion}, {"a"});
         }},
    };
    HandMadeLibrary& first = HandMadeLibrary::Make("clash");
    addUsual(first);
    first.Register();
    const Tavik::Type* stays = Registry().FindByName("clash.Type");
    ASSERT_NE(stays, nullptr);
    for (const Clash& clash : clashes) {
        SCOPED_TRACE(clash.what != nullptr ? clash.what : "none");
        const std::size_t before = Registry().GetErrors().size();
        HandMadeLibrary& library = HandMadeLibrary::Make("clash.again");
        clash.add(library);
        library.Register();
        const std::vector<std::string> errors = Registry().GetErrors();
        ASSERT_EQ(errors.size(), before + (clash.what != nullptr ? 1 : 0));
        if (clash.what != nullptr) {
            EXPECT_THAT(
                errors.back(), AllOf(HasSubstr("clash."), HasSubstr("ClashType"), HasSubstr(clash.what)));
        }
        const auto types = Registry().GetLibraries().back().types;
        for (const Tavik::Type* type : types) {
            EXPECT_EQ(
                Registry().FindByInfo(&type->GetInfo()), type); // not the first one, whose texts it shares
        }
        EXPECT_EQ(Registry().FindByName("clash.Type"), stays);
        EXPECT_EQ(Registry().FindByWireName("ClashType"), stays);
        EXPECT_EQ(Registry().FindByName("clash.Other"), nullptr);
        EXPECT_EQ(Registry().FindByWireName("ClashOther"), nullptr);
    }
}

TEST(Registry, ComparesEnumerationsAndMethods) {
    const TypeInfo enumeration = {TypeKind::Enum, "compare.Enum", "CompareEnum", kBaseVersion};
    const TypeInfo managed = {TypeKind::Managed, "compare.Managed", "CompareManaged", kBaseVersion};
    static const TypeInfo* const faults[] = {&Tavik::gOrlinRuntimeFaultTypeInfo, nullptr};
    Tavik::MethodDescriptor method{};
    method.name = "m";
    method.wireName = "CompareM";
    method.version = kBaseVersion;
    const auto changed = [&](auto change) {
        Tavik::MethodDescriptor copy = method;
        change(copy);
        return std::vector{copy};
    };

    struct Case {
        const char* what;
        std::vector<const char*> tags;
        std::vector<Tavik::MethodDescriptor> methods;
    };

    const std::vector<Case> cases = {
        {nullptr, {"a", "b"}, {method}},
        {nullptr, {"a", "b"}, {method}},
        {"number of tags", {"a"}, {method}},
        {"tag 1", {"a", "c"}, {method}},
        {"method 0", {"a", "b"}, {}},
        {"wire name of method m", {"a", "b"}, changed([](auto& m) { m.wireName = "CompareN"; })},
        {"privilege of method m", {"a", "b"}, changed([](auto& m) { m.privilege = "P"; })},
        {"faults of method m", {"a", "b"}, changed([](auto& m) { m.faults = faults; })},
        {"type of result of method m", {"a", "b"}, changed([](auto& m) {
             m.result.type = &Tavik::gIntTypeInfo;
         })},
        {"flag word of result of method m", {"a", "b"}, changed([](auto& m) { m.result.flags = 1; })},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.what != nullptr ? row.what : "none");
        const std::size_t before = Registry().GetErrors().size();
        HandMadeLibrary& library = HandMadeLibrary::Make("compare");
        library.AddEnum(enumeration, row.tags);
        library.AddManaged(managed, row.methods);
        library.Register();
        const std::vector<std::string> errors = Registry().GetErrors();
        ASSERT_EQ(errors.size(), before + (row.what != nullptr ? 1 : 0));
        if (row.what != nullptr) {
            EXPECT_THAT(errors.back(), HasSubstr(row.what));
        }
    }
}

TEST(Registry, SurvivesALoaderThatThrows) {
    const auto throwError = [] { throw std::runtime_error("no such luck"); };
    const auto throwNumber = [] { throw 1; };
    for (const std::function<void()>& action :
         {std::function<void()>(throwError), std::function<void()>(throwNumber)}) {
        HandMadeLibrary& failing = HandMadeLibrary::Make("failing");
        failing.AddData(Data("failing.Type", "FailingType"), nullptr);
        failing.OnLoad(action);
        HandMadeLibrary& other = HandMadeLibrary::Make("other");
        const TypeInfo* otherType = other.AddData(Data("other.Type", "OtherType"), nullptr);
        failing.Register();
        other.Register();
        EXPECT_EQ(Registry().FindByName("failing.Type"), nullptr);
        EXPECT_NE(Registry().FindByInfo(otherType), nullptr);
        EXPECT_THAT(Registry().GetErrors().back(), HasSubstr("failing"));
    }
    EXPECT_THAT(Registry().GetErrors(), Contains(AllOf(HasSubstr("failing"), HasSubstr("no such luck"))));
}

TEST(Registry, AllowsLookUpsFromALoader) {
    Registry().Load(); // a loader sees what was loaded before
    HandMadeLibrary& library = HandMadeLibrary::Make("curious");
    const Tavik::Type* found = nullptr;
    library.OnLoad([&] { found = Registry().FindByName("sample.Point"); });
    library.Register();
    EXPECT_EQ(Registry().FindByName("curious.Nothing"), nullptr);
    EXPECT_NE(found, nullptr);
}

TEST(Registry, ReportsWhatDoesNotResolve) {
    static const TypeInfo foreign = Data("foreign.Type", "ForeignType");
    HandMadeLibrary& library = HandMadeLibrary::Make("broken");
    library.AddData(Data("broken.Base", "BrokenBase"), &foreign);
    library.AddData(Data("broken.Property", "BrokenProperty"), nullptr, {Row(&foreign, 0, "p")});
    library.AddData({TypeKind::Data, "broken.Version", "BrokenVersion", "broken.version.v1"}, nullptr);
    library.AddInclusion("broken.version.v2", "orlin.version.version0");
    library.Register();
    Registry().Load();
    const std::vector<std::string> errors = Registry().GetErrors();
    EXPECT_THAT(errors, Contains(AllOf(HasSubstr("foreign.Type"), HasSubstr("broken.Base"))));
    EXPECT_THAT(errors, Contains(AllOf(HasSubstr("foreign.Type"), HasSubstr("p of broken.Property"))));
    EXPECT_THAT(errors, Contains(HasSubstr("broken.version.v1")));
    EXPECT_THAT(errors, Contains(HasSubstr("broken.version.v2")));
    EXPECT_NE(Registry().FindByName("broken.Base"), nullptr);
}

TEST(Versions, AreFilledInAndIncludeEachOther) {
    HandMadeLibrary& base = HandMadeLibrary::Make("vbase");
    base.AddVersion("vbase.one", "1", Tavik::kOfficialVersionFlag | Tavik::kFirstVersionFlag);
    base.AddVersion("vbase.two", "2");
    base.AddVersion("vbase.branch", "2b", Tavik::kOfficialVersionFlag);
    base.AddInclusion("vbase.two", "vbase.one");
    base.AddInclusion("vbase.branch", "vbase.one");
    // Registered before what it includes, and in one load with it.
    HandMadeLibrary& user = HandMadeLibrary::Make("vuser");
    user.AddVersion("vuser.one", "1");
    user.AddInclusion("vuser.one", "vbase.two");
    user.Register();
    base.Register();
    EXPECT_EQ(base.releaseCandidate, nullptr);
    EXPECT_FALSE(base.namespaceId.IsRegistered());

    const auto find = [](const char* name) { return Registry().FindVersion(name); };
    const Tavik::Version* const names[] = {
        find("vbase.one"), find("vbase.two"), find("vbase.branch"), find("vuser.one")};
    const bool includes[4][4] = {
        {true, false, false, false},
        {true, true, false, false},
        {true, false, true, false},
        {true, true, false, true}};
    for (int i = 0; i < 4; ++i) {
        ASSERT_NE(names[i], nullptr);
        for (int j = 0; j < 4; ++j) {
            EXPECT_EQ(names[i]->Includes(*names[j]), includes[i][j]) << i << " " << j;
        }
    }
    EXPECT_EQ(find("vbase"), nullptr);

    EXPECT_STREQ(base.namespaceId.GetName(), "vbase");
    EXPECT_NE(base.namespaceId.GetNumber(), 0U);
    EXPECT_NE(base.namespaceId.GetNumber(), user.namespaceId.GetNumber());
    // All versions newest first; of the official ones only those that are flagged so.
    EXPECT_EQ(base.internal[0], find("vbase.branch"));
    EXPECT_EQ(base.internal[2], find("vbase.one"));
    ASSERT_NE(base.official[1], nullptr);
    EXPECT_EQ(base.official[0]->GetName(), "vbase.branch");
    EXPECT_EQ(base.official[1]->GetLabel(), "1");
    EXPECT_EQ(base.official[2], nullptr);
    EXPECT_EQ(base.releaseCandidate, base.official[0]);
    EXPECT_EQ(user.releaseCandidate, nullptr);
}

TEST(Versions, ClashByLabel) {
    HandMadeLibrary& one = HandMadeLibrary::Make("vclash");
    one.AddVersion("vclash.one", "1");
    one.Register();
    HandMadeLibrary& two = HandMadeLibrary::Make("vclash");
    two.AddVersion("vclash.one", "one");
    two.Register();
    EXPECT_EQ(Registry().FindVersion("vclash.one")->GetLabel(), "1");
    EXPECT_THAT(Registry().GetErrors(), Contains(AllOf(HasSubstr("vclash.one"), HasSubstr("\"one\""))));
}

} // namespace
