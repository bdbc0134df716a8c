#include "types/registry/version_record.h"

#include "tavik/library/version_tables.h"
#include "types/tables.h"

#include <array>

namespace Morvane {

namespace {

static_assert(
    TypesTables::kVersions.size() == kVersionCount,
    "the schema declares another number of versions: set kVersionCount in types/registry/version_record.h");

using VersionRows = std::array<Tavik::VersionRecord, kVersionCount>;

/// The generated rows with what the schema does not say: the name of the namespace's task type.
constexpr VersionRows AddTaskType(VersionRows rows) {
    for (Tavik::VersionRecord& row : rows) {
        row.taskType = "morvane.task.Task";
    }
    return rows;
}

constexpr VersionRows kVersions = AddTaskType(TypesTables::kVersions);

constinit const Tavik::OfficialVersion* rcVersion = nullptr;

constexpr Tavik::OrlinVersions DescribeOwnVersions() {
    Tavik::OrlinVersions record = Tavik::DescribeVersions(
        "morvane", kVersions, TypesTables::kInclusions, TypesTables::kDependencies, orlinNamespaceId,
        officialVersions, internalVersions, rcVersion);
    record.index0 = 9;
    record.index1 = 9;
    return record;
}

} // namespace

constinit Tavik::NamespaceId orlinNamespaceId;
constinit const Tavik::OfficialVersion* officialVersions[kVersionCount] = {};
constinit const Tavik::InternalVersion* internalVersions[kVersionCount] = {};

const Tavik::OfficialVersion* GetRcVersion() {
    return rcVersion;
}

constinit const Tavik::OrlinVersions versionRecord = DescribeOwnVersions();

} // namespace Morvane
