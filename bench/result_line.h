#pragma once

#include <iostream>
#include <string>

namespace Bench {

/// What the programs that are no benchmarks write for the table: a line of fields between tabs. Units are ns
/// and B.
inline void PrintResult(
    const std::string& operation, const std::string& workload, const std::string& party, double value,
    const char* unit) {
    std::cout << operation << '\t' << workload << '\t' << party << '\t' << std::fixed << value << '\t' << unit
              << '\n';
}

} // namespace Bench
