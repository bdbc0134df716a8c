#include "tools/morvane/value/differences.h"

#include "tavik/value/compare.h"
#include "tavik/value/property_diff_set.h"

#include <algorithm>
#include <utility>

namespace Tool {

namespace {

std::vector<std::string> DiffPaths(const Tavik::Any& first, const Tavik::Any& second) {
    Tavik::PropertyDiffSet found;
    Tavik::DiffAnyPropertiesInt(&first, &second, {}, "", 0, found);
    std::vector<std::string> paths;
    for (const std::string& path : found) {
        paths.push_back(path.starts_with('.') ? path.substr(1) : path);
    }
    return paths;
}

/// The path of the array that an element's path belongs to; other paths as they are.
std::string StripIndex(const std::string& path) {
    return path.ends_with(']') ? path.substr(0, path.rfind('[')) : path;
}

void PrintSide(Output& output, Style style, char sign, const Place& place, const std::string& margin) {
    const std::string content = place.isSet ? place.text : "unset";
    output.WriteLine(margin + "  " + output.Paint(style, std::string(1, sign) + ' ' + content));
}

} // namespace

std::vector<Difference> FindDifferences(const Tavik::Any& first, const Tavik::Any& second, bool showSecrets) {
    const std::vector<std::string> paths = DiffPaths(first, second);
    auto inFirst = FindPlaces(first, paths, showSecrets);
    auto inSecond = FindPlaces(second, paths, showSecrets);
    std::vector<Difference> differences;
    differences.reserve(paths.size());
    for (const std::string& path : paths) {
        differences.push_back({path, std::move(inFirst[path]), std::move(inSecond[path])});
    }
    return differences;
}

std::vector<Difference> FindMismatches(const Tavik::Any& value, const Tavik::Any& pattern, bool showSecrets) {
    std::vector<Difference> mismatches = FindDifferences(value, pattern, showSecrets);
    std::vector<std::string> properties;
    properties.reserve(mismatches.size());
    for (const Difference& difference : mismatches) {
        properties.push_back(StripIndex(difference.path));
    }
    const auto inPattern = FindPlaces(pattern, properties, showSecrets);
    // Open content of the pattern has no place for what it does not ask for.
    std::erase_if(mismatches, [&inPattern](const Difference& difference) {
        const auto place = inPattern.find(StripIndex(difference.path));
        return place == inPattern.end() || (place->second.isOptional && !place->second.isSet);
    });
    return mismatches;
}

void PrintDifferences(Output& output, const std::vector<Difference>& differences, std::size_t indent) {
    const std::string margin(indent, ' ');
    for (const Difference& difference : differences) {
        const bool isSecret = difference.first.isSecret || difference.second.isSecret;
        output.WriteLine(
            margin + output.Paint(Style::Name, difference.path.empty() ? "the whole value" : difference.path)
            + (isSecret ? output.Paint(Style::Faint, "  a secret") : ""));
        PrintSide(output, Style::Bad, '-', difference.first, margin);
        PrintSide(output, Style::Good, '+', difference.second, margin);
    }
}

} // namespace Tool
