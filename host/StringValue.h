// A string value: one UTF-8 text.
#pragma once

#include "host/ScoreValue.h"

namespace KwBrevix_930 {

class BREVIX_HOST_API StringValue : public ScoreValue {
public:
    /// text: zero-terminated, UTF-8, copied; null counts as empty.
    explicit StringValue(const char* text);
    explicit StringValue(std::string text);

    const std::string& GetText() const { return fText; }
    void SetText(std::string_view text) { fText.assign(text); }

    ValueType GetType() const override;

    /// Returns: the number that the whole text is, otherwise the system-missing value.
    double GetDouble() const override;
    int GetInt() const override;
    std::string GetString() const override;
    std::variant<double, std::string> GetValue() const override;
    StringValue* Clone() const override;
    bool SetValue(const ScoreValue* other) override;

    /// Returns: false; an empty text is a text.
    bool IsSystemMissingValue() const override;
    bool Equal(const ScoreValue* other, bool ignoreCase, bool ignoreTrailingBlanks) const override;
    bool operator==(const ScoreValue& other) const override;
    bool operator<(const ScoreValue& other) const override;
    bool operator<=(const ScoreValue& other) const override;
    bool operator>(const ScoreValue& other) const override;
    bool operator>=(const ScoreValue& other) const override;

private:
    std::string fText;
};

}  // namespace KwBrevix_930
