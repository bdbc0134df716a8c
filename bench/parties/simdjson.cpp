#include "bench/measure.h"
#include "bench/names.h"
#include "bench/parties/parties.h"

#include <simdjson.h>

#include <memory>

/// How fast JSON can be read when nothing is made of it but a tape: the parser and its storage are used again
/// and again, and the text has the padding that it asks for.
namespace Bench {

namespace {

void AddSimdjson(const Workload& workload) {
    const auto parser = std::make_shared<simdjson::dom::parser>();
    const auto text = std::make_shared<simdjson::padded_string>(workload.text);
    CheckContent(kSimdjson, workload, simdjson::minify(parser->parse(*text).value()));

    AddOperation(kDecode, workload, kSimdjson, [parser, text] { return parser->parse(*text).value(); });
}

/// What is kept is the parser, which owns what it has read.
std::unique_ptr<simdjson::dom::parser> ParseSimd(const std::string& text) {
    auto parser = std::make_unique<simdjson::dom::parser>();
    benchmark::DoNotOptimize(parser->parse(text).value());
    return parser;
}

} // namespace

Party GetSimdjson() {
    return {kSimdjson, AddSimdjson, MakeDecodeMany(ParseSimd)};
}

} // namespace Bench
