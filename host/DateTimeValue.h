// A date or time value: seconds since the start of its calendar, and the text that it was read from.
#pragma once

#include <utility>

#include "host/ScoreValue.h"

namespace KwBrevix_930 {

/// Compares as the number of seconds; its text is the one given.
class BREVIX_HOST_API DateTimeValue : public ScoreValue {
public:
    /// seconds: since the start of the variable's calendar; text: UTF-8.
    DateTimeValue(double seconds, std::string text) : fSeconds(seconds), fText(std::move(text)) {}

    ValueType GetType() const override { return kDateTime; }
    double GetDouble() const override { return fSeconds; }
    int GetInt() const override;
    std::string GetString() const override { return fText; }
    std::variant<double, std::string> GetValue() const override { return fSeconds; }
    DateTimeValue* Clone() const override { return new DateTimeValue(*this); }
    /// Fails: false unless the other value is a date or time too.
    bool SetValue(const ScoreValue* other) override;
    bool IsSystemMissingValue() const override;
    bool Equal(const ScoreValue* other, bool ignoreCase, bool ignoreTrailingBlanks) const override;
    bool operator==(const ScoreValue& other) const override;
    bool operator<(const ScoreValue& other) const override;
    bool operator<=(const ScoreValue& other) const override;
    bool operator>(const ScoreValue& other) const override;
    bool operator>=(const ScoreValue& other) const override;

private:
    double fSeconds;
    std::string fText;
};

}  // namespace KwBrevix_930
