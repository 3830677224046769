// The error function's kernels: erf, erfc and erfc scaled by exp(x^2).
#pragma once

#include "numerics/distributions/detail/DoubleDouble.h"

namespace KwMath_930::detail {

// erf(x).
double Erf(double x);

// erfc(x), relative accuracy kept far out.
double Erfc(double x);

// exp(x^2) erfc(x) for x >= 0.
double ScaledErfc(double x);

// exp(-x^2 / 2), the rounding of x^2 made good; 0 where the exponent is below -708.39.
double ExpHalfSquare(DoubleDouble x);

}  // namespace KwMath_930::detail
