#include "tavik/value/compare.h"

#include "tavik/value/primitive.h"
#include "tavik/value/property_diff_set.h"
#include "tests/sample/api/level5.h"
#include "tests/sample/api/node.h"
#include "tests/sample/api/point.h"
#include "tests/sample/api/special_thing.h"
#include "tests/sample/api/thing.h"

#include <gmock/gmock.h>

namespace {

using Pellum::MakeRef;
using Pellum::Ref;
using testing::ElementsAre;

std::vector<std::string> Diff(const Tavik::Any& a, const Tavik::Any& b, const std::string& prefix = "") {
    Tavik::PropertyDiffSet diffs;
    a._DiffProperties(&b, prefix, diffs);
    return {diffs.begin(), diffs.end()};
}

Ref<Sample::Node> MakeNode(const char* label) {
    auto node = MakeRef<Sample::Node>();
    node->SetLabel(label);
    return node;
}

TEST(Difference, OfValuesOfOtherClassesIsTheWholeValue) {
    const auto a = MakeNode("same");
    const auto b = MakeNode("same");
    a->SetAny(MakeRef<Tavik::Primitive<std::int32_t>>(1).Get());
    b->SetAny(MakeRef<Tavik::Primitive<std::int64_t>>(1).Get());
    EXPECT_THAT(Diff(*a, *b), ElementsAre(".any"));
    EXPECT_FALSE(a->_IsEqual(b.Get(), true));
    b->SetAny(MakeRef<Tavik::Primitive<std::int32_t>>(2).Get());
    EXPECT_THAT(Diff(*a, *b), ElementsAre(".any"));
    b->SetAny(a->GetAny());
    EXPECT_THAT(Diff(*a, *b), ElementsAre());
}

TEST(PartialEquality, ComparesRequiredPropertiesStrictly) {
    const auto value = MakeRef<Sample::Level1>();
    const auto pattern = MakeRef<Sample::Level1>();
    value->SetPoint(MakeRef<Sample::Point>().Get());
    EXPECT_FALSE(value->_IsEqual(pattern.Get(), true)) << "a required object that is unset in the pattern";
    pattern->SetPoint(MakeRef<Sample::Point>().Get());
    EXPECT_TRUE(value->_IsEqual(pattern.Get(), true));
    value->GetPoint()->SetY(1);
    EXPECT_TRUE(value->_IsEqual(pattern.Get(), true));
    pattern->GetPoint()->SetX(1);
    EXPECT_FALSE(value->_IsEqual(pattern.Get(), true));
}

TEST(AreEqualAnys, TreatsNullAndEmptyAlikeForArraysOnly) {
    const Ref<Tavik::Any> empty(new Tavik::Array<std::string>);
    const Ref<Tavik::Any> full(new Tavik::Array<std::string>{"x"});

    struct Case {
        const Tavik::Any* a;
        const Tavik::Any* b;
        std::uint32_t flags;
        bool equal;
        bool partiallyEqual;
    };

    const std::uint32_t optionalArray = Tavik::kArrayFlag | Tavik::kOptionalFlag;
    for (const Case& row : std::vector<Case>{
             {nullptr, nullptr, 0, true, true},
             {nullptr, empty.Get(), 0, false, false},
             {nullptr, empty.Get(), Tavik::kArrayFlag, true, true},
             {empty.Get(), nullptr, optionalArray, true, true},
             {full.Get(), empty.Get(), Tavik::kArrayFlag, false, false},
             {full.Get(), empty.Get(), optionalArray, false, true},
             {full.Get(), nullptr, optionalArray, false, true},
             {nullptr, full.Get(), optionalArray, false, false},
             {full.Get(), nullptr, Tavik::kOptionalFlag, false, true},
             {full.Get(), full.Get(), 0, true, true},
         }) {
        SCOPED_TRACE(
            testing::Message() << (row.a == nullptr) << (row.b == nullptr) << " flags " << row.flags);
        EXPECT_EQ(Tavik::AreEqualAnysInt(row.a, row.b, row.flags, false), row.equal);
        EXPECT_EQ(Tavik::AreEqualAnysInt(row.a, row.b, row.flags, true), row.partiallyEqual);
        Tavik::PropertyDiffSet diffs;
        Tavik::DiffAnyPropertiesInt(row.a, row.b, "p", ".s", row.flags, diffs);
        EXPECT_EQ(diffs.IsEmpty(), row.equal);
    }
}

TEST(ManagedReferences, AreEqualByTypeAndIdentifier) {
    using Tavik::MoRef;
    const Tavik::TypeInfo sameWireName = {Tavik::TypeKind::Managed, "else.Thing", "SampleThing", nullptr};
    const auto one = MakeRef<MoRef>(&Sample::gSampleThingTypeInfo, "1");
    EXPECT_TRUE(one->_IsEqual(MakeRef<MoRef>(&sameWireName, "1").Get(), false));
    EXPECT_FALSE(one->_IsEqual(MakeRef<MoRef>(&Sample::gSampleThingTypeInfo, "2").Get(), true));
    EXPECT_FALSE(one->_IsEqual(MakeRef<MoRef>(&Sample::gSampleSpecialThingTypeInfo, "1").Get(), true));
}

TEST(PropertyDiffSet, KeepsOrderAndDropsRepetitions) {
    Tavik::PropertyDiffSet diffs;
    EXPECT_TRUE(diffs.IsEmpty());
    for (const char* path : {".b", ".a", ".a", ".a[1]"}) {
        diffs.Add(path);
    }
    EXPECT_THAT(std::vector<std::string>(diffs.begin(), diffs.end()), ElementsAre(".b", ".a", ".a[1]"));
    EXPECT_TRUE(diffs.Contains(".a"));
    EXPECT_FALSE(diffs.Contains(".a[2]"));
}

} // namespace
