#include "schemac/emit/proto_emitter.h"
#include "tests/schemac/test_support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <set>
#include <sstream>
#include <stdexcept>

namespace Schemac::Test {
namespace {

namespace fs = std::filesystem;

/// All files, one after the other.
std::string ProtoText(const Model::Module& module) {
    Emit::OutputSet output;
    Emit::ProtoEmitter("test").Emit(module, output);
    std::string text;
    for (const auto& [path, content] : output.Files()) {
        text += "==> " + path + "\n" + content;
    }
    return text;
}

std::string ProtoOf(const std::string& declarations) {
    const auto compiled =
        CompileText("namespace m;\nversion version1;\nversion version2 includes version1;\n" + declarations);
    return compiled->module == nullptr ? ErrorText(*compiled) : ProtoText(*compiled->module);
}

/// What has a number, with the message around it.
std::set<std::string> Numbers(const std::string& proto) {
    std::set<std::string> numbers;
    std::istringstream lines(proto);
    std::string message;
    for (std::string line; std::getline(lines, line);) {
        if (line.ends_with(" {") && !line.starts_with(" ")) {
            message = line;
        } else if (line.ends_with(";") && line.find(" = ") != std::string::npos) {
            numbers.insert(message + line);
        }
    }
    return numbers;
}

std::vector<fs::path> SchemaFiles(const fs::path& folder) {
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.path().extension() == ".tavik") {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

TEST(Proto, EveryFormIsTheExpectedOne) {
    const auto folder = DataFolder() / "good" / "proto";
    const auto compiled =
        CompileFiles(folder, {folder / "shapes.tavik", folder / "groups.tavik"}, {folder / "lib.tavik"});
    ASSERT_NE(compiled->module, nullptr) << ErrorText(*compiled);
    EXPECT_EQ(ProtoText(*compiled->module), ReadFile(folder / "expected.txt"));
}

TEST(Proto, NumbersStayWhenASchemaGrows) {
    const std::string before = ProtoOf(R"(
        /// D.
        data Empty wire Empty since version1;
        /// D.
        data Middle : Empty wire Middle since version1 { a : int; b : Empty; c : Colour; }
        /// D.
        enum Colour wire Colour since version1 { red }
        )");
    const std::string after = ProtoOf(R"(
        /// D.
        data AYounger : Middle wire AYounger since version2;
        /// D.
        data Empty wire Empty since version1 { first : string optional since version2; }
        /// D.
        data Middle : Empty wire Middle since version1 {
            a : int; b : Empty; c : Colour; aa : int optional since version2;
        }
        /// D.
        enum Colour wire Colour since version1 { red, blue }
        )");
    const std::set<std::string> numbersBefore = Numbers(before);
    const std::set<std::string> numbersAfter = Numbers(after);
    EXPECT_TRUE(numbersBefore.contains("message EmptyOrDerived {    Middle middle = 2;")) << before;
    EXPECT_EQ(numbersAfter.size(), numbersBefore.size() + 6) << after;
    EXPECT_TRUE(
        std::includes(numbersAfter.begin(), numbersAfter.end(), numbersBefore.begin(), numbersBefore.end()))
        << before << after;
}

TEST(Proto, OneNameForTwoIsAnError) {
    const struct {
        const char* schema;
        const char* message;
    } kCases[] = {
        {"/// D.\ndata A wire A since version1 { diskID : int; diskId : int; }",
         "type 'm.A': property 'diskId' needs the protobuf name 'disk_id', which property 'diskID' has"},
        {"/// D.\ndata A wire A since version1 { a : int; }\n"
         "/// D.\ndata B : A wire B since version1 { base : int; }",
         "type 'm.B': property 'base' needs the protobuf name 'base', which its base has"},
        {"/// D.\nenum A wire A since version1 { oneTwo, one_two }",
         "package 'test': tag 'one_two' of 'm.A' needs the protobuf name 'A_ONE_TWO', which tag 'oneTwo' of "
         "'m.A' has"},
        {"/// D.\ndata A wire A since version1 { disk_1 : int; disk1 : int; }",
         "type 'm.A': property 'disk1' needs the protobuf name 'disk1', which property 'disk_1' has"},
        {"/// D.\nenum A wire A since version1 { one1, one_1 }",
         "enumeration 'm.A': tag 'one_1' needs the protobuf name 'one1', which tag 'one1' has"},
        {"/// D.\ndata A wire TypedText since version1;",
         "package 'test': type 'm.A' needs the protobuf name 'TypedText', which the runtime has"},
        {"/// D.\ndata A wire A since version1;\n/// D.\ndata B : A wire AOrDerived since version1 { a : A; "
         "}",
         "package 'test': the choice for type 'm.A' needs the protobuf name 'AOrDerived', which type 'm.B' "
         "has"},
    };

    for (const auto& row : kCases) {
        try {
            ADD_FAILURE() << ProtoOf(row.schema);
        } catch (const std::runtime_error& error) {
            EXPECT_STREQ(error.what(), row.message);
        }
    }
}

TEST(Proto, OneFileForTwoIsAnError) {
    const struct {
        const char* path; ///< of the second schema file
        const char* message;
    } kCases[] = {
        {"test/support.tavik", "library 'test': schema file 'test/support.tavik' needs the protobuf file "
                               "'test/support.proto', which "
                               "the runtime has"},
        {"a_or_derived.tavik", "library 'test': the choice for type 'm.A' needs the protobuf file "
                               "'a_or_derived.proto', which schema "
                               "file 'a_or_derived.tavik' has"},
        {"types.more",
         "library 'test': schema file 'types.more' needs the protobuf file 'types.proto', which schema file "
         "'types.tavik' has"},
    };

    for (const auto& row : kCases) {
        const TemporaryFolder folder;
        const fs::path types = folder.GetPath() / "types.tavik";
        const fs::path more = folder.GetPath() / row.path;
        WriteFile(
            types, "namespace m;\nversion version1;\n/// D.\ndata A wire A since version1;\n"
                   "/// D.\ndata B : A wire B since version1;\n");
        WriteFile(more, "namespace m;\n/// D.\ndata C wire C since version1 { a : A; }\n");
        const auto compiled = CompileFiles(folder.GetPath(), {types, more});
        ASSERT_NE(compiled->module, nullptr) << ErrorText(*compiled);
        try {
            ADD_FAILURE() << ProtoText(*compiled->module);
        } catch (const std::runtime_error& error) {
            EXPECT_STREQ(error.what(), row.message);
        }
    }
}

TEST(Proto, ProtobufTakesTheWholeInterface) {
    if (std::system("protoc --version >/dev/null 2>&1") != 0) {
        GTEST_SKIP() << "protoc is not installed";
    }
    const fs::path root = DataFolder().parent_path().parent_path();
    std::vector<fs::path> imports = SchemaFiles(root / "zabro" / "api");
    imports.push_back(root / "tavik" / "orlin.tavik");
    const auto compiled = CompileFiles(root, SchemaFiles(root / "types" / "api"), imports);
    ASSERT_NE(compiled->module, nullptr) << ErrorText(*compiled);
    Emit::OutputSet output;
    Emit::ProtoEmitter("morvane").Emit(*compiled->module, output);
    const TemporaryFolder folder;
    output.WriteTo(folder.GetPath());
    const std::string command = "cd '" + folder.GetPath().string()
                              + "' && protoc -I . --descriptor_set_out=descriptors "
                                "$(find . -name '*.proto') >log 2>&1";
    EXPECT_EQ(std::system(command.c_str()), 0) << ReadFile(folder.GetPath() / "log");
    EXPECT_EQ(ReadFile(folder.GetPath() / "log"), "");
    const std::string text = ProtoText(*compiled->module);
    for (const Model::DataType* type : compiled->module->DataTypes()) {
        EXPECT_NE(text.find("\nmessage " + type->wireName + " {"), std::string::npos) << type->wireName;
    }
}

} // namespace
} // namespace Schemac::Test
