// The dumps of the dense symmetric matrix, character by character.
#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "numerics/matrix/KwSymMatrix.h"
#include "numerics/power/KwMV.h"
#include "tests/numerics/display/DumpCapture.h"
#include "tests/numerics/matrix/symmetric_samples.h"

namespace {

using KwMath_930::KwSymMatrix;
using symmetric_samples::FromPacked;

class KwSymMatrixDisplay : public ::testing::Test {
protected:
    DumpCapture dump;
};

KwSymMatrix ShownSample() {
    return FromPacked(2, {0.1, -2.385, KwCommon_930::KwMV::Missing()});
}

TEST_F(KwSymMatrixDisplay, ShowsCountsAndLowerTriangle) {
    KwSymMatrix matrix = ShownSample();
    ASSERT_TRUE(matrix.SetNBlocks(2));
    matrix.Display();
    EXPECT_EQ(dump.Take(),
              "\nKwSymMatrix display start"
              "\nThe number of rows = 2"
              "\nThe number of blocks = 2"
              "\nThe block size = 1"
              "\nLower triangular (number of elements = 3, number of rows = 2)\nrow 0: 0.1\nrow 1: -2.385 miss"
              "\nKwSymMatrix display end");
}

TEST_F(KwSymMatrixDisplay, FullFormShowsEveryRowInFullPrecision) {
    ShownSample().DisplayF();
    EXPECT_EQ(dump.Take(),
              "\nKwSymMatrix full matrix display start"
              "\nNumber of rows = 2"
              "\nrow 0:  (size = 2) 0.10000000000000001 -2.3849999999999998"
              "\nrow 1:  (size = 2) -2.3849999999999998 miss"
              "\nKwSymMatrix display end");
}

TEST_F(KwSymMatrixDisplay, ShortFormShowsOnlyTheTriangle) {
    ShownSample().DisplayS();
    EXPECT_EQ(dump.Take(), "\n (number of elements = 3, number of rows = 2)\nrow 0: 0.1\nrow 1: -2.385 miss");
}

TEST_F(KwSymMatrixDisplay, EmptyAndInvalidMatricesAreShownAsSuch) {
    KwSymMatrix().Display();
    EXPECT_EQ(dump.Take(),
              "\nKwSymMatrix display start\nThe number of rows = 0\nThe number of blocks = 0\nThe block size = 0"
              "\nLower triangular (number of elements = 0, number of rows = 0)\nKwSymMatrix display end");
    const KwSymMatrix invalid(std::numeric_limits<int>::max(), true);
    invalid.Display();
    EXPECT_EQ(dump.Take(),
              "\nKwSymMatrix display start\nThe number of rows = -1\nThe number of blocks = 1"
              "\nThe block size = 2147483647\nLower triangular (number of elements = 0, number of rows = 0)"
              "\nKwSymMatrix display end");
    invalid.DisplayF();
    EXPECT_EQ(dump.Take(), "\nKwSymMatrix full matrix display start\nNumber of rows = -1\nKwSymMatrix display end");
}

class RowRecorder : public KwSymMatrix {
public:
    using KwSymMatrix::KwSymMatrix;
    bool GetRow(int i, std::vector<double>& row) const override {
        rows.push_back(i);
        row = {10.5 + i};
        return true;
    }
    mutable std::vector<int> rows;
};

TEST_F(KwSymMatrixDisplay, FullFormFetchesEachRowOnceByTheVirtualGetRow) {
    const RowRecorder matrix(3, true);
    matrix.DisplayF();
    EXPECT_EQ(matrix.rows, (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(dump.Take(),
              "\nKwSymMatrix full matrix display start\nNumber of rows = 3\nrow 0:  (size = 1) 10.5"
              "\nrow 1:  (size = 1) 11.5\nrow 2:  (size = 1) 12.5\nKwSymMatrix display end");
}

}  // namespace
