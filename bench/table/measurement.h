#pragma once

#include <string>
#include <vector>

namespace Bench {

/// How much is better, and how a number is shown, depends on what it is.
enum class Unit { Nanoseconds, BytesPerSecond, PerSecond, Bytes };

/// One number that a program measured.
struct Measurement {
    std::string operation;
    std::string workload;
    std::string party;
    double value;
    Unit unit;
};

/// Whether more of it is better.
inline bool IsRate(Unit unit) {
    return unit == Unit::BytesPerSecond || unit == Unit::PerSecond;
}

/// All that a file tells, in its order: the JSON of a benchmark program (`*.json`), or lines of
/// `PrintResult`. Throws `std::runtime_error` for what is neither.
std::vector<Measurement> ReadMeasurements(const std::string& path);

} // namespace Bench
