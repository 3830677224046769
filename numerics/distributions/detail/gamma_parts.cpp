// Stirling's error, 1/Gamma and the leading terms of the incomplete functions. Test: gamma_parts_test.cpp.
#include "numerics/distributions/detail/gamma_parts.h"

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>

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

constexpr double kNear = 0x1p-5;      // shares of the shape up to which a deviance is a short series
constexpr double kTabulatedTo = 8.0;  // and those up to which it is tabulated
constexpr double kTabulatedFrom = -0.75;
constexpr double kMostRough = 32.0;  // a larger deviance wants all of its digits
constexpr int kSliceShift = 48;      // leaves the exponent and four bits of the mantissa

// Which of the slices of the tables from 1 on, four a binade, x lies in, and how far from its middle.
struct QuarterBinade {
    std::size_t index;
    double beside;

    explicit QuarterBinade(double x) {
        constexpr int kShift = 50;  // leaves the exponent and two bits of the mantissa
        const std::uint64_t slice = std::bit_cast<std::uint64_t>(x) >> kShift;
        index = slice - (std::bit_cast<std::uint64_t>(1.0) >> kShift);
        beside = x - std::bit_cast<double>((slice << kShift) | (std::uint64_t{1} << (kShift - 1)));
    }
};

// 1/2 - r/3 + r^2/4 - ..., so that r - log(1 + r) = r^2 times this; |r| <= 1/16.
double SquareTail(double r) {
    static constexpr double kTerms[] = {1.0 / 2, -1.0 / 3, 1.0 / 4,  -1.0 / 5,  1.0 / 6,  -1.0 / 7,
                                        1.0 / 8, -1.0 / 9, 1.0 / 10, -1.0 / 11, 1.0 / 12, -1.0 / 13};
    return Polynomial(kTerms, r);
}

// shape times u - log(1 + u) for a shift = shape * u with u between the bounds above: with u = c + (1 + c) r about the
// middle c of its slice it is c - log(1 + c) + c r + (r - log(1 + r)), times shape. The first term, the largest by far,
// is formed exactly: the relative error is below 2^-56.
DoubleDouble TabulatedDeviance(double shape, DoubleDouble shift, double reciprocal, double u) {
    const auto bits = std::bit_cast<std::uint64_t>(std::abs(u));
    const std::uint64_t slice = bits >> kSliceShift;
    const double middle = std::bit_cast<double>((slice << kSliceShift) | (std::uint64_t{1} << (kSliceShift - 1)));
    const double c = std::copysign(middle, u);
    const std::size_t index = slice - (std::bit_cast<std::uint64_t>(kNear) >> kSliceShift);
    const DeviancePoint& point = u > 0.0 ? kDevianceAbove[index] : kDevianceBelow[index];
    const double top = TopHalf(shape);
    const double low = shape - top;
    const double beside = (((shift.hi - top * c) - low * c) + shift.lo) * point.reciprocal;  // shape r
    const double r = beside * reciprocal;
    const double rest = low * point.top + shape * point.rest + beside * (c + r * SquareTail(r));
    return QuickTwoSum(top * point.top, rest);
}

// shape times u - log(1 + u) for shift = shape * u and log(1 + u) = log(); shape >= 1. A deviance below 1/2 is formed
// in double: its rounding is that of a factor near 1.
template <class LogOfWhole>
DoubleDouble Deviance(double shape, DoubleDouble shift, const LogOfWhole& log) {
    const double reciprocal = 1.0 / shape;
    const double u = shift.hi * reciprocal;
    if (std::abs(u) < kNear) {
        return shift.hi * u < 1.0 ? DoubleDouble(shift.hi * u * (0.5 - u * MinusLog1pRest(u)))
                                  : DoubleDouble(shape) * MinusLog1p(shift / DoubleDouble(shape));
    }
    if (u > kTabulatedFrom && u < kTabulatedTo) {
        const DoubleDouble deviance = TabulatedDeviance(shape, shift, reciprocal, u);
        if (deviance.hi < kMostRough) {
            return deviance;
        }
    }
    return shift - DoubleDouble(shape) * log();
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
    if (x >= 16.0) {
        static constexpr double kTerms[] = {1.0 / 12, -1.0 / 360, 1.0 / 1260, -1.0 / 1680, 1.0 / 1188, -691.0 / 360360};
        const double r = 1.0 / x;
        return r * Polynomial(kTerms, r * r);
    }
    const QuarterBinade at(x);
    return Polynomial(kStirlingError[at.index], at.beside);
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

double HalfStep(double x) {
    if (x < 1.0) {
        return std::sqrt(x) * ReciprocalGamma1(x) / ((x + 0.5) * ReciprocalGamma1(x + 0.5));
    }
    if (x >= 16.0) {
        return Polynomial(kHalfStepSeries, 1.0 / x - 0.03125);
    }
    const QuarterBinade at(x);
    return Polynomial(kHalfStep[at.index], at.beside);
}

double ReciprocalGamma1(double x) {
    const int piece = x < 2.0 ? static_cast<int>(2.0 * x) : 3;
    return Polynomial(kReciprocalGamma1[piece], x - 0.25 * (2 * piece + 1));
}

DoubleDouble GammaDeviance(double x, double p) {
    return Deviance(p, TwoSum(x, -p), [x, p] {
        const double ratio = x / p;
        return ratio > 1e-280 && ratio < 1e280 && x < 1e280 && x > 1e-280 ? Log(DoubleDouble(x) / DoubleDouble(p))
                                                                          : Log(x) - Log(p);
    });
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

DoubleDouble BetaShift(const UnitPoint& at, double a, double b) {
    const DoubleDouble sum = TwoSum(a, b);
    return at.x.hi <= at.y.hi ? DoubleDouble(a) - sum * at.x : sum * at.y - DoubleDouble(b);
}

DoubleDouble BetaDeviance(const UnitPoint& at, double a, double b, DoubleDouble shift) {
    // (a + b) x = a - shift and (a + b) y = b + shift.
    const auto term = [&](double shape, DoubleDouble share, DoubleDouble from) {
        return Deviance(shape, from, [&] { return Log(share * TwoSum(a, b) / DoubleDouble(shape)); });
    };
    return term(a, at.x, -shift) + term(b, at.y, shift);
}

double BetaPrefix(DoubleDouble deviance, double a, double b) {
    const double sum = a + b;
    const double stirling = (StirlingError(a) - StirlingError(sum)) + StirlingError(b);
    return Exp(-(deviance + DoubleDouble(stirling))) * std::sqrt(b / (sum * (kTwoPi * a)));
}

double BetaPrefix(const UnitPoint& at, double a, double b) {
    const double sum = a + b;
    if (a >= 1.0 && b >= 1.0) {
        return BetaPrefix(BetaDeviance(at, a, b, BetaShift(at, a, b)), a, b);
    }
    if (a == 0.5) {
        return Exp(DoubleDouble(b) * Log(at.y)) * HalfBetaPower(at, b);
    }
    if (b == 0.5) {
        return Exp(DoubleDouble(a) * Log(at.x)) * HalfBetaPower(at.Swapped(), a) * (0.5 / a);
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

double HalfBetaPower(const UnitPoint& at, double b) {
    constexpr double kTwoByRootPi = 1.1283791670955126;
    return kTwoByRootPi * std::sqrt(at.x.hi * b) * HalfStep(b);
}

}  // namespace KwMath_930::detail
