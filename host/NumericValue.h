// A numeric value: one double.
#pragma once

#include "host/ScoreValue.h"

namespace KwBrevix_930 {

class BREVIX_HOST_API NumericValue : public ScoreValue {
public:
    explicit NumericValue(double value);

    /// Returns: the system-missing value, the most negative finite double; it marks an absent number.
    static double GetSysmisValue();

    void SetDoubleValue(double value) { fValue = value; }

    ValueType GetType() const override;
    double GetDouble() const override;
    int GetInt() const override;
    std::string GetString() const override;
    std::variant<double, std::string> GetValue() const override;
    NumericValue* Clone() const override;
    bool SetValue(const ScoreValue* other) override;
    bool IsSystemMissingValue() const override;
    bool Equal(const ScoreValue* other, bool ignoreCase, bool ignoreTrailingBlanks) const override;
    bool operator==(const ScoreValue& other) const override;
    bool operator<(const ScoreValue& other) const override;
    bool operator<=(const ScoreValue& other) const override;
    bool operator>(const ScoreValue& other) const override;
    bool operator>=(const ScoreValue& other) const override;

private:
    double fValue;
};

}  // namespace KwBrevix_930
