#include "bench/names.h"
#include "bench/table/report.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>

#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

/// The report on what the benchmarks have measured: no verdict may be kinder than the numbers.
namespace {

using Bench::Measurement;
using Bench::Unit;
using testing::AllOf;
using testing::ContainsRegex;
using testing::HasSubstr;

std::string Report(const std::vector<Measurement>& measurements) {
    std::ostringstream out;
    Bench::PrintReport(measurements, false, out);
    return out.str();
}

TEST(BenchReport, JudgesAtTheLimit) {
    struct Case {
        const char* operation;
        const char* peer;
        double ours;
        double peers;
        Unit unit;
        const char* expected; ///< of the row: rating, goal and verdict
    };

    const Case cases[] = {
        {Bench::kClone, "protobuf", 60, 100, Unit::Nanoseconds, " 0[.]60 +<= 0[.]60 x protobuf +met\n"},
        {Bench::kClone, "protobuf", 60.1, 100, Unit::Nanoseconds, " 0[.]61 +<= 0[.]60 x protobuf +NOT MET\n"},
        {Bench::kEquality, "protobuf", 2.001, 100, Unit::Nanoseconds, " 0[.]0201 +<= 0[.]02 x .* NOT MET\n"},
        {Bench::kEncode, "protobuf", 6e8, 1e8, Unit::BytesPerSecond, " 6[.]0 +>= 6[.]0 x protobuf +met\n"},
        {Bench::kEncode, "protobuf", 5.99e8, 1e8, Unit::BytesPerSecond, " 5[.]9 +>= 6[.]0 x .* NOT MET\n"},
        {Bench::kEncode, "protobuf", 7e8, 1e8, Unit::BytesPerSecond, " 700 MB/s +>= 700 MB/s +met\n"},
        {Bench::kEncode, "protobuf", 6.999e8, 1e8, Unit::BytesPerSecond, " 699 MB/s +>= 700 .* NOT MET\n"},
        {Bench::kFieldPointer, "plain", 2.5, 0.5, Unit::Nanoseconds,
         " 2[.]00 ns +<= 2[.]0 ns above plain +met\n"},
        {Bench::kFieldPointer, "plain", 2.501, 0.5, Unit::Nanoseconds, " 2[.]01 ns +<= 2[.]0 .* NOT MET\n"},
    };
    for (const Case& c : cases) {
        EXPECT_THAT(
            Report(
                {{c.operation, "events", Bench::kOurs, c.ours, c.unit},
                 {c.operation, "events", c.peer, c.peers, c.unit}}),
            ContainsRegex(c.expected))
            << c.operation << ' ' << c.ours;
    }
}

TEST(BenchReport, ComparesWithinEachRound) {
    // Ours is half of the peer's in most rounds, whatever the speed of the machine is in them.
    std::vector<Measurement> rounds;
    for (const auto& [ours, peers] : {std::pair(10, 20), {20, 40}, {21, 30}, {10, 20}, {20, 40}}) {
        rounds.push_back({Bench::kClone, "events", Bench::kOurs, double(ours), Unit::Nanoseconds});
        rounds.push_back({Bench::kClone, "events", Bench::kProtobuf, double(peers), Unit::Nanoseconds});
    }
    EXPECT_THAT(Report(rounds), ContainsRegex("20[.]0 ns +30[.]0 ns +0[.]50 +<= 0[.]60 x protobuf +met\n"));
    rounds.pop_back(); // a round that was not finished
    EXPECT_THAT(Report(rounds), ContainsRegex("20[.]0 ns +30[.]0 ns +0[.]67 +<= 0[.]60 x .* NOT MET\n"));
}

TEST(BenchReport, CallsNothingMetThatWasNotMeasured) {
    const std::string clone = "\nclone +<= 0[.]60 x protobuf +";
    EXPECT_THAT(
        Report({{Bench::kClone, "events", Bench::kOurs, 1, Unit::Nanoseconds}}),
        ContainsRegex(clone + "not measured"));
    EXPECT_THAT(
        Report({{Bench::kClone, "events", Bench::kProtobuf, 1, Unit::Nanoseconds}}),
        ContainsRegex(clone + "not measured"));
    const std::vector<Measurement> half{
        {Bench::kClone, "events", Bench::kOurs, 1, Unit::Nanoseconds},
        {Bench::kClone, "events", Bench::kProtobuf, 2, Unit::Nanoseconds},
        {Bench::kClone, "linux_machine", Bench::kOurs, 1, Unit::Nanoseconds}};
    EXPECT_THAT(Report(half), ContainsRegex(clone + "met on 1 of 2, of which 1 measured"));
    std::vector<Measurement> missed = half;
    missed.push_back({Bench::kClone, "linux_machine", Bench::kProtobuf, 1, Unit::Nanoseconds});
    EXPECT_THAT(Report(missed), ContainsRegex(clone + "NOT MET: linux_machine 1[.]00; met on 1 of 2"));
}

TEST(BenchReport, LeavesNothingOut) {
    const std::string report = Report(
        {{"polish", "events", "somebody", 1'234'567, Unit::Bytes},
         {"growth: polish", "events", "10 events", 9.996, Unit::Nanoseconds}});
    EXPECT_THAT(report, ContainsRegex("Others.*\n.*\n.* somebody"));
    EXPECT_THAT(report, AllOf(HasSubstr("1.23 MB"), HasSubstr("10.0 ns"), HasSubstr("growth: polish")));
}

TEST(BenchResults, ReadsRunsAndLines) {
    const TestSupport::TemporaryFolder folder;
    const auto read = [&](const std::string& name, const std::string& content) {
        return Bench::ReadMeasurements(folder.Write(name, content));
    };
    const auto run = [](const std::string& members) {
        return R"({"benchmarks": [{"run_name": "a/b/c/threads:2", "time_unit": "us", "cpu_time": 2.5, )"
             + members + "}]}";
    };
    const auto check = [](const std::vector<Measurement>& measured, double value, Unit unit) {
        ASSERT_EQ(measured.size(), 1U);
        EXPECT_EQ(measured[0].operation + measured[0].workload + measured[0].party, "abc");
        EXPECT_DOUBLE_EQ(measured[0].value, value);
        EXPECT_EQ(measured[0].unit, unit);
    };
    const std::string single = R"("run_type": "iteration")";
    check(read("time.json", run(single)), 2500, Unit::Nanoseconds);
    check(read("speed.json", run(single + R"(, "bytes_per_second": 3e8)")), 3e8, Unit::BytesPerSecond);
    check(read("rate.json", run(single + R"(, "items_per_second": 7)")), 7, Unit::PerSecond);
    check(read("each.json", run(single + R"(, "secondsEach": 2e-9)")), 2, Unit::Nanoseconds);
    check(read("lines.txt", "a\tb\tc\t12.5\tB\n"), 12.5, Unit::Bytes);
    EXPECT_THAT(read("mean.json", run(R"("aggregate_name": "mean")")), testing::IsEmpty()); // of others

    EXPECT_THROW(read("failed.json", run(single + R"(, "error_occurred": true)")), std::runtime_error);
    EXPECT_THROW(read("cut.json", R"({"benchmarks": [)"), std::runtime_error);
    for (const char* line : {"a\tb\tc\t12.5\n", "a\tb\tc\t12.5\tkB\n", "a\tb\tc\tmuch\tB\n"}) {
        EXPECT_THROW(read("lines.txt", line), std::runtime_error) << line;
    }
    EXPECT_THROW(Bench::ReadMeasurements((folder.GetPath() / "none").string()), std::runtime_error);
}

} // namespace
