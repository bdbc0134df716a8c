#include "bench/measure.h"

#include "bench/names.h"

#include <cstdlib>

namespace Bench {

bool IsCodec(const std::string& operation) {
    return operation == kEncode || operation == kDecode || operation == kEncodeBinary
        || operation == kDecodeBinary;
}

int RunBenchmarks(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return EXIT_FAILURE;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return EXIT_SUCCESS;
}

} // namespace Bench
