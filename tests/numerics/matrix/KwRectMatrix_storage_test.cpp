// Construction, sizes, copies, rows and elements of the rectangular matrix.
#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "numerics/matrix/KwSparseVector.h"
#include "tests/numerics/matrix/matrix_samples.h"
#include "tests/numerics/special_values.h"

namespace {

using KwMath_930::KwRectMatrix;
using KwMath_930::KwSparseVector;
using matrix_samples::Full;
using matrix_samples::RandomRect;
using matrix_samples::Square;
using matrix_samples::Vector;

using numerics_samples::kNaN;
constexpr int kBeyondMemory = std::numeric_limits<int>::max();

void ExpectSize(const KwRectMatrix& matrix, int nRows, int nCols) {
    EXPECT_EQ(matrix.GetNRows(), nRows);
    EXPECT_EQ(matrix.GetNCols(), nCols);
    EXPECT_EQ(matrix.IsValidMatrix(), nRows >= 0);
    EXPECT_EQ(matrix.AsVectorConst().size(), static_cast<std::size_t>(nRows > 0 && nCols > 0 ? nRows * nCols : 0));
}

TEST(KwRectMatrixStorage, ConstructorsTakeNegativeCountsAsZero) {
    ExpectSize(KwRectMatrix(), 0, 0);
    ExpectSize(KwRectMatrix(-2, 3, true), 0, 3);
    ExpectSize(KwRectMatrix(2, -3, false), 2, 0);
    const KwRectMatrix matrix(2, 3, true);
    ExpectSize(matrix, 2, 3);
    EXPECT_EQ(matrix.AsVectorConst(), Vector(6, 0.0));
}

TEST(KwRectMatrixStorage, SizesBeyondMemoryMakeAnInvalidMatrixThatCanBeUsedAgain) {
    KwRectMatrix matrix(kBeyondMemory, kBeyondMemory, true);
    ExpectSize(matrix, -1, -1);
    EXPECT_EQ(matrix.AddRow(), -1);
    EXPECT_EQ(matrix.AddRow(KwSparseVector()), -1);
    KwRectMatrix copy(matrix);
    ExpectSize(copy, -1, -1);
    EXPECT_TRUE(matrix.Resize(2, 2));
    ExpectSize(matrix, 2, 2);
    EXPECT_FALSE(matrix.SetNRowsCols(kBeyondMemory, kBeyondMemory, true));
    ExpectSize(matrix, -1, -1);
    matrix = RandomRect(3, 2, 1);
    ExpectSize(matrix, 3, 2);
}

TEST(KwRectMatrixStorage, CopiesAreDeep) {
    const KwRectMatrix source = RandomRect(3, 2, 1);
    KwRectMatrix copy(source);
    copy.SetElem(1, 1, 7.5);
    EXPECT_NE(source.GetElem(1, 1), 7.5);
    copy = source;
    EXPECT_EQ(Full(copy), Full(source));
    KwRectMatrix& self = copy;
    copy = self;
    EXPECT_EQ(Full(copy), Full(source));
    copy = KwRectMatrix(0, 5, true);
    ExpectSize(copy, 0, 5);
}

TEST(KwRectMatrixStorage, ResizeKeepsTheStoredElementsInTheirOrder) {
    KwRectMatrix matrix(2, 3, true);
    matrix.AsVector() = {1, 2, 3, 4, 5, 6};
    EXPECT_TRUE(matrix.Resize(3, 3));
    EXPECT_EQ(matrix.AsVectorConst(), (Vector{1, 2, 3, 4, 5, 6, 0, 0, 0}));
    EXPECT_TRUE(matrix.Resize(2, 2));
    EXPECT_EQ(Full(matrix), (Square{{1, 2}, {3, 4}}));
    EXPECT_TRUE(matrix.Resize(2, 0));
    ExpectSize(matrix, 2, 0);
    EXPECT_TRUE(matrix.Resize(-1, 4));
    ExpectSize(matrix, 0, 4);
}

class WatchedClear : public KwRectMatrix {
public:
    void Clear() override {
        ++clears;
        KwRectMatrix::Clear();
    }
    int clears = 0;
};

TEST(KwRectMatrixStorage, SetNRowsColsClearsThroughTheVirtualOperationWhenAsked) {
    WatchedClear matrix;
    EXPECT_TRUE(matrix.SetNRowsCols(2, 2, false));
    EXPECT_EQ(matrix.clears, 0);
    matrix.AsVector() = {1, 2, 3, 4};
    EXPECT_TRUE(matrix.SetNRowsCols(2, 2, true));
    EXPECT_EQ(matrix.clears, 1);
    EXPECT_EQ(matrix.AsVectorConst(), Vector(4, 0.0));
    EXPECT_FALSE(matrix.SetNRowsCols(kBeyondMemory, kBeyondMemory, true));
    EXPECT_EQ(matrix.clears, 1);
}

TEST(KwRectMatrixStorage, ResizeNRowsColsReportsTheSizeItReached) {
    Vector data = {1.5};
    int nRows = 2, nCols = 0;
    EXPECT_TRUE(KwRectMatrix::ResizeNRowsCols(data, nRows, nCols));
    EXPECT_TRUE(data.empty());
    nCols = 2;
    EXPECT_TRUE(KwRectMatrix::ResizeNRowsCols(data, nRows, nCols));
    EXPECT_EQ(data, Vector(4, 0.0));
    nRows = -3;
    EXPECT_FALSE(KwRectMatrix::ResizeNRowsCols(data, nRows, nCols));
    EXPECT_TRUE(data.empty());
    EXPECT_EQ(nRows, -3);
    nRows = nCols = kBeyondMemory;
    EXPECT_FALSE(KwRectMatrix::ResizeNRowsCols(data, nRows, nCols));
    EXPECT_EQ(nRows, -1);
    EXPECT_EQ(nCols, -1);
}

TEST(KwRectMatrixAddRow, GrowsByZerosOrByASparseVector) {
    KwRectMatrix matrix(0, 3, true);
    EXPECT_EQ(matrix.AddRow(), 1);
    EXPECT_EQ(matrix.AddRow(KwSparseVector({2, 0, 2}, {1.5, 2.5, 0.25})), 2);
    EXPECT_EQ(Full(matrix), (Square{{0, 0, 0}, {2.5, 0, 1.75}}));
    EXPECT_EQ(matrix.AddRow(KwSparseVector({3}, {1.5})), -1);
    EXPECT_EQ(matrix.AddRow(KwSparseVector({-1}, {1.5})), -1);
    EXPECT_EQ(matrix.GetNRows(), 2);
    KwRectMatrix narrow(2, 0, true);
    EXPECT_EQ(narrow.AddRow(), 3);
    ExpectSize(narrow, 3, 0);
}

TEST(KwRectMatrixAccess, RowsAndColumns) {
    const KwRectMatrix matrix = RandomRect(3, 4, 1);
    for (int i = 0; i < 3; ++i) {
        Vector row(1);
        EXPECT_TRUE(matrix.GetRow(i, row));
        EXPECT_EQ(row, Full(matrix)[static_cast<std::size_t>(i)]);
    }
    for (int j = 0; j < 4; ++j) {
        Vector column(7, 2.5), longer(5, 2.5);
        EXPECT_TRUE(matrix.GetCol(j, column));
        ASSERT_EQ(column.size(), 3u);
        EXPECT_TRUE(matrix.CopyColToVec(j, longer));
        EXPECT_EQ(longer.size(), 5u);
        EXPECT_EQ(longer[3], 2.5);
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(column[static_cast<std::size_t>(i)], matrix.GetElem(i, j));
            EXPECT_EQ(longer[static_cast<std::size_t>(i)], matrix.GetElem(i, j));
        }
    }
    Vector v = {7.5};
    EXPECT_FALSE(matrix.GetRow(3, v));
    EXPECT_FALSE(matrix.GetRow(-1, v));
    EXPECT_FALSE(matrix.GetCol(4, v));
    EXPECT_FALSE(matrix.GetCol(-1, v));
    EXPECT_FALSE(matrix.CopyColToVec(4, v));
    EXPECT_EQ(v, Vector{7.5});
    EXPECT_TRUE(matrix.CopyColToVec(1, v));
    EXPECT_EQ(v.size(), 3u);
}

