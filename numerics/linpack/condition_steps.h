// The steps that the condition estimates share. A vector z is kept from overflow by scaling it whenever a division
// would make it grow too far; yNorm follows the scaling. Internal.
#pragma once

#include <cmath>

#include "numerics/blas1/Blas1.h"
#include "numerics/linpack/inner_products.h"

namespace KwMath_930::linpack {

/// Rows or columns first .. last-1.
struct Span {
    int first;
    int last;
};

/// Scales z to sum of magnitudes 1.
/// Returns: the factor.
inline double Normalise(int n, double* z) {
    const double factor = 1.0 / Blas1::DASum(n, z, 1);
    Blas1::DScal(n, factor, z, 1);
    return factor;
}

/// Scales z so that |z[k]| is at most limit.
/// Returns: the factor, 1 where nothing had to be done.
inline double ShrinkTo(double limit, int k, int n, double* z) {
    if (!(std::abs(z[k]) > limit)) {
        return 1.0;
    }
    const double factor = limit / std::abs(z[k]);
    Blas1::DScal(n, factor, z, 1);
    return factor;
}

/// z[k] := z[k] / pivot, made safe; 1 for a zero pivot.
/// Returns: the factor that z was scaled with.
inline double DivideSafely(double pivot, int k, int n, double* z) {
    const double factor = ShrinkTo(std::abs(pivot), k, n, z);
    if (pivot != 0.0) {
        z[k] /= pivot;
    } else {
        z[k] = 1.0;
    }
    return factor;
}

/// One step of SolveForGrowth: chooses the sign of e[k] and moves row k's share into z[span].
template <class At>
void TakeGrowthStep(int k, At at, Span span, double e, double* z) {
    double up = e - z[k];
    double down = -e - z[k];
    double sumUp = std::abs(up);
    double sumDown = std::abs(down);
    const double pivot = at(k, k);
    up = pivot != 0.0 ? up / pivot : 1.0;
    down = pivot != 0.0 ? down / pivot : 1.0;
    for (int j = span.first; j < span.last; ++j) {
        const double element = at(k, j);
        sumDown += std::abs(z[j] + down * element);
        z[j] += up * element;
        sumUp += std::abs(z[j]);
    }
    if (sumUp < sumDown) {
        const double change = down - up;
        up = down;
        for (int j = span.first; j < span.last; ++j) {
            z[j] += change * at(k, j);
        }
    }
    z[k] = up;
}

/// Solves U^T z = e, U triangular with elements at(k, j), k being the row; each element of e is +1 or -1 up to scaling,
/// chosen so that z grows. The pivots are taken forward from 0, or backward from n-1; span(k) tells which columns of
/// row k are still to come. z is normalised at the end.
template <class At, class RowSpan>
void SolveForGrowth(int n, bool backward, At at, RowSpan span, double* z) {
    double e = 1.0;
    for (int j = 0; j < n; ++j) {
        z[j] = 0.0;
    }
    for (int step = 0; step < n; ++step) {
        const int k = backward ? n - 1 - step : step;
        if (z[k] != 0.0) {
            e = std::copysign(e, -z[k]);
        }
        const double pivot = std::abs(at(k, k));
        const double distance = std::abs(e - z[k]);
        if (distance > pivot) {
            const double factor = pivot / distance;
            Blas1::DScal(n, factor, z, 1);
            e *= factor;
        }
        TakeGrowthStep(k, at, span(k), e, z);
    }
    Normalise(n, z);
}

/// z := inverse of U times z, safely, then normalised; U upper in a view.
template <class Columns>
void SolveUpperSafely(Columns u, int n, double* z, double& yNorm) {
    for (int k = n - 1; k >= 0; --k) {
        double* column = u.Column(k);
        const int first = u.FirstRow(k);
        yNorm *= DivideSafely(column[k], k, n, z);
        AddScaled(k - first, -z[k], column + first, z + first);
    }
    yNorm *= Normalise(n, z);
}

/// z := inverse of U^T times z, safely, then normalised; U upper in a view.
template <class Columns>
void SolveTransposedUpperSafely(Columns u, int n, double* z, double& yNorm) {
    for (int k = 0; k < n; ++k) {
        double* column = u.Column(k);
        const int first = u.FirstRow(k);
        z[k] -= Dot(k - first, column + first, z + first);
        yNorm *= DivideSafely(column[k], k, n, z);
    }
    yNorm *= Normalise(n, z);
}

/// norm1 of a symmetric matrix of which a view holds the upper triangle; z gets the sums of the magnitudes of each
/// column.
template <class Columns>
double SymmetricNorm(Columns a, int n, double* z) {
    double norm = 0.0;
    for (int j = 0; j < n; ++j) {
        double* column = a.Column(j);
        const int first = a.FirstRow(j);
        z[j] = Blas1::DASum(j + 1 - first, column + first, 1);
        for (int i = first; i < j; ++i) {
            z[i] += std::abs(column[i]);
        }
    }
    for (int j = 0; j < n; ++j) {
        norm = Blas1::D_Max(norm, z[j]);
    }
    return norm;
}

/// rcond of a matrix of the given norm.
inline double ReciprocalCondition(double norm, double yNorm) {
    return norm != 0.0 ? yNorm / norm : 0.0;
}

}  // namespace KwMath_930::linpack
