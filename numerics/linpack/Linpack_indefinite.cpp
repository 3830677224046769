// LINPACK, symmetric indefinite matrices: the upper triangle, dense or packed, by diagonal pivoting with blocks of
// order 1 and 2 (Bunch and Kaufman, Some Stable Methods for Calculating Inertia and Solving Symmetric Linear Systems,
// Math. Comp. 31 (1977), 163-179). Each algorithm is written once, for a view of columns. Test:
// Linpack_indefinite_test.cpp.
#include "numerics/linpack/Linpack.h"

#include <cmath>
#include <cstdlib>
#include <utility>

#include "numerics/blas1/Blas1.h"
#include "numerics/linpack/ScaledProduct.h"
#include "numerics/linpack/column_views.h"
#include "numerics/linpack/condition_steps.h"
#include "numerics/linpack/inner_products.h"

namespace KwMath_930 {

namespace {

using linpack::DenseColumns;
using linpack::PackedColumns;

// Exchanges rows and columns low and high > low of the leading triangle of order high+1.
template <class Columns>
void ExchangeSymmetric(Columns a, int low, int high) {
    double* lowColumn = a.Column(low);
    double* highColumn = a.Column(high);
    Blas1::DSwap(low, lowColumn, 1, highColumn, 1);
    std::swap(lowColumn[low], highColumn[high]);
    for (int j = high - 1; j > low; --j) {
        std::swap(highColumn[j], a.Column(j)[low]);
    }
}

// ---- Factorisation

struct PivotChoice {
    int order;       // 1 or 2
    int row;         // takes the place of row k, for a block of order 2 of row k-1
    bool isZero;     // column k is 0
    bool exchanges;  // the row is not there yet
};

// The largest magnitude in row `row` of the leading triangle of order k+1, beside the diagonal.
template <class Columns>
double LargestBeside(Columns a, int row, int k) {
    double largest = 0.0;
    for (int j = row + 1; j <= k; ++j) {
        largest = Blas1::D_Max(largest, std::abs(a.Column(j)[row]));
    }
    if (row > 0) {
        double* column = a.Column(row);
        largest = Blas1::D_Max(largest, std::abs(column[Blas1::IDAMax(row, column, 1) - 1]));
    }
    return largest;
}

// Chooses the pivot block at the end of the leading triangle of order k+1 > 1.
template <class Columns>
PivotChoice ChoosePivot(Columns a, int k) {
    const double alpha = (1.0 + std::sqrt(17.0)) / 8.0;
    double* column = a.Column(k);
    const double diagonal = std::abs(column[k]);
    const int largestRow = Blas1::IDAMax(k, column, 1) - 1;
    const double largest = std::abs(column[largestRow]);
    PivotChoice choice{1, k, Blas1::D_Max(diagonal, largest) == 0.0, false};
    if (!(diagonal < alpha * largest)) {
        return choice;
    }
    const double rowLargest = LargestBeside(a, largestRow, k);
    if (!(std::abs(a.Column(largestRow)[largestRow]) < alpha * rowLargest)) {
        choice.row = largestRow;
        choice.exchanges = true;
    } else if (diagonal < alpha * largest * (largest / rowLargest)) {
        choice.order = 2;
        choice.row = largestRow;
        choice.exchanges = largestRow != k - 1;
    }
    return choice;
}

template <class Columns>
void EliminateWithOne(Columns a, int k) {
    double* pivot = a.Column(k);
    for (int j = k - 1; j >= 0; --j) {
        const double multiplier = -pivot[j] / pivot[k];
        linpack::AddScaled(j + 1, multiplier, pivot, a.Column(j));
        pivot[j] = multiplier;
    }
}

template <class Columns>
void EliminateWithTwo(Columns a, int k) {
    double* second = a.Column(k);
    double* first = a.Column(k - 1);
    const double beside = second[k - 1];
    const double ak = second[k] / beside;
    const double akm1 = first[k - 1] / beside;
    const double denominator = 1.0 - ak * akm1;
    for (int j = k - 2; j >= 0; --j) {
        const double bk = second[j] / beside;
        const double bkm1 = first[j] / beside;
        const double secondMultiplier = (akm1 * bk - bkm1) / denominator;
        const double firstMultiplier = (ak * bkm1 - bk) / denominator;
        linpack::AddScaled(j + 1, secondMultiplier, second, a.Column(j));
        linpack::AddScaled(j + 1, firstMultiplier, first, a.Column(j));
        second[j] = secondMultiplier;
        first[j] = firstMultiplier;
    }
}

// Exchanges row and column k-1 with a lower one, in the leading triangle whose last column is k.
template <class Columns>
void ExchangeForTwo(Columns a, int row, int k) {
    ExchangeSymmetric(a, row, k - 1);
    double* last = a.Column(k);
    std::swap(last[k - 1], last[row]);
}

template <class Columns>
int Factor(Columns a, int n, int* kpvt) {
    int info = 0;
    int k = n - 1;
    while (k > 0) {
        const PivotChoice pivot = ChoosePivot(a, k);
        if (pivot.isZero) {
            kpvt[k] = k + 1;
            info = k + 1;
        } else if (pivot.order == 1) {
            if (pivot.exchanges) {
                ExchangeSymmetric(a, pivot.row, k);
            }
            EliminateWithOne(a, k);
            kpvt[k] = pivot.row + 1;
        } else {
            if (pivot.exchanges) {
                ExchangeForTwo(a, pivot.row, k);
            }
            EliminateWithTwo(a, k);
            kpvt[k] = -(pivot.row + 1);
            kpvt[k - 1] = kpvt[k];
        }
        k -= pivot.order;
    }
    if (k == 0) {
        kpvt[0] = 1;
        if (a.Column(0)[0] == 0.0) {
            info = 1;
        }
    }
    return info;
}

// ---- Solution

// (x[k-1], x[k]) := inverse of the block of D in columns k-1 and k, times it.
template <class Columns>
void SolveBlock(Columns a, int k, double* x) {
    const double* second = a.Column(k);
    const double beside = second[k - 1];
    const double ak = second[k] / beside;
    const double akm1 = a.Column(k - 1)[k - 1] / beside;
    const double bk = x[k] / beside;
    const double bkm1 = x[k - 1] / beside;
    const double denominator = ak * akm1 - 1.0;
    x[k] = (akm1 * bk - bkm1) / denominator;
    x[k - 1] = (ak * bkm1 - bk) / denominator;
}

// The row that a block's single or first column was exchanged with.
int ExchangedWith(const int* kpvt, int k) {
    return std::abs(kpvt[k]) - 1;
}

int OrderOfBlock(const int* kpvt, int k) {
    return kpvt[k] < 0 ? 2 : 1;
}

// x := inverse of (U D) times x; divide(k) takes the single pivot k.
template <class Columns, class Divide>
void SolveUpperAndBlocks(Columns a, int n, const int* kpvt, double* x, Divide divide) {
    int order = 0;
    for (int k = n - 1; k >= 0; k -= order) {
        order = OrderOfBlock(kpvt, k);
        std::swap(x[k + 1 - order], x[ExchangedWith(kpvt, k)]);
        linpack::AddScaled(k + 1 - order, x[k], a.Column(k), x);
        if (order == 1) {
            divide(k);
        } else {
            linpack::AddScaled(k - 1, x[k - 1], a.Column(k - 1), x);
            SolveBlock(a, k, x);
        }
    }
}

// x := inverse of U^T times x.
template <class Columns>
void SolveTransposed(Columns a, int n, const int* kpvt, double* x) {
    int order = 0;
    for (int k = 0; k < n; k += order) {
        order = OrderOfBlock(kpvt, k);
        x[k] += linpack::Dot(k, a.Column(k), x);
        if (order == 2) {
            x[k + 1] += linpack::Dot(k, a.Column(k + 1), x);
        }
        std::swap(x[k], x[ExchangedWith(kpvt, k)]);
    }
}

template <class Columns>
void Solve(Columns a, int n, const int* kpvt, double* b) {
    SolveUpperAndBlocks(a, n, kpvt, b, [a, b](int k) { b[k] /= a.Column(k)[k]; });
    SolveTransposed(a, n, kpvt, b);
}

// ---- Condition

// z[k] moves away from 0 by e, with its own sign.
void Grow(double& e, double& zk) {
    if (zk != 0.0) {
        e = std::copysign(e, zk);
    }
    zk += e;
}

// Solves U D z = e, each element of e being +1 or -1 up to scaling, chosen so that z grows.
template <class Columns>
void SolveForGrowthByBlocks(Columns a, int n, const int* kpvt, double* z) {
    double e = 1.0;
    for (int j = 0; j < n; ++j) {
        z[j] = 0.0;
    }
    int order = 0;
    for (int k = n - 1; k >= 0; k -= order) {
        order = OrderOfBlock(kpvt, k);
        std::swap(z[k + 1 - order], z[ExchangedWith(kpvt, k)]);
        Grow(e, z[k]);
        linpack::AddScaled(k + 1 - order, z[k], a.Column(k), z);
        if (order == 1) {
            e *= linpack::DivideSafely(a.Column(k)[k], k, n, z);
        } else {
            Grow(e, z[k - 1]);
            linpack::AddScaled(k - 1, z[k - 1], a.Column(k - 1), z);
            SolveBlock(a, k, z);
        }
    }
    linpack::Normalise(n, z);
}

// rcond, norm being that of the matrix before it was factored.
template <class Columns>
double EstimateCondition(Columns a, int n, const int* kpvt, double norm, double* z) {
    SolveForGrowthByBlocks(a, n, kpvt, z);
    SolveTransposed(a, n, kpvt, z);
    linpack::Normalise(n, z);
    double yNorm = 1.0;
    SolveUpperAndBlocks(a, n, kpvt, z, [&](int k) { yNorm *= linpack::DivideSafely(a.Column(k)[k], k, n, z); });
    yNorm *= linpack::Normalise(n, z);
    SolveTransposed(a, n, kpvt, z);
    yNorm *= linpack::Normalise(n, z);
    return linpack::ReciprocalCondition(norm, yNorm);
}

// ---- Inertia, determinant, inverse

// Calls visit(d) for n numbers whose signs are those of the eigenvalues and whose product is the determinant. A block
// of order 2, (d s; s c), gives d/t c - t and t, t = |s|: the products that could leave the range are avoided.
template <class Columns, class Action>
void VisitPivots(Columns a, int n, const int* kpvt, Action visit) {
    double t = 0.0;
    for (int k = 0; k < n; ++k) {
        double d = a.Column(k)[k];
        if (kpvt[k] <= 0) {
            if (t == 0.0) {
                t = std::abs(a.Column(k + 1)[k]);
                d = (d / t) * a.Column(k + 1)[k + 1] - t;
            } else {
                d = t;
                t = 0.0;
            }
        }
        visit(d);
    }
}

// column[0 .. k-1] := the leading k by k block, which holds its inverse already, times it; the former one stays in
// work. Returns: the dot product of the former and the new one.
template <class Columns>
double MultiplyByInverse(Columns a, int k, double* column, double* work) {
    Blas1::DCopy(k, column, 1, work, 1);
    for (int j = 0; j < k; ++j) {
        double* inverse = a.Column(j);
        column[j] = linpack::Dot(j + 1, inverse, work);
        linpack::AddScaled(j, work[j], inverse, column);
    }
    return linpack::Dot(k, work, column);
}

template <class Columns>
void InvertOne(Columns a, int k, double* work) {
    double* column = a.Column(k);
    column[k] = 1.0 / column[k];
    column[k] += MultiplyByInverse(a, k, column, work);
}

template <class Columns>
void InvertTwo(Columns a, int k, double* work) {
    double* first = a.Column(k);
    double* second = a.Column(k + 1);
    const double t = std::abs(second[k]);
    const double ak = first[k] / t;
    const double akp1 = second[k + 1] / t;
    const double beside = second[k] / t;
    const double d = t * (ak * akp1 - 1.0);
    first[k] = akp1 / d;
    second[k + 1] = ak / d;
    second[k] = -beside / d;
    second[k + 1] += MultiplyByInverse(a, k, second, work);
    second[k] += linpack::Dot(k, first, second);
    first[k] += MultiplyByInverse(a, k, first, work);
}

template <class Columns>
void Invert(Columns a, int n, const int* kpvt, double* work) {
    int order = 0;
    for (int k = 0; k < n; k += order) {
        order = OrderOfBlock(kpvt, k);
        if (order == 1) {
            InvertOne(a, k, work);
        } else {
            InvertTwo(a, k, work);
        }
        const int other = ExchangedWith(kpvt, k);
        if (other != k) {
            ExchangeSymmetric(a, other, k);
            if (order == 2) {
                std::swap(a.Column(k + 1)[other], a.Column(k + 1)[k]);
            }
        }
    }
}

template <class Columns>
void Describe(Columns a, int n, const int* kpvt, double* det, int* inert, double* work, int job) {
    if (job % 1000 / 100 != 0) {
        inert[0] = inert[1] = inert[2] = 0;
        VisitPivots(a, n, kpvt, [inert](double d) {
            inert[0] += d > 0.0 ? 1 : 0;
            inert[1] += d < 0.0 ? 1 : 0;
            inert[2] += d == 0.0 ? 1 : 0;
        });
    }
    if (job % 100 / 10 != 0) {
        linpack::ScaledProduct product;
        VisitPivots(a, n, kpvt, [&product](double d) { product.MultiplyBy(d); });
        product.StoreTo(det);
    }
    if (job % 10 != 0) {
        Invert(a, n, kpvt, work);
    }
}

}  // namespace

double Linpack::Dsico(double* a, int lda, int n, int* kpvt, double* z) {
    const double norm = linpack::SymmetricNorm(DenseColumns(a, lda), n, z);
    Dsifa(a, lda, n, kpvt);
    return EstimateCondition(DenseColumns(a, lda), n, kpvt, norm, z);
}

int Linpack::Dsifa(double* a, int lda, int n, int* kpvt) {
    return Factor(DenseColumns(a, lda), n, kpvt);
}

void Linpack::Dsisl(double* a, int lda, int n, int* kpvt, double* b) {
    Solve(DenseColumns(a, lda), n, kpvt, b);
}

void Linpack::Dsidi(double* a, int lda, int n, int* kpvt, double* det, int* inert, double* work, int job) {
    Describe(DenseColumns(a, lda), n, kpvt, det, inert, work, job);
}

double Linpack::Dspco(double* ap, int n, int* kpvt, double* z) {
    const double norm = linpack::SymmetricNorm(PackedColumns(ap), n, z);
    Dspfa(ap, n, kpvt);
    return EstimateCondition(PackedColumns(ap), n, kpvt, norm, z);
}

int Linpack::Dspfa(double* ap, int n, int* kpvt) {
    return Factor(PackedColumns(ap), n, kpvt);
}

void Linpack::Dspsl(double* ap, int n, int* kpvt, double* b) {
    Solve(PackedColumns(ap), n, kpvt, b);
}

void Linpack::Dspdi(double* ap, int n, int* kpvt, double* det, int* inert, double* work, int job) {
    Describe(PackedColumns(ap), n, kpvt, det, inert, work, job);
}

}  // namespace KwMath_930
