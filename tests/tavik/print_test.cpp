#include "tavik/value/print.h"

#include "tavik/type/data_object_type.h"
#include "tavik/type/type_registry.h"
#include "tests/sample/api/class.h"
#include "tests/sample/api/level5.h"
#include "tests/sample/api/node.h"
#include "tests/sample/api/optional_kinds.h"
#include "tests/sample/api/point.h"
#include "tests/sample/api/required_kinds.h"

#include <gmock/gmock.h>

namespace {

using Pellum::MakeRef;
using testing::HasSubstr;
using testing::Not;

constexpr const char* kSecret = "open sesame";

TEST(Print, NeverShowsASecretUnlessAsked) {
    const auto required = MakeRef<Sample::RequiredKinds>();
    required->SetSecretValue(kSecret);
    const auto optional = MakeRef<Sample::OptionalKinds>();
    optional->SetSecretValue(kSecret);
    optional->SetAnyValue(required.Get());
    const auto holder = MakeRef<Sample::Node>();
    holder->SetAny(optional.Get());

    EXPECT_THAT(holder->ToString(), Not(HasSubstr("sesame")));
    EXPECT_EQ(optional->ToString().find(R"("secretValue": "***")") == std::string::npos, false);
    Tavik::PrintOptions options;
    EXPECT_THAT(Tavik::Print(holder.Get(), options), Not(HasSubstr("sesame")));
    options.showSecrets = true;
    EXPECT_THAT(Tavik::Print(holder.Get(), options), HasSubstr(R"("secretValue": "open sesame")"));
    // What can not be written exactly is told without the text, too.
    required->SetSecretValue("open\xFF sesame");
    std::string out;
    Tavik::PrintProblem problem;
    EXPECT_FALSE(Tavik::TryPrint(holder.Get(), options, out, problem));
    EXPECT_EQ(problem.path, "any.anyValue.secretValue");
    EXPECT_THAT(problem.what, Not(HasSubstr("sesame")));
}

TEST(Print, WritesWhatHasNoForm) {
    const auto kinds = MakeRef<Sample::RequiredKinds>();
    kinds->SetEnumValue(static_cast<Sample::Colour>(99));
    kinds->SetStringValue("a\xC3(");
    const std::string text = kinds->ToString();
    EXPECT_THAT(text, HasSubstr(R"("enumValue": 99)"));
    EXPECT_THAT(text, HasSubstr("\"stringValue\": \"a\xEF\xBF\xBD(\""));
    EXPECT_EQ(Tavik::Print(nullptr), "null");
}

TEST(Print, LeavesOutWhatAVersionDoesNotHave) {
    Tavik::TypeRegistry& registry = Tavik::TypeRegistry::Instance();
    registry.Load();
    const auto value = MakeRef<Sample::Level4>();
    value->SetFirst("f");
    value->SetLate("late");
    Tavik::PrintOptions options;
    options.declaredType = Tavik::GetDoType<Sample::Level4>();

    struct Case {
        const char* version;
        bool hasLate;
    };

    for (const Case& row :
         {Case{"sample.version.version1", false},
          {"sample.version.version2", true},
          {"sample.version.version3", false}}) {
        options.version = registry.FindVersion(row.version);
        ASSERT_NE(options.version, nullptr);
        EXPECT_EQ(
            Tavik::Print(value.Get(), options), std::string(R"({"first": "f", )")
                                                    + (row.hasLate ? R"("late": "late", )" : "")
                                                    + R"("fourth": false})");
    }
    const auto late = MakeRef<Sample::Level5>();
    std::string out;
    Tavik::PrintProblem problem;
    EXPECT_FALSE(Tavik::TryPrint(late.Get(), options, out, problem));
    EXPECT_THAT(problem.what, HasSubstr("sample.Level5"));
    EXPECT_THAT(problem.what, HasSubstr("sample.version.version3"));
}

TEST(Print, IndentsAndNamesTypes) {
    const auto node = MakeRef<Sample::Node>();
    node->SetLabel("l");
    node->GetChildren()->Append(MakeRef<Sample::Node>().Get());
    node->SetAny(MakeRef<Sample::Point>().Get());
    Tavik::PrintOptions options;
    options.indent = 2;
    EXPECT_EQ(Tavik::Print(node.Get(), options), R"({
  "$type": "SampleNode",
  "label": "l",
  "children": [
    {}
  ],
  "any": {
    "$type": "SamplePoint",
    "x": 0
  }
})");
}

} // namespace
