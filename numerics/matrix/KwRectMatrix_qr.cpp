// Rectangular matrix, Householder QR without pivoting, after LINPACK's DQRDC. Works on a transposed copy, so that a
// column is one stretch of memory. Test: KwRectMatrix_products_test.cpp.
#include "numerics/matrix/KwRectMatrix.h"

#include <cmath>
#include <cstddef>

#include "numerics/blas1/Blas1.h"
#include "numerics/matrix/KwSymMatrix.h"
#include "numerics/matrix/dense_kernels.h"
#include "numerics/matrix/matrix_operand.h"
#include "numerics/matrix/packed_triangle.h"

namespace KwMath_930 {

namespace {

// Makes x, n > 1 elements, the Householder vector h of the reflection that takes it to (r, 0, ..), h[0] = 1 + |x[0]| /
// norm; h stays 0 for x = 0.
// Returns: r.
double MakeReflection(int n, double* x) {
    const double norm = std::copysign(Blas1::DNrm2(n, x, 1), x[0]);
    if (norm == 0.0) {
        return 0.0;
    }
    for (int k = 0; k < n; ++k) {
        x[k] /= norm;
    }
    x[0] += 1.0;
    return -norm;
}

void Reflect(int n, const double* h, double* column) {
    if (h[0] != 0.0) {
        dense_kernels::AddMultiple(n, -dense_kernels::Dot(n, h, column) / h[0], h, column);
    }
}

}  // namespace

bool KwRectMatrix::QRDecompositionH(KwSymMatrix& u, KwRectMatrix& h) const try {
    if (!IsValidMatrix() || fNRows < fNCols) {
        return false;
    }
    std::vector<double> columns = Transposed(fNRows, fNCols, fData.data());
    std::vector<double> triangle(packed_triangle::Size(fNCols));
    std::vector<double> vectors = ZeroRows(fNRows, fNCols);
    for (int j = 0; j < fNCols; ++j) {
        double* column = columns.data() + static_cast<std::size_t>(j) * static_cast<std::size_t>(fNRows);
        for (int i = 0; i < j; ++i) {
            const std::size_t start = static_cast<std::size_t>(i) * static_cast<std::size_t>(fNRows);
            Reflect(fNRows - i, columns.data() + start + i, column + i);
            triangle[packed_triangle::Index(i, j)] = column[i];
        }
        const int length = fNRows - j;
        triangle[packed_triangle::Index(j, j)] = length > 1 ? MakeReflection(length, column + j) : column[j];
        if (length == 1) {
            column[j] = 0.0;
        }
        for (int i = j; i < fNRows; ++i) {
            vectors[static_cast<std::size_t>(i) * static_cast<std::size_t>(fNCols) + static_cast<std::size_t>(j)] =
                column[i];
        }
    }
    const int order = fNCols;
    const int rows = fNRows;
    return WriteTarget(u, order, triangle) && WriteTarget(h, rows, order, vectors);
} catch (...) {
    return false;
}

}  // namespace KwMath_930
