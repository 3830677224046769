// Stirling's error, 1/Gamma and the leading terms, against identities and published values.
#include "numerics/distributions/detail/gamma_parts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "numerics/distributions/detail/log_gamma.h"

namespace {

using KwMath_930::detail::BetaPrefix;
using KwMath_930::detail::DoubleDouble;
using KwMath_930::detail::GammaDeviance;
using KwMath_930::detail::HalfStep;
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

// Over the slices of the table and beyond it, against x - p - p log(x/p) in pairs of doubles.
TEST(GammaDeviance, IsTheLogarithmsFormInEverySlice) {
    int served = 0;
    for (const double p : {1.0, 3.171, 29.73, 811.7}) {
        for (double share = 0.0131; share < 40.0; share *= 1.0137) {
            const double x = p * share;
            const DoubleDouble log = Log(DoubleDouble(x) / DoubleDouble(p));
            const DoubleDouble form = TwoSum(x, -p) - DoubleDouble(p) * log;
            const DoubleDouble gap = GammaDeviance(x, p) - form;
            EXPECT_LE(std::abs(gap.hi), 0x1p-53 * std::max(0.5, 0x1p-2 * form.hi)) << p << ' ' << share;
            served += form.hi < 32.0 ? 1 : 0;
        }
    }
    EXPECT_GT(served, 1000);
}

// HalfStep(x) HalfStep(x + 1/2) = sqrt(x / (x + 1/2)), over the pieces and their borders.
TEST(HalfStep, TwoHalvesMakeAWhole) {
    EXPECT_NEAR(HalfStep(0.5), 0.79788456080286536, 2e-16);  // sqrt(2/pi)
    EXPECT_NEAR(HalfStep(1.0), 0.88622692545275801, 2e-16);  // sqrt(pi)/2
    for (double x = 0.0037; x < 1e7; x *= 1.0731) {
        EXPECT_NEAR(HalfStep(x) * HalfStep(x + 0.5) / std::sqrt(x / (x + 0.5)), 1.0, 7e-16) << x;
    }
    for (const double border : {1.0, 1.25, 3.5, 16.0}) {
        EXPECT_NEAR(HalfStep(border), HalfStep(std::nextafter(border, 0.0)), 5e-16)
            << border;  // four roundings below 1
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

// With a parameter of one half it goes by square roots: continued beside it, where it does not.
TEST(BetaPrefix, HalfIsNoSpecialValue) {
    for (const double other : {0.31, 1.0, 7.25, 16.5, 4e5}) {
        const UnitPoint at(1.0 / (1.3 + other));
        const double next = std::nextafter(0.5, 1.0);
        EXPECT_NEAR(BetaPrefix(at, 0.5, other) / BetaPrefix(at, next, other), 1.0, 3e-15) << other;
        EXPECT_NEAR(BetaPrefix(at.Swapped(), other, 0.5) / BetaPrefix(at.Swapped(), other, next), 1.0, 3e-15) << other;
    }
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
