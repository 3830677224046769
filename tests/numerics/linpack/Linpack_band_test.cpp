// General band matrices against the routines for full ones, LAPACK, guard cells, golden values.
#include <gtest/gtest.h>
#include <lapacke.h>

#include "numerics/linpack/Linpack.h"
#include "tests/numerics/linpack/Guarded.h"
#include "tests/numerics/linpack/condition.h"

namespace linpack_samples {
namespace {

using KwMath_930::Linpack;

struct BandCase {
    int n;
    int ml;
    int mu;
    Matrix a;
};

// All small ml and mu for every size and kind.
std::vector<BandCase> BandCases(std::initializer_list<Kind> kinds, unsigned seed) {
    std::vector<BandCase> cases;
    for (const int n : Orders()) {
        const int limit = n <= 12 ? 4 : 2;
        for (int ml = 0; ml <= limit && ml < n; ++ml) {
            for (int mu = 0; mu <= limit && mu < n; ++mu) {
                for (const Kind kind : kinds) {
                    cases.push_back({n, ml, mu, Banded(Sample(kind, n, n, seed + static_cast<unsigned>(n)), ml, mu)});
                }
            }
        }
        cases.push_back({n, n - 1, n - 1, Sample(Kind::kRandom, n, n, seed)});
        cases.push_back({n, std::min(n - 1, 7), 0, Banded(Sample(Kind::kRandom, n, n, seed), 7, 0)});
        cases.push_back({n, 0, std::min(n - 1, 9), Banded(Sample(Kind::kRandom, n, n, seed), 0, 9)});
    }
    return cases;
}

// The room for fill-in holds guard values before the factorisation.
Guarded Stored(const BandCase& each) {
    const int ml = each.ml;
    const int mu = each.mu;
    return Guarded(Band(each.n, ml, mu, true), each.a, [ml, mu](int i, int j) { return i - j <= ml && j - i <= mu; });
}

struct BandFactors {
    explicit BandFactors(const BandCase& each) : lu(Stored(each)), pivots(each.n) {
        info = Linpack::Dgbfa(lu.Data(), lu.Ld(), each.n, each.ml, each.mu, pivots.Data());
    }
    Guarded lu;
    GuardedInts pivots;
    int info;
};

TEST(LinpackDgbfa, GivesTheBitsOfTheFullElimination) {
    for (const BandCase& each : BandCases({Kind::kRandom, Kind::kGraded, Kind::kIntegers, Kind::kSparse}, 0)) {
        const BandFactors factors(each);
        Guarded full(Full(each.n, each.n), each.a);
        GuardedInts pivots(each.n);
        const int info = Linpack::Dgefa(full.Data(), full.Ld(), each.n, pivots.Data());
        EXPECT_EQ(factors.info, info);
        EXPECT_EQ(factors.pivots.Read(), pivots.Read());
        EXPECT_EQ(factors.lu.Read().values, full.Read().values) << each.n << ' ' << each.ml << ' ' << each.mu;
    }
}

TEST(LinpackDgbfa, ChoosesThePivotsOfLapack) {
    for (const BandCase& each : BandCases({Kind::kRandom}, 100)) {
        Guarded lapack = Stored(each);
        std::vector<lapack_int> pivots(static_cast<std::size_t>(each.n));
        LAPACKE_dgbtrf_work(LAPACK_COL_MAJOR, each.n, each.n, each.ml, each.mu, lapack.Data(), lapack.Ld(),
                            pivots.data());
        EXPECT_EQ(BandFactors(each).pivots.Read(), std::vector<int>(pivots.begin(), pivots.end()));
    }
}

TEST(LinpackDgbfa, ReportsTheLastZeroPivotMet) {
    BandCase each{6, 2, 1, Banded(Sample(Kind::kRandom, 6, 6, 3), 2, 1)};
    for (const int zero : {1, 3}) {
        for (int i = 0; i < 6; ++i) {
            each.a(i, zero) = 0.0;
        }
        EXPECT_EQ(BandFactors(each).info, zero + 1);
    }
}

TEST(LinpackDgbsl, SolvesBothSystemsWithSmallResiduals) {
    for (const BandCase& each : BandCases({Kind::kRandom}, 200)) {
        if (TrueRcond(each.a) < 1e-8) {
            continue;  // a zero on a diagonal band
        }
        BandFactors factors(each);
        const Vector b = RandomVector(each.n, 11);
        for (const int job : {0, 1}) {
            Guarded x(b);
            Linpack::Dgbsl(factors.lu.Data(), factors.lu.Ld(), each.n, each.ml, each.mu, factors.pivots.Data(),
                           x.Data(), job);
            const Matrix system = job == 0 ? each.a : Transposed(each.a);
            EXPECT_LE(Residual(system, x.ReadVector(), b), 4.0 * ResidualBound(system, x.ReadVector(), each.n))
                << each.n << ' ' << each.ml << ' ' << each.mu << ' ' << job;
        }
    }
}

TEST(LinpackDgbco, KeepsToTheTrueCondition) {
    for (const BandCase& each : BandCases({Kind::kRandom, Kind::kGraded}, 300)) {
        Guarded lu = Stored(each);
        GuardedInts pivots(each.n);
        Guarded z(each.n);
        const double rcond = Linpack::Dgbco(lu.Data(), lu.Ld(), each.n, each.ml, each.mu, pivots.Data(), z.Data());
        SCOPED_TRACE(testing::Message() << each.n << ' ' << each.ml << ' ' << each.mu);
        ExpectCondition(each.a, rcond, z.ReadVector());
        const BandFactors factors(each);
        EXPECT_EQ(lu.Read().values, factors.lu.Read().values);
        EXPECT_EQ(pivots.Read(), factors.pivots.Read());
    }
}

TEST(LinpackDgbco, GivesTheBitsOfTheFullEstimate) {
    for (const BandCase& each : BandCases({Kind::kRandom, Kind::kIntegers}, 400)) {
        Guarded lu = Stored(each);
        Guarded full(Full(each.n, each.n), each.a);
        GuardedInts pivots(each.n);
        Guarded z(each.n);
        Guarded fullZ(each.n);
        const double rcond = Linpack::Dgbco(lu.Data(), lu.Ld(), each.n, each.ml, each.mu, pivots.Data(), z.Data());
        const double fullRcond = Linpack::Dgeco(full.Data(), full.Ld(), each.n, pivots.Data(), fullZ.Data());
        EXPECT_NEAR(rcond, fullRcond, 1e-9 * fullRcond) << each.n << ' ' << each.ml << ' ' << each.mu;
    }
}

TEST(LinpackDgbdi, GivesTheDeterminantOfTheFullMatrix) {
    for (const BandCase& each : BandCases({Kind::kRandom, Kind::kIntegers}, 500)) {
        BandFactors factors(each);
        Guarded det(2);
        Linpack::Dgbdi(factors.lu.Data(), factors.lu.Ld(), each.n, each.ml, each.mu, factors.pivots.Data(), det.Data());
        Guarded full(Full(each.n, each.n), each.a);
        GuardedInts pivots(each.n);
        Guarded expected(2);
        Linpack::Dgefa(full.Data(), full.Ld(), each.n, pivots.Data());
        Linpack::Dgedi(full.Data(), full.Ld(), each.n, pivots.Data(), expected.Data(), nullptr, 10);
        EXPECT_EQ(det.ReadVector(), expected.ReadVector());
    }
}

TEST(LinpackDgbco, OfASingularBandIsZeroToWorkingPrecision) {
    BandCase each{9, 2, 1, Banded(Sample(Kind::kRandom, 9, 9, 3), 2, 1)};
    for (int i = 0; i < 9; ++i) {
        each.a(i, 4) = 0.0;
    }
    Guarded lu = Stored(each);
    GuardedInts pivots(9);
    Guarded z(9);
    const double rcond = Linpack::Dgbco(lu.Data(), lu.Ld(), 9, 2, 1, pivots.Data(), z.Data());
    EXPECT_EQ(1.0 + rcond, 1.0);
}

}  // namespace
}  // namespace linpack_samples
