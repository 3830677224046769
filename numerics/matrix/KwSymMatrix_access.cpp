// Symmetric matrix, element and row access. The full row i is the stored run (i, 0..i), one stretch of memory, followed
// by the column run (k, i), k = i+1 .. n-1, whose stride grows. Test: KwSymMatrix_access_test.cpp.
#include "numerics/matrix/KwSymMatrix.h"

#include <algorithm>
#include <utility>

#include "numerics/matrix/packed_triangle.h"
#include "numerics/matrix/resize_target.h"

namespace KwMath_930 {

double KwSymMatrix::GetElem(int i, int j) const {
    return fData[packed_triangle::Index(i, j)];
}

bool KwSymMatrix::SetElem(int i, int j, double value) {
    fData[packed_triangle::Index(i, j)] = value;
    return true;
}

double KwSymMatrix::GetElem(int k) const {
    return fData[static_cast<std::size_t>(k)];
}

bool KwSymMatrix::SetElem(int k, double value) {
    if (k < 0 || static_cast<std::size_t>(k) >= packed_triangle::Size(fNRows)) {
        return false;
    }
    fData[static_cast<std::size_t>(k)] = value;
    return true;
}

double KwSymMatrix::GetElem(int bi, int bj, int i, int j) const {
    return GetElem(fBlockSize * bi + i, fBlockSize * bj + j);
}

bool KwSymMatrix::GetRow(int i, std::vector<double>& row) const {
    if (i < 0 || i >= fNRows || !ResizeTarget(row, fNRows)) {
        return false;
    }
    std::copy_n(fData.data() + packed_triangle::RowStart(i), i + 1, row.data());
    double* target = row.data();
    packed_triangle::VisitBelowDiagonal(i, fNRows, [&](int k, std::size_t index) { target[k] = fData[index]; });
    return true;
}

bool KwSymMatrix::PutRow(int i, const std::vector<double>& row) {
    if (i < 0 || i >= fNRows || std::cmp_less(row.size(), fNRows)) {
        return false;
    }
    const double* source = row.data();
    std::copy_n(source, i + 1, fData.data() + packed_triangle::RowStart(i));
    packed_triangle::VisitBelowDiagonal(i, fNRows, [&](int k, std::size_t index) { fData[index] = source[k]; });
    return true;
}

bool KwSymMatrix::SetRowColToConst(int i, double value) {
    if (i < 0 || i >= fNRows) {
        return false;
    }
    std::fill_n(fData.data() + packed_triangle::RowStart(i), i + 1, value);
    packed_triangle::VisitBelowDiagonal(i, fNRows, [&](int, std::size_t index) { fData[index] = value; });
    return true;
}

bool KwSymMatrix::ZeroOut(int i) {
    return KwSymMatrix::SetRowColToConst(i, 0.0);
}

void KwSymMatrix::GetDiagonal(std::vector<double>& diagonal) const {
    if (!ResizeTarget(diagonal, fNRows)) {
        return;
    }
    double* target = diagonal.data();
    packed_triangle::VisitDiagonal(fNRows, [&](int i, std::size_t index) { target[i] = fData[index]; });
}

}  // namespace KwMath_930
