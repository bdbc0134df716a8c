#include "schemac/emit/template.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace Schemac::Emit {
namespace {

struct FillCase {
    const char* name;
    const char* text;
    std::vector<Hole> holes;
    const char* expected;
};

class TemplateFill : public testing::TestWithParam<FillCase> {};

TEST_P(TemplateFill, Gives) {
    EXPECT_EQ(Fill(GetParam().text, GetParam().holes), GetParam().expected);
}

const FillCase kFillCases[] = {
    {"InLine", "\nclass $name$ : $base$ {};\n", {{"name", "A"}, {"base", "B"}}, "class A : B {};\n"},
    {"KeepsIndentation", "{\n    $body$\n}\n", {{"body", "a;\n\n  b;\n"}}, "{\n    a;\n\n      b;\n}\n"},
    {"EmptyTakesItsLine", "{\n    $body$\n}\n", {{"body", ""}}, "{\n}\n"},
    {"EmptyInLine", "a$x$b\n", {{"x", ""}}, "ab\n"},
    {"LinesInsideALine", "  f($args$);\n", {{"args", "a,\nb"}}, "  f(a,\n  b);\n"},
    {"Twice", "$x$ $x$", {{"x", "1"}}, "1 1"},
    {"Dollar", "a $$ b", {}, "a $ b"},
    {"ValueIsNoTemplate", "$x$", {{"x", "$y$"}}, "$y$"},
    {"NoLineBreakAtTheEnd", "  $x$", {{"x", "a\nb"}}, "  a\n  b"},
};

INSTANTIATE_TEST_SUITE_P(Texts, TemplateFill, testing::ValuesIn(kFillCases), [](const auto& test) {
    return test.param.name;
});

TEST(Template, MismatchIsAnError) {
    EXPECT_THROW(Fill("$x$", {}), std::logic_error);
    EXPECT_THROW(Fill("text", {{"x", "1"}}), std::logic_error);
    EXPECT_THROW(Fill("costs $5", {}), std::logic_error);
}

} // namespace
} // namespace Schemac::Emit
