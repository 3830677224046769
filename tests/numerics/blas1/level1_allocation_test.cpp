// The level-1 routines and the vector helpers allocate nothing.
#include <gtest/gtest.h>

#include <vector>

#include "numerics/blas1/Blas1.h"
#include "numerics/mathfun/KwMathFun.h"
#include "tests/support/failing_new.h"

namespace {

using KwMath_930::Blas1;
using KwMath_930::KwMathFun;

constexpr int kLength = 40;

TEST(Blas1Allocation, NoRoutineAllocates) {
    std::vector<double> x(2 * kLength, 2.385);
    std::vector<double> y(2 * kLength, -4.5);
    double a = 3.0;
    double b = 4.0;
    double c = 0.0;
    double s = 0.0;
    const std::size_t before = failing_new::Count();
    for (const int inc : {1, 2, -2}) {
        Blas1::DSwap(kLength, x.data(), inc, y.data(), inc);
        Blas1::DScal(kLength, -1.0, x.data(), inc);
        Blas1::DCopy(kLength, x.data(), inc, y.data(), inc);
        Blas1::Daxpy(kLength, -1.0, x.data(), inc, y.data(), inc);
        Blas1::DRot(kLength, x.data(), inc, y.data(), inc, 0.6, 0.8);
        a += Blas1::DDot(kLength, x.data(), inc, y.data(), inc) + Blas1::DNrm2(kLength, x.data(), inc) +
             Blas1::IDAMax(kLength, x.data(), inc);
    }
    a += Blas1::DASum(kLength, x.data(), 2);
    Blas1::DRotG(&a, &b, &c, &s);
    EXPECT_GT(Blas1::DMach(3), Blas1::DMach(2));
    EXPECT_EQ(failing_new::Count(), before);
}

TEST(KwMathFunAllocation, NoFunctionAllocates) {
    std::vector<double> x(kLength, 2.385);
    std::vector<double> y(kLength, -4.5);
    double largest = 0.0;
    double second = 0.0;
    const std::size_t before = failing_new::Count();
    KwMathFun::Daxpy(5, KwMathFun::DDot(5, x, 1, 2, y, 3, 4), x, 0, 1, y, 0, 2);
    KwMathFun::DScal(5, KwMathFun::DNrm2(5, x, 1, 2) + KwMathFun::DASum(5, x, 1, 2), x, 0, 2);
    KwMathFun::DLoad(5, KwMathFun::DSum(5, x, -2), x, 0, 2);
    KwMathFun::LRZero(x, 3, 4);
    KwMathFun::IIAxpy(5, KwMathFun::IIDot(5, x, 0, 1, y, 0, 2), x, 0, 1, y, 0, 2);
    KwMathFun::IIScal(5, KwMathFun::VSV(x, 5, y) + KwMathFun::RVD(x, 5, 2, y, 3), x, 0, 1);
    KwMathFun::IIInit(5, KwMathFun::VMaxRelDiff(x, y, 0.0) + KwMathFun::VNrm1Diff(x, y), x, 0, 1);
    KwMathFun::LTGltl(5, x);
    KwMathFun::FindTwoLargest(x, largest, second);
    KwMathFun::FindTwoLargestNonMiss(x, largest, second);
    EXPECT_GE(KwMathFun::BinSearch(x, 0, 0, -1e300, false), 0);
    EXPECT_EQ(failing_new::Count(), before);
}

}  // namespace
