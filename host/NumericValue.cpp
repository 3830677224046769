// A numeric value: conversions and comparisons.
#include "host/NumericValue.h"

#include <cmath>
#include <limits>
#include <optional>

#include "host/number_text.h"

namespace KwBrevix_930 {

namespace {

bool IsNumeric(const ScoreValue& value) {
    return value.GetType() == ScoreValue::kNumeric;
}

}  // namespace

ScoreValue::~ScoreValue() = default;

NumericValue::NumericValue(double value) : fValue(value) {}

double NumericValue::GetSysmisValue() {
    return std::numeric_limits<double>::lowest();
}

ScoreValue::ValueType NumericValue::GetType() const {
    return kNumeric;
}

double NumericValue::GetDouble() const {
    return fValue;
}

int NumericValue::GetInt() const {
    if (std::isnan(fValue) || IsSystemMissingValue())
        return 0;
    constexpr double kLowest = std::numeric_limits<int>::min();
    constexpr double kLargest = std::numeric_limits<int>::max();
    return static_cast<int>(std::fmin(std::fmax(fValue, kLowest), kLargest));
}

std::string NumericValue::GetString() const {
    return IsSystemMissingValue() ? std::string() : NumberText(fValue);
}

std::variant<double, std::string> NumericValue::GetValue() const {
    return fValue;
}

NumericValue* NumericValue::Clone() const {
    return new NumericValue(*this);
}

bool NumericValue::SetValue(const ScoreValue* other) {
    if (!other)
        return false;
    const std::variant<double, std::string> content = other->GetValue();
    const auto* text = std::get_if<std::string>(&content);
    const std::optional<double> number = text ? ParseNumber(*text) : std::get<double>(content);
    if (number)
        fValue = *number;
    return number.has_value();
}

bool NumericValue::IsSystemMissingValue() const {
    return fValue == GetSysmisValue();
}

bool NumericValue::Equal(const ScoreValue* other, bool, bool) const {
    return other && *this == *other;
}

bool NumericValue::operator==(const ScoreValue& other) const {
    return IsNumeric(other) && fValue == other.GetDouble();
}

bool NumericValue::operator<(const ScoreValue& other) const {
    return IsNumeric(other) && fValue < other.GetDouble();
}

bool NumericValue::operator<=(const ScoreValue& other) const {
    return IsNumeric(other) && fValue <= other.GetDouble();
}

bool NumericValue::operator>(const ScoreValue& other) const {
    return IsNumeric(other) && fValue > other.GetDouble();
}

bool NumericValue::operator>=(const ScoreValue& other) const {
    return IsNumeric(other) && fValue >= other.GetDouble();
}

}  // namespace KwBrevix_930
