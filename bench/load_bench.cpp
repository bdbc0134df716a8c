#include "tavik/type/type.h"
#include "tavik/type/type_registry.h"

#include <dlfcn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iomanip>
#include <iostream>
#include <string>
#include <vector>

/// What it costs to load the library of types: each time in a new process, because a library is loaded once.
namespace {

using Clock = std::chrono::steady_clock;

/// One cold start. Milliseconds.
struct Sample {
    double load = 0;  ///< until dlopen has returned
    double types = 0; ///< then until all types are made and found by name
    std::size_t count = 0;
};

double Since(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

Sample Measure(const char* library) {
    Sample sample;
    const Clock::time_point start = Clock::now();
    if (dlopen(library, RTLD_NOW) == nullptr) {
        std::cerr << dlerror() << '\n';
        return sample;
    }
    sample.load = Since(start);
    const Clock::time_point loaded = Clock::now();
    Tavik::TypeRegistry& registry = Tavik::TypeRegistry::Instance();
    const Tavik::LoadedLibrary types = registry.GetLibraries().back(); // loads
    for (const Tavik::Type* type : types.types) {
        sample.count += registry.FindByName(type->GetName()) == type ? 1 : 0;
    }
    sample.types = Since(loaded);
    return sample;
}

/// The same in a child process; false when that fails.
bool MeasureApart(const char* library, Sample& sample) {
    int ends[2];
    if (pipe(ends) != 0) {
        return false;
    }
    const pid_t child = fork();
    if (child == 0) {
        const Sample measured = Measure(library);
        const bool isWritten = write(ends[1], &measured, sizeof measured) == sizeof measured;
        _exit(isWritten ? EXIT_SUCCESS : EXIT_FAILURE);
    }
    close(ends[1]);
    const bool isRead = child > 0 && read(ends[0], &sample, sizeof sample) == sizeof sample;
    close(ends[0]);
    waitpid(child, nullptr, 0);
    return isRead && sample.count > 0;
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
    if (argc != 2) {
        std::cerr << "usage: load_bench LIBRARY\n";
        return 2;
    }
    constexpr int kRuns = 51;
    std::vector<Sample> samples(kRuns);
    for (Sample& sample : samples) {
        if (!MeasureApart(argv[1], sample)) {
            return EXIT_FAILURE;
        }
    }
    const std::string made = "all " + std::to_string(samples.front().count) + " types made and found by name";
    std::cout << std::fixed << std::setprecision(2);
    for (const auto& [what, value] :
         {std::pair<std::string, double Sample::*>{"loading the library (dlopen)", &Sample::load},
          {made, &Sample::types}}) {
        std::cout << "  " << std::left << std::setw(52) << what << std::right << std::setw(8)
                  << Median(samples, value) << " ms\n";
    }
    return EXIT_SUCCESS;
}
