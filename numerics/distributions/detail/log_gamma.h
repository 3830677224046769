// log Gamma, by the pieces that KwDistFun::zarndnlgam documents.
#pragma once

namespace KwMath_930::detail {

// log Gamma(x); NaN unless 0 < x, infinite where it overflows.
double LogGamma(double x);

// log Gamma(1 + x), 0 <= x <= 1, relatively accurate near both ends.
double LogGamma1p(double x);

}  // namespace KwMath_930::detail
