// Norms, products and the QR decomposition of the rectangular matrix, against naive loops.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "tests/numerics/matrix/matrix_samples.h"

namespace {

using KwMath_930::KwRectMatrix;
using KwMath_930::KwSymBlockDiagMatrix;
using KwMath_930::KwSymMatrix;
using matrix_samples::Dot;
using matrix_samples::ExpectNear;
using matrix_samples::Full;
using matrix_samples::RandomBlocks;
using matrix_samples::RandomMatrix;
using matrix_samples::RandomRect;
using matrix_samples::RandomVector;
using matrix_samples::RectOfEveryKind;
using matrix_samples::Square;
using matrix_samples::SymOfEveryKind;
using matrix_samples::Times;
using matrix_samples::Transposed;
using matrix_samples::Vector;

const std::vector<int> kSizes = {0, 1, 2, 3, 5, 9, 70};

TEST(KwRectMatrixNorms, AreScaledAndRefuseBadIndices) {
    KwRectMatrix r(2, 3, true);
    r.AsVector() = {3, 1e200, 1.5, 4, -1e200, 2};
    EXPECT_DOUBLE_EQ(r.ColNorm(0), 5.0);
    EXPECT_DOUBLE_EQ(r.ColNorm(1), std::sqrt(2.0) * 1e200);
    EXPECT_DOUBLE_EQ(r.ColNorm(2), 2.5);
    EXPECT_DOUBLE_EQ(r.RowNorm(0), 1e200);
    constexpr double kLowest = -std::numeric_limits<double>::max();
    EXPECT_EQ(r.ColNorm(3), kLowest);
    EXPECT_EQ(r.ColNorm(-1), kLowest);
    EXPECT_EQ(r.RowNorm(2), kLowest);
    EXPECT_EQ(r.RowNorm(-1), kLowest);
    EXPECT_EQ(KwRectMatrix(0, 2, true).ColNorm(1), 0.0);
}

TEST(KwRectMatrixVectorProducts, AgreeWithTheLoopsBitForBit) {
    for (const int m : kSizes) {
        for (const int n : kSizes) {
            const KwRectMatrix r = RandomRect(m, n, 1);
            const Vector v = RandomVector(std::max(m, n) + 1, 2);
            Vector out(2);
            EXPECT_TRUE(r.ComputeRV(v, out));
            EXPECT_EQ(out, Times(Full(r), v));
            EXPECT_TRUE(r.ComputeVR(v, out));
            EXPECT_EQ(out, Times(Transposed(Full(r), n), v));
            const Vector expected = out;
            out = v;
            EXPECT_TRUE(r.ComputeVR(out, out));
            EXPECT_EQ(out, expected);
            out = v;
            EXPECT_TRUE(r.ComputeRV(out, out));
            EXPECT_EQ(out, Times(Full(r), v));
        }
    }
    Vector out = {7.5};
    EXPECT_FALSE(RandomRect(2, 3, 1).ComputeRV({1, 2}, out));
    EXPECT_FALSE(RandomRect(3, 2, 1).ComputeVR({1, 2}, out));
    EXPECT_EQ(out, Vector{7.5});
}

TEST(KwRectMatrixDotProducts, OfRowsAndColumnsOfEveryKind) {
    const KwRectMatrix r = RandomRect(4, 3, 1);
    const Square full = Full(r), trans = Transposed(full);
    for (std::size_t i = 0; i < 4; ++i) {
        const int row = static_cast<int>(i);
        for (std::size_t j = 0; j < 4; ++j) {
            EXPECT_EQ(r.DotProductRows(row, static_cast<int>(j)), Dot(full[i], full[j]));
        }
        for (const auto& b : RectOfEveryKind(3, 2, 2)) {
            EXPECT_EQ(r.DotProductRowCol(row, *b, 1), Dot(full[i], Transposed(Full(*b))[1]));
        }
        for (const auto& b : RectOfEveryKind(2, 3, 2)) {
            EXPECT_EQ(r.DotProductRowRow(row, *b, 1), Dot(full[i], Full(*b)[1]));
        }
        for (const auto& s : SymOfEveryKind(3, 2)) {
            EXPECT_EQ(r.DotProductRowCol(row, *s, 2), Dot(full[i], Full(*s)[2]));
        }
    }
    EXPECT_EQ(r.DotProductCol(2, 0), Dot(trans[2], trans[0]));
    for (const int bad : {-1, 4}) {
        EXPECT_EQ(r.DotProductRows(bad, 0), 0.0);
        EXPECT_EQ(r.DotProductRows(0, bad), 0.0);
        EXPECT_EQ(r.DotProductCol(bad, 0), 0.0);
        EXPECT_EQ(r.DotProductCol(0, bad), 0.0);
        EXPECT_EQ(r.DotProductRowCol(bad, RandomRect(3, 2, 1), 0), 0.0);
        EXPECT_EQ(r.DotProductRowCol(0, RandomRect(3, 2, 1), bad), 0.0);
        EXPECT_EQ(r.DotProductRowRow(bad, r, 0), 0.0);
        EXPECT_EQ(r.DotProductRowRow(0, r, bad), 0.0);
        EXPECT_EQ(r.DotProductRowCol(0, RandomMatrix(3, 1), bad), 0.0);
        EXPECT_EQ(r.DotProductRowCol(bad, RandomMatrix(3, 1), 0), 0.0);
    }
    EXPECT_EQ(r.DotProductRowCol(0, RandomRect(4, 2, 1), 0), 0.0);
    EXPECT_EQ(r.DotProductRowRow(0, RandomRect(2, 4, 1), 0), 0.0);
    EXPECT_EQ(r.DotProductRowCol(0, RandomMatrix(4, 1), 0), 0.0);
}

TEST(KwRectMatrixProducts, WithRectangularMatricesOfEveryKind) {
    for (const int m : kSizes) {
        for (const int k : {0, 1, 4, 9, 70}) {
            const KwRectMatrix r = RandomRect(m, k, 1);
            for (const auto& b : RectOfEveryKind(k, 3, 2)) {
                const Square expected = Times(Full(r), Full(*b), 3);
                for (const auto& target : RectOfEveryKind(2, 2, 9)) {
                    EXPECT_TRUE(r.ComputeMatrixProduct(*b, *target));
                    ExpectNear(Full(*target), expected);
                }
            }
            for (const auto& b : RectOfEveryKind(5, k, 2)) {
                KwRectMatrix target;
                EXPECT_TRUE(r.ComputeProductMatrixTrans(*b, target));
                ExpectNear(Full(target), Times(Full(r), Transposed(Full(*b), k), 5));
            }
        }
    }
}

TEST(KwRectMatrixProducts, WithSymmetricMatricesOfEveryKind) {
    for (const int m : {0, 1, 4}) {
        for (const int n : {0, 1, 3, 8}) {
            const KwRectMatrix r = RandomRect(m, n, 1);
            const KwRectMatrix tall = RandomRect(n, m, 3);
            for (const auto& s : SymOfEveryKind(n, 2)) {
                KwRectMatrix target(2, 2, true);
                EXPECT_TRUE(r.ComputeMatrixProduct(*s, target));
                ExpectNear(Full(target), Times(Full(r), Full(*s), n));
                for (const auto& r2 : RectOfEveryKind(n, 3, 4)) {
                    EXPECT_TRUE(tall.ComputeR1TransSR2(*s, *r2, target));
                    ExpectNear(Full(target), Times(Transposed(Full(tall), m), Times(Full(*s), Full(*r2), 3), 3), false,
                               10.0);
                }
                KwRectMatrix square = RandomRect(n, n, 5);
                ExpectNear(square.TraceOfProductSqS(*s), matrix_samples::Trace(Times(Full(square), Full(*s))), 100.0);
                Square expected = Full(square);
                for (int i = 0; i < n; ++i) {
                    for (int j = 0; j < n; ++j) {
                        expected[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)] -= s->GetElem(i, j);
                    }
                }
                EXPECT_TRUE(square.SubtractSymMatrix(*s));
                EXPECT_EQ(Full(square), expected);
            }
            const KwSymBlockDiagMatrix blocks = RandomBlocks(n, 6);
            KwRectMatrix target(2, 2, true);
            EXPECT_TRUE(target.ComputeBlockDiagSR(blocks, tall));
            ExpectNear(Full(target), Times(Full(blocks), Full(tall), m));
            target = tall;
            EXPECT_TRUE(target.ComputeBlockDiagSR(blocks, target));
            ExpectNear(Full(target), Times(Full(blocks), Full(tall), m));
        }
    }
}

