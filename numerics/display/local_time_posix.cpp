// The calendar's view of a time, on POSIX.
#include "numerics/display/local_time.h"

namespace KwDisplay_930 {

std::tm GetLocalTime(std::time_t time) {
    std::tm local{};
    localtime_r(&time, &local);
    return local;
}

}  // namespace KwDisplay_930
