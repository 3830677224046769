// The data types of PMML.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/DictVar.h"
#include "host/Export.h"

namespace KwBrevix_930 {

/// Values of a type are numbers or texts; of boolean the numbers 1 and 0; of date, time and dateTime ISO 8601 texts; of
/// the types that count days or seconds, numbers. float is held as a double, as raw fields of that type are.
struct FieldType {
    enum Code {
        kString,
        kInteger,
        kFloat,
        kDouble,
        kBoolean,
        kDate,
        kTime,
        kDateTime,
        kDaysSince,
        kSecondsSince,
        kTimeSeconds
    };

    Code code = kDouble;
    /// The year at whose start kDaysSince and kSecondsSince begin to count; 0 for others.
    int year = 0;

    bool operator==(const FieldType&) const = default;

    /// Returns: whether values are texts.
    bool IsText() const { return code == kString || IsCalendarText(); }
    bool IsCalendarText() const { return code == kDate || code == kTime || code == kDateTime; }
    bool IsCount() const { return code == kDaysSince || code == kSecondsSince || code == kTimeSeconds; }

    BREVIX_HOST_API DictVar::DataType GetStorage() const;

    /// Returns: the name that documents use.
    BREVIX_HOST_API std::string GetName() const;
};

/// Returns: the type of that name; nothing for a text that is none.
BREVIX_HOST_API std::optional<FieldType> ParseFieldType(std::string_view name);

/// Returns: the type of a variable's values, as far as the variable tells it.
BREVIX_HOST_API FieldType TypeOf(const ScoreDictVar& variable);

}  // namespace KwBrevix_930
