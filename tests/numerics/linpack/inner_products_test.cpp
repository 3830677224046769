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
    }
}

TEST(InnerProducts, AllVersionsGiveTheSameBits) {
    for (int n = 0; n <= 70; ++n) {
        const Matrix columns = RandomMatrix(n + 1, 4, 5);
        const double* x[4];
        for (int c = 0; c < 4; ++c) {
            x[c] = columns.values.data() + c * (n + 1);
        }
        const Vector y = RandomVector(n, 6);
        const Vector factors = RandomVector(4, 7);
        Vector sums[2] = {Vector(4), Vector(4)};
        Vector sum[2] = {y, y};
        std::size_t k = 0;
        for (const InnerLoops* version : Versions()) {
            version->dotFour(n, x, y.data(), sums[k].data());
            version->addFour(n, factors.data(), x, sum[k].data());
            EXPECT_EQ(version->dot(n, x[1], y.data()), Versions()[0]->dot(n, x[1], y.data()));
            EXPECT_EQ(sums[k], sums[0]);
            EXPECT_EQ(sum[k], sum[0]);
            ++k;
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
