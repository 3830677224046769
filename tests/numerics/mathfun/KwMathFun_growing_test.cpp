// The walks with a growing increment: against their index formula, and along the rows of a packed triangle.
#include "numerics/mathfun/KwMathFun.h"

#include <gtest/gtest.h>

#include <climits>

#include "tests/numerics/blas1/GuardedVector.h"

namespace {

using blas_test::Bits;
using blas_test::GuardedVector;
using KwMath_930::KwMathFun;
using Values = std::vector<double>;

std::size_t GrowingIndex(int off, int inc, int k) {
    return static_cast<std::size_t>(off + k * inc + k * (k - 1) / 2);
}

Values Cells(unsigned seed) {
    return GuardedVector(80, 1, seed).Cells();
}

// Offset and increment of walks of up to 9 elements that stay inside Cells: also down, and on the spot at first.
struct Walk {
    int off;
    int inc;
};
constexpr Walk kWalks[] = {{0, 1}, {2, 2}, {5, 5}, {4, 0}, {20, -1}, {60, -7}};

TEST(KwMathFunIIInit, SetsTheDiagonalOfPackedRows) {
    Values x(8, 99.0);
    KwMathFun::IIInit(4, 1.0, x, 0, 1);
    EXPECT_EQ(x, (Values{1.0, 1.0, 99.0, 1.0, 99.0, 99.0, 1.0, 99.0}));
}

TEST(KwMathFunIIInit, FollowsTheIndexFormula) {
    for (const Walk walk : kWalks) {
        for (int n = -1; n <= 9; ++n) {
            Values x = Cells(71);
            Values expected = x;
            for (int k = 0; k < n; ++k) {
                expected[GrowingIndex(walk.off, walk.inc, k)] = -2.385;
            }
            KwMathFun::IIInit(n, -2.385, x, walk.off, walk.inc);
            EXPECT_EQ(Bits(x), Bits(expected));
        }
    }
}

TEST(KwMathFunIIScal, FollowsTheIndexFormula) {
    for (const Walk walk : kWalks) {
        for (int n = -1; n <= 9; ++n) {
            Values x = Cells(72);
            Values expected = x;
            for (int k = 0; k < n; ++k) {
                expected[GrowingIndex(walk.off, walk.inc, k)] *= -2.385;
            }
            KwMathFun::IIScal(n, -2.385, x, walk.off, walk.inc);
            EXPECT_EQ(Bits(x), Bits(expected));
        }
    }
}

TEST(KwMathFunIIAxpy, FollowsTheIndexFormula) {
    for (const Walk from : kWalks) {
        for (const Walk to : kWalks) {
            for (int n = -1; n <= 9; ++n) {
                const Values x = Cells(73);
                Values y = Cells(74);
                Values expected = y;
                for (int k = 0; k < n; ++k) {
                    expected[GrowingIndex(to.off, to.inc, k)] += -2.385 * x[GrowingIndex(from.off, from.inc, k)];
                }
                KwMathFun::IIAxpy(n, -2.385, x, from.off, from.inc, y, to.off, to.inc);
                EXPECT_EQ(Bits(y), Bits(expected));
            }
        }
    }
}

TEST(KwMathFunIIDot, FollowsTheIndexFormulaFromTheFirstElementToTheLast) {
    for (const Walk one : kWalks) {
        for (const Walk other : kWalks) {
            for (int n = -1; n <= 9; ++n) {
                const Values x = Cells(75);
                const Values y = Cells(76);
                double sum = 0.0;
                for (int k = 0; k < n; ++k) {
                    sum += x[GrowingIndex(one.off, one.inc, k)] * y[GrowingIndex(other.off, other.inc, k)];
                }
                EXPECT_EQ(Bits(KwMathFun::IIDot(n, x, one.off, one.inc, y, other.off, other.inc)), Bits(sum));
            }
        }
    }
}

TEST(KwMathFunIIDot, WalksARowOfAnUpperTriangleFromTheDiagonalToTheRight) {
    // Upper triangle of order 5 packed by columns; element (i, j), i <= j, has the value 10 i + j + 1.
    Values packed;
    for (int j = 0; j < 5; ++j) {
        for (int i = 0; i <= j; ++i) {
            packed.push_back(10 * i + j + 1);
        }
    }
    const Values ones = {1.0, 1.0, 1.0, 1.0, 1.0, 1.0, 1.0, 1.0, 1.0, 1.0, 1.0, 1.0, 1.0, 1.0, 1.0};
    for (int i = 0; i < 5; ++i) {
        double sum = 0.0;
        for (int j = i; j < 5; ++j) {
            sum += 10 * i + j + 1;
        }
        EXPECT_EQ(KwMathFun::IIDot(5 - i, packed, (i + 1) * (i + 2) / 2 - 1, i + 1, ones, 0, 1), sum) << i;
    }
}

TEST(KwMathFunII, EmptyLengthsReadNothing) {
    Values none;
    for (const int n : {0, -1, INT_MIN}) {
        for (const int any : {INT_MIN, -1, 0, 1, INT_MAX}) {
            EXPECT_EQ(KwMathFun::IIDot(n, none, any, any, none, any, any), 0.0);
            KwMathFun::IIAxpy(n, 2.0, none, any, any, none, any, any);
            KwMathFun::IIScal(n, 2.0, none, any, any);
            KwMathFun::IIInit(n, 2.0, none, any, any);
        }
    }
    EXPECT_TRUE(none.empty());
}

}  // namespace
