// Every version of the dense loops that this machine can run, bit for bit the plain loop, at every alignment and
// length.
#include "numerics/blas1/vector_kernels.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/numerics/blas1/GuardedVector.h"

namespace {

using blas_test::GuardedVector;
using KwMath_930::VectorKernels;

constexpr double kAlpha = -2.385;
constexpr double kC = 0.8191520442889918;
constexpr double kS = -0.573576436351046;

// Calls test(kernels, n, offset of x, offset of y): lengths around the packs and their groups, every offset in a pack.
template <class Test>
void ForEachVersion(Test test) {
    const auto usable = KwMath_930::FindVectorKernels();
    ASSERT_GE(usable.count, 1u);
    for (std::size_t v = 0; v < usable.count; ++v) {
        for (std::size_t n = 0; n <= 100; ++n) {
            for (std::size_t offset = 0; offset < 8; ++offset) {
                SCOPED_TRACE(testing::Message() << usable.versions[v]->name << " n " << n << " offset " << offset);
                test(*usable.versions[v], n, offset, (offset * 3 + n) % 8);
                ASSERT_FALSE(testing::Test::HasFailure());
            }
        }
    }
}

template <class Subject, class PlainStep>
void ExpectSameAsPlain(Subject subject, PlainStep plainStep) {
    ForEachVersion([&](const VectorKernels& kernels, std::size_t n, std::size_t offsetX, std::size_t offsetY) {
        GuardedVector x(static_cast<int>(n) + 8, 1, 51);
        GuardedVector y(static_cast<int>(n) + 8, 1, 52);
        if (n > 40) {
            x.Data()[offsetX + 17] = std::numeric_limits<double>::infinity();
            y.Data()[offsetY + 17] = -std::numeric_limits<double>::infinity();
            x.Data()[offsetX + 39] = 5e-324;
            y.Data()[offsetY + 38] = -0.0;
        }
        GuardedVector expectedX = x;
        GuardedVector expectedY = y;
        subject(kernels, n, x.Data() + offsetX, y.Data() + offsetY);
        for (std::size_t k = 0; k < n; ++k) {
            plainStep(expectedX.Data()[offsetX + k], expectedY.Data()[offsetY + k]);
        }
        EXPECT_EQ(x.CellBits(), expectedX.CellBits());
        EXPECT_EQ(y.CellBits(), expectedY.CellBits());
    });
}

TEST(VectorKernels, ScaleIsThePlainLoop) {
    ExpectSameAsPlain(
        [](const VectorKernels& kernels, std::size_t n, double* x, double*) { kernels.scale(n, kAlpha, x); },
        [](double& x, double&) { x = kAlpha * x; });
}

TEST(VectorKernels, AddScaledIsThePlainLoop) {
    ExpectSameAsPlain(
        [](const VectorKernels& kernels, std::size_t n, double* x, double* y) { kernels.addScaled(n, kAlpha, x, y); },
        [](double& x, double& y) { y = y + kAlpha * x; });
}

TEST(VectorKernels, SwapIsThePlainLoop) {
    ExpectSameAsPlain([](const VectorKernels& kernels, std::size_t n, double* x, double* y) { kernels.swap(n, x, y); },
                      [](double& x, double& y) {
                          const double old = x;
                          x = y;
                          y = old;
                      });
}

TEST(VectorKernels, RotateIsThePlainLoop) {
    ExpectSameAsPlain(
        [](const VectorKernels& kernels, std::size_t n, double* x, double* y) { kernels.rotate(n, x, y, kC, kS); },
        [](double& x, double& y) {
            const double turned = kC * x + kS * y;
            y = kC * y - kS * x;
            x = turned;
        });
}

TEST(VectorKernels, ProductAndSumAreRoundedApart) {
    // (1 + 2^-30)^2 - 1 - 2^-29 is 2^-60 exactly, which a fused operation would keep.
    const double factor = 1.0 + std::ldexp(1.0, -30);
    const auto usable = KwMath_930::FindVectorKernels();
    for (std::size_t v = 0; v < usable.count; ++v) {
        std::vector<double> x(67, factor);
        std::vector<double> y(67, -1.0 - std::ldexp(1.0, -29));
        usable.versions[v]->addScaled(67, factor, x.data(), y.data());
        EXPECT_EQ(y, std::vector<double>(67, 0.0)) << usable.versions[v]->name;
    }
}

TEST(VectorKernels, SameVectorTwiceIsAllowed) {
    const auto usable = KwMath_930::FindVectorKernels();
    for (std::size_t v = 0; v < usable.count; ++v) {
        GuardedVector x(75, 1, 53);
        GuardedVector expected = x;
        usable.versions[v]->addScaled(75, kAlpha, x.Data(), x.Data());
        usable.versions[v]->swap(75, x.Data(), x.Data());
        usable.versions[v]->rotate(75, x.Data(), x.Data(), kC, kS);
        for (int k = 0; k < 75; ++k) {
            const double sum = expected.Data()[k] + kAlpha * expected.Data()[k];
            expected.Data()[k] = kC * sum + kS * sum;
        }
        EXPECT_EQ(x.CellBits(), expected.CellBits()) << usable.versions[v]->name;
    }
}

TEST(VectorKernels, FastestIsTheLastThatIsUsable) {
    const auto usable = KwMath_930::FindVectorKernels();
    EXPECT_EQ(&KwMath_930::FastestVectorKernels(), usable.versions[usable.count - 1]);
}

}  // namespace
