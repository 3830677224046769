// Symmetric matrix, sweep operator: inverts a cross-product matrix one variable at a time. Row k of the full matrix is
// a stored run and a column, which are gathered in pieces so that every inner loop runs along stored rows. Test:
// KwSymMatrix_sweep_test.cpp.
#include "numerics/matrix/KwSymMatrix.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <utility>

#include "numerics/containers/KwBitSet.h"
#include "numerics/matrix/dense_kernels.h"
#include "numerics/matrix/index_checks.h"
#include "numerics/matrix/packed_triangle.h"
#include "numerics/matrix/resize_target.h"

namespace KwMath_930 {

using packed_triangle::Index;
using packed_triangle::RowStart;

namespace {

bool IsAnyNegative(const double* values, int count) {
    return std::any_of(values, values + count, [](double value) { return value < 0.0; });
}

std::vector<int> Leading(int count) {
    std::vector<int> rows(static_cast<std::size_t>(std::max(count, 0)));
    std::iota(rows.begin(), rows.end(), 0);
    return rows;
}

}  // namespace

// The two tests that keep row k out.
bool KwSymMatrix::IsDenied(int k, double tol, const double* ref, const KwBitSet& swept) const {
    const double pivot = fData[Index(k, k)];
    if (tol * ref[k] >= pivot) {
        return true;
    }
    for (int j = 0; j < fNRows; ++j) {
        if (j != k && swept.IsIn(j)) {
            const double element = fData[Index(j, k)];
            const double diagonal = fData[Index(j, j)] - element * element / pivot;
            if (!(diagonal * tol * ref[j] > -1.0)) {
                return true;
            }
        }
    }
    return false;
}

// The sweep itself, by stretches of columns: element (i, j) takes the scaled element of row i times the element of
// column j, its sign reversed for a positive pivot.
void KwSymMatrix::SweepRow(int k) {
    constexpr int kStretch = 2048;
    double pieces[kStretch];
    const double pivot = fData[Index(k, k)];
    const double scale = std::abs(pivot);
    for (int first = 0; first < fNRows; first += kStretch) {
        const int end = std::min(fNRows, first + kStretch);
        for (int j = first; j < end; ++j) {
            const double element = j == k ? 0.0 : fData[Index(j, k)];
            pieces[j - first] = pivot > 0.0 ? -element : element;
        }
        for (int i = first; i < fNRows; ++i) {
            if (i != k) {
                const int length = std::min(i + 1, end) - first;
                double* run = fData.data() + RowStart(i) + first;
                if (k < first || k >= first + length) {
                    dense_kernels::AddMultiple(length, fData[Index(i, k)] / scale, pieces, run);
                } else {
                    const double factor = run[k - first] / scale;
                    dense_kernels::AddMultiple(k - first, factor, pieces, run);
                    dense_kernels::AddMultiple(first + length - k - 1, factor, pieces + (k + 1 - first),
                                               run + (k + 1 - first));
                }
            }
        }
    }
    packed_triangle::VisitRow(k, fNRows, [&](int, std::size_t index) { fData[index] /= scale; });
    fData[Index(k, k)] = -1.0 / pivot;
}

bool KwSymMatrix::Sweep(int k, double tol, const double* ref, KwBitSet& swept, bool check) {
    if (!HasRow(k) || (check && !AreSweepArguments(tol, ref, swept))) {
        return false;
    }
    const bool isIn = swept.IsIn(k);
    if (!isIn && IsDenied(k, tol, ref, swept)) {
        return false;
    }
    SweepRow(k);
    swept.Set(k, !isIn);
    return true;
}

bool KwSymMatrix::AreSweepArguments(double tol, const double* ref, const KwBitSet& swept) const {
    return !(tol <= 0.0) && swept.Size() >= fNRows && !IsAnyNegative(ref, fNRows);
}

bool KwSymMatrix::Sweep(int k, double tol, const std::vector<double>& ref, KwBitSet& swept, bool check) {
    return !std::cmp_less(ref.size(), fNRows) && Sweep(k, tol, ref.data(), swept, check);
}

bool KwSymMatrix::SweepOrig(int k, double tol, const std::vector<double>& ref, KwBitSet& swept, bool check) {
    return Sweep(k, tol, ref, swept, check);
}

// Sweeps the listed rows that isWanted asks for, in list order; logDet gains the logarithm of each |pivot|.
template <class Wanted>
int KwSymMatrix::SweepRows(const std::vector<int>& rows, double tol, KwBitSet& swept, const double* ref, double& logDet,
                           Wanted isWanted) {
    int count = 0;
    for (const int k : rows) {
        const double pivot = fData[Index(k, k)];
        if (isWanted(k) && Sweep(k, tol, ref, swept, false)) {
            logDet += std::log(std::abs(pivot));
            ++count;
        }
    }
    return count;
}

// Gives ref, or the absolute diagonal through own when ref is null; null when the arguments are to be checked and
// wrong, or memory fails.
const double* KwSymMatrix::SweepReference(double tol, const double* ref, const KwBitSet& swept, bool check,
                                          std::vector<double>& own) const {
    if (fNRows < 0) {
        return nullptr;
    }
    if (ref == nullptr) {
        // One element more, so that the reference of an empty matrix is not null.
        if (!ResizeTarget(own, fNRows + 1)) {
            return nullptr;
        }
        packed_triangle::VisitDiagonal(
            fNRows, [&](int i, std::size_t index) { own[static_cast<std::size_t>(i)] = std::abs(fData[index]); });
        ref = own.data();
    }
    return check && !AreSweepArguments(tol, ref, swept) ? nullptr : ref;
}

int KwSymMatrix::SweepOnAll(double tol, KwBitSet& swept, bool in, bool restart, bool check, double* ref) try {
    std::vector<double> own;
    const double* const reference = SweepReference(tol, ref, swept, check, own);
    if (reference == nullptr) {
        return -1;
    }
    const std::vector<int> rows = Leading(fNRows);
    if (restart) {
        swept.Clear();
    }
    double logDet = 0.0;
    return SweepRows(rows, tol, swept, reference, logDet, [&](int k) { return swept.IsIn(k) != in; });
} catch (...) {
    return -1;
}

int KwSymMatrix::SweepOnSelected(const std::vector<int>& rows, double tol, KwBitSet& swept, bool check, double* ref) {
    std::vector<double> own;
    const double* const reference = SweepReference(tol, ref, swept, check, own);
    if (reference == nullptr || !AreIndices(rows, fNRows)) {
        return -1;
    }
    double logDet = 0.0;
    return SweepRows(rows, tol, swept, reference, logDet, [](int) { return true; });
}

int KwSymMatrix::SweepOnMany(int k, double tol, bool in, KwBitSet& swept, double& logDet, bool check, double* ref) try {
    std::vector<double> own;
    const double* const reference = SweepReference(tol, ref, swept, check, own);
    if (reference == nullptr || !HasPart(0, k)) {
        return -1;
    }
    return SweepRows(Leading(k), tol, swept, reference, logDet, [&](int i) { return swept.IsIn(i) != in; });
} catch (...) {
    return -1;
}

bool KwSymMatrix::CheckMDependent(int k, const std::vector<double>& ref, const KwBitSet& swept, double tol) const {
    return HasRow(k) && !std::cmp_less(ref.size(), fNRows) && !swept.IsIn(k) && IsDenied(k, tol, ref.data(), swept);
}

bool KwSymMatrix::GetRegCoeffs(std::vector<double>& b, const KwBitSet& swept) const {
    const int last = fNRows - 1;
    if (fNRows < 1 || swept.Size() < last || !ResizeTarget(b, last)) {
        return false;
    }
    for (int k = 0; k < last; ++k) {
        b[static_cast<std::size_t>(k)] = swept.IsIn(k) ? fData[Index(last, k)] : 0.0;
    }
    return true;
}

}  // namespace KwMath_930
