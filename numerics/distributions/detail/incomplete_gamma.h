// The regularised incomplete gamma functions, both tails.
#pragma once

#include <limits>

#include "numerics/distributions/detail/tails.h"

namespace KwMath_930::detail {

// P(p, x) and Q(p, x) for finite x > 0, p > 0. Above kGammaNormalFrom the Wilson-Hilferty normal form serves.
Tails IncompleteGamma(double x, double p);

inline constexpr double kGammaNormalFrom = 1e10;

// What the last terms of a series are measured by: from 1 to the next double.
inline constexpr double kEpsilon = std::numeric_limits<double>::epsilon();

}  // namespace KwMath_930::detail
