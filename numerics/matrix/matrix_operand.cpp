// Reading of operands and writing of targets. Tests: those of the members, with each kind of operand and target.
#include "numerics/matrix/matrix_operand.h"

#include <algorithm>
#include <cstddef>
#include <typeinfo>
#include <utility>

#include "numerics/matrix/KwRectMatrix.h"
#include "numerics/matrix/KwSparseRectMatrix.h"
#include "numerics/matrix/KwSymMatrix.h"
#include "numerics/matrix/packed_triangle.h"

namespace KwMath_930 {

namespace {

std::size_t Count(int nRows, int nCols) {
    return nRows > 0 && nCols > 0 ? static_cast<std::size_t>(nRows) * static_cast<std::size_t>(nCols) : 0;
}

}  // namespace

SymOperand::SymOperand(const IKwSymMatrix& matrix) : fOrder(matrix.IsValidMatrix() ? matrix.GetNRows() : -1) {
    if (typeid(matrix) == typeid(KwSymMatrix)) {
        fPacked = static_cast<const KwSymMatrix&>(matrix).AsVectorConst().data();
        return;
    }
    fCopy.resize(packed_triangle::Size(fOrder));
    std::vector<double> row;
    double* run = fCopy.data();
    for (int i = 0; i < fOrder; ++i) {
        if (!matrix.GetRow(i, row) || std::cmp_less(row.size(), fOrder)) {
            fOrder = -1;
            return;
        }
        run = std::copy_n(row.data(), i + 1, run);
    }
    fPacked = fCopy.data();
}

std::vector<double> SymOperand::Square() const {
    return ToSquare(fPacked, fOrder);
}

RectOperand::RectOperand(const IKwRectMatrix& matrix)
    : fRows(matrix.IsValidMatrix() ? matrix.GetNRows() : -1), fCols(fRows < 0 ? -1 : matrix.GetNCols()) {
    if (typeid(matrix) == typeid(KwRectMatrix)) {
        fData = static_cast<const KwRectMatrix&>(matrix).AsVectorConst().data();
        return;
    }
    fCopy.resize(Count(fRows, fCols));
    std::vector<double> row;
    double* place = fCopy.data();
    for (int i = 0; i < fRows; ++i) {
        if (!matrix.GetRow(i, row) || std::cmp_less(row.size(), fCols)) {
            fRows = fCols = -1;
            return;
        }
        place = std::copy_n(row.data(), fCols, place);
    }
    fData = fCopy.data();
}

std::vector<double> RectOperand::Transposed() const {
    return KwMath_930::Transposed(fRows, fCols, fData);
}

bool WriteTarget(IKwSymMatrix& target, int order, const std::vector<double>& packed) {
    if (!IsDenseKind(target) || !target.Resize(order)) {
        return false;
    }
    if (typeid(target) == typeid(KwSymMatrix)) {
        std::copy(packed.begin(), packed.end(), static_cast<KwSymMatrix&>(target).AsVector().begin());
        return true;
    }
    bool isWritten = true;
    const double* element = packed.data();
    for (int i = 0; i < order; ++i) {
        for (int j = 0; j <= i; ++j) {
            isWritten = target.SetElem(i, j, *element++) && isWritten;
        }
    }
    return isWritten;
}

bool WriteTarget(IKwRectMatrix& target, int nRows, int nCols, const std::vector<double>& elements) {
    if (typeid(target) == typeid(KwRectMatrix)) {
        if (!target.Resize(nRows, nCols)) {
            return false;
        }
        std::copy(elements.begin(), elements.end(), static_cast<KwRectMatrix&>(target).AsVector().begin());
        return true;
    }
    if (typeid(target) == typeid(KwSparseRectMatrix)) {
        return static_cast<KwSparseRectMatrix&>(target).SetToRows(nRows, nCols, elements.data());
    }
    bool isWritten = target.SetNRowsCols(nRows, nCols, true);
    const double* element = elements.data();
    for (int i = 0; isWritten && i < nRows; ++i) {
        for (int j = 0; j < nCols; ++j, ++element) {
            if (*element != 0.0) {
                isWritten = target.SetElem(i, j, *element) && isWritten;
            }
        }
    }
    return isWritten;
}

KwSparseVector ToSparse(const double* row, int nCols) {
    std::vector<int> columns;
    std::vector<double> values;
    for (int j = 0; j < nCols; ++j) {
        if (row[j] != 0.0) {
            columns.push_back(j);
            values.push_back(row[j]);
        }
    }
    return KwSparseVector(columns, values);
}

std::vector<double> ZeroRows(int nRows, int nCols) {
    return std::vector<double>(Count(nRows, nCols));
}

std::vector<double> Transposed(int nRows, int nCols, const double* elements) {
    std::vector<double> transposed = ZeroRows(nRows, nCols);
    const auto stride = static_cast<std::size_t>(std::max(nRows, 0));
    for (int i = 0; !transposed.empty() && i < nRows; ++i) {
        double* place = transposed.data() + i;
        for (int j = 0; j < nCols; ++j, place += stride) {
            *place = *elements++;
        }
    }
    return transposed;
}

std::vector<double> ToSquare(const double* packed, int order) {
    std::vector<double> square = ZeroRows(order, order);
    const auto n = static_cast<std::size_t>(std::max(order, 0));
    for (int i = 0; i < order; ++i) {
        std::copy_n(packed + packed_triangle::RowStart(i), i + 1, square.data() + static_cast<std::size_t>(i) * n);
    }
    // The mirror by square blocks, of which rows and columns stay at hand.
    constexpr std::size_t kBlock = 16;
    for (std::size_t rows = 0; rows < n; rows += kBlock) {
        for (std::size_t columns = 0; columns <= rows; columns += kBlock) {
            for (std::size_t i = rows; i < std::min(n, rows + kBlock); ++i) {
                for (std::size_t j = columns; j < std::min(i, columns + kBlock); ++j) {
                    square[j * n + i] = square[i * n + j];
                }
            }
        }
    }
    return square;
}

std::vector<double> LowerTriangle(const std::vector<double>& square, int order) {
    std::vector<double> packed(packed_triangle::Size(order));
    double* run = packed.data();
    for (int i = 0; i < order; ++i) {
        run = std::copy_n(square.data() + static_cast<std::size_t>(i) * static_cast<std::size_t>(order), i + 1, run);
    }
    return packed;
}

}  // namespace KwMath_930
