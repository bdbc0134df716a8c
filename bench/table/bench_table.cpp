#include "bench/table/report.h"

#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

/// Prints what the benchmark programs have measured.
int main(int argc, char** argv) {
    std::vector<std::string> files;
    std::string markdown;
    std::string heading;
    for (int i = 1; i < argc; ++i) {
        if (std::string(argv[i]) == "--markdown" && i + 1 < argc) {
            markdown = argv[++i];
        } else if (std::string(argv[i]) == "--heading" && i + 1 < argc) {
            heading = argv[++i];
        } else {
            files.emplace_back(argv[i]);
        }
    }
    if (files.empty()) {
        std::cerr << "usage: bench_table [--heading TEXT] [--markdown OUTPUT] RESULTS...\n";
        return 2;
    }
    try {
        std::vector<Bench::Measurement> measurements;
        for (const std::string& file : files) {
            const std::vector<Bench::Measurement> read = Bench::ReadMeasurements(file);
            measurements.insert(measurements.end(), read.begin(), read.end());
        }
        std::cout << heading << "\n\n";
        Bench::PrintReport(measurements, false, std::cout);
        if (!markdown.empty()) {
            std::ofstream out(markdown);
            out << heading << "\n\n";
            Bench::PrintReport(measurements, true, out);
            out.flush();
            if (!out) {
                throw std::runtime_error(markdown + " can not be written");
            }
        }
        return EXIT_SUCCESS;
    } catch (const std::exception& e) {
        std::cerr << "bench_table: " << e.what() << '\n';
        return EXIT_FAILURE;
    }
}
