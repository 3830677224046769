// The t and F distributions as incomplete beta functions whose argument is carried to twice the digits.
#pragma once

#include "numerics/distributions/detail/gamma_parts.h"
#include "numerics/distributions/detail/tails.h"

namespace KwMath_930::detail {

// x = t^2/(df + t^2) and y = df/(df + t^2) for finite t; df > 0.
UnitPoint PointOfT(double t, double df);

// P(|T| < |t|) as the lower, P(|T| > |t|) as the upper tail; t finite and not 0.
Tails AroundZero(double t, double df);

// x = df1 f/(df2 + df1 f); finite f > 0.
UnitPoint PointOfF(double f, double df1, double df2);

// Both tails of F; f > 0, infinite too.
Tails TailsOfF(double f, double df1, double df2);

}  // namespace KwMath_930::detail
