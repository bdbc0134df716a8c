#include "schemac/dump/dump.h"
#include "schemac/emit/cpp_types.h"
#include "schemac/model/header_needs.h"
#include "schemac/model/naming.h"
#include "tests/schemac/test_support.h"

#include <gtest/gtest.h>

namespace Schemac::Test {
namespace {

TEST(GoodSchema, DumpIsTheExpectedOne) {
    const auto folder = DataFolder() / "good";
    const auto compiled = CompileFiles(folder, {folder / "everything.tavik"}, {folder / "zabro.tavik"});
    ASSERT_NE(compiled->module, nullptr) << ErrorText(*compiled);
    EXPECT_EQ(DumpModule(*compiled->module), ReadFile(folder / "everything.json"))
        << "If the new dump is right: cd tests/schemac/good && schemac --dump --library test --import "
           "zabro.tavik "
           "everything.tavik > everything.json";
}

TEST(GoodSchema, EveryKeywordIsAName) {
    const auto folder = DataFolder() / "good";
    const auto compiled = CompileFiles(folder, {folder / "keywords.tavik"});
    ASSERT_NE(compiled->module, nullptr) << ErrorText(*compiled);
    ASSERT_EQ(compiled->module->ManagedTypes().size(), 1U);
    const auto& methods = compiled->module->ManagedTypes()[0]->methods;
    ASSERT_EQ(methods.size(), 4U);
    EXPECT_EQ(methods[0].parameters.size(), 4U);
    EXPECT_EQ(methods[2].wireName, "wire");
    EXPECT_TRUE(methods[2].result.isOptional);
}

TEST(GoodSchema, LineEndsMarksAndEmptyFilesAreNoMatter) {
    const std::string text = "namespace m;\nversion version1;\n/// One.\n/// Two.\ndata A wire A since "
                             "version1 {\n\ta : int;\n}\n";
    std::string withReturns;
    for (const char c : text) {
        withReturns += c == '\n' ? "\r\n" : std::string(1, c);
    }
    const auto plain = CompileText(text);
    const auto windows = CompileText("\xEF\xBB\xBF" + withReturns);
    ASSERT_NE(plain->module, nullptr) << ErrorText(*plain);
    ASSERT_NE(windows->module, nullptr) << ErrorText(*windows);
    EXPECT_EQ(DumpModule(*plain->module), DumpModule(*windows->module));
    EXPECT_EQ(plain->module->DataTypes().at(0)->doc, "One.\nTwo.");

    const auto empty = CompileText("");
    ASSERT_NE(empty->module, nullptr);
    EXPECT_TRUE(empty->module->DataTypes().empty());
}

TEST(GoodSchema, BasesComeFirstAndNothingElseMoves) {
    const auto compiled = CompileText(R"(
        namespace m;
        version version1;
        /// D.
        data Last : Middle wire Last since version1;
        /// D.
        data Alone wire Alone since version1;
        /// D.
        fault Bad : orlin.MethodFault wire Bad since version1;
        /// D.
        data Middle : First wire Middle since version1;
        /// D.
        data First wire First since version1;
        )");
    ASSERT_NE(compiled->module, nullptr) << ErrorText(*compiled);
    std::string order;
    for (const Model::DataType* type : compiled->module->DataTypes()) {
        order += type->name + " ";
    }
    EXPECT_EQ(order, "First Middle Last Alone Bad ");
}

TEST(GoodSchema, EnumerationsStandInTheOrderGiven) {
    const auto compiled = CompileText(R"(
        namespace m;
        version version1;
        /// D.
        enum First wire First since version1 { a }
        /// D.
        data Holder wire Holder since version1 {
            /// D.
            enum Inner wire Inner since version1 { b }
        }
        /// D.
        enum Last wire Last since version1 { c }
        order enum Last, Holder.Inner, m.First;
        )");
    ASSERT_NE(compiled->module, nullptr) << ErrorText(*compiled);
    std::string order;
    for (const Model::EnumType* type : compiled->module->EnumTypes()) {
        order += type->name + " ";
    }
    EXPECT_EQ(order, "Last Inner First ");
}

TEST(GoodSchema, TheFirstOpenTypeOfAChainAddsTheContent) {
    const auto compiled = CompileText(R"(
        namespace m;
        version version1;
        /// D.
        data Closed wire Closed since version1;
        /// D.
        open data First : Closed wire First since version1;
        /// D.
        data Middle : First wire Middle since version1 { a : int; }
        /// D.
        open data Last : Middle wire Last since version1;
        /// D.
        open fault Bad : orlin.RuntimeFault wire Bad since version1;
        /// D.
        open fault Worse : Bad wire Worse since version1;
        )");
    ASSERT_NE(compiled->module, nullptr) << ErrorText(*compiled);
    std::string adding;
    for (const Model::DataType* type : compiled->module->DataTypes()) {
        adding += type->AddsOpenContent() ? type->name + " : " + Emit::BaseClass(*type) + "\n" : "";
    }
    EXPECT_EQ(adding, "First : Tavik::OpenObject<M::Closed>\nBad : Tavik::OpenObject<Tavik::RuntimeFault>\n");
}

TEST(GoodSchema, HeadersIncludeOnlyWhatNeedsADefinition) {
    const auto compiled = CompileText(R"(
        namespace m;
        version version1;
        /// D.
        data User : Base wire User since version1 {
            a : Plain;
            b : Holder.Inner;
            c : Colour[];
            d : Service;
            e : Own;
            f : Base;
            /// D.
            data Own wire Own since version1 { g : Plain[]; h : User; }
        }
        /// D.
        data Base wire Base since version1;
        /// D.
        data Plain wire Plain since version1;
        /// D.
        data Holder wire Holder since version1 {
            /// D.
            data Inner wire Inner since version1;
        }
        /// D.
        enum Colour wire Colour since version1 { red }
        /// D.
        managed Service wire Service since version1 { method m(a : Plain) throws Bad; }
        /// D.
        fault Bad : orlin.MethodFault wire Bad since version1;
        )");
    ASSERT_NE(compiled->module, nullptr) << ErrorText(*compiled);
    const auto describe = [&](std::string_view name) {
        const Model::HeaderNeeds needs = Model::CollectHeaderNeeds(*compiled->module->FindType(name));
        std::string text;
        for (const Model::Type* type : needs.includes) {
            text += Naming::HeaderPath(*type) + " ";
        }
        for (const Model::Type* type : needs.forwards) {
            text += Naming::QualifiedClassName(*type) + " ";
        }
        return text;
    };
    EXPECT_EQ(describe("m.User"), "api/base.h api/holder.h api/colour.h M::Plain ");
    EXPECT_EQ(describe("m.Service"), "M::Plain ");
}

} // namespace
} // namespace Schemac::Test
