// The factors that densities are made of: Stirling's error, 1/Gamma, and the leading terms of the incomplete gamma and
// beta functions, whose exponents are formed as deviances so that nothing cancels.
// Source: Loader, Fast and accurate computation of binomial probabilities (2000).
#pragma once

#include "numerics/distributions/detail/DoubleDouble.h"

namespace KwMath_930::detail {

// log Gamma(x) - [(x - 1/2) log x - x + log(2 pi)/2], x >= 1.
double StirlingError(double x);

// StirlingError(x + a) - StirlingError(x), relatively accurate for small a too; x >= 1, 0 <= a <= 1.
double StirlingErrorStep(double x, double a);

// 1/Gamma(1 + x), 0 <= x < 2.
double ReciprocalGamma1(double x);

// Gamma(x + 1/2) / (Gamma(x) sqrt x), x > 0.
double HalfStep(double x);

// p log(p/x) + x - p >= 0, the deviance of a gamma variate; x, p > 0.
DoubleDouble GammaDeviance(double x, double p);

// x^p exp(-x) / Gamma(p + 1); x, p > 0.
double GammaPrefix(double x, double p);

// A point of the unit interval from both ends, so that neither end loses digits: x + y = 1.
struct UnitPoint {
    DoubleDouble x;
    DoubleDouble y;

    explicit UnitPoint(double value) : x(value), y(TwoSum(1.0, -value)) {}
    UnitPoint(DoubleDouble fromLeft, DoubleDouble fromRight) : x(fromLeft), y(fromRight) {}
    // u/(u+v) and v/(u+v), for u, v > 0.
    static UnitPoint Ratio(DoubleDouble u, DoubleDouble v);
    UnitPoint Swapped() const { return {y, x}; }
};

// a y - b x, by which (a + b) x lies below a and (a + b) y above b.
DoubleDouble BetaShift(const UnitPoint& at, double a, double b);

// a log(x0/x) + b log(y0/y) >= 0 with x0 = a/(a+b), the deviance of a beta variate; a, b >= 1, shift as BetaShift.
DoubleDouble BetaDeviance(const UnitPoint& at, double a, double b, DoubleDouble shift);

// x^a y^b / (a B(a, b)); a, b > 0, x and y not 0.
double BetaPrefix(const UnitPoint& at, double a, double b);

// The same for a, b >= 1 from the deviance.
double BetaPrefix(DoubleDouble deviance, double a, double b);

// log B(a, b).
double LogBeta(double a, double b);

// log of x^a / (a B(a, b)) for a <= 1: relatively accurate as a goes to 0.
DoubleDouble LogBetaPower(const UnitPoint& at, double a, double b);

// x^(1/2) / (1/2 B(1/2, b)): the same for a = 1/2, itself.
double HalfBetaPower(const UnitPoint& at, double b);

}  // namespace KwMath_930::detail
