// The values that routines are asked about beside ordinary numbers.
#pragma once

#include <limits>

#include "numerics/power/KwMV.h"

namespace numerics_samples {

inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
inline constexpr double kInfinity = std::numeric_limits<double>::infinity();
inline constexpr int kMaxInt = std::numeric_limits<int>::max();
inline const double kMissing = KwCommon_930::KwMV::Missing();

}  // namespace numerics_samples
