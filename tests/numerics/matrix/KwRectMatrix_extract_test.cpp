// Copies of rows, extraction, shifts of the rectangular matrix, into targets of every kind.
#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "tests/numerics/matrix/matrix_samples.h"

namespace {

using KwMath_930::KwRectMatrix;
using KwMath_930::KwSparseRectMatrix;
using matrix_samples::Full;
using matrix_samples::OtherRect;
using matrix_samples::RandomRect;
using matrix_samples::RectOfEveryKind;
using matrix_samples::Square;
using matrix_samples::Vector;

constexpr int kFar = std::numeric_limits<int>::max();

// The element that a function of the place gives.
template <class Element>
Square Made(int nRows, int nCols, Element element) {
    Square square = matrix_samples::ZeroSquare(nRows, nCols);
    for (int i = 0; i < nRows; ++i) {
        for (int j = 0; j < nCols; ++j) {
            square[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)] = element(i, j);
        }
    }
    return square;
}

// Writes to a dense, a derived and a sparse target, and to the matrix itself.
template <class Write>
void ExpectWritten(const KwRectMatrix& source, Write write, const Square& expected) {
    for (const auto& target : RectOfEveryKind(2, 2, 9)) {
        EXPECT_TRUE(write(source, *target));
        EXPECT_EQ(Full(*target), expected);
    }
    KwRectMatrix self(source);
    EXPECT_TRUE(write(self, self));
    EXPECT_EQ(Full(self), expected);
}

TEST(KwRectMatrixExtract, RowsAndColumnsInListOrder) {
    const KwRectMatrix r = RandomRect(3, 4, 1);
    const std::vector<int> columns = {3, 0, 3}, rows = {2, 2, 0, 1};
    ExpectWritten(
        r, [&](const KwRectMatrix& matrix, auto& target) { return matrix.ExtractColumns(columns, target); },
        Made(3, 3, [&](int i, int j) { return r.GetElem(i, columns[static_cast<std::size_t>(j)]); }));
    ExpectWritten(
        r, [&](const KwRectMatrix& matrix, auto& target) { return matrix.ExtractRows(rows, target); },
        Made(4, 4, [&](int i, int j) { return r.GetElem(rows[static_cast<std::size_t>(i)], j); }));
    KwRectMatrix target(1, 1, true);
    EXPECT_FALSE(r.ExtractColumns({4}, target));
    EXPECT_FALSE(r.ExtractColumns({0, -1}, target));
    EXPECT_FALSE(r.ExtractRows({3}, target));
    EXPECT_FALSE(r.ExtractRows({-1}, target));
    EXPECT_EQ(Full(target), Square{{0}});
    EXPECT_TRUE(r.ExtractRows({}, target));
    EXPECT_EQ(target.GetNRows(), 0);
    EXPECT_EQ(target.GetNCols(), 4);
}

TEST(KwRectMatrixShift, MovesAndFillsWithZeros) {
    const KwRectMatrix r = RandomRect(3, 4, 1);
    for (const int shift : {0, 1, -1, 2, -3, 4, -4, 9, kFar, -kFar - 1}) {
        const auto from = [&](std::int64_t k, int bound) { return k - shift >= 0 && k - shift < bound; };
        ExpectWritten(
            r, [&](const KwRectMatrix& matrix, auto& target) { return matrix.ShiftColumns(shift, target); },
            Made(3, 4, [&](int i, int j) { return from(j, 4) ? r.GetElem(i, j - shift) : 0.0; }));
        ExpectWritten(
            r, [&](const KwRectMatrix& matrix, auto& target) { return matrix.ShiftRows(shift, target); },
            Made(3, 4, [&](int i, int j) { return from(i, 3) ? r.GetElem(i - shift, j) : 0.0; }));
    }
}

