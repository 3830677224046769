// Digamma and trigamma against 50-digit values, at the ends of their branches, and their errors in ulp.
#include "numerics/mathfun/KwMathFun.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "numerics/power/KwMV.h"
#include "tests/numerics/special_values.h"
#include "tests/support/reference_rows.h"

namespace {

using KwCommon_930::KwMV;
using KwMath_930::KwMathFun;

using numerics_samples::kInfinity;
using numerics_samples::kNaN;

double Ulps(double actual, double expected) {
    return std::abs(actual - expected) / (std::nextafter(std::abs(expected), kInfinity) - std::abs(expected));
}

struct WorstError {
    double ulps = 0.0;
    double x = 0.0;
};

// Compares function with the table row by row; the worst error in ulp where the asymptotic form is used and the value
// is at least least in magnitude.
WorstError Compare(double (*function)(double), const char* table, double smallArguments, double least) {
    WorstError worst;
    for (const auto& row : test_support::ReadReferenceRows(table, 3)) {
        const double actual = function(row[0]);
        EXPECT_LE(std::abs(actual - row[1]), row[2]) << "x = " << row[0] << ": " << actual << ", not " << row[1];
        if (row[0] >= smallArguments && std::abs(row[1]) >= least && Ulps(actual, row[1]) > worst.ulps) {
            worst = {Ulps(actual, row[1]), row[0]};
        }
    }
    return worst;
}

TEST(KwMathFunDigamma, AgreesWithTheTable) {
    // Worst seen: 6 ulp, at x = 0.5, where |psi| >= 1; around the root of psi the error is absolute.
    const WorstError worst = Compare(KwMathFun::Digamma, "gamma/Digamma.csv", 1e-5, 1.0);
    RecordProperty("worst_ulps", std::to_string(worst.ulps));
    EXPECT_LE(worst.ulps, 6.0) << "at " << worst.x;
}

TEST(KwMathFunTrigamma, AgreesWithTheTable) {
    // Worst seen: 3 ulp.
    const WorstError worst = Compare(KwMathFun::Trigamma, "gamma/Trigamma.csv", 1e-4, 0.0);
    RecordProperty("worst_ulps", std::to_string(worst.ulps));
    EXPECT_LE(worst.ulps, 3.0) << "at " << worst.x;
}

TEST(KwMathFunDigamma, OfOneIsMinusEulersConstant) {
    EXPECT_NEAR(KwMathFun::Digamma(1.0), -0.5772156649015329, 1e-15);
}

TEST(KwMathFunTrigamma, OfOneIsPiSquaredOverSix) {
    EXPECT_NEAR(KwMathFun::Trigamma(1.0), std::numbers::pi * std::numbers::pi / 6.0, 1e-15);
}

TEST(KwMathFunDigamma, IsMissingUpToTheSmallestArgument) {
    for (const double x : {0.0, -0.0, 1e-16, 5e-324, -2.385, -kInfinity}) {
        EXPECT_TRUE(KwMV::IsMissing(KwMathFun::Digamma(x))) << x;
        EXPECT_TRUE(KwMV::IsMissing(KwMathFun::Trigamma(x))) << x;
    }
    EXPECT_FALSE(KwMV::IsMissing(KwMathFun::Digamma(1.001e-16)));
    EXPECT_FALSE(KwMV::IsMissing(KwMathFun::Trigamma(1.001e-16)));
}

TEST(KwMathFunDigamma, BelowItsLimitIsTheShortForm) {
    for (const double x : {1.001e-16, 3e-9, std::nextafter(1e-5, 0.0)}) {
        EXPECT_EQ(KwMathFun::Digamma(x), -0.5772156649015329 - 1.0 / x);
    }
    EXPECT_NE(KwMathFun::Digamma(1e-5), -0.5772156649015329 - 1.0 / 1e-5);
}

TEST(KwMathFunTrigamma, BelowItsLimitIsTheShortForm) {
    for (const double x : {1.001e-16, 3e-9, std::nextafter(1e-4, 0.0)}) {
        EXPECT_EQ(KwMathFun::Trigamma(x), 1.0 / (x * x));
    }
    EXPECT_NE(KwMathFun::Trigamma(1e-4), 1.0 / (1e-4 * 1e-4));
}

TEST(KwMathFunDigamma, NaNStaysNaN) {
    EXPECT_TRUE(std::isnan(KwMathFun::Digamma(kNaN)));
    EXPECT_TRUE(std::isnan(KwMathFun::Trigamma(kNaN)));
}

}  // namespace
