// Series below the parameter, continued fraction above it, uniform expansion about it, normal form for huge parameters.
// Source: Shea, Algorithm AS 239, Appl. Statist. 37 (1988), for the division of the work; DiDonato and Morris, ACM TOMS
// 12 (1986), for small parameters. Test: KwDistFun_gamma_test.cpp.
#include "numerics/distributions/detail/incomplete_gamma.h"

#include <cmath>

#include "numerics/distributions/detail/error_function.h"
#include "numerics/distributions/detail/gamma_parts.h"
#include "numerics/distributions/detail/log_gamma.h"
#include "numerics/distributions/detail/uniform_expansion.h"

namespace KwMath_930::detail {

namespace {

constexpr int kMostTerms = 1000;  // the regions keep series and fraction below 200

// 1 + x/(p+1) + x^2/((p+1)(p+2)) + ...
double LowerSeries(double x, double p) {
    double term = 1.0;
    double sum = 0.0;
    for (int n = 1; n < kMostTerms && term > 0.1 * kEpsilon * sum; ++n) {
        term *= x / (p + n);
        sum += term;
    }
    return 1.0 + sum;
}

// Gamma(p, x) exp(x) x^-p as a continued fraction: the sum of its convergents' differences (Steed), whose rounding
// errors shrink with them.
double UpperFraction(double x, double p) {
    double b = (x - p) + 1.0;
    double d = 1.0 / b;
    double difference = d;
    double sum = d;
    for (int n = 1; n < kMostTerms && std::abs(difference) > 0.05 * kEpsilon * std::abs(sum); ++n) {
        const double a = n * (p - n);
        b += 2.0;
        const double next = 1.0 / (a * d + b);
        difference *= -a * d * next;
        sum += difference;
        d = next;
    }
    return sum;
}

// Q for p <= 1 and small x: 1 - P would lose what P has near 1.
Tails SmallParameter(double x, double p) {
    const double exponent = (DoubleDouble(p) * Log(x) - DoubleDouble(LogGamma1p(p))).Value();
    const double power = std::exp(exponent);
    double term = 1.0;
    double sum = 0.0;
    for (int n = 1; n < kMostTerms && std::abs(term) > 0.1 * kEpsilon * std::abs(sum); ++n) {
        term *= -x / n;
        sum -= term / (p + n);
    }
    const double upper = power * (p * sum) - std::expm1(exponent);
    return upper < 0.5 ? Tails::FromUpper(upper) : Tails{GammaPrefix(x, p) * LowerSeries(x, p), upper};
}

// 3 sqrt(p) ((x/p)^(1/3) + 1/(9p) - 1) is nearly normal.
Tails WilsonHilferty(double x, double p) {
    const double z = 3.0 * std::sqrt(p) * (std::cbrt(x / p) + 1.0 / (9.0 * p) - 1.0);
    constexpr double kRootHalf = 0.7071067811865476;
    return {0.5 * Erfc(-z * kRootHalf), 0.5 * Erfc(z * kRootHalf)};
}

}  // namespace

Tails IncompleteGamma(double x, double p) {
    if (p > kGammaNormalFrom) {
        return WilsonHilferty(x, p);
    }
    if (x > 1e4 && x > 10.0 * p) {
        return {1.0, 0.0};
    }
    if (p >= kUniformFrom) {
        const DoubleDouble deviance = GammaDeviance(x, p);
        if (UniformDistance(deviance, p) <= kUniformReach) {
            return UniformGamma(x, p, deviance);
        }
    }
    if (p <= 1.0 && x < 1.1) {
        return SmallParameter(x, p);
    }
    if (x <= p || x < 1.1) {
        return Tails::FromLower(GammaPrefix(x, p) * LowerSeries(x, p));
    }
    return Tails::FromUpper(GammaPrefix(x, p) * p * UpperFraction(x, p));
}

}  // namespace KwMath_930::detail
