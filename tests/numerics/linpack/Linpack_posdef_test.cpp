// Positive definite matrices, full, packed and band: reconstruction, residuals, LAPACK, guard cells, golden values.
#include <gtest/gtest.h>
#include <lapacke.h>

#include "numerics/linpack/Linpack.h"
#include "tests/numerics/linpack/Guarded.h"
#include "tests/numerics/linpack/condition.h"

namespace linpack_samples {
namespace {

using KwMath_930::Linpack;

// Calls the routines of one storage; m is the number of diagonals above the main one, which only bands use.
struct PosdefRoutines {
    const char* name;
    Layout (*layout)(int n, int m);
    double (*co)(Guarded& a, int n, int m, double* z);
    int (*fa)(Guarded& a, int n, int m);
    void (*sl)(Guarded& a, int n, int m, double* b);
    void (*determinant)(Guarded& a, int n, int m, double* det);
};

const PosdefRoutines kFull = {
    "full",
    [](int n, int) { return Upper(n); },
    [](Guarded& a, int n, int, double* z) { return Linpack::Dpoco(a.Data(), a.Ld(), n, z); },
    [](Guarded& a, int n, int) { return Linpack::Dpofa(a.Data(), a.Ld(), n); },
    [](Guarded& a, int n, int, double* b) { Linpack::Dposl(a.Data(), a.Ld(), n, b); },
    [](Guarded& a, int n, int, double* det) { Linpack::Dpodi(a.Data(), a.Ld(), n, det, 10); }};
const PosdefRoutines kPacked = {"packed",
                                [](int n, int) { return Packed(n); },
                                [](Guarded& a, int n, int, double* z) { return Linpack::Dppco(a.Data(), n, z); },
                                [](Guarded& a, int n, int) { return Linpack::Dppfa(a.Data(), n); },
                                [](Guarded& a, int n, int, double* b) { Linpack::Dppsl(a.Data(), n, b); },
                                [](Guarded& a, int n, int, double* det) { Linpack::Dppdi(a.Data(), n, det, 10); }};
const PosdefRoutines kBand = {
    "band",
    [](int n, int m) {
        Layout layout = Band(n, 0, m, false);
        return layout;
    },
    [](Guarded& a, int n, int m, double* z) { return Linpack::Dpbco(a.Data(), a.Ld(), n, m, z); },
    [](Guarded& a, int n, int m) { return Linpack::Dpbfa(a.Data(), a.Ld(), n, m); },
    [](Guarded& a, int n, int m, double* b) { Linpack::Dpbsl(a.Data(), a.Ld(), n, m, b); },
    [](Guarded& a, int n, int m, double* det) { Linpack::Dpbdi(a.Data(), a.Ld(), n, m, det); }};

// R^T R with R upper triangular, within m diagonals: positive definite, its determinant and factor known.
Matrix FactorSample(Kind kind, int n, int m, unsigned seed) {
    Matrix r = FromUpper(Banded(Sample(kind, n, n, seed), 0, m), false);
    for (int i = 0; i < n; ++i) {
        const double grade = kind == Kind::kGraded ? std::pow(10.0, -5.0 * i / n) : 1.0;
        for (int j = i; j < n; ++j) {
            r(i, j) = (r(i, j) / std::sqrt(m + 1.0) + (i == j ? 1.5 : 0.0)) * grade;
        }
    }
    return r;
}

struct PosdefCase {
    const PosdefRoutines& use;
    int n;
    int m;
    Matrix factor;
    Matrix a;
};

// Every storage, size and kind; bands with all small m.
std::vector<PosdefCase> PosdefCases(unsigned seed) {
    std::vector<PosdefCase> cases;
    for (const int n : Orders()) {
        for (const Kind kind : {Kind::kRandom, Kind::kGraded}) {
            const Matrix r = FactorSample(kind, n, n, seed + static_cast<unsigned>(n));
            const Matrix a = Transposed(r) * r;
            cases.push_back({kFull, n, n, r, a});
            cases.push_back({kPacked, n, n, r, a});
            for (const int m : {0, 1, 2, 3, 4, 5, 7, n - 1}) {
                if (m < n) {
                    const Matrix band = FactorSample(kind, n, m, seed + static_cast<unsigned>(n));
                    cases.push_back({kBand, n, m, band, Transposed(band) * band});
                }
            }
        }
    }
    return cases;
}

TEST(LinpackPosdef, FactorsGiveTheMatrixBack) {
    for (const PosdefCase& each : PosdefCases(0)) {
        Guarded factor(each.use.layout(each.n, each.m), each.a);
        EXPECT_EQ(each.use.fa(factor, each.n, each.m), 0);
        const Matrix r = FromUpper(factor.Read(), false);
        EXPECT_LE(Norm1(Transposed(r) * r - each.a), 4.0 * each.n * kEps * Norm1(each.a)) << each.use.name << each.n;
        for (int i = 0; i < each.n; ++i) {
            EXPECT_GT(r(i, i), 0.0);
        }
    }
}

TEST(LinpackPosdef, FullAndPackedGiveTheSameBits) {
    for (const PosdefCase& each : PosdefCases(1)) {
        if (&each.use == &kFull) {
            Guarded full(kFull.layout(each.n, 0), each.a);
            Guarded packed(kPacked.layout(each.n, 0), each.a);
            kFull.fa(full, each.n, 0);
            kPacked.fa(packed, each.n, 0);
            EXPECT_EQ(full.Read().values, packed.Read().values);
        }
    }
}

TEST(LinpackPosdef, FactorsAgreeWithLapack) {
    for (const PosdefCase& each : PosdefCases(2)) {
        Matrix lapack = each.a;
        ASSERT_EQ(LAPACKE_dpotrf(LAPACK_COL_MAJOR, 'U', each.n, lapack.values.data(), each.n), 0);
        Guarded factor(each.use.layout(each.n, each.m), each.a);
        each.use.fa(factor, each.n, each.m);
        const Matrix difference = FromUpper(factor.Read(), false) - FromUpper(lapack, false);
        EXPECT_LE(Norm1(difference), 40.0 * each.n * kEps / TrueRcond(each.a) * Norm1(lapack))
            << each.use.name << each.n;
    }
}

TEST(LinpackPosdef, SolvesWithSmallResiduals) {
    for (const PosdefCase& each : PosdefCases(3)) {
        Guarded factor(each.use.layout(each.n, each.m), each.a);
        each.use.fa(factor, each.n, each.m);
        const Vector before = factor.Read().values;
        const Vector b = RandomVector(each.n, 8);
        Guarded x(b);
        each.use.sl(factor, each.n, each.m, x.Data());
        EXPECT_LE(Residual(each.a, x.ReadVector(), b), ResidualBound(each.a, x.ReadVector(), each.n))
            << each.use.name << each.n;
        EXPECT_EQ(factor.Read().values, before);
    }
}

TEST(LinpackPosdef, EstimatesTheConditionAndFactorsTheSame) {
    for (const PosdefCase& each : PosdefCases(4)) {
        Guarded factor(each.use.layout(each.n, each.m), each.a);
        Guarded z(each.n);
        const double rcond = each.use.co(factor, each.n, each.m, z.Data());
        SCOPED_TRACE(each.use.name);
        ExpectCondition(each.a, rcond, z.ReadVector());
        Guarded plain(each.use.layout(each.n, each.m), each.a);
        each.use.fa(plain, each.n, each.m);
        EXPECT_EQ(factor.Read().values, plain.Read().values);
    }
}

TEST(LinpackPosdef, DeterminantIsTheSquareOfTheFactorsDiagonal) {
    for (const PosdefCase& each : PosdefCases(5)) {
        Guarded factor(each.use.layout(each.n, each.m), each.a);
        each.use.fa(factor, each.n, each.m);
        const Vector before = factor.Read().values;
        Guarded det(2);
        each.use.determinant(factor, each.n, each.m, det.Data());
        double logarithm = 0.0;
        for (int i = 0; i < each.n; ++i) {
            logarithm += 2.0 * std::log10(each.factor(i, i));
        }
        EXPECT_NEAR(std::log10(det[0]) + det[1], logarithm, 1e-9 * each.n) << each.use.name;
        EXPECT_TRUE(det[0] >= 1.0 && det[0] < 10.0);
        EXPECT_EQ(det[1], std::round(det[1]));
        EXPECT_EQ(factor.Read().values, before);
    }
}

TEST(LinpackPosdef, DeterminantsAreExactWhereTheyCanBe) {
    Matrix a = Identity(3);
    a(0, 0) = 400.0;
    a(1, 1) = 0.25;
    a(2, 2) = 0.0625;
    for (const PosdefRoutines* use : {&kFull, &kPacked, &kBand}) {
        Guarded factor(use->layout(3, 1), a);
        use->fa(factor, 3, 1);
        Guarded det(2);
        use->determinant(factor, 3, 1, det.Data());
        EXPECT_EQ(det.ReadVector(), (Vector{6.25, 0.0})) << use->name;
    }
}

TEST(LinpackPosdef, InvertsTheUpperTriangleAsTheJobSays) {
    for (const int n : Orders()) {
        const Matrix r = FactorSample(Kind::kRandom, n, n, static_cast<unsigned>(600 + n));
        const Matrix a = Transposed(r) * r;
        for (const int job : {0, 1, 10, 11}) {
            Guarded full(Upper(n), a);
            Guarded packed(Packed(n), a);
            Linpack::Dpofa(full.Data(), full.Ld(), n);
            Linpack::Dppfa(packed.Data(), n);
            const Vector factored = full.Read().values;
            Guarded det(2);
            Linpack::Dpodi(full.Data(), full.Ld(), n, job >= 10 ? det.Data() : nullptr, job);
            Linpack::Dppdi(packed.Data(), n, job >= 10 ? det.Data() : nullptr, job);
            EXPECT_EQ(full.Read().values, packed.Read().values);
            if (job % 10 == 0) {
                EXPECT_EQ(full.Read().values, factored);
            } else {
                const Matrix rest = FromUpper(full.Read(), true) * a - Identity(n);
                EXPECT_LE(Norm1(rest), 10.0 * n * kEps / TrueRcond(a)) << n;
            }
        }
    }
}

// The leading minor of order k is the first that is not positive definite.
Matrix IndefiniteFrom(int n, int m, int k, double diagonal) {
    const Matrix r = FactorSample(Kind::kRandom, n, m, 9);
    Matrix a = Transposed(r) * r;
    a(k - 1, k - 1) = diagonal;
    return a;
}

TEST(LinpackPosdef, InfoIsTheOrderOfTheFirstMinorThatIsNotPositive) {
    for (const PosdefRoutines* use : {&kFull, &kPacked, &kBand}) {
        const int m = use == &kBand ? 2 : 6;
        for (int k = 1; k <= 7; ++k) {
            for (const double diagonal : {-2.5, 0.0}) {
                const Matrix a = IndefiniteFrom(7, m, k, diagonal);
                Guarded factor(use->layout(7, m), a);
                EXPECT_EQ(use->fa(factor, 7, m), k) << use->name;
                EXPECT_EQ(factor(k - 1, k - 1), diagonal);
                for (int j = k; j < 7; ++j) {
                    EXPECT_EQ(factor(j, j), a(j, j)) << "columns behind are untouched";
                }
            }
        }
    }
}

TEST(LinpackPosdef, ConditionIsZeroAndZKeepsTheColumnSumsForAMatrixThatIsNotPositiveDefinite) {
    for (const PosdefRoutines* use : {&kFull, &kPacked, &kBand}) {
        const int m = use == &kBand ? 2 : 6;
        for (int k = 1; k <= 7; ++k) {
            const Matrix a = IndefiniteFrom(7, m, k, -1.5);
            Guarded factor(use->layout(7, m), a);
            Guarded z(7);
            EXPECT_EQ(use->co(factor, 7, m, z.Data()), 0.0) << use->name;
            for (int j = 0; j < 7; ++j) {
                double sum = 0.0;
                for (int i = 0; i < 7; ++i) {
                    sum += std::abs(a(i, j));
                }
                EXPECT_NEAR(z[j], sum, 10.0 * kEps * sum);
            }
            Guarded partly(use->layout(7, m), a);
            use->fa(partly, 7, m);
            EXPECT_EQ(factor.Read().values, partly.Read().values);
        }
    }
}

TEST(LinpackPosdef, NaNIsFactoredToNaN) {
    for (const PosdefRoutines* use : {&kFull, &kPacked, &kBand}) {
        Matrix a = Identity(4);
        a(1, 1) = std::numeric_limits<double>::quiet_NaN();
        Guarded factor(use->layout(4, 1), a);
        Guarded z(4);
        EXPECT_EQ(use->fa(factor, 4, 1), 0);
        EXPECT_TRUE(std::isnan(factor(1, 1)));
    }
}

}  // namespace
}  // namespace linpack_samples
