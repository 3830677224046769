// Power series where a parameter is at most 1, uniform expansion about the transition point, continued fraction
// elsewhere, normal form for huge parameters. Sources: DiDonato and Morris, Algorithm 708, ACM TOMS 18 (1992), for the
// continued fraction and the leading factor; Peizer and Pratt, J. Amer. Statist. Assoc. 63 (1968), for the normal form.
// Test: KwDistFun_beta_test.cpp.
#include "numerics/distributions/detail/incomplete_beta.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "numerics/distributions/detail/error_function.h"
#include "numerics/distributions/detail/incomplete_gamma.h"
#include "numerics/distributions/detail/uniform_expansion.h"

namespace KwMath_930::detail {

namespace {

constexpr int kMostSteps = 5000;
constexpr double kOneSidedFrom = 1e15;  // a larger parameter against one below kBetaNormalFrom: the gamma limit
constexpr double kSeriesReach = 0.7;
constexpr double kExpansionReach = 1.0;

// x^a y^b / B(a, b) divided by this is I_x(a, b), for x at most about a/(a+b): the even part of the fraction in DLMF
// 8.17.22, b_0 + a_1/(b_1 + a_2/(b_2 + ...)). The inner fraction is summed from its convergents' differences (Steed),
// whose rounding errors shrink with them.
double Fraction(const UnitPoint& at, double a, double b, double lambda) {
    const double x = at.x.hi;
    const double step = 1.0 + at.y.hi;
    double first = 0.0;  // a_1
    double d = 0.0;
    double difference = 0.0;
    double sum = 0.0;
    double perOdd = 1.0 / (a + 1.0);
    for (int n = 1; n < kMostSteps && (n < 3 || std::abs(difference) > 0.05 * kEpsilon * std::abs(sum)); ++n) {
        const double perNext = 1.0 / (a + 2.0 * n + 1.0);
        const double share = n * (b - n) * x * perOdd;
        const double numerator = ((a + n - 1.0) * perOdd) * ((a + b + n - 1.0) * share) * x;
        const double denominator = n + share + ((a + n) * perNext) * (lambda + 1.0 + n * step);
        const double next = 1.0 / (denominator + numerator * d);
        if (n == 1) {
            first = numerator;
            difference = next;
        } else {
            difference *= -numerator * d * next;
        }
        sum += difference;
        d = next;
        perOdd = perNext;
    }
    return (a / (a + 1.0)) * (lambda + 1.0) + first * sum;
}

// The fraction from the side on which it converges; for a small parameter the tail on its far side is the small one.
Tails ByFraction(const UnitPoint& at, double a, double b) {
    const bool fromRight = a <= 1.0 && b > 1.0;
    const bool fromLeft = b <= 1.0 && a > 1.0;
    if (fromRight || (!fromLeft && at.x.hi >= (a + 1.0) / (a + b + 2.0))) {
        return Tails::FromUpper(BetaPrefix(at.Swapped(), b, a) * b /
                                Fraction(at.Swapped(), b, a, BetaShift(at.Swapped(), b, a).hi));
    }
    return Tails::FromLower(BetaPrefix(at, a, b) * a / Fraction(at, a, b, BetaShift(at, a, b).hi));
}

// 1 + (a+b)/(a+1) x + (a+b)(a+b+1)/((a+1)(a+2)) x^2 + ..., all terms positive: I_x(a, b) over BetaPrefix.
double PositiveSeries(double x, double a, double b) {
    double term = 1.0;
    double sum = 0.0;
    for (int n = 0; n < kMostSteps && term > 0.02 * kEpsilon * sum; ++n) {
        term *= x * ((a + b + n) / (a + 1.0 + n));
        sum += term;
    }
    return 1.0 + sum;
}

// Whether x lies below or about the mean of a variate with a small parameter a: there the positive series is short.
bool PositiveSeriesServes(double x, double a, double b) {
    return a < kUniformFrom && a <= b && x <= 0.5 && x * (a + b) <= a + 0.35 * std::sqrt(a);
}

// Both parameters above 1, at most kBetaNormalFrom.
Tails ByDeviance(const UnitPoint& at, double a, double b) {
    const DoubleDouble shift = BetaShift(at, a, b);
    const DoubleDouble deviance = BetaDeviance(at, a, b, shift);
    const double least = std::min(a, b);
    if (least >= kUniformFrom && UniformDistance(deviance, least) <= kUniformReach) {
        return a <= b ? UniformBeta(a, b, shift.hi > 0.0, deviance)
                      : UniformBeta(b, a, !(shift.hi > 0.0), deviance).Swapped();
    }
    if (PositiveSeriesServes(at.x.hi, a, b)) {
        return Tails::FromLower(BetaPrefix(deviance, a, b) * PositiveSeries(at.x.hi, a, b));
    }
    if (PositiveSeriesServes(at.y.hi, b, a)) {
        return Tails::FromUpper(BetaPrefix(deviance, b, a) * PositiveSeries(at.y.hi, b, a));
    }
    if (at.x.hi >= (a + 1.0) / (a + b + 2.0)) {
        return Tails::FromUpper(BetaPrefix(deviance, b, a) * b / Fraction(at.Swapped(), b, a, -shift.hi));
    }
    return Tails::FromLower(BetaPrefix(deviance, a, b) * a / Fraction(at, a, b, shift.hi));
}

// Whether the series at this end converges within some dozens of terms without cancelling.
bool SeriesServes(double x, double a, double b) {
    return x <= kSeriesReach && (b <= 1.0 || (a <= 1.0 && b * x <= kExpansionReach));
}

// False when the series has not converged.
bool BySeries(const UnitPoint& at, double a, double b, Tails& tails) {
    const BetaSeries series = SumBetaSeries(at.x.hi, a, b);
    if (!series.converged) {
        return false;
    }
    if (a == 0.5) {
        tails = Tails::FromLower(HalfBetaPower(at, b) * (1.0 + series.rest));
        return true;
    }
    if (a > 1.0 || (b == 0.5 && a > 0.5)) {
        // The leading factor without y^b: y is at least 1 - kSeriesReach here, and b at most 1.
        const double power = b == 0.5 ? 1.0 / std::sqrt(at.y.hi) : std::exp(-b * Log(at.y).hi);
        tails = Tails::FromLower(BetaPrefix(at, a, b) * power * (1.0 + series.rest));
        return true;
    }
    const DoubleDouble log = LogBetaPower(at, a, b);
    const double factor = Exp(log);
    tails = {factor * (1.0 + series.rest), -std::expm1(log.Value()) - factor * series.rest};
    return true;
}

// x^a and its complement.
Tails Power(DoubleDouble x, double a) {
    const DoubleDouble log = DoubleDouble(a) * Log(x);
    return {Exp(log), -std::expm1(log.Value())};
}

// Peizer and Pratt's normal form of a binomial tail with b - 1 successes in a + b - 1 trials at probability y.
Tails Normal(const UnitPoint& at, double a, double b) {
    const double n = a + b - 1.0;
    const double p = at.y.hi;
    const double q = at.x.hi;
    const double s = b - 0.5;
    const double t = a - 0.5;
    const double d = -BetaShift(at, a, b).hi + (2.0 * p - 1.0) / 3.0 + 0.02 * (q / b - p / a + (q - 0.5) / (a + b));
    const double spread =
        (1.0 + q * PeizerPratt(s / (n * p)) + p * PeizerPratt(t / (n * q))) / ((n + 1.0 / 6.0) * p * q);
    const double z = d * std::sqrt(std::max(spread, 0.0) / 2.0);
    return {0.5 * Erfc(-z), 0.5 * Erfc(z)};
}

// a above kOneSidedFrom, b below kBetaNormalFrom: -(a + (b - 1)/2) log x is a gamma variate.
Tails GammaLimit(const UnitPoint& at, double a, double b) {
    const double z = -(a + 0.5 * (b - 1.0)) * (at.x.hi < 0.5 ? std::log(at.x.hi) : std::log1p(-at.y.hi));
    if (!(z > 0.0)) {
        return {1.0, 0.0};
    }
    return z < 1e300 ? IncompleteGamma(z, b).Swapped() : Tails{0.0, 1.0};
}

}  // namespace

double PeizerPratt(double x) {
    static const double largest = std::sqrt(std::numeric_limits<double>::max());
    if (x > largest) {
        return -1.0;
    }
    if (x == 0.0) {
        return 1.0;
    }
    if (std::abs(x - 1.0) < 0.1) {
        // With u = x - 1: 2 times the sum over k >= 3 of (-1)^k u^(k-2) / (k (k - 1)).
        const double u = x - 1.0;
        double power = -2.0 * u;
        double sum = 0.0;
        for (int k = 3; k < 24; ++k) {
            sum += power / (k * (k - 1.0));
            power *= -u;
        }
        return sum;
    }
    const double gap = 1.0 - x;
    return (gap * (1.0 + x) + 2.0 * x * std::log(x)) / (gap * gap);
}

BetaSeries SumBetaSeries(double x, double a, double b) {
    BetaSeries series;
    double factor = 1.0;
    for (series.terms = 1; series.terms < kBetaSeriesTerms; ++series.terms) {
        const double n = series.terms;
        factor *= (n - b) * x / n;
        series.rest += factor / (a + n);
        if (std::abs(factor) < kBetaSeriesEnd) {
            series.converged = true;
            break;
        }
    }
    series.rest *= a;
    return series;
}

Tails IncompleteBeta(const UnitPoint& at, double a, double b) {
    const double least = std::min(a, b);
    const double most = std::max(a, b);
    if (least > kBetaNormalFrom) {
        return Normal(at, a, b);
    }
    if (most > kOneSidedFrom) {
        return a > b ? GammaLimit(at, a, b) : GammaLimit(at.Swapped(), b, a).Swapped();
    }
    if (least > 1.0) {
        return ByDeviance(at, a, b);
    }
    if (a == 1.0 || b == 1.0) {
        return a == 1.0 ? Power(at.y, b).Swapped() : Power(at.x, a);
    }
    Tails tails;
    if (SeriesServes(at.x.hi, a, b) && BySeries(at, a, b, tails)) {
        return tails;
    }
    if (SeriesServes(at.y.hi, b, a) && BySeries(at.Swapped(), b, a, tails)) {
        return tails.Swapped();
    }
    return ByFraction(at, a, b);
}

double LogMiss(const UnitPoint& at, double a, double b, DoubleDouble p) {
    if (!(a <= 1.0 && SeriesServes(at.x.hi, a, b))) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    const DoubleDouble miss = LogBetaPower(at, a, b) - Log(p);
    return miss.hi + (miss.lo + std::log1p(SumBetaSeries(at.x.hi, a, b).rest));
}

}  // namespace KwMath_930::detail
