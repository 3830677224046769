// The sparse rectangular matrix: its lists, and every operation of the interface beside the dense matrix of the same
// elements.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "numerics/matrix/KwSparseVector.h"
#include "tests/numerics/matrix/matrix_samples.h"
#include "tests/numerics/special_values.h"

namespace {

using KwMath_930::IKwRectMatrix;
using KwMath_930::KwRectMatrix;
using KwMath_930::KwSparseRectMatrix;
using KwMath_930::KwSparseVector;
using matrix_samples::ExpectNear;
using matrix_samples::Full;
using matrix_samples::RandomMatrix;
using matrix_samples::RandomRect;
using matrix_samples::RandomSparse;
using matrix_samples::RandomVector;
using matrix_samples::RectOfEveryKind;
using matrix_samples::Square;
using matrix_samples::Vector;

using numerics_samples::kNaN;

KwRectMatrix Dense(const IKwRectMatrix& matrix) {
    KwRectMatrix dense(matrix.GetNRows(), matrix.GetNCols(), true);
    EXPECT_TRUE(matrix.GetNRows() == 0 || dense.CopyRows(matrix, 0, 0));
    return dense;
}

// The lists say what the elements say, with columns ascending and no stored zero.
void ExpectConsistent(const KwSparseRectMatrix& matrix) {
    std::vector<std::vector<int>> rows;
    std::vector<Vector> values;
    ASSERT_TRUE(matrix.GetSparseMatrixColumns(rows, values));
    ASSERT_EQ(rows.size(), static_cast<std::size_t>(matrix.GetNCols()));
    ASSERT_EQ(matrix.GetNNZRowElements().size(), static_cast<std::size_t>(matrix.GetNRows()));
    std::vector<std::vector<int>> expectedRows(rows.size());
    std::vector<Vector> expectedValues(rows.size());
    for (int i = 0; i < matrix.GetNRows(); ++i) {
        const int* columns = nullptr;
        const double* elements = nullptr;
        ASSERT_TRUE(matrix.GetRow(i, columns, elements));
        Vector row(static_cast<std::size_t>(matrix.GetNCols()));
        for (int k = 0; k < matrix.GetNNZRowElements()[static_cast<std::size_t>(i)]; ++k) {
            EXPECT_NE(elements[k], 0.0);
            EXPECT_TRUE(k == 0 || columns[k] > columns[k - 1]);
            row[static_cast<std::size_t>(columns[k])] = elements[k];
        }
        for (std::size_t j = 0; j < row.size(); ++j) {
            EXPECT_EQ(row[j], matrix.GetElem(i, static_cast<int>(j)));
            if (row[j] != 0.0) {
                expectedRows[j].push_back(i);
                expectedValues[j].push_back(row[j]);
            }
        }
    }
    EXPECT_EQ(rows, expectedRows);
    EXPECT_EQ(values, expectedValues);
}

TEST(KwSparseRectMatrixLists, FollowEveryChange) {
    KwSparseRectMatrix matrix(3, 4);
    ExpectConsistent(matrix);
    for (const auto& [i, j, value] :
         {std::tuple{1, 2, 2.5}, {1, 0, 1.5}, {1, 3, -1.0}, {0, 3, 4.5}, {1, 2, 0.0}, {2, 1, 0.0}, {1, 0, 7.5}}) {
        EXPECT_TRUE(matrix.SetElem(i, j, value));
        EXPECT_EQ(matrix.GetElem(i, j), value);
        ExpectConsistent(matrix);
    }
    EXPECT_EQ(matrix.GetNNZRowElements(), (std::vector<int>{1, 2, 0}));
    EXPECT_TRUE(matrix.SetElem(2, 2, kNaN));
    EXPECT_EQ(matrix.GetNNZRowElements()[2], 1);
    EXPECT_FALSE(matrix.IsRowZero(2));
    EXPECT_TRUE(matrix.SetElem(2, 2, 0.0));
    EXPECT_TRUE(matrix.IsRowZero(2));
    EXPECT_TRUE(matrix.Resize(4, 3));
    EXPECT_EQ(Full(matrix), (Square{{0, 0, 0}, {7.5, 0, 0}, {0, 0, 0}, {0, 0, 0}}));
    ExpectConsistent(matrix);
    EXPECT_TRUE(matrix.Resize(2, 5));
    ExpectConsistent(matrix);
    EXPECT_EQ(matrix.GetElem(1, 0), 7.5);
    EXPECT_TRUE(matrix.SetNRowsCols(2, 2, true));
    EXPECT_EQ(matrix.GetNNZRowElements(), (std::vector<int>{0, 0}));
    ExpectConsistent(matrix);
    EXPECT_TRUE(matrix.Resize(-1, 2));
    EXPECT_EQ(matrix.GetNRows(), 0);
}

TEST(KwSparseRectMatrixLists, InvalidRowsAreRefused) {
    const KwSparseRectMatrix matrix(2, 2);
    const int* columns = nullptr;
    const double* values = nullptr;
    EXPECT_FALSE(matrix.GetRow(2, columns, values));
    EXPECT_FALSE(matrix.GetRow(-1, columns, values));
    EXPECT_EQ(columns, nullptr);
}

TEST(KwSparseRectMatrixLists, CopiesAreDeep) {
    KwSparseRectMatrix matrix = RandomSparse(4, 3, 1);
    const KwSparseRectMatrix copy(matrix);
    matrix.Clear();
    EXPECT_EQ(Full(matrix), Full(KwSparseRectMatrix(4, 3)));
    matrix = copy;
    EXPECT_EQ(Full(matrix), Full(RandomSparse(4, 3, 1)));
    ExpectConsistent(matrix);
}

TEST(KwSparseRectMatrixRows, AreAddedSetAndZeroed) {
    KwSparseRectMatrix matrix(0, 3);
    EXPECT_EQ(matrix.AddRow(), 1);
    EXPECT_EQ(matrix.AddRow(KwSparseVector({2, 0, 2}, {1.5, 2.5, 0.25})), 2);
    EXPECT_EQ(matrix.AddRow(KwSparseVector({3}, {1.5})), -1);
    EXPECT_TRUE(matrix.SetRow(0, KwSparseVector({1, 2}, {1.5, 3.5})));
    EXPECT_EQ(Full(matrix), (Square{{0, 1.5, 3.5}, {2.5, 0, 1.75}}));
    EXPECT_FALSE(matrix.SetRow(0, KwSparseVector({-1}, {1.5})));
    EXPECT_FALSE(matrix.SetRow(2, KwSparseVector({1}, {1.5})));
    EXPECT_TRUE(matrix.ZeroOutRowPart(0, 1, 1));
    EXPECT_FALSE(matrix.ZeroOutRowPart(0, 2, 2));
    EXPECT_FALSE(matrix.ZeroOutRowPart(2, 0, 1));
    EXPECT_EQ(Full(matrix), (Square{{0, 0, 3.5}, {2.5, 0, 1.75}}));
    EXPECT_FALSE(matrix.IsRowZero(2));
    EXPECT_FALSE(KwSparseRectMatrix(2, 0).IsRowZero(0));
    ExpectConsistent(matrix);
}

TEST(KwSparseRectMatrixRows, AreCopiedFromAndToEveryKind) {
    for (const auto& source : RectOfEveryKind(4, 3, 2)) {
        for (int from = 0; from < 4; ++from) {
            for (int to = 0; to < 5; ++to) {
                KwSparseRectMatrix sparse = RandomSparse(5, 3, 1);
                KwRectMatrix dense = Dense(sparse);
                EXPECT_TRUE(sparse.CopyRows(*source, from, to));
                EXPECT_TRUE(dense.CopyRows(*source, from, to));
                EXPECT_EQ(Full(sparse), Full(dense));
                ExpectConsistent(sparse);
            }
        }
        EXPECT_TRUE(RandomSparse(5, 3, 1).CopyRowToRow(1, 2, *source));
        EXPECT_EQ(Full(*source)[2], Full(RandomSparse(5, 3, 1))[1]);
        EXPECT_FALSE(RandomSparse(5, 3, 1).CopyRowToRow(5, 2, *source));
        EXPECT_FALSE(RandomSparse(5, 3, 1).CopyRowToRow(1, 4, *source));
        EXPECT_FALSE(RandomSparse(5, 2, 1).CopyRowToRow(1, 2, *source));
    }
    KwSparseRectMatrix matrix = RandomSparse(5, 3, 1);
    KwRectMatrix dense = Dense(matrix);
    EXPECT_TRUE(matrix.CopyRows(matrix, 0, 1));
    EXPECT_TRUE(dense.CopyRows(dense, 0, 1));
    EXPECT_EQ(Full(matrix), Full(dense));
    EXPECT_FALSE(matrix.CopyRows(RandomSparse(5, 2, 1), 0, 0));
    EXPECT_FALSE(matrix.CopyRows(matrix, 5, 0));
    EXPECT_FALSE(matrix.CopyRows(matrix, 0, -1));
    EXPECT_EQ(Full(matrix), Full(dense));
}

TEST(KwSparseRectMatrixInterface, AgreesWithTheDenseMatrix) {
    for (const int m : {0, 1, 3, 6}) {
        for (const int n : {0, 1, 4, 7}) {
            const KwSparseRectMatrix sparse = RandomSparse(m, n, 1);
            const KwRectMatrix dense = Dense(sparse);
            const Vector v = RandomVector(std::max(m, n), 2);
            Vector a(1), b;
            EXPECT_TRUE(sparse.ComputeRV(v, a) && dense.ComputeRV(v, b));
            EXPECT_EQ(a, b);
            EXPECT_TRUE(sparse.ComputeVR(v, a) && dense.ComputeVR(v, b));
            EXPECT_EQ(a, b);
            for (int i = -1; i <= m; ++i) {
                EXPECT_EQ(sparse.RowNorm(i), dense.RowNorm(i));
                EXPECT_EQ(sparse.IsRowZero(i), dense.IsRowZero(i));
                EXPECT_EQ(sparse.GetRow(i, a), dense.GetRow(i, b));
                for (int j = -1; j <= m; ++j) {
                    EXPECT_EQ(sparse.DotProductRows(i, j), dense.DotProductRows(i, j));
                    EXPECT_EQ(sparse.DotProductRowRow(i, RandomRect(m, n, 3), j),
                              dense.DotProductRowRow(i, RandomRect(m, n, 3), j));
                    EXPECT_EQ(sparse.DotProductRowCol(i, RandomRect(n, m, 3), j),
                              dense.DotProductRowCol(i, RandomRect(n, m, 3), j));
                }
            }
            for (int j = -1; j <= n; ++j) {
                EXPECT_EQ(sparse.ColNorm(j), dense.ColNorm(j));
                a = b = Vector(static_cast<std::size_t>(m + 2), 2.5);
                EXPECT_EQ(sparse.CopyColToVec(j, a), dense.CopyColToVec(j, b));
                EXPECT_EQ(a, b);
                EXPECT_EQ(sparse.IncrVecByColumn(j, a, 1, 1, 0.75, true),
                          dense.IncrVecByColumn(j, b, 1, 1, 0.75, true));
                EXPECT_EQ(a, b);
                EXPECT_EQ(sparse.GetCol(j, a), dense.GetCol(j, b));
                EXPECT_EQ(a, b);
                for (int i = -1; i <= n; ++i) {
                    EXPECT_EQ(sparse.DotProductCol(i, j), dense.DotProductCol(i, j));
                }
            }
            KwRectMatrix x, y;
            KwSparseRectMatrix z;
            EXPECT_TRUE(sparse.ComputeMatrixProduct(RandomRect(n, 3, 4), x) &&
                        dense.ComputeMatrixProduct(RandomRect(n, 3, 4), y));
            EXPECT_EQ(Full(x), Full(y));
            EXPECT_TRUE(sparse.ComputeProductMatrixTrans(sparse, x) && dense.ComputeProductMatrixTrans(dense, y));
            EXPECT_EQ(Full(x), Full(y));
            EXPECT_TRUE(sparse.CreateBlockDiagonal(2, z) && dense.CreateBlockDiagonal(2, y));
            EXPECT_EQ(Full(z), Full(y));
            EXPECT_TRUE(sparse.ShiftColumns(1, z) && dense.ShiftColumns(1, y));
            EXPECT_EQ(Full(z), Full(y));
            EXPECT_TRUE(sparse.ShiftRows(-1, z) && dense.ShiftRows(-1, y));
            EXPECT_EQ(Full(z), Full(y));
            const std::vector<int> rows(m > 0 ? 2 : 0, m - 1), columns(n > 0 ? 2 : 0, n - 1);
            EXPECT_TRUE(sparse.ExtractRows(rows, z) && dense.ExtractRows(rows, y));
            EXPECT_EQ(Full(z), Full(y));
            EXPECT_TRUE(sparse.ExtractColumns(columns, z) && dense.ExtractColumns(columns, y));
            EXPECT_EQ(Full(z), Full(y));
            ExpectConsistent(z);
        }
    }
}

TEST(KwSparseRectMatrixInterface, RefusesBadArguments) {
    const KwSparseRectMatrix sparse = RandomSparse(3, 4, 1);
    Vector out = {7.5};
    KwRectMatrix target(1, 1, true);
    EXPECT_FALSE(sparse.ComputeRV({1, 2, 3}, out));
    EXPECT_FALSE(sparse.ComputeVR({1, 2}, out));
    EXPECT_EQ(out, Vector{7.5});
    EXPECT_FALSE(sparse.ComputeMatrixProduct(RandomRect(3, 3, 1), target));
    EXPECT_FALSE(sparse.ComputeProductMatrixTrans(RandomRect(3, 3, 1), target));
    EXPECT_FALSE(sparse.CreateBlockDiagonal(0, target));
    EXPECT_FALSE(sparse.ExtractRows({3}, target));
    EXPECT_FALSE(sparse.ExtractColumns({4}, target));
    EXPECT_EQ(target.GetNRows(), 1);
    EXPECT_EQ(sparse.DotProductRowCol(0, RandomRect(3, 3, 1), 0), 0.0);
    EXPECT_EQ(sparse.DotProductRowRow(0, RandomRect(3, 3, 1), 0), 0.0);
}

TEST(KwSparseRectMatrixInterface, InfinitiesOfTheOtherFactorReachRowsWithoutElements) {
    const KwSparseRectMatrix sparse = RandomSparse(4, 3, 1);
    const KwRectMatrix dense = Dense(sparse);
    for (const double value : {kNaN, std::numeric_limits<double>::infinity()}) {
        KwRectMatrix b = RandomRect(3, 2, 2), x, y;
        b.SetElem(1, 1, value);
        EXPECT_TRUE(sparse.ComputeMatrixProduct(b, x) && dense.ComputeMatrixProduct(b, y));
        for (int i = 0; i < 4; ++i) {
            EXPECT_EQ(x.GetElem(i, 0), y.GetElem(i, 0));
            EXPECT_EQ(std::isnan(x.GetElem(i, 1)), std::isnan(y.GetElem(i, 1)));
        }
    }
}

TEST(KwSparseRectMatrixRows, DenseElementsReplaceTheWholeMatrix) {
    KwSparseRectMatrix matrix = RandomSparse(4, 3, 1);
    const double elements[] = {0, 1.5, kNaN, 0, -0.0, 2.5};
    EXPECT_TRUE(matrix.SetToRows(2, 3, elements));
    EXPECT_EQ(matrix.GetNNZRowElements(), (std::vector<int>{2, 1}));
    EXPECT_EQ(matrix.GetElem(1, 2), 2.5);
    EXPECT_TRUE(std::isnan(matrix.GetElem(0, 2)));
    EXPECT_TRUE(matrix.SetToRows(0, 2, nullptr));
    EXPECT_EQ(matrix.GetNRows(), 0);
    EXPECT_EQ(matrix.GetNCols(), 2);
    ExpectConsistent(matrix);
}

}  // namespace
