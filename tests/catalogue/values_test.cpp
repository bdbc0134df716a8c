#include "tavik/value/any.h"
#include "tavik/value/property_diff_set.h"
#include "tavik/value/validate.h"
#include "tests/catalogue/catalogue.h"
#include "tests/catalogue/content.h"

#include <gmock/gmock.h>

#include <algorithm>

/// Clone, equality, difference and validation of objects of every type.
namespace {

using namespace CatalogueTests;
using Pellum::Ref;
using Tavik::Any;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> Diff(const Any& a, const Any& b, const std::string& prefix) {
    Tavik::PropertyDiffSet differences;
    a._DiffProperties(&b, prefix, differences);
    return {differences.begin(), differences.end()};
}

/// Calls `check` with every object and, for every property of it, a clone in which that one is changed.
void ForEachChange(
    const std::function<
        void(const Tavik::DataObject& before, const Tavik::DataObject& after, const Change& change)>& check) {
    ForEachObject([&](const Subject& subject) {
        Changer changer(subject.seed);
        for (const Tavik::Property* property : subject.type.GetProperties()) {
            SCOPED_TRACE(property->GetName());
            const Ref<Tavik::DataObject> changed = Clone(*subject.object);
            if (const auto change = changer.ChangeProperty(*changed, *property)) {
                SCOPED_TRACE(change->path);
                check(*subject.object, *changed, *change);
            }
        }
    });
}

TEST(CatalogueValues, ClonesAreEqualAndShareNothing) {
    ForEachObject([](const Subject& subject) {
        const Ref<Tavik::DataObject> clone = Clone(*subject.object);
        EXPECT_EQ(clone->GetRefCount(), 1);
        EXPECT_EQ(clone->_GetDataType(), &subject.type);
        EXPECT_THAT(FindDifferences(subject.object.Get(), clone.Get()), IsEmpty());
        const std::set<const Any*> parts = CollectParts(*subject.object);
        const std::set<const Any*> copies = CollectParts(*clone);
        EXPECT_EQ(parts.size(), copies.size());
        std::vector<const Any*> shared;
        std::set_intersection(
            parts.begin(), parts.end(), copies.begin(), copies.end(), std::back_inserter(shared));
        EXPECT_THAT(shared, IsEmpty());
        for (const Any* copy : copies) {
            EXPECT_EQ(copy->GetRefCount(), 1);
        }
    });
}

TEST(CatalogueValues, EqualObjectsHaveNoDifference) {
    ForEachObject([](const Subject& subject) {
        const Ref<Tavik::DataObject> clone = Clone(*subject.object);
        for (const bool partial : {false, true}) {
            EXPECT_TRUE(subject.object->_IsEqual(clone.Get(), partial));
            EXPECT_TRUE(clone->_IsEqual(subject.object.Get(), partial));
        }
        EXPECT_THAT(Diff(*subject.object, *clone, "x"), IsEmpty());
    });
}

TEST(CatalogueValues, AnyChangeIsADifferenceAtItsPlace) {
    ForEachChange([](const Tavik::DataObject& before, const Tavik::DataObject& after, const Change& change) {
        EXPECT_THAT(FindDifferences(&before, &after), ElementsAre(change.path));
        EXPECT_FALSE(before._IsEqual(&after, false));
        EXPECT_FALSE(after._IsEqual(&before, false));
        EXPECT_THAT(Diff(before, after, ""), ElementsAre(change.path));
        EXPECT_THAT(Diff(after, before, "x"), ElementsAre('x' + change.path));
    });
}

TEST(CatalogueValues, AllDifferencesAreListedInOrder) {
    ForEachObject([](const Subject& subject) {
        const auto other = TestSupport::RandomObjects(Fill::Some, subject.seed + 1).Make(subject.type);
        const Ref<Tavik::DataObject> empty(subject.type.New());
        for (const Tavik::DataObject* that : {other.Get(), empty.Get()}) {
            const std::vector<std::string> differences = FindDifferences(subject.object.Get(), that);
            EXPECT_EQ(Diff(*subject.object, *that, ""), differences);
            EXPECT_EQ(subject.object->_IsEqual(that, false), differences.empty());
        }
    });
}

TEST(CatalogueValues, PatternsMatchWhatHasMoreButNothingElse) {
    ForEachChange([](const Tavik::DataObject& before, const Tavik::DataObject& after, const Change& change) {
        EXPECT_EQ(before._IsEqual(&after, true), change.kind == Change::Unset);
        EXPECT_EQ(after._IsEqual(&before, true), change.kind == Change::Set);
    });
}

TEST(CatalogueValues, PatternsLackAnyOptionalProperties) {
    ForEachObject([](const Subject& subject) {
        const Ref<Tavik::DataObject> pattern = Clone(*subject.object);
        std::mt19937 random(subject.seed);
        int unset = 0;
        for (Tavik::DataObject* part : CollectObjects(*pattern)) {
            for (const Tavik::Property* property : part->_GetDataType()->GetProperties()) {
                // Without counted ones, so that no part goes that is still to come.
                if (!property->IsCounted() && property->IsOptional() && property->IsSet(part)
                    && random() % 2 == 0) {
                    property->Reset(part);
                    ++unset;
                }
            }
        }
        EXPECT_TRUE(subject.object->_IsEqual(pattern.Get(), true));
        EXPECT_EQ(pattern->_IsEqual(subject.object.Get(), true), unset == 0);
        EXPECT_EQ(Diff(*subject.object, *pattern, "").size(), static_cast<std::size_t>(unset));
    });
}

TEST(CatalogueValues, ValidationFindsWhatIsMissing) {
    ForEachObject([](const Subject& subject) {
        EXPECT_THAT(Tavik::Validate(subject.object.Get()), IsEmpty());
        for (const Tavik::Property* property : subject.type.GetProperties()) {
            if (property->IsOptional() || !property->IsCounted()) {
                continue;
            }
            const Ref<Tavik::DataObject> broken = Clone(*subject.object);
            property->Set(broken.Get(), nullptr);
            const std::vector<Tavik::Problem> problems = Tavik::Validate(broken.Get());
            ASSERT_EQ(problems.size(), 1U) << property->GetName();
            EXPECT_EQ(problems[0].path, property->GetName());
            EXPECT_THAT(problems[0].what, testing::HasSubstr("required"));
        }
    });
}

} // namespace
