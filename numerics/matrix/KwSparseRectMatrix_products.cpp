// Sparse rectangular matrix, norms and products by the stored elements; extractions and shifts by a full copy. Test:
// KwSparseRectMatrix_test.cpp.
#include "numerics/matrix/KwSparseRectMatrix.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

#include "numerics/blas1/Blas1.h"
#include "numerics/matrix/KwRectMatrix.h"
#include "numerics/matrix/dense_kernels.h"
#include "numerics/matrix/matrix_operand.h"
#include "numerics/matrix/resize_target.h"

namespace KwMath_930 {

namespace {

bool CopyTo(const KwSparseRectMatrix& matrix, KwRectMatrix& dense) {
    return matrix.IsValidMatrix() && dense.SetNRowsCols(matrix.GetNRows(), matrix.GetNCols(), true) &&
           (matrix.GetNRows() == 0 || dense.CopyRows(matrix, 0, 0));
}

}  // namespace

double KwSparseRectMatrix::ColNorm(int j) const {
    std::vector<double> column;
    return KwSparseRectMatrix::GetCol(j, column) ? Blas1::DNrm2(fNRows, column.data(), 1)
                                                 : -std::numeric_limits<double>::max();
}

double KwSparseRectMatrix::RowNorm(int i) const {
    if (!HasRow(i)) {
        return -std::numeric_limits<double>::max();
    }
    const auto row = static_cast<std::size_t>(i);
    return Blas1::DNrm2(fCounts[row], const_cast<double*>(fValues[row].data()), 1);
}

bool KwSparseRectMatrix::ComputeRV(const std::vector<double>& v, std::vector<double>& out) const try {
    if (!IsValidMatrix() || std::cmp_less(v.size(), fNCols)) {
        return false;
    }
    std::vector<double> sums(static_cast<std::size_t>(fNRows));
    for (std::size_t i = 0; i < sums.size(); ++i) {
        for (std::size_t k = 0; k < fColumns[i].size(); ++k) {
            sums[i] += fValues[i][k] * v[static_cast<std::size_t>(fColumns[i][k])];
        }
    }
    if (!ResizeTarget(out, fNRows)) {
        return false;
    }
    std::copy(sums.begin(), sums.end(), out.begin());
    return true;
} catch (...) {
    return false;
}

bool KwSparseRectMatrix::ComputeVR(const std::vector<double>& v, std::vector<double>& out) const try {
    if (!IsValidMatrix() || std::cmp_less(v.size(), fNRows)) {
        return false;
    }
    std::vector<double> sums(static_cast<std::size_t>(fNCols));
    for (std::size_t i = 0; i < fColumns.size(); ++i) {
        for (std::size_t k = 0; k < fColumns[i].size(); ++k) {
            sums[static_cast<std::size_t>(fColumns[i][k])] += v[i] * fValues[i][k];
        }
    }
    if (!ResizeTarget(out, fNCols)) {
        return false;
    }
    std::copy(sums.begin(), sums.end(), out.begin());
    return true;
} catch (...) {
    return false;
}

double KwSparseRectMatrix::DotProductCol(int i, int j) const {
    double sum = 0.0;
    for (int k = 0; HasCol(i) && HasCol(j) && k < fNRows; ++k) {
        sum += KwSparseRectMatrix::GetElem(k, i) * KwSparseRectMatrix::GetElem(k, j);
    }
    return sum;
}

double KwSparseRectMatrix::DotProductRows(int i, int j) const {
    return HasRow(j) ? KwSparseRectMatrix::DotProductRowRow(i, *this, j) : 0.0;
}

double KwSparseRectMatrix::DotProductRowCol(int i, const IKwRectMatrix& b, int j) const {
    if (!HasRow(i) || b.GetNRows() != fNCols || j < 0 || j >= b.GetNCols()) {
        return 0.0;
    }
    const auto row = static_cast<std::size_t>(i);
    double sum = 0.0;
    for (std::size_t k = 0; k < fColumns[row].size(); ++k) {
        sum += fValues[row][k] * b.GetElem(fColumns[row][k], j);
    }
    return sum;
}

double KwSparseRectMatrix::DotProductRowRow(int i, const IKwRectMatrix& b, int j) const {
    if (!HasRow(i) || b.GetNCols() != fNCols || j < 0 || j >= b.GetNRows()) {
        return 0.0;
    }
    const auto row = static_cast<std::size_t>(i);
    double sum = 0.0;
    for (std::size_t k = 0; k < fColumns[row].size(); ++k) {
        sum += fValues[row][k] * b.GetElem(j, fColumns[row][k]);
    }
    return sum;
}

// R B, row by row, B being fNCols rows of nCols elements. What is not stored is multiplied only where it makes a NaN.
std::vector<double> KwSparseRectMatrix::Product(int nCols, const double* b) const {
    std::vector<double> product = ZeroRows(fNRows, nCols);
    const auto ld = static_cast<std::ptrdiff_t>(nCols);
    for (int i = 0; !product.empty() && i < fNRows; ++i) {
        const auto row = static_cast<std::size_t>(i);
        for (std::size_t k = 0; k < fColumns[row].size(); ++k) {
            dense_kernels::AddMultiple(nCols, fValues[row][k], b + fColumns[row][k] * ld, product.data() + i * ld);
        }
    }
    for (std::ptrdiff_t place = 0; !product.empty() && place < fNCols * ld; ++place) {
        for (int i = 0; !std::isfinite(b[place]) && i < fNRows; ++i) {
            if (KwSparseRectMatrix::GetElem(i, static_cast<int>(place / ld)) == 0.0) {
                product[static_cast<std::size_t>(i * ld + place % ld)] += 0.0 * b[place];
            }
        }
    }
    return product;
}

bool KwSparseRectMatrix::ComputeMatrixProduct(const IKwRectMatrix& b, IKwRectMatrix& target) const try {
    const RectOperand right(b);
    return IsValidMatrix() && right.Rows() == fNCols &&
           WriteTarget(target, fNRows, right.Cols(), Product(right.Cols(), right.Data()));
} catch (...) {
    return false;
}

bool KwSparseRectMatrix::ComputeProductMatrixTrans(const IKwRectMatrix& b, KwRectMatrix& target) const try {
    const RectOperand right(b);
    return IsValidMatrix() && right.Cols() == fNCols &&
           WriteTarget(target, fNRows, right.Rows(), Product(right.Rows(), right.Transposed().data()));
} catch (...) {
    return false;
}

bool KwSparseRectMatrix::CreateBlockDiagonal(int count, IKwRectMatrix& target) const {
    KwRectMatrix dense;
    return count >= 1 && CopyTo(*this, dense) && dense.CreateBlockDiagonal(count, target);
}

bool KwSparseRectMatrix::ExtractColumns(const std::vector<int>& columns, IKwRectMatrix& target) const {
    KwRectMatrix dense;
    return CopyTo(*this, dense) && dense.ExtractColumns(columns, target);
}

bool KwSparseRectMatrix::ExtractRows(const std::vector<int>& rows, IKwRectMatrix& target) const {
    KwRectMatrix dense;
    return CopyTo(*this, dense) && dense.ExtractRows(rows, target);
}

bool KwSparseRectMatrix::ShiftColumns(int shift, IKwRectMatrix& target) const {
    KwRectMatrix dense;
    return CopyTo(*this, dense) && dense.ShiftColumns(shift, target);
}

bool KwSparseRectMatrix::ShiftRows(int shift, IKwRectMatrix& target) const {
    KwRectMatrix dense;
    return CopyTo(*this, dense) && dense.ShiftRows(shift, target);
}

}  // namespace KwMath_930
