// LINPACK, positive definite matrices: the upper triangle dense, packed or as a band, by Cholesky's method. Each
// algorithm is written once, for a view of columns. Test: Linpack_posdef_test.cpp.
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

using linpack::BandColumns;
using linpack::DenseColumns;
using linpack::Dot;
using linpack::PackedColumns;

// ---- Factorisation: row k of a column is (its element - the products above) / R(k, k). Four columns go together, side
// by side in a buffer, so that their divisions do not wait for each other; what comes after the first minor that is not
// positive is never written back.

constexpr int kPanel = 4;
constexpr int kPanelRows = 1024;

template <class Columns>
class Panel {
public:
    /// Columns start .. start+3 of a, of which the ones before are factored.
    Panel(Columns a, int start) : fA(a), fStart(start), fFirst(a.FirstRow(start)) {}

    /// True when there are as many columns and the buffer holds their rows.
    static bool Fits(Columns a, int start, int n) {
        return start + kPanel <= n && start + kPanel - a.FirstRow(start) <= kPanelRows;
    }

    // Returns: as Factor.
    int Factor() {
        Gather();
        SolveAbove();
        double gram[kPanel * kPanel];
        linpack::GramRows(fStart - fFirst, Row(fFirst), gram);
        for (int c = 0; c < kPanel; ++c) {
            const bool isPositive = FinishColumn(c, gram);
            Scatter(c, isPositive);
            if (!isPositive) {
                return fStart + c + 1;
            }
        }
        return 0;
    }

private:
    double* Row(int i) { return fRows + (i - fFirst) * kPanel; }

    void Gather() {
        for (int c = 0; c < kPanel; ++c) {
            const double* column = fA.Column(fStart + c);
            const int first = fA.FirstRow(fStart + c);
            for (int i = fFirst; i < fStart + kPanel; ++i) {
                Row(i)[c] = i >= first && i <= fStart + c ? column[i] : 0.0;
            }
        }
    }

    void SolveAbove() {
        for (int k = fFirst; k < fStart; ++k) {
            linpack::SolveRow(k - fFirst, fA.Column(k) + fFirst, Row(fFirst));
        }
    }

    // The rows of the panel's own triangle.
    // Returns: false when what is left of the diagonal element is not positive; it then stays.
    bool FinishColumn(int c, const double* gram) {
        double squares = gram[c * kPanel + c];
        for (int d = 0; d < c; ++d) {
            double* row = Row(fStart + d);
            double sum = gram[d * kPanel + c];
            for (int i = 0; i < d; ++i) {
                sum += Row(fStart + i)[d] * Row(fStart + i)[c];
            }
            row[c] = (row[c] - sum) / row[d];
            squares += row[c] * row[c];
        }
        double& diagonal = Row(fStart + c)[c];
        const double rest = diagonal - squares;
        if (rest <= 0.0) {
            return false;
        }
        diagonal = std::sqrt(rest);
        return true;
    }

    void Scatter(int c, bool withDiagonal) {
        double* column = fA.Column(fStart + c);
        for (int i = fA.FirstRow(fStart + c); i < fStart + c + (withDiagonal ? 1 : 0); ++i) {
            column[i] = Row(i)[c];
        }
    }

    Columns fA;
    int fStart;
    int fFirst;
    double fRows[kPanelRows * kPanel];
};

// Column j alone.
// Returns: false when what is left of the diagonal element is not positive.
template <class Columns>
bool FactorColumn(Columns a, int j) {
    double* column = a.Column(j);
    const int first = a.FirstRow(j);
    double squares = 0.0;
    for (int k = first; k < j; ++k) {
        const double* factor = a.Column(k);
        column[k] = (column[k] - Dot(k - first, factor + first, column + first)) / factor[k];
        squares += column[k] * column[k];
    }
    const double rest = column[j] - squares;
    if (rest <= 0.0) {
        return false;
    }
    column[j] = std::sqrt(rest);
    return true;
}

// Returns: 0, or the order of the first leading minor that is not positive definite.
template <class Columns>
int Factor(Columns a, int n) {
    // In a narrower band each column has little but the division that waits for the column before.
    constexpr int kWorthPanels = 6;
    const bool isWide = n > 0 && (a.FirstRow(n - 1) == 0 || n - 1 - a.FirstRow(n - 1) >= kWorthPanels);
    int j = 0;
    for (; isWide && Panel<Columns>::Fits(a, j, n); j += kPanel) {
        const int info = Panel<Columns>(a, j).Factor();
        if (info != 0) {
            return info;
        }
    }
    for (; j < n; ++j) {
        if (!FactorColumn(a, j)) {
            return j + 1;
        }
    }
    return 0;
}

template <class Columns>
void Solve(Columns r, int n, double* b) {
    linpack::SolveTransposedUpper(r, 0, n, b);
    linpack::SolveUpper(r, n, b);
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
            linpack::AddScaled(k + 1, column[k], column, r.Column(k));
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
