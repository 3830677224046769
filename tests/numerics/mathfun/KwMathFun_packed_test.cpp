// Products with a packed triangle, against loops over the full matrix; sizes that do not fit give the missing value.
#include "numerics/mathfun/KwMathFun.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <random>

#include "numerics/power/KwMV.h"

namespace {

using KwCommon_930::KwMV;
using KwMath_930::KwMathFun;
using Values = std::vector<double>;

Values RandomValues(int n, unsigned seed) {
    std::mt19937_64 engine(seed);
    std::uniform_real_distribution<double> number(-2.0, 2.0);
    Values values(static_cast<std::size_t>(n));
    for (double& value : values) {
        value = number(engine);
    }
    return values;
}

Values RandomTriangle(int n, unsigned seed) {
    return RandomValues(n * (n + 1) / 2, seed);
}

double Element(const Values& packed, int i, int j) {
    return packed[static_cast<std::size_t>(i >= j ? i * (i + 1) / 2 + j : j * (j + 1) / 2 + i)];
}

TEST(KwMathFunVSV, IsTheQuadraticForm) {
    for (int n = 0; n <= 20; ++n) {
        const Values s = RandomTriangle(n, 81);
        const Values v = RandomValues(n + n % 3, 82);
        double form = 0.0;
        double scale = 0.0;
        for (int i = 0; i < n; ++i) {
            for (int j = 0; j < n; ++j) {
                const double term = v[static_cast<std::size_t>(i)] * Element(s, i, j) * v[static_cast<std::size_t>(j)];
                form += term;
                scale += std::abs(term);
            }
        }
        // Another order of summation: n^2 roundings of terms that add up to scale.
        EXPECT_NEAR(KwMathFun::VSV(s, n, v), form, n * n * 1.2e-16 * scale) << n;
    }
}

TEST(KwMathFunVSV, CountsElementsOffTheDiagonalTwice) {
    EXPECT_EQ(KwMathFun::VSV({2.0, 3.0, 5.0}, 2, {7.0, -1.0}), 2 * 49.0 - 2 * 3 * 7.0 + 5.0);
}

TEST(KwMathFunVSV, ReadsNothingBehindItsOrder) {
    EXPECT_EQ(KwMathFun::VSV({2.0, 3.0, 5.0, 99.0, 99.0}, 2, {7.0, -1.0, 99.0}), 2 * 49.0 - 2 * 3 * 7.0 + 5.0);
}

TEST(KwMathFunVSV, OrderZeroGivesZero) {
    EXPECT_EQ(KwMathFun::VSV({}, 0, {}), 0.0);
    EXPECT_EQ(KwMathFun::VSV({1.0}, 0, {1.0}), 0.0);
}

TEST(KwMathFunVSV, NegativeOrderAndShortOperandsAreMissing) {
    EXPECT_TRUE(KwMV::IsMissing(KwMathFun::VSV({1.0}, -1, {1.0})));
    EXPECT_TRUE(KwMV::IsMissing(KwMathFun::VSV({1.0}, INT_MIN, {1.0})));
    EXPECT_TRUE(KwMV::IsMissing(KwMathFun::VSV({1.0, 2.0, 3.0}, 2, {1.0})));
    EXPECT_TRUE(KwMV::IsMissing(KwMathFun::VSV({1.0, 2.0}, 2, {1.0, 2.0})));
    EXPECT_TRUE(KwMV::IsMissing(KwMathFun::VSV({1.0}, INT_MAX, {1.0})));
}

TEST(KwMathFunRVD, IsARowOfTheFullMatrixTimesTheVector) {
    for (int n = 1; n <= 9; ++n) {
        for (const int inc : {0, 1, 2, 3}) {
            const Values s = RandomTriangle(n, 83);
            const Values v = RandomValues((n - 1) * inc + 1, 84);
            for (int row = 0; row < n; ++row) {
                double sum = 0.0;
                for (int k = 0; k < n; ++k) {
                    sum += Element(s, row, k) * v[static_cast<std::size_t>(k * inc)];
                }
                EXPECT_EQ(KwMathFun::RVD(s, n, row, v, inc), sum) << n << " " << row << " " << inc;
            }
        }
    }
}

TEST(KwMathFunRVD, BadOrdersAndRowsAreMissing) {
    const Values s = RandomTriangle(3, 85);
    const Values v = RandomValues(3, 86);
    for (const int n : {0, -1, INT_MIN}) {
        EXPECT_TRUE(KwMV::IsMissing(KwMathFun::RVD(s, n, 0, v, 1)));
    }
    for (const int row : {-1, 3, INT_MIN, INT_MAX}) {
        EXPECT_TRUE(KwMV::IsMissing(KwMathFun::RVD(s, 3, row, v, 1)));
    }
}

TEST(KwMathFunRVD, OperandsThatDoNotHoldTheWalkAreMissing) {
    const Values s = RandomTriangle(3, 85);
    const Values v = RandomValues(3, 86);
    EXPECT_TRUE(KwMV::IsMissing(KwMathFun::RVD(s, 4, 0, v, 1)));
    EXPECT_TRUE(KwMV::IsMissing(KwMathFun::RVD(s, 3, 0, v, 2)));
    EXPECT_TRUE(KwMV::IsMissing(KwMathFun::RVD(s, 3, 0, v, -1)));
    EXPECT_TRUE(KwMV::IsMissing(KwMathFun::RVD(s, 3, 0, {}, 0)));
    EXPECT_TRUE(KwMV::IsMissing(KwMathFun::RVD(s, INT_MAX, 0, v, INT_MAX)));
    EXPECT_EQ(KwMathFun::RVD({2.0}, 1, 0, {3.5}, -4), 7.0);
}

TEST(KwMathFunLTGltl, ReplacesAFactorByItsTransposeTimesItself) {
    for (int n = 1; n <= 20; ++n) {
        const Values factor = RandomTriangle(n, 87);
        Values product = factor;
        product.push_back(99.0);
        KwMathFun::LTGltl(n, product);
        for (int i = 0; i < n; ++i) {
            for (int j = 0; j <= i; ++j) {
                double sum = 0.0;
                for (int k = i; k < n; ++k) {
                    sum += Element(factor, k, i) * Element(factor, k, j);
                }
                EXPECT_EQ(Element(product, i, j), sum) << n << ": " << i << ", " << j;
            }
        }
        EXPECT_EQ(product.back(), 99.0);
    }
}

TEST(KwMathFunLTGltl, LeavesAFactorThatIsTooShort) {
    Values factor = {2.0, 3.0};
    for (const int n : {2, INT_MAX, 0, -1, INT_MIN}) {
        KwMathFun::LTGltl(n, factor);
        EXPECT_EQ(factor, (Values{2.0, 3.0})) << n;
    }
}

}  // namespace
