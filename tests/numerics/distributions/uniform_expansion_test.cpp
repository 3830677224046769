// The uniform expansion against the series and fractions where both hold, and against exact sums.
#include "numerics/distributions/detail/uniform_expansion.h"

#include <gtest/gtest.h>

#include <cmath>

#include "numerics/distributions/detail/log_gamma.h"

namespace {

using KwMath_930::detail::BetaDeviance;
using KwMath_930::detail::BetaShift;
using KwMath_930::detail::DoubleDouble;
using KwMath_930::detail::GammaDeviance;
using KwMath_930::detail::kUniformReach;
using KwMath_930::detail::LogGamma;
using KwMath_930::detail::Tails;
using KwMath_930::detail::UniformBeta;
using KwMath_930::detail::UniformDistance;
using KwMath_930::detail::UniformGamma;
using KwMath_930::detail::UnitPoint;

// Q(n, x) = exp(-x) (1 + x + ... + x^(n-1)/(n-1)!) for whole n.
double PoissonSum(int n, double x) {
    double term = 1.0;
    double sum = 1.0;
    for (int k = 1; k < n; ++k) {
        term *= x / k;
        sum += term;
    }
    return std::exp(-x) * sum;
}

TEST(UniformGamma, IsThePoissonSumForWholeParameters) {
    for (const int p : {12, 17, 40, 133}) {
        for (const double share : {0.52, 0.83, 1.0, 1.37, 1.9}) {
            const double x = p * share;
            const DoubleDouble deviance = GammaDeviance(x, p);
            if (UniformDistance(deviance, p) <= kUniformReach) {
                EXPECT_NEAR(UniformGamma(x, p, deviance).upper / PoissonSum(p, x), 1.0, 3e-14) << p << ' ' << x;
            }
        }
    }
}

TEST(UniformGamma, TailsAddToOneOnBothSides) {
    for (const double x : {91.25, 100.5, 118.75}) {
        const Tails tails = UniformGamma(x, 100.5, GammaDeviance(x, 100.5));
        EXPECT_DOUBLE_EQ(tails.lower + tails.upper, 1.0);
    }
}

// I_x(a, b) for whole parameters is a binomial tail.
TEST(UniformBeta, IsTheBinomialSumForWholeParameters) {
    const int a = 14;
    const int b = 23;
    for (const double x : {0.25, 0.375, 0.4375, 0.5}) {
        const UnitPoint at(x);
        double sum = 0.0;
        for (int k = a; k < a + b; ++k) {
            sum += std::exp(LogGamma(a + b) - LogGamma(k + 1) - LogGamma(a + b - k) + k * std::log(x) +
                            (a + b - 1 - k) * std::log1p(-x));
        }
        const DoubleDouble shift = BetaShift(at, a, b);
        const Tails tails = UniformBeta(a, b, shift.hi > 0.0, BetaDeviance(at, a, b, shift));
        EXPECT_NEAR(tails.lower / sum, 1.0, 1e-13) << x;
    }
}

TEST(UniformBeta, IsAHalfWhereItMustBe) {
    for (const double a : {12.0, 57.25, 1e4, 3e9}) {
        const UnitPoint at(0.5);
        const DoubleDouble shift = BetaShift(at, a, a);
        EXPECT_NEAR(UniformBeta(a, a, shift.hi > 0.0, BetaDeviance(at, a, a, shift)).lower, 0.5, 2e-16) << a;
    }
}

}  // namespace
