#include "pellum/system/date_time.h"

#include "pellum/error/exception.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <stdexcept>

namespace Pellum::System {

namespace {

constexpr std::int64_t kMicrosecondsPerSecond = 1'000'000;
constexpr std::int64_t kSecondsPerDay = 86'400;

struct Quotient {
    std::int64_t quotient;
    std::int64_t remainder;
};

/// Division that rounds down, so that the remainder of a moment before 1970 is not negative.
constexpr Quotient FloorDivide(std::int64_t number, std::int64_t divisor) {
    const std::int64_t quotient = number / divisor;
    const std::int64_t remainder = number % divisor;
    return remainder < 0 ? Quotient{quotient - 1, remainder + divisor} : Quotient{quotient, remainder};
}

struct Date {
    std::int64_t year;
    int month;
    int day;
};

// The calendar types of <chrono> end at the year 32767; a DateTime reaches ten times as far.
// Both conversions count years from March, so that a leap day ends its year, in eras of 400 years.
constexpr std::int64_t kDaysPerEra = 146'097;
constexpr std::int64_t kDaysFromYearZeroTo1970 = 719'468;

constexpr std::int64_t DaysSince1970(const Date& date) {
    const std::int64_t year = date.year - (date.month <= 2 ? 1 : 0);
    const auto [era, yearOfEra] = FloorDivide(year, 400);
    const std::int64_t monthFromMarch = (date.month + 9) % 12;
    const std::int64_t dayOfYear = (153 * monthFromMarch + 2) / 5 + date.day - 1;
    const std::int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * kDaysPerEra + dayOfEra - kDaysFromYearZeroTo1970;
}

constexpr Date DateOf(std::int64_t daysSince1970) {
    const auto [era, dayOfEra] = FloorDivide(daysSince1970 + kDaysFromYearZeroTo1970, kDaysPerEra);
    const std::int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t monthFromMarch = (5 * dayOfYear + 2) / 153;
    const int day = static_cast<int>(dayOfYear - (153 * monthFromMarch + 2) / 5 + 1);
    const int month = static_cast<int>(monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9);
    return {yearOfEra + era * 400 + (month <= 2 ? 1 : 0), month, day};
}

constexpr std::int64_t kEarliest = DaysSince1970({1, 1, 1}) * kSecondsPerDay * kMicrosecondsPerSecond;
constexpr std::int64_t kEnd = DaysSince1970({10000, 1, 1}) * kSecondsPerDay * kMicrosecondsPerSecond;

constexpr int DaysOfMonth(int year, int month) {
    constexpr std::array<int, 12> kDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool isLeapYear = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return month == 2 && isLeapYear ? 29 : kDays[static_cast<std::size_t>(month - 1)];
}

constexpr bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

/// What is wrong with a text.
class BadText : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Reads one RFC 3339 text from left to right; throws `BadText`.
class Reader {
public:
    explicit Reader(std::string_view text) : m_text(text) {}

    /// The moment in microseconds since 1970-01-01T00:00:00Z.
    std::int64_t Read() {
        const std::int64_t days = ReadDate();
        TakeOneOf("Tt ", "'T' between date and time");
        const std::int64_t hour = ReadNumber<2>("hour", 0, 23);
        Take(':');
        const std::int64_t minute = ReadNumber<2>("minute", 0, 59);
        Take(':');
        const int second = ReadNumber<2>("second", 0, 60);
        const int microsecond = ReadFraction();
        const int offsetMinutes = ReadOffset();
        if (m_position != m_text.size()) {
            throw BadText(
                "unexpected text behind the offset, at character " + std::to_string(m_position + 1));
        }

        const std::int64_t utcSeconds =
            days * kSecondsPerDay + hour * 3600 + (minute - offsetMinutes) * 60 + second;
        if (second == 60 && utcSeconds % kSecondsPerDay != 0) {
            throw BadText("second 60 outside of the last minute of a UTC day");
        }
        const std::int64_t utcTime = utcSeconds * kMicrosecondsPerSecond + microsecond;
        if (utcTime < kEarliest || utcTime >= kEnd) {
            throw BadText("outside of the years 0001 to 9999 in UTC");
        }
        return utcTime;
    }

private:
    std::int64_t ReadDate() {
        const int year = ReadNumber<4>("year", 1, 9999);
        Take('-');
        const int month = ReadNumber<2>("month", 1, 12);
        Take('-');
        const int day = ReadNumber<2>("day", 1, DaysOfMonth(year, month));
        return DaysSince1970({year, month, day});
    }

    int ReadFraction() {
        if (m_position == m_text.size() || m_text[m_position] != '.') {
            return 0;
        }
        ++m_position;
        if (!AtDigit()) {
            Expected("a digit behind the '.'");
        }
        int microsecond = 0;
        for (int weight = 100'000; AtDigit(); weight /= 10) {
            microsecond += weight * (m_text[m_position++] - '0');
        }
        return microsecond;
    }

