#pragma once

#include "pellum/text/path_name.h"
#include "tavik/codec/json/file.h"
#include "tavik/codec/json/json.h"
#include "tavik/type/version.h"
#include "tools/morvane/demo/narrator.h"
#include "tools/morvane/value/write_value.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

/// What the steps of the guided tour are made of.
namespace Tool {

/// Throws when a step does not do what it should: "the demo went wrong: <what>".
void Expect(bool condition, const std::string& what);

/// The value of a file below `folder`. Errors name the file by `name`.
template <class T>
Pellum::Ref<T> ReadExample(const std::filesystem::path& folder, const std::string& name) {
    Tavik::Json::DecodeOptions options;
    options.sourceName = name;
    const std::string text = Tavik::Json::ReadInput(Pellum::ToName(folder / name), options.limits.inputBytes);
    return Tavik::Json::DecodeAs<T>(text, options);
}

/// Expects that nothing required is missing.
void ExpectValid(const Tavik::Any& value);
/// Encodes the value for a version, reads it back as a peer of that version would, and expects that nothing
/// but the properties returned has got lost: those that the version does not have.
std::vector<SetProperty> SendTo(const Tavik::Version& version, const Tavik::Any& value);

/// The steps on the conversion request among the examples in `folder`.
void ShowConversionRequest(const std::filesystem::path& folder, Narrator& narrator);

} // namespace Tool
