#include "tavik/descriptor/records.h"
#include "tavik/type/data_object_type.h"
#include "tavik/type/enum_type.h"
#include "tavik/type/managed_object_type.h"
#include "tavik/type/type_registry.h"
#include "tests/tools/tool_runner.h"
#include "types/registry/version_record.h"

#include <boost/json.hpp>
#include <gtest/gtest.h>

#include <string>

namespace ToolTests {

namespace {

using boost::json::array;
using boost::json::object;
using boost::json::value;

value TextOrNull(const char* text) {
    return text == nullptr ? value(nullptr) : value(text);
}

object DescribeDescriptor(const Tavik::PropertyDescriptor& descriptor) {
    return {{"type", descriptor.type->name}, {"flags", descriptor.flags}, {"version", descriptor.version}};
}

array DescribeList(const Tavik::PropertyDescriptor* list) {
    array all;
    for (; list != nullptr && list->name != nullptr; ++list) {
        object one = {{"name", list->name}};
        for (const auto& member : DescribeDescriptor(*list)) {
            one[member.key()] = member.value();
        }
        all.push_back(one);
    }
    return all;
}

array DescribeMethods(const Tavik::MethodDescriptor* method) {
    array all;
    for (; method != nullptr && method->name != nullptr; ++method) {
        array faults;
        for (const auto* fault = method->faults; fault != nullptr && *fault != nullptr; ++fault) {
            faults.emplace_back((*fault)->name);
        }
        all.push_back(object{
            {"name", method->name},
            {"wire", method->wireName},
            {"privilege", TextOrNull(method->privilege)},
            {"version", method->version},
            {"longRunning", method->longRunning == 1},
            {"credentials", method->credentials == 1},
            {"result",
             method->result.type == nullptr ? value(nullptr) : value(DescribeDescriptor(method->result))},
            {"parameters", DescribeList(method->parameters)},
            {"faults", faults}});
    }
    return all;
}

/// What the document has to say of a type, class name aside.
object Describe(std::size_t slot, const Tavik::Type& type) {
    object all = {{"slot", slot},          {"name", type.GetName()}, {"wire", type.GetWireName()},
                  {"kind", "enum"},        {"base", nullptr},        {"version", type.GetInfo().version},
                  {"properties", array()}, {"values", array()},      {"methods", array()}};
    if (const auto* dataType = dynamic_cast<const Tavik::DataObjectType*>(&type)) {
        all["kind"] = dataType->IsFault() ? "fault" : "data";
        all["base"] = dataType->GetDataTypeInfo().base->name;
        all["properties"] = DescribeList(dataType->GetDataTypeInfo().properties);
    } else if (const auto* managedType = dynamic_cast<const Tavik::ManagedObjectType*>(&type)) {
        const Tavik::ManagedTypeInfo& info = managedType->GetManagedTypeInfo();
        all["kind"] = "managed";
        all["base"] = info.base->name;
        all["properties"] = DescribeList(info.properties);
        all["methods"] = DescribeMethods(info.methods);
    } else {
        array tags;
        for (const char* tag : dynamic_cast<const Tavik::EnumType&>(type).GetTags()) {
            tags.emplace_back(tag);
        }
        all["values"] = tags;
    }
    return all;
}

TEST(TypesDocument, SaysOfEveryTypeWhatItsDescriptorSays) {
    static_cast<void>(Morvane::GetRcVersion());
    const RunResult result = RunTool({"types", "--json"});
    ASSERT_EQ(result.exitCode, 0) << result.err;
    const value document = boost::json::parse(result.out);
    ASSERT_EQ(document.as_object().size(), 1U);
    const array& types = document.at("types").as_array();

    std::size_t position = 0;
    for (const auto& library : Tavik::TypeRegistry::Instance().GetLibraries()) {
        if (std::string(library.versions->namespaceName) != "morvane") {
            continue;
        }
        for (std::size_t slot = 0; slot < library.types.size(); ++slot) {
            if (library.types[slot] == nullptr) {
                continue;
            }
            ASSERT_LT(position, types.size());
            object found = types[position++].as_object();
            found.erase("class");
            EXPECT_EQ(value(found), value(Describe(slot, *library.types[slot])));
        }
    }
    EXPECT_EQ(position, types.size());
    EXPECT_GT(position, 0U);
}

TEST(TypesDocument, HasItsMembersInOrder) {
    const value document = boost::json::parse(RunTool({"types", "--json"}).out);
    const object& type = document.at("types").as_array().at(2).as_object();
    std::string keys;
    for (const auto& member : type) {
        keys += std::string(member.key()) + ' ';
    }
    EXPECT_EQ(keys, "slot name wire class kind base version properties values methods ");
    EXPECT_EQ(type.at("class"), "Morvane::ComputerSpec::LiveComputerLocation");
    EXPECT_EQ(
        type.at("properties").as_array().at(4), value(
                                                    {{"name", "clientPrivateKey"},
                                                     {"type", "string"},
                                                     {"flags", 0x202},
                                                     {"version", "morvane.version.version7"}}));
}

} // namespace

} // namespace ToolTests