TEST(KwRectMatrixAccess, ZeroRowsHoldNoNaN) {
    KwRectMatrix matrix(2, 2, true);
    EXPECT_TRUE(matrix.IsRowZero(0));
    matrix.SetElem(0, 1, -0.0);
    EXPECT_TRUE(matrix.IsRowZero(0));
    matrix.SetElem(0, 1, kNaN);
    EXPECT_FALSE(matrix.IsRowZero(0));
    matrix.SetElem(1, 0, 1e-300);
    EXPECT_FALSE(matrix.IsRowZero(1));
    EXPECT_FALSE(matrix.IsRowZero(2));
    EXPECT_FALSE(matrix.IsRowZero(-1));
    EXPECT_FALSE(KwRectMatrix(2, 0, true).IsRowZero(0));
}

TEST(KwRectMatrixAccess, SetRowReplacesTheWholeRow) {
    KwRectMatrix matrix = RandomRect(2, 3, 1);
    const Square before = Full(matrix);
    EXPECT_TRUE(matrix.SetRow(1, KwSparseVector({1}, {2.5})));
    EXPECT_EQ(Full(matrix), (Square{before[0], {0, 2.5, 0}}));
    EXPECT_FALSE(matrix.SetRow(2, KwSparseVector({1}, {2.5})));
    EXPECT_FALSE(matrix.SetRow(-1, KwSparseVector({1}, {2.5})));
    EXPECT_FALSE(matrix.SetRow(0, KwSparseVector({3}, {2.5})));
    EXPECT_EQ(Full(matrix), (Square{before[0], {0, 2.5, 0}}));
}

