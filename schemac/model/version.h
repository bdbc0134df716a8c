#pragma once

#include "schemac/source/span.h"

#include <string>
#include <string_view>
#include <vector>

namespace Schemac::Model {

/// The version that the runtime brings along; every other includes it.
inline constexpr std::string_view kRuntimeBaseVersion = "orlin.version.version0";

/// One API version, as declared by `version` or built into the runtime.
struct Version {
    std::string fullName;                 ///< "morvane.version.version2"
    std::string name;                     ///< "version2"
    std::string label;                    ///< "2.0", empty when none was given
    std::string nameSpace;                ///< "morvane"
    std::string doc;                      ///< text of the `///` lines, one line each, without the slashes
    bool isImported = false;              ///< declared in an imported file or built in
    Span span;                            ///< the declared name
    std::vector<const Version*> includes; ///< borrowed from the module, in written order

    /// True when this version is `other` or includes it, directly or through others.
    /// Every version includes the runtime's "orlin.version.version0".
    bool Includes(const Version& other) const;
};

} // namespace Schemac::Model
