#include "tavik/descriptor/records.h"
#include "tavik/type/builtin_types.h"

/// The versions of the runtime's own namespaces: `orlin`, the base of everything, and `orlin.query`.
namespace Tavik {

namespace {

constexpr VersionRecord Describe(const char* name, const char* namespaceName, std::uint32_t flags) {
    return {name, namespaceName, "", 0, nullptr, namespaceName, 0, flags};
}

constexpr VersionRecord kOrlin[] = {
    Describe("orlin.version.version0", "orlin", kFirstVersionFlag),
};

constexpr VersionRecord kQuery[] = {
    Describe("orlin.query.version.version4", "orlin.query", 0),
    Describe("orlin.query.version.version3", "orlin.query", 0),
    Describe("orlin.query.version.version2", "orlin.query", 0),
    Describe("orlin.query.version.version1", "orlin.query", kFirstVersionFlag),
};

constexpr VersionInclusion kQueryInclusions[] = {
    {"orlin.query.version.version1", "orlin.version.version0"},
    {"orlin.query.version.version2", "orlin.query.version.version1"},
    {"orlin.query.version.version3", "orlin.query.version.version2"},
    {"orlin.query.version.version4", "orlin.query.version.version3"},
};

constexpr const char* kQueryDependencies[] = {"orlin"};

constexpr OrlinVersions kOrlinVersions = {
    .namespaceName = "orlin",
    .versions = kOrlin,
    .versionCount = std::size(kOrlin),
};

constexpr OrlinVersions kQueryVersions = {
    .namespaceName = "orlin.query",
    .dependencies = kQueryDependencies,
    .versions = kQuery,
    .inclusions = kQueryInclusions,
    .versionCount = std::size(kQuery),
    .inclusionCount = std::size(kQueryInclusions),
    .dependencyCount = std::size(kQueryDependencies),
};

} // namespace

std::vector<const OrlinVersions*> GetBuiltinVersions() {
    return {&kOrlinVersions, &kQueryVersions};
}

} // namespace Tavik
