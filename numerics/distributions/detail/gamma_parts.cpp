// Stirling's error, 1/Gamma and the leading terms of the incomplete functions. Test: gamma_parts_test.cpp.
#include "numerics/distributions/detail/gamma_parts.h"

#include <cmath>

#include "numerics/distributions/detail/log_gamma.h"
#include "numerics/distributions/detail/polynomial.h"
#include "numerics/distributions/detail/tables.h"

namespace KwMath_930::detail {

namespace {

constexpr double kTwoPi = 6.283185307179586;
constexpr double kSmallStep = 0.005;  // below it a difference of logarithms is taken from its derivatives

// Digamma (order 0) and its second and fourth derivative: asymptotic series from 10, below it by recurrence.
double Polygamma(int order, double x) {
    double sum = 0.0;
    for (; x < 10.0; x += 1.0) {
        const double r = 1.0 / x;
        sum -= order == 0 ? r : order == 2 ? 2.0 * r * r * r : 24.0 * r * r * r * r * r;
    }
    const double r = 1.0 / x;
    const double s = r * r;
    static constexpr double kDigamma[] = {-1.0 / 12,  1.0 / 120,     -1.0 / 252, 1.0 / 240,
                                          -1.0 / 132, 691.0 / 32760, -1.0 / 12};
    static constexpr double kSecond[] = {-1.0 / 2, 1.0 / 6, -1.0 / 6, 3.0 / 10};
    if (order == 0) {
        return sum + (std::log(x) - 0.5 * r + s * Polynomial(kDigamma, s));
    }
    if (order == 2) {
        return sum + s * (-1.0 - r + s * Polynomial(kSecond, s));
    }
    return sum + s * s * (-6.0 - 12.0 * r - 10.0 * s + 7.0 * s * s);
}

// shape times u - log(1 + u) for a shift = shape * u of at most 0.03 shape. A deviance below 1/2 is formed in double:
// its rounding is that of a factor near 1.
DoubleDouble NearDeviance(double shape, DoubleDouble shift) {
    const double rough = shift.hi / shape;
    if (shift.hi * rough < 1.0) {
        return shift.hi * rough * (0.5 - rough * MinusLog1pRest(rough));
    }
    return DoubleDouble(shape) * MinusLog1p(shift / DoubleDouble(shape));
}

// log[Gamma(a + b) / (Gamma(b) Gamma(1 + a))] - a log b for a <= 1 <= b.
double LogGammaRatioRest(double a, double b) {
    const double e = a / b;
    return e * (a - 0.5) - (a + b - 0.5) * MinusLog1p(e).hi + StirlingErrorStep(b, a) - LogGamma1p(a);
}

// log[Gamma(1 + a + b) / (Gamma(1 + a) Gamma(1 + b))] for a, b <= 1, relatively accurate as a goes to 0.
double LogBinomialSmall(double a, double b) {
    if (a > kSmallStep) {
        const double both = a + b;
        return (both < 1.0 ? LogGamma1p(both) : LogGamma(1.0 + both)) - LogGamma1p(b) - LogGamma1p(a);
    }
    const double middle = 1.0 + b + 0.5 * a;
    const double square = a * a;
    const double slope =
        Polygamma(0, middle) + square / 24.0 * (Polygamma(2, middle) + square / 80.0 * Polygamma(4, middle));
    return a * slope - LogGamma1p(a);
}

// log(x b), by one logarithm where the product can be split.
DoubleDouble LogOfProduct(DoubleDouble x, double b) {
    return x.hi > 1e-270 ? Log(x * DoubleDouble(b)) : Log(x) + Log(b);
}

}  // namespace

double StirlingError(double x) {
    if (x >= 10.0) {
        static constexpr double kTerms[] = {1.0 / 12,   -1.0 / 360,      1.0 / 1260, -1.0 / 1680,
                                            1.0 / 1188, -691.0 / 360360, 1.0 / 156};
        const double r = 1.0 / x;
        return r * Polynomial(kTerms, r * r);
    }
    int piece = 0;
    while (x >= kStirlingBounds[piece + 1]) {
        ++piece;
    }
    return Polynomial(kStirlingError[piece], x - 0.5 * (kStirlingBounds[piece] + kStirlingBounds[piece + 1]));
}

double StirlingErrorStep(double x, double a) {
    if (a > kSmallStep) {
        return StirlingError(x + a) - StirlingError(x);
    }
    // The derivative digamma(z) - log z + 1/(2z) at the middle, and what its own even derivatives add.
    const double middle = x + 0.5 * a;
    const double r = 1.0 / middle;
    const double square = a * a;
    const double slope = Polygamma(0, middle) - std::log(middle) + 0.5 * r;
    const double second = Polygamma(2, middle) + r * r * (1.0 + r);
    const double fourth = Polygamma(4, middle) + 6.0 * r * r * r * r * (1.0 + 2.0 * r);
    return a * (slope + square / 24.0 * (second + square / 80.0 * fourth));
}

double ReciprocalGamma1(double x) {
    const int piece = x < 2.0 ? static_cast<int>(2.0 * x) : 3;
    return Polynomial(kReciprocalGamma1[piece], x - 0.25 * (2 * piece + 1));
}

DoubleDouble GammaDeviance(double x, double p) {
    const DoubleDouble difference = TwoSum(x, -p);
    if (std::abs(difference.hi) <= 0.03 * p) {
        return NearDeviance(p, difference);
    }
    const double ratio = x / p;
    const DoubleDouble log = ratio > 1e-280 && ratio < 1e280 && x < 1e280 && x > 1e-280
                                 ? Log(DoubleDouble(x) / DoubleDouble(p))
                                 : Log(x) - Log(p);
    return difference - DoubleDouble(p) * log;
}

double GammaPrefix(double x, double p) {
    if (p < 1.0) {
        return Exp(DoubleDouble(p) * Log(x) - DoubleDouble(x)) * ReciprocalGamma1(p);
    }
    return Exp(-(GammaDeviance(x, p) + DoubleDouble(StirlingError(p)))) / std::sqrt(kTwoPi * p);
}

UnitPoint UnitPoint::Ratio(DoubleDouble u, DoubleDouble v) {
    const DoubleDouble sum = u + v;
    return {u / sum, v / sum};
}

DoubleDouble BetaDeviance(const UnitPoint& at, double a, double b) {
    // With lambda = a y - b x: (a + b) x = a - lambda and (a + b) y = b + lambda.
    const DoubleDouble lambda = DoubleDouble(a) * at.y - DoubleDouble(b) * at.x;
    const auto term = [&](double shape, DoubleDouble share, DoubleDouble shift) {
        if (std::abs(shift.hi) <= 0.03 * shape) {
            return NearDeviance(shape, shift);
        }
        return shift - DoubleDouble(shape) * Log(share * TwoSum(a, b) / DoubleDouble(shape));
    };
    return term(a, at.x, -lambda) + term(b, at.y, lambda);
}

double BetaPrefix(const UnitPoint& at, double a, double b) {
    const double sum = a + b;
    if (a >= 1.0 && b >= 1.0) {
        const double stirling = (StirlingError(a) - StirlingError(sum)) + StirlingError(b);
        return Exp(-(BetaDeviance(at, a, b) + DoubleDouble(stirling))) * std::sqrt(b / sum / (kTwoPi * a));
    }
    if (a < 1.0 && b < 1.0) {
        const DoubleDouble power = DoubleDouble(a) * Log(at.x) + DoubleDouble(b) * Log(at.y);
        return Exp(power) * (b / sum) * (ReciprocalGamma1(a) * ReciprocalGamma1(b) / ReciprocalGamma1(sum));
    }
    if (a < 1.0) {
        const DoubleDouble power = DoubleDouble(a) * LogOfProduct(at.x, b) + DoubleDouble(b) * Log(at.y);
        return Exp(power + DoubleDouble(LogGammaRatioRest(a, b)));
    }
    const DoubleDouble power = DoubleDouble(a) * Log(at.x) + DoubleDouble(b) * LogOfProduct(at.y, a);
    return Exp(power + DoubleDouble(LogGammaRatioRest(b, a))) * (b / a);
}

double LogBeta(double a, double b) {
    if (a > b) {
        return LogBeta(b, a);
    }
    if (a >= 1.0) {
        const double share = a / (a + b);
        const double stirling = (StirlingError(a) - StirlingError(a + b)) + StirlingError(b);
        return a * std::log(share) + b * std::log1p(-share) - 0.5 * std::log(a * (b / (a + b)) / kTwoPi) + stirling;
    }
    if (b >= 1.0) {
        return -(a * std::log(b) + LogGammaRatioRest(a, b)) - std::log(a);
    }
    return std::log1p(a / b) - LogBinomialSmall(a, b) - std::log(a);
}

DoubleDouble LogBetaPower(const UnitPoint& at, double a, double b) {
    if (b < 1.0) {
        const DoubleDouble share = a > 0.5 * b ? Log(TwoSum(a, b) / DoubleDouble(b)) : std::log1p(a / b);
        return DoubleDouble(a) * Log(at.x) + (DoubleDouble(LogBinomialSmall(a, b)) - share);
    }
    return DoubleDouble(a) * LogOfProduct(at.x, b) + DoubleDouble(LogGammaRatioRest(a, b));
}

}  // namespace KwMath_930::detail
