// The error function's kernels: erf, erfc and erfc scaled by exp(x^2).
#pragma once

#include <cmath>

#include "numerics/distributions/detail/DoubleDouble.h"

namespace KwMath_930::detail {

// erf(x).
double Erf(double x);

// erfc(x), relative accuracy kept far out.
double Erfc(double x);

// exp(x^2) erfc(x) for x >= 0.
double ScaledErfc(double x);

// exp(-x^2 / 2), the rounding of x^2 made good; 0 where the exponent is below -708.39.
inline double ExpHalfSquare(DoubleDouble x) {
    const double square = x.hi * x.hi;
    if (square > 2.0 * 708.39) {
        return 0.0;
    }
    const double top = TopHalf(x.hi);
    const double rest = (top * top - square) + (x.hi - top) * (x.hi + top);
    const double leading = std::exp(-0.5 * square);
    return leading - leading * (0.5 * rest + x.hi * x.lo);
}

}  // namespace KwMath_930::detail
