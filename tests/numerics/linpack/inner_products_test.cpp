// The inner loops against plain ones, and the versions for instruction sets against each other, bit for bit.
#include "numerics/linpack/inner_products.h"

#include <gtest/gtest.h>

#include "tests/numerics/linpack/Matrix.h"

namespace linpack_samples {
namespace {

using KwMath_930::linpack::InnerLoops;

std::vector<const InnerLoops*> Versions() {
    std::vector<const InnerLoops*> versions{&KwMath_930::linpack::kBaselineInnerLoops};
    const InnerLoops* fastest = &KwMath_930::linpack::FastestInnerLoops();
    if (fastest != versions[0]) {
        versions.push_back(fastest);
    }
    return versions;
}

TEST(InnerProducts, DotAgreesWithThePlainSumToRounding) {
    for (int n = 0; n <= 70; ++n) {
        const Vector x = RandomVector(n, 3);
        const Vector y = RandomVector(n, 4);
        double plain = 0.0;
        double magnitudes = 0.0;
        for (std::size_t i = 0; i < x.size(); ++i) {
            plain += x[i] * y[i];
            magnitudes += std::abs(x[i] * y[i]);
        }
        for (const InnerLoops* version : Versions()) {
            EXPECT_NEAR(version->dot(n, x.data(), y.data()), plain, n * kEps * magnitudes) << version->name << n;
        }
        EXPECT_NEAR(KwMath_930::linpack::Dot(n, x.data(), y.data()), plain, n * kEps * magnitudes) << n;
    }
}

struct Results {
    double dot = 0.0;
    Vector dotFour = Vector(4);
    Vector addScaled;
    Vector addFour;
    Vector rows;
    Vector gram = Vector(16);
    bool operator==(const Results&) const = default;
};

Results RunAll(const InnerLoops& loops, int n) {
    const Matrix columns = RandomMatrix(n + 1, 4, 5);
    const double* x[4];
    for (int c = 0; c < 4; ++c) {
        x[c] = columns.values.data() + c * (n + 1);
    }
    const Vector y = RandomVector(n, 6);
    const Vector factors = RandomVector(4, 7);
    Results results;
    results.dot = loops.dot(n, x[1], y.data());
    results.addScaled = results.addFour = y;
    results.rows = RandomVector(4 * n + 4, 8);
    loops.dotFour(n, x, y.data(), results.dotFour.data());
    loops.addScaled(n, factors[0], x[0], results.addScaled.data());
    loops.addFour(n, factors.data(), x, results.addFour.data());
    loops.solveRow(n, x[2], results.rows.data());
    loops.gramRows(n, results.rows.data(), results.gram.data());
    return results;
}

TEST(InnerProducts, AllVersionsGiveTheSameBits) {
    for (int n = 0; n <= 70; ++n) {
        for (const InnerLoops* version : Versions()) {
            EXPECT_EQ(RunAll(*version, n), RunAll(KwMath_930::linpack::kBaselineInnerLoops, n))
                << version->name << ' ' << n;
        }
    }
}

TEST(InnerProducts, SolveRowAndGramRowsAgreeWithThePlainSums) {
    for (int n = 0; n <= 40; ++n) {
        const Vector x = RandomVector(n + 1, 8);
        const Vector start = RandomVector(4 * n + 4, 9);
        Vector rows = start;
        KwMath_930::linpack::SolveRow(n, x.data(), rows.data());
        Vector gram(16);
        KwMath_930::linpack::GramRows(n, start.data(), gram.data());
        const auto at = [&start](int i, int c) { return start[static_cast<std::size_t>(4 * i + c)]; };
        for (int c = 0; c < 4; ++c) {
            double plain = at(n, c);
            for (int i = 0; i < n; ++i) {
                plain -= x[static_cast<std::size_t>(i)] * at(i, c);
                EXPECT_EQ(rows[static_cast<std::size_t>(4 * i + c)], at(i, c));
            }
            const double divisor = x[static_cast<std::size_t>(n)];
            EXPECT_NEAR(rows[static_cast<std::size_t>(4 * n + c)] * divisor, plain, (n + 2) * (n + 2) * kEps);
            for (int d = 0; d < 4; ++d) {
                double sum = 0.0;
                for (int i = 0; i < n; ++i) {
                    sum += at(i, c) * at(i, d);
                }
                EXPECT_NEAR(gram[static_cast<std::size_t>(4 * d + c)], sum, n * n * kEps);
            }
        }
    }
}

TEST(InnerProducts, AFactorOfZeroAddsNothingNotEvenNaN) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const int n : {3, 20}) {
        const Vector x(static_cast<std::size_t>(n), nan);
        const Vector plain = RandomVector(n, 11);
        const double* columns[4] = {x.data(), plain.data(), x.data(), x.data()};
        const Vector factors{0.0, 2.0, -0.0, 0.0};
        const Vector start = RandomVector(n, 12);
        Vector y = start;
        KwMath_930::linpack::AddScaled(n, 0.0, x.data(), y.data());
        EXPECT_EQ(y, start);
        KwMath_930::linpack::AddFour(n, factors.data(), columns, y.data());
        for (std::size_t i = 0; i < y.size(); ++i) {
            EXPECT_EQ(y[i], start[i] + 2.0 * plain[i]);
        }
    }
}

TEST(InnerProducts, DotFourAgreesWithThePlainSumsAndAddFourIsFourSteps) {
    for (int n = 0; n <= 40; ++n) {
        const Matrix columns = RandomMatrix(n + 1, 4, 8);
        const Vector factors = RandomVector(4, 9);
        Vector y = RandomVector(n, 10);
        Vector expected = y;
        const double* x[4];
        double sums[4];
        for (int c = 0; c < 4; ++c) {
            x[c] = columns.values.data() + c * (n + 1);
            for (int i = 0; i < n; ++i) {
                expected[static_cast<std::size_t>(i)] += factors[static_cast<std::size_t>(c)] * columns(i, c);
            }
        }
        KwMath_930::linpack::DotFour(n, x, y.data(), sums);
        for (int c = 0; c < 4; ++c) {
            double plain = 0.0;
            for (int i = 0; i < n; ++i) {
                plain += columns(i, c) * y[static_cast<std::size_t>(i)];
            }
            EXPECT_NEAR(sums[c], plain, n * n * kEps);
        }
        KwMath_930::linpack::AddFour(n, factors.data(), x, y.data());
        EXPECT_EQ(y, expected);
    }
}

}  // namespace
}  // namespace linpack_samples
