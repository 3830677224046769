// The calendar's view of a time, in the zone of the machine. Internal.
#pragma once

#include <ctime>

namespace KwDisplay_930 {

/// Safe to call from many threads.
std::tm GetLocalTime(std::time_t time);

}  // namespace KwDisplay_930
