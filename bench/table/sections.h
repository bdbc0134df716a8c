#pragma once

#include "bench/table/measurement.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace Bench {

/// What was measured of one operation on one workload.
struct Row {
    std::string operation;
    std::string workload;
    Unit unit;
    /// By party: one number for each round of the benchmarks, in the same order for all; one for what has no
    /// rounds.
    std::map<std::string, std::vector<double>> values;

    /// The median; nothing when the party was not measured.
    std::optional<double> Find(const std::string& party) const;
};

/// The middle one, the larger of two. There is at least one.
double Median(std::vector<double> numbers);

/// Rows that belong together, and who was measured in any of them, ours first.
struct Section {
    std::string title;
    std::string note; ///< what is not plain from the heads
    std::vector<Row> rows;
    std::vector<std::string> parties;
};

/// All measurements, in the order in which people read them: benchmarks run in any.
std::vector<Section> MakeSections(const std::vector<Measurement>& measurements);

} // namespace Bench