TEST(KwRectMatrixProducts, TraceWithAnInnerPart) {
    const KwRectMatrix r = RandomRect(3, 3, 1);
    for (const auto& s : SymOfEveryKind(6, 2)) {
        for (int first = 0; first <= 3; ++first) {
            double expected = 0.0;
            for (int i = 0; i < 3; ++i) {
                for (int j = 0; j < 3; ++j) {
                    expected += r.GetElem(i, j) * s->GetElem(first + i, first + j);
                }
            }
            ExpectNear(r.TraceOfProductSubMatSym(*s, first), expected, 100.0);
        }
        EXPECT_EQ(r.TraceOfProductSubMatSym(*s, 4), 0.0);
        EXPECT_EQ(r.TraceOfProductSubMatSym(*s, -1), 0.0);
        EXPECT_EQ(r.TraceOfProductSqS(*s), 0.0);
    }
    EXPECT_EQ(RandomRect(2, 3, 1).TraceOfProductSubMatSym(RandomMatrix(6, 1), 0), 0.0);
}

TEST(KwRectMatrixProducts, AXpYUsesTheLowerTriangle) {
    const KwRectMatrix r = RandomRect(4, 4, 1);
    KwSymMatrix y = RandomMatrix(4, 2);
    const KwSymMatrix before(y);
    EXPECT_TRUE(r.ComputeAXpY(-0.375, y));
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j <= i; ++j) {
            EXPECT_EQ(y.GetElem(i, j), before.GetElem(i, j) + -0.375 * r.GetElem(i, j));
        }
    }
    const Square after = Full(y);
    EXPECT_FALSE(RandomRect(4, 3, 1).ComputeAXpY(1.0, y));
    EXPECT_FALSE(RandomRect(5, 5, 1).ComputeAXpY(1.0, y));
    EXPECT_EQ(Full(y), after);
}

