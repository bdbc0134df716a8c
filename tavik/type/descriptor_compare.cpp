#include "tavik/type/descriptor_compare.h"

#include "tavik/type/data_object_type.h"
#include "tavik/type/enum_type.h"
#include "tavik/type/managed_object_type.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>

namespace Tavik {

namespace {

using namespace std::string_literals;

/// A text, with null as a value of its own.
std::string Text(const char* text) {
    return text != nullptr ? "\""s + text + "\"" : "nothing"s;
}

std::string TypeText(const TypeInfo* info) {
    return Text(info != nullptr ? info->name : nullptr);
}

std::string Differ(const std::string& what, const std::string& known, const std::string& other) {
    return known == other ? std::string() : what + " is " + known + " there and " + other + " here";
}

/// The first of several differences that is one.
std::string FirstOf(std::initializer_list<std::string> differences) {
    const auto found =
        std::find_if(differences.begin(), differences.end(), [](const auto& text) { return !text.empty(); });
    return found == differences.end() ? std::string() : *found;
}

std::string CompareRow(
    const std::string& name, const PropertyDescriptor& known, const PropertyDescriptor& other) {
    return FirstOf(
        {Differ("type of " + name, TypeText(known.type), TypeText(other.type)),
         Differ("flag word of " + name, std::to_string(known.flags), std::to_string(other.flags)),
         Differ("version of " + name, Text(known.version), Text(other.version))});
}

std::string CompareProperties(
    const std::string& what, const PropertyDescriptor* known, const PropertyDescriptor* other) {
    for (int i = 0;; ++i, ++known, ++other) {
        const std::string place = what + " " + std::to_string(i);
        if (std::string difference = Differ(place, Text(known->name), Text(other->name));
            !difference.empty()) {
            return difference;
        }
        if (known->name == nullptr) {
            return {};
        }
        if (std::string difference = CompareRow(what + " " + known->name, *known, *other);
            !difference.empty()) {
            return difference;
        }
    }
}

std::string CompareTags(const EnumType& known, const EnumType& other) {
    const std::size_t count = known.GetTags().size();
    if (count != other.GetTags().size()) {
        return Differ("number of tags", std::to_string(count), std::to_string(other.GetTags().size()));
    }
    for (std::size_t i = 0; i < count; ++i) {
        std::string difference =
            Differ("tag " + std::to_string(i), Text(known.GetTags()[i]), Text(other.GetTags()[i]));
        if (!difference.empty()) {
            return difference;
        }
    }
    return {};
}

std::string FaultTexts(const TypeInfo* const* faults) {
    std::string text;
    for (; faults != nullptr && *faults != nullptr; ++faults) {
        text += (text.empty() ? "" : ", ") + TypeText(*faults);
    }
    return text.empty() ? "nothing" : text;
}

std::string CompareMethods(const MethodDescriptor* known, const MethodDescriptor* other) {
    for (int i = 0;; ++i, ++known, ++other) {
        std::string difference = Differ("method " + std::to_string(i), Text(known->name), Text(other->name));
        if (!difference.empty() || known->name == nullptr) {
            return difference;
        }
        const std::string name = std::string("method ") + known->name;
        difference = FirstOf(
            {Differ("wire name of " + name, Text(known->wireName), Text(other->wireName)),
             Differ("version of " + name, Text(known->version), Text(other->version)),
             Differ("privilege of " + name, Text(known->privilege), Text(other->privilege)),
             Differ("faults of " + name, FaultTexts(known->faults), FaultTexts(other->faults)),
             CompareRow("result of " + name, known->result, other->result),
             CompareProperties("parameter of " + name, known->parameters, other->parameters)});
        if (!difference.empty()) {
            return difference;
        }
    }
}

std::string ContentText(const DataObjectType& type) {
    return type.IsDeclaredOpen() ? "open" : "described";
}

template <class Record>
std::string CompareBaseAndProperties(const Record& known, const Record& other) {
    std::string difference = Differ("base", TypeText(known.base), TypeText(other.base));
    return difference.empty() ? CompareProperties("property", known.properties, other.properties)
                              : difference;
}

} // namespace

std::string DescribeDifference(const Type& known, const Type& other) {
    std::string difference = FirstOf(
        {Differ("name", Text(known.GetName()), Text(other.GetName())),
         Differ("wire name", Text(known.GetWireName()), Text(other.GetWireName())),
         Differ(
             "kind", std::to_string(static_cast<unsigned>(known.GetKind())),
             std::to_string(static_cast<unsigned>(other.GetKind()))),
         Differ("version", Text(known.GetInfo().version), Text(other.GetInfo().version))});
    if (!difference.empty()) {
        return difference;
    }
    switch (known.GetKind()) {
    case TypeKind::Data:
    case TypeKind::Fault: {
        const auto& knownData = static_cast<const DataObjectType&>(known);
        const auto& otherData = static_cast<const DataObjectType&>(other);
        difference = CompareBaseAndProperties(knownData.GetDataTypeInfo(), otherData.GetDataTypeInfo());
        return difference.empty() ? Differ("content", ContentText(knownData), ContentText(otherData))
                                  : difference;
    }
    case TypeKind::Enum:
        return CompareTags(static_cast<const EnumType&>(known), static_cast<const EnumType&>(other));
    case TypeKind::Managed: {
        const ManagedTypeInfo& knownInfo = static_cast<const ManagedObjectType&>(known).GetManagedTypeInfo();
        const ManagedTypeInfo& otherInfo = static_cast<const ManagedObjectType&>(other).GetManagedTypeInfo();
        difference = CompareBaseAndProperties(knownInfo, otherInfo);
        return difference.empty() ? CompareMethods(knownInfo.methods, otherInfo.methods) : difference;
    }
    default: return {};
    }
}

} // namespace Tavik
