// The non-central distributions and the searches for a non-centrality.
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

TEST(KwDistFunNonCentralT, IsCentralWithoutNonCentrality) {
    for (const double t : {-3.2, 0.4, 1.0, 17.0}) {
        EXPECT_EQ(KwDistFun::NonCentralCdfT(t, 4.7, 0.0, 0.0), KwDistFun::CdfT(t, 4.7)) << t;
        long a = 0;
        long b = 0;
        EXPECT_EQ(KwDistFun::NonCentralPdfT(t, 4.7, 0.0, a), KwDistFun::PdfT(t, 4.7, b)) << t;
    }
}

TEST(KwDistFunNonCentralT, AtZeroIsNormalInTheNonCentrality) {
    EXPECT_EQ(KwDistFun::NonCentralCdfT(0.0, 4.7, 1.9, 0.0), KwDistFun::CdfStdNorm(-1.9));
    EXPECT_EQ(KwDistFun::NonCentralCdfT(0.0, 4.7, -1.9, 0.0), KwDistFun::CdfStdNorm(1.9));
}

TEST(KwDistFunNonCentralT, RefusesWhatIsOutOfDomain) {
    for (const double df : {0.0, -1.0, kNaN}) {
        EXPECT_EQ(KwDistFun::NonCentralCdfT(1.0, df, 0.7, 0.0), kMissing) << df;
        long ier = 0;
        EXPECT_EQ(KwDistFun::NonCentralPdfT(1.0, df, 0.7, ier), kMissing) << df;
        EXPECT_EQ(ier, 1);
    }
    EXPECT_EQ(KwDistFun::NonCentralCdfT(1.0, 3.0, kNaN, 0.0), kMissing);
    EXPECT_EQ(KwDistFun::NonCentralCdfT(1.0, 3.0, kInfinity, 0.0), kMissing);
    EXPECT_EQ(KwDistFun::NonCentralCdfT(1.0, 3.0, 5e4, 0.0), kMissing);
    EXPECT_EQ(KwDistFun::NonCentralCdfT(kInfinity, 3.0, 0.7, 0.0), 1.0);
    EXPECT_EQ(KwDistFun::NonCentralCdfT(-kInfinity, 3.0, 0.7, 0.0), 0.0);
}

// The mixture (t and delta of one sign) and the integral (of opposite signs) meet at t = 0.
TEST(KwDistFunNonCentralT, MixtureAndIntegralMeetAtZero) {
    for (const double delta : {-1.4, -0.3, 0.3, 2.2}) {
        const double below = KwDistFun::NonCentralCdfT(-1e-5, 8.3, delta, 0.0);
        const double at = KwDistFun::NonCentralCdfT(0.0, 8.3, delta, 0.0);
        const double above = KwDistFun::NonCentralCdfT(1e-5, 8.3, delta, 0.0);
        EXPECT_NEAR((above - at) / (at - below), 1.0, 1e-4) << delta;
    }
}

// The mixture, the integral over the scale and the one over the normal variable meet where one gives over to another:
// at delta^2 = 16, at delta^2 = 3.5 df and at delta^2 = 800.
TEST(KwDistFunNonCentralT, ItsFormsMeetAtTheirBorders) {
    struct Case {
        double df, delta;
    };
    for (const Case& c : {Case{30.0, 4.0}, Case{5e3, 4.0}, Case{90.0, std::sqrt(315.0)}, Case{400.0, std::sqrt(1400.0)},
                          Case{2.3, std::sqrt(800.0)}, Case{151.0, std::sqrt(800.0)}}) {
        for (const double share : {0.8, 0.97, 1.04, 1.3}) {
            const double t = c.delta * share;
            const double below = c.delta * (1.0 - 1e-9);
            const double above = c.delta * (1.0 + 1e-9);
            const double first = KwDistFun::NonCentralCdfT(t, c.df, below, 0.0);
            const double second = KwDistFun::NonCentralCdfT(t, c.df, above, 0.0);
            // What the two differ by belongs to delta: d P / d delta by a wider difference on one side.
            const double further = KwDistFun::NonCentralCdfT(t, c.df, c.delta * (1.0 + 3e-9), 0.0);
            EXPECT_NEAR((first - second) / (second - further), 1.0, 2e-4) << c.df << ' ' << c.delta << ' ' << share;
        }
    }
}

