// The missing value. Test: KwMV_test.cpp.
#include "numerics/power/KwMV.h"

#include <limits>

namespace KwCommon_930 {

double KwMV::Missing() {
    return std::numeric_limits<double>::lowest();
}

bool KwMV::IsMissing(double value) {
    return value == Missing();
}

}  // namespace KwCommon_930
