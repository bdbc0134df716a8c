#include "bench/table/report.h"

#include "bench/names.h"
#include "bench/table/goals.h"
#include "bench/table/grid.h"
#include "bench/table/sections.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <functional>
#include <optional>
#include <string>

namespace Bench {

namespace {

constexpr const char* kNotMeasured = "not measured";

/// Three digits that count, in the largest unit that leaves at least one in front of the point.
std::string FormatScaled(double value, const std::array<const char*, 4>& units) {
    std::size_t unit = 0;
    while (value >= 999.5 && unit + 1 < units.size()) {
        value /= 1000;
        ++unit;
    }
    char text[64];
    std::snprintf(
        text, sizeof text,
        value < 9.995   ? "%.2f %s"
        : value < 99.95 ? "%.1f %s"
                        : "%.0f %s",
        value, units[unit]);
    return text;
}

std::string FormatValue(double value, Unit unit) {
    switch (unit) {
    case Unit::Nanoseconds: return FormatScaled(value, {"ns", "µs", "ms", "s"});
    case Unit::BytesPerSecond: {
        char text[64];
        std::snprintf(text, sizeof text, "%.0f MB/s", value / 1e6);
        return text;
    }
    case Unit::PerSecond: return FormatScaled(value, {"/s", "k/s", "M/s", "G/s"});
    case Unit::Bytes: return FormatScaled(value, {"B", "kB", "MB", "GB"});
    }
    return {};
}

/// Compares two parties within each round, in which both have met the same of what else the machine does, and
/// takes the median of that; nothing when one was not measured. Where a round lacks one of them, their
/// medians are compared.
template <class Compare>
std::optional<double> CompareRounds(const Row& row, const std::string& party, Compare compare) {
    const auto ours = row.values.find(kOurs);
    const auto peers = row.values.find(party);
    if (ours == row.values.end() || peers == row.values.end()) {
        return std::nullopt;
    }
    if (ours->second.size() != peers->second.size()) {
        return compare(Median(ours->second), Median(peers->second));
    }
    std::vector<double> results(ours->second.size());
    std::transform(ours->second.begin(), ours->second.end(), peers->second.begin(), results.begin(), compare);
    return Median(results);
}

/// What of a goal can be said of one row; nothing where it is not measured.
std::optional<double> Judge(const Goal& goal, const Row& row) {
    return CompareRounds(row, goal.peer != nullptr ? goal.peer : kOurs, [&](double ours, double peers) {
        return Rate(goal, ours, peers);
    });
}

/// Beside the first peer there is, for a row without goal.
std::string FormatRatio(const Row& row, const std::vector<std::string>& parties) {
    for (const std::string& party : parties) {
        if (party != kOurs) {
            if (const auto ratio = CompareRounds(row, party, std::divides<>())) {
                char text[64];
                std::snprintf(text, sizeof text, "%.2f x %s", *ratio, party.c_str());
                return text;
            }
        }
    }
    return {};
}

std::vector<std::string> MeasuredCells(const Row& row, const std::vector<std::string>& parties) {
    std::vector<std::string> cells{row.operation, row.workload};
    for (const std::string& party : parties) {
        const std::optional<double> value = row.Find(party);
        cells.push_back(value ? FormatValue(*value, row.unit) : "");
    }
    return cells;
}

/// A line for each goal of the row, or one without.
void AddRow(const Row& row, const std::vector<std::string>& parties, Grid& grid) {
    std::vector<std::string> cells = MeasuredCells(row, parties);
    const std::size_t width = cells.size();
    for (const Goal& goal : GetGoals()) {
        if (row.operation == goal.operation) {
            const std::optional<double> rating = Judge(goal, row);
            cells.push_back(rating ? FormatRating(goal, *rating) : "");
            cells.push_back(Describe(goal));
            cells.emplace_back(!rating ? kNotMeasured : IsMet(goal, *rating) ? "met" : "NOT MET");
            grid.rows.push_back(std::move(cells));
            cells.assign(width, "");
        }
    }
    if (!cells.front().empty()) {
        cells.push_back(FormatRatio(row, parties));
        cells.resize(width + 3);
        grid.rows.push_back(std::move(cells));
    }
}

void PrintSection(const Section& section, bool isMarkdown, std::ostream& out) {
    Grid grid{2, {"operation", "on"}, {}};
    for (const std::string& party : section.parties) {
        grid.heads.push_back(party == kOurs ? "ours" : party);
    }
    grid.heads.insert(grid.heads.end(), {"ratio", "goal", "verdict"});
    for (const Row& row : section.rows) {
        AddRow(row, section.parties, grid);
    }
    out << (isMarkdown ? "## " : "") << section.title << (isMarkdown ? "\n\n" : ". ") << section.note
        << "\n\n";
    PrintGrid(grid, isMarkdown, out);
    out << '\n';
}

/// "met on 4 of 4", "not met: events 0.63; ...".
std::string Summarise(const Goal& goal, const std::vector<Section>& sections) {
    std::size_t met = 0;
    std::size_t rows = 0;
    std::size_t measured = 0;
    std::string missed;
    for (const Section& section : sections) {
        for (const Row& row : section.rows) {
            if (row.operation == goal.operation) {
                const std::optional<double> rating = Judge(goal, row);
                ++rows;
                measured += rating ? 1 : 0;
                if (rating && IsMet(goal, *rating)) {
                    ++met;
                } else if (rating) {
                    missed +=
                        (missed.empty() ? " " : ", ") + row.workload + ' ' + FormatRating(goal, *rating);
                }
            }
        }
    }
    if (measured == 0) {
        return kNotMeasured;
    }
    std::string summary = missed.empty() ? "met" : "NOT MET:" + missed + ";";
    summary += (missed.empty() ? " on " : " met on ") + std::to_string(met) + " of " + std::to_string(rows);
    return measured == rows ? summary : summary + ", of which " + std::to_string(measured) + " measured";
}

void PrintGoals(const std::vector<Section>& sections, bool isMarkdown, std::ostream& out) {
    Grid grid{4, {"operation", "goal", "verdict", "why it should be within reach"}, {}};
    for (const Goal& goal : GetGoals()) {
        grid.rows.push_back({goal.operation, Describe(goal), Summarise(goal, sections), goal.reason});
    }
    out << (isMarkdown ? "## Goals\n\n" : "Goals\n\n");
    PrintGrid(grid, isMarkdown, out);
}

} // namespace

void PrintReport(const std::vector<Measurement>& measurements, bool isMarkdown, std::ostream& out) {
    const std::vector<Section> sections = MakeSections(measurements);
    for (const Section& section : sections) {
        PrintSection(section, isMarkdown, out);
    }
    PrintGoals(sections, isMarkdown, out);
}

} // namespace Bench
