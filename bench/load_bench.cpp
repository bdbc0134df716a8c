#include "bench/names.h"
#include "bench/result_line.h"
#include "tavik/type/type.h"
#include "tavik/type/type_registry.h"

#include <dlfcn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <iostream>
#include <vector>

/// What it costs to load the library of types, and that of a peer: each time in a new process, because a
/// library is loaded once. The runtimes are there before, tavik and the peer's; our library of the
/// infrastructure's types is not, and counts.
namespace {

using Clock = std::chrono::steady_clock;

constexpr const char* kLibraryOfTypes = "types library";

/// One cold start. Nanoseconds.
struct Sample {
    double load = 0;  ///< until dlopen has returned
    double whole = 0; ///< until all types are made and found by name
};

double Since(Clock::time_point start) {
    return std::chrono::duration<double, std::nano>(Clock::now() - start).count();
}

void Load(const char* library) {
    if (dlopen(library, RTLD_NOW) == nullptr) {
        std::cerr << dlerror() << '\n';
        _exit(EXIT_FAILURE);
    }
}

/// Has all types of the library that was loaded last made, and finds each by its name.
void FindTypes() {
    Tavik::TypeRegistry& registry = Tavik::TypeRegistry::Instance();
    const Tavik::LoadedLibrary types = registry.GetLibraries().back(); // loads
    for (const Tavik::Type* type : types.types) {
        if (registry.FindByName(type->GetName()) != type) {
            std::cerr << type->GetName() << " is not found\n";
            _exit(EXIT_FAILURE);
        }
    }
}

Sample MeasureOurs(const char* library) {
    const Clock::time_point start = Clock::now();
    Sample sample;
    Load(library);
    sample.load = Since(start);
    FindTypes();
    sample.whole = Since(start);
    return sample;
}

Sample MeasurePeer(const char* library) {
    const Clock::time_point start = Clock::now();
    Load(library);
    const double load = Since(start);
    return {load, load};
}

/// Measures in a child process; false when that fails.
bool MeasureApart(Sample (*measure)(const char*), const char* library, std::vector<Sample>& samples) {
    int ends[2];
    if (pipe(ends) != 0) {
        return false;
    }
    const pid_t child = fork();
    if (child == 0) {
        const Sample measured = measure(library);
        const bool isWritten = write(ends[1], &measured, sizeof measured) == sizeof measured;
        _exit(isWritten ? EXIT_SUCCESS : EXIT_FAILURE);
    }
    close(ends[1]);
    Sample sample;
    const bool isRead = child > 0 && read(ends[0], &sample, sizeof sample) == sizeof sample;
    close(ends[0]);
    waitpid(child, nullptr, 0);
    samples.push_back(sample);
    return isRead;
}

/// One line a start, so that ours and the peer's are compared pair by pair.
void Print(
    const char* operation, const char* party, const std::vector<Sample>& samples, double Sample::*value) {
    for (const Sample& sample : samples) {
        Bench::PrintResult(operation, kLibraryOfTypes, party, sample.*value, "ns");
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2 && argc != 5) {
        std::cerr << "usage: load_bench LIBRARY [PEER PEERS_LIBRARY PEERS_RUNTIME]\n";
        return 2;
    }
    const bool hasPeer = argc == 5;
    if (hasPeer) {
        Load(argv[4]);
    }
    constexpr int kRuns = 51;
    std::vector<Sample> ours;
    std::vector<Sample> peers;
    for (int run = 0; run < kRuns; ++run) {
        if (!MeasureApart(MeasureOurs, argv[1], ours)
            || (hasPeer && !MeasureApart(MeasurePeer, argv[3], peers))) {
            return EXIT_FAILURE;
        }
    }
    Print(Bench::kColdStart, Bench::kOurs, ours, &Sample::whole);
    Print(Bench::kLoad, Bench::kOurs, ours, &Sample::load);
    if (hasPeer) {
        Print(Bench::kColdStart, argv[2], peers, &Sample::whole);
    }
    return EXIT_SUCCESS;
}
