// The t and F distributions.
#include <gtest/gtest.h>

#include <cmath>

#include "numerics/distributions/KwDistFun.h"
#include "tests/numerics/special_values.h"
#include "tests/support/KwDistFunTestAccess.h"

namespace {

using KwMath_930::KwDistFun;
using Kernels = KwMath_930::KwDistFunTestAccess;
using numerics_samples::kInfinity;
using numerics_samples::kMissing;
using numerics_samples::kNaN;

constexpr double kPi = 3.141592653589793;

TEST(KwDistFunT, OneDegreeOfFreedomIsCauchy) {
    EXPECT_EQ(KwDistFun::CdfT(1.0, 1.0), 0.75);
    EXPECT_EQ(KwDistFun::CdfT(2.7, 1.0), 0.5 + std::atan(2.7) / kPi);
    EXPECT_EQ(KwDistFun::SigT(0.7, 1.0), 0.5 - std::atan(0.7) / kPi);
    EXPECT_NEAR(KwDistFun::CdfT(-1e200, 1.0) / 3.1830988618379067e-201, 1.0, 4e-16);
    EXPECT_NEAR(KwDistFun::SigT(1e12, 1.0) / 3.1830988618379067e-13, 1.0, 4e-16);
}

TEST(KwDistFunT, IsNormalAboveOneHundredMillionDegreesOfFreedom) {
    EXPECT_EQ(KwDistFun::CdfT(2.0, 2e8), KwDistFun::CdfStdNorm(2.0));
    EXPECT_EQ(KwDistFun::CdfT(-7.3, kInfinity), KwDistFun::CdfStdNorm(-7.3));
    EXPECT_NE(KwDistFun::CdfT(-7.3, 1e8), KwDistFun::CdfStdNorm(-7.3));
    EXPECT_EQ(KwDistFun::IdfT(0.013, 2e8, 0.0, 0.0), KwDistFun::IdfStdNorm(0.013));
}

// SigT has no normal form: it goes on by the incomplete beta function.
TEST(KwDistFunT, SignificanceHasNoNormalForm) {
    const double ratio = KwDistFun::SigT(30.0, 2e8) / KwDistFun::CdfStdNorm(-30.0);
    EXPECT_NEAR(ratio, 1.0 + (30.0 * 30.0 * 30.0 * 30.0) / (4.0 * 2e8), 1e-5);
    EXPECT_NE(ratio, 1.0);
}

TEST(KwDistFunT, IsAHalfAtZeroAndSymmetric) {
    for (const double df : {0.003, 1.0, 2.0, 7.3, 1e7}) {
        EXPECT_EQ(KwDistFun::CdfT(0.0, df), 0.5);
        EXPECT_EQ(KwDistFun::SigT(0.0, df), 0.5);
        for (const double t : {0.37, 1.0, 1.0000001, 4.2}) {
            EXPECT_EQ(KwDistFun::SigT(t, df), KwDistFun::CdfT(-t, df)) << t << ' ' << df;
            EXPECT_NEAR(KwDistFun::CdfT(t, df) + KwDistFun::CdfT(-t, df), 1.0, 3e-16) << t << ' ' << df;
        }
    }
    EXPECT_EQ(KwDistFun::CdfT(kInfinity, 3.0), 1.0);
    EXPECT_EQ(KwDistFun::CdfT(-kInfinity, 3.0), 0.0);
    EXPECT_EQ(KwDistFun::SigT(kInfinity, 3.0), 0.0);
}

// df = 2 and 4 in closed form, on both sides of |t| = 1.
TEST(KwDistFunT, MatchesItsClosedForms) {
    for (const double t : {-40.0, -1.3, -0.99, 0.4, 1.0, 1.01, 5.7}) {
        const double root = std::sqrt(2.0 + t * t);
        const double two = t < 0.0 ? 1.0 / (root * (root - t)) : 1.0 - 1.0 / (root * (root + t));
        EXPECT_NEAR(KwDistFun::CdfT(t, 2.0) / two, 1.0, 2e-15) << t;
    }
}

TEST(KwDistFunT, RefusesDegreesOfFreedomThatAreNotPositive) {
    for (const double df : {0.0, -2.5, kNaN}) {
        long ier = 0;
        EXPECT_EQ(Kernels::zarncdft(1.0, df, ier), kMissing) << df;
        EXPECT_EQ(ier, 1);
        EXPECT_EQ(KwDistFun::CdfT(1.0, df), kMissing);
        EXPECT_EQ(KwDistFun::SigT(1.0, df), kMissing);
        EXPECT_EQ(KwDistFun::PdfT(1.0, df, ier), kMissing);
        EXPECT_EQ(ier, 1);
        EXPECT_EQ(KwDistFun::IdfT(0.3, df, 0.0, 0.0), kMissing);
    }
}

TEST(KwDistFunT, DensityIsTheFormulaThroughLogGamma) {
    long ier = 4;
    const double df = 6.3, t = 1.7;
    const double log = KwDistFun::zarndnlgam((df + 1.0) / 2.0) - 0.5 * std::log(df) - KwDistFun::zarndnlgam(df / 2.0) -
                       0.5723649429247001 - (df + 1.0) / 2.0 * std::log(1.0 + t * t / df);
    EXPECT_EQ(KwDistFun::PdfT(t, df, ier), std::exp(log));
    EXPECT_EQ(ier, 0);
    EXPECT_EQ(KwDistFun::PdfT(1e200, 3.0, ier), 0.0);  // t^2 overflows: the density is below exp(-708)
    EXPECT_EQ(KwDistFun::PdfT(1e155, 2.0, ier), 0.0);
    EXPECT_NEAR(KwDistFun::PdfT(0.0, 1.0, ier), 1.0 / kPi, 1e-15);
}

// Above 1e10 degrees of freedom the rounding of log Gamma would be more than what t differs from the normal.
TEST(KwDistFunT, DensityOfVeryManyDegreesOfFreedomIsNormal) {
    long ier = 4;
    EXPECT_EQ(KwDistFun::PdfT(1.7, kInfinity, ier), KwDistFun::PdfNormalStandard(1.7));
    EXPECT_EQ(ier, 0);
    EXPECT_EQ(KwDistFun::PdfT(-2.3, 1.7e308, ier), KwDistFun::PdfNormalStandard(-2.3));
    EXPECT_EQ(KwDistFun::PdfT(-2.3, 1.0000001e10, ier), KwDistFun::PdfNormalStandard(-2.3));
    EXPECT_NE(KwDistFun::PdfT(-2.3, 1e10, ier), KwDistFun::PdfNormalStandard(-2.3));
    EXPECT_NEAR(KwDistFun::PdfT(-2.3, 1e10, ier) / KwDistFun::PdfNormalStandard(-2.3), 1.0, 1e-4);
}

TEST(KwDistFunT, InfinitelyManyDegreesOfFreedomAreNormalInEveryMember) {
    long ier = 4;
    EXPECT_EQ(KwDistFun::SigT(1.7, kInfinity), KwDistFun::CdfStdNorm(-1.7));
    EXPECT_EQ(KwDistFun::IdfT(0.23, kInfinity, 0.0, 0.0), KwDistFun::IdfStdNorm(0.23));
    EXPECT_NEAR(KwDistFun::IdfT(0.23, kInfinity, 1.3, 0.0), 1.3 + KwDistFun::IdfStdNorm(0.23), 1e-14);
    EXPECT_EQ(KwDistFun::NonCentralCdfT(1.7, kInfinity, 0.4, 0.0), KwDistFun::CdfNorm(1.7, 0.4, 1.0));
    EXPECT_EQ(KwDistFun::NonCentralPdfT(1.7, kInfinity, 0.4, ier), KwDistFun::PdfNormal(1.7, 0.4, 1.0));
    EXPECT_EQ(ier, 0);
    EXPECT_NEAR(KwDistFun::FindNCParamT(0.23, 1.7, kInfinity, 0.0, 0.0), 1.7 - KwDistFun::IdfStdNorm(0.23), 1e-14);
    EXPECT_NEAR(KwDistFun::FindNCParamT(0.77, 1.7, kInfinity, 0.0, 0.0), 1.7 + KwDistFun::IdfStdNorm(0.23), 1e-14);
}

TEST(KwDistFunT, InverseIsMissingOutsideTheOpenInterval) {
    for (const double p : {0.0, 1.0, -0.5, 1.5, kNaN}) {
        EXPECT_EQ(KwDistFun::IdfT(p, 4.2, 0.0, 0.0), kMissing) << p;
        EXPECT_EQ(KwDistFun::IdfT(p, 4.2, 1.3, 0.0), kMissing) << p;
    }
    EXPECT_EQ(KwDistFun::IdfT(0.5, 4.2, 0.0, 0.0), 0.0);
    EXPECT_NEAR(KwDistFun::IdfT(0.975, 10.0, 0.0, 0.0), 2.228138852, 5e-10);
}

TEST(KwDistFunT, NonCentralInverseReturnsToP) {
    for (const double nc : {-2.3, 0.7, 11.0}) {
        for (const double p : {1e-6, 0.3, 0.97}) {
            const double t = KwDistFun::IdfT(p, 7.7, nc, 0.0);
            EXPECT_NEAR(KwDistFun::NonCentralCdfT(t, 7.7, nc, 0.0) / p, 1.0, 2e-14) << nc << ' ' << p;
        }
    }
}

TEST(KwDistFunT, ToleranceOfTheNonCentralInverseCountsEpsilons) {
    const double coarse = KwDistFun::IdfT(0.3, 7.7, 1.9, 1e11);
    const double fine = KwDistFun::IdfT(0.3, 7.7, 1.9, 0.0);
    EXPECT_NE(coarse, fine);
    EXPECT_NEAR(coarse, fine, 1e-3);
}

TEST(KwDistFunF, HasItsEdges) {
    EXPECT_EQ(KwDistFun::SigF(0.0, 2.0, 3.0), 1.0);
    EXPECT_EQ(KwDistFun::SigF(-1.0, 2.0, 3.0), 1.0);
    EXPECT_EQ(KwDistFun::CdfF(0.0, 2.0, 3.0), 0.0);
    EXPECT_EQ(KwDistFun::SigF(kInfinity, 2.0, 3.0), 0.0);
    EXPECT_EQ(KwDistFun::CdfF(kInfinity, 2.0, 3.0), 1.0);
    for (const double bad : {0.0, -1.0, kNaN, kInfinity}) {
        EXPECT_EQ(KwDistFun::SigF(1.0, bad, 3.0), kMissing) << bad;
        EXPECT_EQ(KwDistFun::SigF(1.0, 2.0, bad), kMissing) << bad;
        EXPECT_EQ(KwDistFun::CdfF(1.0, bad, 3.0), kMissing) << bad;
        EXPECT_EQ(KwDistFun::IdfF(0.3, bad, 3.0), kMissing) << bad;
    }
}

TEST(KwDistFunF, SignificanceBelowOneIsOneMinusTheCdf) {
    for (const double f : {1e-9, 0.3, 0.99999}) {
        EXPECT_EQ(KwDistFun::SigF(f, 5.0, 9.0), 1.0 - KwDistFun::CdfF(f, 5.0, 9.0)) << f;
    }
    EXPECT_NE(KwDistFun::SigF(80.0, 5.0, 9.0), 1.0 - KwDistFun::CdfF(80.0, 5.0, 9.0));
}

// One ulp beside the middle of two huge, equal counts the distribution function still knows its side.
TEST(KwDistFunF, KnowsTheSideOfTheMiddle) {
    for (const double df : {30.0, 1e6, 1e10}) {
        const double low = std::nextafter(1.0, 0.0);
        const double high = std::nextafter(1.0, 2.0);
        EXPECT_LE(KwDistFun::CdfF(low, df, df), 0.5) << df;
        EXPECT_GE(KwDistFun::CdfF(high, df, df), 0.5) << df;
        // The density of F at 1 is sqrt(df/(2 pi))/2 (1 + O(1/df)).
        const double slope = 0.5 * std::sqrt(df / (2.0 * kPi));
        EXPECT_NEAR(KwDistFun::SigF(low, df, df) - 0.5, slope * (1.0 - low), 2e-16 + 0.02 * slope * (1.0 - low)) << df;
    }
}

TEST(KwDistFunF, IsTheSquareOfT) {
    for (const double t : {0.003, 0.8, 2.9, 61.0}) {
        EXPECT_NEAR(KwDistFun::SigF(t * t, 1.0, 7.3) / (2.0 * KwDistFun::SigT(t, 7.3)), 1.0, 4e-15) << t;
    }
}

// With so few degrees of freedom f is a huge power of p: half an ulp of p are 750 of f, but p itself tells f.
// mpmath 1.3.0, 50 digits.
TEST(KwDistFunF, InverseOfFewDegreesOfFreedomKeepsItsDigits) {
    const double f = KwDistFun::IdfF(0.95944045480225137, 0.0013234890338241171, 213481.67772887601);
    EXPECT_NEAR(f / 5.6921652259894705e-25, 1.0, 2e-15);
    const double g = KwDistFun::IdfF(0.20912012391931928, 13.0, 0.010082664971537864);
    EXPECT_NEAR(g / 1.3432999649642048e18, 1.0, 2e-15);
}

TEST(KwDistFunF, InverseHasItsEnds) {
    EXPECT_EQ(KwDistFun::IdfF(0.0, 2.0, 3.0), 0.0);
    EXPECT_EQ(KwDistFun::IdfF(1.0, 2.0, 3.0), kMissing);
    EXPECT_EQ(KwDistFun::IdfF(-0.1, 2.0, 3.0), kMissing);
    EXPECT_EQ(KwDistFun::IdfF(kNaN, 2.0, 3.0), kMissing);
    EXPECT_NEAR(KwDistFun::IdfF(0.95, 3.0, 10.0), 3.708264819, 5e-10);
}

}  // namespace
