#include "bench/measure.h"
#include "bench/names.h"
#include "bench/parties/parties.h"
#include "tavik/codec/json/json.h"

#include <nlohmann/json.hpp>

#include <memory>

/// A tree of JSON that knows nothing of types.
namespace Bench {

namespace {

struct NlohmannTrees {
    nlohmann::json tree;
    nlohmann::json same;
    nlohmann::json lastDiffers;
};

void AddNlohmann(const Workload& workload) {
    auto trees = std::make_shared<NlohmannTrees>();
    trees->tree = nlohmann::json::parse(workload.text);
    trees->same = trees->tree;
    trees->lastDiffers = nlohmann::json::parse(Tavik::Json::Encode(workload.lastDiffers.Get()));
    CheckContent(kNlohmann, workload, trees->tree.dump());

    const auto add = [&](const char* operation, auto body) {
        AddOperation(operation, workload, kNlohmann, body);
    };
    add(kClone, [trees] { return nlohmann::json(trees->tree); });
    add(kEquality, [trees] { return trees->tree == trees->same; });
    add(kLateInequality, [trees] { return trees->tree == trees->lastDiffers; });
    add(kDifference, [trees] { return nlohmann::json::diff(trees->tree, trees->lastDiffers); });
    add(kEncode, [trees] { return trees->tree.dump(); });
    add(kDecode, [text = &workload.text] { return nlohmann::json::parse(*text); });
}

} // namespace

Party GetNlohmann() {
    return {kNlohmann, AddNlohmann, MakeDecodeMany([](const std::string& text) {
                return nlohmann::json::parse(text);
            })};
}

} // namespace Bench
