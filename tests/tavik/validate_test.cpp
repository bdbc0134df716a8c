#include "tavik/value/validate.h"

#include "tavik/type/data_object_type.h"
#include "tavik/type/type_registry.h"
#include "tavik/value/primitive.h"
#include "tests/sample/api/array_kinds.h"
#include "tests/sample/api/level5.h"
#include "tests/sample/api/node.h"
#include "tests/sample/api/point.h"
#include "tests/sample/api/required_kinds.h"
#include "tests/sample/api/special_thing.h"
#include "tests/support/random_object.h"

#include <gmock/gmock.h>

#include <limits>

namespace {

using Pellum::MakeRef;
using Pellum::Ref;

/// "path: what" of each problem.
std::vector<std::string> Problems(const Tavik::Any* value, const char* version = nullptr) {
    Tavik::TypeRegistry& registry = Tavik::TypeRegistry::Instance();
    std::vector<std::string> texts;
    for (const Tavik::Problem& problem :
         Tavik::Validate(value, version != nullptr ? registry.FindVersion(version) : nullptr)) {
        texts.push_back(problem.path + ": " + problem.what);
    }
    return texts;
}

TEST(Validate, FindsEverythingThatIsWrong) {
    Tavik::TypeRegistry::Instance().Load();
    TestSupport::RandomObjects random;
    const Ref<Tavik::DataObject> object = random.Make(*Tavik::GetDoType<Sample::RequiredKinds>());
    auto& kinds = static_cast<Sample::RequiredKinds&>(*object);
    kinds.SetStringValue("\xFF");
    kinds.SetFloatValue(std::numeric_limits<float>::infinity());
    kinds.SetTypeNameValue(Tavik::TypeName("\xC3"));
    kinds.SetAnyValue(nullptr);
    kinds.SetEnumValue(static_cast<Sample::Colour>(-1));
    kinds.SetDataValue(nullptr);
    kinds.SetReferenceValue(MakeRef<Tavik::MoRef>(&Sample::gSamplePointTypeInfo, "id").Get());
    kinds.SetSecretValue("secret\xFF");
    EXPECT_THAT(
        Problems(&kinds), testing::ElementsAre(
                              "stringValue: is not UTF-8 text", "floatValue: is not a finite number",
                              "typeNameValue: is not UTF-8 text", "anyValue: is required and not set",
                              "enumValue: holds -1, which is not a value of sample.Colour",
                              "dataValue: is required and not set",
                              "referenceValue: refers to a sample.Point, expected a sample.Thing",
                              "secretValue: is not UTF-8 text"));
    // A reference may be to a derived type.
    kinds.SetReferenceValue(MakeRef<Tavik::MoRef>(&Sample::gSampleSpecialThingTypeInfo, "id").Get());
    EXPECT_EQ(Problems(&kinds).size(), 7U);
}

TEST(Validate, LooksIntoArraysAndAnyType) {
    const auto node = MakeRef<Sample::Node>();
    node->GetChildren()->Append(nullptr);
    const auto child = MakeRef<Sample::Node>();
    child->SetAny(MakeRef<Sample::Level1>().Get());
    node->GetChildren()->Append(child.Get());
    EXPECT_THAT(
        Problems(node.Get()), testing::ElementsAre(
                                  "children[0]: is null, and an array has no unset elements",
                                  "children[1].any.point: is required and not set"));
    const auto arrays = MakeRef<Sample::ArrayKinds>();
    arrays->GetIntList();
    EXPECT_THAT(Problems(arrays.Get()), testing::Contains("intList: is required and has no element"));
}

} // namespace
