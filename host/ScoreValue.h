// One typed value of a variable.
#pragma once

#include <string>
#include <variant>

#include "host/Export.h"

namespace KwBrevix_930 {

/// Abstract. A value is owned by whoever made it; the dictionary's and the record's values belong to the host.
class BREVIX_HOST_API ScoreValue {
public:
    enum ValueType { kNumeric = 0, kString = 1, kDateTime = 2 };

    ScoreValue() {}
    ScoreValue(const ScoreValue&) = default;
    ScoreValue& operator=(const ScoreValue&) = default;
    virtual ~ScoreValue();

    virtual ValueType GetType() const = 0;

    /// Returns: the value as a number; the system-missing value where it is none.
    virtual double GetDouble() const = 0;

    /// Returns: the value as a whole number, truncated and kept within the 32-bit range; 0 where it is none.
    virtual int GetInt() const = 0;

    /// Returns: the value as text, UTF-8.
    virtual std::string GetString() const = 0;

    /// Returns: what is stored, a number or a text.
    virtual std::variant<double, std::string> GetValue() const = 0;

    /// Returns: a new equal value, owned by the caller.
    virtual ScoreValue* Clone() const = 0;

    /// Takes over the other value's content, converted to this type.
    /// Fails: false for a null pointer or a content that this type cannot hold; nothing changes then.
    virtual bool SetValue(const ScoreValue* other) = 0;

    virtual bool IsSystemMissingValue() const = 0;

    /// Returns: whether both hold the same. Texts are compared without regard to case when ignoreCase is set, and
    /// without their trailing blanks when ignoreTrailingBlanks is set. A value of another kind, or a null pointer, is
    /// never equal.
    virtual bool Equal(const ScoreValue* other, bool ignoreCase, bool ignoreTrailingBlanks) const = 0;

    /// Comparisons hold only between values of one kind; across kinds all five are false.
    virtual bool operator==(const ScoreValue& other) const = 0;
    virtual bool operator<(const ScoreValue& other) const = 0;
    virtual bool operator<=(const ScoreValue& other) const = 0;
    virtual bool operator>(const ScoreValue& other) const = 0;
    virtual bool operator>=(const ScoreValue& other) const = 0;
};

}  // namespace KwBrevix_930
