#include "bench/names.h"
#include "bench/result_line.h"
#include "tavik/type/type.h"
#include "tavik/type/type_registry.h"

#include <dlfcn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
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

double Median(std::vector<Sample> samples, double Sample::*value) {
    const auto middle = samples.begin() + static_cast<std::ptrdiff_t>(samples.size() / 2);
    std::nth_element(samples.begin(), middle, samples.end(), [value](const Sample& a, const Sample& b) {
        return a.*value < b.*value;
    });
    return (*middle).*value;
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
    Bench::PrintResult(Bench::kColdStart, kLibraryOfTypes, Bench::kOurs, Median(ours, &Sample::whole), "ns");
    Bench::PrintResult(Bench::kLoad, kLibraryOfTypes, Bench::kOurs, Median(ours, &Sample::load), "ns");
    if (hasPeer) {
        Bench::PrintResult(Bench::kColdStart, kLibraryOfTypes, argv[2], Median(peers, &Sample::whole), "ns");
    }
    return EXIT_SUCCESS;
}
