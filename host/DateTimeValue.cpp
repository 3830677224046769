// A date or time value: conversions and comparisons.
#include "host/DateTimeValue.h"

#include "host/NumericValue.h"

namespace KwBrevix_930 {

namespace {

bool IsDateTime(const ScoreValue& value) {
    return value.GetType() == ScoreValue::kDateTime;
}

}  // namespace

int DateTimeValue::GetInt() const {
    return NumericValue(fSeconds).GetInt();
}

bool DateTimeValue::SetValue(const ScoreValue* other) {
    if (!other || !IsDateTime(*other))
        return false;
    fSeconds = other->GetDouble();
    fText = other->GetString();
    return true;
}

bool DateTimeValue::IsSystemMissingValue() const {
    return fSeconds == NumericValue::GetSysmisValue();
}

bool DateTimeValue::Equal(const ScoreValue* other, bool, bool) const {
    return other && *this == *other;
}

bool DateTimeValue::operator==(const ScoreValue& other) const {
    return IsDateTime(other) && fSeconds == other.GetDouble();
}

bool DateTimeValue::operator<(const ScoreValue& other) const {
    return IsDateTime(other) && fSeconds < other.GetDouble();
}

bool DateTimeValue::operator<=(const ScoreValue& other) const {
    return IsDateTime(other) && fSeconds <= other.GetDouble();
}

bool DateTimeValue::operator>(const ScoreValue& other) const {
    return IsDateTime(other) && fSeconds > other.GetDouble();
}

bool DateTimeValue::operator>=(const ScoreValue& other) const {
    return IsDateTime(other) && fSeconds >= other.GetDouble();
}

}  // namespace KwBrevix_930
