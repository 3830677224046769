// Cholesky factor, solutions, inverses, determinants and rank-one changes: small cases by hand, the rest beside LAPACK
// and explicit products.
#include <gtest/gtest.h>

#include <lapacke.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "numerics/containers/KwBitSet.h"
#include "numerics/mathfun/KwMathFun.h"
#include "tests/numerics/matrix/matrix_samples.h"
#include "tests/numerics/matrix/symmetric_samples.h"
#include "tests/numerics/special_values.h"

namespace {

using KwMath_930::KwBitSet;
using KwMath_930::KwRectMatrix;
using KwMath_930::KwSymBlockDiagMatrix;
using KwMath_930::KwSymMatrix;
using matrix_samples::ExpectNear;
using matrix_samples::Full;
using matrix_samples::Lower;
using matrix_samples::PositiveDefinite;
using matrix_samples::RandomBlocks;
using matrix_samples::RandomMatrix;
using matrix_samples::RandomRect;
using matrix_samples::RandomVector;
using matrix_samples::Square;
using matrix_samples::Times;
using matrix_samples::Transposed;
using matrix_samples::Vector;
using symmetric_samples::Diagonal;
using symmetric_samples::FromPacked;

using numerics_samples::kNaN;
constexpr double kLowest = -std::numeric_limits<double>::max();
const std::vector<int> kCholeskyOrders = {1, 2, 3, 5, 8, 17, 40, 63, 64, 65, 130, 200};

// R^T R with fewer rows than columns.
KwSymMatrix OfRank(int rank, int order, unsigned seed) {
    KwSymMatrix matrix;
    matrix.ComputeRTransByR(RandomRect(rank, order, seed));
    return matrix;
}

TEST(KwSymMatrixLTChol, AgreesWithLapack) {
    for (const int n : kCholeskyOrders) {
        for (const double scale : {1.0, 1e-150, 1e150}) {
            KwSymMatrix matrix = PositiveDefinite(n, 1, scale);
            // The lower triangle by rows is the upper one by columns, whose factor is U = L^T.
            Vector expected = matrix.AsVectorConst();
            ASSERT_EQ(LAPACKE_dpptrf(LAPACK_COL_MAJOR, 'U', n, expected.data()), 0);
            EXPECT_EQ(matrix.LTChol(Diagonal(matrix), 1e-10, true), 0);
            const double tolerance = 64.0 * 2.3e-16 * n * std::sqrt(scale) * n;
            for (std::size_t k = 0; k < expected.size(); ++k) {
                ASSERT_NEAR(matrix.AsVectorConst()[k], expected[k], tolerance) << n;
            }
        }
    }
}

TEST(KwSymMatrixLTChol, ProductOfTheFactorIsTheMatrixAlsoWhenRankDeficient) {
    for (const int n : {2, 5, 17, 40, 100, 150}) {
        for (const int rank : {1, n / 2, n - 1}) {
            const KwSymMatrix matrix = OfRank(std::max(rank, 1), n, 3);
            KwSymMatrix factor(matrix);
            EXPECT_EQ(factor.LTChol(Diagonal(matrix), 1e-9, true), n - std::max(rank, 1)) << n;
            const Square l = Lower(Full(factor));
            ExpectNear(Times(l, Transposed(l)), Full(matrix), false, 1e3);
            for (std::size_t k = 0; k < l.size(); ++k) {
                for (std::size_t i = k; l[k][k] == 0.0 && i < l.size(); ++i) {
                    EXPECT_EQ(l[i][k], 0.0);
                }
            }
        }
    }
}

TEST(KwSymMatrixLTChol, ZeroPivotOfTheSecondRowIsCountedAndMarked) {
    const KwSymMatrix matrix = FromPacked(2, {4, 2, 1});
    KwSymMatrix factor(matrix);
    EXPECT_EQ(factor.LTChol({4, 1}, 1e-8, true), 1);
    EXPECT_EQ(factor.AsVectorConst(), (Vector{2, 1, 0}));
    factor = matrix;
    KwBitSet zeros(1);
    zeros.Set(0, true);
    EXPECT_EQ(factor.LTChol({4, 1}, 1e-8, zeros, true), 1);
    EXPECT_EQ(zeros.Size(), 2);
    EXPECT_FALSE(zeros.IsIn(0));
    EXPECT_TRUE(zeros.IsIn(1));
    factor = matrix;
    KwBitSet longer(4);
    longer.Negate();
    EXPECT_EQ(factor.LTChol({4, 1}, 1e-8, longer, true), 1);
    EXPECT_EQ(longer.Size(), 4);
    EXPECT_EQ(longer.InSet(), 1);
}

TEST(KwSymMatrixLTChol, PivotEqualToTheToleranceCountsAsZero) {
    KwSymMatrix matrix = FromPacked(1, {2.5});
    EXPECT_EQ(matrix.LTChol({5}, 0.5, true), 1);
    EXPECT_EQ(matrix.GetElem(0), 0.0);
    matrix.SetElem(0, std::nextafter(2.5, 3.0));
    EXPECT_EQ(matrix.LTChol({5}, 0.5, true), 0);
}

TEST(KwSymMatrixLTChol, ChecksOnlyWhenAsked) {
    const KwSymMatrix matrix = FromPacked(2, {4, 2, 5});
    KwSymMatrix factor(matrix);
    KwBitSet zeros(1);
    EXPECT_EQ(factor.LTChol({4, 5}, -0.1, true), -1);
    EXPECT_EQ(factor.LTChol({4, -5}, 0.1, true), -1);
    EXPECT_EQ(factor.LTChol({4, -5}, 0.1, zeros, true), -1);
    EXPECT_EQ(factor.LTChol({4}, 0.1, false), -1);
    double smallest = 1.5;
    EXPECT_EQ(factor.LTChol(-0.1, smallest, true), -1);
    EXPECT_EQ(smallest, kLowest);
    EXPECT_EQ(zeros.Size(), 1);
    EXPECT_EQ(factor.AsVectorConst(), matrix.AsVectorConst());
    EXPECT_EQ(factor.LTChol({4, 5}, -0.1, false), 0);
    EXPECT_EQ(factor.AsVectorConst(), (Vector{2, 1, 2}));
    factor = matrix;
    EXPECT_EQ(factor.LTChol({4, -5, 7}, 0.1, false), 0);
}

TEST(KwSymMatrixLTChol, EmptyMatrixHasNoZeroPivot) {
    KwSymMatrix empty;
    double smallest = 1.5;
    KwBitSet zeros;
    EXPECT_EQ(empty.LTChol({}, 0.1, true), 0);
    EXPECT_EQ(empty.LTChol({}, 0.1, zeros, true), 0);
    EXPECT_EQ(empty.LTChol(0.1, smallest, true), 0);
    EXPECT_EQ(smallest, kLowest);
    EXPECT_EQ(empty.LTChol({}, -0.1, true), -1);
}

TEST(KwSymMatrixLTChol, NaNInAnEarlierPivotIsNotZero) {
    KwSymMatrix matrix = FromPacked(2, {4, kNaN, 5});
    EXPECT_EQ(matrix.LTChol({4, 5}, 0.1, true), 1);
    EXPECT_EQ(matrix.GetElem(0), 2.0);
    EXPECT_TRUE(std::isnan(matrix.GetElem(1)));
    EXPECT_EQ(matrix.GetElem(2), 0.0);
    matrix.AsVector() = {kNaN, 2, 5};
    EXPECT_EQ(matrix.LTChol({4, 5}, 0.1, true), 1);
    EXPECT_EQ(matrix.AsVectorConst(), (Vector{0, 0, std::sqrt(5.0)}));
}

// Rank deficiency that crosses the blocks of a large factorisation.
TEST(KwSymMatrixLTChol, RepeatedRowsGiveAZeroPivotEach) {
    const int n = 150;
    const KwSymMatrix inner = PositiveDefinite(n, 7);
    std::vector<int> rows;
    for (int i = 0; i < n; ++i) {
        rows.push_back(i % 7 == 6 ? i - 3 : i);
    }
    KwSymMatrix matrix;
    ASSERT_TRUE(inner.ExtractSubmatrix(rows, matrix));
    const KwSymMatrix before(matrix);
    KwBitSet zeros;
    EXPECT_EQ(matrix.LTChol(Diagonal(matrix), 1e-9, zeros, true), n / 7);
    for (int i = 0; i < n; ++i) {
        EXPECT_EQ(zeros.IsIn(i), i % 7 == 6) << i;
        EXPECT_EQ(matrix.GetElem(i, i) == 0.0, i % 7 == 6);
    }
    const Square l = Lower(Full(matrix));
    ExpectNear(Times(l, Transposed(l)), Full(before), false, 100.0);
}

class WatchedChol : public KwSymMatrix {
public:
    using KwSymMatrix::KwSymMatrix;
    using KwSymMatrix::LTChol;
    explicit WatchedChol(const KwSymMatrix& matrix) : KwSymMatrix(matrix) {}
    int LTChol(const Vector& ref, double tol, bool check) override {
        calls.push_back("LTChol " + std::to_string(tol) + (check ? " true" : " false"));
        refs.push_back(ref);
        return KwSymMatrix::LTChol(ref, tol, check);
    }
    void GetNCheckDiagonal(Vector& diagonal, double a, double b) const override {
        EXPECT_EQ(diagonal.size(), 3u) << "is sized before the call";
        calls.push_back("GetNCheckDiagonal " + std::to_string(a) + " " + std::to_string(b));
        KwSymMatrix::GetNCheckDiagonal(diagonal, a, b);
    }
    void GetDiagonal(Vector& diagonal) const override {
        calls.push_back("GetDiagonal");
        KwSymMatrix::GetDiagonal(diagonal);
    }
    int LTDetInverse(double* det, int job) override {
        calls.push_back("LTDetInverse " + std::to_string(job));
        return KwSymMatrix::LTDetInverse(det, job);
    }
    void LTLTransL() override {
        calls.push_back("LTLTransL");
        KwSymMatrix::LTLTransL();
    }
    mutable std::vector<std::string> calls;
    std::vector<Vector> refs;
};

TEST(KwSymMatrixVirtualCalls, OfTheFactorisationsGoThroughDispatchOnce) {
    const KwSymMatrix matrix = PositiveDefinite(3, 1);
    WatchedChol watched(matrix);
    double smallest = 0.0;
    EXPECT_EQ(watched.LTChol(0.25, smallest, true), 0);
    EXPECT_EQ(watched.calls, (std::vector<std::string>{"GetNCheckDiagonal 0.250000 1.000000", "LTChol 0.250000 true"}));
    WatchedChol solver(matrix);
    Vector x;
    EXPECT_EQ(solver.LTSolve({1, 2, 3}, 0.125, x), 0);
    EXPECT_EQ(solver.calls, (std::vector<std::string>{"GetDiagonal", "LTChol 0.125000 false"}));
    EXPECT_EQ(solver.refs, std::vector<Vector>{Diagonal(matrix)});
    solver.calls.clear();
    EXPECT_TRUE(solver.LTInverse());
    EXPECT_EQ(solver.calls, (std::vector<std::string>{"LTDetInverse 10", "LTLTransL"}));
    WatchedChol target;
    EXPECT_EQ(matrix.CholInverse(Diagonal(matrix), 0.0625, target), 3);
    EXPECT_EQ(target.calls, (std::vector<std::string>{"LTChol 0.062500 false", "LTDetInverse 10", "LTLTransL"}));
}

TEST(KwSymMatrixGetNCheckDiagonal, IsTheLargestDiagonalElementThroughout) {
    Vector d(1);
    FromPacked(3, {4, 9, 1.5, 9, 9, -2}).GetNCheckDiagonal(d, 7.5, kNaN);
    EXPECT_EQ(d, (Vector{4, 4, 4}));
    FromPacked(2, {-4, 9, -1}).GetNCheckDiagonal(d, 0, 0);
    EXPECT_EQ(d, (Vector{0, 0}));
}

TEST(KwSymMatrixLTChol, ToleranceFormJudgesByTheLargestDiagonalElement) {
    // 0.5 exceeds 0.1 of itself, but not 0.1 of 9.
    KwSymMatrix matrix = FromPacked(2, {9, 0, 0.5});
    double smallest = 1.5;
    EXPECT_EQ(matrix.LTChol(0.1, smallest, true), 1);
    EXPECT_EQ(smallest, 0.0);
    matrix.AsVector() = {9, 3, 5};
    EXPECT_EQ(matrix.LTChol(0.1, smallest, true), 0);
    EXPECT_EQ(smallest, 2.0);
}

TEST(KwSymMatrixCholIndNonRed, ListsTheIndependentRows) {
    const KwSymMatrix inner = PositiveDefinite(4, 2);
    KwSymMatrix matrix;
    ASSERT_TRUE(inner.ExtractSubmatrix({0, 1, 1, 2, 0, 3}, matrix));
    const KwSymMatrix before(matrix);
    std::vector<int> rows = {9};
    EXPECT_EQ(matrix.CholIndNonRed(7, 1e-9, rows), -1);
    EXPECT_EQ(matrix.CholIndNonRed(-1, 1e-9, rows), -1);
    EXPECT_EQ(matrix.CholIndNonRed(6, -1.0, rows), -1);
    EXPECT_EQ(rows, std::vector<int>{9});
    EXPECT_EQ(matrix.AsVectorConst(), before.AsVectorConst());
    EXPECT_EQ(matrix.CholIndNonRed(4, 1e-9, rows), 3);
    EXPECT_EQ(rows, (std::vector<int>{0, 1, 3}));
    EXPECT_EQ(matrix.GetElem(5, 4), before.GetElem(5, 4));
    matrix = before;
    EXPECT_EQ(matrix.CholIndNonRed(6, 1e-9, rows), 4);
    EXPECT_EQ(rows, (std::vector<int>{0, 1, 3, 5}));
}

TEST(KwSymMatrixLTSubstitute, SolvesWithTheFactor) {
    for (const int n : kCholeskyOrders) {
        const KwSymMatrix matrix = PositiveDefinite(n, 4);
        KwSymMatrix factor(matrix);
        ASSERT_EQ(factor.LTChol(Diagonal(matrix), 1e-10, true), 0);
        const Vector b = RandomVector(n + 2, 5);
        Vector x(1);
        EXPECT_EQ(factor.LTSubstitute(b, x), 0);
        ASSERT_EQ(x.size(), static_cast<std::size_t>(n));
        ExpectNear(Times(Full(matrix), x), Vector(b.begin(), b.begin() + n));
        Vector inPlace(b);
        EXPECT_EQ(factor.LTSubstitute(inPlace, inPlace), 0);
        EXPECT_EQ(inPlace, x);
        Vector half;
        EXPECT_TRUE(factor.TSolveSubst(b, half, false));
        ExpectNear(Times(Lower(Full(factor)), half), Vector(b.begin(), b.begin() + n));
        EXPECT_TRUE(factor.TSolveSubst(half, half, true));
        EXPECT_EQ(half, x);
    }
}

TEST(KwSymMatrixLTSubstitute, ZeroPivotGivesTheComponentZeroAndTheOthersAreSolved) {
    const KwSymMatrix factor = FromPacked(3, {2, 3, 0, 1, 0, 4});
    Vector x;
    EXPECT_EQ(factor.LTSubstitute({4, 7.5, 34}, x), 0);
    // Forward (2, 0, 8); backward 2 / 1, then 0, then (2 - 1 x 2) / 2.
    EXPECT_EQ(x, (Vector{0, 0, 2}));
    EXPECT_TRUE(factor.TSolveSubst({4, 7.5, 34}, x, false));
    EXPECT_EQ(x, (Vector{2, 0, 8}));
    EXPECT_TRUE(factor.TSolveSubst({4, 7.5, 8}, x, true));
    EXPECT_EQ(x, (Vector{1, 0, 2}));
}

TEST(KwSymMatrixLTSubstitute, RefusesATooShortVectorAndLeavesTheOutput) {
    const KwSymMatrix factor = FromPacked(2, {2, 1, 3});
    Vector x = {7.5, 8.5, 9.5};
    EXPECT_EQ(factor.LTSubstitute({1}, x), -1);
    EXPECT_FALSE(factor.TSolveSubst({1}, x, true));
    EXPECT_EQ(x, (Vector{7.5, 8.5, 9.5}));
    EXPECT_EQ(KwSymMatrix().LTSubstitute({}, x), 0);
    EXPECT_TRUE(x.empty());
}

TEST(KwSymMatrixLTSolve, FactorisesAndSolves) {
    for (const int n : kCholeskyOrders) {
        const KwSymMatrix matrix = PositiveDefinite(n, 4);
        KwSymMatrix factor(matrix);
        KwSymMatrix expected(matrix);
        expected.LTChol(Diagonal(matrix), 1e-10, false);
        const Vector b = RandomVector(n, 5);
        Vector x;
        EXPECT_EQ(factor.LTSolve(b, 1e-10, x), 0);
        ExpectNear(Times(Full(matrix), x), b);
        EXPECT_EQ(factor.AsVectorConst(), expected.AsVectorConst());
        factor = matrix;
        Vector inPlace(b);
        EXPECT_EQ(factor.LTSolve(inPlace, 1e-10, inPlace), 0);
        EXPECT_EQ(inPlace, x);
    }
}

TEST(KwSymMatrixLTSolve, CountsZeroPivotsAndRefusesBadArguments) {
    KwSymMatrix matrix = FromPacked(2, {4, 2, 1});
    Vector x = {7.5};
    for (const double tol : {0.0, -1.0, kNaN}) {
        EXPECT_EQ(matrix.LTSolve({1, 2}, tol, x), -1);
    }
    EXPECT_EQ(matrix.LTSolve({1}, 0.1, x), -1);
    EXPECT_EQ(x, Vector{7.5});
    EXPECT_EQ(matrix.AsVectorConst(), (Vector{4, 2, 1}));
    EXPECT_EQ(matrix.LTSolve({8, 4}, 1e-9, x), 1);
    EXPECT_EQ(x, (Vector{2, 0}));
}

TEST(KwSymMatrixLTDetInverse, DeterminantIsThatOfTheFactorAndNotSquared) {
    KwSymMatrix factor = FromPacked(2, {2, 0, 3});
    double det[2] = {-1, -1};
    EXPECT_EQ(factor.LTDetInverse(det, 1), 0);
    EXPECT_EQ(det[0], 6);
    EXPECT_EQ(det[1], 0);
    EXPECT_EQ(factor.AsVectorConst(), (Vector{2, 0, 3}));
    factor.AsVector() = {10, 0, 10};
    factor.LTDetInverse(det, 1);
    EXPECT_EQ(det[0], 1);
    EXPECT_EQ(det[1], 2);
    factor.AsVector() = {1e-200, 5, 3e-200};
    factor.LTDetInverse(det, 1);
    EXPECT_NEAR(det[0], 3, 1e-12);
    EXPECT_EQ(det[1], -400);
    factor.AsVector() = {10, 0, 0};
    EXPECT_EQ(factor.LTDetInverse(det, 1), 1);
    EXPECT_EQ(det[0], 0);
    EXPECT_EQ(det[1], 0);
    det[0] = 5.5;
    EXPECT_EQ(KwSymMatrix().LTDetInverse(det, 11), 0);
    EXPECT_EQ(det[0], 1);
}

TEST(KwSymMatrixLTDetInverse, InfiniteAndNaNPivotsEnd) {
    double det[2];
    for (const double value : {std::numeric_limits<double>::infinity(), kNaN}) {
        KwSymMatrix factor = FromPacked(2, {value, 0, 3});
        EXPECT_EQ(factor.LTDetInverse(det, 1), 0);
        EXPECT_FALSE(std::isfinite(det[0]));
    }
}

TEST(KwSymMatrixLTDetInverse, JobsAskForEachPartAlone) {
    const KwSymMatrix factor = FromPacked(2, {2, 1, 4});
    const Vector inverse = {0.5, -0.125, 0.25};
    double det[2] = {7.5, 8.5};
    KwSymMatrix matrix(factor);
    EXPECT_EQ(matrix.LTDetInverse(det, 10), 0);
    EXPECT_EQ(matrix.AsVectorConst(), inverse);
    EXPECT_EQ(det[0], 7.5);
    matrix = factor;
    EXPECT_EQ(matrix.LTDetInverse(nullptr, 10), 0);
    EXPECT_EQ(matrix.AsVectorConst(), inverse);
    matrix = factor;
    EXPECT_EQ(matrix.LTDetInverse(det, 11), 0);
    EXPECT_EQ(matrix.AsVectorConst(), inverse);
    EXPECT_EQ(det[0], 8);
    matrix = factor;
    EXPECT_EQ(matrix.LTDetInverse(det, 0), 0);
    EXPECT_EQ(matrix.AsVectorConst(), factor.AsVectorConst());
}

TEST(KwSymMatrixLTDetInverse, InverseTimesTheFactorIsTheIdentity) {
    for (const int n : kCholeskyOrders) {
        KwSymMatrix factor = PositiveDefinite(n, 4);
        factor.LTChol(Diagonal(factor), 1e-10, false);
        KwSymMatrix inverse(factor);
        inverse.LTDetInverse(nullptr, 10);
        Square identity = matrix_samples::ZeroSquare(n, n);
        for (std::size_t k = 0; k < identity.size(); ++k) {
            identity[k][k] = 1.0;
        }
        ExpectNear(Times(Lower(Full(factor)), Lower(Full(inverse))), identity);
    }
}

TEST(KwSymMatrixLTDetInverse, RowsAndColumnsOfZeroPivotsBecomeZero) {
    // Without row and column 1 the factor is (2 0, 6 4); element (2, 1) must not reach the inverse.
    KwSymMatrix factor = FromPacked(3, {2, 3, 0, 6, 5, 4});
    EXPECT_EQ(factor.LTDetInverse(nullptr, 10), 1);
    EXPECT_EQ(factor.AsVectorConst(), (Vector{0.5, 0, 0, -0.75, 0, 0.25}));
}

TEST(KwSymMatrixLTLTransL, AndLTLLTransAgreeWithTheLoops) {
    for (const int n : {0, 1, 2, 3, 5, 8, 9, 17, 40, 130}) {
        const KwSymMatrix m = RandomMatrix(n, 6);
        const Square l = Lower(Full(m));
        KwSymMatrix product(m);
        product.LTLTransL();
        ExpectNear(Full(product), Times(Transposed(l), l));
        product = m;
        product.LTLLTrans();
        ExpectNear(Full(product), Times(l, Transposed(l)));
    }
}

// The generalised inverse g satisfies a g a = a and is 0 in the rows left out.
TEST(KwSymMatrixCholInverse, InvertsWithEveryTarget) {
    for (const int n : {0, 1, 2, 3, 5, 8, 17, 40, 130}) {
        const KwSymMatrix matrix = PositiveDefinite(n, 8);
        KwSymMatrix target = RandomMatrix(4, 1);
        EXPECT_EQ(matrix.CholInverse(Diagonal(matrix), 1e-10, target), n);
        const Square inverse = Full(target);
        const Square product = Times(inverse, Full(matrix));
        for (std::size_t i = 0; i < product.size(); ++i) {
            for (std::size_t j = 0; j < product.size(); ++j) {
                EXPECT_NEAR(product[i][j], i == j ? 1.0 : 0.0, 1e-11) << n;
            }
        }
        double smallest = 0.0;
        EXPECT_EQ(matrix.CholInverse(Diagonal(matrix), 1e-10, target, smallest), n);
        EXPECT_EQ(Full(target), inverse);
        KwSymMatrix factor(matrix);
        factor.LTChol(Diagonal(matrix), 1e-10, false);
        Vector pivots = Diagonal(factor);
        EXPECT_EQ(smallest, n == 0 ? kLowest : *std::min_element(pivots.begin(), pivots.end()));
        KwBitSet zeros;
        EXPECT_EQ(matrix.CholInverse(Diagonal(matrix), 1e-10, target, zeros), n);
        EXPECT_EQ(Full(target), inverse);
        EXPECT_EQ(zeros.Size(), n);
        EXPECT_EQ(zeros.InSet(), 0);
        KwSymMatrix self(matrix);
        EXPECT_EQ(self.CholInverse(Diagonal(matrix), 1e-10, self), n);
        EXPECT_EQ(Full(self), inverse);
        factor.LTInverse();
        EXPECT_EQ(Full(factor), inverse);
    }
}

TEST(KwSymMatrixCholInverse, RankDeficiencyLeavesZeros) {
    KwSymMatrix target;
    KwBitSet zeros;
    EXPECT_EQ(FromPacked(2, {4, 0, 0}).CholInverse({4, 1}, 1e-8, target), 1);
    EXPECT_EQ(target.AsVectorConst(), (Vector{0.25, 0, 0}));
    EXPECT_EQ(FromPacked(2, {4, 0, 0}).CholInverse({4, 1}, 1e-8, target, zeros), 1);
    EXPECT_TRUE(zeros.IsIn(1));
    EXPECT_FALSE(zeros.IsIn(0));
    const KwSymMatrix matrix = OfRank(7, 17, 3);
    EXPECT_EQ(matrix.CholInverse(Diagonal(matrix), 1e-9, target), 7);
    ExpectNear(Times(Times(Full(matrix), Full(target)), Full(matrix)), Full(matrix), false, 1e6);
}

TEST(KwSymMatrixCholInverse, TakesAllThreeCountsAndNeverChecks) {
    KwSymMatrix matrix = PositiveDefinite(4, 8);
    matrix.SetNBlocks(2);
    KwSymMatrix target;
    EXPECT_EQ(matrix.CholInverse({-1, -1, -1, -1}, -0.5, target), 4);
    EXPECT_EQ(target.GetNBlocks(), 2);
    EXPECT_EQ(target.GetBlockSize(), 2);
}

TEST(KwSymMatrixCholInverse, RefusesATargetOfAnotherKindAndLeavesEverything) {
    const KwSymMatrix matrix = PositiveDefinite(3, 8);
    KwSymBlockDiagMatrix target = RandomBlocks(3, 1);
    const Square before = Full(target);
    double smallest = 7.5;
    KwBitSet zeros(1);
    EXPECT_EQ(matrix.CholInverse(Diagonal(matrix), 1e-9, target), -1);
    EXPECT_EQ(matrix.CholInverse(Diagonal(matrix), 1e-9, target, smallest), -1);
    EXPECT_EQ(matrix.CholInverse(Diagonal(matrix), 1e-9, target, zeros), -1);
    EXPECT_EQ(Full(target), before);
    EXPECT_EQ(smallest, 7.5);
    EXPECT_EQ(zeros.Size(), 1);
}

TEST(KwSymMatrixComputeDeterminant, SquaresAndNormalises) {
    const KwSymMatrix matrix = FromPacked(2, {4, 2, 10});
    double det[2];
    EXPECT_TRUE(matrix.ComputeDeterminant(1e-8, det));
    EXPECT_DOUBLE_EQ(det[0], 3.6);
    EXPECT_EQ(det[1], 1);
    EXPECT_EQ(matrix.AsVectorConst(), (Vector{4, 2, 10}));
    EXPECT_TRUE(FromPacked(2, {4, 2, 1}).ComputeDeterminant(1e-8, det));
    EXPECT_EQ(det[0], 0);
    EXPECT_EQ(det[1], 0);
    det[0] = 7.5;
    EXPECT_FALSE(KwSymMatrix().ComputeDeterminant(1e-8, det));
    EXPECT_EQ(det[0], 7.5);
}

TEST(KwSymMatrixComputeDeterminant, AgreesWithTheEigenvaluesOfLapack) {
    for (const int n : {3, 8, 40}) {
        for (const double scale : {1e-150, 1.0, 1e150}) {
            const KwSymMatrix matrix = PositiveDefinite(n, 9, scale);
            Vector eigenvalues(static_cast<std::size_t>(n)), packed = matrix.AsVectorConst();
            ASSERT_EQ(LAPACKE_dspev(LAPACK_COL_MAJOR, 'N', 'U', n, packed.data(), eigenvalues.data(), nullptr, 1), 0);
            double logarithm = 0.0;
            for (const double value : eigenvalues) {
                logarithm += std::log10(value);
            }
            double det[2];
            EXPECT_TRUE(matrix.ComputeDeterminant(1e-12, det));
            EXPECT_GE(std::abs(det[0]), 1.0);
            EXPECT_LT(std::abs(det[0]), 10.0);
            EXPECT_NEAR(std::log10(det[0]) + det[1], logarithm, 1e-10);
        }
    }
}

TEST(KwSymMatrixRankOne, UpdateIsTheFactorOfTheSum) {
    for (const int n : {0, 1, 2, 3, 5, 8, 17, 40}) {
        KwSymMatrix sum = PositiveDefinite(n, 10);
        KwSymMatrix factor(sum);
        factor.LTChol(Diagonal(sum), 1e-12, false);
        const Vector x = RandomVector(n, 11);
        Vector c(x.size()), sn(x.size());
        EXPECT_TRUE(factor.LTCholUpdateR1(x, c, sn));
        sum.IncrementByVV(x.data(), 1.0);
        const Square l = Lower(Full(factor));
        ExpectNear(Times(l, Transposed(l)), Full(sum));
        for (std::size_t k = 0; k < c.size(); ++k) {
            EXPECT_NEAR(c[k] * c[k] + sn[k] * sn[k], 1.0, 1e-14);
        }
    }
}

TEST(KwSymMatrixRankOne, DowndateUndoesTheUpdate) {
    for (const int n : {0, 1, 2, 3, 5, 8, 17, 40}) {
        KwSymMatrix factor = PositiveDefinite(n, 10);
        factor.LTChol(Diagonal(factor), 1e-12, false);
        const Square before = Full(factor);
        const Vector x = RandomVector(n, 11);
        Vector c(x.size()), sn(x.size());
        EXPECT_TRUE(factor.LTCholUpdateR1(x, c, sn));
        EXPECT_TRUE(factor.LTCholDowndate(x, c, sn, true));
        Square after = Lower(Full(factor));
        // A factor is fixed up to the sign of each column.
        for (std::size_t j = 0; j < after.size(); ++j) {
            for (std::size_t i = 0; after[j][j] < 0.0 && i < after.size(); ++i) {
                after[i][j] = i == j ? after[i][j] : -after[i][j];
            }
            after[j][j] = std::abs(after[j][j]);
        }
        ExpectNear(after, Lower(before), false, 10.0);
    }
}

TEST(KwSymMatrixRankOne, DowndateThatLeavesTheConeIsRefused) {
    KwSymMatrix factor = FromPacked(2, {2, 1, 3});
    Vector c = {7.5, 7.5}, sn = {8.5, 8.5};
    for (const Vector& x : {Vector{2, 1}, Vector{0, 3.5}, Vector{kNaN, 0}}) {
        EXPECT_FALSE(factor.LTCholDowndate(x, c, sn, true));
    }
    EXPECT_EQ(factor.AsVectorConst(), (Vector{2, 1, 3}));
    EXPECT_EQ(c, Vector(2, 7.5));
    EXPECT_EQ(sn, Vector(2, 8.5));
}

TEST(KwSymMatrixRankOne, SizesMustAgree) {
    KwSymMatrix factor = FromPacked(2, {2, 1, 3});
    Vector two(2, 0.5), three(3, 0.5);
    EXPECT_FALSE(factor.LTCholUpdateR1(three, two, two));
    Vector c(two), sn(two);
    EXPECT_FALSE(factor.LTCholUpdateR1(two, three, sn));
    EXPECT_FALSE(factor.LTCholUpdateR1(two, c, three));
    EXPECT_FALSE(factor.LTCholDowndate(three, c, sn, false));
    EXPECT_FALSE(factor.LTCholDowndate(two, three, sn, false));
    EXPECT_FALSE(factor.LTCholDowndate(two, c, three, true));
    EXPECT_EQ(factor.AsVectorConst(), (Vector{2, 1, 3}));
}

// Answers what it is told to, and counts the element reads that go through dispatch.
class ToldChol : public KwSymMatrix {
public:
    explicit ToldChol(const KwSymMatrix& matrix) : KwSymMatrix(matrix) {}
    using KwSymMatrix::GetElem;
    using KwSymMatrix::LTChol;
    int LTChol(const Vector& ref, double tol, bool check) override {
        return answer < 0 ? answer : KwSymMatrix::LTChol(ref, tol, check);
    }
    double GetElem(int i, int j) const override {
        ++reads;
        return KwSymMatrix::GetElem(i, j);
    }
    int answer = 0;
    mutable int reads = 0;
};

TEST(KwSymMatrixVirtualCalls, NegativeResultOfTheFactorisationIsReturnedAsItIs) {
    ToldChol matrix(PositiveDefinite(3, 1));
    matrix.answer = -7;
    Vector x;
    double smallest = 0.0;
    EXPECT_EQ(matrix.LTSolve({1, 2, 3}, 0.125, x), -7);
    EXPECT_EQ(matrix.LTChol(0.125, smallest, false), -7);
    EXPECT_EQ(smallest, kLowest);
    EXPECT_EQ(PositiveDefinite(3, 1).CholInverse({1, 1, 1}, 0.1, matrix), -7);
    EXPECT_EQ(PositiveDefinite(3, 1).CholInverse({1, 1, 1}, 0.1, matrix, smallest), -7);
    EXPECT_EQ(smallest, kLowest);
}

TEST(KwSymMatrixVirtualCalls, FactorisationsReadTheStorageAndNotThroughElementAccess) {
    ToldChol matrix(PositiveDefinite(3, 1));
    const KwSymMatrix source = PositiveDefinite(3, 2);
    Vector x;
    double smallest = 0.0, det[2];
    EXPECT_EQ(matrix.LTChol(1e-9, smallest, true), 0);
    EXPECT_EQ(matrix.LTSubstitute({1, 2, 3}, x), 0);
    EXPECT_EQ(source.CholInverse(Diagonal(source), 1e-9, matrix, smallest), 3);
    EXPECT_TRUE(matrix.ComputeDeterminant(1e-9, det));
    EXPECT_EQ(matrix.reads, 0);
}

// Each forward component is b[k] less a dot product from left to right, over L(k,k), bit for bit.
TEST(KwSymMatrixLTSubstitute, ForwardSolutionUsesTheDotProductOfTheLibrary) {
    for (const int n : {1, 2, 3, 5, 7, 8, 9, 15, 16, 17, 40, 200}) {
        KwSymMatrix factor = PositiveDefinite(n, 4);
        ASSERT_EQ(factor.LTChol(Diagonal(factor), 1e-10, true), 0);
        if (n > 5) {
            factor.SetElem(4, 4, 0.0);
        }
        const Vector b = RandomVector(n, 5);
        Vector x, expected(b.size());
        EXPECT_TRUE(factor.TSolveSubst(b, x, false));
        for (int k = 0; k < n; ++k) {
            const double dot =
                KwMath_930::KwMathFun::DDot(k, factor.AsVectorConst(), k * (k + 1) / 2, 1, expected, 0, 1);
            const double pivot = factor.GetElem(k, k);
            const auto place = static_cast<std::size_t>(k);
            expected[place] = pivot != 0.0 ? (b[place] - dot) / pivot : 0.0;
        }
        EXPECT_EQ(x, expected) << n;
    }
}

TEST(KwSymMatrixCholInverse, RefusesATooShortReferenceAndLeavesTheTarget) {
    const KwSymMatrix matrix = PositiveDefinite(3, 8);
    KwSymMatrix target = RandomMatrix(2, 1);
    const Vector before = target.AsVectorConst();
    double smallest = 7.5;
    KwBitSet zeros(1);
    EXPECT_EQ(matrix.CholInverse({1, 2}, 1e-9, target), -1);
    EXPECT_EQ(matrix.CholInverse({1, 2}, 1e-9, target, smallest), -1);
    EXPECT_EQ(matrix.CholInverse({1, 2}, 1e-9, target, zeros), -1);
    EXPECT_EQ(KwSymMatrix(std::numeric_limits<int>::max(), true).CholInverse({1, 2}, 1e-9, target), -1);
    EXPECT_EQ(target.AsVectorConst(), before);
    EXPECT_EQ(smallest, 7.5);
    EXPECT_EQ(zeros.Size(), 1);
}

TEST(KwSymMatrixCholInverse, LongerBitSetIsClearedWholeAndKeepsItsSize) {
    KwSymMatrix target;
    KwBitSet zeros(5);
    zeros.Negate();
    EXPECT_EQ(FromPacked(2, {4, 2, 1}).CholInverse({4, 1}, 1e-8, target, zeros), 1);
    EXPECT_EQ(zeros.Size(), 5);
    EXPECT_EQ(zeros.InSet(), 1);
    EXPECT_TRUE(zeros.IsIn(1));
}

// The Hilbert matrix of order 8 has condition 1.5e10: the factor is as close to LAPACK's as that allows, and its
// product is the matrix to rounding.
TEST(KwSymMatrixLTChol, IllConditionedMatrixIsFactorisedToRounding) {
    const int n = 8;
    for (const double scale : {1.0, 1e-150, 1e150}) {
        KwSymMatrix matrix(n, true);
        for (int i = 0; i < n; ++i) {
            for (int j = 0; j <= i; ++j) {
                matrix.SetElem(i, j, scale / (i + j + 1));
            }
        }
        Vector expected = matrix.AsVectorConst();
        ASSERT_EQ(LAPACKE_dpptrf(LAPACK_COL_MAJOR, 'U', n, expected.data()), 0);
        KwSymMatrix factor(matrix);
        EXPECT_EQ(factor.LTChol(Diagonal(matrix), 1e-13, true), 0);
        for (std::size_t k = 0; k < expected.size(); ++k) {
            EXPECT_NEAR(factor.AsVectorConst()[k], expected[k], 1.5e10 * 2.3e-16 * std::sqrt(scale));
        }
        const Square l = Lower(Full(factor)), product = Times(l, Transposed(l));
        for (std::size_t i = 0; i < product.size(); ++i) {
            for (std::size_t j = 0; j < product.size(); ++j) {
                EXPECT_NEAR(product[i][j] / scale, 1.0 / static_cast<double>(i + j + 1), 8 * 2.3e-16);
            }
        }
    }
}

TEST(KwSymMatrixRankOne, ScalesFarFromOneAreKept) {
    for (const double scale : {1e-150, 1e150}) {
        for (const int n : {1, 3, 8, 40}) {
            KwSymMatrix factor = PositiveDefinite(n, 10, scale);
            factor.LTChol(Diagonal(factor), 1e-12, false);
            KwSymMatrix plain = PositiveDefinite(n, 10);
            plain.LTChol(Diagonal(plain), 1e-12, false);
            const Vector x = RandomVector(n, 11);
            Vector scaled(x), c(x.size()), sn(x.size());
            for (double& element : scaled) {
                element *= std::sqrt(scale);
            }
            EXPECT_TRUE(factor.LTCholUpdateR1(scaled, c, sn));
            EXPECT_TRUE(plain.LTCholUpdateR1(x, c, sn));
            factor.MultiplyByNumber(1.0 / std::sqrt(scale));
            ExpectNear(Full(factor), Full(plain), false, 10.0);
            EXPECT_TRUE(plain.LTCholDowndate(x, c, sn, true));
            factor.MultiplyByNumber(std::sqrt(scale));
            EXPECT_TRUE(factor.LTCholDowndate(scaled, c, sn, true));
            factor.MultiplyByNumber(1.0 / std::sqrt(scale));
            ExpectNear(Full(factor), Full(plain), false, 10.0);
        }
    }
}

// 4 0 / 0 0 less x x^T is not positive definite, whatever x.
TEST(KwSymMatrixRankOne, DowndateOfAFactorWithAZeroPivotIsRefused) {
    KwSymMatrix factor = FromPacked(2, {2, 0, 0});
    Vector c(2, 7.5), sn(2, 8.5);
    EXPECT_FALSE(factor.LTCholDowndate({0, 3}, c, sn, true));
    EXPECT_FALSE(factor.LTCholDowndate({1, 0}, c, sn, false));
    EXPECT_EQ(factor.AsVectorConst(), (Vector{2, 0, 0}));
    EXPECT_EQ(c, Vector(2, 7.5));
    EXPECT_EQ(sn, Vector(2, 8.5));
}

TEST(KwSymMatrixLTChol, InvalidMatrixHasNoPivotAndNoDeterminant) {
    KwSymMatrix invalid(std::numeric_limits<int>::max(), true);
    Vector x = {7.5};
    double det[2] = {7.5, 8.5};
    EXPECT_EQ(invalid.LTChol({}, 0.1, true), 0);
    EXPECT_EQ(invalid.LTDetInverse(det, 10), 0);
    EXPECT_EQ(invalid.LTSolve({}, 0.1, x), -1);
    EXPECT_EQ(invalid.LTSubstitute({}, x), -1);
    EXPECT_FALSE(invalid.TSolveSubst({}, x, false));
    EXPECT_FALSE(invalid.ComputeDeterminant(0.1, det));
    EXPECT_EQ(x, Vector{7.5});
    EXPECT_EQ(det[0], 7.5);
}

}  // namespace
