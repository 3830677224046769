// Symmetric matrix, extraction of parts, expansion to a larger order, replacement. Results are put together in storage
// of their own and written to the target last, so that a target may be this matrix.
// Test: KwSymMatrix_extract_test.cpp.
#include "numerics/matrix/KwSymMatrix.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <numeric>
#include <utility>

#include "numerics/containers/KwBitSet.h"
#include "numerics/matrix/IKwRectMatrix.h"
#include "numerics/matrix/index_checks.h"
#include "numerics/matrix/matrix_operand.h"
#include "numerics/matrix/packed_triangle.h"
#include "numerics/matrix/resize_target.h"

namespace KwMath_930 {

namespace {

std::vector<int> Range(int first, int count) {
    std::vector<int> rows(static_cast<std::size_t>(count));
    std::iota(rows.begin(), rows.end(), first);
    return rows;
}

// The triangle of the given order that has the packed matrix at the listed places, 0 elsewhere; empty unless rows lists
// a place of its own for each of the size rows.
bool ExpandPacked(const std::vector<double>& packed, int size, const std::vector<int>& rows, int order,
                  std::vector<double>& expanded) {
    if (size < 0 || order < 0 || std::cmp_not_equal(rows.size(), size) || !AreIndices(rows, order)) {
        return false;
    }
    std::vector<int> sorted(rows);
    std::sort(sorted.begin(), sorted.end());
    if (std::adjacent_find(sorted.begin(), sorted.end()) != sorted.end()) {
        return false;
    }
    expanded.assign(packed_triangle::Size(order), 0.0);
    const double* element = packed.data();
    for (std::size_t i = 0; i < rows.size(); ++i) {
        for (std::size_t j = 0; j <= i; ++j) {
            expanded[packed_triangle::Index(rows[i], rows[j])] = *element++;
        }
    }
    return true;
}

}  // namespace

bool KwSymMatrix::ExtractFirstNRows(IKwSymMatrix& target) const try {
    const int order = target.GetNRows();
    if (order < 0 || order > fNRows || !IsDenseKind(target)) {
        return false;
    }
    const auto end = fData.begin() + static_cast<std::ptrdiff_t>(packed_triangle::Size(order));
    return WriteTarget(target, order, std::vector<double>(fData.begin(), end));
} catch (...) {
    return false;
}

bool KwSymMatrix::ExtractSubmatrix(const std::vector<int>& rows, IKwSymMatrix& target) const try {
    if (fNRows < 0 || rows.size() > std::numeric_limits<int>::max() || !AreIndices(rows, fNRows) ||
        !IsDenseKind(target)) {
        return false;
    }
    const int order = static_cast<int>(rows.size());
    std::vector<double> packed(packed_triangle::Size(order));
    double* place = packed.data();
    for (std::size_t a = 0; a < rows.size(); ++a) {
        for (std::size_t b = 0; b <= a; ++b) {
            *place++ = fData[packed_triangle::Index(rows[a], rows[b])];
        }
    }
    return WriteTarget(target, order, packed);
} catch (...) {
    return false;
}

bool KwSymMatrix::IsZeroRow(int i, const KwBitSet& ignored) const {
    if (!HasRow(i)) {
        return false;
    }
    bool isZero = true;
    packed_triangle::VisitRow(
        i, fNRows, [&](int k, std::size_t index) { isZero = isZero && (fData[index] == 0.0 || ignored.IsIn(k)); });
    return isZero;
}

bool KwSymMatrix::ExtractDiagBlock(int block, IKwSymMatrix& target) const try {
    const int first = FirstRowOfBlock(block);
    return first >= 0 && KwSymMatrix::ExtractSubmatrix(Range(first, fBlockSize), target);
} catch (...) {
    return false;
}

bool KwSymMatrix::ExtractBlockAndLastRow(int block, IKwSymMatrix& target) const try {
    const int first = FirstRowOfBlock(block);
    if (first < 0) {
        return false;
    }
    std::vector<int> rows = Range(first, fBlockSize + 1);
    rows.back() = fNRows - 1;
    return KwSymMatrix::ExtractSubmatrix(rows, target);
} catch (...) {
    return false;
}

bool KwSymMatrix::ExtractBlockInLowTriangular(int row, int col, int nRows, int nCols, IKwRectMatrix& target) const try {
    if (!HasPart(row, nRows) || !HasPart(col, nCols) || (nRows > 0 && nCols > 0 && col + nCols - 1 > row)) {
        return false;
    }
    std::vector<double> elements = ZeroRows(nRows, nCols);
    double* place = elements.data();
    for (int i = row; !elements.empty() && i < row + nRows; ++i) {
        place = std::copy_n(fData.data() + packed_triangle::RowStart(i) + col, nCols, place);
    }
    return WriteTarget(target, nRows, nCols, elements);
} catch (...) {
    return false;
}

bool KwSymMatrix::ExtractPartOfLastRow(int first, int count, std::vector<double>& v) const {
    if (fNRows < 1 || !HasPart(first, count) || !ResizeTarget(v, count)) {
        return false;
    }
    std::copy_n(fData.data() + packed_triangle::RowStart(fNRows - 1) + first, count, v.data());
    return true;
}

bool KwSymMatrix::ExtractH(const KwBitSet& kept, IKwSymMatrix& target) const try {
    std::vector<int> rows;
    for (int i = 0; i < fNRows; ++i) {
        if (kept.IsIn(i)) {
            rows.push_back(i);
        }
    }
    return KwSymMatrix::ExtractSubmatrix(rows, target);
} catch (...) {
    return false;
}

bool KwSymMatrix::Expand(const std::vector<int>& rows, int n, KwSymMatrix& target) const {
    return ExpandSym(rows, n, target);
}

bool KwSymMatrix::ExpandSym(const std::vector<int>& rows, int n, IKwSymMatrix& target) const try {
    std::vector<double> packed;
    return IsDenseKind(target) && ExpandPacked(fData, fNRows, rows, n, packed) && WriteTarget(target, n, packed);
} catch (...) {
    return false;
}

bool KwSymMatrix::ExpandSymToRect(const std::vector<int>& rows, int n, IKwRectMatrix& target) const try {
    std::vector<double> packed;
    return ExpandPacked(fData, fNRows, rows, n, packed) && WriteTarget(target, n, n, ToSquare(packed.data(), n));
} catch (...) {
    return false;
}

bool KwSymMatrix::ReplaceFirstRows(const IKwSymMatrix& m) try {
    const SymOperand operand(m);
    if (operand.Order() < 0 || operand.Order() > fNRows) {
        return false;
    }
    if (operand.Packed() != fData.data()) {
        std::copy_n(operand.Packed(), packed_triangle::Size(operand.Order()), fData.data());
    }
    return true;
} catch (...) {
    return false;
}

bool KwSymMatrix::SetData(const std::vector<double>& packed) {
    if (fNRows < 0 || packed.size() != packed_triangle::Size(fNRows)) {
        return false;
    }
    std::copy(packed.begin(), packed.end(), fData.begin());
    return true;
}

bool KwSymMatrix::GetPCol(int j, std::vector<double>& v) const {
    if (!HasRow(j) || !ResizeTarget(v, fNRows - j)) {
        return false;
    }
    double* target = v.data();
    *target = fData[packed_triangle::Index(j, j)];
    packed_triangle::VisitBelowDiagonal(j, fNRows, [&](int k, std::size_t index) { target[k - j] = fData[index]; });
    return true;
}

bool KwSymMatrix::CopyRowToRColumn(int i, int j, IKwRectMatrix& r) const {
    std::vector<double> before;
    if (!HasRow(i) || r.GetNRows() != fNRows || !r.GetCol(j, before)) {
        return false;
    }
    int written = 0;
    while (written < fNRows && r.SetElem(written, j, fData[packed_triangle::Index(i, written)])) {
        ++written;
    }
    const bool isWritten = written == fNRows;
    // What has replaced an element gives its place back without memory.
    while (!isWritten && written > 0) {
        --written;
        r.SetElem(written, j, before[static_cast<std::size_t>(written)]);
    }
    return isWritten;
}

}  // namespace KwMath_930
