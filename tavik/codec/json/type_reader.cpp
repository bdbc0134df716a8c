#include "tavik/codec/json/type_reader.h"

#include "tavik/type/type.h"
#include "tavik/type/type_registry.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace Tavik::Json {

namespace {

constexpr std::string_view kArraySuffix = "[]";

bool IsScalar(const Type& type) {
    return type.GetKind() < TypeKind::Any || type.GetKind() == TypeKind::Enum;
}

bool Fits(const Place& actual, const Place& declared) {
    if (declared.HoldsAnything()) {
        return true;
    }
    return actual.isArray == declared.isArray
        && (actual.isArray ? actual.type == declared.type : actual.type->IsA(declared.type));
}

/// Wire names of the types that fit the place.
std::vector<std::string> FindCandidates(const Place& declared) {
    TypeRegistry& registry = TypeRegistry::Instance();
    std::vector<std::string> candidates;
    for (const std::string& name : registry.GetNames()) {
        const Type* const type = registry.FindByWireName(name);
        if (type != nullptr && Fits({type, declared.isArray}, declared)) {
            candidates.push_back(name);
        }
    }
    return candidates;
}

[[noreturn]] void RefuseUnknownType(std::string_view wireName, const Place& declared) {
    TypeRegistry& registry = TypeRegistry::Instance();
    std::string reason = "there is no type with the wire name " + Quote(wireName);
    if (const Type* const type = registry.FindByName(wireName)) {
        reason += std::string("; the type of that name has the wire name \"") + type->GetWireName() + '"';
    } else {
        reason += DidYouMean(wireName, FindCandidates(declared));
    }
    throw Refusal{reason};
}

const Type& FindType(std::string_view wireName, const Place& declared, TypeFinder& types) {
    const Type* const type = types.Find(wireName);
    if (type == nullptr) {
        RefuseUnknownType(wireName, declared);
    }
    return *type;
}

/// Throws when the type is right nowhere.
void CheckKind(const Place& actual) {
    const Type& type = *actual.type;
    const std::string wireName = type.GetWireName();
    if (type.GetKind() == TypeKind::Any && !actual.isArray) {
        throw Refusal{"expected the wire name of the value's own type, found " + wireName};
    }
    if (type.GetKind() == TypeKind::Managed && !actual.isArray) {
        throw Refusal{
            "expected the wire name of a type of values; a reference is written {\"mo\": \"" + wireName
            + "\", \"id\": ...}"};
    }
    if (type.GetKind() == TypeKind::Boolean && actual.isArray) {
        throw Refusal{"there are no arrays of boolean"};
    }
}

} // namespace

const Type* TypeFinder::Find(std::string_view wireName) {
    // Names begin and end alike; it is the middle that tells them apart.
    std::uint64_t middle = 0;
    const std::size_t size = std::min(wireName.size(), sizeof(middle));
    std::memcpy(&middle, wireName.data() + (wireName.size() - size) / 2, size);
    const std::uint64_t mixed = (middle + wireName.size()) * 0x9E3779B97F4A7C15;
    const Type*& known = m_found[static_cast<std::size_t>(mixed >> (64 - kSlotBits))];
    if (known != nullptr && wireName == known->GetWireName()) {
        return known;
    }
    const Type* const found = TypeRegistry::Instance().FindByWireName(wireName);
    known = found != nullptr ? found : known;
    return found;
}

void CheckVersion(const Type& type, const Version* version) {
    if (version != nullptr && !type.IsPartOf(version)) {
        throw Refusal{
            std::string("type ") + type.GetWireName() + ' ' + NotPartOf(*version, type.GetVersion())};
    }
}

Place ReadValueType(
    std::string_view wireName, const Place& declared, const Version* version, TypeFinder& types) {
    Place actual;
    actual.isArray = wireName.ends_with(kArraySuffix);
    if (actual.isArray) {
        wireName.remove_suffix(kArraySuffix.size());
    }
    const Type& type = FindType(wireName, declared, types);
    actual.type = &type;
    CheckKind(actual);
    if (!Fits(actual, declared)) {
        const bool isFinal = declared.isArray || IsScalar(*declared.type);
        throw Refusal{
            "expected " + DescribeExpected(declared) + (isFinal ? "" : " or derived from it") + ", found "
            + (actual.isArray ? "an array of " : "type ") + type.GetWireName()};
    }
    CheckVersion(type, version);
    return actual;
}

const Type* ReadReferredType(
    std::string_view wireName, const Place& declared, const Version* version, TypeFinder& types) {
    const Type& type = FindType(wireName, declared, types);
    const bool fits = declared.HoldsAnything() || type.IsA(declared.type);
    if (type.GetKind() != TypeKind::Managed || !fits) {
        throw Refusal{
            std::string("expected the wire name of ")
            + (declared.HoldsAnything()
                   ? "a managed type"
                   : std::string(declared.type->GetWireName()) + " or a type derived from it")
            + ", found " + type.GetWireName()};
    }
    CheckVersion(type, version);
    return &type;
}

} // namespace Tavik::Json