TEST(KwRectMatrixProducts, RefuseOtherSizesAndChangeNothing) {
    KwRectMatrix r = RandomRect(3, 4, 1);
    const Square before = Full(r);
    KwRectMatrix target(1, 1, true);
    const KwRectMatrix invalid(std::numeric_limits<int>::max(), std::numeric_limits<int>::max(), true);
    EXPECT_FALSE(r.ComputeMatrixProduct(RandomRect(3, 4, 1), target));
    EXPECT_FALSE(r.ComputeMatrixProduct(invalid, target));
    EXPECT_FALSE(invalid.ComputeMatrixProduct(invalid, target));
    EXPECT_FALSE(r.ComputeProductMatrixTrans(RandomRect(4, 3, 1), target));
    EXPECT_FALSE(r.ComputeMatrixProduct(RandomMatrix(3, 1), target));
    EXPECT_FALSE(r.ComputeR1TransSR2(RandomMatrix(4, 1), r, target));
    EXPECT_FALSE(r.ComputeR1TransSR2(RandomMatrix(3, 1), RandomRect(4, 2, 1), target));
    EXPECT_FALSE(r.ComputeBlockDiagSR(RandomBlocks(4, 1), r));
    EXPECT_FALSE(r.SubtractSymMatrix(RandomMatrix(4, 1)));
    EXPECT_EQ(Full(target), Square{{0}});
    EXPECT_EQ(Full(r), before);
}

