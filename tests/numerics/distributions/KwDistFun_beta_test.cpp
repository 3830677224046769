// The incomplete beta function and its inverse.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "numerics/distributions/KwDistFun.h"
#include "numerics/distributions/detail/incomplete_beta.h"
#include "tests/numerics/special_values.h"
#include "tests/support/KwDistFunTestAccess.h"

namespace {

using KwMath_930::KwDistFun;
using Kernels = KwMath_930::KwDistFunTestAccess;
using KwMath_930::detail::BetaPrefix;
using KwMath_930::detail::BetaSeries;
using KwMath_930::detail::IncompleteBeta;
using KwMath_930::detail::kBetaNormalFrom;
using KwMath_930::detail::LogMiss;
using KwMath_930::detail::SumBetaSeries;
using KwMath_930::detail::Tails;
using KwMath_930::detail::UnitPoint;

using numerics_samples::kInfinity;
using numerics_samples::kMissing;
using numerics_samples::kNaN;

TEST(KwDistFunBeta, RefusesParametersOutOfDomain) {
    for (const double bad : {0.0, -1.3, kNaN, kInfinity}) {
        long ier = 0;
        EXPECT_EQ(Kernels::cdfbet(0.3, bad, 2.0, ier), kMissing) << bad;
        EXPECT_EQ(ier, 1);
        EXPECT_EQ(KwDistFun::CdfBeta(0.3, 2.0, bad), kMissing) << bad;
        EXPECT_EQ(KwDistFun::IdfBeta(0.3, bad, 2.0), kMissing) << bad;
    }
    EXPECT_EQ(KwDistFun::CdfBeta(kNaN, 2.0, 3.0), kMissing);
}

TEST(KwDistFunBeta, IsZeroAndOneOutsideTheUnitInterval) {
    for (const double a : {0.3, 1.0, 4.7}) {
        EXPECT_EQ(KwDistFun::CdfBeta(0.0, a, 2.3), 0.0);
        EXPECT_EQ(KwDistFun::CdfBeta(-0.7, a, 2.3), 0.0);
        EXPECT_EQ(KwDistFun::CdfBeta(1.0, a, 2.3), 1.0);
        EXPECT_EQ(KwDistFun::CdfBeta(kInfinity, a, 2.3), 1.0);
    }
}

TEST(KwDistFunBeta, ParametersOfOneAreTheirFormulasAsWritten) {
    EXPECT_EQ(KwDistFun::CdfBeta(0.3717, 1.0, 1.0), 0.3717);
    EXPECT_EQ(KwDistFun::CdfBeta(1e-12, 1.0, 3.3), 1.0 - std::exp(3.3 * std::log(1.0 - 1e-12)));
    EXPECT_EQ(KwDistFun::CdfBeta(0.3717, 1.0, 3.3), 1.0 - std::exp(3.3 * std::log(1.0 - 0.3717)));
    EXPECT_EQ(KwDistFun::CdfBeta(0.3717, 3.3, 1.0), std::exp(3.3 * std::log(0.3717)));
}

TEST(KwDistFunBeta, ParametersOfOneStopAtTheExponentGuard) {
    EXPECT_EQ(KwDistFun::CdfBeta(std::exp(-1.0), 708.5, 1.0), 0.0);
    EXPECT_GT(KwDistFun::CdfBeta(std::exp(-1.0), 707.5, 1.0), 0.0);
    EXPECT_EQ(KwDistFun::CdfBeta(1.0 - std::exp(-1.0), 1.0, 709.0), 1.0);
}

TEST(KwDistFunBeta, AuxiliaryFunctionHasItsSpecialValues) {
    EXPECT_EQ(Kernels::cbtaux(1.0), 0.0);
    EXPECT_EQ(Kernels::cbtaux(0.0), 1.0);
    const double largest = std::sqrt(std::numeric_limits<double>::max());
    EXPECT_EQ(Kernels::cbtaux(std::nextafter(largest, kInfinity)), -1.0);
    EXPECT_GT(Kernels::cbtaux(1e150), -1.0 - 1e-15);
    EXPECT_EQ(Kernels::cbtaux(-0.1), kMissing);
    EXPECT_EQ(Kernels::cbtaux(kNaN), kMissing);
    EXPECT_NEAR(Kernels::cbtaux(2.5), (1.0 - 6.25 + 5.0 * std::log(2.5)) / 2.25, 1e-15);
}

TEST(KwDistFunBeta, AuxiliaryFunctionAgreesAcrossItsSeries) {
    for (const double x : {0.9, 1.1}) {
        const double direct = (1.0 - x * x + 2.0 * x * std::log(x)) / ((1.0 - x) * (1.0 - x));
        EXPECT_NEAR(Kernels::cbtaux(std::nextafter(x, 1.0)), direct, 1e-13) << x;
    }
}

// The series by itself: at most 10,001 terms, the last below 1e-15.
TEST(BetaSeries, StopsAtTheFirstTermBelowItsEnd) {
    const BetaSeries series = SumBetaSeries(0.3, 1.5, 0.5);
    EXPECT_TRUE(series.converged);
    double factor = 1.0;
    for (int n = 1; n < series.terms; ++n) {
        factor *= (n - 0.5) / n * 0.3;
        EXPECT_GE(factor, 1e-15) << n;
    }
    factor *= (series.terms - 0.5) / series.terms * 0.3;
    EXPECT_LT(factor, 1e-15);
}

TEST(BetaSeries, GivesUpAfterTenThousandAndOneTerms) {
    const BetaSeries series = SumBetaSeries(0.9999, 3.0, 0.5);
    EXPECT_FALSE(series.converged);
    EXPECT_EQ(series.terms, 10001);
}

TEST(BetaSeries, AVanishingParameterLeavesOne) {
    const BetaSeries series = SumBetaSeries(0.3, 1e-320, 0.5);
    EXPECT_TRUE(series.converged);
    EXPECT_LT(series.rest, 1e-318);
    EXPECT_DOUBLE_EQ(IncompleteBeta(UnitPoint(0.3), 1e-320, 0.5).lower, 1.0);
}

TEST(LogMiss, IsTheLogarithmOfTheRatioWhereTheSeriesServes) {
    const double a = 0.0371;
    const double b = 2.25;
    const UnitPoint at(0.1875);
    const double reached = IncompleteBeta(at, a, b).lower;
    EXPECT_NEAR(LogMiss(at, a, b, 0.75), std::log(reached / 0.75), 4e-16);
    EXPECT_NEAR(LogMiss(at, a, b, reached), 0.0, 2.3e-16);
    EXPECT_TRUE(std::isnan(LogMiss(UnitPoint(0.84375), a, b, 0.75)));
    EXPECT_TRUE(std::isnan(LogMiss(at, 1.5, 0.25, 0.75)));
}

// I_x(a, b) + I_(1-x)(b, a) = 1 over the regions and their borders.
TEST(IncompleteBeta, TailsBelongTogetherInEveryRegion) {
    for (const double a : {1e-4, 0.5, 1.0, 1.5, 11.9, 12.1, 3e4}) {
        for (const double b : {1e-4, 0.5, 1.0, 1.5, 11.9, 12.1, 3e4}) {
            for (const double x : {0.0625, 0.5, 0.6875, 0.703125, 0.984375}) {
                const UnitPoint at(x);
                const Tails tails = IncompleteBeta(at, a, b);
                const Tails swapped = IncompleteBeta(at.Swapped(), b, a);
                EXPECT_NEAR(tails.lower + tails.upper, 1.0, 4e-16) << a << ' ' << b << ' ' << x;
                EXPECT_NEAR(tails.lower, swapped.upper, 1e-14 * tails.lower) << a << ' ' << b << ' ' << x;
            }
        }
    }
}

// I_x(a, b) - I_x(a + 1, b) is the leading factor: on both sides of the borders of the regions.
TEST(IncompleteBeta, FollowsItsRecurrenceAcrossRegions) {
    for (const double a : {0.3, 0.9, 11.2, 11.9, 55.0}) {
        for (const double b : {0.4, 0.999, 7.5, 13.0, 400.0}) {
            for (const double x : {0.046875, 0.375, 0.75}) {
                const UnitPoint at(x);
                const double step = IncompleteBeta(at, a, b).lower - IncompleteBeta(at, a + 1.0, b).lower;
                EXPECT_NEAR(step, BetaPrefix(at, a, b), 4e-15) << a << ' ' << b << ' ' << x;
            }
        }
    }
}

TEST(IncompleteBeta, NormalFormServesAboveItsSwitchOnly) {
    EXPECT_EQ(kBetaNormalFrom, 1e10);
    for (const double x : {0.49999, 0.5, 0.500004}) {
        const double below = IncompleteBeta(UnitPoint(x), 1e10, 1e10).lower;
        const double above = IncompleteBeta(UnitPoint(x), 1.0000001e10, 1.0000001e10).lower;
        EXPECT_NEAR(below, above, 1e-6) << x;
    }
    EXPECT_NEAR(IncompleteBeta(UnitPoint(0.5), 2e10, 2e10).lower, 0.5, 1e-15);
}

TEST(IncompleteBeta, FarLargerParameterIsTheGammaLimit) {
    // b = 1: x^a exactly.
    const double x = 1.0 - 0x1p-52;
    EXPECT_NEAR(IncompleteBeta(UnitPoint(x), 2e15, 1.0).lower / std::exp(-2e15 * 0x1p-52), 1.0, 1e-13);
}

TEST(KwDistFunBeta, InverseHasItsEnds) {
    EXPECT_EQ(KwDistFun::IdfBeta(0.0, 2.0, 3.0), 0.0);
    EXPECT_EQ(KwDistFun::IdfBeta(1.0, 2.0, 3.0), 1.0);
    EXPECT_EQ(KwDistFun::IdfBeta(-0.1, 2.0, 3.0), kMissing);
    EXPECT_EQ(KwDistFun::IdfBeta(1.1, 2.0, 3.0), kMissing);
    EXPECT_EQ(KwDistFun::IdfBeta(kNaN, 2.0, 3.0), kMissing);
}

// The four starts: both parameters above 1, and the three forms for a parameter at most 1.
TEST(KwDistFunBeta, InverseReturnsToPFromEveryStart) {
    struct Case {
        double p, a, b;
    };
    const Case cases[] = {{0.013, 2.7, 31.0}, {0.87, 1.0001, 1.3}, {0.02, 0.4, 0.7},   {0.45, 3.5, 0.2},
                          {1e-200, 0.9, 5.0}, {0.31, 0.01, 0.01},  {0.999, 1.0, 17.0}, {0.3, 4e6, 2.5e7},
                          {0.5, 1e-3, 2e-3},  {1e-250, 40.0, 0.5}};
    for (const Case& c : cases) {
        long ier = 9;
        const double x = Kernels::betinv(c.p, c.a, c.b, ier);
        EXPECT_EQ(ier, 0);
        const double density = BetaPrefix(UnitPoint(x), c.a, c.b) * c.a / x / (1.0 - x);
        const double limit = c.p * 4.0 * 0x1p-52 + x * 0x1p-52 * density;
        EXPECT_NEAR(IncompleteBeta(UnitPoint(x), c.a, c.b).lower, c.p, limit) << c.p << ' ' << c.a << ' ' << c.b;
    }
}

}  // namespace
