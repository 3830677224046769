// Rectangular matrix, elements, rows and columns. A row is one stretch of memory, a column has the stride of a row.
// Test: KwRectMatrix_storage_test.cpp.
#include "numerics/matrix/KwRectMatrix.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "numerics/matrix/KwSparseVector.h"
#include "numerics/matrix/index_checks.h"
#include "numerics/matrix/resize_target.h"

namespace KwMath_930 {

double KwRectMatrix::GetElem(int i, int j) const {
    return RowData(i)[j];
}

bool KwRectMatrix::SetElem(int i, int j, double value) {
    RowData(i)[j] = value;
    return true;
}

bool KwRectMatrix::GetRow(int i, std::vector<double>& row) const {
    if (!HasRow(i) || !ResizeTarget(row, fNCols)) {
        return false;
    }
    std::copy_n(RowData(i), fNCols, row.data());
    return true;
}

bool KwRectMatrix::GetCol(int j, std::vector<double>& column) const {
    if (!HasCol(j) || !ResizeTarget(column, fNRows)) {
        return false;
    }
    return KwRectMatrix::CopyColToVec(j, column);
}

bool KwRectMatrix::CopyColToVec(int j, std::vector<double>& v) const {
    if (!HasCol(j) || (std::cmp_less(v.size(), fNRows) && !ResizeTarget(v, fNRows))) {
        return false;
    }
    double* target = v.data();
    for (int i = 0; i < fNRows; ++i) {
        target[i] = RowData(i)[j];
    }
    return true;
}

bool KwRectMatrix::SetRow(int i, const KwSparseVector& v) {
    if (!HasRow(i) || v.GetMinVecSize() > fNCols) {
        return false;
    }
    double* row = RowData(i);
    std::fill_n(row, fNCols, 0.0);
    for (int k = 0; k < v.GetNElements(); ++k) {
        row[v.GetIndex(k)] += v.GetValue(k);
    }
    return true;
}

bool KwRectMatrix::IsRowZero(int i) const {
    if (fNCols < 1 || !HasRow(i)) {
        return false;
    }
    const double* row = RowData(i);
    return std::all_of(row, row + fNCols, [](double element) { return element == 0.0; });
}

bool KwRectMatrix::ZeroOutRowPart(int i, int first, int count) {
    if (!HasRow(i) || first < 0 || count < 0 || first > fNCols || count > fNCols - first) {
        return false;
    }
    std::fill_n(RowData(i) + first, count, 0.0);
    return true;
}

bool KwRectMatrix::IncrVecByColumn(int j, std::vector<double>& v, int offset, int inc, double a, bool check) const {
    if (!HasCol(j) || (check && !AreStridedPlacesInside(v.size(), fNRows, offset, inc))) {
        return false;
    }
    double* target = v.data();
    for (int k = 0; k < fNRows; ++k) {
        target[offset + std::ptrdiff_t{k} * inc] += a * RowData(k)[j];
    }
    return true;
}

}  // namespace KwMath_930
