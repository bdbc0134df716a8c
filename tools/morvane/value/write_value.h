#pragma once

#include "tavik/type/version.h"
#include "tavik/value/any.h"

#include <string>
#include <vector>

namespace Tool {

/// The value as JSON. Secrets are "***" unless they are to be shown. `version` (null for no restriction)
/// decides what is left out; throws `Tavik::Json::EncodeError` for what it does not have and for what JSON
/// has no form for.
std::string WriteValue(const Tavik::Any& value, const Tavik::Version* version, int indent, bool showSecrets);

/// A property that is set in a value.
struct SetProperty {
    std::string path;
    const Tavik::Version* version; ///< that introduced it
};

/// The set properties that `version` does not have: what `WriteValue` leaves out for it. Those inside of one
/// that is left out are not listed.
std::vector<SetProperty> FindVanishing(const Tavik::Any& value, const Tavik::Version& version);
/// Number of secrets that are set in the value and that `version` (null for no restriction) has.
std::size_t CountSecrets(const Tavik::Any& value, const Tavik::Version* version = nullptr);

} // namespace Tool
