// The root of a signed sum of two scaled squares: every branch, and operands whose squares leave the range.
#include "numerics/power/KwExtremeNum.h"
#include "tests/numerics/special_values.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using KwMath_930::KwExtremeNum;

constexpr double kUntouched = 17.25;
using numerics_samples::kInfinity;
using numerics_samples::kNaN;

double Root(double a, double b, double c, double d) {
    double result = kUntouched;
    EXPECT_TRUE(KwExtremeNum::SumSqRoot(a, b, c, d, result));
    return result;
}

void ExpectNegative(double a, double b, double c, double d) {
    double result = kUntouched;
    EXPECT_FALSE(KwExtremeNum::SumSqRoot(a, b, c, d, result));
    EXPECT_EQ(result, kUntouched);
}

TEST(KwExtremeNum, ThreeAndFourGiveFive) {
    EXPECT_EQ(Root(3, 1, 4, 1), 5.0);
    EXPECT_EQ(Root(4, 1, 3, 1), 5.0);
    EXPECT_EQ(Root(-3, 1, -4, 1), 5.0);
}

TEST(KwExtremeNum, DifferenceOfSixteenAndNineGivesTheRootOfSeven) {
    EXPECT_DOUBLE_EQ(Root(3, -1, 4, 1), std::sqrt(7.0));
    EXPECT_DOUBLE_EQ(Root(4, 1, 3, -1), std::sqrt(7.0));
}

TEST(KwExtremeNum, EqualTermsOfOppositeSignGiveZero) {
    EXPECT_EQ(Root(3, 1, 3, -1), 0.0);
    EXPECT_EQ(Root(3, -1, 3, 1), 0.0);
    EXPECT_EQ(Root(1, 4, 2, -1), 0.0);
}

TEST(KwExtremeNum, EqualPositiveTermsGiveRootTwoTimesTheTerm) {
    EXPECT_EQ(Root(2.385, 1, -2.385, 1), std::sqrt(2.0) * 2.385);
    EXPECT_EQ(Root(0, 5, 7, 0), 0.0);
}

TEST(KwExtremeNum, ScaleFactorZeroIsNotNegative) {
    EXPECT_EQ(Root(5, 0, 0, -1), 0.0);
    EXPECT_EQ(Root(0, -1, 5, -0.0), 0.0);
    EXPECT_EQ(Root(5, 0, -2.385, 1), 2.385);
}

TEST(KwExtremeNum, NegativeSumIsRefusedAndLeavesTheResult) {
    ExpectNegative(4, -1, 3, 1);
    ExpectNegative(3, 1, 4, -1);
    ExpectNegative(3, -1, 4, -1);
    ExpectNegative(0, -1, 0, -1);
    ExpectNegative(kNaN, -1, 2, -1);
}

TEST(KwExtremeNum, ScaleFactorsEnterByTheirRoot) {
    EXPECT_DOUBLE_EQ(Root(2, 2.25, 1, 16), 5.0);
    EXPECT_DOUBLE_EQ(Root(1.5, -4, 10, 0.25), 4.0);
}

TEST(KwExtremeNum, SquaresBeyondTheRangeAreNeverFormed) {
    EXPECT_DOUBLE_EQ(Root(3e200, 1, 4e200, 1), 5e200);
    EXPECT_DOUBLE_EQ(Root(3e-200, 1, 4e-200, 1), 5e-200);
    EXPECT_DOUBLE_EQ(Root(3e-200, -1, 5e-200, 1), 4e-200);
    EXPECT_EQ(Root(1e300, 1, 1e-300, -1), 1e300);
    EXPECT_EQ(Root(kInfinity, 1, 3, 1), kInfinity);
}

TEST(KwExtremeNum, OperandThatIsNaNGivesNaN) {
    EXPECT_TRUE(std::isnan(Root(kNaN, 1, 3, 1)));
    EXPECT_TRUE(std::isnan(Root(3, 1, kNaN, 1)));
    EXPECT_TRUE(std::isnan(Root(3, -1, kNaN, 1)));
    EXPECT_TRUE(std::isnan(Root(3, 1, kNaN, -1)));
    EXPECT_TRUE(std::isnan(Root(3, kNaN, 2, -1)));
}

}  // namespace
