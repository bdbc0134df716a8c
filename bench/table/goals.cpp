#include "bench/table/goals.h"

#include "bench/names.h"

#include <cmath>
#include <cstdio>

namespace Bench {

namespace {

constexpr const char* kPlainMembers = "plain members, copied by one table";
constexpr const char* kNoReflection = "that table in place of reflection";
constexpr const char* kDirectText = "text is written and read in one pass";
constexpr const char* kOneTable = "place and form by one table, and a few comparisons";
constexpr const char* kLinear = "linear: a square would make it 10, and caches and fresh pages explain two";

constexpr double kMega = 1e6;

const Goal kGoals[] = {
    {kClone, kProtobuf, Rule::AtMostTimes, 0.6, kPlainMembers},
    {kEquality, kProtobuf, Rule::AtMostTimes, 0.02, kNoReflection},
    {kDifference, kProtobuf, Rule::AtMostTimes, 0.1, kNoReflection},
    {kEncode, kProtobuf, Rule::AtLeastTimes, 6, kDirectText},
    {kEncode, nullptr, Rule::AtLeast, 700 * kMega, "a network of 5 Gbit/s is filled"},
    {kDecode, kProtobuf, Rule::AtLeastTimes, 6, kDirectText},
    {kDecode, kSimdjson, Rule::AtLeastTimes, 0.5, "half the speed of a parser that makes nothing"},
    {kFieldPointer, kPlain, Rule::AtMostAbove, 2, kOneTable},
    {kFieldRecord, kPlain, Rule::AtMostAbove, 2, kOneTable},
    {kFieldGet, kPlain, Rule::AtMostAbove, 2, kOneTable},
    {kColdStart, kProtobuf, Rule::AtMostTimes, 0.3, "constant tables in place of parsed descriptions"},
    {kStrippedSize, kProtobuf, Rule::AtMostTimes, 0.6, "code is written once, tables for each class"},
    {"growth: clone", "1000 events", Rule::AtMostTimes, 3, kLinear},
    {"growth: equality", "1000 events", Rule::AtMostTimes, 3, kLinear},
    {"growth: equality, last property differs", "1000 events", Rule::AtMostTimes, 3, kLinear},
    {"growth: difference", "1000 events", Rule::AtMostTimes, 3, kLinear},
    {"growth: encode JSON", "1000 events", Rule::AtMostTimes, 3, kLinear},
    {"growth: decode JSON", "1000 events", Rule::AtMostTimes, 3, kLinear},
};

std::string Format(const char* format, double number) {
    char text[64];
    std::snprintf(text, sizeof text, format, number);
    return text;
}

/// Step in which ratings for limits of about this size are shown.
double RoundingUnit(double limit) {
    return limit < 0.1 ? 1e-4 : limit < 5 ? 1e-2 : 1e-1;
}

std::string FormatRounded(double number, double unit) {
    return Format(unit < 1e-3 ? "%.4f" : unit < 0.05 ? "%.2f" : "%.1f", number);
}

bool IsAtLeast(const Goal& goal) {
    return goal.rule == Rule::AtLeast || goal.rule == Rule::AtLeastTimes;
}

} // namespace

std::span<const Goal> GetGoals() {
    return kGoals;
}

std::string Describe(const Goal& goal) {
    switch (goal.rule) {
    case Rule::AtMostTimes: return Format("<= %.2f x ", goal.limit) + goal.peer;
    case Rule::AtLeastTimes: return Format(">= %.1f x ", goal.limit) + goal.peer;
    case Rule::AtLeast: return Format(">= %.0f MB/s", goal.limit / kMega);
    case Rule::AtMostAbove: return Format("<= %.1f ns above ", goal.limit) + goal.peer;
    }
    return {};
}

double Rate(const Goal& goal, double ours, double peers) {
    return goal.rule == Rule::AtLeast ? ours : goal.rule == Rule::AtMostAbove ? ours - peers : ours / peers;
}

bool IsMet(const Goal& goal, double rating) {
    return IsAtLeast(goal) ? rating >= goal.limit : rating <= goal.limit;
}

std::string FormatRating(const Goal& goal, double rating) {
    if (goal.rule == Rule::AtLeast) {
        return Format("%.0f MB/s", std::floor(rating / kMega));
    }
    const double unit = RoundingUnit(goal.limit);
    const double towards = rating / unit;
    const std::string number =
        FormatRounded((IsAtLeast(goal) ? std::floor(towards) : std::ceil(towards)) * unit, unit);
    return goal.rule == Rule::AtMostAbove ? number + " ns" : number;
}

} // namespace Bench
