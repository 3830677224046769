// Dates and times as texts by a pattern of the C function strftime, in its plain locale.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/calendar.h"

namespace KwBrevix_930 {

/// A pattern of text and the conversions %a %A %b %B %c %C %d %D %e %F %g %G %h %H %I %j %m %M %n %p %r %R %S %t %T %u
/// %U %V %w %W %x %X %y %Y %%. There are no time zones: %z and %Z are none of them.
class DateTimeFormat {
public:
    /// Returns: nothing for a pattern with another conversion.
    static std::optional<DateTimeFormat> Parse(std::string_view pattern);

    std::string Format(const CalendarTime& time) const;

private:
    // Combined conversions are taken apart.
    std::string fPattern;
};

}  // namespace KwBrevix_930
