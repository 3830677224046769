// BLAS level 1, the routines that compute a value of vectors. Sums run strictly from the first element to the last; at
// increment 1 they go in groups of the published sizes, which leaves that order as it is. Test: Blas1_values_test.cpp.
#include "numerics/blas1/Blas1.h"

#include <cmath>

#include "numerics/blas1/strided_walk.h"

namespace KwMath_930 {

namespace {

// Calls visit(k) for k = 0 .. n-1, in that order: the first n mod Group one by one, the others a group at a time.
template <int Group, class Action>
void VisitInGroups(int n, Action visit) {
    std::ptrdiff_t k = 0;
    for (; k < n % Group; ++k) {
        visit(k);
    }
    for (; k < n; k += Group) {
        for (std::ptrdiff_t g = 0; g < Group; ++g) {
            visit(k + g);
        }
    }
}

}  // namespace

double Blas1::DDot(int n, double* x, int incx, double* y, int incy) {
    double sum = 0.0;
    if (n <= 0) {
        return sum;
    }
    if (incx == 1 && incy == 1) {
        VisitInGroups<5>(n, [&](std::ptrdiff_t k) { sum += x[k] * y[k]; });
    } else {
        strided_walk::Visit(n, incx, incy, [&](std::ptrdiff_t i, std::ptrdiff_t j) { sum += x[i] * y[j]; });
    }
    return sum;
}

double Blas1::DNrm2(int n, double* x, int incx) {
    if (n < 1 || incx < 1) {
        return 0.0;
    }
    if (n == 1) {
        return std::abs(x[0]);
    }
    double scale = 0.0;
    double sumOfSquares = 1.0;
    for (int k = 0; k < n; ++k) {
        const double element = x[std::ptrdiff_t{k} * incx];
        if (element == 0.0) {
            continue;
        }
        const double magnitude = std::abs(element);
        if (magnitude > scale) {
            const double ratio = scale / magnitude;
            sumOfSquares = 1.0 + sumOfSquares * (ratio * ratio);
            scale = magnitude;
        } else {
            const double ratio = magnitude / scale;
            sumOfSquares += ratio * ratio;
        }
    }
    return scale * std::sqrt(sumOfSquares);
}

double Blas1::DASum(int n, double* x, int incx) {
    double sum = 0.0;
    if (incx == 1) {
        VisitInGroups<6>(n, [&](std::ptrdiff_t k) { sum += std::abs(x[k]); });
        return sum;
    }
    // Deliberate: from x[0] on whatever the increment.
    std::ptrdiff_t i = 0;
    for (int k = 0; k < n; ++k) {
        sum += std::abs(x[i]);
        i += incx;
    }
    return sum;
}

int Blas1::IDAMax(int n, double* x, int incx) {
    if (n < 1 || incx <= 0) {
        return 0;
    }
    if (n == 1) {
        return 1;
    }
    int largest = 0;
    double magnitude = std::abs(x[0]);
    for (int k = 1; k < n; ++k) {
        const double candidate = std::abs(x[std::ptrdiff_t{k} * incx]);
        if (candidate > magnitude) {
            largest = k;
            magnitude = candidate;
        }
    }
    return largest + 1;
}

}  // namespace KwMath_930
