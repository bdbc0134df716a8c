#include "tools/morvane/model/library.h"

#include "pellum/error/exception.h"
#include "pellum/text/near_name.h"
#include "tools/morvane/model/type_facts.h"
#include "types/registry/version_record.h"

#include <algorithm>
#include <map>

namespace Tool {

namespace {

std::string DidYouMean(const std::string& near) {
    return near.empty() ? std::string() : "; did you mean \"" + near + "\"?";
}

const Tavik::Type* TryFindType(const std::string& name) {
    auto& registry = Tavik::TypeRegistry::Instance();
    for (const std::string& candidate : {name, std::string(kOwnNamespace) + '.' + name}) {
        if (const Tavik::Type* type = registry.FindByName(candidate)) {
            return type;
        }
    }
    return registry.FindByWireName(name);
}

/// The dotted name of the type whose own name, with or without those of the types around it, is near.
std::string FindNearType(const std::string& name) {
    std::map<std::string, std::string> fullNames;
    for (const std::string& known : Tavik::TypeRegistry::Instance().GetNames()) {
        for (std::size_t dot = known.find('.'); dot != std::string::npos; dot = known.find('.', dot + 1)) {
            fullNames.emplace(known.substr(dot + 1), known);
        }
        fullNames[known] = known;
    }
    std::vector<std::string> candidates;
    candidates.reserve(fullNames.size());
    for (const auto& [shortName, fullName] : fullNames) {
        candidates.push_back(shortName);
    }
    const std::string near = Pellum::FindNearName(name, candidates);
    return near.empty() ? near : fullNames[near];
}

/// What a version may be called.
std::vector<std::string> GetNames(const Tavik::Version& version) {
    const std::string& fullName = version.GetName();
    if (version.GetNamespace() != kOwnNamespace) {
        return {fullName};
    }
    return {version.GetLabel(), fullName.substr(fullName.rfind('.') + 1), fullName};
}

} // namespace

Tavik::LoadedLibrary GetOwnLibrary() {
    // Names a symbol of the library, so that it is linked to whatever else is used of it.
    static_cast<void>(Morvane::GetRcVersion());
    for (Tavik::LoadedLibrary& library : Tavik::TypeRegistry::Instance().GetLibraries()) {
        if (library.versions->namespaceName == kOwnNamespace) {
            return std::move(library);
        }
    }
    throw Pellum::Exception("the library of the types is not loaded");
}

std::vector<const Tavik::Version*> GetVersions(std::string_view namespaceName) {
    std::vector<const Tavik::Version*> versions;
    for (const Tavik::Version* version : Tavik::TypeRegistry::Instance().GetVersions()) {
        if (version->GetNamespace() == namespaceName) {
            versions.push_back(version);
        }
    }
    // A version includes those before it on its branch: the more it includes, the newer it is.
    const auto countIncluded = [&versions](const Tavik::Version* version) {
        return std::count_if(versions.begin(), versions.end(), [version](const Tavik::Version* other) {
            return version->Includes(*other);
        });
    };
    std::stable_sort(versions.begin(), versions.end(), [&](const Tavik::Version* a, const Tavik::Version* b) {
        return countIncluded(a) < countIncluded(b);
    });
    return versions;
}

const Tavik::Type& FindType(const std::string& name) {
    if (const Tavik::Type* type = TryFindType(name)) {
        return *type;
    }
    throw Pellum::Exception("there is no type \"" + name + '"' + DidYouMean(FindNearType(name)));
}

const Tavik::DataObjectType& FindDataType(const std::string& name) {
    const Tavik::Type& type = FindType(name);
    const auto* dataType = dynamic_cast<const Tavik::DataObjectType*>(&type);
    if (dataType == nullptr) {
        throw Pellum::Exception(
            std::string(type.GetName()) + " is a type of kind " + GetKindName(type.GetKind())
            + ", expected a data or fault type");
    }
    return *dataType;
}

const Tavik::Version* FindVersion(const std::string& name) {
    if (name.empty()) {
        return nullptr;
    }
    std::vector<std::string> known;
    for (const Tavik::Version* version : Tavik::TypeRegistry::Instance().GetVersions()) {
        const std::vector<std::string> names = GetNames(*version);
        if (std::find(names.begin(), names.end(), name) != names.end()) {
            return version;
        }
        known.insert(known.end(), names.begin(), names.end());
    }
    const std::string near = Pellum::FindNearName(name, known);
    throw Pellum::Exception(
        "there is no version \"" + name + '"'
        + (near.empty() ? "; \"morvane versions\" lists them" : DidYouMean(near)));
}

} // namespace Tool
