// The strided helpers: each at its offset against a plain loop, the ends of negative walks, what is refused.
#include "numerics/mathfun/KwMathFun.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>

#include "tests/numerics/blas1/GuardedVector.h"

namespace {

using blas_test::Bits;
using blas_test::ForEachWalk;
using blas_test::GuardedVector;
using blas_test::kIncrements;
using blas_test::kLengths;
using blas_test::UlpsBetween;
using KwMath_930::KwMathFun;
using Values = std::vector<double>;

constexpr int kOffset = 3;

// Values for a walk of n elements in either direction from kOffset on.
Values Cells(int n, int inc, unsigned seed) {
    return GuardedVector(n + 1, inc, seed).Cells();
}

// The index of element k of a walk that starts at its far end when it goes down.
std::size_t Index(int n, int inc, int k) {
    return static_cast<std::size_t>(kOffset + (inc < 0 ? (1 - n) * inc : 0) + k * inc);
}

TEST(KwMathFunDot, IsThePlainLoopOverAllStrides) {
    ForEachWalk([](int n, int incx, int incy) {
        const Values x = Cells(n, incx, 61);
        const Values y = Cells(n, incy, 62);
        double sum = 0.0;
        for (int k = 0; k < n; ++k) {
            sum += x[Index(n, incx, k)] * y[Index(n, incy, k)];
        }
        EXPECT_EQ(Bits(KwMathFun::DDot(n, x, kOffset, incx, y, kOffset, incy)), Bits(sum));
    });
}

TEST(KwMathFunAxpy, IsThePlainLoopOverAllStrides) {
    ForEachWalk([](int n, int incx, int incy) {
        const Values x = Cells(n, incx, 63);
        Values y = Cells(n, incy, 64);
        Values expected = y;
        for (int k = 0; k < n; ++k) {
            double& element = expected[Index(n, incy, k)];
            element = element + -2.385 * x[Index(n, incx, k)];
        }
        KwMathFun::Daxpy(n, -2.385, x, kOffset, incx, y, kOffset, incy);
        EXPECT_EQ(Bits(y), Bits(expected));
    });
}

TEST(KwMathFunAxpy, FactorZeroLeavesYUntouchedEvenWhereXIsNaN) {
    const Values x = {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()};
    Values y = {2.385, -0.0};
    for (const double zero : {0.0, -0.0}) {
        KwMathFun::Daxpy(2, zero, x, 0, 1, y, 0, 1);
        EXPECT_EQ(Bits(y), Bits(Values{2.385, -0.0}));
    }
}

TEST(KwMathFunScal, IsThePlainLoopOverAllStrides) {
    for (const int n : kLengths) {
        for (const int inc : kIncrements) {
            Values x = Cells(n, inc, 65);
            Values expected = x;
            for (int k = 0; k < n; ++k) {
                expected[Index(n, inc, k)] *= -2.385;
            }
            KwMathFun::DScal(n, -2.385, x, kOffset, inc);
            EXPECT_EQ(Bits(x), Bits(expected)) << n << " " << inc;
        }
    }
}

TEST(KwMathFunNrm2, IsTheRootOfTheSumOfSquaresAtItsOffset) {
    for (const int n : kLengths) {
        for (const int inc : {1, 2, 3}) {
            const Values x = Cells(n, inc, 66);
            double sum = 0.0;
            for (int k = 0; k < n; ++k) {
                sum += x[Index(n, inc, k)] * x[Index(n, inc, k)];
            }
            EXPECT_LE(UlpsBetween(KwMathFun::DNrm2(n, x, kOffset, inc), std::sqrt(sum)),
                      static_cast<std::uint64_t>(n > 8 ? n / 4 : 2));
        }
    }
    EXPECT_EQ(KwMathFun::DNrm2(2, {9.0, 3e307, 4e307}, 1, 1), 5e307);
}

TEST(KwMathFunNrm2, RefusesIncrementsBelowOne) {
    const Values x = {3.0, 4.0};
    EXPECT_EQ(KwMathFun::DNrm2(2, x, 1, 0), 0.0);
    EXPECT_EQ(KwMathFun::DNrm2(2, x, 1, -1), 0.0);
    EXPECT_EQ(KwMathFun::DNrm2(1, x, 1, 1), 4.0);
}

TEST(KwMathFunASum, GoesFromItsOffsetWhateverTheIncrement) {
    for (const int n : {-1, 0, 1, 2, 7}) {
        for (const int inc : {-2, -1, 0, 1, 2}) {
            const Values x = Cells(20, 1, 67);
            const int off = 14;
            double sum = 0.0;
            for (int k = 0; k < n; ++k) {
                sum += std::abs(x[static_cast<std::size_t>(off + k * inc)]);
            }
            EXPECT_EQ(Bits(KwMathFun::DASum(n, x, off, inc)), Bits(sum)) << n << " " << inc;
        }
    }
}

TEST(KwMathFunSum, WalksUpOrDownToTheFirstElement) {
    const Values x = {1e16, 99.0, 1.0, 99.0, -1e16, 99.0};
    EXPECT_EQ(KwMathFun::DSum(3, x, 2), 0.0);
    EXPECT_EQ(KwMathFun::DSum(3, x, -2), 0.0);
    const Values y = {1.0, 1e16, -1e16};
    EXPECT_EQ(KwMathFun::DSum(3, y, 1), 0.0);
    EXPECT_EQ(KwMathFun::DSum(3, y, -1), 1.0);
    EXPECT_EQ(KwMathFun::DSum(2, y, 2), 1.0 - 1e16);
}

TEST(KwMathFunSum, IncrementZeroIsNTimesTheFirst) {
    EXPECT_EQ(KwMathFun::DSum(10, {0.1, 5.0}, 0), 1.0);
    EXPECT_NE(0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1 + 0.1, 1.0);
}

TEST(KwMathFunLoad, StoresFromTheOffsetOnAndNowhereElse) {
    Values x(9, 99.0);
    KwMathFun::DLoad(3, -2.385, x, 1, 3);
    EXPECT_EQ(x, (Values{99.0, -2.385, 99.0, 99.0, -2.385, 99.0, 99.0, -2.385, 99.0}));
}

TEST(KwMathFunLoad, RefusesEmptyLengthsNegativeOffsetsAndIncrementsBelowOne) {
    Values x(4, 99.0);
    KwMathFun::DLoad(0, 1.0, x, 0, 1);
    KwMathFun::DLoad(-1, 1.0, x, 0, 1);
    KwMathFun::DLoad(2, 1.0, x, -1, 1);
    KwMathFun::DLoad(INT_MAX, 1.0, x, INT_MIN, 1);
    KwMathFun::DLoad(2, 1.0, x, 1, 0);
    KwMathFun::DLoad(2, 1.0, x, 1, -1);
    EXPECT_EQ(x, Values(4, 99.0));
}

TEST(KwMathFunZero, ClearsItsRangeAndNothingElse) {
    Values x(6, 99.0);
    KwMathFun::LRZero(x, 2, 3);
    EXPECT_EQ(x, (Values{99.0, 99.0, 0.0, 0.0, 0.0, 99.0}));
    KwMathFun::LRZero(x, 0, 0);
    KwMathFun::LRZero(x, 0, -5);
    EXPECT_EQ(x[0], 99.0);
}

TEST(KwMathFunStrided, EmptyLengthsReadNothing) {
    Values none;
    for (const int n : {0, -1, INT_MIN}) {
        for (const int any : {INT_MIN, -1, 0, 1, INT_MAX}) {
            EXPECT_EQ(KwMathFun::DDot(n, none, any, any, none, any, any), 0.0);
            EXPECT_EQ(KwMathFun::DNrm2(n, none, any, any), 0.0);
            EXPECT_EQ(KwMathFun::DASum(n, none, any, any), 0.0);
            EXPECT_EQ(KwMathFun::DSum(n, none, any), 0.0);
            KwMathFun::Daxpy(n, 2.0, none, any, any, none, any, any);
            KwMathFun::DScal(n, 2.0, none, any, any);
            KwMathFun::DLoad(n, 2.0, none, any, any);
            KwMathFun::LRZero(none, any, n);
        }
    }
    EXPECT_TRUE(none.empty());
}

TEST(KwMathFunStrided, ArrayLimitsAreSevenAndForty) {
    EXPECT_EQ(KwMathFun::kSmallestArrayLimit, 7);
    EXPECT_EQ(KwMathFun::kBigArrayLimit, 40);
}

}  // namespace
