#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace Bench {

/// Prints the usual table and, behind it, what each task costs here as a multiple of what it costs with
/// something else. Benchmarks are named "<task>/<who>"; the one called "<task>/morvane" is ours.
class RatioReporter final : public benchmark::ConsoleReporter {
public:
    RatioReporter();

    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

private:
    /// Nanoseconds by task, then by who.
    std::map<std::string, std::map<std::string, double>> m_times;
};

} // namespace Bench
