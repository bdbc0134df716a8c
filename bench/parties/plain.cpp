#include "bench/measure.h"
#include "bench/names.h"
#include "bench/parties/parties.h"

#include <cstring>
#include <memory>

/// The floor: the text is copied into new storage, and nothing is looked at.
namespace Bench {

namespace {

std::unique_ptr<char[]> CopyText(const std::string& text) {
    std::unique_ptr<char[]> copy(new char[text.size()]);
    std::memcpy(copy.get(), text.data(), text.size());
    benchmark::DoNotOptimize(copy.get());
    benchmark::ClobberMemory();
    return copy;
}

void AddPlain(const Workload& workload) {
    for (const char* operation : {kClone, kEncode, kDecode}) {
        AddOperation(operation, workload, kPlain, [text = &workload.text] { return CopyText(*text); });
    }
}

} // namespace

Party GetPlain() {
    return {kPlain, AddPlain, MakeDecodeMany(CopyText)};
}

} // namespace Bench
