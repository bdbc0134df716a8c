#include "tools/morvane/model/library.h"

#include "pellum/error/exception.h"
#include "types/registry/version_record.h"

#include <algorithm>

namespace Tool {

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

const Tavik::Version* FindVersion(const std::string& name) {
    return name.empty() ? nullptr : &Tavik::TypeRegistry::Instance().GetVersion(name, kOwnNamespace);
}

} // namespace Tool
