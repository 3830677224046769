// The inverse of an upper triangular matrix, in place. Internal.
#pragma once

#include "numerics/blas1/Blas1.h"
#include "numerics/linpack/inner_products.h"

namespace KwMath_930::linpack {

/// R := inverse of R, of which a view holds the upper triangle, dense or packed.
/// Returns: 0, or with stopAtZero the number, from 1, of the first zero diagonal element, at which the work stops.
template <class Columns>
int InvertUpper(Columns r, int n, bool stopAtZero) {
    for (int k = 0; k < n; ++k) {
        double* pivotColumn = r.Column(k);
        if (stopAtZero && pivotColumn[k] == 0.0) {
            return k + 1;
        }
        pivotColumn[k] = 1.0 / pivotColumn[k];
        Blas1::DScal(k, -pivotColumn[k], pivotColumn, 1);
        for (int j = k + 1; j < n; ++j) {
            double* column = r.Column(j);
            const double factor = column[k];
            column[k] = 0.0;
            AddScaled(k + 1, factor, pivotColumn, column);
        }
    }
    return 0;
}

}  // namespace KwMath_930::linpack
