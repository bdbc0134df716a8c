#include "tavik/codec/json/wording.h"

#include "pellum/text/near_name.h"
#include "tavik/type/version.h"
#include "tavik/value/json_text.h"

#include <cstddef>

namespace Tavik::Json {

namespace {

constexpr std::size_t kLongestQuote = 60;

/// Nothing when values of the type are not single values.
std::string DescribeScalar(const Type& type) {
    switch (type.GetKind()) {
    case TypeKind::Boolean: return "true or false";
    case TypeKind::Byte: return "a byte";
    case TypeKind::Int: return "an int";
    case TypeKind::Long: return "a long";
    case TypeKind::Float: return "a float";
    case TypeKind::String: return "a string";
    case TypeKind::DateTime: return R"(a dateTime such as "2024-02-29T23:59:59Z")";
    case TypeKind::Binary: return "binary data as a base64 string";
    case TypeKind::TypeName: return "a string with the wire name of a type";
    case TypeKind::PropertyPath: return "a string with a property path";
    case TypeKind::Enum: return std::string("a string with a tag of ") + type.GetWireName();
    default: return {};
    }
}

} // namespace

std::string DescribeExpected(const Place& place) {
    if (place.HoldsAnything()) {
        return R"(an object that begins with "$type")";
    }
    const std::string wireName = place.type->GetWireName();
    if (place.isArray) {
        return place.type->GetKind() == TypeKind::Byte ? "bytes as a base64 string"
                                                       : "an array of " + wireName;
    }
    if (place.HoldsObject()) {
        return "an object of type " + wireName;
    }
    if (place.HoldsReference()) {
        return "a reference {\"mo\": ..., \"id\": ...} to a " + wireName;
    }
    return DescribeScalar(*place.type);
}

std::string ExpectedButFound(const Place& place, std::string_view found) {
    return "expected " + DescribeExpected(place) + ", found " + std::string(found);
}

std::string Quote(std::string_view name) {
    const bool isLong = name.size() > kLongestQuote;
    if (isLong) {
        std::size_t end = kLongestQuote;
        while ((static_cast<unsigned char>(name[end]) & 0xC0U) == 0x80U) {
            --end; // not in the middle of a code point
        }
        name = name.substr(0, end);
    }
    std::string quoted;
    AppendQuoted(quoted, name);
    return isLong ? quoted + "..." : quoted;
}

std::string DidYouMean(std::string_view name, const std::vector<std::string>& candidates) {
    const std::string near = Pellum::FindNearName(name, candidates);
    return near.empty() ? std::string() : "; did you mean \"" + near + "\"?";
}

std::string NotPartOf(const Version& version, const Version* introduced) {
    std::string text = "is not part of version " + version.GetName();
    if (introduced != nullptr) {
        text += "; it was introduced by " + introduced->GetName();
    }
    return text;
}

} // namespace Tavik::Json
