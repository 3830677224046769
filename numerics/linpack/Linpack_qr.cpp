// LINPACK, QR decomposition by Householder transformations with optional column pivoting (Businger and Golub, Linear
// Least Squares Solutions by Householder Transformations, Numer. Math. 7 (1965), 269-276). Test: Linpack_qr_test.cpp.
#include "numerics/linpack/Linpack.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "numerics/blas1/Blas1.h"
#include "numerics/linpack/column_views.h"
#include "numerics/linpack/householder.h"
#include "numerics/linpack/inner_products.h"
#include "numerics/linpack/rearrange.h"

namespace KwMath_930 {

namespace {

using linpack::DenseColumns;
using linpack::FreeRange;

// ---- Decomposition

// The columns that pivoting may exchange. norms[j] follows the norm of what is left of column j, and starts[j] is its
// value when it was last computed afresh.
class FreeColumns {
public:
    FreeColumns(DenseColumns x, int n, FreeRange range, double* norms, double* starts, int* jpvt)
        : fX(x), fN(n), fRange(range), fNorms(norms), fStarts(starts), fPivot(jpvt) {
        for (int j = range.first; j < range.last; ++j) {
            Restart(j, 0);
        }
    }

    // Brings the column with the largest rest to place l, if that is free.
    void BringLargestTo(int l) {
        if (l < fRange.first || l >= fRange.last - 1) {
            return;
        }
        double largest = 0.0;
        int column = l;
        for (int j = l; j < fRange.last; ++j) {
            if (!(fNorms[j] <= largest)) {
                largest = fNorms[j];
                column = j;
            }
        }
        if (column != l) {
            Blas1::DSwap(fN, fX.Column(l), 1, fX.Column(column), 1);
            fNorms[column] = fNorms[l];
            fStarts[column] = fStarts[l];
            std::swap(fPivot[column], fPivot[l]);
        }
    }

    // Takes the element of row l, which is finished, out of the norm of column j.
    void Downdate(int j, int l) {
        if (j < fRange.first || j >= fRange.last || fNorms[j] == 0.0) {
            return;
        }
        const double share = std::abs(fX.Column(j)[l]) / fNorms[j];
        const double rest = Blas1::D_Max(1.0 - share * share, 0.0);
        const double ratio = fNorms[j] / fStarts[j];
        if (1.0 + 0.05 * rest * (ratio * ratio) != 1.0) {
            fNorms[j] *= std::sqrt(rest);
        } else {
            Restart(j, l + 1);
        }
    }

private:
    void Restart(int j, int row) {
        fNorms[j] = linpack::Norm(fN - row, fX.Column(j) + row);
        fStarts[j] = fNorms[j];
    }

    DenseColumns fX;
    int fN;
    FreeRange fRange;
    double* fNorms;
    double* fStarts;
    int* fPivot;
};

// ---- Application

// Applies transformation j, of which the column keeps all but the first element, to up to two vectors; null is skipped.
void ReflectBoth(double* column, double first, int n, int j, double* y, double* z) {
    if (first == 0.0) {
        return;
    }
    const double diagonal = column[j];
    column[j] = first;
    for (double* vector : {y, z}) {
        if (vector != nullptr) {
            linpack::Reflect(n - j, column + j, vector + j);
        }
    }
    column[j] = diagonal;
}

// b := inverse of the leading k by k triangle times it.
// Returns: 0, or the number of a zero diagonal element, at which the work stops.
int SolveTriangle(DenseColumns x, int k, double* b) {
    for (int j = k - 1; j >= 0; --j) {
        double* column = x.Column(j);
        if (column[j] == 0.0) {
            return j + 1;
        }
        b[j] /= column[j];
        linpack::AddScaled(j, -b[j], column, b);
    }
    return 0;
}

void Copy(int n, double* from, double* to) {
    if (from != to) {
        Blas1::DCopy(n, from, 1, to, 1);
    }
}

// What Dqrsl is asked for: the vectors that are not are null.
struct Requests {
    Requests(int job, double* allQy, double* allQty, double* allB, double* allRsd, double* allXb)
        : qy(job / 10000 != 0 ? allQy : nullptr),
          qty(job % 10000 != 0 ? allQty : nullptr),
          b(job % 1000 / 100 != 0 ? allB : nullptr),
          rsd(job % 100 / 10 != 0 ? allRsd : nullptr),
          xb(job % 10 != 0 ? allXb : nullptr) {}

