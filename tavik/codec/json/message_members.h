#pragma once

#include <string_view>

/// Names of the members of messages.
namespace Tavik::Json::Member {

inline constexpr std::string_view kMethod = "method";
inline constexpr std::string_view kProperty = "property";
inline constexpr std::string_view kDeclaringType = "of";
inline constexpr std::string_view kTarget = "on";
inline constexpr std::string_view kTargetType = "mo";
inline constexpr std::string_view kTargetId = "id";
inline constexpr std::string_view kVersion = "version";
inline constexpr std::string_view kSession = "session";
inline constexpr std::string_view kLocale = "locale";
inline constexpr std::string_view kCorrelation = "correlation";
inline constexpr std::string_view kTimeout = "timeoutMs";
inline constexpr std::string_view kArguments = "arguments";
inline constexpr std::string_view kResult = "result";
inline constexpr std::string_view kFault = "fault";

} // namespace Tavik::Json::Member
