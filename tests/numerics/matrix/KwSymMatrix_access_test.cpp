// Element, row and diagonal access of the dense symmetric matrix, against the full square.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include "numerics/matrix/KwSymMatrix.h"
#include "tests/numerics/matrix/symmetric_samples.h"
#include "tests/numerics/special_values.h"

namespace {

using KwMath_930::KwSymMatrix;
using symmetric_samples::FromPacked;
using symmetric_samples::kOrders;
using symmetric_samples::RandomMatrix;
using symmetric_samples::RandomVector;
using symmetric_samples::Square;
using symmetric_samples::ToSquare;
using Vector = std::vector<double>;

using numerics_samples::kMaxInt;

TEST(KwSymMatrixElem, PairAndMirrorReadTheSameStoredIndex) {
    KwSymMatrix matrix = FromPacked(3, {0.5, 1.5, 2.5, 3.5, 4.5, 5.5});
    EXPECT_EQ(matrix.GetElem(0, 2), 3.5);
    EXPECT_EQ(matrix.GetElem(2, 0), 3.5);
    EXPECT_TRUE(matrix.SetElem(0, 2, -7.25));
    EXPECT_EQ(matrix.AsVectorConst(), (Vector{0.5, 1.5, 2.5, -7.25, 4.5, 5.5}));
    EXPECT_TRUE(matrix.SetElem(2, 1, 8.75));
    EXPECT_EQ(matrix.GetElem(1, 2), 8.75);
}

TEST(KwSymMatrixElem, EveryPairAgreesWithTheSquare) {
    for (const int order : kOrders) {
        const KwSymMatrix matrix = RandomMatrix(order, 5);
        const Square square = ToSquare(matrix);
        for (int i = 0; i < order; ++i) {
            for (int j = 0; j < order; ++j) {
                EXPECT_EQ(matrix.GetElem(i, j), square[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)]);
            }
        }
    }
}

TEST(KwSymMatrixElem, StoredElementsCountFromZeroAndAreBounded) {
    KwSymMatrix matrix = FromPacked(3, {0.5, 1.5, 2.5, 3.5, 4.5, 5.5});
    const Vector before = matrix.AsVectorConst();
    for (const int k : {6, -1, kMaxInt, -kMaxInt}) {
        EXPECT_FALSE(matrix.SetElem(k, 9.0)) << k;
    }
    EXPECT_EQ(matrix.AsVectorConst(), before);
    EXPECT_TRUE(matrix.SetElem(5, 9.25));
    EXPECT_EQ(matrix.GetElem(5), 9.25);
    EXPECT_EQ(matrix.GetElem(0), 0.5);
    EXPECT_FALSE(KwSymMatrix().SetElem(0, 1.0));
    EXPECT_FALSE(KwSymMatrix(kMaxInt, true).SetElem(0, 1.0));
}

TEST(KwSymMatrixElem, BlockElementIsTheElementAtBlockTimesSizePlusOffset) {
    KwSymMatrix matrix = RandomMatrix(6, 8);
    ASSERT_TRUE(matrix.SetNBlocks(3));
    EXPECT_EQ(matrix.GetElem(2, 1, 0, 1), matrix.GetElem(4, 3));
    EXPECT_EQ(matrix.GetElem(1, 2, 1, 0), matrix.GetElem(3, 4));
    EXPECT_EQ(matrix.GetElem(0, 0, 1, 1), matrix.GetElem(1, 1));
}

class PairRecorder : public KwSymMatrix {
public:
    using KwSymMatrix::GetElem;
    using KwSymMatrix::KwSymMatrix;
    double GetElem(int i, int j) const override {
        pairs.push_back({i, j});
        return 2.385;
    }
    mutable std::vector<std::pair<int, int>> pairs;
};

TEST(KwSymMatrixElem, BlockElementIsReadByTheVirtualPairAccess) {
    const PairRecorder matrix(3, 2, true);
    EXPECT_EQ(matrix.GetElem(2, 1, 1, 0), 2.385);
    ASSERT_EQ(matrix.pairs.size(), 1u);
    EXPECT_EQ(matrix.pairs[0], (std::pair{5, 2}));
}

TEST(KwSymMatrixRow, GetRowIsTheRowOfTheSquare) {
    for (const int order : kOrders) {
        const KwSymMatrix matrix = RandomMatrix(order, 15);
        const Square square = ToSquare(matrix);
        for (int i = 0; i < order; ++i) {
            Vector shorter;
            Vector longer(static_cast<std::size_t>(order) + 3, -1.0);
            EXPECT_TRUE(matrix.GetRow(i, shorter));
            EXPECT_TRUE(matrix.GetRow(i, longer));
            EXPECT_EQ(shorter, square[static_cast<std::size_t>(i)]);
            EXPECT_EQ(longer, square[static_cast<std::size_t>(i)]);
        }
    }
}

