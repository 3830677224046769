// The sparse vector and the diagonal matrix.
#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "numerics/matrix/KwDiagMatrix.h"
#include "numerics/matrix/KwSparseVector.h"

namespace {

using KwMath_930::KwDiagMatrix;
using KwMath_930::KwSparseVector;

TEST(KwSparseVector, KeepsItsEntriesInOrder) {
    const KwSparseVector v({4, 0, 4}, {1.5, -2.5, 0.25});
    ASSERT_EQ(v.GetNElements(), 3);
    EXPECT_EQ(v.GetIndex(0), 4);
    EXPECT_EQ(v.GetValue(1), -2.5);
    EXPECT_EQ(v.GetValue(2), 0.25);
    EXPECT_EQ(v.GetMinVecSize(), 5);
}

TEST(KwSparseVector, WithoutEntriesNeedsNoPlace) {
    EXPECT_EQ(KwSparseVector().GetNElements(), 0);
    EXPECT_EQ(KwSparseVector().GetMinVecSize(), 0);
}

TEST(KwSparseVector, NegativeIndexFitsNoVector) {
    EXPECT_EQ(KwSparseVector({1, -1}, {1.5, 2.5}).GetMinVecSize(), std::numeric_limits<int>::max());
    EXPECT_EQ(KwSparseVector({std::numeric_limits<int>::max()}, {1.5}).GetMinVecSize(),
              std::numeric_limits<int>::max());
}

TEST(KwSparseVector, ListsOfDifferentLengthGiveTheCommonEntries) {
    EXPECT_EQ(KwSparseVector({1, 2, 3}, {1.5}).GetNElements(), 1);
    EXPECT_EQ(KwSparseVector({1}, {1.5, 2.5}).GetNElements(), 1);
}

TEST(KwDiagMatrix, IsItsDiagonal) {
    KwDiagMatrix matrix({1.5, 2.5});
    matrix.AsVector().push_back(3.5);
    const KwDiagMatrix copy(matrix);
    matrix.AsVector()[0] = 0.0;
    EXPECT_EQ(copy.AsVectorConst(), (std::vector<double>{1.5, 2.5, 3.5}));
    EXPECT_TRUE(KwDiagMatrix().AsVectorConst().empty());
}

}  // namespace
