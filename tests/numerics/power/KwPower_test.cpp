// Guarded exponential, power and product: each status, each bound from both sides, and where a NaN goes.
#include "numerics/power/KwPower.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "numerics/power/KwMV.h"
#include "tests/numerics/special_values.h"

namespace {

using KwCommon_930::KwMV;
using KwMath_930::KwPower;

using numerics_samples::kInfinity;
using numerics_samples::kNaN;

void ExpectPower(double base, double exponent, KwPower::PowerStatus status, double expected) {
    double result = 17.25;
    EXPECT_EQ(KwPower::Power(base, exponent, result), status) << base << " ^ " << exponent;
    EXPECT_EQ(result, expected) << base << " ^ " << exponent;
    EXPECT_EQ(std::signbit(result), std::signbit(expected)) << base << " ^ " << exponent;
}

void ExpectNoPower(double base, double exponent, KwPower::PowerStatus status) {
    ExpectPower(base, exponent, status, KwMV::Missing());
}

TEST(KwPowerConstants, HaveTheDocumentedValues) {
    EXPECT_EQ(KwPower::gMachineMaxExp, 709.0);
    EXPECT_EQ(KwPower::gMachineMinExp, -708.39);
    EXPECT_EQ(KwPower::gMachineMaxInt, 2147483647);
    EXPECT_EQ(KwPower::gMachineEpsilon, std::numeric_limits<double>::epsilon());
    EXPECT_EQ(KwPower::MaxExp(), 709.0);
    EXPECT_EQ(KwPower::MinExp(), -708.39);
    EXPECT_EQ(KwPower::MaxInt(), 2147483647);
    EXPECT_EQ(KwPower::MEpsilon(), 2.220446049250313e-16);
}

TEST(KwPowerConstants, StatusValuesAreNumberedFromZero) {
    EXPECT_EQ(KwPower::kPowerOK, 0);
    EXPECT_EQ(KwPower::kPowerUnderflow, 1);
    EXPECT_EQ(KwPower::kPowerOverflow, 2);
    EXPECT_EQ(KwPower::kPowerNegOverflow, 3);
    EXPECT_EQ(KwPower::kPowerUndefined, 4);
    EXPECT_EQ(KwPower::kPowerNegBaseZeroExp, 5);
    EXPECT_EQ(KwPower::kPowerDivideByZero, 6);
    EXPECT_EQ(KwPower::kPowerZeroToZero, 7);
}

TEST(KwPowerBounds, OverflowAndUnderflowBoundsAreStrict) {
    EXPECT_FALSE(KwPower::ExpOverflow(709.0));
    EXPECT_TRUE(KwPower::ExpOverflow(std::nextafter(709.0, 710.0)));
    EXPECT_FALSE(KwPower::ExpUnderflow(-708.39));
    EXPECT_TRUE(KwPower::ExpUnderflow(std::nextafter(-708.39, -709.0)));
    EXPECT_FALSE(KwPower::ExpOverflow(kNaN));
    EXPECT_FALSE(KwPower::ExpUnderflow(kNaN));
}

TEST(KwPowerIntegers, BoundIsOneSided) {
    EXPECT_TRUE(KwPower::IsInteger(-1e12));
    EXPECT_FALSE(KwPower::IsInteger(3e9));
    EXPECT_TRUE(KwPower::IsInteger(2147483647.0));
    EXPECT_FALSE(KwPower::IsInteger(2147483648.0));
    EXPECT_TRUE(KwPower::IsEvenInteger(-4e9));
    EXPECT_TRUE(KwPower::IsOddInteger(-4000000001.0));
    EXPECT_FALSE(KwPower::IsEvenInteger(2147483648.0));
    EXPECT_FALSE(KwPower::IsOddInteger(2147483649.0));
}

TEST(KwPowerIntegers, FractionsNaNAndInfinityAreNoIntegers) {
    EXPECT_FALSE(KwPower::IsInteger(2.385));
    EXPECT_FALSE(KwPower::IsEvenInteger(-0.5));
    EXPECT_FALSE(KwPower::IsOddInteger(2.5));
    EXPECT_FALSE(KwPower::IsInteger(kNaN));
    EXPECT_FALSE(KwPower::IsEvenInteger(kNaN));
    EXPECT_FALSE(KwPower::IsOddInteger(kNaN));
    EXPECT_FALSE(KwPower::IsInteger(kInfinity));
    EXPECT_TRUE(KwPower::IsInteger(-kInfinity));
}

TEST(KwPowerIntegers, EvenAndOddAlternateThroughZero) {
    for (int i = -7; i <= 7; ++i) {
        const bool even = i % 2 == 0;
        EXPECT_TRUE(KwPower::IsInteger(i)) << i;
        EXPECT_EQ(KwPower::IsEvenInteger(i), even) << i;
        EXPECT_EQ(KwPower::IsOddInteger(i), !even) << i;
    }
}

TEST(KwPowerReciprocals, OneOverAWholeNumberIsTheOneOrTheOther) {
    for (int i = 1; i <= 300; ++i) {
        for (const double x : {1.0 / i, -1.0 / i}) {
            EXPECT_EQ(KwPower::IsOneOverOddInteger(x, 32.0), i % 2 == 1) << x;
            EXPECT_EQ(KwPower::IsOneOverEvenInteger(x, 32.0), i % 2 == 0) << x;
        }
    }
}

TEST(KwPowerReciprocals, ZeroTinyAndNonReciprocalsAreRefused) {
    for (const double x : {0.0, -0.0, 1e-10, 5e-324, 0.3, 2.0, kNaN}) {
        EXPECT_FALSE(KwPower::IsOneOverOddInteger(x, 32.0)) << x;
        EXPECT_FALSE(KwPower::IsOneOverEvenInteger(x, 32.0)) << x;
    }
    EXPECT_FALSE(KwPower::IsOneOverOddInteger(-5e-324, 32.0));
}

TEST(KwPowerReciprocals, BoundIsOneSided) {
    EXPECT_TRUE(KwPower::IsOneOverEvenInteger(1.0 / 2147483646.0, 32.0));
    EXPECT_TRUE(KwPower::IsOneOverOddInteger(1.0 / 2147483645.0, 32.0));
    EXPECT_FALSE(KwPower::IsOneOverEvenInteger(1.0 / 2147483648.0, 32.0));
    EXPECT_FALSE(KwPower::IsOneOverOddInteger(1.0 / 2147483649.0, 32.0));
    EXPECT_TRUE(KwPower::IsOneOverEvenInteger(-1.0 / 4e9, 32.0));
    EXPECT_TRUE(KwPower::IsOneOverOddInteger(-1.0 / 4000000001.0, 32.0));
}

TEST(KwPowerReciprocals, ToleranceCountsEpsilonsOfTheHalvedReciprocal) {
    const double nearThird = (1.0 / 3.0) * (1.0 + 100 * KwPower::MEpsilon());
    EXPECT_FALSE(KwPower::IsOneOverOddInteger(nearThird, 32.0));
    EXPECT_TRUE(KwPower::IsOneOverOddInteger(nearThird, 200.0));
}

TEST(KwPowerAlmostEqual, ZeroEqualsOnlyZero) {
    EXPECT_FALSE(KwPower::AlmostEqual(0, 1e-300, 1));
    EXPECT_FALSE(KwPower::AlmostEqual(1e-300, 0, 1));
    EXPECT_TRUE(KwPower::AlmostEqual(0.0, -0.0, 1));
}

TEST(KwPowerAlmostEqual, OneEpsilonIsWithinToleranceOne) {
    EXPECT_TRUE(KwPower::AlmostEqual(1, 1 + 2.2e-16, 1));
    EXPECT_TRUE(KwPower::AlmostEqual(1 + 2.2e-16, 1, 1));
    EXPECT_FALSE(KwPower::AlmostEqual(1, 1 + 3 * KwPower::MEpsilon(), 2));
    EXPECT_TRUE(KwPower::AlmostEqual(-2.385, -2.385, 0));
}

TEST(KwPowerAlmostEqual, OppositeSignsAreNeverEqual) {
    EXPECT_FALSE(KwPower::AlmostEqual(-1, 1, 1e20));
    EXPECT_FALSE(KwPower::AlmostEqual(1e-300, -1e-300, 1e20));
}

TEST(KwPowerAlmostEqual, DifferenceIsRelativeToTheLargerMagnitude) {
    const double tol = 0.25 / KwPower::MEpsilon();
    EXPECT_TRUE(KwPower::AlmostEqual(3, 4, tol));
    EXPECT_TRUE(KwPower::AlmostEqual(-4, -3, tol));
    EXPECT_FALSE(KwPower::AlmostEqual(2.99, 4, tol));
    EXPECT_FALSE(KwPower::AlmostEqual(kNaN, 4, tol));
    EXPECT_FALSE(KwPower::AlmostEqual(4, kNaN, tol));
}

TEST(KwPowerAlmostEqual, InfinitiesAreNotEqualForTheirDifferenceIsNoNumber) {
    EXPECT_FALSE(KwPower::AlmostEqual(kInfinity, kInfinity, 32));
    EXPECT_FALSE(KwPower::AlmostEqual(-kInfinity, -kInfinity, 32));
    EXPECT_FALSE(KwPower::AlmostEqual(kInfinity, 2.385, 32));
}

TEST(KwPowerExponent, IsComputedUpToBothBoundsInclusive) {
    double result = 0.0;
    for (const double x : {-708.39, -2.385, 0.0, 1.0, 709.0}) {
        EXPECT_EQ(KwPower::Exponent(x, result), KwPower::kPowerOK);
        EXPECT_EQ(result, std::exp(x));
    }
}

TEST(KwPowerExponent, BeyondTheBoundsGivesZeroOrMissing) {
    double result = 17.25;
    EXPECT_EQ(KwPower::Exponent(-708.4, result), KwPower::kPowerUnderflow);
    EXPECT_EQ(result, 0.0);
    EXPECT_EQ(KwPower::Exponent(709.1, result), KwPower::kPowerOverflow);
    EXPECT_TRUE(KwMV::IsMissing(result));
    EXPECT_EQ(KwPower::Exponent(-kInfinity, result), KwPower::kPowerUnderflow);
    EXPECT_EQ(KwPower::Exponent(kInfinity, result), KwPower::kPowerOverflow);
}

TEST(KwPowerExponent, NaNIsOverflow) {
    double result = 17.25;
    EXPECT_EQ(KwPower::Exponent(kNaN, result), KwPower::kPowerOverflow);
    EXPECT_TRUE(KwMV::IsMissing(result));
}

TEST(KwPowerPower, ZeroBase) {
    ExpectPower(0, 0, KwPower::kPowerZeroToZero, 1.0);
    ExpectPower(-0.0, 0, KwPower::kPowerZeroToZero, 1.0);
    ExpectNoPower(0, -1, KwPower::kPowerDivideByZero);
    ExpectPower(0, 2.385, KwPower::kPowerOK, 0.0);
}

TEST(KwPowerPower, ZeroExponentGivesOne) {
    ExpectPower(-2, 0, KwPower::kPowerNegBaseZeroExp, 1.0);
    ExpectPower(2.385, 0, KwPower::kPowerOK, 1.0);
    ExpectPower(kNaN, 0, KwPower::kPowerNegBaseZeroExp, 1.0);
}

TEST(KwPowerPower, NegativeBaseHasItsRealCubeRoot) {
    double result = 0.0;
    EXPECT_EQ(KwPower::Power(-8, 1.0 / 3.0, result), KwPower::kPowerOK);
    EXPECT_NEAR(result, -2.0, 4 * KwPower::MEpsilon());
    EXPECT_EQ(KwPower::Power(-8, -1.0 / 3.0, result), KwPower::kPowerOK);
    EXPECT_NEAR(result, -0.5, 2 * KwPower::MEpsilon());
}

TEST(KwPowerPower, NegativeBaseWithAnotherFractionIsUndefined) {
    ExpectNoPower(-8, 0.5, KwPower::kPowerUndefined);
    ExpectNoPower(-8, 2.385, KwPower::kPowerUndefined);
    ExpectNoPower(-8, 3e9, KwPower::kPowerUndefined);
    ExpectNoPower(-8, kNaN, KwPower::kPowerUndefined);
}

TEST(KwPowerPower, OneOverAnOddNumberIsTakenWithinThirtyTwoEpsilons) {
    // An exponent k epsilons off 1/3 puts (1/x + 1) / 2 off 2 by 0.75 k epsilons, relatively.
    double result = 0.0;
    EXPECT_EQ(KwPower::Power(-8, (1.0 / 3.0) * (1.0 + 40 * KwPower::MEpsilon()), result), KwPower::kPowerOK);
    EXPECT_NEAR(result, -2.0, 100 * KwPower::MEpsilon());
    ExpectNoPower(-8, (1.0 / 3.0) * (1.0 + 50 * KwPower::MEpsilon()), KwPower::kPowerUndefined);
    // A reciprocal off 3 by 128 epsilons puts (1/x + 1) / 2 off 2 by exactly 32, relatively; the next double is beyond.
    const double onBound = 3.0 - 128 * KwPower::MEpsilon();
    const double beyond = 3.0 - 130 * KwPower::MEpsilon();
    ASSERT_EQ(1.0 / (1.0 / onBound), onBound);
    ASSERT_EQ(1.0 / (1.0 / beyond), beyond);
    EXPECT_EQ(KwPower::Power(-8, 1.0 / onBound, result), KwPower::kPowerOK);
    ExpectNoPower(-8, 1.0 / beyond, KwPower::kPowerUndefined);
}

TEST(KwPowerPower, OverflowOfANegativeBaseDependsOnParityAndSign) {
    ExpectNoPower(-10, 400, KwPower::kPowerOverflow);
    ExpectNoPower(-10, 401, KwPower::kPowerNegOverflow);
    ExpectNoPower(-0.1, -401, KwPower::kPowerOverflow);
    ExpectNoPower(10, 400, KwPower::kPowerOverflow);
    ExpectNoPower(0.1, -400, KwPower::kPowerOverflow);
    // The logarithm decides, even where the power itself would be finite.
    ExpectNoPower(-1.5e308, 1, KwPower::kPowerNegOverflow);
    ExpectNoPower(-5e-324, -1, KwPower::kPowerOverflow);
}

TEST(KwPowerPower, UnderflowKeepsTheSign) {
    ExpectPower(2, -2000, KwPower::kPowerUnderflow, 0.0);
    ExpectPower(-2, -2001, KwPower::kPowerUnderflow, -0.0);
    ExpectPower(-2, -2000, KwPower::kPowerUnderflow, 0.0);
}

TEST(KwPowerPower, WholeAndFractionalPowersAreTheirLogarithmicForm) {
    ExpectPower(2.385, 3.5, KwPower::kPowerOK, std::exp(std::log(2.385) * 3.5));
    ExpectPower(-2.385, 4, KwPower::kPowerOK, std::exp(std::log(2.385) * 4));
    ExpectPower(-2.385, 5, KwPower::kPowerOK, -std::exp(std::log(2.385) * 5));
    ExpectPower(-2.385, -3, KwPower::kPowerOK, -std::exp(std::log(2.385) * -3));
}

TEST(KwPowerPower, NaNGoesWhereTheComparisonsSendIt) {
    double result = 17.25;
    EXPECT_EQ(KwPower::Power(kNaN, 3, result), KwPower::kPowerOK);
    EXPECT_TRUE(std::isnan(result));
    ExpectNoPower(kNaN, 2, KwPower::kPowerOverflow);
    ExpectNoPower(2, kNaN, KwPower::kPowerOverflow);
    ExpectNoPower(0, kNaN, KwPower::kPowerOverflow);
}

TEST(KwPowerMultiply, OverflowIsMissingWhateverTheSigns) {
    for (const double a : {1e200, -1e200}) {
        for (const double b : {1e200, -1e200}) {
            EXPECT_TRUE(KwMV::IsMissing(KwPower::Multiply(a, b))) << a << " * " << b;
        }
    }
}

TEST(KwPowerMultiply, UnderflowIsZeroWithTheSignOfTheProduct) {
    EXPECT_EQ(KwPower::Multiply(1e-200, -1e-200), 0.0);
    EXPECT_TRUE(std::signbit(KwPower::Multiply(1e-200, -1e-200)));
    EXPECT_FALSE(std::signbit(KwPower::Multiply(-1e-200, -1e-200)));
}

TEST(KwPowerMultiply, ZeroFactorGivesPositiveZero) {
    for (const double other : {-2.385, 1e300, kInfinity, kNaN}) {
        EXPECT_EQ(KwPower::Multiply(0.0, other), 0.0);
        EXPECT_FALSE(std::signbit(KwPower::Multiply(other, -0.0)));
    }
}

TEST(KwPowerMultiply, NaNStaysNaN) {
    EXPECT_TRUE(std::isnan(KwPower::Multiply(kNaN, 2.385)));
    EXPECT_TRUE(std::isnan(KwPower::Multiply(-2.385, kNaN)));
}

TEST(KwPowerMultiply, AgreesWithTheProductInsideTheRange) {
    const double values[] = {2.385, -0.0712, 3.3e100, -4.1e-99, 1.0};
    for (const double a : values) {
        for (const double b : values) {
            const double product = a * b;
            // The sum of two logarithms of up to 230 carries an absolute error of a few 1e-14.
            EXPECT_NEAR(KwPower::Multiply(a, b) / product, 1.0, 1e-12) << a << " * " << b;
        }
    }
}

}  // namespace
