// Dates and times: which texts are some, and what lies how many days or seconds apart. The counts are those of Python's
// datetime, which has the same calendar for the years from 1 on.
#include "host/calendar.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace {

using KwBrevix_930::CalendarTime;
using KwBrevix_930::DateText;
using KwBrevix_930::DateTimeText;
using KwBrevix_930::DaysSinceYear;
using KwBrevix_930::ParseAnyTime;
using KwBrevix_930::ParseDate;
using KwBrevix_930::ParseDateTime;
using KwBrevix_930::SecondsSinceYear;
using KwBrevix_930::TimeFromSeconds;
using KwBrevix_930::TimeOfDayText;
using KwBrevix_930::WeekDay;

std::string TextOf(double seconds, int year = 1970) {
    const auto time = TimeFromSeconds(seconds, year);
    return time ? DateTimeText(*time) : "none";
}

std::string Read(const std::string& text) {
    const auto time = ParseDateTime(text);
    return time ? DateTimeText(*time) : "none";
}

TEST(Calendar, KnowsLeapYearsByTheHundredAndTheFourHundred) {
    for (const char* text : {"2004-02-29", "2000-02-29", "1600-02-29", "0000-02-29", "0004-02-29"})
        EXPECT_TRUE(ParseDate(text)) << text;
    for (const char* text : {"2003-02-29", "1900-02-29", "2100-02-29", "0001-02-29", "2004-02-30", "2004-04-31",
                             "2004-00-10", "2004-13-10", "2004-01-00", "2004-01-32"})
        EXPECT_FALSE(ParseDate(text)) << text;
}

TEST(Calendar, CountsDaysBeforeAndBehindAYear) {
    EXPECT_EQ(DaysSinceYear(*ParseDate("1969-12-31"), 1970), -1);
    EXPECT_EQ(DaysSinceYear(*ParseDate("1600-02-29"), 1970), -135081);
    EXPECT_EQ(DaysSinceYear(*ParseDate("0001-01-01"), 1970), -719162);
    EXPECT_EQ(DaysSinceYear(*ParseDate("0000-01-01"), 1970), -719528);
    EXPECT_EQ(DaysSinceYear(*ParseDate("0000-12-31"), 0), 365);
    EXPECT_EQ(DaysSinceYear(*ParseDate("2000-03-01"), 2000), 60);
    EXPECT_EQ(DaysSinceYear(*ParseDate("1900-03-01"), 1900), 59);
    EXPECT_EQ(WeekDay(*ParseDate("0000-01-01")), 6);
    EXPECT_EQ(WeekDay(*ParseDate("1969-07-20")), 0);
}

TEST(Calendar, EveryDayComesBackFromItsSeconds) {
    for (long long day = DaysSinceYear(*ParseDate("0000-01-01"), 1970); day < 2'932'897; day += 89) {
        const double seconds = static_cast<double>(day) * 86400.0 + 40215.0;
        const auto time = TimeFromSeconds(seconds, 1970);
        ASSERT_TRUE(time) << day;
        ASSERT_EQ(SecondsSinceYear(*time, 1970), seconds);
        ASSERT_TRUE(ParseDate(DateText(*time))) << DateText(*time);
    }
}

TEST(Calendar, HasAMomentForEachNumberOfSecondsInItsYears) {
    EXPECT_EQ(TextOf(-1.0), "1969-12-31T23:59:59");
    EXPECT_EQ(TextOf(-0.25), "1969-12-31T23:59:59.75");
    EXPECT_EQ(TextOf(951782400.0), "2000-02-29T00:00:00");
    EXPECT_EQ(TextOf(-86400.0 * 719528), "0000-01-01T00:00:00");
    EXPECT_EQ(TextOf(-86400.0 * 719528 - 1.0), "none");
    EXPECT_EQ(TextOf(86400.0 * 2932897 - 1.0), "9999-12-31T23:59:59");
    EXPECT_EQ(TextOf(86400.0 * 2932897), "none");
    EXPECT_EQ(TextOf(1e300), "none");
    EXPECT_EQ(TextOf(-std::numeric_limits<double>::infinity()), "none");
    EXPECT_EQ(TextOf(std::numeric_limits<double>::quiet_NaN()), "none");
}

TEST(Calendar, AMomentNextToMidnightIsNoTwentyFifthHour) {
    EXPECT_EQ(TextOf(-1e-20), "1970-01-01T00:00:00");
    EXPECT_EQ(TextOf(-std::numeric_limits<double>::denorm_min()), "1970-01-01T00:00:00");
    for (double day = 1.0; day < 2'932'896.0; day *= 1.7) {
        const double midnight = std::floor(day) * 86400.0;
        const auto before = TimeFromSeconds(std::nextafter(midnight, 0.0), 1970);
        ASSERT_TRUE(before);
        EXPECT_EQ(before->hour, 23) << day;
        EXPECT_EQ(before->minute, 59) << day;
        EXPECT_TRUE(before->second > 59.0 && before->second < 60.0) << day;
        EXPECT_EQ(TimeOfDayText(*TimeFromSeconds(midnight, 1970)), "00:00:00") << day;
    }
}

TEST(Calendar, MovesAnOffsetToUtcAndLeavesTheSecondAsItIs) {
    EXPECT_EQ(Read("2004-02-29T00:30:00.1+01:00"), "2004-02-28T23:30:00.1");
    EXPECT_EQ(Read("2003-12-31 23:59:59.999-00:01"), "2004-01-01T00:00:59.999");
    EXPECT_EQ(Read("2004-02-29T12:30:00Z"), "2004-02-29T12:30:00");
    EXPECT_EQ(Read("2004-02-29T12:30:00+15:00"), "none");
    EXPECT_EQ(Read("0000-01-01T00:00:00+00:01"), "none");
    EXPECT_EQ(Read("9999-12-31T23:59:59-00:01"), "none");
}

TEST(Calendar, RefusesTextsThatAreNearlySome) {
    for (const char* text : {"", "2004", "2004-2-29", "04-02-29", "-2004-02-29", "2004-02-29x", "2004-02-29T",
                             "2004-02-29T12:30", "24:00:00", "12:60:00", "12:30:60", "12:30:5", "12:30:05.",
                             "12:30:05.x", "2004-02-29T12:30:00+1:00", "2004-02-29T12:30:00+01", "2004/02/29"})
        EXPECT_FALSE(ParseAnyTime(text)) << text;
    EXPECT_EQ(TimeOfDayText(*ParseAnyTime(" 12:30:05.250\n")), "12:30:05.25");
    const auto nines = ParseAnyTime("12:30:59." + std::string(400, '9'));
    ASSERT_TRUE(nines);
    EXPECT_LT(nines->second, 60.0);
    EXPECT_EQ(TimeOfDayText(*nines).substr(0, 9), "12:30:59.");
}

}  // namespace
