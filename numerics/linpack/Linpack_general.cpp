// LINPACK, general matrices: dense columns, Gaussian elimination with partial pivoting. Test: Linpack_general_test.cpp.
#include "numerics/linpack/Linpack.h"

#include <algorithm>
#include <utility>

#include "numerics/blas1/Blas1.h"
#include "numerics/linpack/column_views.h"
#include "numerics/linpack/inner_products.h"
#include "numerics/linpack/lu_steps.h"
#include "numerics/linpack/upper_inverse.h"

namespace KwMath_930 {

namespace {

using linpack::DenseColumns;
using linpack::LuFactors;

// The elimination goes column by column: a column takes all steps of the columns before it, then yields its own. Each
// element meets the same operations in the same order as when each step is applied to all columns at once, so the
// results are the same bits, but the matrix is read where it would be read and written.
//
// Steps are taken by groups of kGroup columns. Within a group the multipliers are kept in the order of rows after the
// group's last exchange, so that all exchanges can go first; RestoreOrder undoes this at the end.
constexpr int kGroup = 4;

class Elimination {
public:
    Elimination(double* a, int lda, int n, int* ipvt) : fA(a, lda), fN(n), fPivot(ipvt) {}

    int Run() {
        int info = 0;
        for (int j = 0; j < fN; ++j) {
            double* column = fA.Column(j);
            const int group = j - j % kGroup;
            for (int start = 0; start < group; start += kGroup) {
                TakeSteps(start, kGroup, column);
            }
            TakeSteps(group, j - group, column);
            if (!MakeStep(j, group)) {
                info = j + 1;
            }
        }
        RestoreOrder();
        return info;
    }

private:
    // Applies the steps start .. start+count-1 to a column behind them.
    void TakeSteps(int start, int count, double* column) const {
        double factors[kGroup];
        const double* multipliers[kGroup];
        bool allCount = count == kGroup;
        for (int c = 0; c < count; ++c) {
            std::swap(column[start + c], column[fPivot[start + c] - 1]);
        }
        for (int c = 0; c < count; ++c) {
            double* step = fA.Column(start + c);
            factors[c] = step[start + c] == 0.0 ? 0.0 : column[start + c];
            multipliers[c] = step + start + count;
            allCount = allCount && factors[c] != 0.0;
            linpack::AddScaled(count - 1 - c, factors[c], step + start + c + 1, column + start + c + 1);
        }
        const int end = start + count;
        if (allCount) {
            linpack::AddFour(fN - end, factors, multipliers, column + end);
            return;
        }
        for (int c = 0; c < count; ++c) {
            linpack::AddScaled(fN - end, factors[c], fA.Column(start + c) + end, column + end);
        }
    }

    // Chooses pivot j and turns the column below it into multipliers.
    // Returns: false for a zero pivot.
    bool MakeStep(int j, int group) const {
        double* column = fA.Column(j);
        const int pivot = j + Blas1::IDAMax(fN - j, column + j, 1) - 1;
        fPivot[j] = pivot + 1;
        if (column[pivot] == 0.0) {
            return false;
        }
        for (int k = group; k <= j; ++k) {
            std::swap(fA.Column(k)[j], fA.Column(k)[pivot]);
        }
        Blas1::DScal(fN - 1 - j, -1.0 / column[j], column + j + 1, 1);
        return true;
    }

    // Takes the exchanges of later steps of the same group back.
    void RestoreOrder() const {
        for (int k = 0; k < fN; ++k) {
            const int last = std::min(k - k % kGroup + kGroup, fN) - 1;
            for (int later = last; later > k; --later) {
                std::swap(fA.Column(k)[later], fA.Column(k)[fPivot[later] - 1]);
            }
        }
    }

    DenseColumns fA;
    int fN;
    int* fPivot;
};

// a := inverse of U times inverse of L, the inverse of U being in the upper triangle of a.
void MultiplyByInverseOfLower(DenseColumns a, int n, const int* ipvt, double* work) {
    for (int k = n - 2; k >= 0; --k) {
        double* column = a.Column(k);
        for (int i = k + 1; i < n; ++i) {
            work[i] = column[i];
            column[i] = 0.0;
        }
        for (int j = k + 1; j < n; ++j) {
            linpack::AddScaled(n, work[j], a.Column(j), column);
        }
        if (ipvt[k] != k + 1) {
            Blas1::DSwap(n, column, 1, a.Column(ipvt[k] - 1), 1);
        }
    }
}

}  // namespace

double Linpack::Dgeco(double* a, int lda, int n, int* ipvt, double* z) {
    const DenseColumns columns(a, lda);
    double norm = 0.0;
    for (int j = 0; j < n; ++j) {
        norm = Blas1::D_Max(norm, Blas1::DASum(n, columns.Column(j), 1));
    }
    Dgefa(a, lda, n, ipvt);
    return LuFactors(columns, n, n - 1, ipvt)
        .EstimateCondition(
            norm, [n](int) { return n; }, z);
}

int Linpack::Dgefa(double* a, int lda, int n, int* ipvt) {
    return Elimination(a, lda, n, ipvt).Run();
}

void Linpack::Dgesl(double* a, int lda, int n, int* ipvt, double* b, int job) {
    const LuFactors factors(DenseColumns(a, lda), n, n - 1, ipvt);
    if (job == 0) {
        factors.Solve(b);
    } else {
        factors.SolveTransposed(b);
    }
}

void Linpack::Dgedi(double* a, int lda, int n, int* ipvt, double* det, double* work, int job) {
    const DenseColumns columns(a, lda);
    if (job / 10 != 0) {
        LuFactors(columns, n, n - 1, ipvt).StoreDeterminant(det);
    }
    if (job % 10 != 0) {
        linpack::InvertUpper(columns, n, false);
        MultiplyByInverseOfLower(columns, n, ipvt, work);
    }
}

}  // namespace KwMath_930
