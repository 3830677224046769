// Scaling, trace, extremes and clean-up of the dense symmetric matrix.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "numerics/containers/KwBitSet.h"
#include "numerics/matrix/KwSymMatrix.h"
#include "tests/numerics/matrix/matrix_samples.h"
#include "tests/numerics/matrix/symmetric_samples.h"
#include "tests/numerics/special_values.h"

namespace {

using KwMath_930::KwBitSet;
using KwMath_930::KwSymMatrix;
using symmetric_samples::FromPacked;
using symmetric_samples::kOrders;
using symmetric_samples::RandomMatrix;
using symmetric_samples::Square;
using symmetric_samples::ToSquare;
using Vector = std::vector<double>;

constexpr double kLargest = std::numeric_limits<double>::max();
using numerics_samples::kInfinity;
using numerics_samples::kNaN;

KwSymMatrix Invalid() {
    return KwSymMatrix(std::numeric_limits<int>::max(), true);
}

TEST(KwSymMatrixScale, AddToDiagonalLeavesTheRest) {
    for (const int order : kOrders) {
        KwSymMatrix matrix = RandomMatrix(order, 3);
        Square expected = ToSquare(matrix);
        for (std::size_t i = 0; i < expected.size(); ++i) {
            expected[i][i] += -2.385;
        }
        matrix.AddToDiagonal(-2.385);
        EXPECT_EQ(ToSquare(matrix), expected);
    }
}

TEST(KwSymMatrixScale, MultiplyAndNegateTouchEveryElement) {
    for (const int order : kOrders) {
        KwSymMatrix matrix = RandomMatrix(order, 3);
        Vector expected = matrix.AsVectorConst();
        for (double& element : expected) {
            element *= 0.375;
        }
        matrix.MultiplyByNumber(0.375);
        EXPECT_EQ(matrix.AsVectorConst(), expected);
        for (double& element : expected) {
            element = -element;
        }
        matrix.ChangeSign();
        EXPECT_EQ(matrix.AsVectorConst(), expected);
    }
}

TEST(KwSymMatrixScale, NegationTurnsTheSignOfZero) {
    KwSymMatrix matrix(1, true);
    matrix.ChangeSign();
    EXPECT_TRUE(std::signbit(matrix.GetElem(0)));
}

TEST(KwSymMatrixTrace, IsTheDiagonalSummedFromTheTop) {
    for (const int order : kOrders) {
        const KwSymMatrix matrix = RandomMatrix(order, 6);
        const Square square = ToSquare(matrix);
        double expected = 0.0;
        for (std::size_t i = 0; i < square.size(); ++i) {
            expected += square[i][i];
        }
        EXPECT_EQ(matrix.Trace(), expected);
    }
    EXPECT_EQ(Invalid().Trace(), 0.0);
    EXPECT_TRUE(std::isnan(FromPacked(2, {1, 2, kNaN}).Trace()));
}

TEST(KwSymMatrixExtremes, EmptyMatrixLeavesItsOutputsUnwritten) {
    double a = 1.5, b = 2.5, c = 3.5, d = 4.5;
    KwSymMatrix().MaxMinDiag(a, b);
    Invalid().MaxMinDiag(a, b);
    KwSymMatrix().MaxMinDiagOffDiag(a, b, c, d);
    Invalid().MaxMinDiagOffDiag(a, b, c, d);
    EXPECT_EQ((Vector{a, b, c, d}), (Vector{1.5, 2.5, 3.5, 4.5}));
}

TEST(KwSymMatrixExtremes, AreThoseOfTheDiagonalAndOfTheRest) {
    const KwSymMatrix matrix = FromPacked(3, {-4.5, 9.25, 2.385, -11.5, 0.5, 1.25});
    double a = 0, b = 0, c = 0, d = 0;
    matrix.MaxMinDiag(a, b);
    EXPECT_EQ((Vector{a, b}), (Vector{2.385, -4.5}));
    a = b = 0;
    matrix.MaxMinDiagOffDiag(a, b, c, d);
    EXPECT_EQ((Vector{a, b, c, d}), (Vector{2.385, -4.5, 9.25, -11.5}));
}

TEST(KwSymMatrixExtremes, SingleRowKeepsTheStartValuesOffTheDiagonal) {
    double a = 0, b = 0, c = 0, d = 0;
    FromPacked(1, {-2.385}).MaxMinDiagOffDiag(a, b, c, d);
    EXPECT_EQ((Vector{a, b, c, d}), (Vector{-2.385, -2.385, -kLargest, kLargest}));
}

TEST(KwSymMatrixExtremes, NaNNeverWinsAndInfinityOnlyBeyondTheStartValues) {
    double a = 0, b = 0;
    FromPacked(2, {kNaN, 0, kNaN}).MaxMinDiag(a, b);
    EXPECT_EQ((Vector{a, b}), (Vector{-kLargest, kLargest}));
    FromPacked(2, {-kInfinity, 0, kNaN}).MaxMinDiag(a, b);
    EXPECT_EQ((Vector{a, b}), (Vector{-kLargest, -kInfinity}));
}

TEST(KwSymMatrixZeroOutNonDiag, ZeroesWhatIsSmallAgainstTheGeometricMeanOfTheDiagonal) {
    KwSymMatrix small = FromPacked(2, {4, 0.2, 1});
    small.ZeroOutNonDiag(0.1);
    EXPECT_EQ(small.AsVectorConst(), (Vector{4, 0, 1}));
    KwSymMatrix kept = FromPacked(2, {4, 0.25, 1});
    kept.ZeroOutNonDiag(0.1);
    EXPECT_EQ(kept.AsVectorConst(), (Vector{4, 0.25, 1}));
}

TEST(KwSymMatrixZeroOutNonDiag, EqualityCountsAsSmallAndSignsDoNotMatter) {
    KwSymMatrix matrix = FromPacked(3, {-4, -0.5, 1, 0.75, -0.25, 0.25});
    matrix.ZeroOutNonDiag(0.25);  // thresholds 0.5, 0.25, 0.125
    EXPECT_EQ(matrix.AsVectorConst(), (Vector{-4, 0, 1, 0.75, -0.25, 0.25}));
}

TEST(KwSymMatrixZeroOutNonDiag, DoesNothingUnlessToleranceIsPositive) {
    for (const double tol : {0.0, -1.0, kNaN}) {
        KwSymMatrix matrix = FromPacked(2, {4, 0.0001, 1});
        matrix.ZeroOutNonDiag(tol);
        EXPECT_EQ(matrix.GetElem(1), 0.0001) << tol;
    }
}

TEST(KwSymMatrixZeroOutNonDiag, KeepsNaNAndTouchesNoDiagonal) {
    KwSymMatrix matrix = FromPacked(2, {1e-300, kNaN, 1e300});
    matrix.ZeroOutNonDiag(10.0);
    EXPECT_TRUE(std::isnan(matrix.GetElem(1)));
    EXPECT_EQ(matrix.GetElem(0), 1e-300);
}

TEST(KwSymMatrixZeroOutAllSmall, IsStrictAgainstTheLargestMagnitude) {
    KwSymMatrix matrix = FromPacked(3, {0.49, 0.5, -0.49, -5, -0.5, 0.4999999});
    matrix.ZeroOutAllSmall(0.1);
    EXPECT_EQ(matrix.AsVectorConst(), (Vector{0, 0.5, 0, -5, -0.5, 0}));
}

TEST(KwSymMatrixZeroOutAllSmall, DoesNothingUnlessToleranceAndThresholdArePositive) {
    for (const double tol : {0.0, -1.0, kNaN}) {
        KwSymMatrix matrix = FromPacked(2, {4, 0.0001, 1});
        matrix.ZeroOutAllSmall(tol);
        EXPECT_EQ(matrix.AsVectorConst(), (Vector{4, 0.0001, 1})) << tol;
    }
    KwSymMatrix tiny = FromPacked(2, {5e-324, 0, 5e-324});
    tiny.ZeroOutAllSmall(0.25);
    EXPECT_EQ(tiny.AsVectorConst(), (Vector{5e-324, 0, 5e-324}));
    KwSymMatrix().ZeroOutAllSmall(0.1);
}

TEST(KwSymMatrixZeroOutAllSmall, ToleranceAboveOneZeroesTheLargestToo) {
    KwSymMatrix matrix = FromPacked(2, {4, 0.0001, kNaN});
    matrix.ZeroOutAllSmall(1.5);
    EXPECT_EQ(matrix.GetElem(0), 0.0);
    EXPECT_EQ(matrix.GetElem(1), 0.0);
    EXPECT_TRUE(std::isnan(matrix.GetElem(2)));
}

TEST(KwSymMatrixAdjustOffDiagCorr, PullsOnlyElementsAtOrBeyondOneInside) {
    KwSymMatrix matrix = FromPacked(3, {1.2, 1.2, -1.0, -1.0, 0.999, 1.0});
    EXPECT_TRUE(matrix.AdjustOffDiagCorr(0.01));
    EXPECT_EQ(matrix.AsVectorConst(), (Vector{1.2, 0.99, -1.0, -0.99, 0.999, 1.0}));
    KwSymMatrix bounds = FromPacked(3, {1, 1.0, 1, -1.0, -0.999, 1});
    EXPECT_TRUE(bounds.AdjustOffDiagCorr(0.25));
    EXPECT_EQ(bounds.AsVectorConst(), (Vector{1, 0.75, 1, -0.75, -0.999, 1}));
}

TEST(KwSymMatrixAdjustOffDiagCorr, BoundsOfEpsilon) {
    KwSymMatrix matrix = FromPacked(2, {1, 1, 1});
    for (const double eps : {1.0, 1.5, -0.01, -kInfinity}) {
        EXPECT_FALSE(matrix.AdjustOffDiagCorr(eps)) << eps;
    }
    EXPECT_EQ(matrix.GetElem(1), 1.0);
    EXPECT_TRUE(matrix.AdjustOffDiagCorr(0.0));
    EXPECT_EQ(matrix.GetElem(1), 1.0);
    EXPECT_TRUE(KwSymMatrix().AdjustOffDiagCorr(0.5));
    EXPECT_FALSE(KwSymMatrix().AdjustOffDiagCorr(1.0));
}

TEST(KwSymMatrixAdjustOffDiagCorr, InfinityIsPulledInsideAndNaNStays) {
    KwSymMatrix matrix = FromPacked(3, {1, kInfinity, 1, kNaN, -kInfinity, 1});
    EXPECT_TRUE(matrix.AdjustOffDiagCorr(0.25));
    EXPECT_EQ(matrix.GetElem(1, 0), 0.75);
    EXPECT_TRUE(std::isnan(matrix.GetElem(2, 0)));
    EXPECT_EQ(matrix.GetElem(2, 1), -0.75);
}

TEST(KwSymMatrixComputeAXpY, AddsAMultipleOfEveryKind) {
    for (const int n : kOrders) {
        for (const auto& x : matrix_samples::SymOfEveryKind(n, 2)) {
            KwSymMatrix matrix = RandomMatrix(n, 1);
            const KwSymMatrix before(matrix);
            EXPECT_TRUE(matrix.ComputeAXpY(-0.375, *x));
            for (int i = 0; i < n; ++i) {
                for (int j = 0; j <= i; ++j) {
                    EXPECT_EQ(matrix.GetElem(i, j), before.GetElem(i, j) + -0.375 * x->GetElem(i, j));
                }
            }
        }
    }
    KwSymMatrix matrix = FromPacked(1, {2.5});
    EXPECT_TRUE(matrix.ComputeAXpY(3.0, matrix));
    EXPECT_EQ(matrix.GetElem(0), 10.0);
    EXPECT_FALSE(matrix.ComputeAXpY(3.0, RandomMatrix(2, 1)));
    EXPECT_EQ(matrix.GetElem(0), 10.0);
}

TEST(KwSymMatrixTraces, OfInnerParts) {
    const KwSymMatrix matrix = RandomMatrix(6, 1);
    for (int first = 0; first <= 6; ++first) {
        double trace = 0.0;
        for (int i = first; i < 6; ++i) {
            trace += matrix.GetElem(i, i);
        }
        EXPECT_EQ(matrix.SubSymTrace(first), trace);
        for (const auto& m : matrix_samples::SymOfEveryKind(6 - first, 2)) {
            double product = 0.0;
            for (int i = first; i < 6; ++i) {
                for (int j = first; j < 6; ++j) {
                    product += matrix.GetElem(i, j) * m->GetElem(i - first, j - first);
                }
            }
            matrix_samples::ExpectNear(matrix.TraceOfProductSubSym(*m, first), product, 100.0);
        }
        for (const auto& r : matrix_samples::RectOfEveryKind(6 - first, 6 - first, 2)) {
            double product = 0.0;
            for (int i = first; i < 6; ++i) {
                for (int j = first; j < 6; ++j) {
                    product += matrix.GetElem(i, j) * r->GetElem(i - first, j - first);
                }
            }
            matrix_samples::ExpectNear(matrix.TraceOfProductSubMatSym(*r, first), product, 100.0);
        }
    }
    EXPECT_EQ(matrix.SubSymTrace(-1), 0.0);
    EXPECT_EQ(matrix.SubSymTrace(7), 0.0);
    EXPECT_EQ(matrix.TraceOfProductSubSym(RandomMatrix(3, 1), 4), 0.0);
    EXPECT_EQ(matrix.TraceOfProductSubSym(RandomMatrix(3, 1), -1), 0.0);
    EXPECT_EQ(matrix.TraceOfProductSubMatSym(matrix_samples::RandomRect(3, 2, 1), 0), 0.0);
    EXPECT_EQ(matrix.TraceOfProductSubMatSym(matrix_samples::RandomRect(3, 3, 1), 4), 0.0);
    EXPECT_EQ(matrix.TraceOfProduct(RandomMatrix(5, 1)), 0.0);
}

TEST(KwSymMatrixDiagonal, PartAndZeroes) {
    KwSymMatrix matrix = FromPacked(3, {0, 1.5, 2.5, 1.5, 1.5, -0.0});
    EXPECT_TRUE(matrix.AddToDiagonalPart(0.5, 1, 1));
    EXPECT_EQ(matrix.AsVectorConst(), (Vector{0, 1.5, 3, 1.5, 1.5, 0}));
    EXPECT_FALSE(matrix.AddToDiagonalPart(0.5, 1, 3));
    EXPECT_FALSE(matrix.AddToDiagonalPart(0.5, -1, 1));
    EXPECT_FALSE(matrix.AddToDiagonalPart(0.5, 1, -1));
    EXPECT_EQ(matrix.ReplaceDiagZeroes(7.5), 2);
    EXPECT_EQ(matrix.AsVectorConst(), (Vector{7.5, 1.5, 3, 1.5, 1.5, 7.5}));
    EXPECT_EQ(matrix.ReplaceDiagZeroes(7.5), 0);
}

TEST(KwSymMatrixRowsOfZeros, MarkedOrOfSmallDiagonal) {
    const KwSymMatrix before = FromPacked(3, {4, 1.5, 0.25, 2.5, 3.5, 0.5});
    KwBitSet marked(3);
    marked.Set(1, true);
    for (const bool isCovar : {true, false}) {
        KwSymMatrix matrix(before);
        EXPECT_TRUE(isCovar ? matrix.SetCovarZeros(marked) : matrix.ZeroOutRedundant(marked));
        EXPECT_EQ(matrix.AsVectorConst(), (Vector{4, 0, 0, 2.5, 0, 0.5}));
        EXPECT_FALSE(isCovar ? matrix.SetCovarZeros(KwBitSet(2)) : matrix.ZeroOutRedundant(KwBitSet(2)));
    }
    KwSymMatrix matrix(before);
    EXPECT_EQ(matrix.ZeroOutRowsForSmallDiag(-0.1), -1);
    EXPECT_EQ(matrix.ZeroOutRowsForSmallDiag(kNaN), -1);
    EXPECT_EQ(matrix.AsVectorConst(), before.AsVectorConst());
    // 0.0625 of 4 is 0.25: equality counts as small.
    EXPECT_EQ(matrix.ZeroOutRowsForSmallDiag(0.0625), 1);
    EXPECT_EQ(matrix.AsVectorConst(), (Vector{4, 0, 0, 2.5, 0, 0.5}));
    EXPECT_EQ(KwSymMatrix().ZeroOutRowsForSmallDiag(0.1), 0);
}

}  // namespace
