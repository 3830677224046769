// General matrices: bit for bit against plain elimination, residuals, LAPACK, guard cells, golden values.
#include <gtest/gtest.h>
#include <lapacke.h>

#include "numerics/linpack/Linpack.h"
#include "tests/numerics/linpack/Guarded.h"
#include "tests/numerics/linpack/condition.h"

namespace linpack_samples {
namespace {

using KwMath_930::Linpack;

struct Factors {
    explicit Factors(const Matrix& a) : lu(Full(a.rows, a.rows), a), pivots(a.rows) {
        info = Linpack::Dgefa(lu.Data(), lu.Ld(), a.rows, pivots.Data());
    }
    Guarded lu;
    GuardedInts pivots;
    int info;
};

// Elimination as it is told: each step is applied at once to all columns behind it.
struct PlainElimination {
    explicit PlainElimination(const Matrix& matrix) : a(matrix), pivots(static_cast<std::size_t>(matrix.rows)) {
        const int n = a.rows;
        for (int k = 0; k < n; ++k) {
            int pivot = k;
            for (int i = k + 1; i < n; ++i) {
                if (std::abs(a(i, k)) > std::abs(a(pivot, k))) {
                    pivot = i;
                }
            }
            pivots[static_cast<std::size_t>(k)] = pivot + 1;
            if (a(pivot, k) == 0.0) {
                info = k + 1;
            } else {
                Eliminate(k, pivot);
            }
        }
    }
    void Eliminate(int k, int pivot) {
        std::swap(a(pivot, k), a(k, k));
        const double factor = -1.0 / a(k, k);
        for (int i = k + 1; i < a.rows; ++i) {
            a(i, k) *= factor;
        }
        for (int j = k + 1; j < a.rows; ++j) {
            std::swap(a(pivot, j), a(k, j));
            for (int i = k + 1; i < a.rows && a(k, j) != 0.0; ++i) {
                a(i, j) += a(k, j) * a(i, k);
            }
        }
    }
    Matrix a;
    std::vector<int> pivots;
    int info = 0;
};

TEST(LinpackDgefa, GivesTheBitsOfPlainElimination) {
    for (const int n : Orders()) {
        for (const Kind kind : kKinds) {
            const Matrix a = Sample(kind, n, n, static_cast<unsigned>(n));
            const Factors factors(a);
            const PlainElimination plain(a);
            EXPECT_EQ(factors.lu.Read().values, plain.a.values) << n;
            EXPECT_EQ(factors.pivots.Read(), plain.pivots) << n;
            EXPECT_EQ(factors.info, plain.info) << n;
        }
    }
}

TEST(LinpackDgefa, GivesTheBitsOfPlainEliminationBehindZeroPivots) {
    for (int n = 2; n <= 14; ++n) {
        for (int zero = 0; zero < n; ++zero) {
            Matrix a = Sample(Kind::kRandom, n, n, static_cast<unsigned>(n));
            for (int i = 0; i < n; ++i) {
                a(i, zero) = 0.0;
                a(i, n - 1) = i % 3 == 0 ? 0.0 : a(i, n - 1);
            }
            const Factors factors(a);
            const PlainElimination plain(a);
            EXPECT_EQ(factors.lu.Read().values, plain.a.values) << n << ' ' << zero;
            EXPECT_EQ(factors.pivots.Read(), plain.pivots);
            EXPECT_EQ(factors.info, plain.info);
        }
    }
}

TEST(LinpackDgefa, ReportsTheLastZeroPivotMet) {
    Matrix a = Sample(Kind::kRandom, 6, 6, 5);
    for (int i = 0; i < 6; ++i) {
        a(i, 2) = 0.0;
    }
    EXPECT_EQ(Factors(a).info, 3);
    for (int i = 0; i < 6; ++i) {
        a(i, 4) = 0.0;
    }
    EXPECT_EQ(Factors(a).info, 5);
}

TEST(LinpackDgefa, ReportsTheOrderWhenTheLastPivotVanishes) {
    Matrix a(3, 3);
    a.values = {4, 2, 1, 2, 3, 1, 8, 5, 2.25};  // all steps are exact
    EXPECT_EQ(Factors(a).info, 3);
}

TEST(LinpackDgefa, OfASingleElementSetsThePivotAndTellsZero) {
    Matrix a(1, 1);
    const Factors zero(a);
    EXPECT_EQ(zero.info, 1);
    EXPECT_EQ(zero.pivots[0], 1);
    a(0, 0) = -2.385;
    const Factors regular(a);
    EXPECT_EQ(regular.info, 0);
    EXPECT_EQ(regular.pivots[0], 1);
    EXPECT_EQ(regular.lu(0, 0), -2.385);
}

TEST(LinpackDgefa, ChoosesThePivotsOfLapackAndItsUpperTriangle) {
    for (const int n : Orders()) {
        const Matrix a = Sample(Kind::kRandom, n, n, static_cast<unsigned>(300 + n));
        const Factors factors(a);
        Matrix lapack = a;
        std::vector<lapack_int> pivots(static_cast<std::size_t>(n));
        ASSERT_EQ(LAPACKE_dgetrf(LAPACK_COL_MAJOR, n, n, lapack.values.data(), n, pivots.data()), 0);
        EXPECT_EQ(factors.pivots.Read(), std::vector<int>(pivots.begin(), pivots.end()));
        const Matrix difference = FromUpper(factors.lu.Read(), false) - FromUpper(lapack, false);
        EXPECT_LE(Norm1(difference), 50.0 * n * kEps * n * Norm1(a)) << n;
    }
}

TEST(LinpackDgesl, SolvesBothSystemsWithSmallResiduals) {
    for (const int n : Orders()) {
        for (const Kind kind : {Kind::kRandom, Kind::kGraded, Kind::kIllConditioned}) {
            const Matrix a = Sample(kind, n, n, static_cast<unsigned>(100 + n));
            const Vector b = RandomVector(n, 77);
            Factors factors(a);
            const Vector before = factors.lu.Read().values;
            for (const int job : {0, 1, -3}) {
                Guarded x(b);
                Linpack::Dgesl(factors.lu.Data(), factors.lu.Ld(), n, factors.pivots.Data(), x.Data(), job);
                const Matrix system = job == 0 ? a : Transposed(a);
                EXPECT_LE(Residual(system, x.ReadVector(), b), ResidualBound(system, x.ReadVector(), n)) << n << job;
            }
            EXPECT_EQ(factors.lu.Read().values, before);
        }
    }
}

TEST(LinpackDgesl, AgreesWithLapack) {
    for (const int n : Orders()) {
        const Matrix a = Sample(Kind::kRandom, n, n, static_cast<unsigned>(200 + n));
        Vector expected = RandomVector(n, 78);
        Factors factors(a);
        Guarded x(expected);
        Linpack::Dgesl(factors.lu.Data(), factors.lu.Ld(), n, factors.pivots.Data(), x.Data(), 0);
        Matrix lapack = a;
        std::vector<lapack_int> pivots(static_cast<std::size_t>(n));
        ASSERT_EQ(LAPACKE_dgesv(LAPACK_COL_MAJOR, n, 1, lapack.values.data(), n, pivots.data(), expected.data(), n), 0);
        EXPECT_LE(Distance(x.ReadVector(), expected), 8.0 * n * kEps / TrueRcond(a) * Norm1(expected)) << n;
    }
}

TEST(LinpackDgeco, KeepsToTheTrueConditionAndFactorsAsDgefa) {
    for (const int n : Orders()) {
        for (const Kind kind : {Kind::kRandom, Kind::kGraded, Kind::kIllConditioned}) {
            const Matrix a = Sample(kind, n, n, static_cast<unsigned>(400 + n));
            Guarded lu(Full(n, n), a);
            GuardedInts pivots(n);
            Guarded z(n);
            const double rcond = Linpack::Dgeco(lu.Data(), lu.Ld(), n, pivots.Data(), z.Data());
            SCOPED_TRACE(n);
            ExpectCondition(a, rcond, z.ReadVector());
            const Factors factors(a);
            EXPECT_EQ(lu.Read().values, factors.lu.Read().values);
            EXPECT_EQ(pivots.Read(), factors.pivots.Read());
        }
    }
}

TEST(LinpackDgeco, OfSingularMatricesIsZeroToWorkingPrecision) {
    for (int n = 1; n <= 20; ++n) {
        for (int zero = 0; zero < n; ++zero) {
            Matrix a = Sample(Kind::kRandom, n, n, static_cast<unsigned>(n));
            for (int i = 0; i < n; ++i) {
                a(i, zero) = 0.0;
            }
            Guarded lu(Full(n, n), a);
            GuardedInts pivots(n);
            Guarded z(n);
            const double rcond = Linpack::Dgeco(lu.Data(), lu.Ld(), n, pivots.Data(), z.Data());
            EXPECT_EQ(1.0 + rcond, 1.0) << n << ' ' << zero;
            EXPECT_LE(Norm1(a * z.ReadVector()), 10.0 * n * kEps * Norm1(a));
        }
    }
}

TEST(LinpackDgeco, OfTheZeroMatrixIsZero) {
    Guarded lu(Full(4, 4), Matrix(4, 4));
    GuardedInts pivots(4);
    Guarded z(4);
    EXPECT_EQ(Linpack::Dgeco(lu.Data(), lu.Ld(), 4, pivots.Data(), z.Data()), 0.0);
}

TEST(LinpackDgedi, InvertsAsTheJobSaysAndNeedsNoOtherArrays) {
    for (const int n : Orders()) {
        const Matrix a = Sample(Kind::kRandom, n, n, static_cast<unsigned>(500 + n));
        Matrix inverses[2] = {a, a};
        for (const int job : {1, 11}) {
            Factors factors(a);
            Guarded det(2);
            Guarded work(n);
            Linpack::Dgedi(factors.lu.Data(), factors.lu.Ld(), n, factors.pivots.Data(),
                           job == 11 ? det.Data() : nullptr, work.Data(), job);
            inverses[job / 10] = factors.lu.Read();
        }
        EXPECT_EQ(inverses[0].values, inverses[1].values);
        const Matrix rest = inverses[0] * a - Identity(n);
        EXPECT_LE(Norm1(rest), 10.0 * n * kEps / TrueRcond(a)) << n;
    }
}

TEST(LinpackDgedi, GivesDeterminantsExactlyWhereTheyAreExact) {
    Matrix a(3, 3);
    a.values = {0, 4, 0, 0, 0, 800, -2.5, 0, 0};  // a permutation of even sign, times 4 * 800 * -2.5
    Factors factors(a);
    const Vector before = factors.lu.Read().values;
    Guarded det(2);
    Linpack::Dgedi(factors.lu.Data(), factors.lu.Ld(), 3, factors.pivots.Data(), det.Data(), nullptr, 10);
    EXPECT_EQ(det.ReadVector(), (Vector{-8.0, 3.0}));
    EXPECT_EQ(factors.lu.Read().values, before);
    a.values = {0, 1, 0, 1, 0, 0, 0, 0, 0.0625};
    Factors odd(a);
    Linpack::Dgedi(odd.lu.Data(), odd.lu.Ld(), 3, odd.pivots.Data(), det.Data(), nullptr, 10);
    EXPECT_EQ(det.ReadVector(), (Vector{-6.25, -2.0}));
}

TEST(LinpackDgedi, KeepsDeterminantsBeyondTheRangeOfDouble) {
    Matrix a = Identity(40);
    for (int i = 0; i < 40; ++i) {
        a(i, i) = 2e30;
    }
    Factors factors(a);
    Guarded det(2);
    Linpack::Dgedi(factors.lu.Data(), factors.lu.Ld(), 40, factors.pivots.Data(), det.Data(), nullptr, 10);
    EXPECT_NEAR(det[0], 1.099511627776, 1e-11);  // 2^40 = 1.099511627776e12
    EXPECT_EQ(det[1], 1212.0);
}

TEST(LinpackDgedi, OfSingularAndInfiniteMatricesEnds) {
    Matrix a = Identity(3);
    a(1, 1) = 0.0;
    a(0, 0) = 25.0;
    Factors singular(a);
    Guarded det(2);
    Linpack::Dgedi(singular.lu.Data(), singular.lu.Ld(), 3, singular.pivots.Data(), det.Data(), nullptr, 10);
    EXPECT_EQ(det.ReadVector(), (Vector{0.0, 1.0}));
    a(1, 1) = std::numeric_limits<double>::infinity();
    Factors infinite(a);
    Linpack::Dgedi(infinite.lu.Data(), infinite.lu.Ld(), 3, infinite.pivots.Data(), det.Data(), nullptr, 10);
    EXPECT_TRUE(std::isinf(det[0]) || std::isnan(det[0]));
}

TEST(LinpackDgeco, OfAMatrixOfNaNEnds) {
    Matrix a(5, 5);
    std::fill(a.values.begin(), a.values.end(), std::numeric_limits<double>::quiet_NaN());
    Guarded lu(Full(5, 5), a);
    GuardedInts pivots(5);
    Guarded z(5);
    Guarded det(2);
    Guarded work(5);
    Linpack::Dgeco(lu.Data(), lu.Ld(), 5, pivots.Data(), z.Data());
    Linpack::Dgedi(lu.Data(), lu.Ld(), 5, pivots.Data(), det.Data(), work.Data(), 11);
    EXPECT_EQ(pivots.Read(), (std::vector<int>{1, 2, 3, 4, 5}));
    EXPECT_TRUE(std::isnan(det[0]));
}

}  // namespace
}  // namespace linpack_samples
