// Indefinite and singular systems, beside LAPACK's dspsv and dsyev.
#include <gtest/gtest.h>

#include <lapacke.h>

#include <cmath>
#include <vector>

#include "numerics/containers/KwBitSet.h"
#include "tests/numerics/matrix/matrix_samples.h"
#include "tests/numerics/special_values.h"

namespace {

using KwMath_930::KwBitSet;
using KwMath_930::KwSymMatrix;
using matrix_samples::ExpectNear;
using matrix_samples::Full;
using matrix_samples::RandomMatrix;
using matrix_samples::RandomRect;
using matrix_samples::RandomVector;
using matrix_samples::Square;
using matrix_samples::Times;
using matrix_samples::Vector;
using symmetric_samples::FromPacked;

using numerics_samples::kNaN;
const std::vector<int> kIndefiniteOrders = {1, 2, 3, 5, 8, 17, 40, 100};

TEST(KwSymMatrixSolveIndefinite, AgreesWithLapack) {
    for (const int n : kIndefiniteOrders) {
        for (const double scale : {1.0, 1e-150, 1e150}) {
            KwSymMatrix matrix = RandomMatrix(n, 1);
            matrix.MultiplyByNumber(scale);
            const Vector b = RandomVector(n + 1, 2);
            Vector packed = matrix.AsVectorConst(), expected(b.begin(), b.begin() + n);
            std::vector<lapack_int> pivots(static_cast<std::size_t>(n));
            ASSERT_EQ(LAPACKE_dspsv(LAPACK_COL_MAJOR, 'U', n, 1, packed.data(), pivots.data(), expected.data(), n), 0);
            const KwSymMatrix before(matrix);
            Vector x(1);
            EXPECT_TRUE(matrix.SolveIndefinite(1e-14, b, x));
            ASSERT_EQ(x.size(), expected.size());
            for (std::size_t k = 0; k < x.size(); ++k) {
                EXPECT_NEAR(x[k] * scale, expected[k] * scale, 1e-10 * n) << n;
            }
            // The storage holds the factor, not the matrix.
            EXPECT_TRUE(n == 1 || matrix.AsVectorConst() != before.AsVectorConst());
            KwSymMatrix again(before);
            Vector inPlace(b);
            EXPECT_TRUE(again.SolveIndefiniteGI(1e-14, inPlace, inPlace));
            EXPECT_EQ(inPlace, x);
            EXPECT_EQ(again.AsVectorConst(), matrix.AsVectorConst());
        }
    }
}

TEST(KwSymMatrixSolveIndefinite, RefusesWhatIsSingularWithinTheTolerance) {
    const KwSymMatrix original = FromPacked(2, {1, 2, 4});
    KwSymMatrix matrix(original);
    Vector x = {7.5};
    EXPECT_FALSE(matrix.SolveIndefinite(1e-12, {1, 2}, x));
    EXPECT_FALSE(matrix.SolveIndefinite(-1.0, {1, 2}, x));
    EXPECT_FALSE(matrix.SolveIndefinite(kNaN, {1, 2}, x));
    EXPECT_FALSE(matrix.SolveIndefinite(1e-12, {1}, x));
    EXPECT_FALSE(matrix.SolveIndefiniteGI(-1.0, {1, 2}, x));
    EXPECT_FALSE(matrix.SolveIndefiniteGI(1e-12, {1}, x));
    EXPECT_EQ(x, Vector{7.5});
    EXPECT_EQ(matrix.AsVectorConst(), original.AsVectorConst());
    KwSymMatrix diagonal = FromPacked(2, {1, 0, 1e-3});
    EXPECT_FALSE(diagonal.SolveIndefinite(1e-2, {1, 2}, x));
    EXPECT_TRUE(diagonal.SolveIndefinite(1e-4, {1, 2}, x));
}

TEST(KwSymMatrixSolveIndefinite, EmptyMatrixHasAnEmptySolution) {
    KwSymMatrix empty;
    Vector x = {7.5};
    EXPECT_TRUE(empty.SolveIndefinite(0.0, {}, x));
    EXPECT_TRUE(x.empty());
    x = {7.5};
    EXPECT_TRUE(empty.SolveIndefinite(KwBitSet(), {}, x));
    EXPECT_TRUE(x.empty());
}

TEST(KwSymMatrixSolveIndefinite, LeavesOutTheRowsThatAreMarked) {
    for (const double scale : {1.0, 1e-150, 1e150}) {
        KwSymMatrix matrix = RandomMatrix(6, 3);
        matrix.SetRowColToConst(4, 0.0);
        matrix.MultiplyByNumber(scale);
        KwBitSet skip(5);
        skip.Set(1, true);
        skip.Set(4, true);
        const Vector b = RandomVector(6, 4);
        KwSymMatrix rest;
        ASSERT_TRUE(matrix.ExtractSubmatrix({0, 2, 3, 5}, rest));
        Vector x, expected;
        ASSERT_TRUE(rest.SolveIndefinite(1e-14, {b[0], b[2], b[3], b[5]}, expected));
        EXPECT_TRUE(matrix.SolveIndefinite(skip, b, x));
        ASSERT_EQ(x.size(), 6u);
        EXPECT_EQ(x[1], 0.0);
        EXPECT_EQ(x[4], 0.0);
        const std::size_t kept[] = {0, 2, 3, 5};
        for (std::size_t k = 0; k < 4; ++k) {
            EXPECT_NEAR(x[kept[k]] * scale, expected[k] * scale, 1e-12);
        }
    }
}

TEST(KwSymMatrixSolveIndefinite, WithNoRowLeftOutRefusesASingularMatrix) {
    const KwSymMatrix original = FromPacked(2, {1, 2, 4});
    KwSymMatrix matrix(original);
    Vector x = {7.5};
    EXPECT_FALSE(matrix.SolveIndefinite(KwBitSet(2), {1, 2}, x));
    EXPECT_FALSE(matrix.SolveIndefinite(KwBitSet(2), {1}, x));
    EXPECT_EQ(x, Vector{7.5});
    EXPECT_EQ(matrix.AsVectorConst(), original.AsVectorConst());
    KwBitSet all(2);
    all.Negate();
    EXPECT_TRUE(matrix.SolveIndefinite(all, {1, 2}, x));
    EXPECT_EQ(x, (Vector{0, 0}));
}

// The least-norm solution by LAPACK's eigenvectors.
Vector LeastNorm(const KwSymMatrix& matrix, double tol, const Vector& b) {
    const int n = matrix.GetNRows();
    const auto size = static_cast<std::size_t>(n);
    Vector square(size * size), values(size);
    const Square full = Full(matrix);
    for (std::size_t i = 0; i < size; ++i) {
        std::copy(full[i].begin(), full[i].end(), square.begin() + static_cast<std::ptrdiff_t>(i * size));
    }
    EXPECT_EQ(LAPACKE_dsyev(LAPACK_COL_MAJOR, 'V', 'U', n, square.data(), n, values.data()), 0);
    const double largest = std::max(std::abs(values.front()), std::abs(values.back()));
    Vector x(size);
    for (std::size_t k = 0; k < size; ++k) {
        if (std::abs(values[k]) > tol * largest) {
            double product = 0.0;
            for (std::size_t i = 0; i < size; ++i) {
                product += square[k * size + i] * b[i];
            }
            for (std::size_t i = 0; i < size; ++i) {
                x[i] += product / values[k] * square[k * size + i];
            }
        }
    }
    return x;
}

TEST(KwSymMatrixSolveIndefiniteGI, GivesTheLeastNormSolutionOfASingularSystem) {
    for (const int n : {2, 3, 5, 8, 17, 40}) {
        for (const double scale : {1.0, 1e-150, 1e150}) {
            // R^T D R with indefinite D of rank n/2.
            KwSymMatrix inner = RandomMatrix(n / 2, 5);
            KwSymMatrix matrix;
            ASSERT_TRUE(matrix.ComputeRTransSymR(RandomRect(n / 2, n, 6), inner));
            matrix.MultiplyByNumber(1.0 / n);
            KwSymMatrix scaled(matrix);
            scaled.MultiplyByNumber(scale);
            const KwSymMatrix before(scaled);
            const Vector b = RandomVector(n, 7);
            const Vector expected = LeastNorm(matrix, 1e-10, b);
            Vector x;
            EXPECT_TRUE(scaled.SolveIndefiniteGI(1e-10, b, x));
            EXPECT_EQ(scaled.AsVectorConst(), before.AsVectorConst());
            ASSERT_EQ(x.size(), expected.size());
            double size = 1.0;
            for (const double element : expected) {
                size = std::max(size, std::abs(element));
            }
            for (std::size_t k = 0; k < x.size(); ++k) {
                EXPECT_NEAR(x[k] * scale, expected[k], 1e-9 * size) << n;
            }
        }
    }
}

TEST(KwSymMatrixSolveIndefiniteGI, ZeroMatrixGivesZeroAndNaNIsRefused) {
    KwSymMatrix zero(3, true);
    Vector x;
    EXPECT_TRUE(zero.SolveIndefiniteGI(1e-10, {1, 2, 3}, x));
    EXPECT_EQ(x, (Vector{0, 0, 0}));
    KwSymMatrix bad = FromPacked(2, {1, kNaN, 1});
    x = {7.5};
    EXPECT_FALSE(bad.SolveIndefiniteGI(1e-10, {1, 2}, x));
    EXPECT_EQ(x, Vector{7.5});
}

TEST(KwSymMatrixTransformToPositiveDefinite, LeavesAPositiveDefiniteMatrix) {
    KwSymMatrix matrix = FromPacked(2, {4, 2, 9});
    bool changed = true;
    double shift = 7.5;
    EXPECT_EQ(matrix.TransformToPositiveDefinite(1e-9, changed, shift), 0);
    EXPECT_FALSE(changed);
    EXPECT_EQ(shift, 0.0);
    EXPECT_EQ(matrix.AsVectorConst(), (Vector{4, 2, 9}));
    EXPECT_EQ(KwSymMatrix().TransformToPositiveDefinite(1e-9, changed, shift), 0);
}

TEST(KwSymMatrixTransformToPositiveDefinite, RaisesTheDiagonalUntilEveryPivotPasses) {
    for (const int n : {1, 2, 3, 8, 40}) {
        for (const double scale : {1.0, 1e-150, 1e150}) {
            KwSymMatrix matrix = RandomMatrix(n, 2);
            matrix.SetElem(0, 0, -2.5);
            matrix.MultiplyByNumber(scale);
            const KwSymMatrix before(matrix);
            bool changed = false;
            double shift = 0.0;
            const int attempts = matrix.TransformToPositiveDefinite(1e-6, changed, shift);
            EXPECT_GT(attempts, 0);
            EXPECT_TRUE(changed);
            EXPECT_GT(shift, 2.5 * scale);
            KwSymMatrix expected(before), factor(matrix);
            expected.AddToDiagonal(shift);
            EXPECT_EQ(matrix.AsVectorConst(), expected.AsVectorConst());
            double smallest = 0.0;
            EXPECT_EQ(factor.LTChol(1e-6, smallest, true), 0);
            // A tenth of the shift was not enough.
            KwSymMatrix less(before);
            less.AddToDiagonal(shift / 10.0);
            EXPECT_GT(less.LTChol(1e-6, smallest, true), 0);
        }
    }
}

TEST(KwSymMatrixTransformToPositiveDefinite, RefusesBadArgumentsAndNaN) {
    KwSymMatrix matrix = FromPacked(2, {4, kNaN, 9});
    bool changed = false;
    double shift = 7.5;
    EXPECT_EQ(matrix.TransformToPositiveDefinite(1e-9, changed, shift), -1);
    matrix.AsVector() = {4, 20, 9};
    EXPECT_EQ(matrix.TransformToPositiveDefinite(-1e-9, changed, shift), -1);
    EXPECT_EQ(matrix.TransformToPositiveDefinite(1.0, changed, shift), -1);
    EXPECT_EQ(shift, 7.5);
    EXPECT_EQ(matrix.AsVectorConst(), (Vector{4, 20, 9}));
}

}  // namespace
