// The calendar's view of a time, on Windows.
#include "numerics/display/local_time.h"

namespace KwDisplay_930 {

std::tm GetLocalTime(std::time_t time) {
    std::tm local{};
    localtime_s(&local, &time);
    return local;
}

}  // namespace KwDisplay_930
