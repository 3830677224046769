// Stirling's error, 1/Gamma and the leading terms, against identities and published values.
#include "numerics/distributions/detail/gamma_parts.h"

#include <gtest/gtest.h>

#include <cmath>

#include "numerics/distributions/detail/log_gamma.h"

namespace {

using KwMath_930::detail::BetaPrefix;
using KwMath_930::detail::DoubleDouble;
using KwMath_930::detail::GammaDeviance;
using KwMath_930::detail::Log;
using KwMath_930::detail::LogGamma1p;
using KwMath_930::detail::ReciprocalGamma1;
using KwMath_930::detail::StirlingError;
using KwMath_930::detail::StirlingErrorStep;
using KwMath_930::detail::TwoSum;
using KwMath_930::detail::UnitPoint;

// delta(1) = 1 - log(2 pi)/2 and delta(x + 1) - delta(x) = 1 - (x + 1/2) log(1 + 1/x).
TEST(StirlingError, StartsRightAndFollowsItsRecurrence) {
    EXPECT_NEAR(StirlingError(1.0), 0.081061466795327258, 0x1p-56);  // one ulp
    for (double x = 1.07; x < 40.0; x *= 1.093) {
        const DoubleDouble log = Log(DoubleDouble(1.0) + DoubleDouble(1.0) / DoubleDouble(x));
        const DoubleDouble step = DoubleDouble(1.0) - (DoubleDouble(x) + DoubleDouble(0.5)) * log;
        const DoubleDouble shifted = TwoSum(x, 1.0);
        if (shifted.lo == 0.0) {
            EXPECT_NEAR(StirlingError(x + 1.0) - StirlingError(x), step.hi, 4e-17) << x;
        }
    }
}

TEST(StirlingErrorStep, MeetsThePlainDifference) {
    for (const double x : {1.0, 1.37, 4.21, 17.9, 1234.5}) {
        for (const double a : {0.0049, 0.0051, 0.37}) {
            EXPECT_NEAR(StirlingErrorStep(x, a), StirlingError(x + a) - StirlingError(x), 3e-17) << x << ' ' << a;
        }
    }
}

TEST(ReciprocalGamma1, IsTheReciprocalOfTheFactorialAndMeetsAtItsPieces) {
    EXPECT_DOUBLE_EQ(ReciprocalGamma1(0.0), 1.0);
    EXPECT_DOUBLE_EQ(ReciprocalGamma1(1.0), 1.0);
    EXPECT_DOUBLE_EQ(ReciprocalGamma1(0.5), 1.1283791670955126);  // 2/sqrt(pi)
    EXPECT_DOUBLE_EQ(ReciprocalGamma1(1.5), 0.75225277806367505);
    for (const double x : {0.5, 1.0, 1.5}) {
        EXPECT_NEAR(ReciprocalGamma1(x), ReciprocalGamma1(std::nextafter(x, 0.0)), 4e-16) << x;
    }
}

TEST(GammaDeviance, IsZeroAtThePeakAndAgreesAcrossItsSwitch) {
    EXPECT_EQ(GammaDeviance(17.3, 17.3).hi, 0.0);
    for (const double edge : {1.03, 0.97}) {
        const double p = 811.7;
        const double inside = GammaDeviance(p * edge * (1.0 - (edge - 1.0) * 1e-9), p).hi;
        const double outside = GammaDeviance(p * edge * (1.0 + (edge - 1.0) * 1e-9), p).hi;
        EXPECT_NEAR(inside / outside, 1.0, 1e-7);
        EXPECT_LT(inside, outside);
    }
}

TEST(LogGamma1p, VanishesAtBothEndsWithItsSlope) {
    EXPECT_EQ(LogGamma1p(0.0), 0.0);
    EXPECT_EQ(LogGamma1p(1.0), 0.0);
    EXPECT_NEAR(LogGamma1p(1e-20) / -5.7721566490153286e-21, 1.0, 4e-16);
}

// Gamma(a + b)/(Gamma(a + 1) Gamma(b)) for whole numbers: x^a y^b C(a + b - 1, a).
TEST(BetaPrefix, IsABinomialTermForWholeParameters) {
    const UnitPoint at(0.3125);
    EXPECT_DOUBLE_EQ(BetaPrefix(at, 3.0, 4.0), std::pow(0.3125, 3) * std::pow(0.6875, 4) * 20.0);
    EXPECT_DOUBLE_EQ(BetaPrefix(at, 1.0, 1.0), 0.3125 * 0.6875);
}

TEST(BetaPrefix, FollowsItsRecurrenceAcrossParameterOne) {
    const UnitPoint at(0.40625);
    for (const double a : {0.0078125, 0.25, 0.75}) {
        for (const double b : {0.125, 0.9375, 3.5, 1e6 + 0.25}) {
            const double ratio = BetaPrefix(at, a + 1.0, b) / BetaPrefix(at, a, b);
            if (std::isfinite(ratio)) {
                EXPECT_NEAR(ratio / (at.x.hi * (a + b) / (a + 1.0)), 1.0, 3e-15) << a << ' ' << b;
            }
        }
    }
}

}  // namespace
