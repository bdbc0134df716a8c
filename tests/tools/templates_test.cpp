#include "tavik/type/data_object_type.h"
#include "tavik/type/type_registry.h"
#include "tavik/type/version.h"
#include "tests/support/regex.h"
#include "tests/tools/tool_runner.h"
#include "types/registry/version_record.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <map>
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

using DataTypes = std::vector<const Tavik::DataObjectType*>;

/// Makes templates of some types, all in one go, and checks them likewise.
void CheckTemplatesAtOnce(std::vector<std::string> options, const DataTypes& types) {
    const TemporaryFolder folder;
    std::vector<std::string> checkArguments = {"check"};
    if (const auto version = std::find(options.begin(), options.end(), "--version");
        version != options.end()) {
        checkArguments.insert(checkArguments.end(), version, options.end());
    }
    options.insert(options.begin(), {"new", "--into", folder.GetPath().string()});
    for (const Tavik::DataObjectType* type : types) {
        options.emplace_back(type->GetName());
        checkArguments.push_back((folder.GetPath() / (std::string(type->GetName()) + ".json")).string());
    }
    const RunResult made = RunTool(options);
    ASSERT_EQ(made.exitCode, 0) << made.err;
    const RunResult checked = RunTool(checkArguments);
    EXPECT_EQ(checked.exitCode, 0) << checked.err;
    EXPECT_THAT(
        checked.out, testing::AllOf(
                         testing::HasSubstr(std::string("ok, ") + types.front()->GetName() + '\n'),
                         testing::HasSubstr(std::string("ok, ") + types.back()->GetName() + '\n')));
}

/// The same for any number of types, of whose names a command line takes so many only.
void CheckTemplates(const std::vector<std::string>& options, const DataTypes& types) {
    constexpr std::ptrdiff_t kMost = 200;
    for (auto first = types.begin(); first != types.end();) {
        const auto last = first + std::min(kMost, types.end() - first);
        CheckTemplatesAtOnce(options, {first, last});
        first = last;
    }
}

TEST(Templates, OfRequiredPropertiesPassTheCheck) {
    CheckTemplates({}, GetDataTypes());
}

TEST(Templates, OfAllPropertiesPassTheCheck) {
    CheckTemplates({"--full"}, GetDataTypes());
}

TEST(Templates, ForTheVersionOfTheTypeKeepToIt) {
    std::map<std::string, DataTypes> typesOfVersions;
    for (const Tavik::DataObjectType* type : GetDataTypes()) {
        typesOfVersions[type->GetVersion()->GetName()].push_back(type);
    }
    EXPECT_GT(typesOfVersions.size(), 5U);
    for (const auto& [version, types] : typesOfVersions) {
        CheckTemplates({"--full", "--version", version}, types);
    }
}

TEST(Templates, ShowWhatCanBeMadeOfAMereBaseAndSayWhatElseCan) {
    const RunResult made = RunTool({"new", "ComputerSpec"});
    EXPECT_THAT(made.out, testing::HasSubstr(R"("$type": "MorvaneComputerSpecLiveComputerLocation")"));
    EXPECT_THAT(made.err, testing::HasSubstr("hint: location may also be MorvaneComputerSpecVmLocation"));
    EXPECT_THAT(made.err, testing::Not(testing::HasSubstr("LiveComputerLocation")));
    EXPECT_THAT(
        RunTool({"new", "MorvaneFault"}).err,
        TestSupport::ContainsRegex("the value may also be .* and [0-9]+ more; see morvane types --base"));
}

TEST(Templates, AreNotWrittenOverFiles) {
    const TemporaryFolder folder;
    const std::string file = folder.Write("morvane.UserSession.json", "mine");
    const RunResult made = RunTool({"new", "--into", folder.GetPath().string(), "UserSession"});
    EXPECT_EQ(made.exitCode, 2);
    EXPECT_EQ(ReadFile(file), "mine");
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
