#include "tavik/type/data_object_type.h"
#include "tavik/type/type_registry.h"
#include "tavik/type/version.h"
#include "tests/tools/tool_runner.h"
#include "types/registry/version_record.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace ToolTests {

namespace {

std::vector<const Tavik::DataObjectType*> GetDataTypes() {
    static_cast<void>(Morvane::GetRcVersion());
    std::vector<const Tavik::DataObjectType*> types;
    for (const auto& library : Tavik::TypeRegistry::Instance().GetLibraries()) {
        for (const Tavik::Type* type : library.types) {
            if (const auto* dataType = dynamic_cast<const Tavik::DataObjectType*>(type)) {
                types.push_back(dataType);
            }
        }
    }
    return types;
}

/// Makes a template of every data type and checks them all in one go.
void CheckTemplates(const std::vector<std::string>& newArguments, bool inOwnVersion) {
    const TemporaryFolder folder;
    std::vector<std::string> files;
    for (const Tavik::DataObjectType* type : GetDataTypes()) {
        std::vector<std::string> arguments = {"new", type->GetName()};
        arguments.insert(arguments.end(), newArguments.begin(), newArguments.end());
        if (inOwnVersion) {
            arguments.insert(arguments.end(), {"--version", type->GetVersion()->GetName()});
        }
        const RunResult made = RunTool(arguments);
        ASSERT_EQ(made.exitCode, 0) << type->GetName() << ": " << made.err;
        files.push_back(folder.Write(std::string(type->GetName()) + ".json", made.out));
        if (inOwnVersion) {
            const RunResult checked =
                RunTool({"check", "--version", type->GetVersion()->GetName(), files.back()});
            EXPECT_EQ(checked.exitCode, 0) << checked.err;
        }
    }
    ASSERT_FALSE(files.empty());
    if (!inOwnVersion) {
        files.insert(files.begin(), "check");
        const RunResult checked = RunTool(files);
        EXPECT_EQ(checked.exitCode, 0) << checked.err;
    }
}

TEST(Templates, OfRequiredPropertiesPassTheCheck) {
    CheckTemplates({}, false);
}

TEST(Templates, OfAllPropertiesPassTheCheck) {
    CheckTemplates({"--full"}, false);
}

TEST(Templates, ForTheVersionOfTheTypeKeepToIt) {
    CheckTemplates({"--full"}, true);
}

TEST(Templates, HoldEveryPropertyWhenFull) {
    const std::string text = RunTool({"new", "ComputerSpec.LiveComputerLocation", "--full"}).out;
    for (const Tavik::DataObjectType* type : GetDataTypes()) {
        if (std::string(type->GetName()) == "morvane.ComputerSpec.LiveComputerLocation") {
            for (const Tavik::Property* property : type->GetProperties()) {
                EXPECT_THAT(text, testing::HasSubstr('"' + std::string(property->GetName()) + '"'));
            }
        }
    }
}

} // namespace

} // namespace ToolTests
