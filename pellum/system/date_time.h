#pragma once

#include "pellum/export.h"

#include <compare>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

namespace Pellum::System {

/// A moment in time: microseconds since 1970-01-01T00:00:00Z, without leap seconds.
class PELLUM_API DateTime {
public:
    /// 1970-01-01T00:00:00Z.
    constexpr DateTime() noexcept = default;

    /// `utcTime` is in microseconds since 1970-01-01T00:00:00Z.
    [[nodiscard]] static constexpr DateTime FromUtcTime(std::int64_t utcTime) noexcept {
        return DateTime(utcTime);
    }

    [[nodiscard]] static DateTime Now();

    /// Reads an RFC 3339 date and time of the years 0001 to 9999, for example "2024-02-29T23:59:59.25+01:00".
    ///
    /// The letters may be lower case and a space may stand for the "T". Digits behind the microsecond are
    /// dropped. A leap second, which only the last minute of a UTC day may hold, is read as the second after
    /// it.
    ///
    /// Throws `Exception` with the text and what is wrong with it.
    [[nodiscard]] static DateTime Parse(std::string_view text);

    /// As `Parse`, but answers false where that throws: `out` is left alone and `why`, unless null, receives
    /// what is wrong.
    static bool TryParse(std::string_view text, DateTime& out, std::string* why = nullptr);

    /// Microseconds since 1970-01-01T00:00:00Z.
    [[nodiscard]] constexpr std::int64_t GetUtcTime() const noexcept { return m_utcTime; }

    /// RFC 3339 in UTC, the fraction only as long as needed: "2024-02-29T22:59:59.25Z". A year outside of
    /// 0001 to 9999, which RFC 3339 cannot express and `Parse` refuses, is written with its sign.
    [[nodiscard]] std::string ToString() const;

    /// Whether the year is one of 0001 to 9999, so that `Parse` reads what `ToString` answers.
    [[nodiscard]] bool HasPlainYear() const noexcept;

    /// Room that `Write` needs.
    static constexpr std::size_t kMostText = 32;

    /// Writes what `ToString` answers to `to`, where there is room for `kMostText` characters; answers the
    /// end.
    char* Write(char* to) const noexcept;

    friend constexpr auto operator<=>(const DateTime& left, const DateTime& right) noexcept = default;

private:
    explicit constexpr DateTime(std::int64_t utcTime) noexcept : m_utcTime(utcTime) {}

    std::int64_t m_utcTime = 0;
};

static_assert(sizeof(DateTime) == 8 && std::is_trivially_copyable_v<DateTime>);

} // namespace Pellum::System

namespace Pellum {

using System::DateTime;

} // namespace Pellum