// A binding to what nobody can tell apart: as df grows the non-central t becomes normal, without a step.
// Where the normal factor is sharper than the scale's density, nodes too far apart lose digits first: at twice the
// spacing these are off by 1e-11. mpmath 1.3.0, 50 digits, by quadrature and by the mixture.
TEST(KwDistFunNonCentralT, NodesAreCloseEnoughForASharpFactor) {
    struct Case {
        double t, df, nc, lower;
    };
    const Case cases[] = {{-32.5625, 220.25, -24.75, 8.54567489431958118e-6},
                          {-36.625, 249.5625, -29.1875, 0.0000434390862649517152},
                          {-20.8125, 95.875, -15.625, 0.00186896252064193812},
                          {-14.125, 26.5, -7.21875, 0.000500194187723406032},
                          {-1.4375, 6.0, 1.21875, 0.00773880391454055635}};
    for (const Case& c : cases) {
        EXPECT_NEAR(KwDistFun::NonCentralCdfT(c.t, c.df, c.nc, 0.0) / c.lower, 1.0, 2e-15) << c.t;
    }
}

TEST(KwDistFunNonCentralT, GoesOverIntoTheNormal) {
    for (const double delta : {-2.3, 0.7, 31.0}) {
        const double t = delta + 1.3;
        const double at = KwDistFun::NonCentralCdfT(t, 1e20, delta, 0.0);
        EXPECT_NEAR(at / KwDistFun::NonCentralCdfT(t, 1.0001e20, delta, 0.0), 1.0, 1e-14) << delta;
        EXPECT_EQ(KwDistFun::NonCentralCdfT(t, 1.7e308, delta, 0.0), KwDistFun::CdfNorm(t, delta, 1.0));
    }
}

// d/dt of the distribution function is the density, on both sides of 0.
TEST(KwDistFunNonCentralT, DensityIsTheSlope) {
    for (const double t : {-1.7, -0.2, 0.6, 3.4}) {
        for (const double delta : {-1.4, 2.2}) {
            const double h = 1e-4;
            const double slope = (KwDistFun::NonCentralCdfT(t + h, 5.5, delta, 0.0) -
                                  KwDistFun::NonCentralCdfT(t - h, 5.5, delta, 0.0)) /
                                 (2.0 * h);
            long ier = 8;
            EXPECT_NEAR(KwDistFun::NonCentralPdfT(t, 5.5, delta, ier) / slope, 1.0, 1e-6) << t << ' ' << delta;
            EXPECT_EQ(ier, 0);
        }
    }
}

TEST(KwDistFunNonCentralT, ReflectionAddsToOne) {
    for (const double t : {0.3, 2.2, 9.0}) {
        for (const double delta : {-3.1, 0.8, 4.4}) {
            EXPECT_NEAR(KwDistFun::NonCentralCdfT(t, 3.7, delta, 0.0) + KwDistFun::NonCentralCdfT(-t, 3.7, -delta, 0.0),
                        1.0, 1e-14)
                << t << ' ' << delta;
        }
    }
}

TEST(KwDistFunNonCentral, ToleranceCutsTheSeries) {
    const double fine = KwDistFun::NonCentralCdfF(20.0, 3.3, 17.0, 90.0, 0.0);
    const double coarse = KwDistFun::NonCentralCdfF(20.0, 3.3, 17.0, 90.0, 1e11);
    EXPECT_NE(fine, coarse);
    EXPECT_NEAR(fine, coarse, 1e-3);
    EXPECT_NE(KwDistFun::NonCentralCdfT(12.3, 17.0, 13.1, 1e11), KwDistFun::NonCentralCdfT(12.3, 17.0, 13.1, 0.0));
}

// Poisson mixtures of closed forms: with two degrees of freedom and x the sum may be taken term by term.
TEST(KwDistFunNonCentral, ChiSquareIsItsPoissonMixture) {
    for (const double nc : {0.01, 3.7, 60.0}) {
        double weight = std::exp(-0.5 * nc);
        double sum = 0.0;
        for (int j = 0; j < 300; ++j) {
            sum += weight * KwDistFun::CdfChi(41.3, 2.9 + 2.0 * j);
            weight *= 0.5 * nc / (j + 1);
        }
        EXPECT_NEAR(KwDistFun::NonCentralCdfChi(41.3, 2.9, nc) / sum, 1.0, 1e-13) << nc;
    }
}

