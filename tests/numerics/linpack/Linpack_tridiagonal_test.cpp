// Tridiagonal matrices: residuals, LAPACK, zero pivots, guard cells.
#include <gtest/gtest.h>
#include <lapacke.h>

#include "numerics/linpack/Linpack.h"
#include "tests/numerics/linpack/Guarded.h"
#include "tests/numerics/linpack/condition.h"

namespace linpack_samples {
namespace {

using KwMath_930::Linpack;

struct Diagonals {
    explicit Diagonals(const Matrix& t) : c(t.rows), d(t.rows), e(t.rows) {
        for (int i = 0; i < t.rows; ++i) {
            d.Data()[i] = t(i, i);
            if (i > 0) {
                c.Data()[i] = t(i, i - 1);
                e.Data()[i - 1] = t(i - 1, i);
            }
        }
    }
    Guarded c;
    Guarded d;
    Guarded e;
};

TEST(LinpackDgtsl, SolvesWithSmallResidualsAndAgreesWithLapack) {
    for (const int n : Orders()) {
        for (const Kind kind : {Kind::kRandom, Kind::kGraded}) {
            const Matrix t = Banded(Sample(kind, n, n, static_cast<unsigned>(n)), 1, 1);
            const Vector b = RandomVector(n, 14);
            Diagonals diagonals(t);
            Guarded x(b);
            ASSERT_EQ(Linpack::Dgtsl(n, diagonals.c.Data(), diagonals.d.Data(), diagonals.e.Data(), x.Data()), 0);
            EXPECT_LE(Residual(t, x.ReadVector(), b), 4.0 * ResidualBound(t, x.ReadVector(), n)) << n;
            Diagonals other(t);
            Vector expected = b;
            ASSERT_EQ(LAPACKE_dgtsv(LAPACK_COL_MAJOR, n, 1, other.c.Data() + 1, other.d.Data(), other.e.Data(),
                                    expected.data(), n),
                      0);
            EXPECT_LE(Distance(x.ReadVector(), expected), 10.0 * n * kEps / TrueRcond(t) * Norm1(expected)) << n;
        }
    }
}

TEST(LinpackDgtsl, ExchangesRowsWhereTheLowerElementIsAtLeastAsLarge) {
    Matrix t(2, 2);
    t.values = {1.5, -1.5, 2.0, 4.0};
    Diagonals diagonals(t);
    Guarded x(Vector{3.0, 6.0});
    ASSERT_EQ(Linpack::Dgtsl(2, diagonals.c.Data(), diagonals.d.Data(), diagonals.e.Data(), x.Data()), 0);
    EXPECT_EQ(diagonals.c[0], -1.5);
    EXPECT_EQ(diagonals.d[0], 4.0);
}

// As published, rows stay only where the lower element is the smaller one: a NaN comes up, and is no zero pivot.
TEST(LinpackDgtsl, ANaNBelowAZeroPivotIsExchangedAndNotReported) {
    Guarded c(Vector{0.0, std::numeric_limits<double>::quiet_NaN(), 0.5});
    Guarded d(Vector{0.0, 2.0, 3.0});
    Guarded e(Vector{1.5, 1.25, 0.0});
    Guarded x(Vector{3.0, 6.0, 1.0});
    EXPECT_EQ(Linpack::Dgtsl(3, c.Data(), d.Data(), e.Data(), x.Data()), 0);
    EXPECT_TRUE(std::isnan(c[0]));
    EXPECT_EQ(d[0], 2.0);
    EXPECT_EQ(e[0], 1.25);
    EXPECT_TRUE(std::isnan(x[0]));
}

TEST(LinpackDgtsl, ReportsTheZeroPivotAndStops) {
    for (int zero = 0; zero < 5; ++zero) {
        Matrix t = Identity(5);
        t(zero, zero) = 0.0;
        Diagonals diagonals(t);
        Guarded x(RandomVector(5, 15));
        // With unit diagonals alone, the exchange with a zero element below leaves pivot `zero` to the next row.
        EXPECT_EQ(Linpack::Dgtsl(5, diagonals.c.Data(), diagonals.d.Data(), diagonals.e.Data(), x.Data()), zero + 1);
    }
}

TEST(LinpackDptsl, SolvesWithSmallResidualsAndAgreesWithLapack) {
    for (const int n : Orders()) {
        Matrix t = Banded(FromUpper(Sample(Kind::kRandom, n, n, static_cast<unsigned>(n)), true), 1, 1);
        for (int i = 0; i < n; ++i) {
            t(i, i) = 2.0 + std::abs(t(i, i));
        }
        const Vector b = RandomVector(n, 16);
        Guarded d(n);
        Guarded e(n > 1 ? n - 1 : 0);
        Vector otherD(static_cast<std::size_t>(n));
        Vector otherE(static_cast<std::size_t>(n));
        for (int i = 0; i < n; ++i) {
            d.Data()[i] = otherD[static_cast<std::size_t>(i)] = t(i, i);
            if (i > 0) {
                e.Data()[i - 1] = otherE[static_cast<std::size_t>(i - 1)] = t(i - 1, i);
            }
        }
        Guarded x(b);
        Linpack::Dptsl(n, d.Data(), e.Data(), x.Data());
        EXPECT_LE(Residual(t, x.ReadVector(), b), ResidualBound(t, x.ReadVector(), n)) << n;
        Vector expected = b;
        ASSERT_EQ(LAPACKE_dptsv(LAPACK_COL_MAJOR, n, 1, otherD.data(), otherE.data(), expected.data(), n), 0);
        EXPECT_LE(Distance(x.ReadVector(), expected), 20.0 * n * kEps * Norm1(expected)) << n;
    }
}

// d is what the elimination left: from both ends, so the first and the last element are the given ones.
TEST(LinpackDptsl, EliminatesFromBothEnds) {
    Guarded d(Vector{4.0, 8.0, 16.0, 8.0, 4.0});
    Guarded e(Vector{2.0, 2.0, 2.0, 2.0});
    Guarded x(Vector{1.0, 1.0, 1.0, 1.0, 1.0});
    Linpack::Dptsl(5, d.Data(), e.Data(), x.Data());
    const double inner = 8.0 - (2.0 / 4.0) * 2.0;
    const double middle = 16.0 - (2.0 / inner) * 2.0 - (2.0 / inner) * 2.0;
    EXPECT_EQ(d.ReadVector(), (Vector{4.0, inner, middle, inner, 4.0}));
}

TEST(LinpackTridiagonal, OrderZeroTouchesNothing) {
    EXPECT_EQ(Linpack::Dgtsl(0, nullptr, nullptr, nullptr, nullptr), 0);
    Linpack::Dptsl(0, nullptr, nullptr, nullptr);
}

}  // namespace
}  // namespace linpack_samples
