// QR decompositions: reconstruction, orthogonality, pivoting, LAPACK, every job and sharing of Dqrsl, guard cells.
#include <gtest/gtest.h>
#include <lapacke.h>

#include "numerics/linpack/Linpack.h"
#include "tests/numerics/linpack/Guarded.h"

namespace linpack_samples {
namespace {

using KwMath_930::Linpack;

// Shapes tall, square and wide, with all orders 1 .. 40 and 200 among them.
std::vector<std::pair<int, int>> Shapes() {
    std::vector<std::pair<int, int>> shapes;
    for (const int n : Orders()) {
        shapes.push_back({n, n});
        shapes.push_back({n, (n + 1) / 2});
        shapes.push_back({(n + 1) / 2, n});
        shapes.push_back({n, 1});
    }
    return shapes;
}

struct Decomposition {
    Decomposition(const Matrix& a, int job, const std::vector<int>& marks = {})
        : n(a.rows), p(a.columns), x(Full(n, p), a), qraux(p), jpvt(p, marks), work(p) {
        Linpack::Dqrdc(x.Data(), x.Ld(), n, p, qraux.Data(), job != 0 ? jpvt.Data() : nullptr,
                       job != 0 ? work.Data() : nullptr, job);
    }
    // Q v for a vector v of n elements.
    Vector Apply(const Vector& v) {
        Guarded y(v);
        Guarded qy(n);
        Linpack::Dqrsl(x.Data(), x.Ld(), n, std::min(n, p), qraux.Data(), y.Data(), qy.Data(), nullptr, nullptr,
                       nullptr, nullptr, 10000);
        return qy.ReadVector();
    }
    Matrix Rebuilt() {
        const Matrix r = FromUpper(x.Read(), false);
        Matrix result(n, p);
        for (int j = 0; j < p; ++j) {
            const Vector column = Apply(Vector(r.values.begin() + j * n, r.values.begin() + (j + 1) * n));
            std::copy(column.begin(), column.end(), result.values.begin() + j * n);
        }
        return result;
    }
    int n;
    int p;
    Guarded x;
    Guarded qraux;
    GuardedInts jpvt;
    Guarded work;
};

TEST(LinpackDqrdc, WithoutPivotingRebuildsTheMatrix) {
    for (const auto& [n, p] : Shapes()) {
        for (const Kind kind : {Kind::kRandom, Kind::kGraded, Kind::kIllConditioned}) {
            const Matrix a = Sample(kind, n, p, static_cast<unsigned>(n + p));
            Decomposition qr(a, 0);
            EXPECT_LE(Norm1(qr.Rebuilt() - a), 20.0 * std::max(n, p) * kEps * Norm1(a)) << n << ' ' << p;
        }
    }
}

TEST(LinpackDqrdc, GivesTheTriangleOfLapackUpToTheSignsOfRows) {
    for (const auto& [n, p] : Shapes()) {
        const Matrix a = Sample(Kind::kRandom, n, p, static_cast<unsigned>(2 * n + p));
        Decomposition qr(a, 0);
        Matrix lapack = a;
        Vector tau(static_cast<std::size_t>(std::min(n, p)));
        ASSERT_EQ(LAPACKE_dgeqrf(LAPACK_COL_MAJOR, n, p, lapack.values.data(), n, tau.data()), 0);
        const double tolerance = 1e-10 * Norm1(a);
        for (int j = 0; j < p; ++j) {
            for (int i = 0; i <= std::min(j, n - 1); ++i) {
                EXPECT_NEAR(std::abs(qr.x(i, j)), std::abs(lapack(i, j)), tolerance) << n << ' ' << p;
            }
        }
    }
}

TEST(LinpackDqrdc, PivotsToADescendingDiagonalAsLapack) {
    for (const auto& [n, p] : Shapes()) {
        const Matrix a = Sample(Kind::kRandom, n, p, static_cast<unsigned>(3 * n + p));
        Decomposition qr(a, 1, std::vector<int>(static_cast<std::size_t>(p)));
        Matrix permuted(n, p);
        for (int j = 0; j < p; ++j) {
            for (int i = 0; i < n; ++i) {
                permuted(i, j) = a(i, qr.jpvt[j] - 1);
            }
        }
        EXPECT_LE(Norm1(qr.Rebuilt() - permuted), 20.0 * std::max(n, p) * kEps * Norm1(a)) << n << ' ' << p;
        for (int k = 1; k < std::min(n, p); ++k) {
            EXPECT_LE(std::abs(qr.x(k, k)), std::abs(qr.x(k - 1, k - 1)) * (1.0 + 1e-10)) << n << ' ' << p;
        }
        Matrix lapack = a;
        Vector tau(static_cast<std::size_t>(std::min(n, p)));
        std::vector<lapack_int> pivots(static_cast<std::size_t>(p));
        ASSERT_EQ(LAPACKE_dgeqp3(LAPACK_COL_MAJOR, n, p, lapack.values.data(), n, pivots.data(), tau.data()), 0);
        for (int j = 0; j < std::min(n, p); ++j) {
            EXPECT_EQ(qr.jpvt[j], pivots[static_cast<std::size_t>(j)]) << n << ' ' << p << ' ' << j;
        }
    }
}

TEST(LinpackDqrdc, KeepsMarkedColumnsInFrontAndAtTheEnd) {
    const Matrix a = Sample(Kind::kRandom, 9, 7, 4);
    Decomposition qr(a, 1, {0, -1, 5, 0, 1, -9, 0});
    EXPECT_EQ(qr.jpvt[0], 3);
    EXPECT_EQ(qr.jpvt[1], 5);
    EXPECT_EQ(qr.jpvt[5], 2);
    EXPECT_EQ(qr.jpvt[6], 6);
    std::vector<int> sorted = qr.jpvt.Read();
    std::sort(sorted.begin(), sorted.end());
    EXPECT_EQ(sorted, (std::vector<int>{1, 2, 3, 4, 5, 6, 7}));
}

// Column 2 loses all but a trace with the first step, so that its running norm has to be computed afresh.
TEST(LinpackDqrdc, ComputesANormAfreshWhenTheRunningOneHasLostItsDigits) {
    Matrix a(3, 3);
    a.values = {2.0, 0.0, 0.0, 1.75, 3e-9, 4e-9, 0.5, 4.5e-9, 0.0};
    Decomposition qr(a, 1, {0, 0, 0});
    EXPECT_EQ(qr.jpvt.Read(), (std::vector<int>{1, 2, 3}));
    EXPECT_NEAR(std::abs(qr.x(1, 1)), 5e-9, 1e-20);
}

// As published, a norm is passed over only when it is at most the one chosen so far, so the choice starts again behind
// a NaN.
TEST(LinpackDqrdc, AColumnOfNaNGivesWayToTheLargestBehindIt) {
    Matrix a = Sample(Kind::kRandom, 4, 4, 5);
    a(2, 1) = std::numeric_limits<double>::quiet_NaN();
    for (int i = 0; i < 4; ++i) {
        a(i, 0) *= 100.0;
        a(i, 2) *= 0.01;
    }
    EXPECT_EQ(Decomposition(a, 1, {0, 0, 0, 0}).jpvt[0], 4);
}

TEST(LinpackDqrdc, LeavesZeroColumnsAndTheLastRowWithoutTransformation) {
    Matrix a = Sample(Kind::kRandom, 4, 4, 5);
    for (int i = 0; i < 4; ++i) {
        a(i, 0) = 0.0;
    }
    Decomposition qr(a, 0);
    EXPECT_EQ(qr.qraux[0], 0.0);
    EXPECT_EQ(qr.qraux[3], 0.0);
    EXPECT_LE(Norm1(qr.Rebuilt() - a), 50.0 * kEps * Norm1(a));
}

TEST(LinpackDqrdc, ScalesColumnsThatAreAlmostBeyondTheRange) {
    for (const double scale : {1e300, 1e-300}) {
        Matrix a(2, 1);
        a.values = {3.0 * scale, -4.0 * scale};
        Decomposition qr(a, 0);
        EXPECT_NEAR(qr.x(0, 0) / scale, -5.0, 1e-14);
    }
}

// ---- Dqrsl

struct Application {
    Application(Decomposition& qr, const Vector& y, int job) : Application(qr, y, job, std::min(qr.n, qr.p)) {}
    Application(Decomposition& qr, const Vector& y, int job, int columns)
        : k(columns), yIn(y), qy(qr.n), qty(qr.n), b(k), rsd(qr.n), xb(qr.n) {
        const bool wantB = job % 1000 / 100 != 0;
        info = Linpack::Dqrsl(qr.x.Data(), qr.x.Ld(), qr.n, k, qr.qraux.Data(), yIn.Data(),
                              job / 10000 != 0 ? qy.Data() : nullptr, job % 10000 != 0 ? qty.Data() : nullptr,
                              wantB ? b.Data() : nullptr, job % 100 / 10 != 0 ? rsd.Data() : nullptr,
                              job % 10 != 0 ? xb.Data() : nullptr, job);
    }
    int k;
    Guarded yIn;
    Guarded qy;
    Guarded qty;
    Guarded b;
    Guarded rsd;
    Guarded xb;
    int info;
};

bool SameBits(const Guarded& a, const Guarded& b) {
    const Vector x = a.ReadVector();
    const Vector y = b.ReadVector();
    return std::equal(x.begin(), x.end(), y.begin(), y.end(), [](double v, double w) {
        return std::bit_cast<std::uint64_t>(v) == std::bit_cast<std::uint64_t>(w);
    });
}

TEST(LinpackDqrsl, EveryJobGivesWhatTheFullOneGivesAndLeavesTheRest) {
    for (const auto& [n, p] : {std::pair{1, 1}, {5, 1}, {5, 3}, {5, 5}, {3, 6}, {20, 13}}) {
        const Matrix a = Sample(Kind::kRandom, n, p, static_cast<unsigned>(n));
        Decomposition qr(a, 0);
        const Vector factored = qr.x.ReadVector();
        const Vector y = RandomVector(n, 21);
        const Application all(qr, y, 11111);
        for (int digits = 0; digits < 32; ++digits) {
            const int job = (digits & 16 ? 10000 : 0) + (digits & 8 ? 2000 : 0) + (digits & 4 ? 300 : 0) +
                            (digits & 2 ? 40 : 0) + (digits & 1 ? 5 : 0);
            const Application some(qr, y, job);
            SCOPED_TRACE(testing::Message() << n << ' ' << p << ' ' << job);
            EXPECT_TRUE(SameBits(some.qy, digits & 16 ? all.qy : Guarded(n)));
            EXPECT_TRUE(SameBits(some.qty, digits & 15 ? all.qty : Guarded(n)));
            EXPECT_TRUE(SameBits(some.b, digits & 4 ? all.b : Guarded(all.k)));
            EXPECT_TRUE(SameBits(some.rsd, digits & 2 ? all.rsd : Guarded(n)));
            EXPECT_TRUE(SameBits(some.xb, digits & 1 ? all.xb : Guarded(n)));
            EXPECT_EQ(some.info, 0);
            EXPECT_EQ(some.yIn.ReadVector(), y);
            EXPECT_EQ(qr.x.ReadVector(), factored);
        }
    }
}

// The first k columns alone have the same transformations, so the decomposition may be used in part.
TEST(LinpackDqrsl, UsesTheFirstColumnsOnly) {
    const Matrix a = Sample(Kind::kRandom, 7, 5, 8);
    Decomposition whole(a, 0);
    const Vector y = RandomVector(7, 26);
    for (int k = 1; k <= 5; ++k) {
        Matrix part(7, k);
        std::copy_n(a.values.begin(), 7 * k, part.values.begin());
        Decomposition alone(part, 0);
        const Application expected(alone, y, 11111);
        const Application got(whole, y, 11111, k);
        EXPECT_TRUE(SameBits(got.qy, expected.qy)) << k;
        EXPECT_TRUE(SameBits(got.qty, expected.qty)) << k;
        EXPECT_TRUE(SameBits(got.b, expected.b)) << k;
        EXPECT_TRUE(SameBits(got.rsd, expected.rsd)) << k;
        EXPECT_TRUE(SameBits(got.xb, expected.xb)) << k;
    }
}

// As published: with no transformation to apply, whatever n is, only the first elements are set.
TEST(LinpackDqrsl, OfNoColumnsSetsTheFirstElementsOnly) {
    Decomposition qr(Sample(Kind::kRandom, 3, 2, 9), 0);
    const Application none(qr, Vector{2.5, 3.5, 4.5}, 11011, 0);
    EXPECT_EQ(none.info, 0);
    EXPECT_EQ(none.qy[0], 2.5);
    EXPECT_EQ(none.qty[0], 2.5);
    EXPECT_EQ(none.rsd[0], 0.0);
    EXPECT_EQ(none.xb[0], 2.5);
    for (const Guarded* array : {&none.qy, &none.qty, &none.rsd, &none.xb}) {
        EXPECT_TRUE(std::isnan((*array)[1]) && std::isnan((*array)[2]));
    }
}

TEST(LinpackDqrsl, QyAndQtyAreInverseToEachOther) {
    for (const auto& [n, p] : Shapes()) {
        Decomposition qr(Sample(Kind::kRandom, n, p, static_cast<unsigned>(n)), 0);
        const Vector y = RandomVector(n, 22);
        const Application turned(qr, y, 1000);
        EXPECT_LE(Distance(qr.Apply(turned.qty.ReadVector()), y), 20.0 * n * kEps * Norm1(y) + kEps) << n << ' ' << p;
    }
}

TEST(LinpackDqrsl, SolvesLeastSquaresAsLapack) {
    for (const auto& [n, p] : Shapes()) {
        if (n < p) {
            continue;
        }
        Matrix a = Sample(Kind::kRandom, n, p, static_cast<unsigned>(5 * n + p));
        for (int i = 0; i < p; ++i) {
            a(i, i) += 4.0;
        }
        Decomposition qr(a, 0);
        const Vector y = RandomVector(n, 23);
        const Application ls(qr, y, 111);
        Matrix lapack = a;
        Vector expected = y;
        ASSERT_EQ(LAPACKE_dgels(LAPACK_COL_MAJOR, 'N', n, p, 1, lapack.values.data(), n, expected.data(), n), 0);
        expected.resize(static_cast<std::size_t>(p));
        EXPECT_LE(Distance(ls.b.ReadVector(), expected), 1e-10 * (1.0 + Norm1(expected))) << n << ' ' << p;
        const Vector fitted = a * ls.b.ReadVector();
        EXPECT_LE(Distance(ls.xb.ReadVector(), fitted), 1e-11 * (1.0 + Norm1(y)) * n) << n << ' ' << p;
        Vector sum = ls.xb.ReadVector();
        for (int i = 0; i < n; ++i) {
            sum[static_cast<std::size_t>(i)] += ls.rsd[i];
        }
        EXPECT_LE(Distance(sum, y), 1e-12 * n * (1.0 + Norm1(y)));
        EXPECT_LE(Norm1(Transposed(a) * ls.rsd.ReadVector()), 1e-11 * n * (1.0 + Norm1(a)));
    }
}

TEST(LinpackDqrsl, ReportsAZeroOnTheDiagonal) {
    Matrix a = Sample(Kind::kRandom, 5, 4, 6);
    Decomposition qr(a, 0);
    qr.x.Data()[2 * qr.x.Ld() + 2] = 0.0;
    qr.x.Data()[1 * qr.x.Ld() + 1] = 0.0;
    EXPECT_EQ(Application(qr, RandomVector(5, 24), 100).info, 3);
    EXPECT_EQ(Application(qr, RandomVector(5, 24), 11011).info, 0);
    Decomposition single(Matrix(1, 1), 0);
    EXPECT_EQ(Application(single, Vector{2.5}, 100).info, 1);
}

TEST(LinpackDqrsl, OfOneRowCopiesAndDivides) {
    Matrix a(1, 1);
    a(0, 0) = 4.0;
    Decomposition qr(a, 0);
    const Application one(qr, Vector{2.5}, 11111);
    EXPECT_EQ(one.qy[0], 2.5);
    EXPECT_EQ(one.qty[0], 2.5);
    EXPECT_EQ(one.b[0], 0.625);
    EXPECT_EQ(one.rsd[0], 0.0);
    EXPECT_EQ(one.xb[0], 2.5);
}

// The six ways of sharing that the publication allows. The last array of a group remains.
TEST(LinpackDqrsl, ArraysMayBeShared) {
    enum { kY, kQy, kQty, kB, kRsd, kXb };
    const std::vector<std::vector<std::vector<int>>> ways = {
        {{kY, kQty, kB}, {kRsd}, {kXb}, {kQy}}, {{kY, kQty, kRsd}, {kB}, {kXb}, {kQy}},
        {{kY, kQty, kXb}, {kB}, {kRsd}, {kQy}}, {{kY, kQy}, {kQty, kB}, {kRsd}, {kXb}},
        {{kY, kQy}, {kQty, kRsd}, {kB}, {kXb}}, {{kY, kQy}, {kQty, kXb}, {kB}, {kRsd}}};
    for (const auto& [n, p] : {std::pair{1, 1}, {6, 4}, {6, 6}, {4, 6}}) {
        Decomposition qr(Sample(Kind::kRandom, n, p, 7), 0);
        const Vector y = RandomVector(n, 25);
        const Application apart(qr, y, 11111);
        const int k = std::min(n, p);
        for (const auto& groups : ways) {
            double* arrays[6] = {};
            std::vector<Guarded> storage(groups.size(), Guarded(n));
            for (std::size_t g = 0; g < groups.size(); ++g) {
                for (const int array : groups[g]) {
                    arrays[array] = storage[g].Data();
                }
            }
            std::copy(y.begin(), y.end(), arrays[kY]);
            Linpack::Dqrsl(qr.x.Data(), qr.x.Ld(), n, k, qr.qraux.Data(), arrays[kY], arrays[kQy], arrays[kQty],
                           arrays[kB], arrays[kRsd], arrays[kXb], 11111);
            for (const auto& group : groups) {
                const int last = group.back();
                const Guarded& expected = last == kQy    ? apart.qy
                                          : last == kB   ? apart.b
                                          : last == kRsd ? apart.rsd
                                                         : apart.xb;
                for (int i = 0; i < (last == kB ? k : n); ++i) {
                    EXPECT_EQ(arrays[last][i], expected[i]) << n << ' ' << p << " array " << last;
                }
            }
        }
    }
}

}  // namespace
}  // namespace linpack_samples
