#pragma once

#include "tavik/codec/json/wording.h"

#include <string_view>

namespace Tavik {

class Version;

namespace Json {

/// The type that the value of a "$type" member names in a place whose declaration is `declared`: of a scalar,
/// a data object or an array. Throws `Refusal` when there is no such type, it does not fit the place, or
/// `version` (null for no restriction) does not have it.
Place ReadValueType(std::string_view wireName, const Place& declared, const Version* version);
/// The managed type that the value of a "mo" member names. Throws `Refusal` likewise.
const Type* ReadReferredType(std::string_view wireName, const Place& declared, const Version* version);
/// Throws `Refusal` when `version` (null for no restriction) does not have the type.
void CheckVersion(const Type& type, const Version* version);

} // namespace Json
} // namespace Tavik
