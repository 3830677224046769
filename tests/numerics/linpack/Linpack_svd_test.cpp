// Singular value decompositions: reconstruction, orthogonality, LAPACK, every job, shared arrays, the sweep limit,
// guard cells.
#include <gtest/gtest.h>
#include <lapacke.h>

#include "numerics/linpack/Linpack.h"
#include "tests/numerics/linpack/Guarded.h"

namespace linpack_samples {
namespace {

using KwMath_930::Linpack;

struct Svd {
    Svd(const Matrix& a, int job)
        : n(a.rows),
          p(a.columns),
          leftCount(job / 10 == 0   ? 0
                    : job / 10 == 1 ? n
                                    : std::min(n, p)),
          x(Full(n, p), a),
          s(std::min(n + 1, p)),
          e(p),
          u(Full(n, std::max(leftCount, 1)), Matrix(n, std::max(leftCount, 1)), Never),
          v(Full(p, p), Matrix(p, p), Never),
          work(n) {
        info = Linpack::Dsvdc(x.Data(), x.Ld(), n, p, s.Data(), e.Data(), leftCount > 0 ? u.Data() : nullptr, u.Ld(),
                              job % 10 != 0 ? v.Data() : nullptr, v.Ld(), work.Data(), job);
    }
    static bool Never(int, int) { return false; }
    // U S V^T; needs both.
    Matrix Rebuilt() const {
        Matrix scaled(n, p);
        for (int j = 0; j < std::min(n, p); ++j) {
            for (int i = 0; i < n; ++i) {
                scaled(i, j) = u(i, j) * s[j];
            }
        }
        return scaled * Transposed(v.Read());
    }
    int n;
    int p;
    int leftCount;
    Guarded x;
    Guarded s;
    Guarded e;
    Guarded u;
    Guarded v;
    Guarded work;
    int info;
};

std::vector<std::pair<int, int>> SvdShapes() {
    std::vector<std::pair<int, int>> shapes;
    for (const int n : Orders()) {
        shapes.push_back({n, n});
        shapes.push_back({n, (n + 1) / 2});
        shapes.push_back({(n + 1) / 2, n});
    }
    shapes.push_back({7, 8});
    shapes.push_back({8, 7});
    return shapes;
}

// Graded matrices of this order need more sweeps than the limit allows.
bool IsBeyondTheLimit(Kind kind, int n, int p) {
    return kind == Kind::kGraded && n >= 80 && n == p;
}

double Orthogonality(const Matrix& q) {
    return Norm1(Transposed(q) * q - Identity(q.columns));
}

TEST(LinpackDsvdc, RebuildsTheMatrixFromOrthogonalVectors) {
    for (const auto& [n, p] : SvdShapes()) {
        for (const Kind kind : {Kind::kRandom, Kind::kGraded, Kind::kIllConditioned, Kind::kIntegers}) {
            if (IsBeyondTheLimit(kind, n, p)) {
                continue;
            }
            const Matrix a = Sample(kind, n, p, static_cast<unsigned>(n + 3 * p));
            const Svd svd(a, 11);
            SCOPED_TRACE(testing::Message() << n << ' ' << p << ' ' << static_cast<int>(kind));
            ASSERT_EQ(svd.info, 0);
            const double rounding = 40.0 * std::max(n, p) * kEps;
            EXPECT_LE(Norm1(svd.Rebuilt() - a), rounding * (1.0 + Norm1(a)));
            EXPECT_LE(Orthogonality(svd.u.Read()), rounding);
            EXPECT_LE(Orthogonality(svd.v.Read()), rounding);
            for (int i = 0; i < std::min(n + 1, p); ++i) {
                EXPECT_EQ(svd.e[i], 0.0);
            }
            for (int i = 0; i + 1 < std::min(n + 1, p); ++i) {
                EXPECT_GE(svd.s[i], svd.s[i + 1]);
                EXPECT_GE(svd.s[i + 1], 0.0);
            }
        }
    }
}

TEST(LinpackDsvdc, SingularValuesAgreeWithLapack) {
    for (const auto& [n, p] : SvdShapes()) {
        for (const Kind kind : {Kind::kRandom, Kind::kGraded, Kind::kIllConditioned}) {
            if (IsBeyondTheLimit(kind, n, p)) {
                continue;
            }
            Matrix a = Sample(kind, n, p, static_cast<unsigned>(2 * n + 3 * p));
            const Svd svd(a, 0);
            Vector expected(static_cast<std::size_t>(std::min(n, p)));
            Vector rest(expected.size());
            ASSERT_EQ(LAPACKE_dgesvd(LAPACK_COL_MAJOR, 'N', 'N', n, p, a.values.data(), n, expected.data(), nullptr, 1,
                                     nullptr, 1, rest.data()),
                      0);
            for (int i = 0; i < std::min(n, p); ++i) {
                EXPECT_NEAR(svd.s[i], expected[static_cast<std::size_t>(i)],
                            20.0 * std::max(n, p) * kEps * expected[0]);
            }
            if (n < p) {
                EXPECT_NEAR(svd.s[n], 0.0, 1e-14 * expected[0]);
            }
        }
    }
}

TEST(LinpackDsvdc, EveryJobGivesTheSameVectorsAndValues) {
    for (const auto& [n, p] : {std::pair{6, 6}, {9, 4}, {4, 9}, {1, 1}, {1, 5}, {5, 1}, {12, 11}, {11, 12}}) {
        const Matrix a = Sample(Kind::kRandom, n, p, static_cast<unsigned>(n));
        const Svd all(a, 11);
        for (const int job : {0, 1, 10, 11, 20, 21, 31, 111, 220}) {
            const int left = job / 10 % 10;
            const Svd some(a, job % 100);
            SCOPED_TRACE(testing::Message() << n << ' ' << p << ' ' << job);
            EXPECT_EQ(some.info, 0);
            EXPECT_EQ(some.s.ReadVector(), all.s.ReadVector());
            for (int j = 0; j < (left == 0 ? 0 : some.leftCount); ++j) {
                for (int i = 0; i < n; ++i) {
                    EXPECT_EQ(some.u(i, j), all.u(i, j));
                }
            }
            if (job % 10 != 0) {
                EXPECT_EQ(some.v.ReadVector(), all.v.ReadVector());
            }
        }
        // Only job mod 100 counts.
        Guarded x(Full(n, p), a);
        Guarded s(std::min(n + 1, p));
        Guarded e(p);
        Guarded work(n);
        EXPECT_EQ(Linpack::Dsvdc(x.Data(), x.Ld(), n, p, s.Data(), e.Data(), nullptr, 1, nullptr, 1, work.Data(), 700),
                  0);
        EXPECT_EQ(s.ReadVector(), all.s.ReadVector());
    }
}

TEST(LinpackDsvdc, UMayBeX) {
    for (const auto& [n, p] : {std::pair{6, 6}, {9, 4}, {4, 9}, {5, 6}, {6, 5}, {1, 3}}) {
        const Matrix a = Sample(Kind::kRandom, n, p, static_cast<unsigned>(3 * n));
        for (const int job : {11, 21}) {
            if (job == 11 && n > p) {
                continue;
            }
            const Svd apart(a, job);
            Guarded x(Full(n, p), a);
            Guarded s(std::min(n + 1, p));
            Guarded e(p);
            Guarded v(Full(p, p), Matrix(p, p));
            Guarded work(n);
            EXPECT_EQ(Linpack::Dsvdc(x.Data(), x.Ld(), n, p, s.Data(), e.Data(), x.Data(), x.Ld(), v.Data(), v.Ld(),
                                     work.Data(), job),
                      0);
            EXPECT_EQ(s.ReadVector(), apart.s.ReadVector());
            EXPECT_EQ(v.ReadVector(), apart.v.ReadVector());
            for (int j = 0; j < std::min(n, p); ++j) {
                for (int i = 0; i < n; ++i) {
                    EXPECT_EQ(x(i, j), apart.u(i, j)) << n << ' ' << p << ' ' << job;
                }
            }
        }
    }
}

TEST(LinpackDsvdc, VMayBeX) {
    for (const auto& [n, p] : {std::pair{6, 6}, {9, 4}, {7, 6}, {3, 1}, {3, 2}}) {
        const Matrix a = Sample(Kind::kRandom, n, p, static_cast<unsigned>(4 * n));
        const Svd apart(a, 11);
        Guarded x(Full(n, p), a);
        Guarded s(std::min(n + 1, p));
        Guarded e(p);
        Guarded u(Full(n, n), Matrix(n, n));
        Guarded work(n);
        EXPECT_EQ(Linpack::Dsvdc(x.Data(), x.Ld(), n, p, s.Data(), e.Data(), u.Data(), u.Ld(), x.Data(), x.Ld(),
                                 work.Data(), 11),
                  0);
        EXPECT_EQ(s.ReadVector(), apart.s.ReadVector());
        EXPECT_EQ(u.ReadVector(), apart.u.ReadVector());
        for (int j = 0; j < p; ++j) {
            for (int i = 0; i < p; ++i) {
                EXPECT_EQ(x(i, j), apart.v(i, j)) << n << ' ' << p;
            }
        }
    }
}

TEST(LinpackDsvdc, KnownValuesAreFoundWhateverTheZeros) {
    Matrix a(5, 4);
    a(0, 2) = -3.0;
    a(1, 0) = 2.0;
    a(3, 3) = 5.0;
    const Svd svd(a, 11);
    EXPECT_EQ(svd.info, 0);
    const Vector expected{5.0, 3.0, 2.0, 0.0};
    for (int i = 0; i < 4; ++i) {
        EXPECT_NEAR(svd.s[i], expected[static_cast<std::size_t>(i)], 1e-14);
    }
    EXPECT_LE(Norm1(svd.Rebuilt() - a), 1e-13);
    const Svd zero(Matrix(3, 2), 11);
    EXPECT_EQ(zero.info, 0);
    EXPECT_EQ(zero.s.ReadVector(), (Vector{0.0, 0.0}));
    EXPECT_LE(Orthogonality(zero.u.Read()), 1e-15);
}

// As published, every value that is not at least 0 is negated with its right vector, a NaN too.
TEST(LinpackDsvdc, ASingleNegativeElementOrNaNTurnsItsRightVector) {
    Matrix a(1, 1);
    for (const auto& [element, right] : {std::pair{2.385, 1.0}, {0.0, 1.0}, {-2.385, -1.0}, {std::nan(""), -1.0}}) {
        a(0, 0) = element;
        const Svd svd(a, 11);
        EXPECT_EQ(svd.info, 0);
        EXPECT_EQ(svd.u(0, 0), 1.0);
        EXPECT_EQ(svd.v(0, 0), right) << element;
    }
}

TEST(LinpackDsvdc, AMatrixOfNaNRunsIntoTheSweepLimit) {
    for (const auto& [n, p] : {std::pair{2, 2}, {6, 6}, {7, 4}, {4, 7}}) {
        Matrix a(n, p);
        std::fill(a.values.begin(), a.values.end(), std::numeric_limits<double>::quiet_NaN());
        EXPECT_EQ(Svd(a, 11).info, std::min(p, n + 1)) << n << ' ' << p;
        EXPECT_EQ(Svd(a, 0).info, std::min(p, n + 1));
    }
}

// R's compiled routine of the same name gives these infos, too. What was done so far holds: U^T X V is bidiagonal.
TEST(LinpackDsvdc, AGradedMatrixThatNeedsMoreSweepsReturnsTheValueNotFound) {
    for (const int n : {80, 100, 150, 200}) {
        const Matrix a = Sample(Kind::kGraded, n, n, 800);
        const Svd svd(a, 11);
        EXPECT_EQ(svd.info, n);
        Matrix bidiagonal(n, n);
        for (int i = 0; i < n; ++i) {
            bidiagonal(i, i) = svd.s[i];
            if (i + 1 < n) {
                bidiagonal(i, i + 1) = svd.e[i];
            }
        }
        const Matrix rebuilt = svd.u.Read() * bidiagonal * Transposed(svd.v.Read());
        EXPECT_LE(Norm1(rebuilt - a), 20.0 * n * kEps * Norm1(a)) << n;
    }
}

// One NaN or infinity anywhere beside zeros: some of these would deflate for ever in steps that are no sweeps.
TEST(LinpackDsvdc, EndsForEveryPlaceOfANaNOrInfinity) {
    for (const auto& [n, p] : {std::pair{1, 2}, {2, 2}, {3, 3}, {4, 3}, {3, 4}, {5, 5}, {2, 5}, {5, 2}}) {
        for (const double value : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
            for (int place = 0; place < n * p; ++place) {
                for (const bool zeros : {true, false}) {
                    Matrix a = zeros ? Matrix(n, p) : Sample(Kind::kSparse, n, p, 3);
                    a.values[static_cast<std::size_t>(place)] = value;
                    const Svd svd(a, 11);
                    EXPECT_GE(svd.info, 0);
                    EXPECT_LE(svd.info, std::min(p, n + 1));
                }
            }
        }
    }
}

TEST(LinpackDsvdc, ReportsTheValueThatWasNotFoundWhileTheOnesBehindItAre) {
    Matrix a = Identity(4);
    a(0, 0) = std::numeric_limits<double>::quiet_NaN();
    a(2, 2) = 3.0;
    const Svd svd(a, 0);
    EXPECT_GE(svd.info, 1);
    for (int i = svd.info; i < 4; ++i) {
        EXPECT_TRUE(svd.s[i] >= 1.0 - 1e-15 && svd.s[i] <= 3.0 + 1e-15) << i;
    }
}

}  // namespace
}  // namespace linpack_samples
