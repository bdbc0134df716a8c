#pragma once

#include "tavik/library/version_tables.h"
#include "tavik/type/type_info_loader.h"

/// The start-up of a library of generated types that has nothing else to do when it is loaded: its
/// descriptors are completed, then it registers with the runtime. Stands once in a library, at global scope;
/// `Tables` is the namespace of its tables, `namespaceName` that of its versions.
#define TAVIK_START_UP(Tables, namespaceName)                                                                \
    namespace {                                                                                              \
    constinit Tavik::VersionTables<Tables::kVersions.size()> versionTables;                                  \
    constinit const Tavik::OrlinVersions versionRecord = Tavik::DescribeVersions(                            \
        namespaceName, Tables::kVersions, Tables::kInclusions, Tables::kDependencies, versionTables);        \
    [[maybe_unused]] const bool descriptorsComplete = [] {                                                   \
        Tables::StoreImportedReferences();                                                                   \
        Tables::CompleteDataTypes();                                                                         \
        return true;                                                                                         \
    }();                                                                                                     \
    }                                                                                                        \
    const Tavik::TypeInfoLoader Tables::kRegistration(&versionRecord, &Tables::LoadTypes)
