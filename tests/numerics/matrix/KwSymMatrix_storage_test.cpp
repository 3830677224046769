// Construction, copies, sizes, blocks and row removal of the dense symmetric matrix, and storage that cannot be had.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <vector>

#include "numerics/matrix/KwSymMatrix.h"
#include "numerics/matrix/packed_triangle.h"
#include "tests/numerics/matrix/symmetric_samples.h"
#include "tests/numerics/special_values.h"

namespace {

using KwMath_930::IKwSymMatrix;
using KwMath_930::KwSymMatrix;
using symmetric_samples::FromPacked;
using symmetric_samples::kOrders;
using symmetric_samples::RandomMatrix;
using symmetric_samples::Square;
using symmetric_samples::ToSquare;
using Vector = std::vector<double>;

using numerics_samples::kMaxInt;

void ExpectShape(const KwSymMatrix& matrix, int nRows, int nBlocks, int blockSize) {
    EXPECT_EQ(matrix.GetNRows(), nRows);
    EXPECT_EQ(matrix.GetNBlocks(), nBlocks);
    EXPECT_EQ(matrix.GetBlockSize(), blockSize);
    EXPECT_EQ(matrix.IsValidMatrix(), nRows >= 0);
    const std::size_t order = nRows > 0 ? static_cast<std::size_t>(nRows) : 0;
    EXPECT_EQ(matrix.AsVectorConst().size(), order * (order + 1) / 2);
}

TEST(PackedTriangle, SharesOneIndexBetweenAPairAndItsMirror) {
    namespace packed = KwMath_930::packed_triangle;
    EXPECT_EQ(packed::Index(0, 2), 3u);
    EXPECT_EQ(packed::Index(2, 0), 3u);
    EXPECT_EQ(packed::Index(2, 2), 5u);
    EXPECT_EQ(packed::RowStart(3), 6u);
    EXPECT_EQ(packed::Size(0), 0u);
    EXPECT_EQ(packed::Size(-1), 0u);
}

TEST(PackedTriangle, IndicesOfTheLargestOrderDoNotOverflow) {
    namespace packed = KwMath_930::packed_triangle;
    EXPECT_EQ(packed::Size(kMaxInt), 2305843008139952128u);
    EXPECT_EQ(packed::Index(kMaxInt - 1, kMaxInt - 1), 2305843008139952127u);
}

TEST(KwSymMatrixConstruct, DefaultIsEmptyWithoutBlocks) {
    ExpectShape(KwSymMatrix(), 0, 0, 0);
}

TEST(KwSymMatrixConstruct, CountBelowOneGivesAnEmptyMatrixWithoutBlocks) {
    ExpectShape(KwSymMatrix(0, 5, true), 0, 0, 0);
    ExpectShape(KwSymMatrix(3, 0, true), 0, 0, 0);
    ExpectShape(KwSymMatrix(-2, -3, false), 0, 0, 0);
}

TEST(KwSymMatrixConstruct, ThreeBlocksOfTwoHaveSixRowsAndTwentyOneElements) {
    const KwSymMatrix matrix(3, 2, false);
    ExpectShape(matrix, 6, 3, 2);
    EXPECT_EQ(matrix.AsVectorConst().size(), 21u);
}

TEST(KwSymMatrixConstruct, NegativeOrderGivesAnEmptyValidMatrixWithOneBlock) {
    ExpectShape(KwSymMatrix(-4, true), 0, 1, 0);
    ExpectShape(KwSymMatrix(0, false), 0, 1, 0);
}

TEST(KwSymMatrixConstruct, ElementsAreZero) {
    for (const bool zero : {true, false}) {
        const KwSymMatrix matrix(4, zero);
        ExpectShape(matrix, 4, 1, 4);
        EXPECT_EQ(matrix.AsVectorConst(), Vector(10, 0.0));
        EXPECT_EQ(KwSymMatrix(2, 2, zero).AsVectorConst(), Vector(10, 0.0));
    }
}

TEST(KwSymMatrixConstruct, OrderBeyondAnyMemoryIsInvalid) {
    ExpectShape(KwSymMatrix(kMaxInt, true), -1, 1, kMaxInt);
    ExpectShape(KwSymMatrix(65536, 65536, true), -1, 65536, 65536);
    ExpectShape(KwSymMatrix(kMaxInt, kMaxInt, false), -1, kMaxInt, kMaxInt);
}

TEST(KwSymMatrixCopy, TakesCountsAndDataDeeply) {
    KwSymMatrix source = RandomMatrix(6, 11);
    ASSERT_TRUE(source.SetNBlocks(3));
    KwSymMatrix copy(source);
    ExpectShape(copy, 6, 3, 2);
    EXPECT_EQ(copy.AsVectorConst(), source.AsVectorConst());
    copy.SetElem(0, 2.385);
    EXPECT_NE(copy.GetElem(0), source.GetElem(0));
}

TEST(KwSymMatrixCopy, AssignmentGrowsShrinksAndRepeats) {
    KwSymMatrix target = RandomMatrix(3, 1);
    for (const int order : {7, 2, 2, 0, 5}) {
        const KwSymMatrix source = RandomMatrix(order, 23);
        target = source;
        target = source;
        ExpectShape(target, order, 1, order);
        EXPECT_EQ(target.AsVectorConst(), source.AsVectorConst());
    }
}

TEST(KwSymMatrixCopy, AssignmentToItselfDoesNothing) {
    KwSymMatrix matrix = RandomMatrix(5, 3);
    const Vector before = matrix.AsVectorConst();
    const KwSymMatrix& alias = matrix;
    matrix = alias;
    ExpectShape(matrix, 5, 1, 5);
    EXPECT_EQ(matrix.AsVectorConst(), before);
}

TEST(KwSymMatrixCopy, CopyOfAnInvalidMatrixIsInvalid) {
    const KwSymMatrix invalid(kMaxInt, true);
    KwSymMatrix target = RandomMatrix(4, 9);
    target = invalid;
    ExpectShape(target, -1, 1, kMaxInt);
    ExpectShape(KwSymMatrix(invalid), -1, 1, kMaxInt);
    target = RandomMatrix(2, 9);
    ExpectShape(target, 2, 1, 2);
}

TEST(KwSymMatrixCopy, MatrixIsDeletedThroughItsInterface) {
    const std::unique_ptr<IKwSymMatrix> matrix = std::make_unique<KwSymMatrix>(17, true);
    EXPECT_EQ(matrix->GetNRows(), 17);
}

TEST(KwSymMatrixResizeNRows, KeepsLeadingElementsAndZeroesNewOnes) {
    Vector data = {2.5, -1.25, 7.0};
    int nRows = 3;
    EXPECT_TRUE(KwSymMatrix::ResizeNRows(data, nRows));
    EXPECT_EQ(nRows, 3);
    EXPECT_EQ(data, (Vector{2.5, -1.25, 7.0, 0, 0, 0}));
    nRows = 1;
    EXPECT_TRUE(KwSymMatrix::ResizeNRows(data, nRows));
    EXPECT_EQ(data, Vector{2.5});
}

TEST(KwSymMatrixResizeNRows, ZeroRowsSucceedWithEmptyStorage) {
    Vector data = {2.5};
    int nRows = 0;
    EXPECT_TRUE(KwSymMatrix::ResizeNRows(data, nRows));
    EXPECT_EQ(nRows, 0);
    EXPECT_TRUE(data.empty());
}

TEST(KwSymMatrixResizeNRows, NegativeRowsFailWithEmptyStorageAndKeepTheirNumber) {
    Vector data = {2.5};
    int nRows = -5;
    EXPECT_FALSE(KwSymMatrix::ResizeNRows(data, nRows));
    EXPECT_EQ(nRows, -5);
    EXPECT_TRUE(data.empty());
}

TEST(KwSymMatrixResizeNRows, FailedAllocationGivesMinusOneAndEmptyStorage) {
    Vector data = {2.5, 1, 2};
    int nRows = kMaxInt;
    EXPECT_FALSE(KwSymMatrix::ResizeNRows(data, nRows));
    EXPECT_EQ(nRows, -1);
    EXPECT_TRUE(data.empty());
}

TEST(KwSymMatrixResizeNCopy, CopiesAndAcceptsItself) {
    Vector target = {9, 9, 9, 9};
    const Vector source = {2.385, -1};
    EXPECT_TRUE(KwSymMatrix::ResizeNCopy(target, source));
    EXPECT_EQ(target, source);
    EXPECT_TRUE(KwSymMatrix::ResizeNCopy(target, target));
    EXPECT_EQ(target, source);
    EXPECT_TRUE(KwSymMatrix::ResizeNCopy(target, Vector()));
    EXPECT_TRUE(target.empty());
}

TEST(KwSymMatrixResize, KeepsOldElementsAndAddsZeros) {
    KwSymMatrix matrix = FromPacked(2, {1.5, 2.5, 3.5});
    EXPECT_TRUE(matrix.Resize(3));
    ExpectShape(matrix, 3, 1, 3);
    EXPECT_EQ(matrix.AsVectorConst(), (Vector{1.5, 2.5, 3.5, 0, 0, 0}));
    EXPECT_TRUE(matrix.Resize(1));
    EXPECT_EQ(matrix.AsVectorConst(), Vector{1.5});
}

TEST(KwSymMatrixResize, NegativeOrderGivesAValidEmptyMatrixWithOneBlock) {
    KwSymMatrix matrix = RandomMatrix(4, 5);
    EXPECT_TRUE(matrix.Resize(-1));
    ExpectShape(matrix, 0, 1, 0);
}

TEST(KwSymMatrixResize, DropsTheBlocks) {
    KwSymMatrix matrix(3, 2, true);
    EXPECT_TRUE(matrix.Resize(6));
    ExpectShape(matrix, 6, 1, 6);
}

TEST(KwSymMatrixResize, FailureMakesInvalidAndASmallerSizeValidAgain) {
    KwSymMatrix matrix = RandomMatrix(3, 5);
    EXPECT_FALSE(matrix.Resize(kMaxInt));
    ExpectShape(matrix, -1, 1, kMaxInt);
    EXPECT_TRUE(matrix.Resize(2));
    ExpectShape(matrix, 2, 1, 2);
    EXPECT_EQ(matrix.AsVectorConst(), Vector(3, 0.0));
}

TEST(KwSymMatrixSetNRows, NegativeOrderGivesZeroBlocks) {
    KwSymMatrix matrix = RandomMatrix(4, 5);
    EXPECT_TRUE(matrix.SetNRows(-1, false));
    ExpectShape(matrix, 0, 0, 0);
    EXPECT_TRUE(matrix.SetNRows(0, true));
    ExpectShape(matrix, 0, 1, 0);
}

TEST(KwSymMatrixSetNRows, ClearsOnlyWhenAsked) {
    KwSymMatrix matrix = FromPacked(2, {1.5, 2.5, 3.5});
    EXPECT_TRUE(matrix.SetNRows(3, false));
    EXPECT_EQ(matrix.AsVectorConst(), (Vector{1.5, 2.5, 3.5, 0, 0, 0}));
    EXPECT_TRUE(matrix.SetNRows(2, true));
    EXPECT_EQ(matrix.AsVectorConst(), Vector(3, 0.0));
    EXPECT_FALSE(matrix.SetNRows(kMaxInt, true));
    ExpectShape(matrix, -1, 1, kMaxInt);
}

class ClearCounter : public KwSymMatrix {
public:
    using KwSymMatrix::KwSymMatrix;
    void Clear() override { ++cleared; }
    int cleared = 0;
};

TEST(KwSymMatrixSetNRows, CallsTheVirtualClearOnceAfterASuccessfulResize) {
    ClearCounter matrix(2, true);
    matrix.SetNRows(3, true);
    EXPECT_EQ(matrix.cleared, 1);
    matrix.SetNRows(3, false);
    EXPECT_EQ(matrix.cleared, 1);
    matrix.SetNRows(kMaxInt, true);
    EXPECT_EQ(matrix.cleared, 1);
}

TEST(KwSymMatrixClear, ZeroesEveryElementAndKeepsTheSize) {
    KwSymMatrix matrix = RandomMatrix(6, 4);
    ASSERT_TRUE(matrix.SetNBlocks(2));
    matrix.Clear();
    ExpectShape(matrix, 6, 2, 3);
    EXPECT_EQ(matrix.AsVectorConst(), Vector(21, 0.0));
}

TEST(KwSymMatrixSetNBlocks, RefusesWhatDoesNotDivideTheRows) {
    KwSymMatrix matrix(6, true);
    for (const int nBlocks : {4, 0, -1, 7, kMaxInt}) {
        EXPECT_FALSE(matrix.SetNBlocks(nBlocks)) << nBlocks;
        ExpectShape(matrix, 6, 1, 6);
    }
    EXPECT_TRUE(matrix.SetNBlocks(3));
    ExpectShape(matrix, 6, 3, 2);
}

TEST(KwSymMatrixSetNBlocks, RefusesAnEmptyMatrix) {
    KwSymMatrix matrix;
    EXPECT_FALSE(matrix.SetNBlocks(1));
    ExpectShape(matrix, 0, 0, 0);
    KwSymMatrix invalid(kMaxInt, true);
    EXPECT_FALSE(invalid.SetNBlocks(1));
}

TEST(KwSymMatrixDeleteOneRow, LeavesTheBlockCountAndSetsTheBlockSize) {
    KwSymMatrix matrix = FromPacked(3, {0.5, 10.5, 11.5, 20.5, 21.5, 22.5});
    ASSERT_TRUE(matrix.SetNBlocks(3));
    EXPECT_TRUE(matrix.DeleteOneRow(1));
    ExpectShape(matrix, 2, 3, 2);
    EXPECT_EQ(matrix.AsVectorConst(), (Vector{0.5, 20.5, 22.5}));
}

TEST(KwSymMatrixDeleteOneRow, AgreesWithTheSquareForEveryRow) {
    for (const int order : kOrders) {
        for (int i = 0; i < order; ++i) {
            KwSymMatrix matrix = RandomMatrix(order, 77);
            Square expected = ToSquare(matrix);
            expected.erase(expected.begin() + i);
            for (Vector& row : expected) {
                row.erase(row.begin() + i);
            }
            EXPECT_TRUE(matrix.DeleteOneRow(i));
            ExpectShape(matrix, order - 1, 1, order - 1);
            EXPECT_EQ(ToSquare(matrix), expected) << order << " " << i;
        }
    }
}

TEST(KwSymMatrixDeleteOneRow, RefusesABadIndex) {
    KwSymMatrix matrix = RandomMatrix(3, 2);
    const Vector before = matrix.AsVectorConst();
    EXPECT_FALSE(matrix.DeleteOneRow(-1));
    EXPECT_FALSE(matrix.DeleteOneRow(3));
    ExpectShape(matrix, 3, 1, 3);
    EXPECT_EQ(matrix.AsVectorConst(), before);
    EXPECT_FALSE(KwSymMatrix().DeleteOneRow(0));
    EXPECT_FALSE(KwSymMatrix(kMaxInt, true).DeleteOneRow(0));
}

}  // namespace
