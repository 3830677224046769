// Vector helpers, walks whose increment grows by one at every step. Test: KwMathFun_growing_test.cpp.
#include "numerics/mathfun/KwMathFun.h"

#include <cstddef>

namespace KwMath_930 {

namespace {

// The index of the walk's element k for k = 0, 1, ...: off + k inc + k(k - 1)/2.
class GrowingIndex {
public:
    GrowingIndex(int off, int inc) : fIndex(off), fStep(inc) {}
    std::ptrdiff_t Next() {
        const std::ptrdiff_t index = fIndex;
        fIndex += fStep++;
        return index;
    }

private:
    std::ptrdiff_t fIndex;
    std::ptrdiff_t fStep;
};

}  // namespace

double KwMathFun::IIDot(int n, const std::vector<double>& x, int offx, int incx, const std::vector<double>& y, int offy,
                        int incy) {
    GrowingIndex i(offx, incx);
    GrowingIndex j(offy, incy);
    double sum = 0.0;
    for (int k = 0; k < n; ++k) {
        sum += x.data()[i.Next()] * y.data()[j.Next()];
    }
    return sum;
}

void KwMathFun::IIAxpy(int n, double a, const std::vector<double>& x, int offx, int incx, std::vector<double>& y,
                       int offy, int incy) {
    GrowingIndex i(offx, incx);
    GrowingIndex j(offy, incy);
    for (int k = 0; k < n; ++k) {
        y.data()[j.Next()] += a * x.data()[i.Next()];
    }
}

void KwMathFun::IIScal(int n, double a, std::vector<double>& x, int off, int inc) {
    GrowingIndex i(off, inc);
    for (int k = 0; k < n; ++k) {
        x.data()[i.Next()] *= a;
    }
}

void KwMathFun::IIInit(int n, double value, std::vector<double>& x, int off, int inc) {
    GrowingIndex i(off, inc);
    for (int k = 0; k < n; ++k) {
        x.data()[i.Next()] = value;
    }
}

}  // namespace KwMath_930
