#include "bench/calls.h"
#include "bench/measure.h"
#include "bench/names.h"
#include "bench/ours.h"

#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>

/// How our operations grow with the size of values, what a second thread brings, and what calls cost.
namespace {

using Bench::Workload;

/// Time for each event of larger and larger arrays; ours is that of the largest one.
void AddGrowth() {
    constexpr std::size_t kMost = 10'000;
    for (const std::size_t count : {std::size_t{10}, std::size_t{100}, std::size_t{1000}, kMost}) {
        const std::string party = count == kMost ? Bench::kOurs : std::to_string(count) + " events";
        Bench::ForEachSizedOperation(Bench::MakeEvents(count), [&](const std::string& operation, auto body) {
            Bench::AddPerPart(
                Bench::BenchmarkName(Bench::kGrowth + operation, "10000 events", party), count, body);
        });
    }
}

/// Throughput of two threads that work on the same value; ours is that of two.
void AddThreads(const Workload& workload) {
    Bench::ForEachSizedOperation(workload, [&](const std::string& operation, auto body) {
        if (operation == Bench::kClone || operation == Bench::kEncode || operation == Bench::kDecode) {
            const std::string name = Bench::kTwoThreads + operation;
            Bench::AddRate(Bench::BenchmarkName(name, workload.name, "1 thread"), body);
            Bench::AddRate(Bench::BenchmarkName(name, workload.name, Bench::kOurs), body)->Threads(2);
        }
    });
}

} // namespace

int main(int argc, char** argv) {
    try {
        AddGrowth();
        for (const Workload& workload : Bench::GetWorkloads()) {
            AddThreads(workload);
        }
        Bench::AddCalls();
        return Bench::RunBenchmarks(argc, argv);
    } catch (const std::exception& e) {
        std::cerr << "scaling_bench: " << e.what() << '\n';
        return EXIT_FAILURE;
    }
}
