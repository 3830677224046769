// The pivoting Cholesky decomposition and the changes of a factor: against matrices rebuilt from R^T R, guard cells.
#include <gtest/gtest.h>
#include <lapacke.h>

#include "numerics/linpack/Linpack.h"
#include "tests/numerics/linpack/Guarded.h"

namespace linpack_samples {
namespace {

using KwMath_930::Linpack;

Matrix FactorSample(int p, unsigned seed) {
    Matrix r = FromUpper(RandomMatrix(p, p, seed), false);
    for (int i = 0; i < p; ++i) {
        for (int j = i; j < p; ++j) {
            r(i, j) = r(i, j) / std::sqrt(p) + (i == j ? 1.25 : 0.0);
        }
    }
    return r;
}

Matrix Gram(const Matrix& r) {
    return Transposed(r) * r;
}

// a with rows and columns in the order of jpvt.
Matrix Permuted(const Matrix& a, const GuardedInts& jpvt) {
    Matrix result(a.rows, a.columns);
    for (int j = 0; j < a.columns; ++j) {
        for (int i = 0; i < a.rows; ++i) {
            result(i, j) = a(jpvt[i] - 1, jpvt[j] - 1);
        }
    }
    return result;
}

// ---- Dchdc

TEST(LinpackDchdc, WithoutPivotingIsTheCholeskyFactorAndNeedsNoPivots) {
    for (const int p : Orders()) {
        const Matrix a = Gram(FactorSample(p, static_cast<unsigned>(p)));
        Guarded factor(Upper(p), a);
        Guarded work(p);
        EXPECT_EQ(Linpack::Dchdc(factor.Data(), factor.Ld(), p, work.Data(), nullptr, 0), p);
        EXPECT_LE(Norm1(Gram(FromUpper(factor.Read(), false)) - a), 8.0 * p * kEps * Norm1(a)) << p;
    }
}

TEST(LinpackDchdc, PivotsToADescendingDiagonalThatRebuildsThePermutedMatrix) {
    for (const int p : Orders()) {
        Matrix r = FactorSample(p, static_cast<unsigned>(100 + p));
        for (int j = 0; j < p; ++j) {
            for (int i = 0; i <= j; ++i) {
                r(i, j) *= 1.0 + (j * 7) % 5;
            }
        }
        const Matrix a = Gram(r);
        Guarded factor(Upper(p), a);
        Guarded work(p);
        GuardedInts jpvt(p, std::vector<int>(static_cast<std::size_t>(p)));
        ASSERT_EQ(Linpack::Dchdc(factor.Data(), factor.Ld(), p, work.Data(), jpvt.Data(), 1), p);
        const Matrix rebuilt = Gram(FromUpper(factor.Read(), false));
        EXPECT_LE(Norm1(rebuilt - Permuted(a, jpvt)), 10.0 * p * kEps * Norm1(a)) << p;
        for (int k = 1; k < p; ++k) {
            EXPECT_LE(factor(k, k), factor(k - 1, k - 1) * (1.0 + 10.0 * p * kEps));
        }
        Matrix lapack = a;
        std::vector<lapack_int> pivots(static_cast<std::size_t>(p));
        lapack_int rank = 0;
        LAPACKE_dpstrf(LAPACK_COL_MAJOR, 'U', p, lapack.values.data(), p, pivots.data(), &rank, -1.0);
        EXPECT_EQ(jpvt.Read(), std::vector<int>(pivots.begin(), pivots.end())) << p;
    }
}

TEST(LinpackDchdc, KeepsMarkedElementsInFrontAndAtTheEnd) {
    const Matrix a = Gram(FactorSample(7, 8));
    Guarded factor(Upper(7), a);
    Guarded work(7);
    GuardedInts jpvt(7, {0, -1, 5, 0, 1, -9, 0});
    ASSERT_EQ(Linpack::Dchdc(factor.Data(), factor.Ld(), 7, work.Data(), jpvt.Data(), 1), 7);
    EXPECT_EQ(jpvt[0], 3);
    EXPECT_EQ(jpvt[1], 5);
    EXPECT_EQ(jpvt[5], 2);
    EXPECT_EQ(jpvt[6], 6);
    const Matrix rebuilt = Gram(FromUpper(factor.Read(), false));
    EXPECT_LE(Norm1(rebuilt - Permuted(a, jpvt)), 100.0 * kEps * Norm1(a));
}

TEST(LinpackDchdc, ReturnsTheRankOfASemidefiniteMatrix) {
    Matrix diagonal(5, 5);
    diagonal(1, 1) = 4.0;
    diagonal(3, 3) = 9.0;
    Guarded factor(Upper(5), diagonal);
    Guarded work(5);
    GuardedInts jpvt(5, {0, 0, 0, 0, 0});
    EXPECT_EQ(Linpack::Dchdc(factor.Data(), factor.Ld(), 5, work.Data(), jpvt.Data(), 1), 2);
    EXPECT_EQ(factor(0, 0), 3.0);
    EXPECT_EQ(factor(1, 1), 2.0);
    EXPECT_EQ(jpvt[0], 4);
    EXPECT_EQ(jpvt[1], 2);
    Guarded unpivoted(Upper(5), diagonal);
    EXPECT_EQ(Linpack::Dchdc(unpivoted.Data(), unpivoted.Ld(), 5, work.Data(), nullptr, 0), 0);
}

// As published: the choice takes every diagonal element that is not at most the one chosen so far, and what is chosen
// must be positive. So a NaN gives way to what is behind it, and ends the decomposition when nothing is.
TEST(LinpackDchdc, ANaNOnTheDiagonalEndsTheDecomposition) {
    Matrix diagonal(4, 4);
    diagonal.values = {4.0, 0, 0, 0, 0, 9.0, 0, 0, 0, 0, std::numeric_limits<double>::quiet_NaN(), 0, 0, 0, 0, 16.0};
    Guarded work(4);
    Guarded unpivoted(Upper(4), diagonal);
    EXPECT_EQ(Linpack::Dchdc(unpivoted.Data(), unpivoted.Ld(), 4, work.Data(), nullptr, 0), 2);
    EXPECT_EQ(unpivoted(1, 1), 3.0);
    EXPECT_EQ(unpivoted(3, 3), 16.0);
    Guarded pivoted(Upper(4), diagonal);
    GuardedInts jpvt(4, {1, 0, 0, 0});
    EXPECT_EQ(Linpack::Dchdc(pivoted.Data(), pivoted.Ld(), 4, work.Data(), jpvt.Data(), 1), 3);
    EXPECT_EQ(pivoted(0, 0), 2.0);
    EXPECT_EQ(pivoted(1, 1), 4.0);
    EXPECT_EQ(pivoted(2, 2), 3.0);
    EXPECT_EQ(jpvt.Read(), (std::vector<int>{1, 4, 2, 3}));
}

// ---- Dchud and Dchdd

struct Problem {
    Problem(int p, int nz, unsigned seed)
        : r(FactorSample(p, seed)),
          z(RandomMatrix(p, nz, seed + 1)),
          x(RandomVector(p, seed + 2)),
          y(RandomVector(nz, seed + 3)),
          rho(static_cast<std::size_t>(nz), 1.5) {}
    Matrix r;
    Matrix z;
    Vector x;
    Vector y;
    Vector rho;
};

// The rotations as a matrix of order p + 1 that acts on (R; x^T).
Matrix RotationsOf(int p, const Guarded& c, const Guarded& s) {
    Matrix q = Identity(p + 1);
    for (int i = 0; i < p; ++i) {
        for (int j = 0; j <= p; ++j) {
            const double above = q(i, j);
            const double below = q(p, j);
            q(i, j) = c[i] * above + s[i] * below;
            q(p, j) = c[i] * below - s[i] * above;
        }
    }
    return q;
}

TEST(LinpackDchud, AddsARowToTheFactorAndTheSolutions) {
    for (const int p : Orders()) {
        for (const int nz : {0, 1, 3}) {
            const Problem problem(p, nz, static_cast<unsigned>(p));
            Guarded r(Upper(p), problem.r);
            Guarded x(problem.x);
            Guarded z(Full(p, nz), problem.z);
            Guarded y(problem.y);
            Guarded rho(problem.rho);
            Guarded c(p);
            Guarded s(p);
            Linpack::Dchud(r.Data(), r.Ld(), p, x.Data(), nz > 0 ? z.Data() : nullptr, z.Ld(), nz,
                           nz > 0 ? y.Data() : nullptr, nz > 0 ? rho.Data() : nullptr, c.Data(), s.Data());
            Matrix stacked(p + 1, p + nz);
            for (int j = 0; j < p + nz; ++j) {
                for (int i = 0; i < p; ++i) {
                    stacked(i, j) = j < p ? problem.r(i, j) : problem.z(i, j - p);
                }
                stacked(p, j) = j < p ? x[j] : y[j - p];
            }
            const Matrix turned = RotationsOf(p, c, s) * stacked;
            const double bound = 40.0 * p * kEps * (1.0 + Norm1(stacked));
            for (int j = 0; j < p + nz; ++j) {
                for (int i = 0; i < p; ++i) {
                    const double got = j >= p ? z(i, j - p) : i <= j ? r(i, j) : 0.0;
                    EXPECT_NEAR(got, turned(i, j), bound) << p << ' ' << i << ' ' << j;
                }
                if (j >= p) {
                    EXPECT_NEAR(rho[j - p], std::hypot(1.5, turned(p, j)), bound);
                }
            }
            EXPECT_EQ(x.ReadVector(), problem.x);
            EXPECT_EQ(y.ReadVector(), problem.y);
        }
    }
}

TEST(LinpackDchud, LeavesANegativeResidualNormAlone) {
    Problem problem(4, 2, 5);
    problem.rho = {-2.0, 0.0};
    Guarded r(Upper(4), problem.r);
    Guarded x(problem.x);
    Guarded z(Full(4, 2), problem.z);
    Guarded y(problem.y);
    Guarded rho(problem.rho);
    Guarded c(4);
    Guarded s(4);
    Linpack::Dchud(r.Data(), r.Ld(), 4, x.Data(), z.Data(), z.Ld(), 2, y.Data(), rho.Data(), c.Data(), s.Data());
    EXPECT_EQ(rho[0], -2.0);
    EXPECT_GT(rho[1], 0.0);
}

// An update followed by the downdate of the same row gives factor, solutions and residual norms back.
TEST(LinpackDchdd, TakesBackWhatAnUpdateAdded) {
    for (const int p : Orders()) {
        for (const int nz : {0, 2}) {
            const Problem problem(p, nz, static_cast<unsigned>(200 + p));
            Guarded r(Upper(p), problem.r);
            Guarded x(problem.x);
            Guarded z(Full(p, nz), problem.z);
            Guarded y(problem.y);
            Guarded rho(problem.rho);
            Guarded c(p);
            Guarded s(p);
            double* zData = nz > 0 ? z.Data() : nullptr;
            double* yData = nz > 0 ? y.Data() : nullptr;
            double* rhoData = nz > 0 ? rho.Data() : nullptr;
            Linpack::Dchud(r.Data(), r.Ld(), p, x.Data(), zData, z.Ld(), nz, yData, rhoData, c.Data(), s.Data());
            const Matrix updated = Gram(FromUpper(r.Read(), false));
            EXPECT_EQ(
                Linpack::Dchdd(r.Data(), r.Ld(), p, x.Data(), zData, z.Ld(), nz, yData, rhoData, c.Data(), s.Data()),
                0);
            const double bound = 400.0 * p * kEps * Norm1(updated);
            EXPECT_LE(Norm1(Gram(FromUpper(r.Read(), false)) - Gram(problem.r)), bound) << p;
            for (int j = 0; j < nz; ++j) {
                EXPECT_NEAR(rho[j], 1.5, 1e-9);
                for (int i = 0; i < p; ++i) {
                    EXPECT_NEAR(z(i, j), problem.z(i, j) * (r(i, i) < 0.0 ? -1.0 : 1.0), 1e-9) << p;
                }
            }
        }
    }
}

TEST(LinpackDchdd, RefusesARowThatWasNotThereAndLeavesEverything) {
    const Problem problem(5, 2, 6);
    Guarded r(Upper(5), problem.r);
    Vector large = problem.x;
    large[2] += 50.0;
    Guarded x(large);
    Guarded z(Full(5, 2), problem.z);
    Guarded y(problem.y);
    Guarded rho(problem.rho);
    Guarded c(Vector{1.5, 2.5, 3.5, 4.5, 5.5});
    Guarded s(5);
    EXPECT_EQ(
        Linpack::Dchdd(r.Data(), r.Ld(), 5, x.Data(), z.Data(), z.Ld(), 2, y.Data(), rho.Data(), c.Data(), s.Data()),
        -1);
    EXPECT_EQ(r.Read().values, problem.r.values);
    EXPECT_EQ(z.Read().values, problem.z.values);
    EXPECT_EQ(rho.ReadVector(), problem.rho);
    EXPECT_EQ(c.ReadVector(), (Vector{1.5, 2.5, 3.5, 4.5, 5.5}));
}

// Of p = 1 the downdate is (1 - x^2): a row that takes all away is refused, too.
TEST(LinpackDchdd, RefusesARowThatLeavesNothing) {
    Guarded r(Upper(1), Identity(1));
    Guarded x(Vector{1.0});
    Guarded c(1);
    Guarded s(1);
    EXPECT_EQ(Linpack::Dchdd(r.Data(), r.Ld(), 1, x.Data(), nullptr, 1, 0, nullptr, nullptr, c.Data(), s.Data()), -1);
}

TEST(LinpackDchdd, AResidualNormThatCannotBeDowndatedBecomesMinusOne) {
    Problem problem(4, 3, 7);
    for (double& value : problem.x) {
        value *= 0.01;
    }
    problem.y = {0.25, 30.0, 0.125};
    Guarded r(Upper(4), problem.r);
    Guarded x(problem.x);
    Guarded z(Full(4, 3), problem.z);
    Guarded y(problem.y);
    Guarded rho(problem.rho);
    Guarded c(4);
    Guarded s(4);
    EXPECT_EQ(
        Linpack::Dchdd(r.Data(), r.Ld(), 4, x.Data(), z.Data(), z.Ld(), 3, y.Data(), rho.Data(), c.Data(), s.Data()),
        1);
    EXPECT_EQ(rho[1], -1.0);
    EXPECT_GT(rho[0], 0.0);
    EXPECT_GT(rho[2], 0.0);
    EXPECT_LT(rho[2], 1.5);
}

TEST(LinpackDchdd, RefusesARowWithANaNAndLeavesTheFactor) {
    const Problem problem(5, 0, 8);
    for (int place = 0; place < 5; ++place) {
        Guarded r(Upper(5), problem.r);
        Vector row(5, 0.001);
        row[static_cast<std::size_t>(place)] = std::numeric_limits<double>::quiet_NaN();
        Guarded x(row);
        Guarded c(5);
        Guarded s(5);
        EXPECT_EQ(Linpack::Dchdd(r.Data(), r.Ld(), 5, x.Data(), nullptr, 5, 0, nullptr, nullptr, c.Data(), s.Data()),
                  -1);
        EXPECT_EQ(r.Read().values, problem.r.values);
    }
}

TEST(LinpackDchdd, AResidualNormThatANaNTouchesBecomesMinusOne) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    Guarded r(Upper(1), Identity(1));
    Guarded x(Vector{0.25});
    Guarded z(Full(1, 3), Matrix(1, 3));
    Guarded y(Vector{nan, 0.125, 0.125});
    Guarded rho(Vector{2.5, nan, 2.5});
    Guarded c(1);
    Guarded s(1);
    EXPECT_EQ(
        Linpack::Dchdd(r.Data(), r.Ld(), 1, x.Data(), z.Data(), z.Ld(), 3, y.Data(), rho.Data(), c.Data(), s.Data()),
        1);
    EXPECT_EQ(rho[0], -1.0);
    EXPECT_EQ(rho[1], -1.0);
    EXPECT_GT(rho[2], 2.0);
}

TEST(LinpackDchdd, AResidualNormOfZeroWithNothingToTakeBecomesNaN) {
    Guarded r(Upper(1), Identity(1));
    Guarded x(Vector{0.0});
    Guarded z(Full(1, 1), Matrix(1, 1));
    Guarded y(Vector{0.0});
    Guarded rho(Vector{0.0});
    Guarded c(1);
    Guarded s(1);
    EXPECT_EQ(
        Linpack::Dchdd(r.Data(), r.Ld(), 1, x.Data(), z.Data(), z.Ld(), 1, y.Data(), rho.Data(), c.Data(), s.Data()),
        0);
    EXPECT_TRUE(std::isnan(rho[0]));
}

// ---- Dchex

// The published routine goes on with its first branch when job names none.
TEST(LinpackDchex, AnyOtherJobIsJobOne) {
    const Problem problem(5, 0, 9);
    Vector expected;
    for (const int job : {1, 0, 3, -2}) {
        Guarded r(Upper(5), problem.r);
        Guarded c(5);
        Guarded s(5);
        Linpack::Dchex(r.Data(), r.Ld(), 5, 2, 4, nullptr, 5, 0, c.Data(), s.Data(), job);
        if (job == 1) {
            expected = r.Read().values;
        }
        EXPECT_EQ(r.Read().values, expected) << job;
    }
}

TEST(LinpackDchex, MovesColumnsAsTheJobSaysAndTurnsZ) {
    for (const int p : {2, 3, 4, 5, 6, 9, 40}) {
        for (int k = 1; k<p; k += p> 9 ? 7 : 1) {
            for (int l = k + 1; l <= p; l += p > 9 ? 5 : 1) {
                for (const int job : {1, 2}) {
                    const int nz = (k + l) % 3;
                    const Problem problem(p, nz, static_cast<unsigned>(p));
                    Guarded r(Upper(p), problem.r);
                    Guarded z(Full(p, nz), problem.z);
                    Guarded c(p);
                    Guarded s(p);
                    Linpack::Dchex(r.Data(), r.Ld(), p, k, l, nz > 0 ? z.Data() : nullptr, z.Ld(), nz, c.Data(),
                                   s.Data(), job);
                    std::vector<int> order;
                    for (int j = 0; j < p; ++j) {
                        order.push_back(j);
                    }
                    const auto first = order.begin() + (k - 1);
                    const auto end = order.begin() + l;
                    std::rotate(first, job == 1 ? end - 1 : first + 1, end);
                    Matrix moved(p, p + nz);
                    Matrix got(p, p + nz);
                    for (int j = 0; j < p + nz; ++j) {
                        for (int i = 0; i < p; ++i) {
                            moved(i, j) =
                                j < p ? problem.r(i, order[static_cast<std::size_t>(j)]) : problem.z(i, j - p);
                            got(i, j) = j >= p ? z(i, j - p) : i <= j ? r(i, j) : 0.0;
                        }
                    }
                    // The rotations, in their order, must turn all of it, z too, the same way.
                    for (int step = 0; step < l - k; ++step) {
                        const int row = job == 1 ? l - 2 - step : k - 1 + step;
                        for (int j = 0; j < p + nz; ++j) {
                            const double above = moved(row, j);
                            const double below = moved(row + 1, j);
                            moved(row, j) = c[step] * above + s[step] * below;
                            moved(row + 1, j) = c[step] * below - s[step] * above;
                        }
                    }
                    EXPECT_LE(Norm1(got - moved), 20.0 * p * kEps * (Norm1(problem.r) + 1.0))
                        << p << ' ' << k << ' ' << l << ' ' << job;
                }
            }
        }
    }
}

}  // namespace
}  // namespace linpack_samples
