// The binomial, negative binomial and hypergeometric distributions.
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

TEST(KwDistFunBin, ChecksThatNIsWholeBeforeItsOtherChecks) {
    long ier = 0;
    EXPECT_EQ(KwDistFun::CdfBin(2.0, 5.5, 0.5, ier), kMissing);
    EXPECT_EQ(ier, 3);
    EXPECT_EQ(KwDistFun::CdfBin(2.0, 5.5, 1.5, ier), kMissing);
    EXPECT_EQ(ier, 3);
    EXPECT_EQ(KwDistFun::CdfBin(2.0, kNaN, 0.5, ier), kMissing);
    EXPECT_EQ(ier, 3);
    EXPECT_EQ(KwDistFun::CdfBin(2.0, -0.5, 0.5, ier), kMissing);
    EXPECT_EQ(ier, 3);
    EXPECT_EQ(KwDistFun::CdfBin(2.0, 5.0, 1.5, ier), kMissing);
    EXPECT_EQ(ier, 1);
    EXPECT_EQ(KwDistFun::CdfBin(2.0, 0.0, 0.5, ier), kMissing);
    EXPECT_EQ(ier, 1);
    EXPECT_EQ(KwDistFun::CdfBin(2.0, kInfinity, 0.5, ier), kMissing);
    EXPECT_EQ(ier, 1);
    EXPECT_EQ(KwDistFun::CdfBin(kNaN, 5.0, 0.5, ier), kMissing);
    EXPECT_EQ(ier, 1);
    for (auto member : {&KwDistFun::PdfBin, &KwDistFun::IdfBin}) {
        EXPECT_EQ(member(0.5, 5.5, 0.5, ier), kMissing);
        EXPECT_EQ(ier, 3);
        EXPECT_EQ(member(0.5, 5.0, -0.5, ier), kMissing);
        EXPECT_EQ(ier, 1);
    }
}

TEST(KwDistFunBin, FloorsKAndKnowsItsEdges) {
    long ier = 9;
    EXPECT_EQ(KwDistFun::CdfBin(2.97, 5.0, 0.3, ier), KwDistFun::CdfBin(2.0, 5.0, 0.3, ier));
    EXPECT_EQ(ier, 0);
    EXPECT_EQ(KwDistFun::CdfBin(-0.1, 5.0, 0.3, ier), 0.0);
    EXPECT_EQ(KwDistFun::CdfBin(5.0, 5.0, 0.3, ier), 1.0);
    EXPECT_EQ(KwDistFun::CdfBin(kInfinity, 5.0, 0.3, ier), 1.0);
    EXPECT_EQ(KwDistFun::CdfBin(0.0, 5.0, 0.0, ier), 1.0);
    EXPECT_EQ(KwDistFun::CdfBin(-1.0, 5.0, 0.0, ier), 0.0);
    EXPECT_EQ(KwDistFun::CdfBin(4.0, 5.0, 1.0, ier), 0.0);
    EXPECT_EQ(KwDistFun::CdfBin(5.0, 5.0, 1.0, ier), 1.0);
}

TEST(KwDistFunBin, IsTheSumOfItsProbabilities) {
    long ier = 0;
    for (const double n : {1.0, 4.0, 9.0, 57.0}) {
        double sum = 0.0;
        for (double k = 0.0; k < n; ++k) {
            sum += KwDistFun::PdfBin(k, n, 0.3717, ier);
            EXPECT_NEAR(KwDistFun::CdfBin(k, n, 0.3717, ier) / sum, 1.0, 4e-15) << k << ' ' << n;
        }
    }
}

TEST(KwDistFunBin, ProbabilityOfAKThatIsNotThereIsZero) {
    long ier = 0;
    for (const double k : {-1.0, 2.5, 6.0, kInfinity}) {
        EXPECT_EQ(KwDistFun::PdfBin(k, 5.0, 0.3, ier), 0.0) << k;
        EXPECT_EQ(ier, 0);
    }
    EXPECT_EQ(KwDistFun::PdfBin(0.0, 5.0, 0.0, ier), 1.0);
    EXPECT_EQ(KwDistFun::PdfBin(5.0, 5.0, 1.0, ier), 1.0);
    EXPECT_EQ(KwDistFun::PdfBin(4.0, 5.0, 1.0, ier), 0.0);
    EXPECT_DOUBLE_EQ(KwDistFun::PdfBin(2.0, 5.0, 0.25, ier), 270.0 / 1024.0);
}

TEST(KwDistFunBin, InverseIsTheSmallestKThatReachesP) {
    long ier = 0;
    for (const double n : {1.0, 7.0, 200.0, 1e6}) {
        for (const double p : {1e-7, 0.21, 0.8}) {
            for (const double prob : {1e-9, 0.02, 0.5, 0.93, 1.0 - 1e-12}) {
                const double k = KwDistFun::IdfBin(prob, n, p, ier);
                EXPECT_GE(KwDistFun::CdfBin(k, n, p, ier), prob) << n << ' ' << p << ' ' << prob;
                EXPECT_LT(KwDistFun::CdfBin(k - 1.0, n, p, ier), prob) << n << ' ' << p << ' ' << prob;
            }
        }
    }
    EXPECT_EQ(KwDistFun::IdfBin(0.0, 9.0, 0.4, ier), 0.0);
    EXPECT_EQ(KwDistFun::IdfBin(1.0, 9.0, 0.4, ier), 9.0);
    EXPECT_EQ(KwDistFun::IdfBin(0.3, 9.0, 0.0, ier), 0.0);
    EXPECT_EQ(KwDistFun::IdfBin(0.3, 9.0, 1.0, ier), 9.0);
    EXPECT_EQ(KwDistFun::IdfBin(1.2, 9.0, 0.5, ier), kMissing);
    EXPECT_EQ(ier, 1);
}

