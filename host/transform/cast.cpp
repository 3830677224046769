// Conversions between data types.
#include "host/transform/cast.h"

#include <cmath>

#include "host/number_text.h"

namespace KwBrevix_930 {

namespace {

double CountOf(FieldType type, const CalendarTime& moment) {
    if (type.code == FieldType::kDaysSince)
        return static_cast<double>(DaysSinceYear(moment, type.year));
    return type.code == FieldType::kSecondsSince ? SecondsSinceYear(moment, type.year) : SecondsOfDay(moment);
}

std::string MomentText(FieldType type, const CalendarTime& moment) {
    if (type.code == FieldType::kDate)
        return DateText(moment);
    return type.code == FieldType::kTime ? TimeOfDayText(moment) : DateTimeText(moment);
}

void CastToMoment(FieldType to, FieldType from, DerivedValue& value) {
    const auto moment = MomentOf(from, value);
    if (!moment)
        value.SetInvalid();
    else if (to.IsText())
        value.OwnText(MomentText(to, *moment));
    else
        value.SetNumber(CountOf(to, *moment));
}

void SetNumberOrInvalid(DerivedValue& value, const std::optional<double>& number) {
    if (number)
        value.SetNumber(*number);
    else
        value.SetInvalid();
}

void CastNumber(FieldType to, FieldType from, DerivedValue& value) {
    if (to.code == FieldType::kString)
        value.OwnText(from.code == FieldType::kBoolean ? (value.GetNumber() != 0.0 ? "true" : "false")
                                                       : NumberText(value.GetNumber()));
    else if (to.IsCalendarText() || (to.IsCount() && from.IsCount() && to != from))
        CastToMoment(to, from, value);
    else if (to.code == FieldType::kInteger)
        value.SetNumber(RoundHalfUp(value.GetNumber()));
    else if (to.code == FieldType::kBoolean && value.GetNumber() != 0.0 && value.GetNumber() != 1.0)
        value.SetInvalid();
}

void CastText(FieldType to, FieldType from, DerivedValue& value) {
    if (to.IsCalendarText())
        CastToMoment(to, from, value);
    else if (!to.IsText())
        SetNumberOrInvalid(value, ParseNumberOfType(to, value.GetText()));
}

}  // namespace

std::optional<CalendarTime> MomentOf(FieldType type, const DerivedValue& value) {
    if (value.IsText())
        return ParseAnyTime(value.GetText());
    switch (type.code) {
        case FieldType::kDaysSince:
            return TimeFromSeconds(value.GetNumber() * 86400.0, type.year);
        case FieldType::kSecondsSince:
            return TimeFromSeconds(value.GetNumber(), type.year);
        case FieldType::kTimeSeconds:
            return TimeFromSeconds(value.GetNumber(), 1970);
        default:
            return std::nullopt;
    }
}

void CastToType(FieldType to, FieldType from, DerivedValue& value) {
    if (value.IsNumber())
        CastNumber(to, from, value);
    else if (value.IsText())
        CastText(to, from, value);
}

bool NeedsCast(FieldType to, FieldType from) {
    if (to == from)
        return false;
    if (to.code == FieldType::kString)
        return !from.IsText();
    if (to.code == FieldType::kDouble || to.code == FieldType::kFloat)
        return from.IsText();
    return true;
}

double RoundHalfUp(double number) {
    const double below = std::floor(number);
    return number - below >= 0.5 ? below + 1.0 : below;
}

std::optional<double> ParseNumberOfType(FieldType type, std::string_view text) {
    if (const auto truth = type.code == FieldType::kBoolean ? ParseTruth(text) : std::nullopt)
        return *truth ? 1.0 : 0.0;
    if (type.IsCount()) {
        if (const auto moment = ParseAnyTime(text))
            return CountOf(type, *moment);
    }
    const auto number = ParseNumber(text);
    if (!number || std::isnan(*number))
        return std::nullopt;
    if (type.code == FieldType::kBoolean && *number != 0.0 && *number != 1.0)
        return std::nullopt;
    return type.code == FieldType::kInteger ? RoundHalfUp(*number) : *number;
}

}  // namespace KwBrevix_930
