#include "bench/table/measurement.h"

#include <boost/json/src.hpp>

#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <string_view>

namespace Bench {

namespace {

constexpr std::string_view kJsonSuffix = ".json";

/// "<operation>/<workload>/<party>", and perhaps more behind it.
Measurement ParseName(const std::string& name) {
    std::istringstream parts(name);
    Measurement measurement{};
    std::getline(parts, measurement.operation, '/');
    std::getline(parts, measurement.workload, '/');
    if (!std::getline(parts, measurement.party, '/')) {
        throw std::runtime_error(name + " is no name of a benchmark");
    }
    return measurement;
}

double Nanoseconds(const boost::json::object& run, const char* member) {
    const boost::json::string& unit = run.at("time_unit").as_string();
    const double factor = unit == "ns" ? 1 : unit == "us" ? 1e3 : unit == "ms" ? 1e6 : 1e9;
    return run.at(member).to_number<double>() * factor;
}

Measurement ReadRun(const boost::json::object& run) {
    const std::string name(run.at("run_name").as_string());
    if (run.contains("error_occurred")) {
        throw std::runtime_error(name + " failed");
    }
    Measurement measurement = ParseName(name);
    const auto read = [&](const char* member, Unit unit, double factor) {
        const boost::json::value* number = run.if_contains(member);
        if (number != nullptr) {
            measurement.value = number->to_number<double>() * factor;
            measurement.unit = unit;
        }
        return number != nullptr;
    };
    if (!read("bytes_per_second", Unit::BytesPerSecond, 1) && !read("items_per_second", Unit::PerSecond, 1)
        && !read("secondsEach", Unit::Nanoseconds, 1e9)) {
        measurement.value = Nanoseconds(run, "cpu_time");
        measurement.unit = Unit::Nanoseconds;
    }
    return measurement;
}

std::vector<Measurement> ReadBenchmarks(std::istream& in) {
    const std::string text{std::istreambuf_iterator<char>(in), {}};
    std::vector<Measurement> measurements;
    const boost::json::value document = boost::json::parse(text);
    for (const boost::json::value& run : document.at("benchmarks").as_array()) {
        if (!run.as_object().contains("aggregate_name")) {
            measurements.push_back(ReadRun(run.as_object()));
        }
    }
    return measurements;
}

std::vector<Measurement> ReadLines(std::istream& in) {
    std::vector<Measurement> measurements;
    for (std::string line; std::getline(in, line);) {
        std::istringstream fields(line);
        Measurement measurement{};
        std::string unit;
        std::getline(fields, measurement.operation, '\t');
        std::getline(fields, measurement.workload, '\t');
        std::getline(fields, measurement.party, '\t');
        if (!(fields >> measurement.value >> unit) || (unit != "ns" && unit != "B")) {
            throw std::runtime_error("this line is no result: " + line);
        }
        measurement.unit = unit == "ns" ? Unit::Nanoseconds : Unit::Bytes;
        measurements.push_back(measurement);
    }
    return measurements;
}

} // namespace

std::vector<Measurement> ReadMeasurements(const std::string& path) {
    std::ifstream in(path);
    if (!in) {
        throw std::runtime_error(path + " can not be read");
    }
    try {
        return path.ends_with(kJsonSuffix) ? ReadBenchmarks(in) : ReadLines(in);
    } catch (const std::exception& e) {
        throw std::runtime_error(path + ": " + e.what());
    }
}

} // namespace Bench
