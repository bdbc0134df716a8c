#pragma once

#include "tavik/type/version.h"
#include "types/export.h"

#include <cstddef>

/// The interface's versions as the runtime knows them. All of this is zero until the runtime registers the
/// versions, which it does on its first look-up.
namespace Morvane {

inline constexpr std::size_t kVersionCount = 11;

extern TYPES_API Tavik::NamespaceId orlinNamespaceId;

/// Newest first, like `internalVersions`; entries are borrowed.
extern TYPES_API const Tavik::OfficialVersion* officialVersions[kVersionCount];
extern TYPES_API const Tavik::InternalVersion* internalVersions[kVersionCount];

/// The version that the next release offers to peers, borrowed; null before registration.
TYPES_API const Tavik::OfficialVersion* GetRcVersion();

/// The record that the library registers with.
extern const Tavik::OrlinVersions versionRecord;

} // namespace Morvane