TEST(KwRectMatrixAccess, ZeroOutRowPart) {
    KwRectMatrix matrix(2, 4, true);
    matrix.AsVector() = {1, 2, 3, 4, 5, 6, 7, 8};
    EXPECT_TRUE(matrix.ZeroOutRowPart(1, 1, 2));
    EXPECT_TRUE(matrix.ZeroOutRowPart(0, 4, 0));
    EXPECT_EQ(matrix.AsVectorConst(), (Vector{1, 2, 3, 4, 5, 0, 0, 8}));
    EXPECT_FALSE(matrix.ZeroOutRowPart(0, 3, 2));
    EXPECT_FALSE(matrix.ZeroOutRowPart(0, -1, 2));
    EXPECT_FALSE(matrix.ZeroOutRowPart(0, 1, -1));
    EXPECT_FALSE(matrix.ZeroOutRowPart(0, 1, kBeyondMemory));
    EXPECT_FALSE(matrix.ZeroOutRowPart(2, 0, 1));
    EXPECT_EQ(matrix.AsVectorConst(), (Vector{1, 2, 3, 4, 5, 0, 0, 8}));
}

TEST(KwRectMatrixAccess, IncrVecByColumn) {
    const KwRectMatrix matrix = RandomRect(3, 2, 1);
    for (const int inc : {1, 2, -2, 0}) {
        const int offset = inc < 0 ? 5 : 1;
        Vector v(7, 2.5), expected(v);
        for (int k = 0; k < 3; ++k) {
            expected[static_cast<std::size_t>(offset + k * inc)] += 1.75 * matrix.GetElem(k, 1);
        }
        EXPECT_TRUE(matrix.IncrVecByColumn(1, v, offset, inc, 1.75, true));
        EXPECT_EQ(v, expected);
    }
    Vector v(3, 2.5);
    EXPECT_FALSE(matrix.IncrVecByColumn(2, v, 0, 1, 1.75, false));
    EXPECT_FALSE(matrix.IncrVecByColumn(0, v, 1, 1, 1.75, true));
    EXPECT_FALSE(matrix.IncrVecByColumn(0, v, 1, -1, 1.75, true));
    EXPECT_EQ(v, Vector(3, 2.5));
}

}  // namespace
