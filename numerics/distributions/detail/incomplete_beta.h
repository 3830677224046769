// The regularised incomplete beta function, both tails.
#pragma once

#include "numerics/distributions/detail/gamma_parts.h"
#include "numerics/distributions/detail/tails.h"

namespace KwMath_930::detail {

inline constexpr int kBetaSeriesTerms = 10001;
inline constexpr double kBetaSeriesEnd = 1e-15;
inline constexpr double kBetaNormalFrom = 1e10;

// 1 + a sum of (1-b)(2-b)...(n-b)/n! x^n/(a+n): I_x(a, b) without its leading factor.
struct BetaSeries {
    double rest = 0.0;  // the sum without its first term 1
    int terms = 0;
    bool converged = false;
};
BetaSeries SumBetaSeries(double x, double a, double b);

// I_x(a, b) and 1 - I_x(a, b) for finite a, b > 0 and x, y > 0.
Tails IncompleteBeta(const UnitPoint& at, double a, double b);

// log I_x(a, b) - log p for a of at most 1, to about 1e-20 of its terms; NaN where the power series does not serve.
double LogMiss(const UnitPoint& at, double a, double b, DoubleDouble p);

// (1 - x^2 + 2 x log x)/(1 - x)^2 of Peizer and Pratt for x >= 0, as KwDistFun::cbtaux documents it.
double PeizerPratt(double x);

}  // namespace KwMath_930::detail
