// Conversions between data types.
#pragma once

#include <optional>
#include <string_view>

#include "host/Export.h"
#include "host/calendar.h"
#include "host/transform/DerivedValue.h"
#include "host/transform/FieldType.h"

namespace KwBrevix_930 {

/// Makes a value of one type one of another, in place. Missing and invalid values stay what they are.
/// Returns nothing; a value that is none of the new type becomes invalid: a text that is no number, a number other than
/// 1 and 0 as a boolean, a text that is no date, an impossible date.
/// Note: a number becomes an integer by rounding, halves towards plus infinity; a number becomes its shortest text, a
/// boolean true or false; a date and time becomes its date or its time of day, a date becomes its midnight, and any of
/// them becomes the count of days or seconds that the new type asks for, days without their fraction.
BREVIX_HOST_API void CastToType(FieldType to, FieldType from, DerivedValue& value);

/// Returns: whether CastToType may change anything.
BREVIX_HOST_API bool NeedsCast(FieldType to, FieldType from);

/// Returns: the moment that a value of a type is; nothing for one that is none.
BREVIX_HOST_API std::optional<CalendarTime> MomentOf(FieldType type, const DerivedValue& value);

/// Returns: the whole number next to a number, the greater one of two that are equally near.
BREVIX_HOST_API double RoundHalfUp(double number);

/// A text as a number of a type that has numbers: of a boolean, true and false, in letters of either case, are 1 and 0
/// and no other number is one; a date is the count that the type asks for.
/// Returns: nothing for a text that is none.
BREVIX_HOST_API std::optional<double> ParseNumberOfType(FieldType type, std::string_view text);

}  // namespace KwBrevix_930
