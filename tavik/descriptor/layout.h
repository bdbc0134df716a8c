#pragma once

#include "tavik/descriptor/records.h"

/// The binary layout of the descriptor records, asserted where pointers are 32 bits wide. Included by one
/// source file.
namespace Tavik {

static_assert(sizeof(std::uint32_t) == 4 && alignof(std::uint32_t) == 4);

#define TAVIK_ASSERT_SIZE(Record, size) static_assert(sizeof(void*) != 4 || sizeof(Record) == (size))
#define TAVIK_ASSERT_OFFSET(Record, field, offset)                                                           \
    static_assert(sizeof(void*) != 4 || offsetof(Record, field) == (offset))

TAVIK_ASSERT_SIZE(TypeInfo, 16);
TAVIK_ASSERT_OFFSET(TypeInfo, kind, 0);
TAVIK_ASSERT_OFFSET(TypeInfo, name, 4);
TAVIK_ASSERT_OFFSET(TypeInfo, wireName, 8);
TAVIK_ASSERT_OFFSET(TypeInfo, version, 12);

TAVIK_ASSERT_SIZE(PropertyDescriptor, 20);
TAVIK_ASSERT_OFFSET(PropertyDescriptor, type, 0);
TAVIK_ASSERT_OFFSET(PropertyDescriptor, flags, 4);
TAVIK_ASSERT_OFFSET(PropertyDescriptor, name, 8);
TAVIK_ASSERT_OFFSET(PropertyDescriptor, reserved, 12);
TAVIK_ASSERT_OFFSET(PropertyDescriptor, version, 16);

TAVIK_ASSERT_SIZE(DataTypeInfo, 48);
TAVIK_ASSERT_OFFSET(DataTypeInfo, type, 0);
TAVIK_ASSERT_OFFSET(DataTypeInfo, base, 4);
TAVIK_ASSERT_OFFSET(DataTypeInfo, properties, 8);
TAVIK_ASSERT_OFFSET(DataTypeInfo, get, 12);
TAVIK_ASSERT_OFFSET(DataTypeInfo, fieldPointer, 16);
TAVIK_ASSERT_OFFSET(DataTypeInfo, set, 20);
TAVIK_ASSERT_OFFSET(DataTypeInfo, swap, 24);
TAVIK_ASSERT_OFFSET(DataTypeInfo, isSet, 28);
TAVIK_ASSERT_OFFSET(DataTypeInfo, reset, 32);
TAVIK_ASSERT_OFFSET(DataTypeInfo, create, 36);
TAVIK_ASSERT_OFFSET(DataTypeInfo, createArray, 40);
TAVIK_ASSERT_OFFSET(DataTypeInfo, reserved, 44);

TAVIK_ASSERT_SIZE(EnumTypeInfo, 8);
TAVIK_ASSERT_OFFSET(EnumTypeInfo, type, 0);
TAVIK_ASSERT_OFFSET(EnumTypeInfo, values, 4);

TAVIK_ASSERT_SIZE(MethodDescriptor, 56);
TAVIK_ASSERT_OFFSET(MethodDescriptor, name, 0);
TAVIK_ASSERT_OFFSET(MethodDescriptor, wireName, 4);
TAVIK_ASSERT_OFFSET(MethodDescriptor, privilege, 8);
TAVIK_ASSERT_OFFSET(MethodDescriptor, reserved0, 12);
TAVIK_ASSERT_OFFSET(MethodDescriptor, result, 16);
TAVIK_ASSERT_OFFSET(MethodDescriptor, parameters, 36);
TAVIK_ASSERT_OFFSET(MethodDescriptor, faults, 40);
TAVIK_ASSERT_OFFSET(MethodDescriptor, version, 44);
TAVIK_ASSERT_OFFSET(MethodDescriptor, reserved1, 48);
TAVIK_ASSERT_OFFSET(MethodDescriptor, reserved2, 52);
TAVIK_ASSERT_OFFSET(MethodDescriptor, longRunning, 53);
TAVIK_ASSERT_OFFSET(MethodDescriptor, credentials, 54);
TAVIK_ASSERT_OFFSET(MethodDescriptor, reserved3, 55);

TAVIK_ASSERT_SIZE(ManagedTypeInfo, 32);
TAVIK_ASSERT_OFFSET(ManagedTypeInfo, type, 0);
TAVIK_ASSERT_OFFSET(ManagedTypeInfo, base, 4);
TAVIK_ASSERT_OFFSET(ManagedTypeInfo, properties, 8);
TAVIK_ASSERT_OFFSET(ManagedTypeInfo, methods, 12);
TAVIK_ASSERT_OFFSET(ManagedTypeInfo, propertyIndex, 16);
TAVIK_ASSERT_OFFSET(ManagedTypeInfo, dispatch, 20);
TAVIK_ASSERT_OFFSET(ManagedTypeInfo, createStub, 24);
TAVIK_ASSERT_OFFSET(ManagedTypeInfo, methodObjects, 28);

TAVIK_ASSERT_SIZE(VersionRecord, 32);
TAVIK_ASSERT_OFFSET(VersionRecord, name, 0);
TAVIK_ASSERT_OFFSET(VersionRecord, namespaceName, 4);
TAVIK_ASSERT_OFFSET(VersionRecord, label, 8);
TAVIK_ASSERT_OFFSET(VersionRecord, reserved0, 12);
TAVIK_ASSERT_OFFSET(VersionRecord, taskType, 16);
TAVIK_ASSERT_OFFSET(VersionRecord, taskNamespace, 20);
TAVIK_ASSERT_OFFSET(VersionRecord, reserved1, 24);
TAVIK_ASSERT_OFFSET(VersionRecord, flags, 28);

TAVIK_ASSERT_SIZE(VersionInclusion, 8);
TAVIK_ASSERT_OFFSET(VersionInclusion, version, 0);
TAVIK_ASSERT_OFFSET(VersionInclusion, included, 4);

TAVIK_ASSERT_SIZE(OrlinVersions, 72);
TAVIK_ASSERT_OFFSET(OrlinVersions, namespaceName, 0);
TAVIK_ASSERT_OFFSET(OrlinVersions, namespaceId, 4);
TAVIK_ASSERT_OFFSET(OrlinVersions, dependencies, 8);
TAVIK_ASSERT_OFFSET(OrlinVersions, reserved0, 12);
TAVIK_ASSERT_OFFSET(OrlinVersions, versions, 16);
TAVIK_ASSERT_OFFSET(OrlinVersions, inclusions, 20);
TAVIK_ASSERT_OFFSET(OrlinVersions, officialVersions, 24);
TAVIK_ASSERT_OFFSET(OrlinVersions, internalVersions, 28);
TAVIK_ASSERT_OFFSET(OrlinVersions, releaseCandidateVersion, 32);
TAVIK_ASSERT_OFFSET(OrlinVersions, versionCount, 36);
TAVIK_ASSERT_OFFSET(OrlinVersions, officialCount, 40);
TAVIK_ASSERT_OFFSET(OrlinVersions, inclusionCount, 44);
TAVIK_ASSERT_OFFSET(OrlinVersions, dependencyCount, 48);
TAVIK_ASSERT_OFFSET(OrlinVersions, reserved1, 52);
TAVIK_ASSERT_OFFSET(OrlinVersions, reserved2, 56);
TAVIK_ASSERT_OFFSET(OrlinVersions, index0, 60);
TAVIK_ASSERT_OFFSET(OrlinVersions, index1, 64);
TAVIK_ASSERT_OFFSET(OrlinVersions, reserved3, 68);

#undef TAVIK_ASSERT_OFFSET
#undef TAVIK_ASSERT_SIZE

} // namespace Tavik
