// Sparse rectangular matrix, storage: construction, size, rows, the lists by rows and by columns.
// Test: KwSparseRectMatrix_test.cpp.
#include "numerics/matrix/KwSparseRectMatrix.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "numerics/matrix/KwSparseVector.h"

namespace KwMath_930 {

KwSparseRectMatrix::KwSparseRectMatrix() : fNRows(0), fNCols(0), fNElements(0), fNNonZeroRows(0) {}

KwSparseRectMatrix::KwSparseRectMatrix(int nRows, int nCols) : KwSparseRectMatrix() {
    KwSparseRectMatrix::Resize(nRows, nCols);
}

KwSparseRectMatrix::~KwSparseRectMatrix() = default;

void KwSparseRectMatrix::CopyFrom(const KwSparseRectMatrix& other) {
    try {
        fNRows = other.fNRows;
        fNCols = other.fNCols;
        fNElements = other.fNElements;
        fNNonZeroRows = other.fNNonZeroRows;
        fCounts = other.fCounts;
        fColumnCounts = other.fColumnCounts;
        fColumns = other.fColumns;
        fValues = other.fValues;
    } catch (...) {
        Invalidate();
    }
}

void KwSparseRectMatrix::Swap(KwSparseRectMatrix& other) {
    std::swap(fNRows, other.fNRows);
    std::swap(fNCols, other.fNCols);
    std::swap(fNElements, other.fNElements);
    std::swap(fNNonZeroRows, other.fNNonZeroRows);
    fCounts.swap(other.fCounts);
    fColumnCounts.swap(other.fColumnCounts);
    fColumns.swap(other.fColumns);
    fValues.swap(other.fValues);
}

void KwSparseRectMatrix::Invalidate() {
    fNRows = fNCols = -1;
    fNElements = fNNonZeroRows = 0;
    fCounts.clear();
    fColumnCounts.clear();
    fColumns.clear();
    fValues.clear();
}

IKwRectMatrix::RectMatrixType KwSparseRectMatrix::GetMatrixType() const {
    return kSparseRectMatrix;
}

bool KwSparseRectMatrix::IsValidMatrix() const {
    return fNRows >= 0 && fNCols >= 0;
}

int KwSparseRectMatrix::GetNRows() const {
    return fNRows;
}

int KwSparseRectMatrix::GetNCols() const {
    return fNCols;
}

const std::vector<int>& KwSparseRectMatrix::GetNNZRowElements() const {
    return fCounts;
}

// The elements inside the new size stay in place.
bool KwSparseRectMatrix::Resize(int nRows, int nCols) try {
    fNRows = std::max(fNRows, 0);
    const auto rows = static_cast<std::size_t>(std::max(nRows, 0));
    for (int i = 0; i < fNRows; ++i) {
        auto& columns = fColumns[static_cast<std::size_t>(i)];
        const int kept =
            i >= nRows ? 0
                       : static_cast<int>(std::lower_bound(columns.begin(), columns.end(), nCols) - columns.begin());
        std::vector<int> keptColumns(columns.begin(), columns.begin() + kept);
        const auto& values = fValues[static_cast<std::size_t>(i)];
        std::vector<double> keptValues(values.begin(), values.begin() + kept);
        TakeRow(i, keptColumns, keptValues);
    }
    fCounts.resize(rows);
    fColumns.resize(rows);
    fValues.resize(rows);
    fColumnCounts.resize(static_cast<std::size_t>(std::max(nCols, 0)));
    fNRows = std::max(nRows, 0);
    fNCols = std::max(nCols, 0);
    return true;
} catch (...) {
    Invalidate();
    return false;
}

bool KwSparseRectMatrix::SetNRowsCols(int nRows, int nCols, bool zero) {
    const bool isResized = KwSparseRectMatrix::Resize(nRows, nCols);
    if (isResized && zero) {
        Clear();
    }
    return isResized;
}

void KwSparseRectMatrix::Clear() {
    for (int i = 0; i < fNRows; ++i) {
        std::vector<int> columns;
        std::vector<double> values;
        TakeRow(i, columns, values);
    }
}

int KwSparseRectMatrix::AddRow() {
    if (!IsValidMatrix()) {
        return -1;
    }
    if (fNRows == INT32_MAX) {
        Invalidate();
        return -1;
    }
    try {
        fCounts.push_back(0);
        fColumns.emplace_back();
        fValues.emplace_back();
        ++fNRows;
    } catch (...) {
        Invalidate();
    }
    return fNRows;
}

int KwSparseRectMatrix::AddRow(const KwSparseVector& v) {
    if (!IsValidMatrix() || v.GetMinVecSize() > fNCols || KwSparseRectMatrix::AddRow() < 0) {
        return -1;
    }
    if (!KwSparseRectMatrix::SetRow(fNRows - 1, v)) {
        Invalidate();
    }
    return fNRows;
}

bool KwSparseRectMatrix::SetToRows(int nRows, int nCols, const double* elements) {
    KwSparseRectMatrix written;
    bool isWritten = written.Resize(nRows, nCols);
    for (int i = 0; isWritten && i < nRows; ++i) {
        isWritten = written.ReplaceRow(i, elements);
        elements += nCols;
    }
    if (isWritten) {
        Swap(written);
    } else {
        Invalidate();
    }
    return isWritten;
}

// Row i becomes these lists, which get the ones given up; the counts follow.
void KwSparseRectMatrix::TakeRow(int i, std::vector<int>& columns, std::vector<double>& values) {
    const auto row = static_cast<std::size_t>(i);
    for (const int j : fColumns[row]) {
        --fColumnCounts[static_cast<std::size_t>(j)];
    }
    for (const int j : columns) {
        ++fColumnCounts[static_cast<std::size_t>(j)];
    }
    const int count = static_cast<int>(columns.size());
    fNElements += count - fCounts[row];
    fNNonZeroRows += (count > 0 ? 1 : 0) - (fCounts[row] > 0 ? 1 : 0);
    fCounts[row] = count;
    fColumns[row].swap(columns);
    fValues[row].swap(values);
}

bool KwSparseRectMatrix::GetRow(int i, const int*& columns, const double*& values) const {
    if (!HasRow(i)) {
        return false;
    }
    columns = fColumns[static_cast<std::size_t>(i)].data();
    values = fValues[static_cast<std::size_t>(i)].data();
    return true;
}

bool KwSparseRectMatrix::GetSparseMatrixColumns(std::vector<std::vector<int>>& rows,
                                                std::vector<std::vector<double>>& values) const try {
    if (!IsValidMatrix()) {
        return false;
    }
    std::vector<std::vector<int>> rowsOfColumns(static_cast<std::size_t>(fNCols));
    std::vector<std::vector<double>> valuesOfColumns(static_cast<std::size_t>(fNCols));
    for (std::size_t j = 0; j < rowsOfColumns.size(); ++j) {
        rowsOfColumns[j].reserve(static_cast<std::size_t>(fColumnCounts[j]));
        valuesOfColumns[j].reserve(static_cast<std::size_t>(fColumnCounts[j]));
    }
    for (std::size_t i = 0; i < fColumns.size(); ++i) {
        for (std::size_t k = 0; k < fColumns[i].size(); ++k) {
            const auto j = static_cast<std::size_t>(fColumns[i][k]);
            rowsOfColumns[j].push_back(static_cast<int>(i));
            valuesOfColumns[j].push_back(fValues[i][k]);
        }
    }
    rows.swap(rowsOfColumns);
    values.swap(valuesOfColumns);
    return true;
} catch (...) {
    return false;
}

}  // namespace KwMath_930
