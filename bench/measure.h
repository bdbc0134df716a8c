#pragma once

#include "bench/workload.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <utility>

namespace Bench {

/// The name of a benchmark is all that the table knows of it.
inline std::string BenchmarkName(
    const std::string& operation, const std::string& workload, const std::string& party) {
    return operation + '/' + workload + '/' + party;
}

/// Registers a benchmark of `body`, whose result is destroyed inside of the measured time.
template <class Body>
benchmark::internal::Benchmark* AddTimed(const std::string& name, Body body) {
    return benchmark::RegisterBenchmark(
        name.c_str(), [body = std::move(body)](benchmark::State& state) mutable {
            for (auto _ : state) {
                benchmark::DoNotOptimize(body());
            }
        });
}

/// The same for what goes through a text of `bytes`: speed is measured, in bytes a second.
template <class Body>
benchmark::internal::Benchmark* AddSpeed(const std::string& name, std::size_t bytes, Body body) {
    return benchmark::RegisterBenchmark(
        name.c_str(), [bytes, body = std::move(body)](benchmark::State& state) mutable {
            for (auto _ : state) {
                benchmark::DoNotOptimize(body());
            }
            state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
        });
}

/// The same for what is counted: how often it is done in a second of the clock on the wall.
template <class Body>
benchmark::internal::Benchmark* AddRate(const std::string& name, Body body) {
    return benchmark::RegisterBenchmark(
               name.c_str(),
               [body = std::move(body)](benchmark::State& state) mutable {
                   for (auto _ : state) {
                       benchmark::DoNotOptimize(body());
                   }
                   state.SetItemsProcessed(state.iterations());
               })
        ->UseRealTime();
}

/// The time that one of `count` equal parts of the work takes.
template <class Body>
benchmark::internal::Benchmark* AddPerPart(const std::string& name, std::size_t count, Body body) {
    return benchmark::RegisterBenchmark(
        name.c_str(), [count, body = std::move(body)](benchmark::State& state) mutable {
            for (auto _ : state) {
                benchmark::DoNotOptimize(body());
            }
            using benchmark::Counter;
            state.counters["secondsEach"] = Counter(
                static_cast<double>(count),
                static_cast<Counter::Flags>(Counter::kIsIterationInvariantRate | Counter::kInvert));
        });
}

/// Whether the operation writes or reads a message, so that speed is what counts.
bool IsCodec(const std::string& operation);

/// One party's operation on a workload. Speed goes by the length of our text, whatever the party writes.
template <class Body>
void AddOperation(const char* operation, const Workload& workload, const char* party, Body body) {
    const std::string name = BenchmarkName(operation, workload.name, party);
    if (IsCodec(operation)) {
        AddSpeed(name, workload.text.size(), std::move(body));
    } else {
        AddTimed(name, std::move(body));
    }
}

/// What the main function of every benchmark program does once all is registered; returns the exit code.
int RunBenchmarks(int argc, char** argv);

} // namespace Bench
