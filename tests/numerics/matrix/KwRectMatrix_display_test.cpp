// The dumps of the rectangular and the block-diagonal matrices, character by character.
#include <gtest/gtest.h>

#include <limits>

#include "numerics/power/KwMV.h"
#include "tests/numerics/display/DumpCapture.h"
#include "tests/numerics/matrix/matrix_samples.h"

namespace {

using KwMath_930::KwBitSet;
using KwMath_930::KwRectMatrix;
using KwMath_930::KwSparseRectMatrix;
using KwMath_930::KwSymBlockDiagMatrix;

class MatrixDisplay : public ::testing::Test {
protected:
    DumpCapture dump;
};

KwRectMatrix Sample() {
    KwRectMatrix matrix(2, 2, true);
    matrix.AsVector() = {0.1, -2.385, KwCommon_930::KwMV::Missing(), 0};
    return matrix;
}

TEST_F(MatrixDisplay, RectangularRowsHaveTwoBlanksBeforeTheirNumber) {
    Sample().Display();
    EXPECT_EQ(dump.Take(),
              "\nKwRectMatrix display start\nNumber of rows = 2\nNumber of columns = 2"
              "\nrow  0:  (size = 2) 0.1 -2.385\nrow  1:  (size = 2) miss 0"
              "\nKwRectMatrix display end");
}

TEST_F(MatrixDisplay, RectangularFullFormHasOneBlankAndFullPrecision) {
    Sample().DisplayF();
    EXPECT_EQ(dump.Take(),
              "\nKwRectMatrix full matrix display start\nNumber of rows = 2\nNumber of columns = 2"
              "\nrow 0:  (size = 2) 0.10000000000000001 -2.3849999999999998\nrow 1:  (size = 2) miss 0"
              "\nKwRectMatrix display end");
}

TEST_F(MatrixDisplay, InvalidRectangularMatrixShowsItsCounts) {
    KwRectMatrix(std::numeric_limits<int>::max(), std::numeric_limits<int>::max(), true).Display();
    EXPECT_EQ(dump.Take(),
              "\nKwRectMatrix display start\nNumber of rows = -1\nNumber of columns = -1\nKwRectMatrix display end");
}

TEST_F(MatrixDisplay, SparseRowsShowColumnsAndValues) {
    KwSparseRectMatrix matrix(2, 3);
    matrix.SetElem(0, 2, 1.5);
    matrix.SetElem(0, 1, 0.1);
    matrix.Display();
    EXPECT_EQ(dump.Take(),
              "\nKwSparseRectMatrix display start\nNumber of rows = 2\nNumber of columns = 3"
              "\nNumber of stored elements = 2"
              "\nrow 0 columns:  (size = 2) 1 2\nrow 0 values:  (size = 2) 0.1 1.5"
              "\nrow 1 columns:  (size = 0)\nrow 1 values:  (size = 0)"
              "\nKwSparseRectMatrix display end");
    matrix.DisplayF();
    EXPECT_EQ(dump.Take(),
              "\nKwSparseRectMatrix full matrix display start\nNumber of rows = 2\nNumber of columns = 3"
              "\nrow 0:  (size = 3) 0 0.10000000000000001 1.5\nrow 1:  (size = 3) 0 0 0"
              "\nKwSparseRectMatrix display end");
}

TEST_F(MatrixDisplay, BlocksAreShownByTheirKind) {
    KwBitSet isDiagonal(2);
    isDiagonal.Set(1, true);
    KwSymBlockDiagMatrix matrix({2, 1}, isDiagonal);
    matrix.SetElem(1, 0, 0.1);
    matrix.SetElem(2, 2, 2.5);
    matrix.Display();
    EXPECT_EQ(dump.Take(),
              "\nKwSymBlockDiagMatrix display start\nThe number of rows = 3\nThe number of blocks = 2"
              "\ndense block 0:  (number of elements = 3, number of rows = 2)\nrow 0: 0\nrow 1: 0.1 0"
              "\ndiagonal block 1:  (size = 1) 2.5"
              "\nKwSymBlockDiagMatrix display end");
    matrix.DisplayF();
    EXPECT_EQ(dump.Take(),
              "\nKwSymBlockDiagMatrix full matrix display start\nNumber of rows = 3"
              "\nrow 0:  (size = 3) 0 0.10000000000000001 0\nrow 1:  (size = 3) 0.10000000000000001 0 0"
              "\nrow 2:  (size = 3) 0 0 2.5"
              "\nKwSymBlockDiagMatrix display end");
}

}  // namespace
