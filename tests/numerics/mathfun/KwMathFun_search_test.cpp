// Comparisons, the two largest elements, the bisection of every small range, and the predicates at their limits.
#include "numerics/mathfun/KwMathFun.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>

#include "tests/numerics/blas1/GuardedVector.h"
#include "tests/numerics/special_values.h"

namespace {

using blas_test::Bits;
using KwMath_930::KwMathFun;
using Values = std::vector<double>;

using numerics_samples::kInfinity;
using numerics_samples::kMissing;
using numerics_samples::kNaN;

TEST(KwMathFunMaxRelDiff, TakesTheLargestOverTheCommonLength) {
    EXPECT_EQ(KwMathFun::VMaxRelDiff({1.0, -5.0, 900.0}, {1.5, -3.0}, 1.0), 0.5);
    EXPECT_EQ(KwMathFun::VMaxRelDiff({1.0, -5.0}, {1.5, -3.0, 900.0}, 1.0), 0.5);
    EXPECT_EQ(KwMathFun::VMaxRelDiff({2.0}, {-4.0}, 2.0), 1.0);
    EXPECT_EQ(KwMathFun::VMaxRelDiff({}, {1.0}, 1.0), 0.0);
}

TEST(KwMathFunMaxRelDiff, ToleranceCountsByItsMagnitude) {
    EXPECT_EQ(KwMathFun::VMaxRelDiff({2.0}, {-4.0}, -2.0), 1.0);
}

TEST(KwMathFunMaxRelDiff, ToleranceZeroMeansOneMillionth) {
    EXPECT_EQ(KwMathFun::VMaxRelDiff({3e-6}, {0.0}, 0.0), 3e-6 / 1e-6);
    EXPECT_EQ(KwMathFun::VMaxRelDiff({3.0}, {2.0}, -0.0), 1.0 / (2.0 + 1e-6));
}

TEST(KwMathFunMaxRelDiff, DifferenceThatIsNaNDoesNotCount) {
    EXPECT_EQ(KwMathFun::VMaxRelDiff({kNaN, 2.0, kNaN}, {1.0, -4.0, 3.0}, 2.0), 1.0);
    EXPECT_EQ(KwMathFun::VMaxRelDiff({2.0, 1.0}, {-4.0, kNaN}, 2.0), 1.0);
}

TEST(KwMathFunNrm1Diff, AddsMagnitudesOverTheCommonLength) {
    EXPECT_EQ(KwMathFun::VNrm1Diff({1.0, -5.0, 900.0}, {1.5, -3.0}), 2.5);
    EXPECT_EQ(KwMathFun::VNrm1Diff({1.0}, {-1.0, 900.0}), 2.0);
    EXPECT_EQ(KwMathFun::VNrm1Diff({}, {}), 0.0);
}

struct Two {
    double largest = 17.25;
    double second = 17.25;
};

Two FindTwo(const Values& v) {
    Two two;
    KwMathFun::FindTwoLargest(v, two.largest, two.second);
    return two;
}

Two FindTwoNonMiss(const Values& v) {
    Two two;
    KwMathFun::FindTwoLargestNonMiss(v, two.largest, two.second);
    return two;
}

void ExpectTwo(const Two& two, double largest, double second) {
    EXPECT_EQ(two.largest, largest);
    EXPECT_EQ(two.second, second);
}

TEST(KwMathFunTwoLargest, AreMissingWhereTheVectorIsTooShort) {
    ExpectTwo(FindTwo({}), kMissing, kMissing);
    ExpectTwo(FindTwo({-2.385}), -2.385, kMissing);
    ExpectTwo(FindTwoNonMiss({}), kMissing, kMissing);
    ExpectTwo(FindTwoNonMiss({kMissing, -2.385, kMissing}), -2.385, kMissing);
    ExpectTwo(FindTwoNonMiss({kMissing, kMissing}), kMissing, kMissing);
}

TEST(KwMathFunTwoLargest, AreThoseOfTheSortedVectorInEveryOrder) {
    Values v = {-7.5, -2.0, 2.385, 2.385, 9.25};
    do {
        ExpectTwo(FindTwo(v), 9.25, 2.385);
    } while (std::next_permutation(v.begin(), v.end()));
    Values negative = {-7.5, -3.0, -2.0, kMissing};
    do {
        ExpectTwo(FindTwo(negative), -2.0, -3.0);
        ExpectTwo(FindTwoNonMiss(negative), -2.0, -3.0);
    } while (std::next_permutation(negative.begin(), negative.end()));
}

TEST(KwMathFunTwoLargest, EqualValuesFillBoth) {
    ExpectTwo(FindTwo({4.5, 4.5}), 4.5, 4.5);
    ExpectTwo(FindTwo({1.0, 4.5, 4.5}), 4.5, 4.5);
    ExpectTwo(FindTwoNonMiss({4.5, kMissing, 4.5}), 4.5, 4.5);
}

TEST(KwMathFunTwoLargest, MinusInfinityCountsAsAnElement) {
    ExpectTwo(FindTwo({-kInfinity, -kInfinity}), -kInfinity, -kInfinity);
    ExpectTwo(FindTwoNonMiss({kMissing, 1.0, -kInfinity}), 1.0, -kInfinity);
}

TEST(KwMathFunBinSearch, RunOfEqualsGivesTheFirstHitOfTheBisection) {
    const Values v = {1.0, 2.0, 2.0, 3.0};
    EXPECT_EQ(KwMathFun::BinSearch(v, 0, 3, 2.0, false), 1);
    EXPECT_EQ(KwMathFun::BinSearch(v, 0, 3, 2.0, true), 2);
    EXPECT_EQ(KwMathFun::BinSearch(std::vector<int>{1, 2, 2, 3}, 0, 3, 2, false), 1);
    EXPECT_EQ(KwMathFun::BinSearch(std::vector<int>{1, 2, 2, 3}, 0, 3, 2, true), 2);
}

TEST(KwMathFunBinSearch, RunOfEqualsIsNotScannedToItsEnd) {
    // The middle of 0 .. 2, of 0 .. 5 and, rounded down, of 0 .. 1 and 1 .. 4.
    const std::vector<int> run = {2, 2, 2, 3};
    EXPECT_EQ(KwMathFun::BinSearch(run, 0, 3, 2, false), 1);
    EXPECT_EQ(KwMathFun::BinSearch(run, 0, 3, 2, true), 2);
    const Values longer = {1.0, 2.0, 2.0, 2.0, 2.0, 2.0, 3.0};
    EXPECT_EQ(KwMathFun::BinSearch(longer, 0, 6, 2.0, false), 2);
    EXPECT_EQ(KwMathFun::BinSearch(longer, 0, 6, 2.0, true), 3);
    EXPECT_EQ(KwMathFun::BinSearch(Values{2.0, 2.0, 3.0}, 0, 2, 2.0, false), 0);
    EXPECT_EQ(KwMathFun::BinSearch(Values{2.0, 2.0, 3.0}, 0, 2, 2.0, true), 1);
    EXPECT_EQ(KwMathFun::BinSearch(longer, 1, 5, 2.0, false), 2);
}

TEST(KwMathFunBinSearch, BeyondTheRangeIsMinusOneAndABadRangeMinusTwo) {
    const Values v = {1.0, 2.0, 2.0, 3.0};
    for (const bool upper : {false, true}) {
        EXPECT_EQ(KwMathFun::BinSearch(v, 0, 3, 5.0, upper), -1);
        EXPECT_EQ(KwMathFun::BinSearch(v, 0, 4, 5.0, upper), -2);
        EXPECT_EQ(KwMathFun::BinSearch(v, 3, 2, 2.0, upper), -2);
        EXPECT_EQ(KwMathFun::BinSearch(v, -1, 2, 2.0, upper), -2);
        EXPECT_EQ(KwMathFun::BinSearch(v, INT_MIN, INT_MIN, 2.0, upper), -2);
        EXPECT_EQ(KwMathFun::BinSearch(v, INT_MAX, INT_MAX, 2.0, upper), -2);
        EXPECT_EQ(KwMathFun::BinSearch(Values{}, 0, 0, 2.0, upper), -2);
    }
}

TEST(KwMathFunBinSearch, EqualToTheLastIsBeyondOnlyIfUpper) {
    const Values v = {1.0, 2.0, 3.0};
    EXPECT_EQ(KwMathFun::BinSearch(v, 0, 2, 3.0, true), -1);
    EXPECT_EQ(KwMathFun::BinSearch(v, 0, 2, 3.0, false), 2);
}

TEST(KwMathFunBinSearch, ElementInFrontDecidesWhetherTheValueLiesBeforeTheRange) {
    const Values v = {1.0, 2.0, 3.0, 4.0};
    EXPECT_EQ(KwMathFun::BinSearch(v, 2, 3, 1.5, false), -1);
    EXPECT_EQ(KwMathFun::BinSearch(v, 2, 3, 2.0, false), -1);
    EXPECT_EQ(KwMathFun::BinSearch(v, 2, 3, 2.0, true), 2);
    EXPECT_EQ(KwMathFun::BinSearch(v, 2, 3, 2.5, false), 2);
    EXPECT_EQ(KwMathFun::BinSearch(v, 0, 3, -100.0, false), 0);
}

TEST(KwMathFunBinSearch, RangeOfOneIsItsPlace) {
    const Values v = {1.0, 2.0, 3.0};
    EXPECT_EQ(KwMathFun::BinSearch(v, 1, 1, 1.5, false), 1);
    EXPECT_EQ(KwMathFun::BinSearch(v, 1, 1, 2.0, false), 1);
    EXPECT_EQ(KwMathFun::BinSearch(v, 1, 1, 2.0, true), -1);
    EXPECT_EQ(KwMathFun::BinSearch(v, 0, 0, kNaN, true), 0);
}

// Where a scan finds the place of value among distinct elements.
template <class Number>
int Place(const std::vector<Number>& v, int lo, int hi, Number value, bool upper) {
    const auto begin = v.begin();
    const auto place = upper ? std::upper_bound(begin, v.end(), value) : std::lower_bound(begin, v.end(), value);
    const int index = static_cast<int>(place - begin);
    return index < lo || index > hi ? -1 : index;
}

TEST(KwMathFunBinSearch, FindsThePlaceAmongDistinctElementsInEveryRange) {
    for (int size = 1; size <= 12; ++size) {
        std::vector<int> whole;
        Values doubles;
        for (int i = 0; i < size; ++i) {
            whole.push_back(2 * i);
            doubles.push_back(2.0 * i);
        }
        for (int lo = 0; lo < size; ++lo) {
            for (int hi = lo; hi < size; ++hi) {
                for (int value = -1; value <= 2 * size; ++value) {
                    for (const bool upper : {false, true}) {
                        EXPECT_EQ(KwMathFun::BinSearch(whole, lo, hi, value, upper),
                                  Place(whole, lo, hi, value, upper));
                        EXPECT_EQ(KwMathFun::BinSearch(doubles, lo, hi, value, upper),
                                  Place(doubles, lo, hi, double{1.0 * value}, upper));
                    }
                }
            }
        }
    }
}

TEST(KwMathFunQLReps, IsNegligibleOnlyBelowEpsilonOfAPositiveB) {
    EXPECT_TRUE(KwMathFun::QLReps(0.0, 1.0));
    EXPECT_TRUE(KwMathFun::QLReps(2.2e-16, 1.0));
    EXPECT_TRUE(KwMathFun::QLReps(-2.2e-16, 1.0));
    EXPECT_FALSE(KwMathFun::QLReps(2.220446049250313e-16, 1.0));
    EXPECT_FALSE(KwMathFun::QLReps(0.0, 0.0));
    EXPECT_FALSE(KwMathFun::QLReps(0.0, -1.0));
    EXPECT_FALSE(KwMathFun::QLReps(kNaN, 1.0));
    EXPECT_FALSE(KwMathFun::QLReps(0.0, kNaN));
}

TEST(KwMathFunReplaceIfSmall, KeepsTheSignOfWhatItReplaces) {
    EXPECT_EQ(KwMathFun::ReplaceIfSmall(-1e-20, 1e-10), -1e-10);
    EXPECT_EQ(KwMathFun::ReplaceIfSmall(1e-20, 1e-10), 1e-10);
    EXPECT_EQ(KwMathFun::ReplaceIfSmall(-1e-10, 1e-10), -1e-10);
    EXPECT_EQ(KwMathFun::ReplaceIfSmall(-2.385, 1e-10), -2.385);
}

TEST(KwMathFunReplaceIfSmall, BothZerosBecomePositive) {
    EXPECT_EQ(Bits(KwMathFun::ReplaceIfSmall(0.0, 1e-10)), Bits(1e-10));
    EXPECT_EQ(Bits(KwMathFun::ReplaceIfSmall(-0.0, 1e-10)), Bits(1e-10));
    EXPECT_EQ(KwMathFun::ReplaceIfSmall(kNaN, 1e-10), 1e-10);
}

TEST(KwMathFunIsValidDouble, FiniteNumbersAreValidAndSoIsTheMissingValue) {
    for (const double x : {0.0, -2.385, 1.7976931348623157e308, kMissing, 5e-324}) {
        EXPECT_TRUE(KwMathFun::IsValidDouble(x)) << x;
    }
    for (const double x : {kNaN, kInfinity, -kInfinity}) {
        EXPECT_FALSE(KwMathFun::IsValidDouble(x)) << x;
    }
}

}  // namespace
