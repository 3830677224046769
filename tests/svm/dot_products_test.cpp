// The sums that kernels are made of, against plain loops, bit for bit.
#include "svm/dot_products.h"

#include <bit>
#include <cmath>
#include <limits>
#include <random>

#include <gtest/gtest.h>

#include "tests/svm/svm_samples.h"

namespace KwSVM_700 {
namespace {

using svm_samples::Indices;
using svm_samples::kInfinity;
using svm_samples::kNaN;
using svm_samples::Values;

constexpr double kDenormal = 4.9406564584124654e-324;

std::uint64_t Bits(double x) {
    return std::bit_cast<std::uint64_t>(x);
}

// Values of very different size, so that another order of summation gives other bits.
Values RandomValues(std::mt19937_64& random, std::size_t n) {
    std::uniform_real_distribution<double> mantissa(-1.0, 1.0);
    std::uniform_int_distribution<int> exponent(-30, 30);
    Values values(n);
    for (double& value : values)
        value = std::ldexp(mantissa(random), exponent(random));
    return values;
}

Indices RandomIndices(std::mt19937_64& random, std::size_t n) {
    std::uniform_int_distribution<std::int32_t> step(1, 3);
    Indices indices(n);
    std::int32_t index = -1;
    for (std::int32_t& place : indices)
        place = index += step(random);
    return indices;
}

double NaiveDot(const Values& x, const Values& y) {
    double sum = 0.0;
    for (std::size_t i = 0; i < x.size(); ++i)
        sum += x[i] * y[i];
    return sum;
}

double NaiveDistance(const Values& x, const Values& y) {
    double sum = 0.0;
    for (std::size_t i = 0; i < x.size(); ++i)
        sum += (x[i] - y[i]) * (x[i] - y[i]);
    return sum;
}

// Both vectors written out over all indices; adding 0.0 * 0.0 changes no bit of a finite sum that is not -0.0.
Values Spread(const Indices& indices, const Values& values, std::size_t n) {
    Values dense(n);
    for (std::size_t k = 0; k < indices.size(); ++k)
        dense[static_cast<std::size_t>(indices[k])] = values[k];
    return dense;
}

TEST(DenseSums, AgreeWithPlainLoopsBitForBitForEveryTail) {
    std::mt19937_64 random(71);
    for (int round = 0; round < 200; ++round) {
        for (std::size_t n = 0; n <= 9; ++n) {
            const Values x = RandomValues(random, n);
            const Values y = RandomValues(random, n);
            ASSERT_EQ(Bits(DenseDotProduct(x, y)), Bits(NaiveDot(x, y))) << n;
            ASSERT_EQ(Bits(DenseSquaredDistance(x, y)), Bits(NaiveDistance(x, y))) << n;
        }
    }
}

TEST(DenseSums, GoFromLeftToRight) {
    const Values ones(5, 1.0);
    EXPECT_EQ(DenseDotProduct({1e16, 1.0, 1.0, -1e16, 3.5}, ones), 3.5);
    EXPECT_EQ(DenseDotProduct({1e16, -1e16, 1.0, 1.0, 3.5}, ones), 5.5);
    const Values zeros(5, 0.0);
    EXPECT_EQ(DenseSquaredDistance({1e8, 1.0, 1.0, 1.0, 1.0}, zeros), 1e16);
    EXPECT_EQ(DenseSquaredDistance({1.0, 1.0, 1.0, 1.0, 1e8}, zeros), 1e16 + 4.0);
}

TEST(DenseSums, ReadNoMoreThanTheFirstVectorHas) {
    for (std::size_t n = 0; n <= 9; ++n) {
        const Values x(n, 1.5);
        Values y(n, 2.5);
        y.insert(y.end(), 5, kNaN);
        EXPECT_EQ(DenseDotProduct(x, y), 3.75 * static_cast<double>(n));
        EXPECT_EQ(DenseSquaredDistance(x, y), static_cast<double>(n));
    }
}

TEST(DenseSums, OfEmptyVectorsArePositiveZero) {
    EXPECT_EQ(Bits(DenseDotProduct({}, {})), Bits(0.0));
    EXPECT_EQ(Bits(DenseDotProduct({}, {3.5})), Bits(0.0));
    EXPECT_EQ(Bits(DenseSquaredDistance({}, {3.5})), Bits(0.0));
}

TEST(DenseSums, CarryExtremeValues) {
    EXPECT_TRUE(std::isnan(DenseDotProduct({1.5, kNaN}, {2.5, 0.0})));
    EXPECT_TRUE(std::isnan(DenseDotProduct({kInfinity}, {0.0})));
    EXPECT_TRUE(std::isnan(DenseSquaredDistance({kInfinity}, {kInfinity})));
    EXPECT_EQ(DenseDotProduct({kInfinity, 2.5}, {-1.5, 2.5}), -kInfinity);
    EXPECT_EQ(DenseSquaredDistance({1e200}, {-1e200}), kInfinity);
    EXPECT_EQ(DenseDotProduct({kDenormal}, {1.0}), kDenormal);
    EXPECT_EQ(DenseDotProduct({kDenormal, kDenormal}, {2.0, 1.0}), 3 * kDenormal);
    EXPECT_EQ(Bits(DenseDotProduct({-0.0}, {3.5})), Bits(0.0)) << "the sum starts at 0.0, not at the first product";
}

TEST(SparseSums, AgreeWithDenseLoopsBitForBit) {
    std::mt19937_64 random(72);
    for (int round = 0; round < 300; ++round) {
        for (std::size_t n = 0; n <= 9; ++n) {
            const Indices xIndices = RandomIndices(random, n);
            const Indices yIndices = RandomIndices(random, (n + static_cast<std::size_t>(round)) % 10);
            const Values x = RandomValues(random, xIndices.size());
            const Values y = RandomValues(random, yIndices.size());
            const Values xDense = Spread(xIndices, x, 40);
            const Values yDense = Spread(yIndices, y, 40);
            ASSERT_EQ(Bits(SparseDotProduct(xIndices, x, yIndices, y)), Bits(NaiveDot(xDense, yDense)));
            ASSERT_EQ(Bits(SparseSquaredDistance(xIndices, x, yIndices, y)), Bits(NaiveDistance(xDense, yDense)));
        }
    }
}

TEST(SparseSums, TakeAnAbsentIndexForZero) {
    const Indices xIndices = {0, 3, 8};
    const Values x = {2.5, -1.25, 7.5};
    const Indices yIndices = {1, 3, 9};
    const Values y = {11.5, 4.5, 0.5};
    EXPECT_EQ(SparseDotProduct(xIndices, x, yIndices, y), -5.625);
    EXPECT_EQ(SparseDotProduct(yIndices, y, xIndices, x), -5.625);
    const double distance = 6.25 + 132.25 + 33.0625 + 56.25 + 0.25;
    EXPECT_EQ(SparseSquaredDistance(xIndices, x, yIndices, y), distance);
    EXPECT_EQ(SparseSquaredDistance(yIndices, y, xIndices, x), distance);
}

TEST(SparseSums, OfDisjointIndicesAreZeroAndBothSumsOfSquares) {
    const Indices xIndices = {0, 2, 4};
    const Indices yIndices = {1, 3, 5, 7};
    EXPECT_EQ(Bits(SparseDotProduct(xIndices, {1.5, 2.5, 3.5}, yIndices, {4.5, 5.5, 6.5, 7.5})), Bits(0.0));
    EXPECT_EQ(SparseSquaredDistance(xIndices, {1.5, 2.5, 3.5}, yIndices, {4.5, 5.5, 6.5, 7.5}),
              2.25 + 20.25 + 6.25 + 30.25 + 12.25 + 42.25 + 56.25);
}

TEST(SparseSums, OfAnEmptyVectorAreZeroAndTheOthersSquares) {
    EXPECT_EQ(Bits(SparseDotProduct({}, {}, {0, 1}, {2.5, kNaN})), Bits(0.0));
    EXPECT_EQ(Bits(SparseDotProduct({0, 1}, {2.5, kNaN}, {}, {})), Bits(0.0));
    EXPECT_EQ(SparseSquaredDistance({}, {}, {3, 6}, {2.5, -3.5}), 18.5);
    EXPECT_EQ(SparseSquaredDistance({3, 6}, {2.5, -3.5}, {}, {}), 18.5);
    EXPECT_EQ(Bits(SparseSquaredDistance({}, {}, {}, {})), Bits(0.0));
}

TEST(SparseSums, AddTheRestOfEitherVectorInOrder) {
    EXPECT_EQ(SparseSquaredDistance({0}, {1e8}, {0, 1, 2, 3}, {0.0, 1.0, 1.0, 1.0}), 1e16);
    EXPECT_EQ(SparseSquaredDistance({0, 1, 2, 3}, {1.0, 1.0, 1.0, 1e8}, {0}, {0.0}), 3.0 + 1e16);
}

TEST(SparseSums, CountAsManyEntriesAsThereAreIndices) {
    EXPECT_EQ(SparseDotProduct({0}, {2.5, kNaN}, {0, 1}, {3.5, 4.5, kNaN}), 8.75);
    EXPECT_EQ(SparseSquaredDistance({0}, {2.5, kNaN}, {0, 1}, {3.5, 4.5, kNaN}), 21.25);
}

TEST(SparseSums, MatchRepeatedIndicesOneByOne) {
    EXPECT_EQ(SparseDotProduct({2, 2, 2}, {1.5, 2.5, 3.5}, {2, 2}, {10.0, 100.0}), 265.0);
    EXPECT_EQ(SparseDotProduct({2, 2, 2}, {1.5, 2.5, 3.5}, {2}, {10.0}), 15.0);
    EXPECT_EQ(SparseSquaredDistance({2, 2, 2}, {1.5, 2.5, 3.5}, {2, 2}, {1.0, 1.0}), 0.25 + 2.25 + 12.25);
}

// x 5 against y 2: y advances past its 2; then 5 against 5 match; the 1 of x is met by nothing that is left.
TEST(SparseSums, MergeDescendingIndicesAsTheyStand) {
    EXPECT_EQ(SparseDotProduct({5, 1}, {1.5, 2.5}, {2, 5, 1}, {10.0, 100.0, 1000.0}), 150.0 + 2500.0);
    EXPECT_EQ(SparseDotProduct({5, 1}, {1.5, 2.5}, {1, 5}, {10.0, 100.0}), 150.0);
    EXPECT_EQ(SparseDotProduct({1, 5}, {1.5, 2.5}, {5, 1}, {10.0, 100.0}), 25.0);
    EXPECT_EQ(SparseSquaredDistance({5, 1}, {1.5, 2.5}, {1, 5}, {10.0, 100.0}), 100.0 + 98.5 * 98.5 + 6.25);
}

TEST(SparseSums, MergeNegativeAndExtremeIndicesAsNumbers) {
    constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();
    EXPECT_EQ(SparseDotProduct({kLowest, -1, kHighest}, {1.5, 2.5, 3.5}, {-1, kHighest}, {10.0, 100.0}), 375.0);
    EXPECT_EQ(SparseSquaredDistance({kLowest, kHighest}, {1.5, 3.5}, {-1, kHighest}, {10.0, 3.0}), 102.5);
}

TEST(SparseSums, CarryExtremeValues) {
    EXPECT_TRUE(std::isnan(SparseDotProduct({0}, {kNaN}, {0}, {0.0})));
    EXPECT_EQ(SparseDotProduct({0}, {kNaN}, {1}, {1.5}), 0.0) << "an unmatched value is never touched";
    EXPECT_TRUE(std::isnan(SparseSquaredDistance({0}, {kNaN}, {1}, {1.5})));
    EXPECT_EQ(SparseSquaredDistance({0}, {kInfinity}, {1}, {1.5}), kInfinity);
    EXPECT_EQ(SparseDotProduct({4}, {kDenormal}, {4}, {1.0}), kDenormal);
    EXPECT_EQ(Bits(SparseDotProduct({4}, {-0.0}, {4}, {1.5})), Bits(0.0));
}

}  // namespace
}  // namespace KwSVM_700
