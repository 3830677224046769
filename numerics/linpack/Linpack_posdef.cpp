// LINPACK, positive definite matrices: the upper triangle dense, packed or as a band, by Cholesky's method. Each
// algorithm is written once, for a view of columns. Test: Linpack_posdef_test.cpp.
#include "numerics/linpack/Linpack.h"

#include <cmath>

#include "numerics/blas1/Blas1.h"
#include "numerics/linpack/ScaledProduct.h"
#include "numerics/linpack/column_views.h"
#include "numerics/linpack/condition_steps.h"
#include "numerics/linpack/inner_products.h"
#include "numerics/linpack/upper_inverse.h"

namespace KwMath_930 {

namespace {

using linpack::BandColumns;
using linpack::DenseColumns;
using linpack::Dot;
using linpack::PackedColumns;

// b[k] for k = first .. last-1 := inverse of R^T times b, where row k of R^T is column k of R from its first row.
template <class Columns>
void SolveTransposedFactor(Columns r, int first, int last, double* b) {
    for (int k = first; k < last; ++k) {
        const double* column = r.Column(k);
        const int start = r.FirstRow(k) > first ? r.FirstRow(k) : first;
        b[k] = (b[k] - Dot(k - start, column + start, b + start)) / column[k];
    }
}

template <class Columns>
int Factor(Columns a, int n) {
    for (int j = 0; j < n; ++j) {
        double* column = a.Column(j);
        const int first = a.FirstRow(j);
        SolveTransposedFactor(a, first, j, column);
        const double rest = column[j] - Dot(j - first, column + first, column + first);
        if (rest <= 0.0) {
            return j + 1;
        }
        column[j] = std::sqrt(rest);
    }
    return 0;
}

template <class Columns>
void Solve(Columns r, int n, double* b) {
    SolveTransposedFactor(r, 0, n, b);
    for (int k = n - 1; k >= 0; --k) {
        double* column = r.Column(k);
        const int first = r.FirstRow(k);
        b[k] /= column[k];
        Blas1::Daxpy(k - first, -b[k], column + first, 1, b + first, 1);
    }
}

// Factors and estimates; rowEnd(k) is the end of row k of R. Deliberate: 0 for a matrix that is not positive definite.
template <class Columns, class RowEnd>
double FactorAndEstimate(Columns a, int n, RowEnd rowEnd, double* z) {
    const double norm = linpack::SymmetricNorm(a, n, z);
    if (Factor(a, n) != 0) {
        return 0.0;
    }
    linpack::SolveForGrowth(
        n, false, [a](int i, int j) { return a.Column(j)[i]; },
        [rowEnd](int k) {
            return linpack::Span{k + 1, rowEnd(k)};
        },
        z);
    double yNorm = 1.0;
    linpack::SolveUpperSafely(a, n, z, yNorm);
    yNorm = 1.0;
    linpack::SolveTransposedUpperSafely(a, n, z, yNorm);
    linpack::SolveUpperSafely(a, n, z, yNorm);
    return linpack::ReciprocalCondition(norm, yNorm);
}

template <class Columns>
void StoreDeterminant(Columns r, int n, double* det) {
    linpack::ScaledProduct product;
    for (int k = 0; k < n; ++k) {
        const double diagonal = r.Column(k)[k];
        if (!product.MultiplyBy(diagonal * diagonal)) {
            break;
        }
    }
    product.StoreTo(det);
}

// The upper triangle of the inverse of R^T R replaces R.
template <class Columns>
void Invert(Columns r, int n) {
    linpack::InvertUpper(r, n, false);
    for (int j = 0; j < n; ++j) {
        double* column = r.Column(j);
        for (int k = 0; k < j; ++k) {
            Blas1::Daxpy(k + 1, column[k], column, 1, r.Column(k), 1);
        }
        Blas1::DScal(j + 1, column[j], column, 1);
    }
}

template <class Columns>
void Describe(Columns r, int n, double* det, int job) {
    if (job / 10 != 0) {
        StoreDeterminant(r, n, det);
    }
    if (job % 10 != 0) {
        Invert(r, n);
    }
}

}  // namespace

double Linpack::Dpoco(double* a, int lda, int n, double* z) {
    return FactorAndEstimate(
        DenseColumns(a, lda), n, [n](int) { return n; }, z);
}

int Linpack::Dpofa(double* a, int lda, int n) {
    return Factor(DenseColumns(a, lda), n);
}

void Linpack::Dposl(double* a, int lda, int n, double* b) {
    Solve(DenseColumns(a, lda), n, b);
}

void Linpack::Dpodi(double* a, int lda, int n, double* det, int job) {
    Describe(DenseColumns(a, lda), n, det, job);
}

double Linpack::Dppco(double* ap, int n, double* z) {
    return FactorAndEstimate(
        PackedColumns(ap), n, [n](int) { return n; }, z);
}

int Linpack::Dppfa(double* ap, int n) {
    return Factor(PackedColumns(ap), n);
}

void Linpack::Dppsl(double* ap, int n, double* b) {
    Solve(PackedColumns(ap), n, b);
}

void Linpack::Dppdi(double* ap, int n, double* det, int job) {
    Describe(PackedColumns(ap), n, det, job);
}

double Linpack::Dpbco(double* abd, int lda, int n, int m, double* z) {
    return FactorAndEstimate(
        BandColumns(abd, lda, m), n, [n, m](int k) { return k + 1 + Blas1::I_Min(m, n - 1 - k); }, z);
}

int Linpack::Dpbfa(double* abd, int lda, int n, int m) {
    return Factor(BandColumns(abd, lda, m), n);
}

void Linpack::Dpbsl(double* abd, int lda, int n, int m, double* b) {
    Solve(BandColumns(abd, lda, m), n, b);
}

void Linpack::Dpbdi(double* abd, int lda, int n, int m, double* det) {
    StoreDeterminant(BandColumns(abd, lda, m), n, det);
}

}  // namespace KwMath_930
