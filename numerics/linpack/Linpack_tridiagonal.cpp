// LINPACK, tridiagonal matrices: factor and solve in one pass. Test: Linpack_tridiagonal_test.cpp.
#include "numerics/linpack/Linpack.h"

#include <cmath>
#include <utility>

namespace KwMath_930 {

namespace {

// The diagonals of a positive definite matrix and the right side, eliminated from both ends towards the middle.
struct TwoEnds {
    int n;
    double* d;
    double* e;
    double* b;

    // Eliminates the element below diagonal k with it.
    void EliminateDown(int k) const {
        const double multiplier = e[k] / d[k];
        d[k + 1] -= multiplier * e[k];
        b[k + 1] -= multiplier * b[k];
    }
    // Eliminates the element above diagonal k+1 with it.
    void EliminateUp(int k) const {
        const double multiplier = e[k] / d[k + 1];
        d[k] -= multiplier * e[k];
        b[k] -= multiplier * b[k + 1];
    }
};

// With c the diagonal, d and e the ones above it: the upper triangle that the elimination left.
void SolveUpper(int n, const double* c, const double* d, const double* e, double* b) {
    b[n - 1] /= c[n - 1];
    if (n > 1) {
        b[n - 2] = (b[n - 2] - d[n - 2] * b[n - 1]) / c[n - 2];
    }
    for (int k = n - 3; k >= 0; --k) {
        b[k] = (b[k] - d[k] * b[k + 1] - e[k] * b[k + 2]) / c[k];
    }
}

}  // namespace

int Linpack::Dgtsl(int n, double* c, double* d, double* e, double* b) {
    if (n < 1) {
        return 0;
    }
    c[0] = d[0];
    if (n > 1) {
        d[0] = e[0];
        e[0] = 0.0;
        e[n - 1] = 0.0;
    }
    for (int k = 0; k < n - 1; ++k) {
        if (!(std::abs(c[k + 1]) < std::abs(c[k]))) {
            std::swap(c[k + 1], c[k]);
            std::swap(d[k + 1], d[k]);
            std::swap(e[k + 1], e[k]);
            std::swap(b[k + 1], b[k]);
        }
        if (c[k] == 0.0) {
            return k + 1;
        }
        const double multiplier = -c[k + 1] / c[k];
        c[k + 1] = d[k + 1] + multiplier * d[k];
        d[k + 1] = e[k + 1] + multiplier * e[k];
        e[k + 1] = 0.0;
        b[k + 1] += multiplier * b[k];
    }
    if (c[n - 1] == 0.0) {
        return n;
    }
    SolveUpper(n, c, d, e, b);
    return 0;
}

void Linpack::Dptsl(int n, double* d, double* e, double* b) {
    const TwoEnds system{n, d, e, b};
    const int half = (n - 1) / 2;
    for (int k = 0; k < half; ++k) {
        system.EliminateDown(k);
        system.EliminateUp(n - 2 - k);
    }
    int middle = half;
    if (n > 0 && n % 2 == 0) {
        system.EliminateDown(middle);
        ++middle;
    }
    if (n > 0) {
        b[middle] /= d[middle];
    }
    for (int step = 0; step < half; ++step) {
        const int k = middle - 1 - step;
        const int up = middle + step;
        b[k] = (b[k] - e[k] * b[k + 1]) / d[k];
        b[up + 1] = (b[up + 1] - e[up] * b[up]) / d[up + 1];
    }
    if (n > 0 && n % 2 == 0) {
        b[0] = (b[0] - e[0] * b[1]) / d[0];
    }
}

}  // namespace KwMath_930
