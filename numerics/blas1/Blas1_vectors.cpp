// BLAS level 1, the routines that change vectors. Where both increments are 1 and the vectors are not shifted against
// each other, the loops of vector_kernels.h do the work; otherwise a plain walk, element after element.
// Test: Blas1_vectors_test.cpp.
#include "numerics/blas1/Blas1.h"

#include <cstdint>
#include <cstring>

#include "numerics/blas1/strided_walk.h"
#include "numerics/blas1/vector_kernels.h"

namespace KwMath_930 {

namespace {

// True when an element of one vector is another element of the other, so that the order of the steps shows.
bool Shifted(const double* x, const double* y, std::size_t n) {
    const auto first = reinterpret_cast<std::uintptr_t>(x);
    const auto second = reinterpret_cast<std::uintptr_t>(y);
    const std::uintptr_t distance = first < second ? second - first : first - second;
    return distance != 0 && distance < n * sizeof(double);
}

bool IsDense(int n, const double* x, int incx, const double* y, int incy) {
    return incx == 1 && incy == 1 && !Shifted(x, y, static_cast<std::size_t>(n));
}

}  // namespace

void Blas1::DSwap(int n, double* x, int incx, double* y, int incy) {
    if (n <= 0) {
        return;
    }
    if (IsDense(n, x, incx, y, incy)) {
        FastestVectorKernels().swap(static_cast<std::size_t>(n), x, y);
        return;
    }
    strided_walk::Visit(n, incx, incy, [=](std::ptrdiff_t i, std::ptrdiff_t j) {
        const double old = x[i];
        x[i] = y[j];
        y[j] = old;
    });
}

void Blas1::DScal(int n, double alpha, double* x, int incx) {
    if (n <= 0) {
        return;
    }
    if (incx == 1) {
        FastestVectorKernels().scale(static_cast<std::size_t>(n), alpha, x);
        return;
    }
    strided_walk::Visit(n, incx, [=](std::ptrdiff_t i) { x[i] = alpha * x[i]; });
}

void Blas1::DCopy(int n, double* x, int incx, double* y, int incy) {
    if (n <= 0) {
        return;
    }
    if (IsDense(n, x, incx, y, incy)) {
        std::memmove(y, x, static_cast<std::size_t>(n) * sizeof(double));
        return;
    }
    strided_walk::Visit(n, incx, incy, [=](std::ptrdiff_t i, std::ptrdiff_t j) { y[j] = x[i]; });
}

void Blas1::Daxpy(int n, double alpha, double* x, int incx, double* y, int incy) {
    if (n <= 0 || alpha == 0.0) {
        return;
    }
    if (IsDense(n, x, incx, y, incy)) {
        FastestVectorKernels().addScaled(static_cast<std::size_t>(n), alpha, x, y);
        return;
    }
    strided_walk::Visit(n, incx, incy, [=](std::ptrdiff_t i, std::ptrdiff_t j) { y[j] = y[j] + alpha * x[i]; });
}

void Blas1::DRot(int n, double* x, int incx, double* y, int incy, double c, double s) {
    if (n <= 0) {
        return;
    }
    if (IsDense(n, x, incx, y, incy)) {
        FastestVectorKernels().rotate(static_cast<std::size_t>(n), x, y, c, s);
        return;
    }
    strided_walk::Visit(n, incx, incy, [=](std::ptrdiff_t i, std::ptrdiff_t j) {
        const double turned = c * x[i] + s * y[j];
        y[j] = c * y[j] - s * x[i];
        x[i] = turned;
    });
}

}  // namespace KwMath_930