    /// In minutes, positive east of Greenwich.
    int ReadOffset() {
        const char sign = TakeOneOf("Zz+-", "an offset: 'Z', '+hh:mm' or '-hh:mm'");
        if (sign != '+' && sign != '-') {
            return 0;
        }
        const int hours = ReadNumber<2>("offset hour", 0, 23);
        Take(':');
        const int minutes = hours * 60 + ReadNumber<2>("offset minute", 0, 59);
        return sign == '-' ? -minutes : minutes;
    }

    template <int kDigits>
    int ReadNumber(const char* what, int least, int most) {
        int number = 0;
        for (int i = 0; i < kDigits; ++i) {
            if (!AtDigit()) {
                Expected(std::string(what) + " of " + std::to_string(kDigits) + " digits");
            }
            number = number * 10 + (m_text[m_position++] - '0');
        }
        if (number < least || number > most) {
            RefuseNumber(what, number, least, most);
        }
        return number;
    }

    [[noreturn]] static void RefuseNumber(const char* what, int number, int least, int most) {
        throw BadText(
            std::string(what) + " " + std::to_string(number) + " is not between " + std::to_string(least)
            + " and " + std::to_string(most));
    }

    void Take(char character) {
        if (m_position == m_text.size() || m_text[m_position] != character) {
            Expected(std::string("'") + character + "'");
        }
        ++m_position;
    }

    char TakeOneOf(std::string_view characters, const char* what) {
        if (!AtOneOf(characters)) {
            Expected(what);
        }
        return m_text[m_position++];
    }

    [[nodiscard]] bool AtDigit() const { return m_position < m_text.size() && IsDigit(m_text[m_position]); }

    [[nodiscard]] bool AtOneOf(std::string_view characters) const {
        // The usual character is the first one: a search by a call would take longer.
        return m_position < m_text.size() && std::any_of(characters.begin(), characters.end(), [&](char c) {
                   return c == m_text[m_position];
               });
    }

    [[noreturn]] void Expected(const std::string& what) const {
        throw BadText("expected " + what + " at character " + std::to_string(m_position + 1));
    }

    std::string_view m_text;
    std::size_t m_position = 0;
};

/// Writes the number, which is not negative, with at least that many digits; answers the end.
char* WriteNumber(char* to, std::int64_t number, int digits) {
    char text[20];
    char* const end = text + sizeof(text);
    char* begin = end;
    for (; number != 0 || digits > 0; number /= 10, --digits) {
        *--begin = static_cast<char>('0' + number % 10);
    }
    return std::copy(begin, end, to);
}

} // namespace

DateTime DateTime::Now() {
    using std::chrono::duration_cast;
    using std::chrono::microseconds;
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return FromUtcTime(duration_cast<microseconds>(sinceEpoch).count());
}

DateTime DateTime::Parse(std::string_view text) {
    DateTime result;
    std::string why;
    if (!TryParse(text, result, &why)) {
        throw Exception("'" + std::string(text) + "' is not a date and time of RFC 3339: " + why);
    }
    return result;
}

bool DateTime::TryParse(std::string_view text, DateTime& out, std::string* why) {
    try {
        out = FromUtcTime(Reader(text).Read());
        return true;
    } catch (const BadText& problem) {
        if (why != nullptr) {
            *why = problem.what();
        }
        return false;
    }
}

bool DateTime::HasPlainYear() const noexcept {
    return m_utcTime >= kEarliest && m_utcTime < kEnd;
}

char* DateTime::Write(char* to) const noexcept {
    const auto [seconds, microsecond] = FloorDivide(m_utcTime, kMicrosecondsPerSecond);
    const auto [days, secondOfDay] = FloorDivide(seconds, kSecondsPerDay);
    const Date date = DateOf(days);
    if (!HasPlainYear()) {
        *to++ = date.year < 0 ? '-' : '+';
    }
    to = WriteNumber(to, std::abs(date.year), 4);
    const auto write = [&to](char separator, std::int64_t number) {
        *to++ = separator;
        *to++ = static_cast<char>('0' + number / 10);
        *to++ = static_cast<char>('0' + number % 10);
    };
    write('-', date.month);
    write('-', date.day);
    write('T', secondOfDay / 3600);
    write(':', secondOfDay / 60 % 60);
    write(':', secondOfDay % 60);
    if (microsecond != 0) {
        *to++ = '.';
        to = WriteNumber(to, microsecond, 6);
        while (to[-1] == '0') {
            --to;
        }
    }
    *to++ = 'Z';
    return to;
}

std::string DateTime::ToString() const {
    char text[kMostText];
    return {text, Write(text)};
}

} // namespace Pellum::System
