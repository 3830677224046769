// Index arithmetic of the packed lower triangle, the storage of a symmetric matrix: element (i, j) with j <= i stands
// at i(i+1)/2 + j, rows one after another, indices from 0. Internal; everything that walks a triangle takes it from
// here.
#pragma once

#include <cstddef>

namespace KwMath_930::packed_triangle {

/// Index of element (row, 0), which is also the number of elements in the rows above it; row >= 0.
constexpr std::size_t RowStart(int row) {
    const auto r = static_cast<std::size_t>(row);
    return r * (r + 1) / 2;
}

/// Number of stored elements of a triangle of the given order; 0 for an order below 1.
constexpr std::size_t Size(int order) {
    return order > 0 ? RowStart(order) : 0;
}

/// Index of the element that (i, j) and (j, i) share.
constexpr std::size_t Index(int i, int j) {
    return i >= j ? RowStart(i) + static_cast<std::size_t>(j) : RowStart(j) + static_cast<std::size_t>(i);
}

/// Calls visit(i, index of (i, i)) for i = 0 .. order-1; from one diagonal element to the next the index grows by i
/// + 2.
template <class Visit>
void VisitDiagonal(int order, Visit visit) {
    std::size_t index = 0;
    for (int i = 0; i < order; ++i) {
        visit(i, index);
        index += static_cast<std::size_t>(i) + 2;
    }
}

/// Calls visit(k, index of (k, column)) for k = column+1 .. order-1, the part of a full row that stands in the rows
/// below; from one element to the next the index grows by k + 1.
template <class Visit>
void VisitBelowDiagonal(int column, int order, Visit visit) {
    std::size_t index = Index(column + 1, column);
    for (int k = column + 1; k < order; ++k) {
        visit(k, index);
        index += static_cast<std::size_t>(k) + 1;
    }
}

/// Calls visit(k, index of (row, k)) for k = 0 .. order-1, the full row: the stored run, then the part below it.
template <class Visit>
void VisitRow(int row, int order, Visit visit) {
    const std::size_t start = RowStart(row);
    for (int k = 0; k <= row; ++k) {
        visit(k, start + static_cast<std::size_t>(k));
    }
    VisitBelowDiagonal(row, order, visit);
}

}  // namespace KwMath_930::packed_triangle
