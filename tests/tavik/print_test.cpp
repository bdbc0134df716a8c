#include "tavik/value/print.h"

#include "tests/sample/api/node.h"
#include "tests/sample/api/point.h"
#include "tests/sample/api/required_kinds.h"

#include <gmock/gmock.h>

namespace {

using Pellum::MakeRef;
using testing::HasSubstr;

TEST(Print, WritesWhatHasNoForm) {
    const auto kinds = MakeRef<Sample::RequiredKinds>();
    kinds->SetEnumValue(static_cast<Sample::Colour>(99));
    kinds->SetStringValue("a\xC3(");
    const std::string text = kinds->ToString();
    EXPECT_THAT(text, HasSubstr(R"("enumValue": 99)"));
    EXPECT_THAT(text, HasSubstr("\"stringValue\": \"a\xEF\xBF\xBD(\""));
    EXPECT_EQ(Tavik::Print(nullptr), "null");
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
