// The sweep operator: against the explicit formula, the inverse and itself.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "numerics/containers/KwBitSet.h"
#include "tests/numerics/matrix/matrix_samples.h"
#include "tests/numerics/matrix/symmetric_samples.h"
#include "tests/numerics/special_values.h"

namespace {

using KwMath_930::KwBitSet;
using KwMath_930::KwSymMatrix;
using matrix_samples::ExpectNear;
using matrix_samples::Full;
using matrix_samples::PositiveDefinite;
using matrix_samples::RandomVector;
using matrix_samples::Square;
using matrix_samples::Vector;
using symmetric_samples::Diagonal;
using symmetric_samples::FromPacked;

using numerics_samples::kNaN;

// The sweep by its formula on the full square.
Square Swept(Square a, std::size_t k) {
    const double p = a[k][k];
    Square result = a;
    for (std::size_t i = 0; i < a.size(); ++i) {
        for (std::size_t j = 0; j < a.size(); ++j) {
            if (i != k && j != k) {
                result[i][j] = a[i][j] - a[i][k] * a[k][j] / p;
            } else if (i != j) {
                result[i][j] = a[i][j] / std::abs(p);
            }
        }
    }
    result[k][k] = -1.0 / p;
    return result;
}

TEST(KwSymMatrixSweep, AgreesWithTheFormulaForEachRow) {
    for (const int n : {1, 2, 3, 5, 8, 17, 40}) {
        for (int k = 0; k < n; k += 1 + n / 8) {
            KwSymMatrix matrix = PositiveDefinite(n, 1);
            const Square expected = Swept(Full(matrix), static_cast<std::size_t>(k));
            KwBitSet swept(n);
            EXPECT_TRUE(matrix.Sweep(k, 1e-9, Diagonal(matrix), swept, true));
            ExpectNear(Full(matrix), expected);
            EXPECT_TRUE(swept.IsIn(k));
            EXPECT_EQ(swept.InSet(), 1);
            const Square back = Swept(Full(matrix), static_cast<std::size_t>(k));
            EXPECT_TRUE(matrix.Sweep(k, 1e-9, Diagonal(PositiveDefinite(n, 1)), swept, true));
            ExpectNear(Full(matrix), back);
            ExpectNear(Full(matrix), Full(PositiveDefinite(n, 1)));
            EXPECT_EQ(swept.InSet(), 0);
        }
    }
}

// The pivot row is gathered in stretches of columns; this order has three.
TEST(KwSymMatrixSweep, LargeOrdersAreSweptInStretches) {
    const int n = 4100;
    KwSymMatrix matrix(n, true);
    const Vector x = RandomVector(n, 3);
    matrix.SetToVV(x);
    matrix.AddToDiagonal(2.5);
    for (const int k : {0, 2047, 2048, 4099}) {
        KwSymMatrix swept(matrix);
        KwBitSet bits(n);
        const Vector ref(x.size(), 1.0);
        ASSERT_TRUE(swept.Sweep(k, 1e-9, ref, bits, true));
        const double p = matrix.GetElem(k, k);
        for (const int i : {0, 1, 2046, 2047, 2048, 2049, 4095, 4096, 4098, 4099}) {
            for (const int j : {0, 2047, 2048, 4096, 4099}) {
                const double expected = i == k && j == k ? -1.0 / p
                                        : i == k || j == k
                                            ? matrix.GetElem(i, j) / p
                                            : matrix.GetElem(i, j) - matrix.GetElem(i, k) * matrix.GetElem(k, j) / p;
                EXPECT_NEAR(swept.GetElem(i, j), expected, 1e-13 * std::abs(matrix.GetElem(i, j)) + 1e-15)
                    << k << i << j;
            }
        }
    }
}

TEST(KwSymMatrixSweep, AllRowsGiveMinusTheInverse) {
    for (const int n : {1, 2, 3, 5, 8, 17, 40}) {
        const KwSymMatrix matrix = PositiveDefinite(n, 2);
        KwSymMatrix inverse;
        matrix.CholInverse(Diagonal(matrix), 1e-10, inverse);
        inverse.ChangeSign();
        KwSymMatrix swept(matrix);
        KwBitSet bits(n);
        EXPECT_EQ(swept.SweepOnAll(1e-9, bits, true, false, true, nullptr), n);
        ExpectNear(Full(swept), Full(inverse));
        EXPECT_EQ(bits.InSet(), n);
        EXPECT_EQ(swept.SweepOnAll(1e-9, bits, true, false, true, nullptr), 0);
        EXPECT_EQ(swept.SweepOnAll(1e-9, bits, false, false, true, nullptr), n);
        ExpectNear(Full(swept), Full(matrix));
        EXPECT_EQ(bits.InSet(), 0);
    }
}

TEST(KwSymMatrixSweep, RefusesAPivotWithinTheToleranceOfItsReference) {
    KwSymMatrix matrix = FromPacked(2, {0.5, 1.5, 9});
    KwBitSet swept(2);
    EXPECT_FALSE(matrix.Sweep(0, 0.1, Vector{5, 9}, swept, true));
    EXPECT_FALSE(matrix.SweepOrig(0, 0.1, Vector{5, 9}, swept, true));
    EXPECT_EQ(matrix.AsVectorConst(), (Vector{0.5, 1.5, 9}));
    EXPECT_EQ(swept.InSet(), 0);
    EXPECT_TRUE(matrix.SweepOrig(0, 0.1, Vector{4.9, 9}, swept, true));
}

TEST(KwSymMatrixSweep, RefusesARowCollinearWithThoseThatAreIn) {
    // The pivot alone passes; the inverse of the first row would grow beyond 1 / (tol ref).
    KwSymMatrix matrix = FromPacked(2, {4, 4, 4.001});
    KwBitSet swept(2);
    const Vector ref = {4, 0.0001};
    EXPECT_TRUE(matrix.Sweep(0, 1e-3, ref, swept, true));
    const Vector before = matrix.AsVectorConst();
    EXPECT_TRUE(matrix.CheckMDependent(1, ref, swept, 1e-3));
    EXPECT_FALSE(matrix.Sweep(1, 1e-3, ref, swept, true));
    EXPECT_EQ(matrix.AsVectorConst(), before);
    EXPECT_FALSE(swept.IsIn(1));
    EXPECT_FALSE(matrix.CheckMDependent(1, ref, swept, 1e-6));
    EXPECT_TRUE(matrix.Sweep(1, 1e-6, ref, swept, true));
}

TEST(KwSymMatrixSweep, ChecksArgumentsWhenAsked) {
    const KwSymMatrix original = FromPacked(2, {4, 2, 9});
    KwSymMatrix matrix(original);
    KwBitSet swept(2), shortSet(1);
    const Vector ref = {4, 9};
    EXPECT_FALSE(matrix.Sweep(-1, 0.1, ref, swept, true));
    EXPECT_FALSE(matrix.Sweep(2, 0.1, ref, swept, true));
    EXPECT_FALSE(matrix.Sweep(0, 0.0, ref, swept, true));
    EXPECT_FALSE(matrix.Sweep(0, 0.1, ref, shortSet, true));
    EXPECT_FALSE(matrix.Sweep(0, 0.1, Vector{4, -9}, swept, true));
    EXPECT_FALSE(matrix.Sweep(0, 0.1, Vector{4}, swept, true));
    const double array[] = {4, -9};
    EXPECT_FALSE(matrix.Sweep(0, 0.1, array, swept, true));
    EXPECT_EQ(matrix.AsVectorConst(), original.AsVectorConst());
    EXPECT_TRUE(matrix.Sweep(0, 0.0, array, swept, false));
    matrix = original;
    // A bit beyond the set counts as clear and is not flipped.
    EXPECT_TRUE(matrix.Sweep(1, 0.1, ref, shortSet, false));
    EXPECT_EQ(shortSet.Size(), 1);
    EXPECT_EQ(shortSet.InSet(), 0);
}

TEST(KwSymMatrixSweepOn, SelectedRowsInListOrder) {
    const KwSymMatrix matrix = PositiveDefinite(5, 4);
    KwSymMatrix swept(matrix), expected(matrix);
    KwBitSet bits(5), expectedBits(5);
    Vector ref = Diagonal(matrix);
    EXPECT_EQ(swept.SweepOnSelected({3, 1, 3, 0}, 1e-9, bits, true, ref.data()), 4);
    for (const int k : {3, 1, 3, 0}) {
        expected.Sweep(k, 1e-9, ref, expectedBits, true);
    }
    EXPECT_EQ(Full(swept), Full(expected));
    EXPECT_TRUE(bits == expectedBits);
    EXPECT_EQ(swept.SweepOnSelected({2, 5}, 1e-9, bits, true, nullptr), -1);
    EXPECT_EQ(Full(swept), Full(expected));
}

TEST(KwSymMatrixSweepOn, ManyAddsTheLogarithmsOfThePivots) {
    const KwSymMatrix matrix = PositiveDefinite(6, 4);
    KwSymMatrix leading(matrix), swept(matrix);
    leading.Resize(4);
    double det[2];
    ASSERT_TRUE(leading.ComputeDeterminant(1e-12, det));
    const double expected = std::log(det[0]) + det[1] * std::log(10.0);
    KwBitSet bits(6);
    double logDet = 2.5;
    EXPECT_EQ(swept.SweepOnMany(4, 1e-9, true, bits, logDet, true, nullptr), 4);
    EXPECT_NEAR(logDet, 2.5 + expected, 1e-12 * expected);
    EXPECT_EQ(bits.InRange(0, 3), 4);
    EXPECT_EQ(bits.InSet(), 4);
    EXPECT_EQ(swept.SweepOnMany(4, 1e-9, false, bits, logDet, true, nullptr), 4);
    EXPECT_NEAR(logDet, 2.5, 1e-12 * expected);
    EXPECT_EQ(swept.SweepOnMany(7, 1e-9, true, bits, logDet, true, nullptr), -1);
    EXPECT_EQ(swept.SweepOnMany(-1, 1e-9, true, bits, logDet, true, nullptr), -1);
}

TEST(KwSymMatrixSweepOn, AllSkipsRefusedRowsAndRestarts) {
    // Row 1 repeats row 0.
    KwSymMatrix matrix = FromPacked(3, {4, 4, 4, 1, 1, 9});
    KwBitSet bits(3);
    EXPECT_EQ(matrix.SweepOnAll(1e-9, bits, true, false, true, nullptr), 2);
    EXPECT_TRUE(bits.IsIn(0));
    EXPECT_FALSE(bits.IsIn(1));
    EXPECT_TRUE(bits.IsIn(2));
    KwSymMatrix fresh = FromPacked(3, {4, 4, 4, 1, 1, 9});
    EXPECT_EQ(fresh.SweepOnAll(1e-9, bits, true, true, true, nullptr), 2);
    EXPECT_EQ(Full(fresh), Full(matrix));
}

TEST(KwSymMatrixSweepOn, BadArgumentsGiveMinusOneAndChangeNothing) {
    const KwSymMatrix original = FromPacked(2, {4, 2, 9});
    KwSymMatrix matrix(original);
    KwBitSet bits(2), shortSet(1);
    double negative[] = {4, -9};
    double logDet = 2.5;
    EXPECT_EQ(matrix.SweepOnAll(0.0, bits, true, true, true, nullptr), -1);
    EXPECT_EQ(matrix.SweepOnAll(0.1, shortSet, true, true, true, nullptr), -1);
    EXPECT_EQ(matrix.SweepOnAll(0.1, bits, true, true, true, negative), -1);
    EXPECT_EQ(matrix.SweepOnSelected({0}, -0.1, bits, true, nullptr), -1);
    EXPECT_EQ(matrix.SweepOnMany(2, 0.1, true, shortSet, logDet, true, nullptr), -1);
    EXPECT_EQ(matrix.AsVectorConst(), original.AsVectorConst());
    EXPECT_EQ(logDet, 2.5);
    KwSymMatrix empty;
    KwBitSet none;
    EXPECT_EQ(empty.SweepOnAll(0.1, none, true, false, true, nullptr), 0);
    EXPECT_EQ(empty.SweepOnMany(0, 0.1, true, none, logDet, true, nullptr), 0);
}

TEST(KwSymMatrixCheckMDependent, AnswersWithoutSweeping) {
    const KwSymMatrix matrix = FromPacked(2, {4, 2, 9});
    KwBitSet swept(2);
    const Vector ref = {4, 9};
    EXPECT_FALSE(matrix.CheckMDependent(0, ref, swept, 0.1));
    EXPECT_TRUE(matrix.CheckMDependent(0, ref, swept, 1.0));
    EXPECT_FALSE(matrix.CheckMDependent(2, ref, swept, 1.0));
    EXPECT_FALSE(matrix.CheckMDependent(-1, ref, swept, 1.0));
    EXPECT_FALSE(matrix.CheckMDependent(0, {4}, swept, 1.0));
    swept.Set(0, true);
    EXPECT_FALSE(matrix.CheckMDependent(0, ref, swept, 1.0));
}

// y = 2.5 x1 - 1.25 x2 exactly: the coefficients stand in the last row.
TEST(KwSymMatrixGetRegCoeffs, AreTheRowOfTheDependentVariable) {
    KwSymMatrix crossProducts(3, true);
    for (const Vector& x : {Vector{1, 2}, Vector{3, -1}, Vector{0.5, 4}, Vector{-2, 2.5}}) {
        EXPECT_TRUE(crossProducts.UpdateXX({x[0], x[1], 2.5 * x[0] - 1.25 * x[1]}, 1.0));
    }
    KwBitSet swept(3);
    double logDet = 0.0;
    EXPECT_EQ(crossProducts.SweepOnMany(2, 1e-9, true, swept, logDet, true, nullptr), 2);
    Vector b = {7.5};
    EXPECT_TRUE(crossProducts.GetRegCoeffs(b, swept));
    ASSERT_EQ(b.size(), 2u);
    EXPECT_NEAR(b[0], 2.5, 1e-13);
    EXPECT_NEAR(b[1], -1.25, 1e-13);
    swept.Set(1, false);
    EXPECT_TRUE(crossProducts.GetRegCoeffs(b, swept));
    EXPECT_EQ(b[1], 0.0);
    EXPECT_FALSE(crossProducts.GetRegCoeffs(b, KwBitSet(1)));
    EXPECT_FALSE(KwSymMatrix().GetRegCoeffs(b, swept));
    EXPECT_EQ(b.size(), 2u);
}

TEST(KwSymMatrixSweep, NaNPivotIsSweptAsTheTestLetsItPass) {
    KwSymMatrix matrix = FromPacked(1, {kNaN});
    KwBitSet swept(1);
    EXPECT_TRUE(matrix.Sweep(0, 0.1, Vector{1}, swept, true));
    EXPECT_TRUE(std::isnan(matrix.GetElem(0)));
}

TEST(KwSymMatrixSweep, TwiceIsTheIdentityAtEveryScaleAndOrder) {
    for (const int n : {1, 2, 3, 5, 8, 17, 40, 200}) {
        for (const double scale : {1e-150, 1.0, 1e150}) {
            KwSymMatrix matrix = PositiveDefinite(n, 6);
            matrix.MultiplyByNumber(scale);
            const Square before = Full(matrix);
            KwBitSet swept(n);
            const Vector ref = Diagonal(matrix);
            for (const int k : {0, n / 2, n - 1}) {
                ASSERT_TRUE(matrix.Sweep(k, 1e-9, ref, swept, true)) << n << ", " << k;
                EXPECT_NE(Full(matrix), before);
                ASSERT_TRUE(matrix.Sweep(k, 1e-9, ref, swept, true));
                EXPECT_EQ(swept.InSet(), 0);
            }
            Square after = Full(matrix), expected = before;
            for (std::size_t i = 0; i < after.size(); ++i) {
                for (std::size_t j = 0; j < after.size(); ++j) {
                    after[i][j] /= scale;
                    expected[i][j] /= scale;
                }
            }
            ExpectNear(after, expected);
        }
    }
}

TEST(KwSymMatrixSweep, AllRowsOfOrder200GiveMinusTheInverse) {
    const KwSymMatrix matrix = PositiveDefinite(200, 2);
    KwSymMatrix inverse, swept(matrix);
    ASSERT_EQ(matrix.CholInverse(Diagonal(matrix), 1e-10, inverse), 200);
    inverse.ChangeSign();
    KwBitSet bits(200);
    EXPECT_EQ(swept.SweepOnAll(1e-9, bits, true, false, true, nullptr), 200);
    ExpectNear(Full(swept), Full(inverse));
}

TEST(KwSymMatrixSweep, InvalidMatrixIsRefused) {
    KwSymMatrix invalid(std::numeric_limits<int>::max(), true);
    KwBitSet swept(2);
    double logDet = 2.5;
    Vector b = {7.5};
    EXPECT_FALSE(invalid.Sweep(0, 0.1, Vector{1}, swept, false));
    EXPECT_EQ(invalid.SweepOnAll(0.1, swept, true, true, true, nullptr), -1);
    EXPECT_EQ(invalid.SweepOnSelected({}, 0.1, swept, true, nullptr), -1);
    EXPECT_EQ(invalid.SweepOnMany(0, 0.1, true, swept, logDet, true, nullptr), -1);
    EXPECT_FALSE(invalid.GetRegCoeffs(b, swept));
    EXPECT_EQ(logDet, 2.5);
    EXPECT_EQ(b, Vector{7.5});
}

}  // namespace
