// Extraction of parts, expansion and replacement, element by element.
#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "numerics/containers/KwBitSet.h"
#include "tests/numerics/matrix/matrix_samples.h"

namespace {

using KwMath_930::KwBitSet;
using KwMath_930::KwRectMatrix;
using KwMath_930::KwSparseRectMatrix;
using KwMath_930::KwSymMatrix;
using matrix_samples::Full;
using matrix_samples::OtherSym;
using matrix_samples::RandomMatrix;
using matrix_samples::RandomRect;
using matrix_samples::Square;
using matrix_samples::SymOfEveryKind;
using matrix_samples::Vector;
using symmetric_samples::FromPacked;

const KwSymMatrix kSample = RandomMatrix(6, 1);

Square Part(const std::vector<int>& rows, const std::vector<int>& columns) {
    Square part;
    for (const int i : rows) {
        part.emplace_back();
        for (const int j : columns) {
            part.back().push_back(kSample.GetElem(i, j));
        }
    }
    return part;
}

TEST(KwSymMatrixExtract, SubmatrixTakesRowsInListOrderWithRepeats) {
    for (const std::vector<int>& rows : {std::vector<int>{}, {5}, {4, 1, 4, 0}, {0, 1, 2, 3, 4, 5}}) {
        KwSymMatrix target(2, 2, true);
        EXPECT_TRUE(kSample.ExtractSubmatrix(rows, target));
        EXPECT_EQ(Full(target), Part(rows, rows));
        EXPECT_EQ(target.GetNBlocks(), 1);
        EXPECT_EQ(target.GetBlockSize(), static_cast<int>(rows.size()));
        OtherSym other;
        EXPECT_TRUE(kSample.ExtractSubmatrix(rows, other));
        EXPECT_EQ(Full(other), Part(rows, rows));
    }
    KwSymMatrix self(kSample);
    EXPECT_TRUE(self.ExtractSubmatrix({3, 1}, self));
    EXPECT_EQ(Full(self), Part({3, 1}, {3, 1}));
    const Square before = Full(self);
    EXPECT_FALSE(kSample.ExtractSubmatrix({0, 6}, self));
    EXPECT_FALSE(kSample.ExtractSubmatrix({-1}, self));
    EXPECT_EQ(Full(self), before);
}

TEST(KwSymMatrixExtract, FirstRowsFillTheTargetAsItIs) {
    for (int k = 0; k <= 6; ++k) {
        KwSymMatrix target(k, true);
        EXPECT_TRUE(kSample.ExtractFirstNRows(target));
        EXPECT_EQ(target.GetNRows(), k);
        for (int i = 0; i < k; ++i) {
            for (int j = 0; j < k; ++j) {
                EXPECT_EQ(target.GetElem(i, j), kSample.GetElem(i, j));
            }
        }
    }
    KwSymMatrix larger(7, true);
    EXPECT_FALSE(kSample.ExtractFirstNRows(larger));
    EXPECT_EQ(Full(larger), Full(KwSymMatrix(7, true)));
}

TEST(KwSymMatrixExtract, BlocksByNumber) {
    KwSymMatrix blocked(kSample);
    ASSERT_TRUE(blocked.SetNBlocks(3));
    for (int block = 0; block < 3; ++block) {
        const std::vector<int> rows = {2 * block, 2 * block + 1};
        const std::vector<int> bordered = {2 * block, 2 * block + 1, 5};
        KwSymMatrix target;
        EXPECT_TRUE(blocked.ExtractDiagBlock(block, target));
        EXPECT_EQ(Full(target), Part(rows, rows));
        EXPECT_TRUE(blocked.ExtractBlockAndLastRow(block, target));
        EXPECT_EQ(Full(target), Part(bordered, bordered));
    }
    KwSymMatrix target(1, true);
    for (const int bad : {-1, 3}) {
        EXPECT_FALSE(blocked.ExtractDiagBlock(bad, target));
        EXPECT_FALSE(blocked.ExtractBlockAndLastRow(bad, target));
    }
    EXPECT_FALSE(KwSymMatrix().ExtractDiagBlock(0, target));
    EXPECT_EQ(target.GetNRows(), 1);
}

TEST(KwSymMatrixExtract, BlocksLeftOverByADeletedRowAreRefusedUnlessInside) {
    KwSymMatrix matrix = RandomMatrix(3, 2);
    ASSERT_TRUE(matrix.SetNBlocks(3));
    ASSERT_TRUE(matrix.DeleteOneRow(1));
    // Three blocks of size two are said of two rows.
    KwSymMatrix target;
    EXPECT_TRUE(matrix.ExtractDiagBlock(0, target));
    EXPECT_FALSE(matrix.ExtractDiagBlock(1, target));
    EXPECT_EQ(matrix.ComputeBlockVSV(1, {1, 2}), 0.0);
}

TEST(KwSymMatrixExtract, BlockInTheLowerTriangle) {
    KwRectMatrix target;
    EXPECT_TRUE(kSample.ExtractBlockInLowTriangular(3, 1, 3, 2, target));
    EXPECT_EQ(Full(target), Part({3, 4, 5}, {1, 2}));
    EXPECT_TRUE(kSample.ExtractBlockInLowTriangular(2, 0, 1, 3, target));
    EXPECT_EQ(Full(target), Part({2}, {0, 1, 2}));
    KwSparseRectMatrix sparse;
    EXPECT_TRUE(kSample.ExtractBlockInLowTriangular(3, 1, 3, 2, sparse));
    EXPECT_EQ(Full(sparse), Part({3, 4, 5}, {1, 2}));
    EXPECT_TRUE(kSample.ExtractBlockInLowTriangular(6, 0, 0, 2, target));
    EXPECT_EQ(target.GetNRows(), 0);
    EXPECT_FALSE(kSample.ExtractBlockInLowTriangular(2, 1, 1, 3, target));
    EXPECT_FALSE(kSample.ExtractBlockInLowTriangular(4, 0, 3, 1, target));
    EXPECT_FALSE(kSample.ExtractBlockInLowTriangular(-1, 0, 1, 1, target));
    EXPECT_FALSE(kSample.ExtractBlockInLowTriangular(3, -1, 1, 1, target));
    EXPECT_FALSE(kSample.ExtractBlockInLowTriangular(3, 0, 1, -1, target));
}

TEST(KwSymMatrixExtract, PartOfTheLastRowAndStoredColumns) {
    Vector v;
    EXPECT_TRUE(kSample.ExtractPartOfLastRow(1, 4, v));
    EXPECT_EQ(v, Part({5}, {1, 2, 3, 4})[0]);
    EXPECT_FALSE(kSample.ExtractPartOfLastRow(1, 6, v));
    EXPECT_FALSE(kSample.ExtractPartOfLastRow(-1, 2, v));
    EXPECT_FALSE(KwSymMatrix().ExtractPartOfLastRow(0, 0, v));
    EXPECT_EQ(v.size(), 4u);
    EXPECT_TRUE(kSample.GetPCol(2, v));
    EXPECT_EQ(v, Part({2}, {2, 3, 4, 5})[0]);
    EXPECT_FALSE(kSample.GetPCol(6, v));
    EXPECT_FALSE(kSample.GetPCol(-1, v));
}

TEST(KwSymMatrixExtract, MarkedRows) {
    KwBitSet kept(8);
    kept.Set(1, true);
    kept.Set(4, true);
    kept.Set(7, true);
    KwSymMatrix target;
    EXPECT_TRUE(kSample.ExtractH(kept, target));
    EXPECT_EQ(Full(target), Part({1, 4}, {1, 4}));
    EXPECT_TRUE(kSample.ExtractH(KwBitSet(), target));
    EXPECT_EQ(target.GetNRows(), 0);
}

TEST(KwSymMatrixExpand, PlacesRowsInALargerMatrix) {
    const KwSymMatrix small = FromPacked(2, {1.5, 2.5, 3.5});
    const Square expected = {{3.5, 0, 2.5}, {0, 0, 0}, {2.5, 0, 1.5}};
    KwSymMatrix target(2, 2, true);
    EXPECT_TRUE(small.Expand({2, 0}, 3, target));
    EXPECT_EQ(Full(target), expected);
    EXPECT_EQ(target.GetNBlocks(), 1);
    OtherSym other;
    EXPECT_TRUE(small.ExpandSym({2, 0}, 3, other));
    EXPECT_EQ(Full(other), expected);
    KwRectMatrix rect;
    EXPECT_TRUE(small.ExpandSymToRect({2, 0}, 3, rect));
    EXPECT_EQ(Full(rect), expected);
    KwSparseRectMatrix sparse;
    EXPECT_TRUE(small.ExpandSymToRect({2, 0}, 3, sparse));
    EXPECT_EQ(Full(sparse), expected);
    KwSymMatrix back;
    EXPECT_TRUE(target.ExtractSubmatrix({2, 0}, back));
    EXPECT_EQ(Full(back), Full(small));
    for (const std::vector<int>& bad : {std::vector<int>{0}, {0, 1, 2}, {0, 3}, {-1, 1}, {1, 1}}) {
        EXPECT_FALSE(small.Expand(bad, 3, target));
        EXPECT_FALSE(small.ExpandSymToRect(bad, 3, rect));
    }
    EXPECT_FALSE(small.ExpandSym({0, 1}, -1, target));
    EXPECT_EQ(Full(target), expected);
    EXPECT_TRUE(target.Expand({0, 1, 2}, 4, target));
    EXPECT_EQ(target.GetElem(2, 0), 2.5);
    EXPECT_EQ(target.GetNRows(), 4);
}

TEST(KwSymMatrixReplace, FirstRowsByAnyKind) {
    for (const auto& m : SymOfEveryKind(4, 3)) {
        KwSymMatrix matrix(kSample);
        EXPECT_TRUE(matrix.ReplaceFirstRows(*m));
        for (int i = 0; i < 6; ++i) {
            for (int j = 0; j < 6; ++j) {
                const bool isInside = i < 4 && j < 4;
                EXPECT_EQ(matrix.GetElem(i, j), isInside ? m->GetElem(i, j) : kSample.GetElem(i, j));
            }
        }
    }
    KwSymMatrix matrix(kSample);
    EXPECT_TRUE(matrix.ReplaceFirstRows(matrix));
    EXPECT_FALSE(matrix.ReplaceFirstRows(RandomMatrix(7, 1)));
    EXPECT_FALSE(matrix.ReplaceFirstRows(KwSymMatrix(std::numeric_limits<int>::max(), true)));
    EXPECT_EQ(Full(matrix), Full(kSample));
}

TEST(KwSymMatrixReplace, DataNeedTheExactLength) {
    KwSymMatrix matrix(2, true);
    EXPECT_TRUE(matrix.SetData({1.5, 2.5, 3.5}));
    EXPECT_EQ(matrix.GetElem(1, 0), 2.5);
    EXPECT_FALSE(matrix.SetData({1.5, 2.5}));
    EXPECT_FALSE(matrix.SetData({1.5, 2.5, 3.5, 4.5}));
    EXPECT_TRUE(KwSymMatrix().SetData({}));
    EXPECT_EQ(matrix.AsVectorConst(), (Vector{1.5, 2.5, 3.5}));
}

TEST(KwSymMatrixReplace, RowIntoAColumnOfAnyKind) {
    KwRectMatrix r = RandomRect(6, 3, 4);
    const Square before = Full(r);
    EXPECT_TRUE(kSample.CopyRowToRColumn(2, 1, r));
    KwSparseRectMatrix sparse(6, 2);
    EXPECT_TRUE(kSample.CopyRowToRColumn(2, 1, sparse));
    for (int k = 0; k < 6; ++k) {
        EXPECT_EQ(r.GetElem(k, 1), kSample.GetElem(2, k));
        EXPECT_EQ(r.GetElem(k, 0), before[static_cast<std::size_t>(k)][0]);
        EXPECT_EQ(sparse.GetElem(k, 1), kSample.GetElem(2, k));
    }
    EXPECT_FALSE(kSample.CopyRowToRColumn(6, 1, r));
    EXPECT_FALSE(kSample.CopyRowToRColumn(-1, 1, r));
    EXPECT_FALSE(kSample.CopyRowToRColumn(1, 3, r));
    EXPECT_FALSE(kSample.CopyRowToRColumn(1, -1, r));
    EXPECT_FALSE(RandomMatrix(5, 1).CopyRowToRColumn(1, 1, r));
}

TEST(KwSymMatrixIsZeroRow, LooksAtTheColumnsThatAreNotMarked) {
    KwSymMatrix matrix(4, true);
    EXPECT_TRUE(matrix.IsZeroRow(2, KwBitSet()));
    matrix.SetElem(2, 3, 1.5);
    EXPECT_FALSE(matrix.IsZeroRow(2, KwBitSet()));
    KwBitSet marked(4);
    marked.Set(3, true);
    EXPECT_TRUE(matrix.IsZeroRow(2, marked));
    EXPECT_FALSE(matrix.IsZeroRow(3, marked));
    matrix.SetElem(2, 1, std::numeric_limits<double>::quiet_NaN());
    EXPECT_FALSE(matrix.IsZeroRow(2, marked));
    EXPECT_FALSE(matrix.IsZeroRow(4, marked));
    EXPECT_FALSE(matrix.IsZeroRow(-1, marked));
}

}  // namespace
