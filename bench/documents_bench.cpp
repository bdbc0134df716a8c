#include "bench/documents_bench.h"

#include "tavik/codec/json/file.h"
#include "tavik/codec/json/json.h"

#include <benchmark/benchmark.h>
#include <nlohmann/json.hpp>

#include <memory>
#include <string>

namespace Bench {

namespace {

/// An example as text, as a value, and as a tree of JSON that knows nothing of types.
struct Document {
    std::string text;
    Pellum::Ref<Tavik::Any> value;
    Pellum::Ref<Tavik::Any> same;
    nlohmann::json tree;
    nlohmann::json sameTree;
};

std::shared_ptr<const Document> Load(const std::string& path) {
    auto document = std::make_shared<Document>();
    document->value =
        Tavik::Json::Decode(Tavik::Json::ReadInput(path, Tavik::Json::DecodeOptions().limits.inputBytes));
    document->text = Tavik::Json::Encode(document->value.Get());
    document->same = Pellum::Ref<Tavik::Any>(document->value->_Clone());
    document->tree = nlohmann::json::parse(document->text);
    document->sameTree = document->tree;
    return document;
}

template <class Body>
void Add(const std::string& name, const std::shared_ptr<const Document>& document, Body body) {
    benchmark::RegisterBenchmark(name.c_str(), [document, body](benchmark::State& state) {
        for (auto _ : state) {
            body(*document);
        }
        state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(document->text.size()));
    });
}

} // namespace

void RegisterDocuments() {
    for (const std::string name : {"conversion_request", "linux_machine", "events"}) {
        const auto document = Load(MORVANE_SOURCE_EXAMPLES "/" + name + ".json");
        Add(name + " decode/morvane", document,
            [](const Document& d) { benchmark::DoNotOptimize(Tavik::Json::Decode(d.text)); });
        Add(name + " decode/nlohmann", document,
            [](const Document& d) { benchmark::DoNotOptimize(nlohmann::json::parse(d.text)); });
        Add(name + " encode/morvane", document,
            [](const Document& d) { benchmark::DoNotOptimize(Tavik::Json::Encode(d.value.Get())); });
        Add(name + " encode/nlohmann", document,
            [](const Document& d) { benchmark::DoNotOptimize(d.tree.dump()); });
        Add(name + " clone/morvane", document,
            [](const Document& d) { benchmark::DoNotOptimize(Pellum::Ref<Tavik::Any>(d.value->_Clone())); });
        Add(name + " clone/nlohmann", document,
            [](const Document& d) { benchmark::DoNotOptimize(nlohmann::json(d.tree)); });
        Add(name + " equality/morvane", document,
            [](const Document& d) { benchmark::DoNotOptimize(d.value->_IsEqual(d.same.Get(), false)); });
        Add(name + " equality/nlohmann", document,
            [](const Document& d) { benchmark::DoNotOptimize(d.tree == d.sameTree); });
    }
}

} // namespace Bench
