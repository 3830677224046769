// The block-diagonal matrix: its blocks, and every operation of the interface beside the dense matrix of the same
// elements.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "tests/numerics/matrix/matrix_samples.h"

namespace {

using KwMath_930::IKwSymMatrix;
using KwMath_930::KwBitSet;
using KwMath_930::KwRectMatrix;
using KwMath_930::KwSymBlockDiagMatrix;
using KwMath_930::KwSymMatrix;
using matrix_samples::Dot;
using matrix_samples::ExpectNear;
using matrix_samples::Full;
using matrix_samples::Lower;
using matrix_samples::RandomBlocks;
using matrix_samples::RandomMatrix;
using matrix_samples::RandomRect;
using matrix_samples::RandomVector;
using matrix_samples::Square;
using matrix_samples::Times;
using matrix_samples::Transposed;
using matrix_samples::Vector;

const std::vector<int> kBlockOrders = {0, 1, 2, 3, 4, 5, 6, 9, 17};

KwSymMatrix Dense(const IKwSymMatrix& matrix) {
    KwSymMatrix dense(matrix.GetNRows(), true);
    EXPECT_TRUE(dense.ReplaceFirstRows(matrix));
    return dense;
}

// Blocks that are positive definite.
KwSymBlockDiagMatrix PositiveDefinite(int order) {
    KwSymBlockDiagMatrix matrix = RandomBlocks(order, 1);
    matrix.LTLLTrans();
    matrix.AddToDiagonal(3.5);
    return matrix;
}

TEST(KwSymBlockDiagMatrixBlocks, AreGivenByNumber) {
    KwBitSet isDiagonal(3);
    isDiagonal.Set(1, true);
    KwSymBlockDiagMatrix matrix({2, 3, 1}, isDiagonal);
    EXPECT_EQ(matrix.GetType(), IKwSymMatrix::kBlockDiagSymMatrix);
    EXPECT_NE(matrix.GetType(), 0);
    EXPECT_EQ(matrix.GetNRows(), 6);
    EXPECT_EQ(matrix.GetNBlocks(), 3);
    EXPECT_EQ(matrix.GetBlockSizes(), (std::vector<int>{2, 3, 1}));
    EXPECT_EQ(matrix.GetBlockSize(1), 3);
    EXPECT_EQ(matrix.GetBlockSize(3), -1);
    EXPECT_EQ(matrix.GetBlockSize(-1), -1);
    EXPECT_TRUE(matrix.GetIsBlockDiagonal(1));
    EXPECT_FALSE(matrix.GetIsBlockDiagonal(0));
    EXPECT_FALSE(matrix.GetIsBlockDiagonal(3));
    EXPECT_TRUE(matrix.SetElem(0, 1, 1.5));
    EXPECT_TRUE(matrix.SetElem(3, 3, 2.5));
    const KwSymMatrix* dense = nullptr;
    const Vector* diagonal = nullptr;
    EXPECT_TRUE(matrix.GetDenseBlock(0, dense));
    EXPECT_EQ(dense->AsVectorConst(), (Vector{0, 1.5, 0}));
    EXPECT_FALSE(matrix.GetDiagonalBlock(0, diagonal));
    EXPECT_TRUE(matrix.GetDiagonalBlock(1, diagonal));
    EXPECT_EQ(*diagonal, (Vector{0, 2.5, 0}));
    EXPECT_FALSE(matrix.GetDenseBlock(1, dense));
    EXPECT_FALSE(matrix.GetDenseBlock(-1, dense));
    EXPECT_FALSE(matrix.GetDiagonalBlock(3, diagonal));
    int first = 7;
    const double* values = nullptr;
    EXPECT_TRUE(matrix.GetIndexFirstInRow(1, first, values));
    EXPECT_EQ(first, 0);
    EXPECT_EQ(values[0], 1.5);
    EXPECT_TRUE(matrix.GetIndexFirstInRow(3, first, values));
    EXPECT_EQ(first, 3);
    EXPECT_EQ(values[0], 2.5);
    EXPECT_TRUE(matrix.GetIndexFirstInRow(5, first));
    EXPECT_EQ(first, 5);
    EXPECT_FALSE(matrix.GetIndexFirstInRow(6, first));
    EXPECT_FALSE(matrix.GetIndexFirstInRow(-1, first, values));
    EXPECT_EQ(first, 5);
}

TEST(KwSymBlockDiagMatrixBlocks, BadSizesMakeAnInvalidMatrix) {
    constexpr int kLargest = std::numeric_limits<int>::max();
    for (const std::vector<int>& sizes : {std::vector<int>{2, 0}, {-1}, {kLargest, kLargest}}) {
        const KwSymBlockDiagMatrix matrix(sizes, KwBitSet());
        EXPECT_FALSE(matrix.IsValidMatrix());
        EXPECT_EQ(matrix.GetNRows(), -1);
        EXPECT_EQ(matrix.GetNBlocks(), 0);
        KwSymMatrix target(2, true);
        EXPECT_FALSE(matrix.ComputeSTransS(target));
        EXPECT_EQ(target.GetNRows(), 2);
    }
    EXPECT_TRUE(KwSymBlockDiagMatrix().IsValidMatrix());
    EXPECT_EQ(KwSymBlockDiagMatrix({}, KwBitSet()).GetNRows(), 0);
}

TEST(KwSymBlockDiagMatrixBlocks, CopiesAreDeep) {
    const KwSymBlockDiagMatrix source = RandomBlocks(6, 1);
    KwSymBlockDiagMatrix copy(source);
    copy.SetElem(0, 0, 77.5);
    EXPECT_NE(source.GetElem(0, 0), 77.5);
    copy = source;
    EXPECT_EQ(Full(copy), Full(source));
    KwSymBlockDiagMatrix& self = copy;
    copy = self;
    EXPECT_EQ(Full(copy), Full(source));
}

TEST(KwSymBlockDiagMatrixAccess, OutsideTheBlocksOnlyZeroIsTaken) {
    KwSymBlockDiagMatrix matrix = RandomBlocks(6, 1);
    const Square before = Full(matrix);
    EXPECT_FALSE(matrix.SetElem(0, 5, 1.5));
    EXPECT_FALSE(matrix.SetElem(5, 0, std::numeric_limits<double>::quiet_NaN()));
    EXPECT_TRUE(matrix.SetElem(0, 5, 0.0));
    EXPECT_FALSE(matrix.SetElem(2, 1, 1.5)) << "inside a diagonal block";
    EXPECT_FALSE(matrix.PutRow(4, {0, 1, 0, 2, 3, 4}));
    EXPECT_FALSE(matrix.PutRow(0, {1, 0, 0, 0, 0, 4}));
    EXPECT_FALSE(matrix.PutRow(4, {0, 0, 0, 2, 3}));
    EXPECT_FALSE(matrix.PutRow(6, RandomVector(6, 1)));
    EXPECT_FALSE(matrix.SetRowColToConst(4, 1.5));
    EXPECT_FALSE(matrix.SetRowColToConst(6, 0.0));
    EXPECT_FALSE(matrix.ComputeAXpY(0.5, RandomMatrix(6, 2)));
    EXPECT_FALSE(matrix.ComputeAXpY(0.5, RandomBlocks(5, 2)));
    EXPECT_EQ(Full(matrix), before);
    EXPECT_TRUE(matrix.PutRow(4, {0, 0, 0, 2.5, 3.5, 4.5}));
    EXPECT_EQ(matrix.GetElem(5, 4), 4.5);
    EXPECT_TRUE(matrix.ZeroOut(4));
    EXPECT_EQ(matrix.GetElem(4, 3), 0.0);
    EXPECT_TRUE(matrix.ComputeAXpY(0.5, RandomBlocks(6, 3)));
    EXPECT_TRUE(matrix.ComputeAXpY(0.0, RandomMatrix(6, 3)));
    KwSymBlockDiagMatrix whole({3}, KwBitSet());
    EXPECT_TRUE(whole.SetRowColToConst(1, 2.5));
    EXPECT_EQ(Full(whole), (Square{{0, 2.5, 0}, {2.5, 2.5, 2.5}, {0, 2.5, 0}}));
}

TEST(KwSymBlockDiagMatrixAccess, ResizeMakesOneDenseBlock) {
    const KwSymBlockDiagMatrix source = RandomBlocks(6, 1);
    for (const int n : {0, 3, 6, 8, -2}) {
        KwSymBlockDiagMatrix matrix(source);
        EXPECT_TRUE(matrix.Resize(n));
        EXPECT_EQ(matrix.GetNRows(), std::max(n, 0));
        EXPECT_EQ(matrix.GetNBlocks(), n > 0 ? 1 : 0);
        for (int i = 0; i < n; ++i) {
            for (int j = 0; j < n; ++j) {
                EXPECT_EQ(matrix.GetElem(i, j), i < 6 && j < 6 ? source.GetElem(i, j) : 0.0);
            }
        }
        EXPECT_TRUE(matrix.SetNRows(n, true));
        EXPECT_EQ(matrix.Trace(), 0.0);
    }
}

TEST(KwSymBlockDiagMatrixInterface, ElementwiseOperationsAgreeWithTheDenseMatrix) {
    for (const int n : kBlockOrders) {
        const KwSymBlockDiagMatrix blocks = RandomBlocks(n, 1);
        const KwSymMatrix dense = Dense(blocks);
        Vector a, b;
        blocks.GetDiagonal(a);
        dense.GetDiagonal(b);
        EXPECT_EQ(a, b);
        for (int i = 0; i < n; ++i) {
            EXPECT_TRUE(blocks.GetRow(i, a));
            EXPECT_TRUE(dense.GetRow(i, b));
            EXPECT_EQ(a, b);
            Vector v(static_cast<std::size_t>(2 * n), 1.5), w(v);
            EXPECT_TRUE(blocks.IncrVecByRow(i, v, 1, 2, -0.75, true));
            EXPECT_TRUE(dense.IncrVecByRow(i, w, 1, 2, -0.75, true));
            EXPECT_EQ(v, w);
        }
        EXPECT_FALSE(blocks.IncrVecByRow(0, a, 1, 2, 1.0, true));
        EXPECT_FALSE(blocks.GetRow(n, a));
        double values[8] = {1, 1, 1, 1, 1, 1, 1, 1};
        blocks.MaxMinDiagOffDiag(values[0], values[1], values[2], values[3]);
        dense.MaxMinDiagOffDiag(values[4], values[5], values[6], values[7]);
        for (int k = 0; k < 4; ++k) {
            EXPECT_EQ(values[k], values[k + 4]) << n;
        }
        EXPECT_EQ(blocks.Trace(), dense.Trace());
        KwSymBlockDiagMatrix changed(blocks);
        KwSymMatrix expected(dense);
        for (IKwSymMatrix* matrix : {static_cast<IKwSymMatrix*>(&changed), static_cast<IKwSymMatrix*>(&expected)}) {
            matrix->AddToDiagonal(0.75);
            matrix->ChangeSign();
            matrix->MultiplyByNumber(1.25);
            matrix->ZeroOutNonDiag(0.4);
            EXPECT_TRUE(matrix->ComputeAXpY(-0.375, blocks));
        }
        EXPECT_EQ(Full(changed), Full(expected));
        ExpectNear(blocks.TraceOfProduct(expected), dense.TraceOfProduct(expected), 100.0);
        EXPECT_EQ(blocks.TraceOfProduct(RandomMatrix(n + 1, 1)), 0.0);
        changed.Clear();
        EXPECT_EQ(Full(changed), Full(KwSymMatrix(n, true)));
        for (int i = 0; i < n; ++i) {
            EXPECT_TRUE(changed.IsZeroRow(i, KwBitSet()));
            EXPECT_FALSE(blocks.IsZeroRow(i, KwBitSet()));
            KwBitSet all(n);
            all.Negate();
            EXPECT_TRUE(blocks.IsZeroRow(i, all));
        }
        EXPECT_FALSE(changed.IsZeroRow(n, KwBitSet()));
    }
}

TEST(KwSymBlockDiagMatrixInterface, VectorProductsAgreeWithTheDenseMatrix) {
    for (const int n : kBlockOrders) {
        const KwSymBlockDiagMatrix blocks = RandomBlocks(n, 1);
        const KwSymMatrix dense = Dense(blocks);
        const KwSymMatrix other = RandomMatrix(n, 2);
        const Vector v = RandomVector(n, 3), w = RandomVector(n, 4), x = RandomVector(3 * n + 3, 5);
        Vector out(1), expected;
        for (int k = 0; k <= n; ++k) {
            EXPECT_TRUE(blocks.ComputeSV(k, v, out));
            EXPECT_TRUE(dense.ComputeSV(k, v, expected));
            ExpectNear(out, expected);
        }
        EXPECT_TRUE(blocks.ComputeSV(v, out));
        EXPECT_TRUE(dense.ComputeSV(v, expected));
        ExpectNear(out, expected);
        EXPECT_TRUE(blocks.ComputeLV(v, out));
        EXPECT_TRUE(dense.ComputeLV(v, expected));
        ExpectNear(out, expected);
        EXPECT_TRUE(blocks.ComputeLTransV(v, out));
        EXPECT_TRUE(dense.ComputeLTransV(v, expected));
        ExpectNear(out, expected);
        const std::vector<int> indices = n > 0 ? std::vector<int>{n - 1, 0, n - 1} : std::vector<int>{};
        const Vector values = n > 0 ? Vector{1.5, 2.5, -0.5} : Vector{};
        EXPECT_TRUE(blocks.ComputeLV(indices, values, out));
        EXPECT_TRUE(dense.ComputeLV(indices, values, expected));
        ExpectNear(out, expected);
        EXPECT_TRUE(blocks.ComputeLTransV(indices, values, out));
        EXPECT_TRUE(dense.ComputeLTransV(indices, values, expected));
        ExpectNear(out, expected);
        const double scale = 100.0 * n;
        ExpectNear(blocks.ComputeVSV(v), dense.ComputeVSV(v), scale);
        ExpectNear(blocks.ComputeVSW(v, w), dense.ComputeVSW(v, w), scale);
        ExpectNear(blocks.ComputeVSW(x, 1, 3, 2), dense.ComputeVSW(x, 1, 3, 2), scale);
        ExpectNear(blocks.ComputeVSW(x.data(), 2, w.data(), 1), dense.ComputeVSW(x.data(), 2, w.data(), 1), scale);
        for (int k = 0; k <= n; ++k) {
            ExpectNear(blocks.ComputeVSWParts(v, k, w, n - k), dense.ComputeVSWParts(v, k, w, n - k), scale);
        }
        const KwRectMatrix rows = RandomRect(2, n, 6);
        ExpectNear(blocks.ComputeVSV(rows, 1), dense.ComputeVSV(rows, 1), scale);
        for (int i = 0; i < n; ++i) {
            ExpectNear(blocks.ComputeRVD(i, x, 3), dense.ComputeRVD(i, x, 3), scale);
            ExpectNear(blocks.ComputeRVD(i, x.data(), 2), dense.ComputeRVD(i, x.data(), 2), scale);
            for (int j = 0; j < n; ++j) {
                ExpectNear(blocks.ComputeDotProduct2Rows(i, j), dense.ComputeDotProduct2Rows(i, j), scale);
                const double product = dense.ComputeRowDotProductS(i, other, j);
                ExpectNear(blocks.ComputeRowDotProductS(i, other, j), product, scale);
                ExpectNear(blocks.ComputeRowDotProductS(i, other.AsVectorConst(), j), product, scale);
            }
        }
    }
}

TEST(KwSymBlockDiagMatrixInterface, VectorProductsRefuseBadArguments) {
    const KwSymBlockDiagMatrix blocks = RandomBlocks(4, 1);
    const Vector three(3, 1.5);
    Vector out = {7.5};
    EXPECT_FALSE(blocks.ComputeSV(three, out));
    EXPECT_FALSE(blocks.ComputeSV(5, RandomVector(6, 1), out));
    EXPECT_FALSE(blocks.ComputeSV(-1, three, out));
    EXPECT_FALSE(blocks.ComputeLV(three, out));
    EXPECT_FALSE(blocks.ComputeLTransV(three, out));
    EXPECT_FALSE(blocks.ComputeLV({4}, {1.5}, out));
    EXPECT_FALSE(blocks.ComputeLTransV({-1}, {1.5}, out));
    EXPECT_EQ(out, Vector{7.5});
    EXPECT_EQ(blocks.ComputeVSV(three), 0.0);
    EXPECT_EQ(blocks.ComputeVSW(three, three), 0.0);
    EXPECT_EQ(blocks.ComputeVSW(three, 0, 0, 1), 0.0);
    EXPECT_EQ(blocks.ComputeVSWParts(three, 4, three, 1), 0.0);
    EXPECT_EQ(blocks.ComputeVSWParts(three.data(), 5, three.data(), 1), 0.0);
    EXPECT_EQ(blocks.ComputeVSV(RandomRect(2, 3, 1), 0), 0.0);
    EXPECT_EQ(blocks.ComputeRVD(0, three, 1), 0.0);
    EXPECT_EQ(blocks.ComputeRVD(4, three, 0), 0.0);
    EXPECT_EQ(blocks.ComputeDotProduct2Rows(0, 4), 0.0);
    EXPECT_EQ(blocks.ComputeRowDotProductS(0, RandomMatrix(3, 1), 0), 0.0);
    EXPECT_EQ(blocks.ComputeRowDotProductS(0, three, 0), 0.0);
}

TEST(KwSymBlockDiagMatrixInterface, FactorisationsAgreeWithTheDenseMatrix) {
    for (const int n : kBlockOrders) {
        const KwSymBlockDiagMatrix blocks = PositiveDefinite(n);
        const KwSymMatrix dense = Dense(blocks);
        Vector ref, checkA, checkB;
        blocks.GetDiagonal(ref);
        blocks.GetNCheckDiagonal(checkA, 1, 2);
        dense.GetNCheckDiagonal(checkB, 1, 2);
        EXPECT_EQ(checkA, checkB);
        KwSymBlockDiagMatrix factor(blocks);
        KwSymMatrix expected(dense);
        EXPECT_EQ(factor.LTChol(ref, 1e-10, true), 0);
        EXPECT_EQ(expected.LTChol(ref, 1e-10, true), 0);
        ExpectNear(Full(factor), Full(expected));
        double detA[2] = {7, 7}, detB[2] = {7, 7};
        EXPECT_EQ(factor.LTDetInverse(detA, 11), 0);
        EXPECT_EQ(expected.LTDetInverse(detB, 11), 0);
        ExpectNear(Full(factor), Full(expected));
        EXPECT_NEAR(detA[0], detB[0], 1e-12);
        EXPECT_EQ(detA[1], detB[1]);
        factor.LTLTransL();
        expected.LTLTransL();
        ExpectNear(Full(factor), Full(expected));
        factor.LTLLTrans();
        expected.LTLLTrans();
        ExpectNear(Full(factor), Full(expected));
        double smallestA = 0, smallestB = 0;
        factor = blocks;
        expected = dense;
        EXPECT_EQ(factor.LTChol(1e-10, smallestA, true), expected.LTChol(1e-10, smallestB, true));
        EXPECT_DOUBLE_EQ(smallestA, smallestB);
        EXPECT_TRUE(factor.LTInverse());
        EXPECT_TRUE(expected.LTInverse());
        ExpectNear(Full(factor), Full(expected));
        factor = blocks;
        expected = dense;
        const Vector b = RandomVector(n + 1, 3);
        Vector x, y;
        EXPECT_EQ(factor.LTSolve(b, 1e-10, x), 0);
        EXPECT_EQ(expected.LTSolve(b, 1e-10, y), 0);
        ExpectNear(x, y);
        factor = blocks;
        Vector inPlace(b);
        EXPECT_EQ(factor.LTSolve(inPlace, 1e-10, inPlace), 0);
        EXPECT_EQ(inPlace, x);
        EXPECT_EQ(blocks.ComputeDeterminant(1e-10, detA), dense.ComputeDeterminant(1e-10, detB));
        EXPECT_NEAR(detA[0], detB[0], 1e-11);
        KwSymMatrix inverseA, inverseB;
        KwBitSet zeros;
        EXPECT_EQ(blocks.CholInverse(ref, 1e-10, inverseA), n);
        EXPECT_EQ(dense.CholInverse(ref, 1e-10, inverseB), n);
        EXPECT_EQ(Full(inverseA), Full(inverseB));
        EXPECT_EQ(blocks.CholInverse(ref, 1e-10, inverseA, smallestA), n);
        EXPECT_DOUBLE_EQ(smallestA, smallestB);
        EXPECT_EQ(blocks.CholInverse(ref, 1e-10, inverseA, zeros), n);
        EXPECT_EQ(zeros.Size(), n);
    }
}

TEST(KwSymBlockDiagMatrixInterface, ZeroPivotsAreCountedAndMarkedAtTheirRow) {
    KwBitSet isDiagonal(2);
    isDiagonal.Set(0, true);
    KwSymBlockDiagMatrix matrix({2, 2}, isDiagonal);
    matrix.SetElem(0, 0, 4);
    matrix.SetElem(2, 2, 4);
    matrix.SetElem(3, 2, 2);
    matrix.SetElem(3, 3, 1);
    const KwSymBlockDiagMatrix before(matrix);
    KwBitSet zeros;
    EXPECT_EQ(matrix.LTChol({4, 1, 4, 1}, 1e-8, zeros, true), 2);
    EXPECT_EQ(zeros.InSet(), 2);
    EXPECT_TRUE(zeros.IsIn(1));
    EXPECT_TRUE(zeros.IsIn(3));
    double det[2];
    EXPECT_EQ(matrix.LTDetInverse(det, 1), 2);
    EXPECT_EQ(det[0], 0.0);
    EXPECT_TRUE(before.ComputeDeterminant(1e-8, det));
    EXPECT_EQ(det[0], 0.0);
    matrix = before;
    EXPECT_EQ(matrix.LTChol({4, 1, 4, -1}, 1e-8, zeros, true), -1);
    EXPECT_EQ(matrix.LTChol({4, 1, 4}, 1e-8, false), -1);
    EXPECT_EQ(matrix.LTChol({4, 1, 4, 1}, -1.0, true), -1);
    Vector x = {7.5};
    EXPECT_EQ(matrix.LTSolve({1, 2, 3}, 1e-8, x), -1);
    EXPECT_EQ(matrix.LTSolve({1, 2, 3, 4}, 0.0, x), -1);
    EXPECT_EQ(x, Vector{7.5});
    EXPECT_EQ(Full(matrix), Full(before));
    EXPECT_FALSE(KwSymBlockDiagMatrix().ComputeDeterminant(1e-8, det));
    EXPECT_EQ(matrix.CholInverse({4, 1, 4, 1}, 1e-8, matrix), -1);
}

TEST(KwSymBlockDiagMatrixInterface, MatrixProductsAgreeWithTheDenseMatrix) {
    for (const int n : kBlockOrders) {
        const KwSymBlockDiagMatrix blocks = RandomBlocks(n, 1);
        const KwSymMatrix dense = Dense(blocks);
        const KwSymMatrix m = RandomMatrix(n, 2), o = RandomMatrix(n, 3);
        const KwRectMatrix wide = RandomRect(2, n, 4), tall = RandomRect(n, 2, 5);
        const Vector v = RandomVector(n, 6);
        const std::vector<int> rows = n > 1 ? std::vector<int>{n - 1, 0, 1} : std::vector<int>{};
        using Product = bool (*)(const IKwSymMatrix&, const KwSymMatrix&, const KwSymMatrix&, const KwRectMatrix&,
                                 const KwRectMatrix&, const Vector&, KwSymMatrix&, KwRectMatrix&);
        const Product products[] = {
            [](auto& s, auto&, auto&, auto&, auto&, auto& g, auto& t, auto&) { return s.ComputeGMG(g, t); },
            [](auto& s, auto& a, auto& b, auto&, auto&, auto&, auto& t, auto&) {
                Vector work;
                return s.ComputeGMGNG(a, b, t, work);
            },
            [](auto& s, auto& a, auto& b, auto&, auto&, auto&, auto& t, auto&) { return s.ComputeMGN(a, b, t); },
            [](auto& s, auto& a, auto&, auto&, auto&, auto&, auto& t, auto&) { return s.ComputeGSG(a, t); },
            [](auto& s, auto& a, auto&, auto&, auto&, auto&, auto& t, auto&) { return s.ComputeLSLTrans(a, t); },
            [](auto& s, auto& a, auto&, auto&, auto&, auto&, auto& t, auto&) {
                return s.ComputeLTransSL(a, t, a.GetNRows());
            },
            [](auto& s, auto&, auto&, auto& w, auto&, auto&, auto&, auto& r) { return s.ComputeRS(w, r); },
            [](auto& s, auto&, auto&, auto& w, auto&, auto&, auto& t, auto&) { return s.ComputeRSRTrans(w, t); },
            [](auto& s, auto&, auto&, auto&, auto& w, auto&, auto&, auto& r) { return s.ComputeRTransS(w, r); },
            [](auto& s, auto&, auto&, auto&, auto& w, auto&, auto& t, auto&) { return s.ComputeRTransSR(w, t); },
            [](auto& s, auto& a, auto&, auto&, auto&, auto&, auto&, auto& r) { return s.ComputeSS(a, r); },
            [](auto& s, auto&, auto&, auto&, auto&, auto&, auto& t, auto&) { return s.ComputeSTransS(t); },
        };
        for (const Product product : products) {
            KwSymMatrix targetA, targetB;
            KwRectMatrix rectA, rectB;
            EXPECT_TRUE(product(blocks, m, o, wide, tall, v, targetA, rectA));
            EXPECT_TRUE(product(dense, m, o, wide, tall, v, targetB, rectB));
            EXPECT_EQ(Full(targetA), Full(targetB));
            EXPECT_EQ(Full(rectA), Full(rectB));
        }
        KwSymMatrix targetA, targetB;
        EXPECT_TRUE(blocks.ExtractSubmatrix(rows, targetA));
        EXPECT_TRUE(dense.ExtractSubmatrix(rows, targetB));
        EXPECT_EQ(Full(targetA), Full(targetB));
        KwSymMatrix leading(n / 2, true);
        EXPECT_TRUE(blocks.ExtractFirstNRows(leading));
        EXPECT_EQ(leading.GetNRows(), n / 2);
        Vector outA, outB;
        EXPECT_TRUE(blocks.ComputeRTransSV(tall, v, outA));
        EXPECT_TRUE(dense.ComputeRTransSV(tall, v, outB));
        EXPECT_EQ(outA, outB);
        EXPECT_EQ(blocks.TraceOfProductOfThree(m, o), dense.TraceOfProductOfThree(m, o));
    }
}

// x^T L over the leading count rows.
Vector RowTimesL(const KwSymBlockDiagMatrix& l, const Vector& x) {
    Square lower = Lower(Full(l));
    lower.resize(x.size());
    for (Vector& row : lower) {
        row.resize(x.size());
    }
    return Times(Transposed(lower), x);
}

TEST(KwSymBlockDiagMatrixFactor, PartsOfVectorsTimesL) {
    for (const int n : kBlockOrders) {
        const KwSymBlockDiagMatrix l = RandomBlocks(n, 1);
        const Vector x = RandomVector(n, 2);
        const Vector product = RowTimesL(l, x);
        Vector v(static_cast<std::size_t>(2 * n + 2), 7.5), expected(v);
        for (int k = 0; k < n; ++k) {
            v[static_cast<std::size_t>(1 + 2 * k)] = x[static_cast<std::size_t>(k)];
            expected[static_cast<std::size_t>(1 + 2 * k)] = product[static_cast<std::size_t>(k)];
        }
        EXPECT_TRUE(l.ComputeVecPartByL(v, 1, 2));
        ExpectNear(v, expected);
        v.assign(static_cast<std::size_t>(n + 3), 7.5);
        std::copy(x.begin(), x.end(), v.begin() + 2);
        ExpectNear(l.ComputeProductLAndSquare(v, 2), Dot(product, product), 100.0);
        EXPECT_EQ(v[0], 7.5);
        ExpectNear(Vector(v.begin() + 2, v.begin() + 2 + n), product);
        for (int count = 0; count <= n; ++count) {
            const Vector head(x.begin(), x.begin() + count);
            const Vector part = RowTimesL(l, head);
            Vector grown(static_cast<std::size_t>(2 + 3 * n + n * n), 7.5), grownExpected(grown);
            for (int k = 0; k < count; ++k) {
                grown[static_cast<std::size_t>(1 + 2 * k + k * (k - 1) / 2)] = head[static_cast<std::size_t>(k)];
                grownExpected[static_cast<std::size_t>(1 + 2 * k + k * (k - 1) / 2)] =
                    part[static_cast<std::size_t>(k)];
            }
            EXPECT_TRUE(l.ComputeVecIIncrPartByL(grown, 1, 2, count));
            ExpectNear(grown, grownExpected);
            KwSymMatrix s = RandomMatrix(n + 4, 3);
            for (const int row : {0, 2, n + 3}) {
                KwSymMatrix changed(s);
                Vector before;
                ASSERT_TRUE(s.GetRow(row, before));
                const Vector elements(before.begin() + 1, before.begin() + 1 + count);
                EXPECT_TRUE(l.ComputeSymRowByL(changed.AsVector(), row, 1, count));
                const Vector rowProduct = RowTimesL(l, elements);
                for (int k = 0; k < count; ++k) {
                    EXPECT_NEAR(changed.GetElem(row, 1 + k), rowProduct[static_cast<std::size_t>(k)], 1e-11);
                }
            }
        }
    }
}

TEST(KwSymBlockDiagMatrixFactor, ColumnsTimesVectorsAndRows) {
    for (const int n : {1, 3, 6, 9}) {
        const KwSymBlockDiagMatrix l = RandomBlocks(n, 1);
        const Square lower = Lower(Full(l));
        const Vector v = RandomVector(2 + 3 * n + n * n, 2);
        const KwSymMatrix s = RandomMatrix(n + 2, 3);
        for (int col = 0; col < n; ++col) {
            double grown = 0.0, row = 0.0, dot = 0.0;
            for (int i = 0; i < n; ++i) {
                const double element = lower[static_cast<std::size_t>(i)][static_cast<std::size_t>(col)];
                grown += element * v[static_cast<std::size_t>(1 + 2 * i + i * (i - 1) / 2)];
                row += element * s.GetElem(1, 2 + i);
            }
            EXPECT_TRUE(l.DotProductColVecIIncrPart(col, v, 1, 2, dot));
            ExpectNear(dot, grown, 100.0);
            EXPECT_TRUE(l.DotProductLColDenseRowPart(col, s, 1, 2, dot));
            ExpectNear(dot, row, 100.0);
        }
    }
}

TEST(KwSymBlockDiagMatrixFactor, RefusesPlacesOutside) {
    const KwSymBlockDiagMatrix l = RandomBlocks(4, 1);
    const KwSymMatrix s = RandomMatrix(5, 3);
    Vector v(5, 1.5);
    double dot = 7.5;
    EXPECT_FALSE(l.ComputeVecPartByL(v, 2, 1));
    EXPECT_FALSE(l.ComputeVecPartByL(v, 0, 0));
    EXPECT_FALSE(l.ComputeVecIIncrPartByL(v, 0, 1, 5));
    EXPECT_FALSE(l.ComputeVecIIncrPartByL(v, 0, 1, 4));
    EXPECT_FALSE(l.ComputeVecIIncrPartByL(v, 0, 1, -1));
    EXPECT_FALSE(l.ComputeSymRowByL(v, 2, 0, 4));
    EXPECT_FALSE(l.ComputeSymRowByL(v, 0, std::numeric_limits<int>::max(), 2));
    EXPECT_FALSE(l.ComputeSymRowByL(v, -1, 0, 1));
    EXPECT_FALSE(l.ComputeSymRowByL(v, 0, 0, 5));
    EXPECT_EQ(l.ComputeProductLAndSquare(v, 2), 0.0);
    EXPECT_FALSE(l.DotProductColVecIIncrPart(4, v, 0, 1, dot));
    EXPECT_FALSE(l.DotProductColVecIIncrPart(3, v, 0, 1, dot));
    EXPECT_FALSE(l.DotProductColVecIIncrPart(0, v, -1, 1, dot));
    EXPECT_FALSE(l.DotProductLColDenseRowPart(4, s, 0, 0, dot));
    EXPECT_FALSE(l.DotProductLColDenseRowPart(3, s, 0, 2, dot));
    EXPECT_FALSE(l.DotProductLColDenseRowPart(0, s, 0, -1, dot));
    EXPECT_FALSE(l.DotProductLColDenseRowPart(0, s, 5, 0, dot));
    EXPECT_EQ(dot, 7.5);
    EXPECT_EQ(v, Vector(5, 1.5));
}

bool IsSame(const Square& a, const Square& b) {
    for (std::size_t i = 0; i < a.size(); ++i) {
        for (std::size_t j = 0; j < a[i].size(); ++j) {
            if (!(a[i][j] == b[i][j] || (std::isnan(a[i][j]) && std::isnan(b[i][j])))) {
                return false;
            }
        }
    }
    return a.size() == b.size();
}

// The zeros outside the blocks count: times an infinity they are a NaN, as in the full matrix.
TEST(KwSymBlockDiagMatrixInterface, InfinitiesAndNaNOfTheOtherFactorReachEveryRow) {
    const KwSymBlockDiagMatrix blocks = RandomBlocks(6, 1);
    const KwSymMatrix dense = Dense(blocks);
    for (const double value : {std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
        KwRectMatrix r = RandomRect(6, 3, 2), a, b;
        r.SetElem(1, 1, value);
        KwSymMatrix m = RandomMatrix(6, 3);
        m.SetElem(4, 0, value);
        EXPECT_TRUE(blocks.ComputeRTransS(r, a) && dense.ComputeRTransS(r, b));
        EXPECT_TRUE(IsSame(Full(a), Full(b)));
        EXPECT_TRUE(blocks.ComputeSS(m, a) && dense.ComputeSS(m, b));
        EXPECT_TRUE(IsSame(Full(a), Full(b)));
        EXPECT_TRUE(a.ComputeBlockDiagSR(blocks, r));
        KwRectMatrix square(6, 6, true);
        for (int i = 0; i < 6; ++i) {
            for (int j = 0; j < 6; ++j) {
                square.SetElem(i, j, dense.GetElem(i, j));
            }
        }
        EXPECT_TRUE(square.ComputeMatrixProduct(r, b));
        EXPECT_TRUE(IsSame(Full(a), Full(b)));
    }
}

TEST(KwSymBlockDiagMatrixInterface, MatrixProductsRefuseBadArgumentsAndChangeNothing) {
    const KwSymBlockDiagMatrix blocks = RandomBlocks(4, 1), invalid({0}, KwBitSet());
    const KwSymMatrix other = RandomMatrix(3, 1), m = RandomMatrix(4, 1);
    const KwRectMatrix r = RandomRect(3, 5, 1);
    KwSymMatrix target = RandomMatrix(2, 3);
    KwRectMatrix rect = RandomRect(1, 2, 3);
    KwSymBlockDiagMatrix same = RandomBlocks(4, 2);
    const Square before = Full(target), rectBefore = Full(rect), sameBefore = Full(same);
    Vector work(3, 1.5), out = {7.5};
    for (const KwSymBlockDiagMatrix* s : {&blocks, &invalid}) {
        EXPECT_FALSE(s->ComputeGMG({1, 2, 3}, target));
        EXPECT_FALSE(s->ComputeGMGNG(other, other, target, work));
        EXPECT_FALSE(s->ComputeMGN(other, other, target));
        EXPECT_FALSE(s->ComputeGSG(other, target));
        EXPECT_FALSE(s->ComputeLSLTrans(other, target));
        EXPECT_FALSE(s->ComputeLTransSL(other, target, 1));
        EXPECT_FALSE(s->ComputeRS(r, rect));
        EXPECT_FALSE(s->ComputeRSRTrans(r, target));
        EXPECT_FALSE(s->ComputeRTransS(r, rect));
        EXPECT_FALSE(s->ComputeRTransSR(r, target));
        EXPECT_FALSE(s->ComputeRTransSV(r, RandomVector(5, 1), out));
        EXPECT_FALSE(s->ComputeSS(other, rect));
        EXPECT_EQ(s->TraceOfProductOfThree(other, other), 0.0);
        EXPECT_FALSE(s->ExtractSubmatrix({4}, target));
        KwSymMatrix larger(5, true);
        EXPECT_FALSE(s->ExtractFirstNRows(larger));
        EXPECT_EQ(larger.GetNRows(), 5);
    }
    EXPECT_FALSE(blocks.ComputeMGN(m, m, same));
    EXPECT_FALSE(blocks.ComputeGMGNG(m, m, same, work));
    EXPECT_FALSE(blocks.ComputeSTransS(same));
    EXPECT_FALSE(blocks.ComputeRTransSR(RandomRect(4, 4, 1), same));
    EXPECT_FALSE(blocks.ComputeRSRTrans(RandomRect(4, 4, 1), same));
    EXPECT_FALSE(blocks.ExtractSubmatrix({0}, same));
    EXPECT_EQ(Full(target), before);
    EXPECT_EQ(Full(rect), rectBefore);
    EXPECT_EQ(Full(same), sameBefore);
    EXPECT_EQ(work, Vector(3, 1.5));
    EXPECT_EQ(out, Vector{7.5});
}

TEST(KwSymBlockDiagMatrixInterface, ProductsOfAnOrderBeyondAFullCopySucceed) {
    // The full triangle would take 40 GB.
    const int n = 100000;
    KwSymBlockDiagMatrix blocks(std::vector<int>(n / 2, 2), KwBitSet());
    blocks.AddToDiagonal(1.5);
    ASSERT_TRUE(blocks.SetElem(1, 0, 0.5));
    KwRectMatrix r(n, 1, true), product;
    r.SetElem(0, 0, 2.0);
    r.SetElem(n - 1, 0, 4.0);
    KwSymMatrix form;
    EXPECT_TRUE(blocks.ComputeRTransSR(r, form));
    EXPECT_EQ(form.AsVectorConst(), Vector{1.5 * 4.0 + 1.5 * 16.0});
    EXPECT_TRUE(product.ComputeBlockDiagSR(blocks, r));
    EXPECT_EQ(product.GetElem(1, 0), 1.0);
    EXPECT_TRUE(form.ComputeRTransBlockDiagR(r, blocks));
    EXPECT_EQ(form.GetElem(0), 30.0);
    EXPECT_TRUE(blocks.ExtractSubmatrix({n - 1, 1, 0}, form));
    EXPECT_EQ(form.AsVectorConst(), (Vector{1.5, 0, 1.5, 0, 0.5, 1.5}));
}

}  // namespace
