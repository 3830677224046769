// Rectangular matrix, storage: construction, copies, size, added rows. The rows stand one after another.
// Test: KwRectMatrix_storage_test.cpp.
#include "numerics/matrix/KwRectMatrix.h"

#include <algorithm>
#include <cstddef>

#include "numerics/matrix/KwSparseVector.h"

namespace KwMath_930 {

KwRectMatrix::KwRectMatrix() : fNRows(0), fNCols(0) {}

// The elements of a new vector are 0, so the zero flag asks for nothing more.
KwRectMatrix::KwRectMatrix(int nRows, int nCols, bool /*zero*/)
    : fNRows(std::max(nRows, 0)), fNCols(std::max(nCols, 0)) {
    ResizeNRowsCols(fData, fNRows, fNCols);
}

KwRectMatrix::KwRectMatrix(const KwRectMatrix& other) : IKwRectMatrix(other) {
    CopyFrom(other);
}

KwRectMatrix& KwRectMatrix::operator=(const KwRectMatrix& other) {
    if (this != &other) {
        CopyFrom(other);
    }
    return *this;
}

KwRectMatrix::~KwRectMatrix() = default;

void KwRectMatrix::CopyFrom(const KwRectMatrix& other) {
    fNRows = other.fNRows;
    fNCols = other.fNCols;
    if (ResizeNRowsCols(fData, fNRows, fNCols)) {
        std::copy(other.fData.begin(), other.fData.end(), fData.begin());
    }
}

bool KwRectMatrix::ResizeNRowsCols(std::vector<double>& data, int& nRows, int& nCols) {
    if (nRows > 0 && nCols > 0) {
        try {
            data.resize(static_cast<std::size_t>(nRows) * static_cast<std::size_t>(nCols));
        } catch (...) {
            nRows = nCols = -1;
        }
    }
    if (nRows <= 0 || nCols <= 0) {
        data.clear();
    }
    return nRows >= 0 && nCols >= 0;
}

KwRectMatrix::RectMatrixType KwRectMatrix::GetMatrixType() const {
    return kDenseRectMatrix;
}

bool KwRectMatrix::IsValidMatrix() const {
    return fNRows >= 0 && fNCols >= 0;
}

int KwRectMatrix::GetNRows() const {
    return fNRows;
}

int KwRectMatrix::GetNCols() const {
    return fNCols;
}

bool KwRectMatrix::Resize(int nRows, int nCols) {
    fNRows = std::max(nRows, 0);
    fNCols = std::max(nCols, 0);
    return ResizeNRowsCols(fData, fNRows, fNCols);
}

bool KwRectMatrix::SetNRowsCols(int nRows, int nCols, bool zero) {
    const bool isResized = KwRectMatrix::Resize(nRows, nCols);
    if (isResized && zero) {
        Clear();
    }
    return isResized;
}

void KwRectMatrix::Clear() {
    std::fill(fData.begin(), fData.end(), 0.0);
}

int KwRectMatrix::AddRow(const KwSparseVector& v) {
    if (!IsValidMatrix() || v.GetMinVecSize() > fNCols || KwRectMatrix::AddRow() < 0) {
        return -1;
    }
    KwRectMatrix::SetRow(fNRows - 1, v);
    return fNRows;
}

int KwRectMatrix::AddRow() {
    if (!IsValidMatrix()) {
        return -1;
    }
    if (fNRows == INT32_MAX) {
        fNRows = fNCols = -1;
        fData.clear();
        return -1;
    }
    ++fNRows;
    ResizeNRowsCols(fData, fNRows, fNCols);
    return fNRows;
}

std::vector<double>& KwRectMatrix::AsVector() {
    return fData;
}

const std::vector<double>& KwRectMatrix::AsVectorConst() const {
    return fData;
}

const double* KwRectMatrix::RowData(int i) const {
    return fData.data() + static_cast<std::size_t>(i) * static_cast<std::size_t>(fNCols);
}

double* KwRectMatrix::RowData(int i) {
    return fData.data() + static_cast<std::size_t>(i) * static_cast<std::size_t>(fNCols);
}

}  // namespace KwMath_930