TEST(KwDistFunNonCentral, FIsItsPoissonMixtureOfBeta) {
    double weight = std::exp(-4.1);
    double sum = 0.0;
    const double x = 3.0 * 1.7 / (3.0 * 1.7 + 11.0);
    for (int j = 0; j < 100; ++j) {
        long ier = 0;
        sum += weight * Kernels::cdfbet(x, 1.5 + j, 5.5, ier);
        weight *= 4.1 / (j + 1);
    }
    long ier = 6;
    EXPECT_NEAR(KwDistFun::NonCentralCdfF(1.7, 3.0, 11.0, 8.2, 0.0) / sum, 1.0, 1e-13);
    EXPECT_NEAR(Kernels::ncdbet(x, 1.5, 5.5, 8.2, ier) / sum, 1.0, 1e-13);
    EXPECT_EQ(ier, 0);
}

// Beyond 1e15 one count of F is as good as infinite: what is left is chi-square, of the other one.
TEST(KwDistFunNonCentral, FOfHugeCountsIsItsLimit) {
    for (const double df2 : {1e17, 1.7e308}) {
        EXPECT_NEAR(KwDistFun::NonCentralCdfF(2.1, 3.0, df2, 4.4, 0.0) / KwDistFun::NonCentralCdfChi(6.3, 3.0, 4.4),
                    1.0, 1e-13)
            << df2;
    }
    for (const double df1 : {1e17, 1.7e308}) {
        // The numerator is 1: F = 1/(chi-square/df2).
        EXPECT_NEAR(KwDistFun::NonCentralCdfF(2.0, df1, 7.0, 4.4, 0.0) / KwDistFun::SigChi(3.5, 7.0), 1.0, 1e-13)
            << df1;
    }
    EXPECT_NEAR(KwDistFun::NonCentralCdfChi(1e16, 1e16, 4.4), 0.5, 1e-7);
}

// With a b below 1 nearly everything lies at the right end: the small lower tail is formed as such.
// Where the steps hardly fall the weights end the sum; where the weights lie far off the largest term, the steps do.
// mpmath 1.3.0, 50 digits, by the mixture itself.
TEST(KwDistFunNonCentral, FEndsWhereTheWeightsEnd) {
    const double steps =
        KwDistFun::NonCentralCdfF(0.1480044927830354, 1e10, 0.3213227735847147, 18.25026034406966, 0.0);
    EXPECT_NEAR(steps, 0.035764098149654845, 0.035764098149654845 * 1e-15);
    EXPECT_NEAR(KwDistFun::CdfF(0.1480044927830354, 1e10, 0.3213227735847147), 0.03576409825759395, 3e-17);
    const double vanishing = KwDistFun::NonCentralCdfF(1.37, 4.5, 11.25, 1e-300, 0.0);
    EXPECT_NEAR(vanishing, KwDistFun::CdfF(1.37, 4.5, 11.25), 2e-16);
}

TEST(KwDistFunNonCentral, FWithAHeavyEndKeepsItsLowerTail) {
    const double df2 = 0.0018864268930533941;
    double weight = std::exp(-0.49);
    double sum = 0.0;
    for (int j = 0; j < 60; ++j) {
        const double df1 = 45.0 + 2.0 * j;
        sum += weight * KwDistFun::CdfF(3.5 * 45.0 / df1, df1, df2);
        weight *= 0.49 / (j + 1);
    }
    EXPECT_NEAR(KwDistFun::NonCentralCdfF(3.5, 45.0, df2, 0.98, 0.0) / sum, 1.0, 4e-15);
}

// The same of t: with 0.001 degrees of freedom and nc = 204.33247015783726, P(T <= 696.2...) is 0.0047268... (mpmath).
TEST(KwDistFunNonCentral, TWithAHeavyEndKeepsItsLowerTail) {
    const double p = KwDistFun::NonCentralCdfT(696.22643977502071, 0.001, 204.33247015783726, 0.0);
    EXPECT_NEAR(p / 0.0047268023215258186, 1.0, 4e-15);
}

