#pragma once

#include "tavik/codec/json/json.h"
#include "tavik/codec/json/scalar_reader.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace Tavik::Json {

/// Takes the events of a JSON parser, which are well-formed: every begin has its end, a key comes before
/// every value in an object.
///
/// Every event throws `Refusal` when it is not what belongs there; `GetPath` then names the place. What else
/// it throws passes through the parser.
class EventSink {
public:
    virtual void BeginObject() = 0;
    virtual void EndObject() = 0;
    virtual void BeginArray() = 0;
    virtual void EndArray() = 0;
    virtual void Key(std::string_view name) = 0;
    virtual void Scalar(const Token& token) = 0;
    virtual void Null() = 0;

    /// Path of the place that is being read: "source.location.port", "disk[2].size".
    virtual std::string GetPath() const = 0;

protected:
    EventSink() = default;
    EventSink(const EventSink&) = default;
    EventSink& operator=(const EventSink&) = default;
    ~EventSink() = default;
};

struct ParseOptions {
    const DecodeLimits& limits;
    const std::string& sourceName;
    /// Objects around the values that the limit of depth is for.
    std::size_t outerDepth = 0;
};

/// Tells `sink` of all that is in the text. Throws `DecodeError` at the first thing that is wrong.
void ParseEvents(std::string_view text, const ParseOptions& options, EventSink& sink);

} // namespace Tavik::Json
