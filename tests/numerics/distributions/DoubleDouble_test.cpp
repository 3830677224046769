// Pairs of doubles: exact sums and products, logarithm and exponential.
#include "numerics/distributions/detail/DoubleDouble.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using KwMath_930::detail::DoubleDouble;
using KwMath_930::detail::Exp;
using KwMath_930::detail::Log;
using KwMath_930::detail::MinusLog1p;
using KwMath_930::detail::TwoProduct;
using KwMath_930::detail::TwoSum;

TEST(DoubleDouble, SumKeepsWhatRoundingLoses) {
    const DoubleDouble sum = TwoSum(1e16, 1.2345);
    EXPECT_EQ(sum.hi, 1e16 + 1.2345);
    EXPECT_EQ(sum.lo, 1.2345 - 2.0);
}

TEST(DoubleDouble, ProductIsExact) {
    // (2^27 + 1)(2^27 + 3) = 2^54 + 2^29 + 3
    const DoubleDouble product = TwoProduct(134217729.0, 134217731.0);
    EXPECT_EQ(product.hi, 18014399046352900.0);
    EXPECT_EQ((product.hi - 18014398509481984.0 - 536870912.0) + product.lo, 3.0);
}

TEST(DoubleDouble, QuotientTimesDivisorGivesTheDividend) {
    const DoubleDouble a(3.7194, 1.1e-17);
    const DoubleDouble b(0.013187, -4.2e-19);
    const DoubleDouble rest = a / b * b - a;
    EXPECT_LT(std::abs(rest.hi), 1e-30);
}

// mpmath 1.2.1, 40 digits, rounded to two doubles' worth.
TEST(DoubleDouble, LogarithmHasMoreThanSixtyFiveBits) {
    struct Case {
        double x, high, low;
    };
    // log 3, log 1.0078125
    const Case cases[] = {{3.0, 1.0986122886681098, -9.0712972350015300e-17},
                          {1.0078125, 0.0077821404420549490, -1.2819179123343844e-20}};
    for (const Case& c : cases) {
        const DoubleDouble log = Log(c.x);
        EXPECT_NEAR(log.hi - c.high + log.lo, c.low, std::abs(c.high) * 0x1p-64) << c.x;
    }
}

TEST(DoubleDouble, LogarithmOfAPowerIsThatMultiple) {
    const DoubleDouble base = Log(1.3125);
    double power = 1.3125;
    for (int n = 2; n <= 9; ++n) {  // 21/16 to the ninth needs 40 bits: exact
        power *= 1.3125;
        const DoubleDouble gap = Log(power) - DoubleDouble(n) * base;
        EXPECT_LT(std::abs(gap.hi), 0x1p-65 * n) << n;
    }
}

TEST(DoubleDouble, LogarithmSeesTheLowPart) {
    const DoubleDouble gap = Log(DoubleDouble(1.7, 3e-17)) - Log(1.7);
    EXPECT_NEAR(gap.hi, 3e-17 / 1.7, 1e-22);
}

// log(1 + u) = u - u^2/2 + u^3/3 where 1 + u is held in both doubles: all digits of a small u count.
TEST(DoubleDouble, LogarithmNearOneKeepsItsRelativeAccuracy) {
    for (const double u : {-2.1709e-10, 3.3127e-11, -7.7e-9, 4.4403e-14}) {
        const DoubleDouble log = Log(TwoSum(1.0, u));
        const double rest = u * u * (-0.5 + u / 3.0);
        EXPECT_NEAR((log.hi - u) + log.lo, rest, std::abs(u) * 0x1p-64) << u;
    }
}

TEST(DoubleDouble, LogarithmOfADenormalNumberIsFinite) {
    EXPECT_NEAR(Log(0x1p-1070).hi, -1070 * 0.69314718055994531, 1e-12);
}

TEST(DoubleDouble, MinusLog1pAgreesAcrossItsSwitch) {
    // On both sides of 1/32 the series and the logarithm must meet: compare increments with the derivative u/(1+u).
    for (const double at : {0.03125, -0.03125}) {
        const double next = std::nextafter(at, at < 0.0 ? -1.0 : 1.0);
        const DoubleDouble gap = MinusLog1p(next) - MinusLog1p(at);
        EXPECT_NEAR(gap.hi, (next - at) * at / (1.0 + at), 1e-22) << at;
    }
}

TEST(DoubleDouble, ExponentialEndsAtTheLibrarysGuards) {
    EXPECT_EQ(Exp(-708.4), 0.0);
    EXPECT_GT(Exp(-708.38), 0.0);
    EXPECT_TRUE(std::isinf(Exp(709.5)));
    EXPECT_DOUBLE_EQ(Exp(DoubleDouble(-1.0, 0x1p-55)), std::exp(-1.0) * (1.0 + 0x1p-55));
}

}  // namespace
