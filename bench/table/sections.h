#pragma once

#include "bench/table/measurement.h"

#include <map>
#include <string>
#include <vector>

namespace Bench {

/// What was measured of one operation on one workload.
struct Row {
    std::string operation;
    std::string workload;
    Unit unit;
    std::map<std::string, double> values; ///< by party

    /// Null when the party was not measured.
    const double* Find(const std::string& party) const;
};

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
