// Cross-product accumulation and settings to products of vectors, bit for bit against the full loop.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "numerics/containers/KwBitSet.h"
#include "numerics/matrix/KwSymMatrix.h"
#include "tests/numerics/matrix/symmetric_samples.h"
#include "tests/numerics/special_values.h"

namespace {

using KwMath_930::KwBitSet;
using KwMath_930::KwSymMatrix;
using symmetric_samples::FromPacked;
using symmetric_samples::kOrders;
using symmetric_samples::RandomMatrix;
using symmetric_samples::RandomVector;
using Vector = std::vector<double>;

using numerics_samples::kInfinity;
using numerics_samples::kNaN;

// packed(i, j) := value(i, j, packed(i, j)) over the lower triangle.
template <class Value>
Vector Mapped(Vector packed, std::size_t order, Value value) {
    for (std::size_t i = 0; i < order; ++i) {
        for (std::size_t j = 0; j <= i; ++j) {
            double& element = packed[i * (i + 1) / 2 + j];
            element = value(i, j, element);
        }
    }
    return packed;
}

TEST(KwSymMatrixUpdateXX, AgreesWithTheLoopBitForBit) {
    for (const int order : kOrders) {
        KwSymMatrix matrix = RandomMatrix(order, 1);
        const Vector x = RandomVector(order, 2);
        const Vector expected =
            Mapped(matrix.AsVectorConst(), x.size(),
                   [&](std::size_t i, std::size_t j, double element) { return element + x[i] * 0.375 * x[j]; });
        EXPECT_TRUE(matrix.UpdateXX(x, 0.375));
        EXPECT_EQ(matrix.AsVectorConst(), expected);
    }
}

TEST(KwSymMatrixUpdateXX, ZeroEntryAddsOnlyToTheOtherElement) {
    KwSymMatrix matrix = FromPacked(2, {1.5, 2.5, 3.5});
    EXPECT_TRUE(matrix.UpdateXX({0, 2}, 0.5));
    EXPECT_EQ(matrix.AsVectorConst(), (Vector{1.5, 2.5, 5.5}));
}

TEST(KwSymMatrixUpdateXX, RefusesAWeightThatIsNotPositiveAndAnotherSize) {
    KwSymMatrix matrix = FromPacked(2, {1.5, 2.5, 3.5});
    for (const double weight : {0.0, -0.0, -1.0, kNaN, -kInfinity}) {
        EXPECT_FALSE(matrix.UpdateXX({1, 2}, weight)) << weight;
    }
    EXPECT_FALSE(matrix.UpdateXX({1}, 0.5));
    EXPECT_FALSE(matrix.UpdateXX({1, 2, 3}, 0.5));
    EXPECT_FALSE(matrix.UpdateXX({}, 0.5));
    EXPECT_EQ(matrix.AsVectorConst(), (Vector{1.5, 2.5, 3.5}));
}

TEST(KwSymMatrixUpdateXX, SkippedRowsStayUntouchedByNaNAndInfinity) {
    KwSymMatrix matrix = FromPacked(3, {1.5, 2.5, 3.5, 4.5, 5.5, 6.5});
    EXPECT_TRUE(matrix.UpdateXX({kInfinity, 0, 2}, 0.5));
    // Row 1 is skipped, so its infinity times 0 is not formed; row 2 takes 1 x infinity, 1 x 0 and 1 x 2.
    EXPECT_EQ(matrix.AsVectorConst(), (Vector{kInfinity, 2.5, 3.5, kInfinity, 5.5, 8.5}));
    EXPECT_TRUE(matrix.UpdateXX({0, kNaN, 0}, 1.0));
    EXPECT_TRUE(std::isnan(matrix.GetElem(1, 0)));
    EXPECT_TRUE(std::isnan(matrix.GetElem(1, 1)));
    EXPECT_EQ(matrix.GetElem(2, 1), 5.5);
}

TEST(KwSymMatrixUpdateXX, EmptyMatrixTakesTheEmptyVectorAndAnInvalidOneNothing) {
    KwSymMatrix empty;
    EXPECT_TRUE(empty.UpdateXX({}, 1.0));
    EXPECT_FALSE(empty.UpdateXX({}, 0.0));
    KwSymMatrix invalid(std::numeric_limits<int>::max(), true);
    EXPECT_FALSE(invalid.UpdateXX({}, 1.0));
}

TEST(KwSymMatrixIncrementByVV, AgreesWithTheLoopBitForBitForAnyWeight) {
    for (const int order : kOrders) {
        for (const double weight : {0.375, -1.75, 0.0}) {
            KwSymMatrix matrix = RandomMatrix(order, 1);
            const Vector v = RandomVector(order, 2);
            const Vector expected =
                Mapped(matrix.AsVectorConst(), v.size(),
                       [&](std::size_t i, std::size_t j, double element) { return element + v[i] * weight * v[j]; });
            matrix.IncrementByVV(v.data(), weight);
            EXPECT_EQ(matrix.AsVectorConst(), expected);
        }
    }
}

TEST(KwSymMatrixIncrementByVV, DoesNotSkipZeros) {
    KwSymMatrix matrix(2, true);
    const Vector v = {kInfinity, 0};
    matrix.IncrementByVV(v.data(), 1.0);
    EXPECT_TRUE(std::isnan(matrix.GetElem(1, 0)));
}

TEST(KwSymMatrixIncrementByVV, EmptyMatrixReadsNothing) {
    KwSymMatrix matrix;
    matrix.IncrementByVV(nullptr, 1.0);
    EXPECT_EQ(matrix.GetNRows(), 0);
}

TEST(KwSymMatrixSetToVV, ReplacesOrderBlocksAndElements) {
    for (const int order : kOrders) {
        KwSymMatrix matrix(2, 3, true);
        matrix.AddToDiagonal(2.385);
        const Vector v = RandomVector(order, 3);
        EXPECT_TRUE(matrix.SetToVV(v));
        EXPECT_EQ(matrix.GetNRows(), order);
        EXPECT_EQ(matrix.GetNBlocks(), 1);
        EXPECT_EQ(matrix.GetBlockSize(), order);
        const std::size_t stored = v.size() * (v.size() + 1) / 2;
        EXPECT_EQ(matrix.AsVectorConst(),
                  Mapped(Vector(stored), v.size(), [&](std::size_t i, std::size_t j, double) { return v[i] * v[j]; }));
    }
}

TEST(KwSymMatrixSetToVV, TakesItsOwnStorageAsTheVector) {
    KwSymMatrix matrix = FromPacked(2, {1.5, 2, 3});
    EXPECT_TRUE(matrix.SetToVV(matrix.AsVectorConst()));
    EXPECT_EQ(matrix.AsVectorConst(), (Vector{2.25, 3, 4, 4.5, 6, 9}));
}

TEST(KwSymMatrixSetToVW, IsTheSymmetricSumNotHalved) {
    KwSymMatrix matrix;
    EXPECT_TRUE(matrix.SetToVW({1, 2}, {3, 4}));
    EXPECT_EQ(matrix.GetElem(0, 0), 6);
    EXPECT_EQ(matrix.GetElem(1, 0), 10);
    EXPECT_EQ(matrix.GetElem(1, 1), 16);
    EXPECT_EQ(matrix.GetNBlocks(), 1);
    EXPECT_EQ(matrix.GetBlockSize(), 2);
}

TEST(KwSymMatrixSetToVW, AgreesWithTheLoopBitForBit) {
    for (const int order : kOrders) {
        KwSymMatrix matrix = RandomMatrix(5, 1);
        const Vector v = RandomVector(order, 3);
        const Vector w = RandomVector(order, 4);
        EXPECT_TRUE(matrix.SetToVW(v, w));
        const std::size_t stored = v.size() * (v.size() + 1) / 2;
        EXPECT_EQ(matrix.AsVectorConst(), Mapped(Vector(stored), v.size(), [&](std::size_t i, std::size_t j, double) {
                      return v[i] * w[j] + w[i] * v[j];
                  }));
    }
}

TEST(KwSymMatrixSetToVW, RefusesDifferentSizesAndChangesNothing) {
    KwSymMatrix matrix(2, 1, true);
    matrix.AddToDiagonal(2.385);
    EXPECT_FALSE(matrix.SetToVW({1, 2, 3}, {3, 4}));
    EXPECT_FALSE(matrix.SetToVW(matrix.AsVectorConst(), {3, 4}));
    EXPECT_EQ(matrix.AsVectorConst(), (Vector{2.385, 0, 2.385}));
    EXPECT_EQ(matrix.GetNBlocks(), 2);
}

TEST(KwSymMatrixSetToVW, TakesItsOwnStorageAsEitherVector) {
    const Vector w = {3, 4, 5};
    KwSymMatrix left = FromPacked(2, {1.5, 2, 3});
    KwSymMatrix right = left;
    KwSymMatrix both = left;
    EXPECT_TRUE(left.SetToVW(left.AsVectorConst(), w));
    EXPECT_TRUE(right.SetToVW(w, right.AsVectorConst()));
    EXPECT_EQ(left.AsVectorConst(), (Vector{9, 12, 16, 16.5, 22, 30}));
    EXPECT_EQ(right.AsVectorConst(), left.AsVectorConst());
    EXPECT_TRUE(both.SetToVW(both.AsVectorConst(), both.AsVectorConst()));
    EXPECT_EQ(both.AsVectorConst(), (Vector{4.5, 6, 8, 9, 12, 18}));
}

TEST(KwSymMatrixUpdateZZ, IsUpdateXX) {
    KwSymMatrix matrix = RandomMatrix(5, 1), expected(matrix);
    const Vector z = RandomVector(5, 2);
    EXPECT_TRUE(matrix.UpdateZZ(z, 0.375));
    expected.UpdateXX(z, 0.375);
    EXPECT_EQ(matrix.AsVectorConst(), expected.AsVectorConst());
    EXPECT_FALSE(matrix.UpdateZZ(z, 0.0));
    EXPECT_FALSE(matrix.UpdateZZ(RandomVector(4, 2), 1.0));
}

TEST(KwSymMatrixUpdateXXPosNegW, TakesAnyWeightButZeroAndNaN) {
    KwSymMatrix matrix = RandomMatrix(5, 1);
    const Vector x = RandomVector(5, 2);
    const Vector expected = Mapped(matrix.AsVectorConst(), 5, [&](std::size_t i, std::size_t j, double element) {
        return element + x[i] * -0.375 * x[j];
    });
    EXPECT_TRUE(matrix.UpdateXXPosNegW(x, -0.375));
    EXPECT_EQ(matrix.AsVectorConst(), expected);
    EXPECT_FALSE(matrix.UpdateXXPosNegW(x, 0.0));
    EXPECT_FALSE(matrix.UpdateXXPosNegW(x, kNaN));
    EXPECT_FALSE(matrix.UpdateXXPosNegW(RandomVector(4, 2), -1.0));
    EXPECT_EQ(matrix.AsVectorConst(), expected);
}

TEST(KwSymMatrixUpdateXXSparse, EqualsTheDenseUpdate) {
    const KwSymMatrix before = RandomMatrix(6, 1);
    KwSymMatrix matrix(before), expected(before);
    EXPECT_TRUE(matrix.UpdateXXSparse({4, 1, 2}, {1.5, -2.25, 0.3}, 0.375));
    EXPECT_TRUE(expected.UpdateXX({0, -2.25, 0.3, 0, 1.5, 0}, 0.375));
    EXPECT_EQ(matrix.AsVectorConst(), expected.AsVectorConst());
    matrix = before;
    EXPECT_TRUE(matrix.UpdateXXSparse({4, 1, 4}, {1, -2.25, 0.5}, 0.5));
    expected = before;
    EXPECT_TRUE(expected.UpdateXX({0, -2.25, 0, 0, 1.5, 0}, 0.5));
    for (std::size_t k = 0; k < 21; ++k) {
        EXPECT_NEAR(matrix.AsVectorConst()[k], expected.AsVectorConst()[k], 1e-14);
    }
    EXPECT_FALSE(matrix.UpdateXXSparse({6}, {1.5}, 0.5));
    EXPECT_FALSE(matrix.UpdateXXSparse({-1}, {1.5}, 0.5));
    EXPECT_FALSE(matrix.UpdateXXSparse({1, 2}, {1.5}, 0.5));
    EXPECT_FALSE(matrix.UpdateXXSparse({1}, {1.5}, -0.5));
    EXPECT_FALSE(matrix.UpdateXXSparse({1}, {1.5}, kNaN));
}

TEST(KwSymMatrixUpdateXXCornerSparse, CountsItsIndicesFromTheCorner) {
    const KwSymMatrix before = RandomMatrix(6, 1);
    KwSymMatrix matrix(before), expected(before);
    EXPECT_TRUE(matrix.UpdateXXCornerSparse({0, 2}, {1.5, -2.25}, 0.375, 3));
    EXPECT_TRUE(expected.UpdateXX({0, 0, 0, 1.5, 0, -2.25}, 0.375));
    EXPECT_EQ(matrix.AsVectorConst(), expected.AsVectorConst());
    EXPECT_FALSE(matrix.UpdateXXCornerSparse({3}, {1.5}, 0.375, 3));
    EXPECT_FALSE(matrix.UpdateXXCornerSparse({}, {}, 0.375, 7));
    EXPECT_FALSE(matrix.UpdateXXCornerSparse({}, {}, 0.375, -1));
    EXPECT_FALSE(matrix.UpdateXXCornerSparse({0}, {1.5}, 0.0, 3));
    EXPECT_EQ(matrix.AsVectorConst(), expected.AsVectorConst());
}

TEST(KwSymMatrixUpdateXXNonRedun, LeavesRedundantRowsAndColumns) {
    const KwSymMatrix before = RandomMatrix(5, 1);
    const Vector x = RandomVector(5, 2);
    KwBitSet redundant(5);
    redundant.Set(1, true);
    redundant.Set(3, true);
    KwSymMatrix matrix(before);
    EXPECT_TRUE(matrix.UpdateXXNonRedun(x, 0.375, redundant));
    EXPECT_EQ(matrix.AsVectorConst(),
              Mapped(before.AsVectorConst(), 5, [&](std::size_t i, std::size_t j, double element) {
                  const bool isKept = i != 1 && i != 3 && j != 1 && j != 3;
                  return isKept ? element + x[i] * 0.375 * x[j] : element;
              }));
    EXPECT_FALSE(matrix.UpdateXXNonRedun(x, 0.375, KwBitSet(4)));
    EXPECT_FALSE(matrix.UpdateXXNonRedun(x, 0.0, redundant));
    EXPECT_FALSE(matrix.UpdateXXNonRedun(RandomVector(4, 2), 0.375, redundant));
}

TEST(KwSymMatrixUpdateXXMat2, AddsBothProducts) {
    const KwSymMatrix before = RandomMatrix(5, 1);
    const Vector x = RandomVector(5, 2), y = RandomVector(5, 3);
    KwSymMatrix matrix(before);
    EXPECT_TRUE(matrix.UpdateXXMat2(x, y, 0.375));
    EXPECT_EQ(matrix.AsVectorConst(),
              Mapped(before.AsVectorConst(), 5, [&](std::size_t i, std::size_t j, double element) {
                  return element + (x[i] * 0.375 * y[j] + y[i] * 0.375 * x[j]);
              }));
    EXPECT_FALSE(matrix.UpdateXXMat2(x, y, 0.0));
    EXPECT_FALSE(matrix.UpdateXXMat2(x, RandomVector(4, 2), 1.0));
    EXPECT_FALSE(matrix.UpdateXXMat2(RandomVector(6, 2), y, 1.0));
}

}  // namespace
