#include "bench/ratio_reporter.h"

#include <unistd.h>

#include <iomanip>

namespace Bench {

RatioReporter::RatioReporter() : ConsoleReporter(isatty(STDOUT_FILENO) != 0 ? OO_Defaults : OO_Tabular) {}

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs) {
        const std::string name = run.run_name.function_name;
        const std::size_t slash = name.find('/');
        if (slash != std::string::npos && !run.error_occurred && run.run_type == Run::RT_Iteration) {
            // Where threads work for each other, what counts is how long it takes.
            const bool isReal = run.run_name.time_type == "real_time";
            m_times[name.substr(0, slash)][name.substr(slash + 1)] =
                isReal ? run.GetAdjustedRealTime() : run.GetAdjustedCPUTime();
        }
    }
    ConsoleReporter::ReportRuns(runs);
}

void RatioReporter::Finalize() {
    std::ostream& out = GetOutputStream();
    out << "\nTime of ours as a multiple of the other's (below 1: ours is faster)\n";
    for (const auto& [task, times] : m_times) {
        const auto ours = times.find("morvane");
        for (const auto& [who, time] : times) {
            if (ours != times.end() && who != "morvane") {
                out << "  " << std::left << std::setw(30) << task << std::setw(28) << ("beside " + who)
                    << std::right << std::fixed << std::setprecision(2) << std::setw(8) << ours->second / time
                    << '\n';
            }
        }
    }
    ConsoleReporter::Finalize();
}

} // namespace Bench
