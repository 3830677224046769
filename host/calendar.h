// Dates and times of ISO 8601 in the Gregorian calendar, carried back before its beginning; no time zones but UTC.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/Export.h"

namespace KwBrevix_930 {

/// A day and a time of day. What a text leaves out is the first of its kind: midnight, or 1 January 1970.
struct CalendarTime {
    int year = 1970;
    int month = 1;
    int day = 1;
    int hour = 0;
    int minute = 0;
    /// Less than 60; leap seconds are not known.
    double second = 0.0;
};

/// Texts as YYYY-MM-DD, hh:mm:ss and YYYY-MM-DDThh:mm:ss, seconds with any fraction, white space around them ignored. A
/// date and time may end in Z or in an offset as +hh:mm, and is given in UTC then; a blank may stand in place of the T.
/// Returns: nothing for a text that is none, or that names a day or a time that does not exist.
BREVIX_HOST_API std::optional<CalendarTime> ParseDate(std::string_view text);
BREVIX_HOST_API std::optional<CalendarTime> ParseTimeOfDay(std::string_view text);
BREVIX_HOST_API std::optional<CalendarTime> ParseDateTime(std::string_view text);

/// Any of the three.
BREVIX_HOST_API std::optional<CalendarTime> ParseAnyTime(std::string_view text);

/// Returns: the texts that the functions above read; a second without its fraction where that is zero.
BREVIX_HOST_API std::string DateText(const CalendarTime& time);
BREVIX_HOST_API std::string TimeOfDayText(const CalendarTime& time);
BREVIX_HOST_API std::string DateTimeText(const CalendarTime& time);

/// Returns: the number of days from 1 January of a year to the day, negative before it.
BREVIX_HOST_API long long DaysSinceYear(const CalendarTime& time, int year);

/// Returns: the number of seconds from the start of a year to the moment.
BREVIX_HOST_API double SecondsSinceYear(const CalendarTime& time, int year);

/// Returns: the number of seconds since midnight.
BREVIX_HOST_API double SecondsOfDay(const CalendarTime& time);

/// The moment that lies a number of seconds behind the start of a year; days count as 86400 seconds.
/// Returns: nothing for a moment outside the years 0 to 9999 or a number that is not finite.
BREVIX_HOST_API std::optional<CalendarTime> TimeFromSeconds(double seconds, int year);

/// Returns: 0 for Sunday to 6 for Saturday.
BREVIX_HOST_API int WeekDay(const CalendarTime& time);

/// Returns: the day's number in its year, from 1.
BREVIX_HOST_API int DayOfYear(const CalendarTime& time);

}  // namespace KwBrevix_930
