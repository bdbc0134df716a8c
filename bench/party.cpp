#include "bench/party.h"

#include "bench/parties/parties.h"
#include "pellum/error/exception.h"
#include "tavik/codec/json/json.h"

#ifdef BENCH_PROTOBUF
#include "bench/proto/party.h"
#endif

namespace Bench {

std::vector<Party> GetParties() {
    return {
        GetOurs(),
#ifdef BENCH_PROTOBUF
        GetProtobuf(),
#endif
#ifdef BENCH_RAPIDJSON
        GetRapidJson(),
#endif
#ifdef BENCH_SIMDJSON
        GetSimdjson(),
#endif
#ifdef BENCH_NLOHMANN
        GetNlohmann(),
#endif
        GetPlain(),
    };
}

void CheckContent(const char* party, const Workload& workload, const std::string& text) {
    if (!Tavik::Json::Decode(text)->_IsEqual(workload.value.Get(), false)) {
        throw Pellum::Exception(std::string(party) + " holds something else than " + workload.name);
    }
}

} // namespace Bench
