#include "bench/names.h"
#include "bench/party.h"
#include "bench/result_line.h"
#include "pellum/error/exception.h"

#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <limits>
#include <string>

/// By how much the peak of a process's memory rises while a message is read ten thousand times: for every
/// party in a new process, which has read the message once.
namespace {

using Bench::Workload;

constexpr std::size_t kCount = 10'000;

/// Bytes of the process that were in memory at most since `ForgetPeak`.
double GetPeak() {
    std::ifstream status("/proc/self/status");
    std::string word;
    while (status >> word) {
        if (word == "VmHWM:") {
            double kilobytes = 0;
            status >> kilobytes;
            return kilobytes * 1024;
        }
        status.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
    }
    throw Pellum::Exception("the system does not tell the peak of memory");
}

/// The peak is what is in memory now.
void ForgetPeak() {
    std::ofstream request("/proc/self/clear_refs");
    request << 5 << std::flush;
    if (!request) {
        throw Pellum::Exception("the system does not forget the peak of memory");
    }
}

double MeasurePeak(const Bench::DecodeMany& decodeMany, const std::string& text, bool keep) {
    ForgetPeak();
    const double before = GetPeak();
    decodeMany(text, kCount, keep);
    return GetPeak() - before;
}

void PrintPeak(const Bench::Party& party, const char* operation, const char* name, bool keep) {
    const Workload& workload = Bench::GetWorkload(name);
    const pid_t child = fork();
    if (child == 0) {
        try {
            // What is made, or read from disk, once is not counted, but what was freed is.
            party.decodeMany(workload.text, 1, false);
            malloc_trim(0);
            const double peak = MeasurePeak(party.decodeMany, workload.text, keep);
            Bench::PrintResult(operation, name, party.name, peak, "B");
            std::cout.flush();
            _exit(EXIT_SUCCESS);
        } catch (const std::exception& e) {
            std::cerr << "memory_bench: " << party.name << ": " << e.what() << '\n';
            _exit(EXIT_FAILURE);
        }
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child || status != 0) {
        throw Pellum::Exception(std::string("nothing was measured of ") + party.name);
    }
}

} // namespace

int main() {
    try {
        Bench::GetWorkloads();
        for (const Bench::Party& party : Bench::GetParties()) {
            PrintPeak(party, Bench::kMemoryKept, "connection_request", true);
            PrintPeak(party, Bench::kMemoryInTurn, "conversion_request", false);
        }
        return EXIT_SUCCESS;
    } catch (const std::exception& e) {
        std::cerr << "memory_bench: " << e.what() << '\n';
        return EXIT_FAILURE;
    }
}