TEST(KwSymMatrixRow, GetRowKeepsTheStorageOfAVectorOfTheRightSize) {
    const KwSymMatrix matrix = RandomMatrix(4, 15);
    Vector row(4);
    const double* const storage = row.data();
    EXPECT_TRUE(matrix.GetRow(2, row));
    EXPECT_EQ(row.data(), storage);
}

TEST(KwSymMatrixRow, BadIndexLeavesVectorAndMatrix) {
    KwSymMatrix matrix = RandomMatrix(3, 15);
    const Vector before = matrix.AsVectorConst();
    Vector row = {7.5, 8.5};
    const Vector longEnough(3, 1.0);
    for (const int i : {-1, 3, kMaxInt}) {
        EXPECT_FALSE(matrix.GetRow(i, row));
        EXPECT_FALSE(matrix.PutRow(i, longEnough));
        EXPECT_FALSE(matrix.SetRowColToConst(i, 1.0));
        EXPECT_FALSE(matrix.ZeroOut(i));
    }
    EXPECT_EQ(row, (Vector{7.5, 8.5}));
    EXPECT_EQ(matrix.AsVectorConst(), before);
    EXPECT_FALSE(KwSymMatrix().GetRow(0, row));
    EXPECT_FALSE(KwSymMatrix(kMaxInt, true).GetRow(0, row));
}

// Changes row i of a copy of the square and of the matrix, and expects the two to agree everywhere.
template <class Change>
void ExpectRowChange(int order, int i, double (*value)(const Vector&, std::size_t), Change change) {
    KwSymMatrix matrix = RandomMatrix(order, 31);
    const Vector source = RandomVector(order + 2, 32);
    Square expected = ToSquare(matrix);
    const auto row = static_cast<std::size_t>(i);
    for (std::size_t j = 0; j < expected.size(); ++j) {
        expected[row][j] = expected[j][row] = value(source, j);
    }
    EXPECT_TRUE(change(matrix, source));
    EXPECT_EQ(ToSquare(matrix), expected) << order << " " << i;
}

TEST(KwSymMatrixRow, PutRowChangesRowAndColumnAndNothingElse) {
    for (const int order : kOrders) {
        for (int i = 0; i < order; ++i) {
            ExpectRowChange(
                order, i, [](const Vector& source, std::size_t j) { return source[j]; },
                [i](KwSymMatrix& matrix, const Vector& source) { return matrix.PutRow(i, source); });
        }
    }
}

TEST(KwSymMatrixRow, ConstantAndZeroFillRowAndColumnAndNothingElse) {
    for (const int order : kOrders) {
        for (int i = 0; i < order; ++i) {
            ExpectRowChange(
                order, i, [](const Vector&, std::size_t) { return 2.385; },
                [i](KwSymMatrix& matrix, const Vector&) { return matrix.SetRowColToConst(i, 2.385); });
            ExpectRowChange(
                order, i, [](const Vector&, std::size_t) { return 0.0; },
                [i](KwSymMatrix& matrix, const Vector&) { return matrix.ZeroOut(i); });
        }
    }
}

TEST(KwSymMatrixRow, PutRowRefusesAShortVector) {
    KwSymMatrix matrix = RandomMatrix(3, 15);
    const Vector before = matrix.AsVectorConst();
    EXPECT_FALSE(matrix.PutRow(0, {1.0, 2.0}));
    EXPECT_EQ(matrix.AsVectorConst(), before);
}

TEST(KwSymMatrixRow, NaNAndInfinityPassThrough) {
    KwSymMatrix matrix(3, true);
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_TRUE(matrix.PutRow(1, {std::nan(""), infinity, -infinity}));
    Vector row;
    EXPECT_TRUE(matrix.GetRow(1, row));
    EXPECT_TRUE(std::isnan(row[0]));
    EXPECT_EQ(row[1], infinity);
    EXPECT_EQ(row[2], -infinity);
    EXPECT_EQ(matrix.GetElem(2, 1), -infinity);
}

TEST(KwSymMatrixDiagonal, IsResizedAndFilled) {
    for (const int order : kOrders) {
        const KwSymMatrix matrix = RandomMatrix(order, 44);
        const Square square = ToSquare(matrix);
        Vector diagonal = {1.5, 2.5, 3.5};
        matrix.GetDiagonal(diagonal);
        ASSERT_EQ(diagonal.size(), square.size());
        for (std::size_t i = 0; i < square.size(); ++i) {
            EXPECT_EQ(diagonal[i], square[i][i]);
        }
    }
}

TEST(KwSymMatrixDiagonal, OfAnInvalidMatrixIsEmpty) {
    Vector diagonal = {1.5};
    KwSymMatrix(kMaxInt, true).GetDiagonal(diagonal);
    EXPECT_TRUE(diagonal.empty());
}

}  // namespace
