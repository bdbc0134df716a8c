#include "tests/tools/tool_runner.h"

#include <boost/json.hpp>
#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <map>
#include <set>
#include <sstream>
#include <string>

namespace ToolTests {

namespace {

using boost::json::array;
using boost::json::object;
using boost::json::value;

/// The types of the document, by name.
using TypeMap = std::map<std::string, object>;

std::string GetText(const object& type, const char* key) {
    return std::string(type.at(key).is_null() ? "" : type.at(key).as_string().c_str());
}

TypeMap ReadDocument(const std::string& text) {
    TypeMap types;
    const value document = boost::json::parse(text);
    for (const value& type : document.at("types").as_array()) {
        types[GetText(type.as_object(), "name")] = type.as_object();
    }
    return types;
}

const TypeMap& GetAll() {
    static const TypeMap all = ReadDocument(RunTool({"types", "--json"}).out);
    return all;
}

bool DerivesFrom(const object& type, const std::string& base) {
    const std::string own = GetText(type, "base");
    const auto next = GetAll().find(own);
    return own == base || (next != GetAll().end() && DerivesFrom(next->second, base));
}

/// Arguments that choose types, and what they stand for.
struct Filter {
    std::vector<std::string> arguments;
    std::function<bool(const object& type)> accepts;
};

TEST(Types, AreChosenByWhatTheDescriptorsSay) {
    const std::string live = "morvane.ComputerSpec.ComputerLocation";
    const auto startsWith = [](const object& type, const char* prefix) {
        return GetText(type, "name").starts_with(prefix);
    };
    const Filter filters[] = {
        {{}, [](const object&) { return true; }},
        {{"--kind", "fault"}, [](const object& type) { return GetText(type, "kind") == "fault"; }},
        {{"--since", "9.0"},
         [](const object& type) { return GetText(type, "version") == "morvane.version.v9_0"; }},
        {{"--api-version", "2.0"},
         [](const object& type) {
             return std::set<std::string>{"morvane.version.version1", "morvane.version.version2"}.contains(
                 GetText(type, "version"));
         }},
        {{"--base", "ComputerLocation"}, [&](const object& type) { return DerivesFrom(type, live); }},
        {{"--base", "orlin.RuntimeFault"},
         [](const object& type) { return DerivesFrom(type, "orlin.RuntimeFault"); }},
        {{"--area", "Agent"}, [&](const object& type) { return startsWith(type, "morvane.agent."); }},
        {{"--area", "agent.internal"},
         [&](const object& type) { return startsWith(type, "morvane.agent.internal."); }},
        {{"--area", "core"},
         [](const object& type) {
             const char first = GetText(type, "name").at(std::string("morvane.").size());
             return first >= 'A' && first <= 'Z';
         }},
        {{"--area", "event", "--kind", "data", "--version", "1.0", "Event"},
         [&](const object& type) {
             return startsWith(type, "morvane.event.") && GetText(type, "kind") == "data"
                 && GetText(type, "version") == "morvane.version.version1";
         }},
    };
    for (const Filter& filter : filters) {
        std::vector<std::string> arguments = {"types", "--json"};
        arguments.insert(arguments.end(), filter.arguments.begin(), filter.arguments.end());
        const TypeMap found = ReadDocument(RunTool(arguments).out);
        TypeMap expected = GetAll();
        std::erase_if(expected, [&filter](const auto& entry) { return !filter.accepts(entry.second); });
        EXPECT_FALSE(expected.empty());
        EXPECT_EQ(found, expected) << testing::PrintToString(filter.arguments);
    }
}

TEST(Types, AreListedInColumnsOffTheTerminal) {
    std::istringstream lines(RunTool({"types"}).out);
    std::string last;
    std::size_t count = 0;
    for (std::string line; std::getline(lines, line); ++count) {
        std::istringstream columns(line);
        std::string name;
        std::string kind;
        std::getline(columns, name, '\t');
        std::getline(columns, kind, '\t');
        ASSERT_TRUE(GetAll().contains(name)) << line;
        EXPECT_EQ(kind, GetText(GetAll().at(name), "kind"));
        EXPECT_EQ(std::count(line.begin(), line.end(), '\t'), 3) << line;
        // Types of one area stand together; nested ones follow those that they are nested in.
        const std::string outer = name.substr(0, name.rfind('.'));
        EXPECT_TRUE(!GetAll().contains(outer) || last.starts_with(outer)) << line;
        last = name;
    }
    EXPECT_EQ(count, GetAll().size());
}

TEST(Types, HaveTheAreasThatAreCounted) {
    std::istringstream lines(RunTool({"types", "--areas"}).out);
    std::size_t top = 0;
    for (std::string line; std::getline(lines, line);) {
        const std::string area = line.substr(0, line.find('\t'));
        const std::size_t count = std::stoul(line.substr(line.find('\t') + 1));
        EXPECT_EQ(ReadDocument(RunTool({"types", "--json", "--area", area}).out).size(), count) << area;
        top += area.find('.') == std::string::npos ? count : 0;
    }
    EXPECT_EQ(top, GetAll().size());
}

TEST(Types, AreThereSoon) {
    if (kIsSanitized) {
        GTEST_SKIP() << "a sanitizer takes its own time";
    }
    for (const char* form : {"--names", "--json", "--areas"}) {
        EXPECT_LT(RunTool({"types", form}).duration.count(), 250 * kSlowness)
            << form; // of which it needs a twentieth
    }
}

} // namespace

} // namespace ToolTests