TEST(KwDistFunNegBin, MatchesItsProductFormAndItsEdges) {
    long ier = 3;
    // (r + 1) r/2 p^r q^2
    EXPECT_NEAR(KwDistFun::PdfNegBin(2.0, 3.7, 0.25, ier), 4.7 * 3.7 / 2.0 * std::pow(0.25, 3.7) * 0.5625, 2e-17);
    EXPECT_EQ(ier, 0);
    EXPECT_DOUBLE_EQ(KwDistFun::PdfNegBin(0.0, 3.7, 0.25, ier), std::pow(0.25, 3.7));
    EXPECT_EQ(KwDistFun::PdfNegBin(2.5, 3.7, 0.25, ier), 0.0);
    EXPECT_EQ(KwDistFun::PdfNegBin(-1.0, 3.7, 0.25, ier), 0.0);
    EXPECT_EQ(KwDistFun::PdfNegBin(0.0, 3.7, 1.0, ier), 1.0);
    EXPECT_EQ(KwDistFun::PdfNegBin(1.0, 3.7, 1.0, ier), 0.0);
    for (const double r : {0.0, -1.0, kNaN, kInfinity}) {
        EXPECT_EQ(KwDistFun::PdfNegBin(1.0, r, 0.3, ier), kMissing) << r;
        EXPECT_EQ(ier, 1);
    }
    for (const double p : {0.0, -0.1, 1.1, kNaN}) {
        EXPECT_EQ(KwDistFun::PdfNegBin(1.0, 2.0, p, ier), kMissing) << p;
        EXPECT_EQ(ier, 1);
    }
}

TEST(KwDistFunHyper, IsARatioOfBinomialCoefficients) {
    // C(5, 2) C(7, 2) / C(12, 4)
    EXPECT_NEAR(KwDistFun::PdfHyper(2, 4, 5, 12), 10.0 * 21.0 / 495.0, 2e-16);
    EXPECT_NEAR(KwDistFun::PdfHyper(0, 4, 5, 12), 35.0 / 495.0, 3e-17);
    EXPECT_EQ(KwDistFun::PdfHyper(5, 4, 5, 12), 0.0);
    EXPECT_EQ(KwDistFun::PdfHyper(-1, 4, 5, 12), 0.0);
    EXPECT_EQ(KwDistFun::PdfHyper(1, 9, 5, 12), 0.0);  // at least 2 marked
    EXPECT_EQ(KwDistFun::PdfHyper(5, 12, 5, 12), 1.0);
    EXPECT_EQ(KwDistFun::PdfHyper(1, 13, 5, 12), kMissing);
    EXPECT_EQ(KwDistFun::PdfHyper(1, -1, 5, 12), kMissing);
}

TEST(KwDistFunHyper, CdfIsTheSumOfItsProbabilities) {
    int ier = 0;
    double sum = 0.0;
    for (long k = 0; k <= 11; ++k) {
        sum += KwDistFun::PdfHyper(k, 11, 23, 61);
        const double value = KwDistFun::CDFHyper(static_cast<double>(k) + 0.4, 11.0, 23.0, 61.0, ier);
        EXPECT_NEAR(value / sum, 1.0, 4e-15) << k;
        EXPECT_EQ(ier, 0);
    }
}

TEST(KwDistFunHyper, FlagsCountsThatAreNotWholeBeforeOthers) {
    int ier = 0;
    EXPECT_EQ(KwDistFun::CDFHyper(1.0, 2.5, 3.0, 9.0, ier), kMissing);
    EXPECT_EQ(ier, 3);
    EXPECT_EQ(KwDistFun::CDFHyper(1.0, 2.0, 3.5, 9.0, ier), kMissing);
    EXPECT_EQ(ier, 3);
    EXPECT_EQ(KwDistFun::CDFHyper(1.0, 20.0, 3.0, 9.5, ier), kMissing);
    EXPECT_EQ(ier, 3);
    EXPECT_EQ(KwDistFun::CDFHyper(1.0, 20.0, 3.0, 9.0, ier), kMissing);
    EXPECT_EQ(ier, 1);
    EXPECT_EQ(KwDistFun::CDFHyper(1.0, 2.0, -3.0, 9.0, ier), kMissing);
    EXPECT_EQ(ier, 1);
    EXPECT_EQ(KwDistFun::CDFHyper(1.0, 2.0, 3.0, kInfinity, ier), kMissing);
    EXPECT_EQ(ier, 1);
    EXPECT_EQ(KwDistFun::CDFHyper(-0.5, 2.0, 3.0, 9.0, ier), 0.0);
    EXPECT_EQ(KwDistFun::CDFHyper(2.0, 2.0, 3.0, 9.0, ier), 1.0);
    EXPECT_EQ(KwDistFun::CDFHyper(1.0, 8.0, 3.0, 9.0, ier), 0.0);  // support starts at 2
}

TEST(KwDistFunBin, LogOfABinomialCoefficient) {
    EXPECT_NEAR(Kernels::dnlbnc(12.0, 5.0), std::log(792.0), 2e-15);
    EXPECT_EQ(Kernels::dnlbnc(12.0, 0.0), 0.0);
    EXPECT_EQ(Kernels::dnlbnc(12.0, 12.0), 0.0);
    EXPECT_NEAR(Kernels::dnlbnc(1e9, 2.0), std::log(1e9 * (1e9 - 1.0) / 2.0), 1e-13);
    EXPECT_EQ(Kernels::dnlbnc(3.0, 4.0), kMissing);
}

}  // namespace
