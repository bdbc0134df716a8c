#include "tools/morvane/value/read_value.h"

#include "tavik/codec/json/file.h"
#include "tavik/codec/json/json.h"
#include "tavik/type/type.h"
#include "tools/morvane/command.h"
#include "tools/morvane/model/library.h"
#include "tools/morvane/model/lookup.h"

namespace Tool {

void AddInputOptions(Command command, InputOptions& options, const char* versionOption) {
    command.Add("--type", options.type, "TYPE", "Type of the value, where the value does not name it");
    command.Add(versionOption, options.version, "VERSION", "API version that the value has to keep to");
    command.AddFlag("--lenient", options.lenient, "Pass over properties that the type does not have");
}

Pellum::Ref<Tavik::Any> ReadValue(const std::string& path, const InputOptions& options) {
    Tavik::Json::DecodeOptions decode;
    decode.version = FindVersion(options.version);
    decode.expectedType = options.type.empty() ? nullptr : &FindDataType(options.type);
    decode.lenient = options.lenient;
    const std::string text = Tavik::Json::ReadInput(path, decode.limits.inputBytes);
    try {
        return Tavik::Json::Decode(text, decode);
    } catch (const Tavik::Json::DecodeError& error) {
        throw InputError(
            GetSourceName(path) + ':' + std::to_string(error.GetLine()) + ':'
                + std::to_string(error.GetColumn()),
            (error.GetPath().empty() ? "" : error.GetPath() + ": ") + error.GetReason());
    }
}

std::string GetSourceName(const std::string& path) {
    return path == "-" ? "standard input" : path;
}

std::string GetTypeName(const Tavik::Any& value) {
    return value._GetType()->GetName();
}

} // namespace Tool
