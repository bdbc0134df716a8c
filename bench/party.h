#pragma once

#include "bench/workload.h"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace Bench {

/// Reads a text many times; with `keep` all that was read lives until the end.
using DecodeMany = std::function<void(const std::string& text, std::size_t count, bool keep)>;

/// One who is measured: ourselves, or what one would use instead.
struct Party {
    const char* name; ///< see names.h
    /// Registers by `AddOperation` all that the party does. Throws `Pellum::Exception` when it turns out to
    /// hold anything but the content of the workload, as times would mean nothing then.
    void (*addOperations)(const Workload& workload);
    DecodeMany decodeMany;
};

/// Those whose packages were there when this was built; ourselves first.
std::vector<Party> GetParties();

/// `DecodeMany` of a function that makes whatever stands for a value of a text.
template <class Decode>
DecodeMany MakeDecodeMany(Decode decode) {
    return [decode](const std::string& text, std::size_t count, bool keep) {
        std::vector<decltype(decode(text))> kept;
        if (keep) {
            kept.reserve(count);
        }
        for (std::size_t i = 0; i < count; ++i) {
            auto value = decode(text);
            if (keep) {
                kept.push_back(std::move(value));
            }
        }
    };
}

/// Throws `Pellum::Exception` unless `text`, which the party wrote of all that it holds, is the workload.
void CheckContent(const char* party, const Workload& workload, const std::string& text);

} // namespace Bench
