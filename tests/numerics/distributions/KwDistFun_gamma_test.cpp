// Gamma, chi-square and log Gamma.
#include <gtest/gtest.h>

#include <cmath>

#include "numerics/distributions/KwDistFun.h"
#include "numerics/distributions/detail/as91_constants.h"
#include "numerics/distributions/detail/incomplete_gamma.h"
#include "tests/numerics/special_values.h"
#include "tests/support/KwDistFunTestAccess.h"

namespace {

using KwMath_930::KwDistFun;
using Kernels = KwMath_930::KwDistFunTestAccess;

using numerics_samples::kInfinity;
using numerics_samples::kMissing;
using numerics_samples::kNaN;

TEST(KwDistFunLogGamma, HasItsExactValues) {
    EXPECT_EQ(KwDistFun::zarndnlgam(1.0), 0.0);
    EXPECT_EQ(KwDistFun::zarndnlgam(2.0), 0.0);
    EXPECT_EQ(KwDistFun::zarndnlgam(0.5), 0.5723649429247001);
    EXPECT_EQ(Kernels::dnlgam(0.5), 0.5723649429247001);
}

TEST(KwDistFunLogGamma, IsMissingWhereItIsNotDefinedOrOverflows) {
    for (const double x : {0.0, -0.0, -0.3, -1.5, -1e16, kNaN, -kInfinity, 1.7e308, kInfinity}) {
        EXPECT_EQ(KwDistFun::zarndnlgam(x), kMissing) << x;
    }
}

TEST(KwDistFunLogGamma, IsContinuousWhereItsPiecesMeet) {
    for (const double x : {0.25, 0.5, 1.0, 2.0, 3.5, 4.0, 5.0, 6.0, 7.0, 8.0}) {
        const double before = KwDistFun::zarndnlgam(std::nextafter(x, 0.0));
        const double after = KwDistFun::zarndnlgam(std::nextafter(x, 9.0));
        EXPECT_NEAR(before, after, 4e-15 * std::max(0.25, std::abs(after))) << x;
    }
}

TEST(KwDistFunLogGamma, IsTheLogarithmOfAFactorial) {
    double factorial = 1.0;
    for (int n = 3; n < 20; ++n) {
        factorial *= n - 1;
        EXPECT_DOUBLE_EQ(KwDistFun::zarndnlgam(n), std::log(factorial)) << n;
    }
}

TEST(KwDistFunChi, SignificanceHasItsEdges) {
    EXPECT_EQ(KwDistFun::SigChi(0.0, 3.0), 1.0);
    EXPECT_EQ(KwDistFun::SigChi(-2.5, 3.0), 1.0);
    EXPECT_EQ(KwDistFun::SigChi(1.0, 0.0), kMissing);
    EXPECT_EQ(KwDistFun::SigChi(1.0, -1.0), kMissing);
    EXPECT_EQ(KwDistFun::SigChi(kInfinity, 3.0), 0.0);
    EXPECT_EQ(KwDistFun::SigChi(1.0, kInfinity), kMissing);
    EXPECT_EQ(KwDistFun::CdfChi(kInfinity, 3.0), 1.0);
    EXPECT_EQ(KwDistFun::CdfChi(0.0, 3.0), 0.0);
}

// With two degrees of freedom chi-square is exponential: both tails in closed form.
TEST(KwDistFunChi, IsExponentialWithTwoDegreesOfFreedom) {
    for (const double x : {1e-18, 0.37, 2.2, 19.0, 640.0, 1400.0}) {
        EXPECT_NEAR(KwDistFun::SigChi(x, 2.0) / std::exp(-0.5 * x), 1.0, 4e-15) << x;
        EXPECT_NEAR(KwDistFun::CdfChi(x, 2.0) / -std::expm1(-0.5 * x), 1.0, 4e-15) << x;
    }
}

TEST(KwDistFunGamma, CdfWithShapeOneIsAsWritten) {
    for (const double x : {1e-12, 0.3, 3.7}) {
        EXPECT_EQ(KwDistFun::CdfGam(x, 1.0, 2.5), 1.0 - std::exp(-2.5 * x)) << x;
    }
    EXPECT_EQ(KwDistFun::CdfGam(709.0, 1.0, 1.0), 1.0);
    EXPECT_EQ(KwDistFun::CdfGam(-1.0, 1.0, 1.0), 0.0);
    EXPECT_EQ(KwDistFun::CdfGam(0.0, 2.7, 1.0), 0.0);
}

TEST(KwDistFunGamma, RefusesParametersOutOfDomain) {
    for (const double bad : {0.0, -1.3, kNaN, kInfinity}) {
        EXPECT_EQ(KwDistFun::CdfGam(1.0, bad, 1.0), kMissing) << bad;
        EXPECT_EQ(KwDistFun::CdfGam(1.0, 2.0, bad), kMissing) << bad;
        EXPECT_EQ(KwDistFun::PdfGamma(1.0, bad, 1.0), kMissing) << bad;
        EXPECT_EQ(KwDistFun::PdfGamma(1.0, 2.0, bad), kMissing) << bad;
        EXPECT_EQ(KwDistFun::IdfGam(0.3, bad, 1.0), kMissing) << bad;
        EXPECT_EQ(KwDistFun::IdfGam(0.3, 2.0, bad), kMissing) << bad;
        EXPECT_EQ(KwDistFun::IdfChi(0.3, bad), kMissing) << bad;
        long ier = 0;
        EXPECT_EQ(Kernels::gammad(1.0, bad, true, ier), kMissing) << bad;
        EXPECT_EQ(ier, 1);
    }
}

TEST(KwDistFunGamma, DensityAtZeroDependsOnTheShape) {
    EXPECT_EQ(KwDistFun::PdfGamma(0.0, 1.0, 2.0), 2.0);
    EXPECT_EQ(KwDistFun::PdfGamma(0.0, 0.5, 2.0), kMissing);
    EXPECT_EQ(KwDistFun::PdfGamma(0.0, 1.5, 2.0), 0.0);
    EXPECT_EQ(KwDistFun::PdfGamma(-0.3, 0.5, 2.0), 0.0);
}

TEST(KwDistFunGamma, DensityIsTheFormulaThroughLogGamma) {
    const double x = 3.7, shape = 2.9, rate = 1.3;
    const double log = (shape - 1.0) * std::log(rate * x) + std::log(rate) - rate * x - KwDistFun::zarndnlgam(shape);
    EXPECT_DOUBLE_EQ(KwDistFun::PdfGamma(x, shape, rate), std::exp(log));
    EXPECT_EQ(KwDistFun::PdfGamma(700.0, 1.0, 1.0), std::exp(-700.0));
}

TEST(KwDistFunGamma, DensityStopsAtTheExponentGuards) {
    EXPECT_EQ(KwDistFun::PdfGamma(708.4, 1.0, 1.0), 0.0);
    EXPECT_GT(KwDistFun::PdfGamma(708.38, 1.0, 1.0), 0.0);
    EXPECT_EQ(KwDistFun::PdfGamma(5e-324, 0.01, 1.0), kMissing);  // the density exceeds exp(709)
}

TEST(KwDistFunGamma, InverseHasItsEnds) {
    EXPECT_EQ(KwDistFun::IdfGam(0.0, 2.0, 3.0), 0.0);
    EXPECT_EQ(KwDistFun::IdfGam(1.0, 2.0, 3.0), kMissing);
    EXPECT_EQ(KwDistFun::IdfChi(0.0, 2.0), 0.0);
    EXPECT_EQ(KwDistFun::IdfChi(1.0, 2.0), kMissing);
    EXPECT_EQ(KwDistFun::IdfChi(-0.1, 2.0), kMissing);
    EXPECT_EQ(KwDistFun::IdfChi(kNaN, 2.0), kMissing);
}

TEST(KwDistFunGamma, InverseHoldsThePublishedConstantsInSinglePrecision) {
    EXPECT_EQ(KwMath_930::detail::kStartTolerance, 0.009999999776482582);
    EXPECT_EQ(KwMath_930::detail::kWilsonHilferty, 0.2222220003604889);
    EXPECT_EQ(KwMath_930::detail::kSmallDf, 0.3199999928474426);
    EXPECT_EQ(KwMath_930::detail::kSmallTail, 1.2400000095367432);
}

// Each branch of AS 91's start: small p, df at most 0.32, Wilson-Hilferty, its correction far right. The borders lie
// where the single-precision constants put them.
TEST(KwDistFunGamma, InverseReturnsToPFromEveryStart) {
    struct Case {
        double p, df;
    };
    const Case cases[] = {{1e-280, 7.3},   {0.02, 3.1},           {0.9, 0.3199999928474426},
                          {0.9, 0.32},     {0.7, 0.21},           {0.4, 11.7},
                          {0.999999, 5.5}, {1.0 - 0x1p-53, 41.0}, {0.5, 1.2e7},
                          {1e-15, 2.9e9},  {0.999, 0.002},        {1e-100, 0.9},
                          {0.46, 0.9629},  {0.45999, 0.963}};
    for (const Case& c : cases) {
        const double x = KwDistFun::IdfChi(c.p, c.df);
        ASSERT_NE(x, kMissing) << c.p << ' ' << c.df;
        const double back = c.p < 0.5 ? KwDistFun::CdfChi(x, c.df) / c.p : KwDistFun::SigChi(x, c.df) / (1.0 - c.p);
        const double limit = c.p < 0.5 ? 1e-14 + 4e-16 * c.df : 2e-14 + 4e-16 * x;
        EXPECT_NEAR(back, 1.0, limit) << c.p << ' ' << c.df;
    }
}

TEST(KwDistFunGamma, InverseBelowTheSmallestDoubleIsZero) {
    EXPECT_EQ(KwDistFun::IdfChi(0.3, 0.002), 0.0);  // 0.3^1000
    EXPECT_EQ(KwDistFun::IdfGam(1e-300, 0.45, 2.0), 0.0);
}

// Wilson and Hilferty's form serves only above parameters of 1e10; there it is what it says.
TEST(KwDistFunGamma, NormalFormServesAboveItsSwitchOnly) {
    const double p = 4e10;
    const double x = p + 1.5 * std::sqrt(p);
    const double z = 3.0 * std::sqrt(p) * (std::cbrt(x / p) + 1.0 / (9.0 * p) - 1.0);
    long ier = 0;
    EXPECT_NEAR(Kernels::gammad(x, p, true, ier), KwDistFun::CdfStdNorm(z), 1e-9);
    EXPECT_EQ(KwMath_930::detail::kGammaNormalFrom, 1e10);
    const double below = Kernels::gammad(1e10 + 2e4, 1e10, false, ier);
    const double above = Kernels::gammad(std::nextafter(1e10, 2e10) + 2e4, std::nextafter(1e10, 2e10), false, ier);
    EXPECT_NEAR(below, above, 1e-10);
}

TEST(KwDistFunGamma, KernelTailsAddToOne) {
    for (const double p : {1e-5, 0.37, 2.9, 11.99, 12.0, 88.0, 3e9}) {
        for (const double share : {0.4, 0.97, 1.0, 1.03, 1.8}) {
            long ier = 5;
            const double lower = Kernels::gammad(p * share, p, true, ier);
            EXPECT_EQ(ier, 0);
            EXPECT_NEAR(lower + Kernels::gammad(p * share, p, false, ier), 1.0, 3e-16) << p << ' ' << share;
        }
    }
}

TEST(KwDistFunGamma, InverseByChiSquareHalvesIt) {
    long ier = 3;
    EXPECT_EQ(Kernels::idfchb(0.37, 2.45, ier), 0.5 * KwDistFun::IdfChi(0.37, 4.9));
    EXPECT_EQ(ier, 0);
    Kernels::idfchb(1.0, 2.45, ier);
    EXPECT_EQ(ier, 1);
}

}  // namespace
