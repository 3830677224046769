// Symmetric indefinite matrices, full and packed: reconstruction, residuals, LAPACK, inertia, guard cells, golden
// values.
#include <gtest/gtest.h>
#include <lapacke.h>

#include "numerics/linpack/Linpack.h"
#include "tests/numerics/linpack/Guarded.h"
#include "tests/numerics/linpack/condition.h"

namespace linpack_samples {
namespace {

using KwMath_930::Linpack;

// Calls the routines of one storage.
struct IndefiniteRoutines {
    const char* name;
    Layout (*layout)(int n);
    double (*co)(Guarded& a, int n, int* kpvt, double* z);
    int (*fa)(Guarded& a, int n, int* kpvt);
    void (*sl)(Guarded& a, int n, int* kpvt, double* b);
    void (*di)(Guarded& a, int n, int* kpvt, double* det, int* inert, double* work, int job);
};

const IndefiniteRoutines kStorages[] = {
    {"full", Upper,
     [](Guarded& a, int n, int* kpvt, double* z) { return Linpack::Dsico(a.Data(), a.Ld(), n, kpvt, z); },
     [](Guarded& a, int n, int* kpvt) { return Linpack::Dsifa(a.Data(), a.Ld(), n, kpvt); },
     [](Guarded& a, int n, int* kpvt, double* b) { Linpack::Dsisl(a.Data(), a.Ld(), n, kpvt, b); },
     [](Guarded& a, int n, int* kpvt, double* det, int* inert, double* work, int job) {
         Linpack::Dsidi(a.Data(), a.Ld(), n, kpvt, det, inert, work, job);
     }},
    {"packed", Packed, [](Guarded& a, int n, int* kpvt, double* z) { return Linpack::Dspco(a.Data(), n, kpvt, z); },
     [](Guarded& a, int n, int* kpvt) { return Linpack::Dspfa(a.Data(), n, kpvt); },
     [](Guarded& a, int n, int* kpvt, double* b) { Linpack::Dspsl(a.Data(), n, kpvt, b); },
     [](Guarded& a, int n, int* kpvt, double* det, int* inert, double* work, int job) {
         Linpack::Dspdi(a.Data(), n, kpvt, det, inert, work, job);
     }},
};

struct IndefiniteFactors {
    IndefiniteFactors(const IndefiniteRoutines& routines, const Matrix& a)
        : use(routines), n(a.rows), factor(use.layout(n), a), pivots(n) {
        info = use.fa(factor, n, pivots.Data());
    }
    const IndefiniteRoutines& use;
    int n;
    Guarded factor;
    GuardedInts pivots;
    int info;
};

Matrix Symmetric(Kind kind, int n, unsigned seed) {
    return FromUpper(Sample(kind, n, n, seed), true);
}

// With diagonal elements so small that most pivots are blocks of order 2.
Matrix SmallDiagonal(int n, unsigned seed) {
    Matrix a = Symmetric(Kind::kRandom, n, seed);
    for (int i = 0; i < n; ++i) {
        a(i, i) *= 1e-3;
    }
    return a;
}

std::vector<Matrix> Samples(int n, unsigned seed) {
    return {Symmetric(Kind::kRandom, n, seed), SmallDiagonal(n, seed), Symmetric(Kind::kGraded, n, seed),
            Symmetric(Kind::kIllConditioned, n, seed)};
}

// A from the factorisation, by undoing its steps from the first block to the last: A = P U D U^T P^T in each step.
Matrix Rebuilt(const IndefiniteFactors& factors) {
    const int n = factors.n;
    Matrix a(n, n);
    int order = 0;
    for (int k = 0; k < n; k += order) {
        order = factors.pivots[k] < 0 ? 2 : 1;
        const int last = k + order - 1;
        Matrix u(last + 1, order);  // the multipliers, which are stored negated, over the unit block
        Matrix d(order, order);
        for (int c = 0; c < order; ++c) {
            for (int i = 0; i < k; ++i) {
                u(i, c) = -factors.factor(i, k + c);
            }
            u(k + c, c) = 1.0;
            for (int r = 0; r < order; ++r) {
                d(r, c) = factors.factor(k + std::min(r, c), k + std::max(r, c));
            }
        }
        const Matrix share = u * d * Transposed(u);
        for (int j = 0; j <= last; ++j) {
            for (int i = 0; i <= last; ++i) {
                a(i, j) += share(i, j);
            }
        }
        const int other = std::abs(factors.pivots[k]) - 1;
        for (int i = 0; i < n; ++i) {
            std::swap(a(i, k), a(i, other));
        }
        for (int i = 0; i < n; ++i) {
            std::swap(a(k, i), a(other, i));
        }
    }
    return a;
}

TEST(LinpackIndefinite, FactorsGiveTheMatrixBack) {
    for (const IndefiniteRoutines& use : kStorages) {
        for (const int n : Orders()) {
            for (const Matrix& a : Samples(n, static_cast<unsigned>(n))) {
                const IndefiniteFactors factors(use, a);
                EXPECT_EQ(factors.info, 0);
                EXPECT_LE(Norm1(Rebuilt(factors) - a), 20.0 * n * kEps * Norm1(a)) << use.name << n;
            }
        }
    }
}

TEST(LinpackIndefinite, BothStoragesGiveTheSameBits) {
    for (const int n : Orders()) {
        for (const Matrix& a : Samples(n, static_cast<unsigned>(1000 + n))) {
            IndefiniteFactors full(kStorages[0], a);
            IndefiniteFactors packed(kStorages[1], a);
            EXPECT_EQ(full.factor.Read().values, packed.factor.Read().values);
            EXPECT_EQ(full.pivots.Read(), packed.pivots.Read());
        }
    }
}

// The choice, as published: first the column's own diagonal element, then the diagonal element of the row of the
// largest one, and only then whether the first is good enough for that row.
TEST(LinpackIndefinite, TestsThePivotsInTheOrderOfLinpack) {
    // Column 3: diagonal 0.9, largest 2 in row 1. Row 1: largest beside its diagonal 3, diagonal 2.9. The published
    // order takes row 1 (2.9 >= 0.64 * 3); LAPACK's would first accept the diagonal (0.9 >= 0.64 * 2 * 2 / 3).
    Matrix a(3, 3);
    a.values = {2.9, 3, 2, 3, 1, 0.5, 2, 0.5, 0.9};
    for (const IndefiniteRoutines& use : kStorages) {
        const IndefiniteFactors factors(use, a);
        EXPECT_EQ(factors.pivots[2], 1);
        EXPECT_EQ(factors.factor(2, 2), 2.9);
    }
    Matrix lapack = a;
    std::vector<lapack_int> pivots(3);
    ASSERT_EQ(LAPACKE_dsytrf(LAPACK_COL_MAJOR, 'U', 3, lapack.values.data(), 3, pivots.data()), 0);
    EXPECT_EQ(pivots[2], 3);
}

TEST(LinpackIndefinite, KeepsTheDiagonalElementThatIsLargeEnoughForTheRow) {
    // As above with 0.1 in the place of 2.9: the third test accepts 0.9 without an exchange.
    Matrix a(3, 3);
    a.values = {0.1, 3, 2, 3, 1, 0.5, 2, 0.5, 0.9};
    for (const IndefiniteRoutines& use : kStorages) {
        EXPECT_EQ(IndefiniteFactors(use, a).pivots[2], 3);
    }
    // And 0.8 is too small: a block of order 2, for which row 1 comes into place 2.
    a(2, 2) = 0.8;
    for (const IndefiniteRoutines& use : kStorages) {
        const IndefiniteFactors factors(use, a);
        EXPECT_EQ(factors.pivots.Read(), (std::vector<int>{1, -1, -1}));
    }
}

TEST(LinpackIndefinite, PivotsOfLapackWhereTheOrderOfTestsDoesNotMatter) {
    int compared = 0;
    for (const int n : Orders()) {
        const Matrix a = SmallDiagonal(n, static_cast<unsigned>(n));
        Matrix lapack = a;
        std::vector<lapack_int> pivots(static_cast<std::size_t>(n));
        ASSERT_EQ(LAPACKE_dsytrf(LAPACK_COL_MAJOR, 'U', n, lapack.values.data(), n, pivots.data()), 0);
        const IndefiniteFactors factors(kStorages[0], a);
        if (factors.pivots.Read() == std::vector<int>(pivots.begin(), pivots.end())) {
            ++compared;
            for (int i = 0; i < n; ++i) {
                EXPECT_NEAR(factors.factor(i, i), lapack(i, i), 1e-9 * Norm1(a) * n) << n;
            }
        }
    }
    EXPECT_GE(compared, 10);
}

TEST(LinpackIndefinite, SolvesWithSmallResiduals) {
    for (const IndefiniteRoutines& use : kStorages) {
        for (const int n : Orders()) {
            for (const Matrix& a : Samples(n, static_cast<unsigned>(100 + n))) {
                IndefiniteFactors factors(use, a);
                const Vector before = factors.factor.Read().values;
                const Vector b = RandomVector(n, 5);
                Guarded x(b);
                use.sl(factors.factor, n, factors.pivots.Data(), x.Data());
                EXPECT_LE(Residual(a, x.ReadVector(), b), 20.0 * ResidualBound(a, x.ReadVector(), n)) << use.name << n;
                EXPECT_EQ(factors.factor.Read().values, before);
            }
        }
    }
}

TEST(LinpackIndefinite, SolutionsAgreeWithLapack) {
    for (const int n : Orders()) {
        const Matrix a = Symmetric(Kind::kRandom, n, static_cast<unsigned>(200 + n));
        Vector expected = RandomVector(n, 6);
        IndefiniteFactors factors(kStorages[1], a);
        Guarded x(expected);
        kStorages[1].sl(factors.factor, n, factors.pivots.Data(), x.Data());
        Guarded packed(Packed(n), a);
        std::vector<lapack_int> pivots(static_cast<std::size_t>(n));
        ASSERT_EQ(LAPACKE_dspsv(LAPACK_COL_MAJOR, 'U', n, 1, packed.Data(), pivots.data(), expected.data(), n), 0);
        EXPECT_LE(Distance(x.ReadVector(), expected), 20.0 * n * kEps / TrueRcond(a) * Norm1(expected)) << n;
    }
}

TEST(LinpackIndefinite, EstimatesTheConditionAndFactorsTheSame) {
    for (const IndefiniteRoutines& use : kStorages) {
        for (const int n : Orders()) {
            for (const Matrix& a : Samples(n, static_cast<unsigned>(300 + n))) {
                Guarded factor(use.layout(n), a);
                GuardedInts pivots(n);
                Guarded z(n);
                const double rcond = use.co(factor, n, pivots.Data(), z.Data());
                SCOPED_TRACE(n);
                ExpectCondition(a, rcond, z.ReadVector());
                const IndefiniteFactors factors(use, a);
                EXPECT_EQ(factor.Read().values, factors.factor.Read().values);
                EXPECT_EQ(pivots.Read(), factors.pivots.Read());
            }
        }
    }
}

TEST(LinpackIndefinite, InfoIsTheLowestSingularPivotAsEliminationEndsThere) {
    Matrix a(6, 6);
    for (const int i : {1, 3, 4}) {
        a(i, i) = 2.5 + i;
    }
    for (const IndefiniteRoutines& use : kStorages) {
        EXPECT_EQ(IndefiniteFactors(use, a).info, 1);
        a(0, 0) = 7.0;
        EXPECT_EQ(IndefiniteFactors(use, a).info, 3);
        const IndefiniteFactors factors(use, a);
        EXPECT_EQ(factors.pivots.Read(), (std::vector<int>{1, 2, 3, 4, 5, 6}));
        a(0, 0) = 0.0;
    }
}

TEST(LinpackIndefinite, ConditionOfSingularMatricesIsZeroToWorkingPrecision) {
    for (const IndefiniteRoutines& use : kStorages) {
        for (int n = 1; n <= 12; ++n) {
            for (int zero = 0; zero < n; ++zero) {
                Matrix a = Symmetric(Kind::kRandom, n, static_cast<unsigned>(n));
                for (int i = 0; i < n; ++i) {
                    a(i, zero) = a(zero, i) = 0.0;
                }
                Guarded factor(use.layout(n), a);
                GuardedInts pivots(n);
                Guarded z(n);
                EXPECT_EQ(1.0 + use.co(factor, n, pivots.Data(), z.Data()), 1.0) << use.name << n << ' ' << zero;
            }
        }
    }
}

TEST(LinpackIndefinite, InertiaDeterminantAndInverseComeAsTheJobSays) {
    for (const IndefiniteRoutines& use : kStorages) {
        for (const int n : Orders()) {
            const Matrix a = SmallDiagonal(n, static_cast<unsigned>(400 + n));
            IndefiniteFactors factors(use, a);
            const Vector factored = factors.factor.Read().values;
            for (int job = 0; job <= 111; job += job % 10 == 0 ? 1 : job % 100 == 1 ? 9 : 89) {
                Guarded factor = factors.factor;
                Guarded det(2);
                GuardedInts inert(3);
                Guarded work(n);
                const bool wantInverse = job % 10 != 0;
                use.di(factor, n, factors.pivots.Data(), job / 10 % 10 != 0 ? det.Data() : nullptr,
                       job / 100 != 0 ? inert.Data() : nullptr, wantInverse ? work.Data() : nullptr, job);
                if (wantInverse) {
                    const Matrix rest = FromUpper(factor.Read(), true) * a - Identity(n);
                    EXPECT_LE(Norm1(rest), 50.0 * n * kEps / TrueRcond(a)) << use.name << n << ' ' << job;
                } else {
                    EXPECT_EQ(factor.Read().values, factored);
                }
            }
        }
    }
}

TEST(LinpackIndefinite, InertiaIsThatOfTheEigenvalues) {
    for (const IndefiniteRoutines& use : kStorages) {
        for (const int n : Orders()) {
            const Matrix a = SmallDiagonal(n, static_cast<unsigned>(500 + n));
            Matrix copy = a;
            Vector eigenvalues(static_cast<std::size_t>(n));
            ASSERT_EQ(LAPACKE_dsyev(LAPACK_COL_MAJOR, 'N', 'U', n, copy.values.data(), n, eigenvalues.data()), 0);
            std::vector<int> expected(3);
            double logarithm = 0.0;
            for (const double value : eigenvalues) {
                ++expected[value > 0.0 ? 0 : 1];
                logarithm += std::log10(std::abs(value));
            }
            IndefiniteFactors factors(use, a);
            GuardedInts inert(3);
            Guarded det(2);
            use.di(factors.factor, n, factors.pivots.Data(), det.Data(), inert.Data(), nullptr, 110);
            EXPECT_EQ(inert.Read(), expected) << n;
            EXPECT_NEAR(std::log10(std::abs(det[0])) + det[1], logarithm, 1e-9 * n);
            EXPECT_EQ(det[0] < 0.0, expected[1] % 2 == 1);
            EXPECT_GE(std::abs(det[0]), 1.0);
            EXPECT_LT(std::abs(det[0]), 10.0);
        }
    }
}

TEST(LinpackIndefinite, CountsZeroEigenvaluesAndExactDeterminants) {
    Matrix a(4, 4);
    a(0, 0) = 32.0;
    a(1, 2) = a(2, 1) = 2.5;
    for (const IndefiniteRoutines& use : kStorages) {
        IndefiniteFactors factors(use, a);
        GuardedInts inert(3);
        Guarded det(2);
        use.di(factors.factor, 4, factors.pivots.Data(), det.Data(), inert.Data(), nullptr, 110);
        EXPECT_EQ(inert.Read(), (std::vector<int>{2, 1, 1}));
        EXPECT_EQ(det[0], 0.0);
        a(3, 3) = 1.0;
        IndefiniteFactors regular(use, a);
        use.di(regular.factor, 4, regular.pivots.Data(), det.Data(), inert.Data(), nullptr, 110);
        EXPECT_EQ(det.ReadVector(), (Vector{-2.0, 2.0}));  // 32 * -6.25
        a(3, 3) = 0.0;
    }
}

TEST(LinpackIndefinite, OfNaNAndInfiniteMatricesEnds) {
    for (const IndefiniteRoutines& use : kStorages) {
        for (const double value : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
            Matrix a(5, 5);
            std::fill(a.values.begin(), a.values.end(), value);
            Guarded factor(use.layout(5), a);
            GuardedInts pivots(5);
            Guarded z(5);
            GuardedInts inert(3);
            Guarded det(2);
            Guarded work(5);
            use.co(factor, 5, pivots.Data(), z.Data());
            use.di(factor, 5, pivots.Data(), det.Data(), inert.Data(), work.Data(), 111);
            for (const int pivot : pivots.Read()) {
                EXPECT_TRUE(std::abs(pivot) >= 1 && std::abs(pivot) <= 5) << pivot;
            }
        }
    }
}

}  // namespace
}  // namespace linpack_samples
