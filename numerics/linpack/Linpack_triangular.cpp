// LINPACK, triangular matrices: dense columns, the opposite triangle unread. Test: Linpack_triangular_test.cpp.
#include "numerics/linpack/Linpack.h"

#include <cmath>

#include "numerics/blas1/Blas1.h"
#include "numerics/linpack/ScaledProduct.h"
#include "numerics/linpack/column_views.h"
#include "numerics/linpack/condition_steps.h"
#include "numerics/linpack/inner_products.h"
#include "numerics/linpack/triangle_solves.h"
#include "numerics/linpack/upper_inverse.h"

namespace KwMath_930 {

namespace {

using linpack::DenseColumns;
using linpack::Dot;

double TriangularNorm(DenseColumns t, int n, bool lower) {
    double norm = 0.0;
    for (int j = 0; j < n; ++j) {
        double* column = t.Column(j);
        norm = Blas1::D_Max(norm, lower ? Blas1::DASum(n - j, column + j, 1) : Blas1::DASum(j + 1, column, 1));
    }
    return norm;
}

// z := inverse of the lower T times z, safely, then normalised.
void SolveLowerSafely(DenseColumns t, int n, double* z, double& yNorm) {
    for (int k = 0; k < n; ++k) {
        double* column = t.Column(k);
        yNorm *= linpack::DivideSafely(column[k], k, n, z);
        linpack::AddScaled(n - 1 - k, -z[k], column + k + 1, z + k + 1);
    }
    yNorm *= linpack::Normalise(n, z);
}

void SolveLower(DenseColumns t, int n, double* b) {
    for (int j = 0; j < n; ++j) {
        double* column = t.Column(j);
        b[j] /= column[j];
        linpack::AddScaled(n - 1 - j, -b[j], column + j + 1, b + j + 1);
    }
}

void SolveTransposedLower(DenseColumns t, int n, double* b) {
    for (int j = n - 1; j >= 0; --j) {
        const double* column = t.Column(j);
        b[j] = (b[j] - Dot(n - 1 - j, column + j + 1, b + j + 1)) / column[j];
    }
}

// As InvertUpper, for a lower matrix, from its last column to the first.
int InvertLower(DenseColumns t, int n) {
    for (int k = n - 1; k >= 0; --k) {
        double* pivotColumn = t.Column(k);
        if (pivotColumn[k] == 0.0) {
            return k + 1;
        }
        pivotColumn[k] = 1.0 / pivotColumn[k];
        Blas1::DScal(n - 1 - k, -pivotColumn[k], pivotColumn + k + 1, 1);
        for (int j = 0; j < k; ++j) {
            double* column = t.Column(j);
            const double factor = column[k];
            column[k] = 0.0;
            linpack::AddScaled(n - k, factor, pivotColumn + k, column + k);
        }
    }
    return 0;
}

}  // namespace

double Linpack::Dtrco(double* t, int ldt, int n, double* z, int job) {
    const DenseColumns columns(t, ldt);
    const bool lower = job == 0;
    const double norm = TriangularNorm(columns, n, lower);
    linpack::SolveForGrowth(
        n, lower, [columns](int i, int j) { return columns.Column(j)[i]; },
        [n, lower](int k) {
            return lower ? linpack::Span{0, k} : linpack::Span{k + 1, n};
        },
        z);
    double yNorm = 1.0;
    if (lower) {
        SolveLowerSafely(columns, n, z, yNorm);
    } else {
        linpack::SolveUpperSafely(columns, n, z, yNorm);
    }
    return linpack::ReciprocalCondition(norm, yNorm);
}

int Linpack::Dtrsl(double* t, int ldt, int n, double* b, int job) {
    const DenseColumns columns(t, ldt);
    for (int k = 0; k < n; ++k) {
        if (columns.Column(k)[k] == 0.0) {
            return k + 1;
        }
    }
    const bool upper = job % 10 != 0;
    const bool transposed = job % 100 / 10 != 0;
    if (transposed) {
        upper ? linpack::SolveTransposedUpper(columns, 0, n, b) : SolveTransposedLower(columns, n, b);
    } else {
        upper ? linpack::SolveUpper(columns, n, b) : SolveLower(columns, n, b);
    }
    return 0;
}

int Linpack::Dtrdi(double* t, int ldt, int n, double* det, int job) {
    const DenseColumns columns(t, ldt);
    if (job / 100 != 0) {
        linpack::ScaledProduct product;
        for (int k = 0; k < n && product.MultiplyBy(columns.Column(k)[k]); ++k) {
        }
        product.StoreTo(det);
    }
    if (job % 100 / 10 == 0) {
        return 0;
    }
    return job % 10 != 0 ? linpack::InvertUpper(columns, n, true) : InvertLower(columns, n);
}

}  // namespace KwMath_930