TEST(KwDistFunNonCentral, ChiSquareAndFHaveTheirEdges) {
    EXPECT_EQ(KwDistFun::NonCentralCdfChi(3.3, 2.2, 0.0), KwDistFun::CdfChi(3.3, 2.2));
    EXPECT_EQ(KwDistFun::NonCentralCdfChi(0.0, 2.2, 1.0), 0.0);
    EXPECT_EQ(KwDistFun::NonCentralCdfChi(kInfinity, 2.2, 1.0), 1.0);
    EXPECT_EQ(KwDistFun::NonCentralCdfF(3.3, 2.2, 5.0, 0.0, 0.0), KwDistFun::CdfF(3.3, 2.2, 5.0));
    EXPECT_EQ(KwDistFun::NonCentralCdfF(-1.0, 2.2, 5.0, 1.0, 0.0), 0.0);
    EXPECT_EQ(KwDistFun::NonCentralCdfF(kInfinity, 2.2, 5.0, 1.0, 0.0), 1.0);
    for (const double nc : {-0.1, kNaN, kInfinity, 2e9}) {
        EXPECT_EQ(KwDistFun::NonCentralCdfChi(3.3, 2.2, nc), kMissing) << nc;
        EXPECT_EQ(KwDistFun::NonCentralCdfF(3.3, 2.2, 5.0, nc, 0.0), kMissing) << nc;
    }
    long ier = 0;
    EXPECT_EQ(Kernels::ncdbet(0.4, -1.0, 2.0, 1.0, ier), kMissing);
    EXPECT_EQ(ier, 1);
}

TEST(KwDistFunFindNCParam, ReturnsTheNonCentralityThatGaveP) {
    const double chi = KwDistFun::NonCentralCdfChi(19.0, 7.1, 6.25);
    EXPECT_NEAR(KwDistFun::FindNCParamChi(chi, 19.0, 7.1, 0.0), 6.25, 1e-12);
    const double f = KwDistFun::NonCentralCdfF(2.6, 3.3, 21.0, 4.75, 0.0);
    EXPECT_NEAR(KwDistFun::FindNCParamF(f, 2.6, 3.3, 21.0, 0.0), 4.75, 1e-12);
    for (const double nc : {-1.75, 0.875, 3.5}) {
        const double t = KwDistFun::NonCentralCdfT(1.3, 9.0, nc, 0.0);
        EXPECT_NEAR(KwDistFun::FindNCParamT(t, 1.3, 9.0, 0.0, 0.0), nc, 1e-12) << nc;
    }
}

TEST(KwDistFunFindNCParam, UnreachableTargetsAreMissing) {
    EXPECT_EQ(KwDistFun::FindNCParamChi(0.999, 2.0, 7.1, 0.0), kMissing);  // above the central value
    EXPECT_EQ(KwDistFun::FindNCParamF(0.999, 0.5, 3.0, 9.0, 0.0), kMissing);
    const double p = KwDistFun::NonCentralCdfT(1.3, 9.0, 3.5, 0.0);
    EXPECT_EQ(KwDistFun::FindNCParamT(p, 1.3, 9.0, 0.0, 3.0), kMissing);  // beyond the bound of the search
    EXPECT_NEAR(KwDistFun::FindNCParamT(p, 1.3, 9.0, 0.0, 4.0), 3.5, 1e-12);
}

TEST(KwDistFunFindNCParam, ToleranceCountsEpsilonsOfTheTarget) {
    const double p = KwDistFun::NonCentralCdfChi(19.0, 7.1, 6.25);
    const double coarse = KwDistFun::FindNCParamChi(p, 19.0, 7.1, 1e12);
    EXPECT_NE(coarse, KwDistFun::FindNCParamChi(p, 19.0, 7.1, 0.0));
    EXPECT_NEAR(coarse, 6.25, 1e-2);
}

TEST(KwDistFunFindNCParam, RefusesWhatIsOutOfDomain) {
    for (const double p : {0.0, 1.0, -1.0, kNaN}) {
        EXPECT_EQ(KwDistFun::FindNCParamChi(p, 2.0, 7.1, 0.0), kMissing) << p;
        EXPECT_EQ(KwDistFun::FindNCParamF(p, 2.0, 7.1, 8.0, 0.0), kMissing) << p;
        EXPECT_EQ(KwDistFun::FindNCParamT(p, 2.0, 7.1, 0.0, 0.0), kMissing) << p;
    }
    EXPECT_EQ(KwDistFun::FindNCParamChi(0.3, 2.0, 0.0, 0.0), kMissing);
    EXPECT_EQ(KwDistFun::FindNCParamF(0.3, 2.0, 0.0, 1.0, 0.0), kMissing);
    EXPECT_EQ(KwDistFun::FindNCParamT(0.3, 2.0, -1.0, 0.0, 0.0), kMissing);
}

}  // namespace
