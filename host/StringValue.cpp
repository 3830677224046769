// A string value: conversions and comparisons, byte by byte.
#include "host/StringValue.h"

#include <algorithm>
#include <string_view>

#include "host/NumericValue.h"
#include "host/number_text.h"

namespace KwBrevix_930 {

namespace {

bool IsString(const ScoreValue& value) {
    return value.GetType() == ScoreValue::kString;
}

std::string_view WithoutTrailingBlanks(std::string_view text) {
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

// Letters of the ASCII range only.
char ToLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool EqualIgnoringCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char left, char right) { return ToLower(left) == ToLower(right); });
}

}  // namespace

StringValue::StringValue(const char* text) : fText(text ? text : "") {}

StringValue::StringValue(std::string text) : fText(std::move(text)) {}

ScoreValue::ValueType StringValue::GetType() const {
    return kString;
}

double StringValue::GetDouble() const {
    return ParseNumber(fText).value_or(NumericValue::GetSysmisValue());
}

int StringValue::GetInt() const {
    return NumericValue(GetDouble()).GetInt();
}

std::string StringValue::GetString() const {
    return fText;
}

std::variant<double, std::string> StringValue::GetValue() const {
    return fText;
}

StringValue* StringValue::Clone() const {
    return new StringValue(*this);
}

bool StringValue::SetValue(const ScoreValue* other) {
    if (!other)
        return false;
    fText = other->GetString();
    return true;
}

bool StringValue::IsSystemMissingValue() const {
    return false;
}

bool StringValue::Equal(const ScoreValue* other, bool ignoreCase, bool ignoreTrailingBlanks) const {
    if (!other || !IsString(*other))
        return false;
    const std::string otherText = other->GetString();
    std::string_view a = fText;
    std::string_view b = otherText;
    if (ignoreTrailingBlanks) {
        a = WithoutTrailingBlanks(a);
        b = WithoutTrailingBlanks(b);
    }
    return ignoreCase ? EqualIgnoringCase(a, b) : a == b;
}

bool StringValue::operator==(const ScoreValue& other) const {
    return IsString(other) && fText == other.GetString();
}

bool StringValue::operator<(const ScoreValue& other) const {
    return IsString(other) && fText < other.GetString();
}

bool StringValue::operator<=(const ScoreValue& other) const {
    return IsString(other) && fText <= other.GetString();
}

bool StringValue::operator>(const ScoreValue& other) const {
    return IsString(other) && fText > other.GetString();
}

bool StringValue::operator>=(const ScoreValue& other) const {
    return IsString(other) && fText >= other.GetString();
}

}  // namespace KwBrevix_930
