#include "pellum/system/date_time.h"

#include "pellum/error/exception.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <limits>
#include <random>
#include <string>

namespace {

using Pellum::System::DateTime;
using testing::HasSubstr;

constexpr std::int64_t kSecond = 1'000'000;
constexpr std::int64_t kDay = 86'400 * kSecond;
constexpr std::int64_t kFirst = -62'135'596'800 * kSecond;
constexpr std::int64_t kLast = 253'402'300'800 * kSecond - 1;

struct TextCase {
    const char* text;
    std::int64_t utcTime;
    const char* printed;
};

void PrintTo(const TextCase& testCase, std::ostream* out) {
    *out << testCase.text;
}

class DateTimeTextTest : public testing::TestWithParam<TextCase> {};

TEST_P(DateTimeTextTest, IsReadAndPrinted) {
    const TextCase& testCase = GetParam();
    const DateTime time = DateTime::Parse(testCase.text);
    EXPECT_EQ(time.GetUtcTime(), testCase.utcTime);
    EXPECT_EQ(time.ToString(), testCase.printed);
}

INSTANTIATE_TEST_SUITE_P(
    All, DateTimeTextTest,
    testing::Values(
        TextCase{"1970-01-01T00:00:00Z", 0, "1970-01-01T00:00:00Z"},
        TextCase{"1970-01-01T00:00:00.000001Z", 1, "1970-01-01T00:00:00.000001Z"},
        TextCase{"1969-12-31T23:59:59.999999Z", -1, "1969-12-31T23:59:59.999999Z"},
        TextCase{"2001-09-09T01:46:40Z", 1'000'000'000 * kSecond, "2001-09-09T01:46:40Z"},
        TextCase{"0001-01-01T00:00:00Z", kFirst, "0001-01-01T00:00:00Z"},
        TextCase{"9999-12-31T23:59:59.999999Z", kLast, "9999-12-31T23:59:59.999999Z"},
        // Leap days, also of the years that only the rule of 400 decides.
        TextCase{"2000-02-29T00:00:00Z", 951'782'400 * kSecond, "2000-02-29T00:00:00Z"},
        TextCase{"1900-03-01T00:00:00Z", -2'203'891'200 * kSecond, "1900-03-01T00:00:00Z"},
        TextCase{"2024-02-29T23:59:59Z", 1'709'251'199 * kSecond, "2024-02-29T23:59:59Z"},
        // Offsets.
        TextCase{"1970-01-01T01:30:00+01:30", 0, "1970-01-01T00:00:00Z"},
        TextCase{"1969-12-31T19:00:00-05:00", 0, "1970-01-01T00:00:00Z"},
        TextCase{"1970-01-01T00:00:00-00:00", 0, "1970-01-01T00:00:00Z"},
        TextCase{"1970-01-01T23:59:00+23:59", 0, "1970-01-01T00:00:00Z"},
        // Other spellings.
        TextCase{"1970-01-02t00:00:00z", kDay, "1970-01-02T00:00:00Z"},
        TextCase{"1970-01-02 00:00:00Z", kDay, "1970-01-02T00:00:00Z"},
        // Fractions.
        TextCase{"1970-01-01T00:00:00.5Z", 500'000, "1970-01-01T00:00:00.5Z"},
        TextCase{"1970-01-01T00:00:00.010Z", 10'000, "1970-01-01T00:00:00.01Z"},
        TextCase{"1970-01-01T00:00:00.0000019999999999Z", 1, "1970-01-01T00:00:00.000001Z"},
        TextCase{"1970-01-01T00:00:00.000Z", 0, "1970-01-01T00:00:00Z"},
        // Leap seconds.
        TextCase{"1998-12-31T23:59:60Z", 915'148'800 * kSecond, "1999-01-01T00:00:00Z"},
        TextCase{
            "1998-12-31T18:59:60.25-05:00", 915'148'800 * kSecond + 250'000, "1999-01-01T00:00:00.25Z"}));

struct BadCase {
    const char* text;
    const char* why;
};

void PrintTo(const BadCase& testCase, std::ostream* out) {
    *out << '"' << testCase.text << '"';
}

class DateTimeBadTextTest : public testing::TestWithParam<BadCase> {};

TEST_P(DateTimeBadTextTest, IsRefusedWithTheReason) {
    const BadCase& testCase = GetParam();
    DateTime time = DateTime::FromUtcTime(123);
    std::string why;
    EXPECT_FALSE(DateTime::TryParse(testCase.text, time, &why));
    EXPECT_THAT(why, HasSubstr(testCase.why));
    EXPECT_EQ(time.GetUtcTime(), 123) << "a refused text must leave the result alone";

    try {
        static_cast<void>(DateTime::Parse(testCase.text));
        FAIL() << "no exception";
    } catch (const Pellum::Exception& exception) {
        EXPECT_THAT(exception.what(), HasSubstr(testCase.text));
        EXPECT_THAT(exception.what(), HasSubstr(testCase.why));
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, DateTimeBadTextTest,
    testing::Values(
        BadCase{"", "expected year of 4 digits at character 1"},
        BadCase{"2024", "expected '-' at character 5"},
        BadCase{"24-01-01T00:00:00Z", "expected year of 4 digits at character 3"},
        BadCase{"+2024-01-01T00:00:00Z", "expected year of 4 digits at character 1"},
        BadCase{"-001-01-01T00:00:00Z", "expected year of 4 digits at character 1"},
        BadCase{" 2024-01-01T00:00:00Z", "expected year of 4 digits at character 1"},
        BadCase{"12024-01-01T00:00:00Z", "expected '-' at character 5"},
        BadCase{"0000-01-01T00:00:00Z", "year 0 is not between 1 and 9999"},
        BadCase{"2024-00-01T00:00:00Z", "month 0 is not between 1 and 12"},
        BadCase{"2024-13-01T00:00:00Z", "month 13 is not between 1 and 12"},
        BadCase{"2024-02-30T00:00:00Z", "day 30 is not between 1 and 29"},
        BadCase{"2023-02-29T00:00:00Z", "day 29 is not between 1 and 28"},
        BadCase{"1900-02-29T00:00:00Z", "day 29 is not between 1 and 28"},
        BadCase{"2024-04-31T00:00:00Z", "day 31 is not between 1 and 30"},
        BadCase{"2024-01-00T00:00:00Z", "day 0 is not between 1 and 31"},
        BadCase{"2024-01-01", "expected 'T' between date and time at character 11"},
        BadCase{"2024-01-01T24:00:00Z", "hour 24 is not between 0 and 23"},
        BadCase{"2024-01-01T00:60:00Z", "minute 60 is not between 0 and 59"},
        BadCase{"2024-01-01T00:00Z", "expected ':' at character 17"},
        BadCase{"2024-01-01T00:00:61Z", "second 61 is not between 0 and 60"},
        BadCase{"2024-01-01T12:30:60Z", "second 60 outside of the last minute of a UTC day"},
        BadCase{"2024-12-31T23:59:60+01:00", "second 60 outside of the last minute of a UTC day"},
        BadCase{"2024-01-01T00:00:00.Z", "expected a digit behind the '.' at character 21"},
        BadCase{"2024-01-01T00:00:00,5Z", "expected an offset"},
        BadCase{"2024-01-01T00:00:00", "expected an offset: 'Z', '+hh:mm' or '-hh:mm' at character 20"},
        BadCase{"2024-01-01T00:00:00+0100", "expected ':' at character 23"},
        BadCase{"2024-01-01T00:00:00+24:00", "offset hour 24 is not between 0 and 23"},
        BadCase{"2024-01-01T00:00:00+01:60", "offset minute 60 is not between 0 and 59"},
        BadCase{"2024-01-01T00:00:00Zulu", "unexpected text behind the offset, at character 21"},
        BadCase{"0001-01-01T00:00:00+00:01", "outside of the years 0001 to 9999"},
        BadCase{"9999-12-31T23:59:59-00:01", "outside of the years 0001 to 9999"},
        BadCase{"9999-12-31T23:59:60Z", "outside of the years 0001 to 9999"}));

TEST(DateTimeTest, EveryDayOfTheRangeComesBackAndFollowsTheCalendar) {
    // The library's own calendar is the witness.
    using std::chrono::days;
    using std::chrono::sys_days;
    using std::chrono::year_month_day;

    char expected[40];
    for (std::int64_t utcTime = kFirst; utcTime <= kLast; utcTime += kDay) {
        const year_month_day date(sys_days(days(static_cast<int>(utcTime / kDay))));
        std::snprintf(
            expected, sizeof(expected), "%04d-%02u-%02uT00:00:00Z", static_cast<int>(date.year()),
            static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()));
        ASSERT_EQ(DateTime::FromUtcTime(utcTime).ToString(), expected);
        DateTime back;
        ASSERT_TRUE(DateTime::TryParse(expected, back)) << expected;
        ASSERT_EQ(back.GetUtcTime(), utcTime) << expected;
    }
}

TEST(DateTimeTest, RandomMomentsComeBackToTheMicrosecond) {
    std::mt19937_64 random(20240229);
    std::uniform_int_distribution<std::int64_t> moment(kFirst, kLast);
    for (int round = 0; round < 20'000; ++round) {
        const DateTime time = DateTime::FromUtcTime(moment(random));
        ASSERT_EQ(DateTime::Parse(time.ToString()), time) << time.GetUtcTime();
        ASSERT_TRUE(time.HasPlainYear()) << time.GetUtcTime();
    }
}

TEST(DateTimeTest, PrintsMomentsThatNoTextMayName) {
    EXPECT_EQ(DateTime::FromUtcTime(kFirst - 1).ToString(), "+0000-12-31T23:59:59.999999Z");
    EXPECT_EQ(DateTime::FromUtcTime(kLast + 1).ToString(), "+10000-01-01T00:00:00Z");
    using Limits = std::numeric_limits<std::int64_t>;
    for (const std::int64_t utcTime : {kFirst - 1, kLast + 1, Limits::min(), Limits::max()}) {
        EXPECT_FALSE(DateTime::FromUtcTime(utcTime).HasPlainYear()) << utcTime;
    }
    EXPECT_EQ(DateTime::FromUtcTime(Limits::max()).ToString(), "+294247-01-10T04:00:54.775807Z");
    EXPECT_EQ(DateTime::FromUtcTime(Limits::min()).ToString(), "-290308-12-21T19:59:05.224192Z");
}

TEST(DateTimeTest, OrdersByTime) {
    EXPECT_LT(DateTime::FromUtcTime(-1), DateTime());
    EXPECT_EQ(DateTime(), DateTime::FromUtcTime(0));

    const DateTime before = DateTime::Now();
    const DateTime after = DateTime::Now();
    EXPECT_GE(after, before);
    EXPECT_GT(before, DateTime::Parse("2024-01-01T00:00:00Z"));
}

} // namespace
