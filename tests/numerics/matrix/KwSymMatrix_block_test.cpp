// Members of the symmetric matrix that take a block-diagonal one, against naive loops.
#include <gtest/gtest.h>

#include <vector>

#include "tests/numerics/matrix/matrix_samples.h"

namespace {

using KwMath_930::KwSymBlockDiagMatrix;
using KwMath_930::KwSymMatrix;
using matrix_samples::Dot;
using matrix_samples::ExpectNear;
using matrix_samples::Full;
using matrix_samples::Lower;
using matrix_samples::RandomBlocks;
using matrix_samples::RandomMatrix;
using matrix_samples::RandomVector;
using matrix_samples::Square;
using matrix_samples::Times;
using matrix_samples::Transposed;
using matrix_samples::Vector;

// Rows and columns first .. first+count-1.
Square Part(const Square& full, std::size_t first, std::size_t count) {
    Square part;
    for (std::size_t i = first; i < first + count; ++i) {
        part.emplace_back(full[i].begin() + static_cast<std::ptrdiff_t>(first),
                          full[i].begin() + static_cast<std::ptrdiff_t>(first + count));
    }
    return part;
}

TEST(KwSymMatrixBlock, InnerPartAroundTheBlocks) {
    const KwSymMatrix s = RandomMatrix(8, 1);
    for (const int n : {0, 1, 4, 7}) {
        const KwSymBlockDiagMatrix b = RandomBlocks(n, 2);
        for (int first = 0; first + n <= 8; ++first) {
            const Square part = Part(Full(s), static_cast<std::size_t>(first), static_cast<std::size_t>(n));
            KwSymMatrix target;
            EXPECT_TRUE(s.ComputeSSubBSSub(b, first, target));
            ExpectNear(Full(target), Times(Times(part, Full(b)), part), false, 10.0);
        }
        KwSymMatrix target(2, true);
        EXPECT_FALSE(s.ComputeSSubBSSub(b, 9 - n, target));
        EXPECT_FALSE(s.ComputeSSubBSSub(b, -1, target));
        EXPECT_EQ(target.GetNRows(), 2);
    }
}

TEST(KwSymMatrixBlock, VBWIsTheFormOfTheBlocks) {
    for (const int n : {0, 1, 4, 9}) {
        const KwSymBlockDiagMatrix b = RandomBlocks(n, 2);
        const Vector v = RandomVector(n, 3), w = RandomVector(n, 4);
        ExpectNear(KwSymMatrix().ComputeVBW(v, b, w), Dot(v, Times(Full(b), w)), 100.0);
        EXPECT_EQ(KwSymMatrix().ComputeVBW(RandomVector(n + 1, 3), b, w), 0.0);
        EXPECT_EQ(KwSymMatrix().ComputeVBW(v, b, RandomVector(n + 1, 3)), 0.0);
    }
}

TEST(KwSymMatrixBlock, VecByBlockLRunsThroughBothFactors) {
    for (const int m : {0, 1, 6}) {
        for (const int n : {0, 1, 5}) {
            const KwSymBlockDiagMatrix l = RandomBlocks(m, 2);
            const KwSymMatrix s = RandomMatrix(n, 3);
            Vector v = RandomVector(m + n + 1, 4);
            const Vector head(v.begin(), v.begin() + m), tail(v.begin() + m, v.begin() + m + n);
            Vector expected = Times(Transposed(Lower(Full(l))), head);
            const Vector second = Times(Transposed(Lower(Full(s))), tail);
            expected.insert(expected.end(), second.begin(), second.end());
            expected.push_back(v.back());
            EXPECT_TRUE(s.ComputeVecByBlockL(v, l));
            ExpectNear(v, expected);
            Vector shorter(static_cast<std::size_t>(m + n), 2.5);
            if (!shorter.empty()) {
                shorter.pop_back();
                EXPECT_FALSE(s.ComputeVecByBlockL(shorter, l));
                EXPECT_EQ(shorter, Vector(shorter.size(), 2.5));
            }
        }
    }
}

TEST(KwSymMatrixBlock, CornerUpdates) {
    const KwSymMatrix before = RandomMatrix(7, 1);
    const KwSymBlockDiagMatrix b = RandomBlocks(4, 2);
    const Vector x = RandomVector(4, 3);
    KwSymMatrix matrix(before);
    EXPECT_TRUE(matrix.UpdateXXCornerBlock(b, 0.375, 3));
    Square expected = Full(before);
    for (std::size_t i = 0; i < 4; ++i) {
        for (std::size_t j = 0; j < 4; ++j) {
            expected[3 + i][3 + j] += 0.375 * Full(b)[i][j];
        }
    }
    EXPECT_EQ(Full(matrix), expected);
    matrix = before;
    EXPECT_TRUE(matrix.UpdateXXCornerBlock(x, b, 0.375, 3));
    const Vector y = Times(Transposed(Lower(Full(b))), x);
    expected = Full(before);
    for (std::size_t i = 0; i < 4; ++i) {
        for (std::size_t j = 0; j < 4; ++j) {
            expected[3 + i][3 + j] += 0.375 * y[i] * y[j];
        }
    }
    ExpectNear(Full(matrix), expected);
    const Square after = Full(matrix);
    EXPECT_FALSE(matrix.UpdateXXCornerBlock(b, 0.375, 2));
    EXPECT_FALSE(matrix.UpdateXXCornerBlock(b, 0.0, 3));
    EXPECT_FALSE(matrix.UpdateXXCornerBlock(b, 0.375, -1));
    EXPECT_FALSE(matrix.UpdateXXCornerBlock(b, 0.375, 8));
    EXPECT_FALSE(matrix.UpdateXXCornerBlock(RandomVector(3, 1), b, 0.375, 3));
    EXPECT_FALSE(matrix.UpdateXXCornerBlock(x, b, 0.375, 4));
    EXPECT_FALSE(matrix.UpdateXXCornerBlock(x, b, -0.375, 3));
    EXPECT_EQ(Full(matrix), after);
}

TEST(KwSymMatrixBlock, AugmentPutsTheProductOfTheFactorInFront) {
    const KwSymBlockDiagMatrix l = RandomBlocks(4, 2);
    KwSymMatrix matrix = RandomMatrix(3, 1);
    const Square own = Full(matrix);
    const Square product = Times(Lower(Full(l)), Transposed(Lower(Full(l))));
    EXPECT_TRUE(matrix.AugmentUsingBlockDiagL(l));
    Square expected = matrix_samples::ZeroSquare(7, 7);
    for (std::size_t i = 0; i < 7; ++i) {
        for (std::size_t j = 0; j < 7; ++j) {
            expected[i][j] = i < 4 && j < 4 ? product[i][j] : i >= 4 && j >= 4 ? own[i - 4][j - 4] : 0.0;
        }
    }
    ExpectNear(Full(matrix), expected);
    EXPECT_EQ(matrix.GetNBlocks(), 1);
    EXPECT_EQ(matrix.GetBlockSize(), 7);
}

}  // namespace
