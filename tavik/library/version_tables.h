#pragma once

#include "tavik/descriptor/records.h"
#include "tavik/type/version.h"

#include <array>
#include <cstddef>

/// How a library composes the record of its namespace's versions from its generated tables.
namespace Tavik {

/// The writable data that a version record points to, zero until the runtime registers the versions.
template <std::size_t count>
struct VersionTables {
    NamespaceId namespaceId;
    const OfficialVersion* official[count] = {};
    const InternalVersion* internal[count] = {};
    const OfficialVersion* releaseCandidate = nullptr;
};

/// The record over borrowed tables; all versions are official.
template <std::size_t versionCount, std::size_t inclusionCount, std::size_t dependencyCount>
constexpr OrlinVersions DescribeVersions(
    const char* namespaceName, const std::array<VersionRecord, versionCount>& versions,
    const std::array<VersionInclusion, inclusionCount>& inclusions,
    const std::array<const char*, dependencyCount>& dependencies, NamespaceId& namespaceId,
    const OfficialVersion* (&official)[versionCount], const InternalVersion* (&internal)[versionCount],
    const OfficialVersion*& releaseCandidate) {
    return {
        .namespaceName = namespaceName,
        .namespaceId = &namespaceId,
        .dependencies = dependencies.data(),
        .versions = versions.data(),
        .inclusions = inclusions.data(),
        .officialVersions = official,
        .internalVersions = internal,
        .releaseCandidateVersion = &releaseCandidate,
        .versionCount = versionCount,
        .officialCount = versionCount,
        .inclusionCount = inclusionCount,
        .dependencyCount = dependencyCount,
    };
}

/// The same with all writable data in one place.
template <std::size_t versionCount, std::size_t inclusionCount, std::size_t dependencyCount>
constexpr OrlinVersions DescribeVersions(
    const char* namespaceName, const std::array<VersionRecord, versionCount>& versions,
    const std::array<VersionInclusion, inclusionCount>& inclusions,
    const std::array<const char*, dependencyCount>& dependencies, VersionTables<versionCount>& tables) {
    return DescribeVersions(
        namespaceName, versions, inclusions, dependencies, tables.namespaceId, tables.official,
        tables.internal, tables.releaseCandidate);
}

} // namespace Tavik
