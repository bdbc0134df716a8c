#include "tools/morvane/demo/steps.h"

#include "pellum/error/exception.h"
#include "tavik/value/validate.h"
#include "tools/morvane/value/differences.h"

#include <algorithm>

namespace Tool {

void Expect(bool condition, const std::string& what) {
    if (!condition) {
        throw Pellum::Exception("the demo went wrong: " + what);
    }
}

void ExpectValid(const Tavik::Any& value) {
    const auto problems = Tavik::Validate(&value);
    Expect(problems.empty(), problems.empty() ? "" : problems.front().path + ' ' + problems.front().what);
}

std::vector<SetProperty> SendTo(const Tavik::Version& version, const Tavik::Any& value) {
    std::vector<SetProperty> vanishing = FindVanishing(value, version);
    const std::string sent = WriteValue(value, &version, 0, true);
    Tavik::Json::DecodeOptions options;
    options.version = &version;
    const auto arrived = Tavik::Json::Decode(sent, options);
    Expect(WriteValue(*arrived, &version, 0, true) == sent, "what arrived is not what was sent");
    for (const Difference& difference : FindDifferences(value, *arrived, false)) {
        const bool isSaid = std::any_of(vanishing.begin(), vanishing.end(), [&](const SetProperty& property) {
            return property.path == difference.path;
        });
        Expect(isSaid, "more was lost than was said");
    }
    return vanishing;
}

} // namespace Tool
