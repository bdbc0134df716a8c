#include "tavik/codec/json/type_reader.h"

#include "tavik/type/type.h"
#include "tavik/type/type_registry.h"

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

const Type& FindType(std::string_view wireName, const Place& declared) {
    TypeRegistry& registry = TypeRegistry::Instance();
    if (const Type* const type = registry.FindByWireName(wireName)) {
        return *type;
    }
    std::string reason = "there is no type with the wire name " + Quote(wireName);
    if (const Type* const type = registry.FindByName(wireName)) {
        reason += std::string("; the type of that name has the wire name \"") + type->GetWireName() + '"';
    } else {
        reason += DidYouMean(wireName, FindCandidates(declared));
    }
    throw Refusal{reason};
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

void CheckVersion(const Type& type, const Version* version) {
    if (!type.IsPartOf(version)) {
        throw Refusal{
            std::string("type ") + type.GetWireName() + ' ' + NotPartOf(*version, type.GetVersion())};
    }
}

Place ReadValueType(std::string_view wireName, const Place& declared, const Version* version) {
    Place actual;
    actual.isArray = wireName.ends_with(kArraySuffix);
    if (actual.isArray) {
        wireName.remove_suffix(kArraySuffix.size());
    }
    const Type& type = FindType(wireName, declared);
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

const Type* ReadReferredType(std::string_view wireName, const Place& declared, const Version* version) {
    const Type& type = FindType(wireName, declared);
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
