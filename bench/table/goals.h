#pragma once

#include <span>
#include <string>

namespace Bench {

/// How a goal is judged.
enum class Rule {
    AtMostTimes,  ///< ours is at most the peer's times the limit
    AtLeastTimes, ///< ours is at least that
    AtLeast,      ///< ours is at least the limit, in a second
    AtMostAbove,  ///< ours is at most the limit above the peer's
};

/// What we want of one operation, on every workload.
struct Goal {
    const char* operation;
    const char* peer; ///< null where the rule needs none
    Rule rule;
    double limit;
    const char* reason;
};

std::span<const Goal> GetGoals();

/// "<= 0.60 x protobuf".
std::string Describe(const Goal& goal);

/// The number that the limit is for, in the limit's unit. `peers` counts for rules that need one.
double Rate(const Goal& goal, double ours, double peers);
bool IsMet(const Goal& goal, double rating);
/// The number with the digits that it is worth, never so that it looks met when it is not.
std::string FormatRating(const Goal& goal, double rating);

} // namespace Bench
