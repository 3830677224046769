// Sparse rectangular matrix, elements, rows and columns. Columns ascend within a row, so an element is found by
// bisection. Test: KwSparseRectMatrix_test.cpp.
#include "numerics/matrix/KwSparseRectMatrix.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "numerics/matrix/KwSparseVector.h"
#include "numerics/matrix/index_checks.h"
#include "numerics/matrix/resize_target.h"

namespace KwMath_930 {

double KwSparseRectMatrix::GetElem(int i, int j) const {
    const std::vector<int>& columns = fColumns[static_cast<std::size_t>(i)];
    const auto place = std::lower_bound(columns.begin(), columns.end(), j);
    if (place == columns.end() || *place != j) {
        return 0.0;
    }
    return fValues[static_cast<std::size_t>(i)][static_cast<std::size_t>(place - columns.begin())];
}

bool KwSparseRectMatrix::SetElem(int i, int j, double value) try {
    const auto row = static_cast<std::size_t>(i);
    std::vector<int>& columns = fColumns[row];
    std::vector<double>& values = fValues[row];
    const auto place = std::lower_bound(columns.begin(), columns.end(), j) - columns.begin();
    const bool isStored = place < std::ssize(columns) && columns[static_cast<std::size_t>(place)] == j;
    if (isStored && value != 0.0) {
        values[static_cast<std::size_t>(place)] = value;
    } else if (isStored) {
        columns.erase(columns.begin() + place);
        values.erase(values.begin() + place);
    } else if (value != 0.0) {
        columns.reserve(columns.size() + 1 > columns.capacity() ? 2 * columns.size() + 4 : 0);
        values.reserve(values.size() + 1 > values.capacity() ? 2 * values.size() + 4 : 0);
        columns.insert(columns.begin() + place, j);
        values.insert(values.begin() + place, value);
    }
    const int change = static_cast<int>(columns.size()) - fCounts[row];
    fNElements += change;
    fColumnCounts[static_cast<std::size_t>(j)] += change;
    fNNonZeroRows += (columns.empty() ? 0 : 1) - (fCounts[row] > 0 ? 1 : 0);
    fCounts[row] += change;
    return true;
} catch (...) {
    return false;
}

bool KwSparseRectMatrix::GetRow(int i, std::vector<double>& row) const {
    if (!HasRow(i) || !ResizeTarget(row, fNCols)) {
        return false;
    }
    std::fill(row.begin(), row.end(), 0.0);
    const std::vector<int>& columns = fColumns[static_cast<std::size_t>(i)];
    for (std::size_t k = 0; k < columns.size(); ++k) {
        row[static_cast<std::size_t>(columns[k])] = fValues[static_cast<std::size_t>(i)][k];
    }
    return true;
}

bool KwSparseRectMatrix::GetCol(int j, std::vector<double>& column) const {
    return HasCol(j) && ResizeTarget(column, fNRows) && KwSparseRectMatrix::CopyColToVec(j, column);
}

bool KwSparseRectMatrix::CopyColToVec(int j, std::vector<double>& v) const {
    if (!HasCol(j) || (std::cmp_less(v.size(), fNRows) && !ResizeTarget(v, fNRows))) {
        return false;
    }
    for (int i = 0; i < fNRows; ++i) {
        v[static_cast<std::size_t>(i)] = KwSparseRectMatrix::GetElem(i, j);
    }
    return true;
}

// Row i becomes the elements of the full row that are not 0.
bool KwSparseRectMatrix::ReplaceRow(int i, const double* row) try {
    std::vector<int> columns;
    std::vector<double> values;
    for (int j = 0; j < fNCols; ++j) {
        if (row[j] != 0.0) {
            columns.push_back(j);
            values.push_back(row[j]);
        }
    }
    TakeRow(i, columns, values);
    return true;
} catch (...) {
    return false;
}

bool KwSparseRectMatrix::SetRow(int i, const KwSparseVector& v) {
    std::vector<double> row;
    if (!HasRow(i) || v.GetMinVecSize() > fNCols || !ResizeTarget(row, fNCols)) {
        return false;
    }
    for (int k = 0; k < v.GetNElements(); ++k) {
        row[static_cast<std::size_t>(v.GetIndex(k))] += v.GetValue(k);
    }
    return ReplaceRow(i, row.data());
}

bool KwSparseRectMatrix::IsRowZero(int i) const {
    return fNCols >= 1 && HasRow(i) && fCounts[static_cast<std::size_t>(i)] == 0;
}

bool KwSparseRectMatrix::ZeroOutRowPart(int i, int first, int count) {
    std::vector<double> row;
    if (first < 0 || count < 0 || count > fNCols - first || !KwSparseRectMatrix::GetRow(i, row)) {
        return false;
    }
    std::fill_n(row.begin() + first, count, 0.0);
    return ReplaceRow(i, row.data());
}

bool KwSparseRectMatrix::IncrVecByColumn(int j, std::vector<double>& v, int offset, int inc, double a,
                                         bool check) const {
    if (!HasCol(j) || (check && !AreStridedPlacesInside(v.size(), fNRows, offset, inc))) {
        return false;
    }
    for (int k = 0; k < fNRows; ++k) {
        v.data()[offset + std::ptrdiff_t{k} * inc] += a * KwSparseRectMatrix::GetElem(k, j);
    }
    return true;
}

bool KwSparseRectMatrix::CopyRows(const IKwRectMatrix& source, int from, int to) try {
    if (!IsValidMatrix() || source.GetNCols() != fNCols || from < 0 || from >= source.GetNRows() || !HasRow(to)) {
        return false;
    }
    // By a copy, so that a failure leaves this matrix and a source that is this matrix is read before it is written.
    KwSparseRectMatrix changed(*this);
    if (!changed.IsValidMatrix()) {
        return false;
    }
    std::vector<double> row;
    for (int k = 0; k < std::min(source.GetNRows() - from, fNRows - to); ++k) {
        if (!source.GetRow(from + k, row) || std::cmp_less(row.size(), fNCols) ||
            !changed.ReplaceRow(to + k, row.data())) {
            return false;
        }
    }
    Swap(changed);
    return true;
} catch (...) {
    return false;
}

bool KwSparseRectMatrix::CopyRowToRow(int i, int j, IKwRectMatrix& target) const try {
    if (!HasRow(i) || j < 0 || j >= target.GetNRows() || target.GetNCols() != fNCols) {
        return false;
    }
    const auto row = static_cast<std::size_t>(i);
    return target.SetRow(j, KwSparseVector(fColumns[row], fValues[row]));
} catch (...) {
    return false;
}

}  // namespace KwMath_930
