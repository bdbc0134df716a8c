#include "bench/ours.h"

#include "bench/measure.h"
#include "bench/parties/parties.h"

namespace Bench {

namespace {

void AddOurs(const Workload& workload) {
    CheckContent(kOurs, workload, Tavik::Json::Encode(workload.value.Get()));
    ForEachOperation(
        workload, [&](const char* operation, auto body) { AddOperation(operation, workload, kOurs, body); });
}

} // namespace

Party GetOurs() {
    return {
        kOurs, AddOurs, MakeDecodeMany([](const std::string& text) { return Tavik::Json::Decode(text); })};
}

} // namespace Bench
