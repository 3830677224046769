// Triangular matrices, lower and upper: residuals, inverses, the first zero, guard cells, golden values.
#include <gtest/gtest.h>
#include <lapacke.h>

#include "numerics/linpack/Linpack.h"
#include "tests/numerics/linpack/Guarded.h"
#include "tests/numerics/linpack/condition.h"

namespace linpack_samples {
namespace {

using KwMath_930::Linpack;

Matrix Triangle(bool upper, int n, unsigned seed) {
    Matrix t = FromUpper(RandomMatrix(n, n, seed), false);
    for (int j = 0; j < n; ++j) {
        for (int i = 0; i < j; ++i) {
            t(i, j) /= std::sqrt(static_cast<double>(n));
        }
        t(j, j) += t(j, j) < 0.0 ? -0.5 : 0.5;
    }
    return upper ? t : Transposed(t);
}

Guarded Stored(const Matrix& t, bool upper) {
    return Guarded(upper ? Upper(t.rows) : Lower(t.rows), t);
}

TEST(LinpackDtrsl, SolvesAllFourSystems) {
    for (const int n : Orders()) {
        for (const int job : {0, 1, 10, 11}) {
            const bool upper = job % 10 != 0;
            const Matrix t = Triangle(upper, n, static_cast<unsigned>(n));
            const Matrix system = job >= 10 ? Transposed(t) : t;
            Guarded stored = Stored(t, upper);
            const Vector b = RandomVector(n, 12);
            Guarded x(b);
            EXPECT_EQ(Linpack::Dtrsl(stored.Data(), stored.Ld(), n, x.Data(), job), 0);
            EXPECT_LE(Residual(system, x.ReadVector(), b), ResidualBound(system, x.ReadVector(), n)) << n << ' ' << job;
            EXPECT_EQ(stored.Read().values, t.values);
        }
    }
}

TEST(LinpackDtrsl, ReportsTheFirstZeroAndLeavesTheRightSide) {
    for (const int job : {0, 1, 10, 11}) {
        Matrix t = Triangle(job % 10 != 0, 6, 2);
        t(2, 2) = t(4, 4) = 0.0;
        Guarded stored = Stored(t, job % 10 != 0);
        const Vector b = RandomVector(6, 13);
        Guarded x(b);
        EXPECT_EQ(Linpack::Dtrsl(stored.Data(), stored.Ld(), 6, x.Data(), job), 3);
        EXPECT_EQ(x.ReadVector(), b);
    }
}

TEST(LinpackDtrco, KeepsToTheTrueConditionAndLeavesTheMatrix) {
    for (const int n : Orders()) {
        for (const int job : {0, 1, 7}) {
            const Matrix t = Triangle(job != 0, n, static_cast<unsigned>(50 + n));
            Guarded stored = Stored(t, job != 0);
            Guarded z(n);
            const double rcond = Linpack::Dtrco(stored.Data(), stored.Ld(), n, z.Data(), job);
            SCOPED_TRACE(testing::Message() << n << ' ' << job);
            ExpectCondition(t, rcond, z.ReadVector());
            EXPECT_EQ(stored.Read().values, t.values);
        }
    }
}

TEST(LinpackDtrco, OfASingularTriangleIsZeroToWorkingPrecision) {
    for (const int job : {0, 1}) {
        for (int zero = 0; zero < 6; ++zero) {
            Matrix t = Triangle(job != 0, 6, 4);
            t(zero, zero) = 0.0;
            Guarded stored = Stored(t, job != 0);
            Guarded z(6);
            EXPECT_EQ(1.0 + Linpack::Dtrco(stored.Data(), stored.Ld(), 6, z.Data(), job), 1.0);
        }
    }
}

TEST(LinpackDtrdi, InvertsAndGivesTheDeterminantAsTheJobSays) {
    for (const int n : Orders()) {
        for (const int job : {0, 1, 10, 11, 100, 101, 110, 111}) {
            const bool upper = job % 10 != 0;
            const Matrix t = Triangle(upper, n, static_cast<unsigned>(80 + n));
            Guarded stored = Stored(t, upper);
            Guarded det(2);
            EXPECT_EQ(Linpack::Dtrdi(stored.Data(), stored.Ld(), n, job >= 100 ? det.Data() : nullptr, job), 0);
            if (job / 10 % 10 != 0) {
                EXPECT_LE(Norm1(stored.Read() * t - Identity(n)), 10.0 * n * kEps / TrueRcond(t)) << n << ' ' << job;
            } else {
                EXPECT_EQ(stored.Read().values, t.values);
            }
            if (job >= 100) {
                double logarithm = 0.0;
                for (int i = 0; i < n; ++i) {
                    logarithm += std::log10(std::abs(t(i, i)));
                }
                EXPECT_NEAR(std::log10(std::abs(det[0])) + det[1], logarithm, 1e-10 * n);
            }
        }
    }
}

TEST(LinpackDtrdi, ReportsTheFirstZeroMetAndOnlyWhenItInverts) {
    for (const bool upper : {false, true}) {
        Matrix t = Triangle(upper, 6, 2);
        t(1, 1) = t(4, 4) = 0.0;
        t(0, 0) = 50.0;
        Guarded stored = Stored(t, upper);
        Guarded det(2);
        EXPECT_EQ(Linpack::Dtrdi(stored.Data(), stored.Ld(), 6, det.Data(), upper ? 101 : 100), 0);
        EXPECT_EQ(det.ReadVector(), (Vector{0.0, 1.0}));
        EXPECT_EQ(Linpack::Dtrdi(stored.Data(), stored.Ld(), 6, nullptr, upper ? 11 : 10), upper ? 2 : 5);
    }
}

TEST(LinpackDtrdi, DeterminantsAreExactWhereTheyCanBe) {
    Matrix t = Identity(3);
    t(0, 0) = -4.0;
    t(1, 1) = 2.5;
    t(2, 2) = 0.125;
    t(0, 2) = 3.7;
    Guarded stored = Stored(t, true);
    Guarded det(2);
    Linpack::Dtrdi(stored.Data(), stored.Ld(), 3, det.Data(), 101);
    EXPECT_EQ(det.ReadVector(), (Vector{-1.25, 0.0}));
}

}  // namespace
}  // namespace linpack_samples
