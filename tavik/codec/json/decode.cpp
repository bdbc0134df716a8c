#include "tavik/codec/json/event_parser.h"
#include "tavik/codec/json/json.h"
#include "tavik/codec/json/value_builder.h"

namespace Tavik::Json {

Pellum::Ref<Any> Decode(std::string_view text, const DecodeOptions& options) {
    ValueBuilder builder(options);
    ParseEvents(text, {options.limits, options.sourceName}, builder);
    return builder.GetResult();
}

} // namespace Tavik::Json
