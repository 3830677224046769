// LINPACK, general band matrices: Gaussian elimination with partial pivoting inside a band that has room for the
// fill-in. Test: Linpack_band_test.cpp.
#include "numerics/linpack/Linpack.h"

#include <algorithm>
#include <utility>

#include "numerics/blas1/Blas1.h"
#include "numerics/linpack/column_views.h"
#include "numerics/linpack/inner_products.h"
#include "numerics/linpack/lu_steps.h"

namespace KwMath_930 {

namespace {

using linpack::BandColumns;
using linpack::LuFactors;

// The end of row k of U: as far as the rows that were exchanged into place so far reach.
class RowEnds {
public:
    RowEnds(int n, int mu, const int* ipvt) : fN(n), fMu(mu), fPivot(ipvt) {}
    int operator()(int k) {
        fEnd = std::min(std::max(fEnd, fMu + fPivot[k]), fN);
        return fEnd;
    }

private:
    int fN;
    int fMu;
    const int* fPivot;
    int fEnd = 0;
};

double BandNorm(BandColumns a, int n, int ml, int mu) {
    double norm = 0.0;
    for (int j = 0; j < n; ++j) {
        const int first = std::max(0, j - mu);
        const int length = std::min(n - 1, j + ml) + 1 - first;
        norm = Blas1::D_Max(norm, Blas1::DASum(length, a.Column(j) + first, 1));
    }
    return norm;
}

void ClearFillIn(BandColumns a, int n, int mu) {
    for (int j = mu + 1; j < n; ++j) {
        std::fill(a.Column(j) + a.FirstRow(j), a.Column(j) + (j - mu), 0.0);
    }
}

// Chooses pivot k among the count rows below and turns these into multipliers.
// Returns: false for a zero pivot.
bool MakeStep(BandColumns a, int k, int count, int* ipvt) {
    double* column = a.Column(k);
    const int pivot = k + Blas1::IDAMax(count + 1, column + k, 1) - 1;
    ipvt[k] = pivot + 1;
    if (column[pivot] == 0.0) {
        return false;
    }
    std::swap(column[pivot], column[k]);
    Blas1::DScal(count, -1.0 / column[k], column + k + 1, 1);
    return true;
}

}  // namespace

double Linpack::Dgbco(double* abd, int lda, int n, int ml, int mu, int* ipvt, double* z) {
    const BandColumns columns(abd, lda, ml + mu);
    const double norm = BandNorm(columns, n, ml, mu);
    Dgbfa(abd, lda, n, ml, mu, ipvt);
    return LuFactors(columns, n, ml, ipvt).EstimateCondition(norm, RowEnds(n, mu, ipvt), z);
}

int Linpack::Dgbfa(double* abd, int lda, int n, int ml, int mu, int* ipvt) {
    const BandColumns columns(abd, lda, ml + mu);
    RowEnds rowEnd(n, mu, ipvt);
    int info = 0;
    ClearFillIn(columns, n, mu);
    for (int k = 0; k < n; ++k) {
        const int count = std::min(ml, n - 1 - k);
        if (!MakeStep(columns, k, count, ipvt)) {
            info = k + 1;
            continue;
        }
        const int last = rowEnd(k);
        double* multipliers = columns.Column(k) + k + 1;
        for (int j = k + 1; j < last; ++j) {
            double* column = columns.Column(j);
            std::swap(column[k], column[ipvt[k] - 1]);
            linpack::AddScaled(count, column[k], multipliers, column + k + 1);
        }
    }
    return info;
}

void Linpack::Dgbsl(double* abd, int lda, int n, int ml, int mu, int* ipvt, double* b, int job) {
    const LuFactors factors(BandColumns(abd, lda, ml + mu), n, ml, ipvt);
    if (job == 0) {
        factors.Solve(b);
    } else {
        factors.SolveTransposed(b);
    }
}

void Linpack::Dgbdi(double* abd, int lda, int n, int ml, int mu, int* ipvt, double* det) {
    LuFactors(BandColumns(abd, lda, ml + mu), n, ml, ipvt).StoreDeterminant(det);
}

}  // namespace KwMath_930
