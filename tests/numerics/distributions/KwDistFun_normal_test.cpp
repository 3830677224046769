// The normal distribution and the exponential's kernel.
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

TEST(KwDistFunNormal, ZeroAndNaNGiveExactlyAHalf) {
    EXPECT_EQ(KwDistFun::CdfStdNorm(0.0), 0.5);
    EXPECT_EQ(KwDistFun::CdfStdNorm(-0.0), 0.5);
    EXPECT_EQ(KwDistFun::CdfStdNorm(kNaN), 0.5);
}

TEST(KwDistFunNormal, CdfHasItsLimits) {
    EXPECT_EQ(KwDistFun::CdfStdNorm(-kInfinity), 0.0);
    EXPECT_EQ(KwDistFun::CdfStdNorm(kInfinity), 1.0);
}

// Abramowitz and Stegun, Handbook of Mathematical Functions (1964), tables 7.1, 26.1 and 26.2.
TEST(KwDistFunNormal, MatchesPrintedTables) {
    EXPECT_NEAR(Kernels::derf(0.5), 0.5204998778, 5e-11);
    EXPECT_NEAR(Kernels::derf(-1.5), -0.9661051465, 5e-11);
    EXPECT_NEAR(KwDistFun::CdfStdNorm(1.0), 0.841344746068543, 5e-16);
    EXPECT_NEAR(-std::log10(KwDistFun::CdfStdNorm(-20.0)), 88.56010, 5e-6);
    EXPECT_NEAR(KwDistFun::PdfNormalStandard(1.0), 0.241970724519143, 5e-16);
}

TEST(KwDistFunNormal, ErfcIsOneMinusErfAndKeepsItsTail) {
    for (const double x : {0.31, 0.49999, 0.5, 1.07}) {
        EXPECT_NEAR(Kernels::derfc(x) + Kernels::derf(x), 1.0, 3e-16) << x;
        EXPECT_NEAR(Kernels::derfc(-x) + Kernels::derf(-x), 1.0, 3e-16) << x;
    }
    EXPECT_NEAR(Kernels::derfc(10.0) / 2.0884875837625447570e-45, 1.0, 4e-16);
    EXPECT_EQ(Kernels::derfc(30.0), 0.0);
    EXPECT_EQ(Kernels::derfc(-30.0), 2.0);
}

TEST(KwDistFunNormal, RefusesASdThatIsNotPositive) {
    EXPECT_EQ(KwDistFun::CdfNorm(1.7, 0.0, 0.0), kMissing);
    EXPECT_EQ(KwDistFun::CdfNorm(1.7, 0.3, -2.0), kMissing);
    EXPECT_EQ(KwDistFun::PdfNormal(1.7, 0.3, 0.0), kMissing);
    EXPECT_EQ(KwDistFun::IdfNorm(0.3, 0.3, 0.0), kMissing);
    EXPECT_EQ(KwDistFun::CdfNorm(kNaN, 0.3, 2.0), kMissing);
    EXPECT_EQ(KwDistFun::PdfNormalStandard(kNaN), kMissing);
    EXPECT_EQ(KwDistFun::CdfNorm(0.1, kInfinity, 2.0), kMissing);
}

// Deviations that cannot be split into halves, and deviates too far out to matter.
TEST(KwDistFunNormal, ServesExtremeDeviations) {
    EXPECT_DOUBLE_EQ(KwDistFun::PdfNormal(1.5e300, -0.5e300, 2e300), KwDistFun::PdfNormalStandard(1.0) / 2e300);
    EXPECT_DOUBLE_EQ(KwDistFun::CdfNorm(-1.5e300, 0.5e300, 2e300), KwDistFun::CdfStdNorm(-1.0));
    EXPECT_EQ(KwDistFun::PdfNormal(2.5, 0.25, 1e-310), 0.0);
    EXPECT_EQ(KwDistFun::PdfNormal(0.25, 0.25, 1e-310), kMissing);
    EXPECT_EQ(KwDistFun::PdfNormal(kInfinity, 0.25, 1.5), 0.0);
    EXPECT_EQ(KwDistFun::PdfNormal(0.25, -kInfinity, 1.5), kMissing);
    EXPECT_EQ(KwDistFun::CdfNorm(-kInfinity, 0.25, 1.5), 0.0);
    EXPECT_EQ(KwDistFun::CdfNorm(2.5, 0.25, 1e-310), 1.0);
    EXPECT_EQ(KwDistFun::PdfNormal(1e10, 0.25, 1.5), 0.0);
}

TEST(KwDistFunNormal, DensityHasThePrintedConstant) {
    EXPECT_EQ(KwDistFun::PdfNormalStandard(0.0), 0.3989422804014327);
    EXPECT_EQ(KwDistFun::PdfNormal(3.5, 3.5, 4.0), 0.3989422804014327 / 4.0);
}

TEST(KwDistFunNormal, InverseIsMissingOutsideTheOpenInterval) {
    for (const double p : {0.0, 1.0, -0.1, 1.1, kNaN}) {
        EXPECT_EQ(KwDistFun::IdfStdNorm(p), kMissing) << p;
        EXPECT_EQ(KwDistFun::IdfNorm(p, 1.0, 2.0), kMissing) << p;
    }
}

TEST(KwDistFunNormal, InverseOfAHalfIsExactlyZero) {
    EXPECT_EQ(KwDistFun::IdfStdNorm(0.5), 0.0);
    EXPECT_EQ(KwDistFun::IdfNorm(0.5, -1.75, 2.3), -1.75);
}

// The test values printed with algorithm AS 241.
TEST(KwDistFunNormal, InverseMatchesThePublishedTestValues) {
    EXPECT_NEAR(KwDistFun::IdfStdNorm(0.25), -0.6744897501960817, 2e-16);
    EXPECT_NEAR(KwDistFun::IdfStdNorm(0.001), -3.090232306167814, 5e-16);
    EXPECT_NEAR(KwDistFun::IdfStdNorm(1e-20), -9.262340089798408, 2e-15);
    EXPECT_NEAR(KwDistFun::IdfStdNorm(0.975), 1.959963984540054, 3e-16);
}

// Each of the three rationals of AS 241 has its own stretch; at the seams they meet.
TEST(KwDistFunNormal, InverseIsSmoothWhereItsFormChanges) {
    const double seams[] = {0.075, 0.925, std::exp(-25.0)};
    for (const double p : seams) {
        const double before = KwDistFun::IdfStdNorm(std::nextafter(p, 0.0));
        const double after = KwDistFun::IdfStdNorm(std::nextafter(p, 1.0));
        EXPECT_NEAR(before, after, 4e-15) << p;
        EXPECT_LE(before, after + 2e-15) << p;
    }
}

TEST(KwDistFunNormal, ExponentialKernelKeepsSmallResultsAndItsGuard) {
    long ier = 7;
    EXPECT_DOUBLE_EQ(Kernels::cdfexp(1e-20, 2.5, ier), 2.5e-20);
    EXPECT_EQ(ier, 0);
    EXPECT_EQ(Kernels::cdfexp(300.0, 2.5, ier), 1.0);
    EXPECT_EQ(Kernels::cdfexp(-1.0, 2.5, ier), 0.0);
    EXPECT_EQ(Kernels::cdfexp(1.0, 0.0, ier), kMissing);
    EXPECT_EQ(ier, 1);
}

}  // namespace
