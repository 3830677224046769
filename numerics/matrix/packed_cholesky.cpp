// Cholesky factor and its products, row by row: every inner loop runs along stored rows, which are contiguous.
// Test: KwSymMatrix_cholesky_test.cpp.
#include "numerics/matrix/packed_cholesky.h"

#include <cmath>

#include "numerics/containers/KwBitSet.h"
#include "numerics/matrix/dense_kernels.h"
#include "numerics/matrix/packed_triangle.h"

namespace KwMath_930::packed_cholesky {

using dense_kernels::AddMultiple;
using dense_kernels::DotByFours;
using packed_triangle::RowStart;

int Factor(double* packed, int n, const double* ref, double tol, KwBitSet* zeros, int firstBit) {
    int zeroPivots = 0;
    double* row = packed;
    for (int k = 0; k < n; ++k) {
        const double* other = packed;
        for (int j = 0; j < k; ++j) {
            const double sum = DotByFours(j, row, other);
            row[j] = other[j] != 0.0 ? (row[j] - sum) / other[j] : 0.0;
            other += j + 1;
        }
        const double pivot = row[k] - DotByFours(k, row, row);
        const bool isKept = pivot > tol * ref[k];
        row[k] = isKept ? std::sqrt(pivot) : 0.0;
        if (!isKept) {
            ++zeroPivots;
            if (zeros != nullptr) {
                zeros->Set(firstBit + k, true);
            }
        }
        row += k + 1;
    }
    return zeroPivots;
}

void SolveForward(const double* packed, int n, double* x) {
    for (int k = 0; k < n; ++k) {
        const double* row = packed + RowStart(k);
        x[k] = row[k] != 0.0 ? (x[k] - DotByFours(k, row, x)) / row[k] : 0.0;
    }
}

// Each element, once known, is taken out of those before it.
void SolveBackward(const double* packed, int n, double* x) {
    for (int k = n - 1; k >= 0; --k) {
        const double* row = packed + RowStart(k);
        x[k] = row[k] != 0.0 ? x[k] / row[k] : 0.0;
        AddMultiple(k, -x[k], row, x);
    }
}

// Row i of the inverse is -1/L(i,i) times the sum of L(i,k) times row k of the inverse, k < i. Element k of row i is
// spent before it turns into a sum.
void Invert(double* packed, int n) {
    for (int i = 0; i < n; ++i) {
        double* row = packed + RowStart(i);
        const bool isZero = row[i] == 0.0;
        for (int k = 0; k < i; ++k) {
            const double* inverse = packed + RowStart(k);
            const double factor = row[k];
            row[k] = 0.0;
            if (!isZero && inverse[k] != 0.0) {
                AddMultiple(k + 1, factor, inverse, row);
            }
        }
        if (!isZero) {
            row[i] = 1.0 / row[i];
            for (int k = 0; k < i; ++k) {
                row[k] *= -row[i];
            }
        }
    }
}

// Row k adds L(k,i) L(k,j) to every element (i, j) above it, then becomes L(k,k) times itself.
void MultiplyTransposedByItself(double* packed, int n) {
    for (int k = 0; k < n; ++k) {
        double* row = packed + RowStart(k);
        for (int i = 0; i < k; ++i) {
            AddMultiple(i + 1, row[i], row, packed + RowStart(i));
        }
        const double diagonal = row[k];
        for (int j = 0; j <= k; ++j) {
            row[j] *= diagonal;
        }
    }
}

// From the last row up and in each row from the diagonal down, so that every element still finds its operands.
void MultiplyByTransposed(double* packed, int n) {
    for (int i = n - 1; i >= 0; --i) {
        double* row = packed + RowStart(i);
        for (int j = i; j >= 0; --j) {
            row[j] = DotByFours(j + 1, row, packed + RowStart(j));
        }
    }
}

}  // namespace KwMath_930::packed_cholesky