TEST(KwRectMatrixCreateBlockDiagonal, RepeatsTheMatrixAlongTheDiagonal) {
    const KwRectMatrix r = RandomRect(2, 3, 1);
    for (const int count : {1, 2, 4}) {
        ExpectWritten(
            r, [&](const KwRectMatrix& matrix, auto& target) { return matrix.CreateBlockDiagonal(count, target); },
            Made(2 * count, 3 * count, [&](int i, int j) { return i / 2 == j / 3 ? r.GetElem(i % 2, j % 3) : 0.0; }));
    }
    KwRectMatrix target(1, 1, true);
    EXPECT_FALSE(r.CreateBlockDiagonal(0, target));
    EXPECT_FALSE(r.CreateBlockDiagonal(-1, target));
    EXPECT_FALSE(r.CreateBlockDiagonal(kFar, target));
    EXPECT_EQ(target.GetNRows(), 1);
}

TEST(KwRectMatrixCopyRows, CopiesAsManyAsFit) {
    for (const auto& source : RectOfEveryKind(4, 3, 2)) {
        for (int from = 0; from < 4; ++from) {
            for (int to = 0; to < 5; ++to) {
                KwRectMatrix r = RandomRect(5, 3, 1);
                const KwRectMatrix before(r);
                EXPECT_TRUE(r.CopyRows(*source, from, to));
                EXPECT_EQ(Full(r), Made(5, 3, [&](int i, int j) {
                              const bool isCopied = i >= to && i - to + from < 4;
                              return isCopied ? source->GetElem(i - to + from, j) : before.GetElem(i, j);
                          }));
            }
        }
    }
}

TEST(KwRectMatrixCopyRows, OverlappingRowsOfItselfAreReadFirst) {
    const KwRectMatrix before = RandomRect(5, 3, 1);
    for (int from = 0; from < 5; ++from) {
        for (int to = 0; to < 5; ++to) {
            KwRectMatrix r(before);
            EXPECT_TRUE(r.CopyRows(r, from, to));
            EXPECT_EQ(Full(r), Made(5, 3, [&](int i, int j) {
                          return before.GetElem(i >= to && i - to + from < 5 ? i - to + from : i, j);
                      }));
        }
    }
}

TEST(KwRectMatrixCopyRows, RefusesOtherColumnsAndBadRows) {
    KwRectMatrix r = RandomRect(2, 3, 1);
    const Square before = Full(r);
    EXPECT_FALSE(r.CopyRows(RandomRect(2, 4, 2), 0, 0));
    EXPECT_FALSE(r.CopyRows(RandomRect(2, 3, 2), 2, 0));
    EXPECT_FALSE(r.CopyRows(RandomRect(2, 3, 2), -1, 0));
    EXPECT_FALSE(r.CopyRows(RandomRect(2, 3, 2), 0, 2));
    EXPECT_FALSE(r.CopyRows(RandomRect(2, 3, 2), 0, -1));
    EXPECT_EQ(Full(r), before);
}

TEST(KwRectMatrixCopyRowToRow, WritesOneRowAndResizesNothing) {
    const KwRectMatrix r = RandomRect(2, 3, 1);
    for (const auto& target : RectOfEveryKind(4, 3, 2)) {
        const Square before = Full(*target);
        EXPECT_TRUE(r.CopyRowToRow(1, 2, *target));
        EXPECT_EQ(Full(*target), Made(4, 3, [&](int i, int j) {
                      return i == 2 ? r.GetElem(1, j)
                                    : before[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)];
                  }));
        const Square after = Full(*target);
        EXPECT_FALSE(r.CopyRowToRow(2, 0, *target));
        EXPECT_FALSE(r.CopyRowToRow(0, 4, *target));
        EXPECT_FALSE(r.CopyRowToRow(0, -1, *target));
        EXPECT_FALSE(RandomRect(2, 2, 1).CopyRowToRow(0, 0, *target));
        EXPECT_EQ(Full(*target), after);
    }
    KwRectMatrix self(r);
    EXPECT_TRUE(self.CopyRowToRow(1, 1, self));
    EXPECT_EQ(Full(self), Full(r));
    EXPECT_TRUE(self.CopyRowToRow(1, 0, self));
    EXPECT_EQ(self.GetElem(0, 2), r.GetElem(1, 2));
}

}  // namespace
