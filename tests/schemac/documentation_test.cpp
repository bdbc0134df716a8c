#include "schemac/emit/documentation_emitter.h"
#include "tests/schemac/test_support.h"

#include <gtest/gtest.h>

#include <sstream>

namespace Schemac::Test {
namespace {

TEST(Documentation, OfEveryKindOfDeclarationIsKept) {
    const auto compiled = CompileText(R"(namespace m;
version version1;
/// A "type".
data A wire A since version1 {
    /// One.
    /// Two? \o/
    a : int;
    b : int;
}
/// Tags.
enum E wire E since version1 {
    /// A tag.
    on,
    off,
}
/// Calls.
managed M wire M since version1 {
    /// A property.
    property p : int;
    /// A method.
    method go(
        /// Who.
        user : string, other : int);
}
)");
    ASSERT_NE(compiled->module, nullptr) << ErrorText(*compiled);
    Emit::OutputSet output;
    Emit::DocumentationEmitter().Emit(*compiled->module, output);
    const TemporaryFolder folder;
    output.WriteTo(folder.GetPath());
    std::istringstream source(
        ReadFile(folder.GetPath() / compiled->module->Library() / "documentation.gen.cpp"));
    std::string rows;
    for (std::string line; std::getline(source, line);) {
        if (line.find("{\"") != std::string::npos) {
            rows += line.substr(line.find('{')) + '\n';
        }
    }
    EXPECT_EQ(rows, R"({"m.A", nullptr, "A \"type\"."},
{"m.A", "a", "One.\nTwo\? \\o/"},
{"m.E", nullptr, "Tags."},
{"m.E", "on", "A tag."},
{"m.M", nullptr, "Calls."},
{"m.M", "p", "A property."},
{"m.M", "go", "A method."},
{"m.M", "go.user", "Who."},
)");
}

} // namespace
} // namespace Schemac::Test
