#include "bench/measure.h"
#include "bench/names.h"
#include "bench/parties/parties.h"
#include "pellum/error/exception.h"
#include "tavik/codec/json/json.h"

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <memory>

/// A tree of JSON whose nodes stand in large blocks.
namespace Bench {

namespace {

using Document = std::unique_ptr<rapidjson::Document>;

Document ParseRapid(const std::string& text) {
    auto document = std::make_unique<rapidjson::Document>();
    document->Parse(text.data(), text.size());
    if (document->HasParseError()) {
        throw Pellum::Exception("RapidJSON can not read a workload");
    }
    return document;
}

Document CopyRapid(const rapidjson::Document& from) {
    auto copy = std::make_unique<rapidjson::Document>();
    copy->CopyFrom(from, copy->GetAllocator());
    return copy;
}

rapidjson::StringBuffer WriteRapid(const rapidjson::Document& document) {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    document.Accept(writer);
    return buffer;
}

struct RapidTrees {
    Document tree;
    Document same;
    Document lastDiffers;
};

void AddRapid(const Workload& workload) {
    const auto trees = std::make_shared<RapidTrees>();
    trees->tree = ParseRapid(workload.text);
    trees->same = CopyRapid(*trees->tree);
    trees->lastDiffers = ParseRapid(Tavik::Json::Encode(workload.lastDiffers.Get()));
    CheckContent(kRapidJson, workload, WriteRapid(*trees->tree).GetString());

    const auto add = [&](const char* operation, auto body) {
        AddOperation(operation, workload, kRapidJson, body);
    };
    add(kClone, [trees] { return CopyRapid(*trees->tree); });
    add(kEquality, [trees] { return *trees->tree == *trees->same; });
    add(kLateInequality, [trees] { return *trees->tree == *trees->lastDiffers; });
    add(kEncode, [trees] { return WriteRapid(*trees->tree); });
    add(kDecode, [text = &workload.text] { return ParseRapid(*text); });
}

} // namespace

Party GetRapidJson() {
    return {kRapidJson, AddRapid, MakeDecodeMany(ParseRapid)};
}

} // namespace Bench
