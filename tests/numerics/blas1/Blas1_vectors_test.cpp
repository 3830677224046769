// The routines that change vectors: all cells, guards included, against the reference routines bit for bit; the walks
// on which they differ from the reference on purpose, against plain loops; overlapping vectors.
#include "numerics/blas1/Blas1.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>

#include "tests/numerics/blas1/GuardedVector.h"
#include "tests/numerics/blas1/reference_blas.h"
#include "tests/numerics/special_values.h"

namespace {

using blas_test::Bits;
using blas_test::ForEachWalk;
using blas_test::GuardedVector;
using blas_test::kIncrements;
using blas_test::kLengths;
using KwMath_930::Blas1;

using numerics_samples::kInfinity;
using numerics_samples::kNaN;

// Runs both routines on equal vectors and demands equal cells.
template <class Subject, class Reference>
void ExpectSameCells(int n, int incx, int incy, Subject subject, Reference reference) {
    GuardedVector x(n, incx, 11);
    GuardedVector y(n, incy, 12);
    GuardedVector expectedX = x;
    GuardedVector expectedY = y;
    subject(x.Data(), y.Data());
    reference(expectedX.Data(), expectedY.Data());
    EXPECT_EQ(x.CellBits(), expectedX.CellBits());
    EXPECT_EQ(y.CellBits(), expectedY.CellBits());
}

TEST(Blas1Swap, IsTheReferenceOverAllStrides) {
    ForEachWalk([](int n, int incx, int incy) {
        ExpectSameCells(
            n, incx, incy, [=](double* x, double* y) { Blas1::DSwap(n, x, incx, y, incy); },
            [=](double* x, double* y) { dswap_(&n, x, &incx, y, &incy); });
    });
}

TEST(Blas1Copy, IsTheReferenceOverAllStrides) {
    ForEachWalk([](int n, int incx, int incy) {
        ExpectSameCells(
            n, incx, incy, [=](double* x, double* y) { Blas1::DCopy(n, x, incx, y, incy); },
            [=](double* x, double* y) { dcopy_(&n, x, &incx, y, &incy); });
    });
}

TEST(Blas1Axpy, IsTheReferenceOverAllStrides) {
    for (const double alpha : {-2.385, 0.0, -0.0, 1.0, 1e-310}) {
        ForEachWalk([alpha](int n, int incx, int incy) {
            ExpectSameCells(
                n, incx, incy, [=](double* x, double* y) { Blas1::Daxpy(n, alpha, x, incx, y, incy); },
                [=](double* x, double* y) { daxpy_(&n, &alpha, x, &incx, y, &incy); });
        });
    }
}

TEST(Blas1Rot, IsTheReferenceOverAllStrides) {
    ForEachWalk([](int n, int incx, int incy) {
        const double c = 0.8191520442889918;
        const double s = -0.573576436351046;
        ExpectSameCells(
            n, incx, incy, [=](double* x, double* y) { Blas1::DRot(n, x, incx, y, incy, c, s); },
            [=](double* x, double* y) { drot_(&n, x, &incx, y, &incy, &c, &s); });
    });
}

TEST(Blas1Scal, IsTheReferenceForPositiveIncrements) {
    for (const int n : kLengths) {
        for (const int inc : {1, 2, 3}) {
            for (const double alpha : {-2.385, 0.0, 1.0, 1e-310}) {
                ExpectSameCells(
                    n, inc, inc, [=](double* x, double*) { Blas1::DScal(n, alpha, x, inc); },
                    [=](double* x, double*) { dscal_(&n, &alpha, x, &inc); });
            }
        }
    }
}

TEST(Blas1Scal, WalksNegativeIncrementsAndRepeatsTheFirstElementAtZero) {
    for (const int n : kLengths) {
        for (const int inc : {-3, -2, -1, 0}) {
            GuardedVector x(n, inc, 13);
            GuardedVector expected = x;
            Blas1::DScal(n, -2.385, x.Data(), inc);
            for (int k = 0; k < n; ++k) {
                expected.Data()[k * -inc] *= -2.385;
            }
            EXPECT_EQ(x.CellBits(), expected.CellBits()) << n << " " << inc;
        }
    }
}

TEST(Blas1Scal, NegativeIncrementScalesFromTheFarEndDownToTheFirst) {
    double x[] = {2.385, -4.5, 8.25, 99.0};
    Blas1::DScal(3, 2.0, x, -1);
    EXPECT_EQ(x[0], 4.77);
    EXPECT_EQ(x[1], -9.0);
    EXPECT_EQ(x[2], 16.5);
    EXPECT_EQ(x[3], 99.0);
}

TEST(Blas1Scal, IncrementZeroMultipliesTheFirstElementNTimes) {
    double x[] = {1.5, 99.0};
    Blas1::DScal(3, 2.0, x, 0);
    EXPECT_EQ(x[0], 12.0);
    EXPECT_EQ(x[1], 99.0);
}

TEST(Blas1Scal, AlphaZeroKeepsNaN) {
    double x[] = {kNaN, kInfinity, -2.385};
    Blas1::DScal(3, 0.0, x, 1);
    EXPECT_TRUE(std::isnan(x[0]));
    EXPECT_TRUE(std::isnan(x[1]));
    EXPECT_EQ(Bits(x[2]), Bits(-0.0));
}

TEST(Blas1Axpy, AlphaZeroLeavesYUntouchedEvenIfNaN) {
    double x[] = {kInfinity, kNaN, 1.25};
    double y[] = {kNaN, -2.385, kInfinity};
    double before[3];
    std::memcpy(before, y, sizeof y);
    Blas1::Daxpy(3, 0.0, x, 1, y, 1);
    Blas1::Daxpy(3, -0.0, x, 1, y, -1);
    EXPECT_EQ(std::memcmp(before, y, sizeof y), 0);
}

TEST(Blas1Axpy, AlphaNaNIsNotZero) {
    double x[] = {1.25};
    double y[] = {-2.385};
    Blas1::Daxpy(1, kNaN, x, 1, y, 1);
    EXPECT_TRUE(std::isnan(y[0]));
}

TEST(Blas1Vectors, EmptyLengthsTouchNoPointer) {
    for (const int n : {0, -1, INT_MIN}) {
        for (const int inc : {-1, 0, 1, INT_MAX, INT_MIN}) {
            Blas1::DSwap(n, nullptr, inc, nullptr, inc);
            Blas1::DScal(n, 2.0, nullptr, inc);
            Blas1::DCopy(n, nullptr, inc, nullptr, inc);
            Blas1::Daxpy(n, 2.0, nullptr, inc, nullptr, inc);
            Blas1::DRot(n, nullptr, inc, nullptr, inc, 0.6, 0.8);
        }
    }
}

TEST(Blas1Vectors, OneElementStandsAtThePointerWhateverTheIncrement) {
    for (const int inc : {INT_MIN, -7, 0, 7, INT_MAX}) {
        double x = 2.385;
        double y = -0.5;
        Blas1::DSwap(1, &x, inc, &y, inc);
        EXPECT_EQ(x, -0.5);
        Blas1::DScal(1, 3.0, &x, inc);
        EXPECT_EQ(x, -1.5);
        Blas1::DCopy(1, &x, inc, &y, inc);
        EXPECT_EQ(y, -1.5);
        Blas1::Daxpy(1, 2.0, &x, inc, &y, inc);
        EXPECT_EQ(y, -4.5);
        Blas1::DRot(1, &x, inc, &y, inc, 0.0, 1.0);
        EXPECT_EQ(x, -4.5);
        EXPECT_EQ(y, 1.5);
    }
}

// Lengths at which dense loops work in packs, and vectors that lie on each other, shifted by every small distance.
TEST(Blas1Vectors, OverlappingVectorsAreWorkedOffOneElementAfterAnother) {
    constexpr double c = 0.6;
    constexpr double s = 0.8;
    for (const int n : {5, 33, 100}) {
        for (int shift = -9; shift <= 9; ++shift) {
            const GuardedVector start(n + 20, 1, 14);
            const auto expectSame = [&](auto subject, auto plainStep) {
                GuardedVector actual = start;
                GuardedVector expected = start;
                subject(actual.Data() + 10, actual.Data() + 10 + shift);
                for (int k = 0; k < n; ++k) {
                    plainStep(expected.Data()[10 + k], expected.Data()[10 + shift + k]);
                }
                EXPECT_EQ(actual.CellBits(), expected.CellBits()) << n << " shifted by " << shift;
            };
            expectSame([n](double* x, double* y) { Blas1::DCopy(n, x, 1, y, 1); }, [](double& x, double& y) { y = x; });
            expectSame([n](double* x, double* y) { Blas1::DSwap(n, x, 1, y, 1); },
                       [](double& x, double& y) {
                           const double old = x;
                           x = y;
                           y = old;
                       });
            expectSame([n](double* x, double* y) { Blas1::Daxpy(n, 0.375, x, 1, y, 1); },
                       [](double& x, double& y) { y = y + 0.375 * x; });
            expectSame([n](double* x, double* y) { Blas1::DRot(n, x, 1, y, 1, c, s); },
                       [](double& x, double& y) {
                           const double turned = c * x + s * y;
                           y = c * y - s * x;
                           x = turned;
                       });
        }
    }
}

}  // namespace
