// Dot products of single rows, against loops over the full square.
#include <gtest/gtest.h>

#include <vector>

#include "tests/numerics/matrix/matrix_samples.h"

namespace {

using KwMath_930::KwSymMatrix;
using matrix_samples::Dot;
using matrix_samples::ExpectNear;
using matrix_samples::Full;
using matrix_samples::RandomMatrix;
using matrix_samples::RandomVector;
using matrix_samples::Square;
using matrix_samples::SymOfEveryKind;
using matrix_samples::Vector;

TEST(KwSymMatrixRowProducts, OfTwoRowsAgreeWithTheLoop) {
    for (const int n : symmetric_samples::kOrders) {
        const KwSymMatrix s = RandomMatrix(n, 1);
        const Square full = Full(s);
        for (const auto& m : SymOfEveryKind(n, 2)) {
            const Square other = Full(*m);
            KwSymMatrix dense(n, true);
            ASSERT_TRUE(dense.ReplaceFirstRows(*m));
            Vector longer(dense.AsVectorConst());
            longer.push_back(7.5);
            for (int i = 0; i < n; ++i) {
                for (int j = 0; j < n; ++j) {
                    const Vector& row = full[static_cast<std::size_t>(i)];
                    const double expected = Dot(row, other[static_cast<std::size_t>(j)]);
                    const double own = Dot(row, full[static_cast<std::size_t>(j)]);
                    EXPECT_EQ(s.ComputeRowDotProductS(i, *m, j), expected);
                    EXPECT_EQ(s.ComputeDotRowRow(i, *m, j), expected);
                    EXPECT_EQ(s.ComputeRowDotProductS(i, longer, j), expected);
                    EXPECT_EQ(s.ComputeDotProduct2Rows(i, j), own);
                    double p = 0.0, q = 0.0;
                    EXPECT_TRUE(s.ComputeRowDotProductS(i, *m, s, j, p, q));
                    EXPECT_EQ(p, expected);
                    EXPECT_EQ(q, own);
                    EXPECT_TRUE(s.ComputeRowDotProductS(i, s.AsVectorConst(), longer, j, p, q));
                    EXPECT_EQ(p, own);
                    EXPECT_EQ(q, expected);
                }
            }
        }
    }
}

TEST(KwSymMatrixRowProducts, WithStridedVectors) {
    for (const int n : symmetric_samples::kOrders) {
        const KwSymMatrix s = RandomMatrix(n, 1);
        const Vector v = RandomVector(3 * n + 1, 2);
        for (const int inc : {0, 1, 3}) {
            for (int i = 0; i < n; ++i) {
                double expected = 0.0;
                double backwards = 0.0;
                for (int k = 0; k < n; ++k) {
                    expected += s.GetElem(i, k) * v[static_cast<std::size_t>(k * inc)];
                    backwards += s.GetElem(i, k) * v[static_cast<std::size_t>(3 * n - k * inc)];
                }
                EXPECT_EQ(s.ComputeRVD(i, v, inc), expected);
                EXPECT_EQ(s.ComputeRVD(i, v.data(), inc), expected);
                EXPECT_EQ(s.ComputeRVD(i, v.data() + 3 * n, -inc), backwards);
                if (inc == 1) {
                    EXPECT_EQ(s.DotRowVec(i, v), expected);
                    EXPECT_EQ(s.DotColVec(i, v), expected);
                }
            }
        }
    }
}

TEST(KwSymMatrixRowProducts, OfAPartOfARow) {
    const KwSymMatrix s = RandomMatrix(6, 1);
    const Vector v = RandomVector(6, 2);
    for (int first = 0; first <= 6; ++first) {
        for (int count = 0; first + count <= 6; ++count) {
            double expected = 0.0;
            for (int k = 0; k < count; ++k) {
                expected += s.GetElem(2, first + k) * v[static_cast<std::size_t>(k)];
            }
            EXPECT_EQ(s.DotRowPartVec(2, first, count, v), expected);
        }
    }
    EXPECT_EQ(s.DotRowPartVec(2, 3, 4, v), 0.0);
    EXPECT_EQ(s.DotRowPartVec(2, -1, 2, v), 0.0);
    EXPECT_EQ(s.DotRowPartVec(2, 1, -2, v), 0.0);
    EXPECT_EQ(s.DotRowPartVec(6, 1, 2, v), 0.0);
    EXPECT_EQ(s.DotRowPartVec(2, 1, 3, {1, 2}), 0.0);
}

TEST(KwSymMatrixRowProducts, BadIndicesAndSizesGiveZeroAndLeaveTheOutputs) {
    const KwSymMatrix s = RandomMatrix(3, 1);
    const KwSymMatrix other = RandomMatrix(4, 2);
    const Vector v = RandomVector(6, 3);
    const Vector five(5, 2.5);
    double p = 7.5, q = 8.5;
    for (const int bad : {-1, 3}) {
        EXPECT_EQ(s.ComputeDotProduct2Rows(bad, 0), 0.0);
        EXPECT_EQ(s.ComputeDotProduct2Rows(0, bad), 0.0);
        EXPECT_EQ(s.ComputeRowDotProductS(bad, v, 0), 0.0);
        EXPECT_EQ(s.ComputeRowDotProductS(0, v, bad), 0.0);
        EXPECT_EQ(s.ComputeRowDotProductS(bad, s, 0), 0.0);
        EXPECT_EQ(s.ComputeRowDotProductS(0, s, bad), 0.0);
        EXPECT_EQ(s.ComputeRVD(bad, v, 1), 0.0);
        EXPECT_EQ(s.ComputeRVD(bad, v.data(), 1), 0.0);
        EXPECT_EQ(s.DotRowVec(bad, v), 0.0);
        EXPECT_FALSE(s.ComputeRowDotProductS(bad, v, v, 0, p, q));
        EXPECT_FALSE(s.ComputeRowDotProductS(0, s, s, bad, p, q));
    }
    EXPECT_EQ(s.ComputeRowDotProductS(0, five, 1), 0.0);
    EXPECT_EQ(s.ComputeRowDotProductS(0, other, 1), 0.0);
    EXPECT_EQ(s.ComputeRVD(0, five, 3), 0.0);
    EXPECT_EQ(s.ComputeRVD(0, five, -1), 0.0);
    EXPECT_EQ(s.DotRowVec(0, {1, 2}), 0.0);
    EXPECT_FALSE(s.ComputeRowDotProductS(0, v, five, 1, p, q));
    EXPECT_FALSE(s.ComputeRowDotProductS(0, s, other, 1, p, q));
    EXPECT_EQ(p, 7.5);
    EXPECT_EQ(q, 8.5);
}

}  // namespace
