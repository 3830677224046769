// Dates and times of ISO 8601 in the Gregorian calendar.
#include "host/calendar.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "host/number_text.h"

namespace KwBrevix_930 {

namespace {

constexpr int kLastYear = 9999;
constexpr double kSecondsOfDay = 86400.0;

bool IsLeapYear(int year) {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

int DaysOfMonth(int year, int month) {
    static constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && IsLeapYear(year) ? 29 : kDays[month - 1];
}

// Days from 1 January of the year 0 to 1 January of a year from 0 on.
long long DaysBeforeYear(int year) {
    if (year == 0)
        return 0;
    const long long before = year - 1;
    // The year 0 is a leap year.
    return 365LL * year + before / 4 - before / 100 + before / 400 + 1;
}

// Takes a text apart from its start; once something does not fit, nothing does any more.
class Scanner {
public:
    explicit Scanner(std::string_view text) : fRest(text) {}

    int Digits(std::size_t count) {
        int number = 0;
        fFits = fFits && fRest.size() >= count;
        for (std::size_t i = 0; i < count && fFits; ++i) {
            fFits = fRest[i] >= '0' && fRest[i] <= '9';
            number = number * 10 + (fRest[i] - '0');
        }
        if (fFits)
            fRest.remove_prefix(count);
        return fFits ? number : 0;
    }

    bool Skip(char mark) {
        const bool isThere = fFits && fRest.starts_with(mark);
        if (isThere)
            fRest.remove_prefix(1);
        return isThere;
    }

    void Require(char mark) { fFits = Skip(mark); }
    void RequireThat(bool condition) { fFits = fFits && condition; }

    // The digits of a fraction behind its point.
    double Fraction() {
        const std::size_t count = std::min(fRest.find_first_not_of("0123456789"), fRest.size());
        RequireThat(count > 0);
        const auto number = ParseNumber("0." + std::string(fRest.substr(0, count)));
        fRest.remove_prefix(count);
        // A fraction of very many nines reads as 1.
        return std::min(number.value_or(0.0), std::nextafter(1.0, 0.0));
    }

    bool IsDone() const { return fFits && fRest.empty(); }

private:
    std::string_view fRest;
    bool fFits = true;
};

std::string_view WithoutXmlSpaceAround(std::string_view text) {
    constexpr std::string_view kXmlSpace = " \t\n\r";
    const std::size_t first = text.find_first_not_of(kXmlSpace);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(kXmlSpace) - first + 1);
}

void ScanDate(Scanner& scanner, CalendarTime& time) {
    time.year = scanner.Digits(4);
    scanner.Require('-');
    time.month = scanner.Digits(2);
    scanner.RequireThat(time.month >= 1 && time.month <= 12);
    scanner.Require('-');
    time.day = scanner.Digits(2);
    // An impossible month has no days.
    const bool isMonth = time.month >= 1 && time.month <= 12;
    scanner.RequireThat(isMonth && time.day >= 1 && time.day <= DaysOfMonth(time.year, time.month));
}

void ScanTimeOfDay(Scanner& scanner, CalendarTime& time) {
    time.hour = scanner.Digits(2);
    scanner.Require(':');
    time.minute = scanner.Digits(2);
    scanner.Require(':');
    time.second = scanner.Digits(2);
    scanner.RequireThat(time.hour < 24 && time.minute < 60 && time.second < 60.0);
    if (scanner.Skip('.'))
        time.second += scanner.Fraction();
    // A sum that rounds up to 60.
    time.second = std::min(time.second, std::nextafter(60.0, 0.0));
}

// Seconds by which the clock of a text is ahead of UTC.
double ScanOffset(Scanner& scanner) {
    if (scanner.Skip('Z'))
        return 0.0;
    const bool isAhead = scanner.Skip('+');
    if (!isAhead && !scanner.Skip('-'))
        return 0.0;
    const int hours = scanner.Digits(2);
    scanner.Require(':');
    const int minutes = scanner.Digits(2);
    scanner.RequireThat(hours <= 14 && minutes < 60);
    return (isAhead ? 60.0 : -60.0) * (hours * 60 + minutes);
}

}  // namespace

std::optional<CalendarTime> ParseDate(std::string_view text) {
    CalendarTime time;
    Scanner scanner(WithoutXmlSpaceAround(text));
    ScanDate(scanner, time);
    return scanner.IsDone() ? std::optional(time) : std::nullopt;
}

std::optional<CalendarTime> ParseTimeOfDay(std::string_view text) {
    CalendarTime time;
    Scanner scanner(WithoutXmlSpaceAround(text));
    ScanTimeOfDay(scanner, time);
    return scanner.IsDone() ? std::optional(time) : std::nullopt;
}

std::optional<CalendarTime> ParseDateTime(std::string_view text) {
    CalendarTime time;
    Scanner scanner(WithoutXmlSpaceAround(text));
    ScanDate(scanner, time);
    if (!scanner.Skip(' '))
        scanner.Require('T');
    ScanTimeOfDay(scanner, time);
    const double offset = ScanOffset(scanner);
    if (!scanner.IsDone())
        return std::nullopt;
    if (offset == 0.0)
        return time;
    // Offsets are whole minutes: the second stays as it is, to the last bit.
    const double second = std::exchange(time.second, 0.0);
    auto moved = TimeFromSeconds(SecondsSinceYear(time, 1970) - offset, 1970);
    if (moved)
        moved->second = second;
    return moved;
}

std::optional<CalendarTime> ParseAnyTime(std::string_view text) {
    if (const auto dateTime = ParseDateTime(text))
        return dateTime;
    const auto date = ParseDate(text);
    return date ? date : ParseTimeOfDay(text);
}

std::string DateText(const CalendarTime& time) {
    return PaddedNumber(time.year, 4) + "-" + PaddedNumber(time.month, 2) + "-" + PaddedNumber(time.day, 2);
}

std::string TimeOfDayText(const CalendarTime& time) {
    const int whole = static_cast<int>(time.second);
    std::string text = PaddedNumber(time.hour, 2) + ":" + PaddedNumber(time.minute, 2) + ":";
    if (time.second == whole)
        return text + PaddedNumber(whole, 2);
    // To the nanosecond, never rounded up to the next second.
    const double nanoseconds = std::min(std::floor((time.second - whole) * 1e9 + 1e-3), 999'999'999.0);
    std::string digits = PaddedNumber(static_cast<int>(nanoseconds), 9);
    digits.erase(digits.find_last_not_of('0') + 1);
    return text + PaddedNumber(whole, 2) + (digits.empty() ? "" : "." + digits);
}

std::string DateTimeText(const CalendarTime& time) {
    return DateText(time) + "T" + TimeOfDayText(time);
}

int DayOfYear(const CalendarTime& time) {
    int day = time.day;
    for (int month = 1; month < time.month; ++month)
        day += DaysOfMonth(time.year, month);
    return day;
}

long long DaysSinceYear(const CalendarTime& time, int year) {
    return DaysBeforeYear(time.year) + DayOfYear(time) - 1 - DaysBeforeYear(year);
}

double SecondsOfDay(const CalendarTime& time) {
    return time.hour * 3600 + time.minute * 60 + time.second;
}

double SecondsSinceYear(const CalendarTime& time, int year) {
    return static_cast<double>(DaysSinceYear(time, year)) * kSecondsOfDay + SecondsOfDay(time);
}

int WeekDay(const CalendarTime& time) {
    // 1 January of the year 0 was a Saturday.
    return static_cast<int>((DaysSinceYear(time, 0) + 6) % 7);
}

std::optional<CalendarTime> TimeFromSeconds(double seconds, int year) {
    double wholeDays = std::floor(seconds / kSecondsOfDay);
    double ofDay = seconds - wholeDays * kSecondsOfDay;
    // A moment so shortly before midnight that no double tells it from midnight.
    if (ofDay == kSecondsOfDay) {
        wholeDays += 1.0;
        ofDay = 0.0;
    }
    const double days = wholeDays + static_cast<double>(DaysBeforeYear(year));
    if (!(days >= 0.0 && days < static_cast<double>(DaysBeforeYear(kLastYear + 1))))
        return std::nullopt;
    CalendarTime time;
    long long rest = static_cast<long long>(days);
    // 400 years have 146097 days: the estimate is right or one too high.
    time.year = static_cast<int>(std::min<long long>(kLastYear, rest * 400 / 146097 + 1));
    while (DaysBeforeYear(time.year) > rest)
        --time.year;
    rest -= DaysBeforeYear(time.year);
    time.month = 1;
    while (rest >= DaysOfMonth(time.year, time.month))
        rest -= DaysOfMonth(time.year, time.month++);
    time.day = static_cast<int>(rest) + 1;
    time.hour = static_cast<int>(ofDay / 3600.0);
    time.minute = static_cast<int>((ofDay - time.hour * 3600.0) / 60.0);
    time.second = ofDay - time.hour * 3600.0 - time.minute * 60.0;
    return time;
}

}  // namespace KwBrevix_930