    double* qy;
    double* qty;
    double* b;
    double* rsd;
    double* xb;
};

// The decomposition has no transformation: Q is the identity, and only the first element counts.
int ApplyIdentity(const Requests& want, double diagonal, double y) {
    for (double* copy : {want.qy, want.qty, want.xb}) {
        if (copy != nullptr) {
            copy[0] = y;
        }
    }
    int info = 0;
    if (want.b != nullptr) {
        if (diagonal != 0.0) {
            want.b[0] = y / diagonal;
        } else {
            info = 1;
        }
    }
    if (want.rsd != nullptr) {
        want.rsd[0] = 0.0;
    }
    return info;
}

// qty goes into b, xb and rsd. All copies are made before any element changes, as arrays may be shared.
void SplitQty(const Requests& want, int n, int k) {
    if (want.b != nullptr) {
        Copy(k, want.qty, want.b);
    }
    if (want.xb != nullptr) {
        Copy(k, want.qty, want.xb);
    }
    if (want.rsd != nullptr && k < n) {
        Copy(n - k, want.qty + k, want.rsd + k);
    }
    if (want.xb != nullptr) {
        std::fill(want.xb + k, want.xb + n, 0.0);
    }
    if (want.rsd != nullptr) {
        std::fill(want.rsd, want.rsd + k, 0.0);
    }
}

}  // namespace

void Linpack::Dqrdc(double* x, int ldx, int n, int p, double* qraux, int* jpvt, double* work, int job) {
    const DenseColumns columns(x, ldx);
    FreeRange range{0, 0};
    if (job != 0) {
        range = linpack::MoveMarkedItems(p, jpvt, [columns, n](int low, int high) {
            Blas1::DSwap(n, columns.Column(low), 1, columns.Column(high), 1);
        });
    }
    FreeColumns free(columns, n, range, qraux, work, jpvt);
    for (int l = 0; l < std::min(n, p); ++l) {
        free.BringLargestTo(l);
        qraux[l] = 0.0;
        if (l == n - 1) {
            break;
        }
        double* u = columns.Column(l) + l;
        const double norm = linpack::MakeHouseholder(n - l, u);
        if (norm == 0.0) {
            continue;
        }
        for (int j = l + 1; j < p; ++j) {
            linpack::Reflect(n - l, u, columns.Column(j) + l);
            free.Downdate(j, l);
        }
        qraux[l] = u[0];
        u[0] = -norm;
    }
}

int Linpack::Dqrsl(double* x, int ldx, int n, int k, double* qraux, double* y, double* qy, double* qty, double* b,
                   double* rsd, double* xb, int job) {
    const DenseColumns columns(x, ldx);
    const Requests want(job, qy, qty, b, rsd, xb);
    const int count = std::min(k, n - 1);
    if (count == 0) {
        return ApplyIdentity(want, want.b != nullptr ? columns.Column(0)[0] : 0.0, y[0]);
    }
    for (double* copy : {want.qy, want.qty}) {
        if (copy != nullptr) {
            Copy(n, y, copy);
        }
    }
    if (want.qy != nullptr) {
        for (int j = count - 1; j >= 0; --j) {
            ReflectBoth(columns.Column(j), qraux[j], n, j, want.qy, nullptr);
        }
    }
    if (want.qty == nullptr) {
        return 0;
    }
    for (int j = 0; j < count; ++j) {
        ReflectBoth(columns.Column(j), qraux[j], n, j, want.qty, nullptr);
    }
    SplitQty(want, n, k);
    const int info = want.b != nullptr ? SolveTriangle(columns, k, want.b) : 0;
    if (want.rsd != nullptr || want.xb != nullptr) {
        for (int j = count - 1; j >= 0; --j) {
            ReflectBoth(columns.Column(j), qraux[j], n, j, want.rsd, want.xb);
        }
    }
    return info;
}

}  // namespace KwMath_930
