// Dates and times as texts by a pattern of the C function strftime.
#include "host/transform/DateTimeFormat.h"

#include "host/number_text.h"

namespace KwBrevix_930 {

namespace {

constexpr std::string_view kDays[] = {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};
constexpr std::string_view kMonths[] = {"January", "February", "March",     "April",   "May",      "June",
                                        "July",    "August",   "September", "October", "November", "December"};

// What a combined conversion stands for; empty for others.
std::string_view TakenApart(char conversion) {
    switch (conversion) {
        case 'c':
            return "%a %b %e %H:%M:%S %Y";
        case 'D':
        case 'x':
            return "%m/%d/%y";
        case 'F':
            return "%Y-%m-%d";
        case 'r':
            return "%I:%M:%S %p";
        case 'R':
            return "%H:%M";
        case 'T':
        case 'X':
            return "%H:%M:%S";
        default:
            return {};
    }
}

// The year and the week of ISO 8601: a week belongs to the year of its Thursday.
struct IsoWeek {
    int year;
    int week;
};

IsoWeek IsoWeekOf(const CalendarTime& time) {
    const int fromMonday = (WeekDay(time) + 6) % 7;
    const int thursday = DayOfYear(time) - fromMonday + 3;
    const auto daysOf = [](int year) { return DayOfYear({year, 12, 31, 0, 0, 0.0}); };
    if (thursday < 1)
        return {time.year - 1, (thursday + daysOf(time.year == 0 ? 399 : time.year - 1) + 6) / 7};
    if (thursday > daysOf(time.year))
        return {time.year + 1, 1};
    return {time.year, (thursday + 6) / 7};
}

// Weeks of the year; the days before the first one of the day that begins weeks are in week 0.
int WeekOfYear(const CalendarTime& time, int firstDay) {
    return (DayOfYear(time) + 6 - (WeekDay(time) + 7 - firstDay) % 7) / 7;
}

std::string DayText(const CalendarTime& time, char conversion) {
    switch (conversion) {
        case 'a':
            return std::string(kDays[WeekDay(time)].substr(0, 3));
        case 'A':
            return std::string(kDays[WeekDay(time)]);
        case 'd':
            return PaddedNumber(time.day, 2);
        case 'e':
            return PaddedNumber(time.day, 2, ' ');
        case 'j':
            return PaddedNumber(DayOfYear(time), 3);
        case 'u':
            return std::to_string((WeekDay(time) + 6) % 7 + 1);
        case 'U':
            return PaddedNumber(WeekOfYear(time, 0), 2);
        case 'V':
            return PaddedNumber(IsoWeekOf(time).week, 2);
        case 'w':
            return std::to_string(WeekDay(time));
        default:
            return PaddedNumber(WeekOfYear(time, 1), 2);
    }
}

std::string MonthOrYearText(const CalendarTime& time, char conversion) {
    switch (conversion) {
        case 'b':
        case 'h':
            return std::string(kMonths[time.month - 1].substr(0, 3));
        case 'B':
            return std::string(kMonths[time.month - 1]);
        case 'C':
            return PaddedNumber(time.year / 100, 2);
        case 'g':
            return PaddedNumber((IsoWeekOf(time).year + 100) % 100, 2);
        case 'G':
            return std::to_string(IsoWeekOf(time).year);
        case 'm':
            return PaddedNumber(time.month, 2);
        case 'y':
            return PaddedNumber(time.year % 100, 2);
        default:
            return std::to_string(time.year);
    }
}

std::string TimeText(const CalendarTime& time, char conversion) {
    switch (conversion) {
        case 'H':
            return PaddedNumber(time.hour, 2);
        case 'I':
            return PaddedNumber((time.hour + 11) % 12 + 1, 2);
        case 'M':
            return PaddedNumber(time.minute, 2);
        case 'p':
            return time.hour < 12 ? "AM" : "PM";
        default:
            return PaddedNumber(static_cast<int>(time.second), 2);
    }
}

constexpr std::string_view kDayConversions = "aAdejuUVwW";
constexpr std::string_view kMonthOrYearConversions = "bhBCgGmyY";
constexpr std::string_view kTimeConversions = "HIMpS";

bool Has(std::string_view conversions, char conversion) {
    return conversions.find(conversion) != std::string_view::npos;
}

bool IsConversion(char conversion) {
    return conversion == '%' || Has(kDayConversions, conversion) || Has(kMonthOrYearConversions, conversion) ||
           Has(kTimeConversions, conversion);
}

std::string ConversionText(const CalendarTime& time, char conversion) {
    if (Has(kDayConversions, conversion))
        return DayText(time, conversion);
    if (Has(kMonthOrYearConversions, conversion))
        return MonthOrYearText(time, conversion);
    return conversion == '%' ? "%" : TimeText(time, conversion);
}

}  // namespace

std::optional<DateTimeFormat> DateTimeFormat::Parse(std::string_view pattern) {
    DateTimeFormat format;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] != '%') {
            format.fPattern += pattern[i];
            continue;
        }
        if (++i == pattern.size())
            return std::nullopt;
        if (const auto parts = TakenApart(pattern[i]); !parts.empty())
            format.fPattern += parts;
        else if (pattern[i] == 'n' || pattern[i] == 't')
            format.fPattern += pattern[i] == 'n' ? '\n' : '\t';
        else if (IsConversion(pattern[i]))
            format.fPattern += {'%', pattern[i]};
        else
            return std::nullopt;
    }
    return format;
}

std::string DateTimeFormat::Format(const CalendarTime& time) const {
    std::string text;
    for (std::size_t i = 0; i < fPattern.size(); ++i) {
        if (fPattern[i] == '%')
            text += ConversionText(time, fPattern[++i]);
        else
            text += fPattern[i];
    }
    return text;
}

}  // namespace KwBrevix_930
