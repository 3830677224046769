// Block-diagonal matrix, elements and rows. What lies outside the blocks reads as 0 and takes only 0.
// Test: KwSymBlockDiagMatrix_test.cpp.
#include "numerics/matrix/KwSymBlockDiagMatrix.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "numerics/matrix/index_checks.h"
#include "numerics/matrix/resize_target.h"

namespace KwMath_930 {

double KwSymBlockDiagMatrix::GetElem(int i, int j) const {
    const auto [column, row] = std::minmax(i, j);
    int first = 0;
    const double* run = RowRun(row, first);
    return column >= first ? run[column - first] : 0.0;
}

bool KwSymBlockDiagMatrix::SetElem(int i, int j, double value) {
    const auto [column, row] = std::minmax(i, j);
    int first = 0;
    double* run = RowRun(row, first);
    if (column < first) {
        return value == 0.0;
    }
    run[column - first] = value;
    return true;
}

void KwSymBlockDiagMatrix::GetDiagonal(std::vector<double>& diagonal) const {
    if (!ResizeTarget(diagonal, fNRows)) {
        return;
    }
    for (int i = 0; i < fNRows; ++i) {
        diagonal[static_cast<std::size_t>(i)] = KwSymBlockDiagMatrix::GetElem(i, i);
    }
}

bool KwSymBlockDiagMatrix::GetRow(int i, std::vector<double>& row) const {
    if (!HasRow(i) || !ResizeTarget(row, fNRows)) {
        return false;
    }
    for (int j = 0; j < fNRows; ++j) {
        row[static_cast<std::size_t>(j)] = KwSymBlockDiagMatrix::GetElem(i, j);
    }
    return true;
}

bool KwSymBlockDiagMatrix::PutRow(int i, const std::vector<double>& row) {
    if (!HasRow(i) || std::cmp_less(row.size(), fNRows)) {
        return false;
    }
    int first = 0;
    RowRun(i, first);
    const auto isZero = [](double value) { return value == 0.0; };
    const auto end = row.begin() + fNRows;
    if (!std::all_of(row.begin(), row.begin() + first, isZero) ||
        !std::all_of(row.begin() + EndOfRun(i), end, isZero)) {
        return false;
    }
    for (int j = first; j < EndOfRun(i); ++j) {
        KwSymBlockDiagMatrix::SetElem(i, j, row[static_cast<std::size_t>(j)]);
    }
    return true;
}

bool KwSymBlockDiagMatrix::SetRowColToConst(int i, double value) {
    if (!HasRow(i)) {
        return false;
    }
    int first = 0;
    RowRun(i, first);
    if (value != 0.0 && (first > 0 || EndOfRun(i) < fNRows)) {
        return false;
    }
    for (int j = first; j < EndOfRun(i); ++j) {
        KwSymBlockDiagMatrix::SetElem(i, j, value);
    }
    return true;
}

bool KwSymBlockDiagMatrix::ZeroOut(int i) {
    return KwSymBlockDiagMatrix::SetRowColToConst(i, 0.0);
}

bool KwSymBlockDiagMatrix::IsZeroRow(int i, const KwBitSet& ignored) const {
    if (!HasRow(i)) {
        return false;
    }
    int first = 0;
    RowRun(i, first);
    for (int j = first; j < EndOfRun(i); ++j) {
        if (!ignored.IsIn(j) && KwSymBlockDiagMatrix::GetElem(i, j) != 0.0) {
            return false;
        }
    }
    return true;
}

bool KwSymBlockDiagMatrix::IncrVecByRow(int i, std::vector<double>& v, int offset, int inc, double a,
                                        bool check) const {
    if (!HasRow(i) || (check && !AreStridedPlacesInside(v.size(), fNRows, offset, inc))) {
        return false;
    }
    for (int k = 0; k < fNRows; ++k) {
        v.data()[offset + std::ptrdiff_t{k} * inc] += a * KwSymBlockDiagMatrix::GetElem(i, k);
    }
    return true;
}

}  // namespace KwMath_930
