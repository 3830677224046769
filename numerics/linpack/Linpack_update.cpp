// LINPACK, Cholesky decomposition with pivoting and the changes of a Cholesky factor: a row more, a row less, columns
// moved. Rotations act on rows, (c s; -s c), and are kept in the caller's arrays c and s. Test:
// Linpack_update_test.cpp.
#include "numerics/linpack/Linpack.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "numerics/blas1/Blas1.h"
#include "numerics/linpack/column_views.h"
#include "numerics/linpack/inner_products.h"
#include "numerics/linpack/rearrange.h"

namespace KwMath_930 {

namespace {

using linpack::DenseColumns;

// ---- Pivoting decomposition

// Exchanges the elements of rows and columns low < high that lie in the upper triangle of order p right of column low
// and are not in the rows above.
void ExchangeRight(DenseColumns a, int p, int low, int high) {
    for (int j = low + 1; j < p; ++j) {
        if (j < high) {
            std::swap(a.Column(j)[low], a.Column(high)[j]);
        } else if (j != high) {
            std::swap(a.Column(j)[low], a.Column(j)[high]);
        }
    }
}

void ExchangeSymmetric(DenseColumns a, int p, int low, int high) {
    Blas1::DSwap(low, a.Column(low), 1, a.Column(high), 1);
    std::swap(a.Column(low)[low], a.Column(high)[high]);
    ExchangeRight(a, p, low, high);
}

// The comparisons here, in Dchdc and in Dchdd say by ! what becomes of a NaN, as published.
int LargestDiagonal(DenseColumns a, int first, int last) {
    int largest = first;
    for (int l = first + 1; l < last; ++l) {
        if (!(a.Column(l)[l] <= a.Column(largest)[largest])) {
            largest = l;
        }
    }
    return largest;
}

// Row k of the factor, and its share out of the triangle below.
void EliminateRow(DenseColumns a, int p, int k, double* work) {
    double* pivot = a.Column(k);
    pivot[k] = std::sqrt(pivot[k]);
    work[k] = pivot[k];
    for (int j = k + 1; j < p; ++j) {
        double* column = a.Column(j);
        column[k] /= work[k];
        work[j] = column[k];
        linpack::AddScaled(j - k, -column[k], work + k + 1, column + k + 1);
    }
}

// ---- Rotations of rows

// (above, below) := rotation times it.
void Turn(double c, double s, double& above, double& below) {
    const double turned = c * above + s * below;
    below = c * below - s * above;
    above = turned;
}

// Turns each element of a column with the one that is being merged into it.
void MergeInto(int n, const double* c, const double* s, double* column, double& merged) {
    for (int i = 0; i < n; ++i) {
        Turn(c[i], s[i], column[i], merged);
    }
}

// ---- Downdate

// The rotations that carry the unit vector (s, alpha), alpha = sqrt(1 - |s|^2), to (0, 1), from the last to the first.
void MakeDowndateRotations(int p, double norm, double* c, double* s) {
    double alpha = std::sqrt(1.0 - norm * norm);
    for (int i = p - 1; i >= 0; --i) {
        const double scale = alpha + std::abs(s[i]);
        const double a = alpha / scale;
        const double b = s[i] / scale;
        const double length = std::sqrt(a * a + b * b);
        c[i] = a / length;
        s[i] = b / length;
        alpha = scale * length;
    }
}

void DowndateColumn(int j, const double* c, const double* s, double* column) {
    double removed = 0.0;
    for (int i = j; i >= 0; --i) {
        Turn(c[i], s[i], removed, column[i]);
    }
}

// Returns: zeta, what is left of y after its share was taken out of a column of z.
double DowndateSolution(int p, const double* c, const double* s, double* z, double zeta) {
    for (int i = 0; i < p; ++i) {
        z[i] = (z[i] - s[i] * zeta) / c[i];
        zeta = c[i] * zeta - s[i] * z[i];
    }
    return zeta;
}

// ---- Exchange of columns, k and l counted from 0

// Column l comes in front of k .. l-1. The rotations turn rows l-1 and l first, k and k+1 last.
void ShiftRight(DenseColumns r, int p, int k, int l, double* c, double* s) {
    const int count = l - k;
    for (int i = 0; i <= l; ++i) {
        s[i] = r.Column(l)[l - i];
    }
    for (int j = l - 1; j >= k; --j) {
        std::copy(r.Column(j), r.Column(j) + j + 1, r.Column(j + 1));
        r.Column(j + 1)[j + 1] = 0.0;
    }
    for (int i = 0; i < k; ++i) {
        r.Column(k)[i] = s[l - i];
    }
    double t = s[0];
    for (int i = 0; i < count; ++i) {
        Blas1::DRotG(&s[i + 1], &t, &c[i], &s[i]);
        t = s[i + 1];
    }
    r.Column(k)[k] = t;
    for (int j = k + 1; j < p; ++j) {
        double* column = r.Column(j);
        for (int i = std::max(0, l - j); i < count; ++i) {
            Turn(c[i], s[i], column[l - 1 - i], column[l - i]);
        }
    }
}

// Column k comes behind k+1 .. l. The rotations turn rows k and k+1 first, l-1 and l last.
void ShiftLeft(DenseColumns r, int p, int k, int l, double* c, double* s) {
    const int count = l - k;
    for (int i = 0; i <= k; ++i) {
        s[count + i] = r.Column(k)[i];
    }
    for (int j = k; j < l; ++j) {
        std::copy(r.Column(j + 1), r.Column(j + 1) + j + 1, r.Column(j));
        s[j - k] = r.Column(j + 1)[j + 1];
    }
    std::copy(s + count, s + count + k + 1, r.Column(l));
    std::fill(r.Column(l) + k + 1, r.Column(l) + l + 1, 0.0);
    for (int j = k; j < p; ++j) {
        double* column = r.Column(j);
        for (int i = k; i < std::min(j, l); ++i) {
            Turn(c[i - k], s[i - k], column[i], column[i + 1]);
        }
        if (j < l) {
            double t = s[j - k];
            Blas1::DRotG(&column[j], &t, &c[j - k], &s[j - k]);
        }
    }
}

}  // namespace

int Linpack::Dchdc(double* a, int lda, int p, double* work, int* jpvt, int job) {
    const DenseColumns columns(a, lda);
    linpack::FreeRange range{0, 0};
    if (job != 0) {
        range = linpack::MoveMarkedItems(p, jpvt,
                                         [columns, p](int low, int high) { ExchangeSymmetric(columns, p, low, high); });
    }
    for (int k = 0; k < p; ++k) {
        const bool isFree = k >= range.first && k < range.last - 1;
        const int pivot = isFree ? LargestDiagonal(columns, k, range.last) : k;
        if (!(columns.Column(pivot)[pivot] > 0.0)) {
            return k;
        }
        if (pivot != k) {
            ExchangeSymmetric(columns, p, k, pivot);
            std::swap(jpvt[k], jpvt[pivot]);
        }
        EliminateRow(columns, p, k, work);
    }
    return p;
}

void Linpack::Dchud(double* r, int ldr, int p, double* x, double* z, int ldz, int nz, double* y, double* rho, double* c,
                    double* s) {
    const DenseColumns factor(r, ldr);
    for (int j = 0; j < p; ++j) {
        double merged = x[j];
        MergeInto(j, c, s, factor.Column(j), merged);
        Blas1::DRotG(&factor.Column(j)[j], &merged, &c[j], &s[j]);
    }
    const DenseColumns solutions(z, ldz);
    for (int j = 0; j < nz; ++j) {
        double zeta = y[j];
        MergeInto(p, c, s, solutions.Column(j), zeta);
        zeta = std::abs(zeta);
        if (zeta != 0.0 && rho[j] >= 0.0) {
            const double scale = zeta + rho[j];
            const double a = zeta / scale;
            const double b = rho[j] / scale;
            rho[j] = scale * std::sqrt(a * a + b * b);
        }
    }
}

int Linpack::Dchdd(double* r, int ldr, int p, double* x, double* z, int ldz, int nz, double* y, double* rho, double* c,
                   double* s) {
    const DenseColumns factor(r, ldr);
    for (int j = 0; j < p; ++j) {
        s[j] = (x[j] - linpack::Dot(j, factor.Column(j), s)) / factor.Column(j)[j];
    }
    const double norm = Blas1::DNrm2(p, s, 1);
    if (!(norm < 1.0)) {
        return -1;
    }
    MakeDowndateRotations(p, norm, c, s);
    for (int j = 0; j < p; ++j) {
        DowndateColumn(j, c, s, factor.Column(j));
    }
    int info = 0;
    const DenseColumns solutions(z, ldz);
    for (int j = 0; j < nz; ++j) {
        const double zeta = std::abs(DowndateSolution(p, c, s, solutions.Column(j), y[j]));
        if (!(zeta <= rho[j])) {
            info = 1;
            rho[j] = -1.0;
        } else {
            const double ratio = zeta / rho[j];
            rho[j] *= std::sqrt(1.0 - ratio * ratio);
        }
    }
    return info;
}

void Linpack::Dchex(double* r, int ldr, int p, int k, int l, double* z, int ldz, int nz, double* c, double* s,
                    int job) {
    const bool toTheRight = job != 2;
    if (toTheRight) {
        ShiftRight(DenseColumns(r, ldr), p, k - 1, l - 1, c, s);
    } else {
        ShiftLeft(DenseColumns(r, ldr), p, k - 1, l - 1, c, s);
    }
    const DenseColumns solutions(z, ldz);
    for (int j = 0; j < nz; ++j) {
        double* column = solutions.Column(j);
        for (int i = 0; i < l - k; ++i) {
            const int row = toTheRight ? l - 2 - i : k - 1 + i;
            Turn(c[i], s[i], column[row], column[row + 1]);
        }
    }
}

}  // namespace KwMath_930