TEST(KwRectMatrixProducts, TargetsMayBeOperands) {
    const KwRectMatrix r = RandomRect(4, 4, 1), b = RandomRect(4, 4, 2);
    KwRectMatrix target(r);
    EXPECT_TRUE(target.ComputeMatrixProduct(b, target));
    ExpectNear(Full(target), Times(Full(r), Full(b)));
    target = b;
    EXPECT_TRUE(r.ComputeProductMatrixTrans(target, target));
    ExpectNear(Full(target), Times(Full(r), Transposed(Full(b))));
}

// The full upper triangle that u holds at its symmetric places.
Square Upper(const KwSymMatrix& u) {
    return Transposed(matrix_samples::Lower(Full(u)));
}

TEST(KwRectMatrixQR, ReflectionsTakeTheMatrixToTheTriangle) {
    for (const int n : {0, 1, 2, 3, 5, 8}) {
        for (const int m : {n, n + 1, n + 6}) {
            for (const double scale : {1.0, 1e-150, 1e150}) {
                KwRectMatrix a = RandomRect(m, n, 1);
                for (double& element : a.AsVector()) {
                    element *= scale;
                }
                KwSymMatrix u(2, 2, true);
                KwRectMatrix h;
                EXPECT_TRUE(a.QRDecompositionH(u, h));
                EXPECT_EQ(u.GetNRows(), n);
                EXPECT_EQ(h.GetNRows(), m);
                EXPECT_EQ(h.GetNCols(), n);
                Square rest = Full(a);
                for (int j = 0; j < n; ++j) {
                    Vector vector;
                    ASSERT_TRUE(h.GetCol(j, vector));
                    for (int i = 0; i < j; ++i) {
                        EXPECT_EQ(vector[static_cast<std::size_t>(i)], 0.0);
                    }
                    const double head = vector[static_cast<std::size_t>(j)];
                    for (int k = 0; head != 0.0 && k < n; ++k) {
                        double product = 0.0;
                        for (int i = 0; i < m; ++i) {
                            product += vector[static_cast<std::size_t>(i)] *
                                       rest[static_cast<std::size_t>(i)][static_cast<std::size_t>(k)];
                        }
                        for (int i = 0; i < m; ++i) {
                            rest[static_cast<std::size_t>(i)][static_cast<std::size_t>(k)] -=
                                product / head * vector[static_cast<std::size_t>(i)];
                        }
                    }
                }
                const Square upper = Upper(u);
                for (std::size_t i = 0; i < rest.size(); ++i) {
                    for (std::size_t j = 0; j < rest[i].size(); ++j) {
                        EXPECT_NEAR(rest[i][j] / scale, (i < upper.size() ? upper[i][j] : 0.0) / scale, 1e-13);
                    }
                }
            }
        }
    }
}

TEST(KwRectMatrixQR, ZeroColumnsNeedNoReflection) {
    KwRectMatrix a(3, 2, true);
    a.SetElem(1, 1, 2.5);
    KwSymMatrix u;
    KwRectMatrix h;
    EXPECT_TRUE(a.QRDecompositionH(u, h));
    EXPECT_EQ(u.GetElem(0, 0), 0.0);
    EXPECT_EQ(h.GetElem(0, 0), 0.0);
    EXPECT_DOUBLE_EQ(std::abs(u.GetElem(1, 1)), 2.5);
}

TEST(KwRectMatrixQR, RefusesMoreColumnsThanRows) {
    KwSymMatrix u(1, true);
    KwRectMatrix h(1, 1, true);
    EXPECT_FALSE(RandomRect(2, 3, 1).QRDecompositionH(u, h));
    EXPECT_EQ(u.GetNRows(), 1);
    EXPECT_EQ(h.GetNRows(), 1);
    KwRectMatrix self = RandomRect(4, 3, 1), other;
    const KwRectMatrix before(self);
    ASSERT_TRUE(before.QRDecompositionH(u, other));
    EXPECT_TRUE(self.QRDecompositionH(u, self));
    EXPECT_EQ(Full(self), Full(other));
}

}  // namespace
