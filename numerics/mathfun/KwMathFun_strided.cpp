// Vector helpers, strided vectors: the level-1 routines at an offset, sums and fills. Test: KwMathFun_strided_test.cpp.
#include "numerics/mathfun/KwMathFun.h"

#include <algorithm>
#include <cstddef>

#include "numerics/blas1/Blas1.h"
#include "numerics/blas1/strided_walk.h"

namespace KwMath_930 {

const int KwMathFun::kSmallestArrayLimit = 7;
const int KwMathFun::kBigArrayLimit = 40;

namespace {

// Blas1 takes pointers that are not const also to what it only reads.
double* At(const std::vector<double>& x, int off) {
    return const_cast<double*>(x.data()) + off;
}

}  // namespace

double KwMathFun::DDot(int n, const std::vector<double>& x, int offx, int incx, const std::vector<double>& y, int offy,
                       int incy) {
    return n < 1 ? 0.0 : Blas1::DDot(n, At(x, offx), incx, At(y, offy), incy);
}

void KwMathFun::Daxpy(int n, double a, const std::vector<double>& x, int offx, int incx, std::vector<double>& y,
                      int offy, int incy) {
    if (n >= 1) {
        Blas1::Daxpy(n, a, At(x, offx), incx, At(y, offy), incy);
    }
}

void KwMathFun::DScal(int n, double a, std::vector<double>& x, int off, int inc) {
    if (n >= 1) {
        Blas1::DScal(n, a, At(x, off), inc);
    }
}

double KwMathFun::DNrm2(int n, const std::vector<double>& x, int off, int inc) {
    return n < 1 ? 0.0 : Blas1::DNrm2(n, At(x, off), inc);
}

double KwMathFun::DASum(int n, const std::vector<double>& x, int off, int inc) {
    return n < 1 ? 0.0 : Blas1::DASum(n, At(x, off), inc);
}

double KwMathFun::DSum(int n, const std::vector<double>& x, int inc) {
    if (n < 1) {
        return 0.0;
    }
    const double* values = x.data();
    if (inc == 0) {
        return n * values[0];
    }
    double sum = 0.0;
    strided_walk::Visit(n, inc, [&](std::ptrdiff_t i) { sum += values[i]; });
    return sum;
}

void KwMathFun::DLoad(int n, double value, std::vector<double>& x, int off, int inc) {
    if (n < 1 || off < 0 || inc < 1) {
        return;
    }
    double* values = At(x, off);
    strided_walk::Visit(n, inc, [=](std::ptrdiff_t i) { values[i] = value; });
}

void KwMathFun::LRZero(std::vector<double>& x, int off, int n) {
    if (n > 0) {
        std::fill_n(At(x, off), n, 0.0);
    }
}

}  // namespace KwMath_930
