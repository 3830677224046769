// Inner loops over plain rows of doubles that the matrix classes share. Internal. Products and sums are rounded apart.
#pragma once

#include <cstddef>
#include <vector>

namespace KwMath_930::dense_kernels {

/// Returns: the sum of a[k] b[k], k < n, from left to right.
inline double Dot(int n, const double* a, const double* b) {
    double sum = 0.0;
    for (int k = 0; k < n; ++k) {
        sum += a[k] * b[k];
    }
    return sum;
}

/// Returns: the sum of a[k] b[k], k < n, as four sums of every fourth term.
inline double DotByFours(int n, const double* a, const double* b) {
    double sums[4] = {0.0, 0.0, 0.0, 0.0};
    int k = 0;
    for (; k + 4 <= n; k += 4) {
        sums[0] += a[k] * b[k];
        sums[1] += a[k + 1] * b[k + 1];
        sums[2] += a[k + 2] * b[k + 2];
        sums[3] += a[k + 3] * b[k + 3];
    }
    double sum = (sums[0] + sums[1]) + (sums[2] + sums[3]);
    for (; k < n; ++k) {
        sum += a[k] * b[k];
    }
    return sum;
}

/// y += a x.
inline void AddMultiple(int n, double a, const double* x, double* y) {
    for (int k = 0; k < n; ++k) {
        y[k] += a * x[k];
    }
}

/// C += A B.
/// Shape:   A is m x k, B is k x n, C is m x n, each row by row with its row length given after it; C overlaps neither.
void AddProduct(int m, int n, int k, const double* a, std::size_t lda, const double* b, std::size_t ldb, double* c,
                std::size_t ldc);

/// Returns: A B, row by row.
/// Shape:   A is m x k, B is k x n, row by row without gaps.
/// Note:    may throw std::bad_alloc.
std::vector<double> Product(int m, int n, int k, const double* a, const double* b);

/// Returns: the lower triangle of A B, packed.
/// Shape:   A is n x k, B is k x n, row by row without gaps.
/// Note:    may throw std::bad_alloc.
std::vector<double> LowerProduct(int n, int k, const double* a, const double* b);

/// Returns: S B, row by row, S being the symmetric matrix of order n whose lower triangle packed holds.
/// Shape:   B is n x nCols, row by row without gaps.
/// Note:    may throw std::bad_alloc. The triangle is read where it stands.
std::vector<double> SymmetricProduct(int n, const double* packed, int nCols, const double* b);

/// Returns: the lower triangle of B^T S B, packed, for S and B as above.
/// Note:    may throw std::bad_alloc.
std::vector<double> SymmetricForm(int n, const double* packed, int nCols, const double* b);

}  // namespace KwMath_930::dense_kernels
