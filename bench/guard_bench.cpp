#include "bench/access.h"
#include "bench/calls.h"
#include "bench/ours.h"

#include <benchmark/benchmark.h>
#include <valgrind/callgrind.h>

#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>

/// Does everything a few times below callgrind, which writes a file for each operation with the number of
/// instructions, "<name> x <times>" in it. Counting them tells a change of some percent on any machine, busy
/// or not, which no clock does.
namespace {

/// The heap is then as it stays.
constexpr int kWarmUps = 3;
constexpr int kFewTimes = 10;
constexpr int kManyTimes = 1000;

template <class Body>
void Count(const std::string& name, int times, Body body) {
    for (int i = 0; i < kWarmUps; ++i) {
        benchmark::DoNotOptimize(body());
    }
    const std::string label =
        name + " x " + std::to_string(times); // has to outlive the statements of the macro
    CALLGRIND_START_INSTRUMENTATION;
    CALLGRIND_ZERO_STATS;
    for (int i = 0; i < times; ++i) {
        benchmark::DoNotOptimize(body());
    }
    CALLGRIND_DUMP_STATS_AT(label.c_str());
    CALLGRIND_STOP_INSTRUMENTATION;
}

void CountAll() {
    for (const Bench::Workload& workload : Bench::GetWorkloads()) {
        Bench::ForEachOperation(workload, [&](const std::string& operation, auto body) {
            Count(operation + '/' + workload.name, kFewTimes, body);
        });
    }
    Bench::ForEachAccess([](const std::string& operation, const std::string& what, auto body) {
        Count(operation + '/' + what, kManyTimes, body);
    });
    Count("call/a small method", kFewTimes, Bench::MakeSerialCall());
}

} // namespace

int main() {
    if (RUNNING_ON_VALGRIND == 0) {
        std::cerr << "guard_bench: runs below callgrind only: see scripts/bench-guard.sh\n";
        return 2;
    }
    try {
        CountAll();
        return EXIT_SUCCESS;
    } catch (const std::exception& e) {
        std::cerr << "guard_bench: " << e.what() << '\n';
        return EXIT_FAILURE;
    }
}
