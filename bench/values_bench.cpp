#include "bench/access.h"
#include "bench/measure.h"
#include "bench/party.h"

#include <cstdlib>
#include <exception>
#include <iostream>

/// What is done with values, and how their fields are reached: by us, and by what one would use instead.
int main(int argc, char** argv) {
    try {
        for (const Bench::Workload& workload : Bench::GetWorkloads()) {
            for (const Bench::Party& party : Bench::GetParties()) {
                party.addOperations(workload);
            }
        }
        Bench::AddAccess();
        return Bench::RunBenchmarks(argc, argv);
    } catch (const std::exception& e) {
        std::cerr << "values_bench: " << e.what() << '\n';
        return EXIT_FAILURE;
    }
}
