// Rectangular matrix, copies of rows, extraction, shifts. Results are put together in rows of their own and written to
// the target last, so that a target may be this matrix. Test: KwRectMatrix_extract_test.cpp.
#include "numerics/matrix/KwRectMatrix.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <typeinfo>

#include "numerics/matrix/index_checks.h"
#include "numerics/matrix/matrix_operand.h"

namespace KwMath_930 {

bool KwRectMatrix::CopyRows(const IKwRectMatrix& source, int from, int to) try {
    if (!IsValidMatrix() || source.GetNCols() != fNCols || from < 0 || from >= source.GetNRows() || !HasRow(to)) {
        return false;
    }
    const RectOperand operand(source);
    if (operand.Rows() < 0) {
        return false;
    }
    const int count = std::min(operand.Rows() - from, fNRows - to);
    const double* rows = operand.Row(from);
    const auto length = static_cast<std::size_t>(count) * static_cast<std::size_t>(fNCols);
    if (&source == this && from < to) {
        std::copy_backward(rows, rows + length, RowData(to) + length);
    } else if (&source != this || from != to) {
        std::copy(rows, rows + length, RowData(to));
    }
    return true;
} catch (...) {
    return false;
}

bool KwRectMatrix::CopyRowToRow(int i, int j, IKwRectMatrix& target) const try {
    if (!HasRow(i) || j < 0 || j >= target.GetNRows() || target.GetNCols() != fNCols) {
        return false;
    }
    if (&target == this && i == j) {
        return true;
    }
    const double* row = RowData(i);
    if (typeid(target) == typeid(KwRectMatrix)) {
        std::copy_n(row, fNCols, static_cast<KwRectMatrix&>(target).RowData(j));
        return true;
    }
    return target.SetRow(j, ToSparse(row, fNCols));
} catch (...) {
    return false;
}

bool KwRectMatrix::CreateBlockDiagonal(int count, IKwRectMatrix& target) const try {
    if (count < 1 || !IsValidMatrix() || std::max(fNRows, fNCols) > INT32_MAX / count) {
        return false;
    }
    const int nCols = count * fNCols;
    std::vector<double> elements = ZeroRows(count * fNRows, nCols);
    for (int block = 0; !elements.empty() && block < count; ++block) {
        for (int i = 0; i < fNRows; ++i) {
            const auto row =
                static_cast<std::size_t>(block) * static_cast<std::size_t>(fNRows) + static_cast<std::size_t>(i);
            std::copy_n(RowData(i), fNCols,
                        elements.data() + row * static_cast<std::size_t>(nCols) + std::ptrdiff_t{block} * fNCols);
        }
    }
    return WriteTarget(target, count * fNRows, nCols, elements);
} catch (...) {
    return false;
}

bool KwRectMatrix::ExtractColumns(const std::vector<int>& columns, IKwRectMatrix& target) const try {
    if (!IsValidMatrix() || columns.size() > INT32_MAX || !AreIndices(columns, fNCols)) {
        return false;
    }
    const int nCols = static_cast<int>(columns.size());
    std::vector<double> elements = ZeroRows(fNRows, nCols);
    double* place = elements.data();
    for (int i = 0; i < fNRows; ++i) {
        const double* row = RowData(i);
        for (const int j : columns) {
            *place++ = row[j];
        }
    }
    return WriteTarget(target, fNRows, nCols, elements);
} catch (...) {
    return false;
}

bool KwRectMatrix::ExtractRows(const std::vector<int>& rows, IKwRectMatrix& target) const try {
    if (!IsValidMatrix() || rows.size() > INT32_MAX || !AreIndices(rows, fNRows)) {
        return false;
    }
    const int nRows = static_cast<int>(rows.size());
    std::vector<double> elements = ZeroRows(nRows, fNCols);
    double* place = elements.data();
    for (const int i : rows) {
        place = std::copy_n(RowData(i), fNCols, place);
    }
    return WriteTarget(target, nRows, fNCols, elements);
} catch (...) {
    return false;
}

bool KwRectMatrix::ShiftColumns(int shift, IKwRectMatrix& target) const try {
    if (!IsValidMatrix()) {
        return false;
    }
    std::vector<double> elements = ZeroRows(fNRows, fNCols);
    const int first = std::max(0, std::min(shift, fNCols));
    const int end = static_cast<int>(std::clamp(std::int64_t{fNCols} + shift, std::int64_t{0}, std::int64_t{fNCols}));
    for (int i = 0; i < fNRows; ++i) {
        double* row = elements.data() + static_cast<std::size_t>(i) * static_cast<std::size_t>(fNCols);
        for (int j = first; j < end; ++j) {
            row[j] = RowData(i)[j - shift];
        }
    }
    return WriteTarget(target, fNRows, fNCols, elements);
} catch (...) {
    return false;
}

bool KwRectMatrix::ShiftRows(int shift, IKwRectMatrix& target) const try {
    if (!IsValidMatrix()) {
        return false;
    }
    std::vector<double> elements = ZeroRows(fNRows, fNCols);
    for (int i = 0; i < fNRows; ++i) {
        const std::int64_t moved = std::int64_t{i} + shift;
        if (moved >= 0 && moved < fNRows) {
            std::copy_n(RowData(i), fNCols, elements.data() + moved * fNCols);
        }
    }
    return WriteTarget(target, fNRows, fNCols, elements);
} catch (...) {
    return false;
}

}  // namespace KwMath_930
