#include "tests/support/regex.h"
#include "tools/morvane/model/lookup.h"

#include "pellum/error/exception.h"
#include "tests/tools/tool_runner.h"
#include "tools/morvane/model/library.h"
#include "tools/morvane/model/type_facts.h"
#include "tools/morvane/model/usages.h"
#include "tools/morvane/model/words.h"

#include <gmock/gmock.h>

#include <map>
#include <string>

namespace ToolTests {

namespace {

using Tool::FindType;

std::vector<const Tavik::Type*> GetTypes() {
    static_cast<void>(Tool::GetOwnLibrary());
    return Tool::GetAllTypes();
}

TEST(Lookup, FindsEveryTypeByEachOfItsNames) {
    // How many types a last part may mean; one that is a full name means only that.
    std::map<std::string, int> lastParts;
    for (const Tavik::Type* type : GetTypes()) {
        const std::string name = type->GetName();
        ++lastParts[name.substr(name.rfind('.') + 1)];
    }
    for (const Tavik::Type* type : GetTypes()) {
        lastParts.erase(type->GetWireName());
        lastParts.erase(std::string(type->GetName()).substr(Tool::kOwnNamespace.size() + 1));
    }
    for (const Tavik::Type* type : GetTypes()) {
        const std::string name = type->GetName();
        const std::string className = Tool::GetClassName(name);
        const std::string lastPart = name.substr(name.rfind('.') + 1);
        for (const std::string& known :
             {name, Tool::ToLower(name), name.substr(name.find('.') + 1), std::string(type->GetWireName()),
              Tool::ToLower(type->GetWireName()), className, "::" + className,
              className.substr(className.find("::") + 2)}) {
            EXPECT_EQ(&FindType(known), type) << known;
        }
        if (lastParts[lastPart] == 1) {
            EXPECT_EQ(&FindType(lastPart), type);
        } else if (lastParts[lastPart] > 1) {
            EXPECT_THROW(FindType(lastPart), Pellum::Exception) << lastPart;
        }
    }
}

TEST(Lookup, KnowsTheHeaderOfEveryType) {
    std::map<std::string, std::string> headers;
    for (const Tavik::Type* type : GetTypes()) {
        const std::string path = Tool::GetHeaderPath(*type);
        ASSERT_FALSE(path.empty()) << type->GetName();
        if (!headers.contains(path)) {
            headers[path] = ReadFile(std::filesystem::path(GENERATED_FOLDER) / path);
        }
        const std::string className = Tool::GetClassName(type->GetName());
        const std::string lastPart = className.substr(className.rfind(':') + 1);
        EXPECT_THAT(
            headers[path],
            TestSupport::ContainsRegex("class ([A-Z_]+ )?([A-Za-z0-9]+::)*" + lastPart + "[ ;]"))
            << path;
        if (const std::string stub = Tool::GetStubHeaderPath(*type); !stub.empty()) {
            EXPECT_THAT(
                ReadFile(std::filesystem::path(GENERATED_FOLDER) / stub),
                testing::HasSubstr(' ' + lastPart + "Stub : public "));
        } else {
            EXPECT_NE(type->GetKind(), Tavik::TypeKind::Managed) << path;
        }
    }
}

TEST(Lookup, FindsMembers) {
    struct {
        const char* name;
        const char* owner; ///< null where none is found
        const char* member;
    } const cases[] = {
        {"ComputerSpec.location", "morvane.ComputerSpec", "location"},
        {"Morvane::ComputerSpec::location", "morvane.ComputerSpec", "location"},
        {"SERVERDIAGNOSTICMANAGER.generatelogbundle", "morvane.DiagnosticManager", "generateLogBundle"},
        {"MorvaneInstallAgent", "morvane.server.AgentManager", "installAgent"},
        {"installAgent", "morvane.server.AgentManager", "installAgent"},
        {"DeploymentStatus.completed", "morvane.server.AgentManager.DeploymentStatus", "completed"},
        {"MorvaneLogin", nullptr, nullptr},
        {"location", nullptr, nullptr},
        {"ComputerSpec.", nullptr, nullptr},
        {".location", nullptr, nullptr},
        {"", nullptr, nullptr},
        {"::", nullptr, nullptr},
    };

    for (const auto& test : cases) {
        if (test.owner == nullptr) {
            EXPECT_THROW(Tool::FindSubject(test.name), Pellum::Exception) << test.name;
            continue;
        }
        const Tool::Subject subject = Tool::FindSubject(test.name);
        ASSERT_TRUE(subject.member) << test.name;
        EXPECT_STREQ(subject.member->owner->GetName(), test.owner);
        EXPECT_STREQ(subject.member->name, test.member);
    }
}

/// The usages of one type as "role place", those that name a base in brackets.
std::vector<std::string> ListUsages(const std::string& name) {
    std::vector<std::string> list;
    const Tavik::Type& type = FindType(name);
    for (const Tool::Usage& usage : Tool::FindUsages(type)) {
        const std::string text = std::string(usage.role) + ' ' + usage.place;
        list.push_back(usage.named == &type ? text : '[' + text + ']');
    }
    return list;
}

TEST(Usages, AreFoundInEveryRole) {
    EXPECT_THAT(
        ListUsages("AgentManager.DeploymentStatus"),
        testing::ElementsAre(
            "property morvane.server.AgentManager.AgentDeploymentResult.status",
            "result morvane.server.AgentManager.uninstallAgent"));
    EXPECT_THAT(
        ListUsages("LiveComputerLocation"), testing::ElementsAre("[property morvane.ComputerSpec.location]"));
    EXPECT_THAT(
        ListUsages("morvane.ComputerSpec"),
        testing::Contains("parameter morvane.DiagnosticManager.generateLogBundle(source)"));
    EXPECT_THAT(
        ListUsages("zabro.fault.LogBundlingFailed"),
        testing::Contains("fault morvane.DiagnosticManager.generateLogBundle"));
}

} // namespace

} // namespace ToolTests
