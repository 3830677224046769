// The routines that compute a value: sums bit for bit the plain loop and the reference, the norm in ulp, the index.
#include "numerics/blas1/Blas1.h"

#include <gtest/gtest.h>

#include <climits>
#include <limits>

#include "tests/numerics/blas1/GuardedVector.h"
#include "tests/numerics/blas1/reference_blas.h"
#include "tests/numerics/special_values.h"

namespace {

using blas_test::Bits;
using blas_test::ForEachWalk;
using blas_test::GuardedVector;
using blas_test::kIncrements;
using blas_test::kLengths;
using blas_test::UlpsBetween;
using KwMath_930::Blas1;

using numerics_samples::kInfinity;
using numerics_samples::kNaN;
constexpr double kLargest = std::numeric_limits<double>::max();

TEST(Blas1Dot, IsTheReferenceOverAllStrides) {
    ForEachWalk([](int n, int incx, int incy) {
        GuardedVector x(n, incx, 21);
        GuardedVector y(n, incy, 22);
        EXPECT_EQ(Bits(Blas1::DDot(n, x.Data(), incx, y.Data(), incy)),
                  Bits(ddot_(&n, x.Data(), &incx, y.Data(), &incy)));
    });
}

TEST(Blas1Dot, AddsFromTheFirstElementToTheLast) {
    for (int n = 0; n <= 1000; ++n) {
        GuardedVector x(n, 1, 23);
        GuardedVector y(n, 1, 24);
        double sum = 0.0;
        for (int k = 0; k < n; ++k) {
            sum += x.Data()[k] * y.Data()[k];
        }
        ASSERT_EQ(Bits(Blas1::DDot(n, x.Data(), 1, y.Data(), 1)), Bits(sum)) << n;
    }
    double large[] = {1e16, 1.0, -1e16, 1.0, 1.0, 1e16, -1e16, 1.0};
    double ones[] = {1, 1, 1, 1, 1, 1, 1, 1};
    EXPECT_EQ(Blas1::DDot(8, large, 1, ones, 1), 3.0);
}

TEST(Blas1ASum, IsTheReferenceForPositiveIncrements) {
    for (const int n : kLengths) {
        for (const int inc : {1, 2, 3}) {
            GuardedVector x(n, inc, 25);
            EXPECT_EQ(Bits(Blas1::DASum(n, x.Data(), inc)), Bits(dasum_(&n, x.Data(), &inc))) << n << " " << inc;
        }
    }
}

TEST(Blas1ASum, AddsFromTheFirstElementToTheLast) {
    for (int n = 0; n <= 1000; ++n) {
        GuardedVector x(n, 1, 26);
        double sum = 0.0;
        for (int k = 0; k < n; ++k) {
            sum += std::abs(x.Data()[k]);
        }
        ASSERT_EQ(Bits(Blas1::DASum(n, x.Data(), 1)), Bits(sum)) << n;
    }
}

TEST(Blas1ASum, IncrementIsNotTested) {
    double x[] = {64.0, -16.0, 4.0, -1.5};
    EXPECT_EQ(Blas1::DASum(3, x + 3, -1), 21.5);
    EXPECT_EQ(Blas1::DASum(2, x + 2, -2), 68.0);
    EXPECT_EQ(Blas1::DASum(3, x + 1, 0), 48.0);
    EXPECT_EQ(Blas1::DASum(0, nullptr, -1), 0.0);
    EXPECT_EQ(Blas1::DASum(-1, nullptr, 1), 0.0);
}

TEST(Blas1Nrm2, IsTheReferenceWithinUlpsForPositiveIncrements) {
    for (const int n : kLengths) {
        for (const int inc : {1, 2, 3}) {
            GuardedVector x(n, inc, 27);
            // The reference squares and adds unscaled; each of n scaled steps may round once more.
            EXPECT_LE(UlpsBetween(Blas1::DNrm2(n, x.Data(), inc), dnrm2_(&n, x.Data(), &inc)),
                      static_cast<std::uint64_t>(n > 8 ? n / 4 : 2))
                << n << " " << inc;
        }
    }
}

TEST(Blas1Nrm2, FollowsTheScaledSumStepByStep) {
    // 1 + (3/4)^2 with the exact quotients that the scaled form has, then the smaller element under the same scale.
    double x[] = {0.0, -3.0, 4.0, 0.0, 2.0};
    EXPECT_EQ(Blas1::DNrm2(5, x, 1), 4.0 * std::sqrt(1.0 + 0.5625 + 0.25));
}

TEST(Blas1Nrm2, ZerosGiveZero) {
    double x[] = {0.0, -0.0, 0.0};
    EXPECT_EQ(Bits(Blas1::DNrm2(3, x, 1)), Bits(0.0));
}

TEST(Blas1Nrm2, ThreeAndFourGiveFive) {
    double x[] = {3.0, 4.0};
    EXPECT_EQ(Blas1::DNrm2(2, x, 1), 5.0);
}

TEST(Blas1Nrm2, DoesNotOverflowNearTheTopOfTheRange) {
    double x[] = {3e307, -4e307};
    EXPECT_EQ(Blas1::DNrm2(2, x, 1), 5e307);
    double tiny[] = {3e-310, 4e-310};
    EXPECT_DOUBLE_EQ(Blas1::DNrm2(2, tiny, 1), 5e-310);
}

TEST(Blas1Nrm2, OneElementGivesItsMagnitude) {
    double x[] = {-kLargest};
    EXPECT_EQ(Blas1::DNrm2(1, x, 7), kLargest);
    x[0] = -0.0;
    EXPECT_EQ(Bits(Blas1::DNrm2(1, x, 1)), Bits(0.0));
}

TEST(Blas1Nrm2, RefusesEmptyLengthsAndIncrementsBelowOne) {
    double x[] = {3.0, 4.0};
    EXPECT_EQ(Blas1::DNrm2(0, x, 1), 0.0);
    EXPECT_EQ(Blas1::DNrm2(-1, x, 1), 0.0);
    EXPECT_EQ(Blas1::DNrm2(2, x, 0), 0.0);
    EXPECT_EQ(Blas1::DNrm2(2, x, -1), 0.0);
    EXPECT_EQ(Blas1::DNrm2(1, x, 0), 0.0);
}

TEST(Blas1Nrm2, NaNCountsAsNonZero) {
    double behindZeros[] = {0.0, kNaN};
    EXPECT_TRUE(std::isnan(Blas1::DNrm2(2, behindZeros, 1)));
    double between[] = {3.0, kNaN, 4.0};
    EXPECT_TRUE(std::isnan(Blas1::DNrm2(3, between, 1)));
}

TEST(Blas1Nrm2, OneInfinityGivesInfinityAndTwoGiveNaN) {
    double one[] = {3.0, -kInfinity, 4.0};
    EXPECT_EQ(Blas1::DNrm2(3, one, 1), kInfinity);
    // The quotient of the second by the first is no number.
    double two[] = {kInfinity, 2.385, kInfinity};
    EXPECT_TRUE(std::isnan(Blas1::DNrm2(3, two, 1)));
}

TEST(Blas1AMax, IsTheReferenceForAllIncrements) {
    for (const int n : kLengths) {
        for (const int inc : kIncrements) {
            for (unsigned seed = 30; seed < 40; ++seed) {
                GuardedVector x(n, inc, seed);
                EXPECT_EQ(Blas1::IDAMax(n, x.Data(), inc), idamax_(&n, x.Data(), &inc)) << n << " " << inc;
            }
        }
    }
}

TEST(Blas1AMax, EmptyLengthAndIncrementsBelowOneGiveZero) {
    double x[] = {1.0, -2.385};
    EXPECT_EQ(Blas1::IDAMax(0, x, 1), 0);
    EXPECT_EQ(Blas1::IDAMax(-4, x, 1), 0);
    EXPECT_EQ(Blas1::IDAMax(2, x, 0), 0);
    EXPECT_EQ(Blas1::IDAMax(2, x, -1), 0);
    EXPECT_EQ(Blas1::IDAMax(1, x, 0), 0);
    EXPECT_EQ(Blas1::IDAMax(2, x, 1), 2);
}

TEST(Blas1AMax, OneElementIsNotEvenRead) {
    EXPECT_EQ(Blas1::IDAMax(1, nullptr, 1), 1);
}

TEST(Blas1AMax, FirstOfEqualMagnitudesWins) {
    double x[] = {1.0, -7.25, 7.25, -7.25, 3.0};
    EXPECT_EQ(Blas1::IDAMax(5, x, 1), 2);
    EXPECT_EQ(Blas1::IDAMax(3, x, 2), 2);
}

TEST(Blas1AMax, NaNIsNeverLarger) {
    double behind[] = {1.0, kNaN, 2.385};
    EXPECT_EQ(Blas1::IDAMax(3, behind, 1), 3);
    double first[] = {kNaN, kInfinity};
    EXPECT_EQ(Blas1::IDAMax(2, first, 1), 1);
}

TEST(Blas1Values, EmptyLengthsTouchNoPointer) {
    for (const int n : {0, -1, INT_MIN}) {
        for (const int inc : {-1, 0, 1, INT_MAX, INT_MIN}) {
            EXPECT_EQ(Blas1::DDot(n, nullptr, inc, nullptr, inc), 0.0);
            EXPECT_EQ(Blas1::DASum(n, nullptr, inc), 0.0);
            EXPECT_EQ(Blas1::DNrm2(n, nullptr, inc), 0.0);
            EXPECT_EQ(Blas1::IDAMax(n, nullptr, inc), 0);
        }
    }
}

}  // namespace
