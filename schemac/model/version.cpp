#include "schemac/model/version.h"

#include <unordered_set>

namespace Schemac::Model {

bool Version::Includes(const Version& other) const {
    if (&other == this || other.fullName == kRuntimeBaseVersion) {
        return true;
    }
    std::unordered_set<const Version*> seen{this};
    std::vector<const Version*> open{this};
    while (!open.empty()) {
        const Version* version = open.back();
        open.pop_back();
        for (const Version* included : version->includes) {
            if (included == &other) {
                return true;
            }
            if (seen.insert(included).second) {
                open.push_back(included);
            }
        }
    }
    return false;
}

} // namespace Schemac::Model
