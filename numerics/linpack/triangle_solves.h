// Solutions with an upper triangle, of which a view holds the columns. Where there is enough to do, four columns are
// taken in one pass. What a step has just made is handed on in a register, element after element, so that the next step
// waits for nothing but the arithmetic. Internal.
#pragma once

#include <algorithm>

#include "numerics/linpack/inner_products.h"

namespace KwMath_930::linpack {

/// So many elements must four columns have in common to be worth a pass of their own.
constexpr int kWorthFour = 16;

/// The elements first .. last-1 of a column times those of b, taken from rest one after another.
inline double TakeProducts(double rest, const double* column, const double* b, int first, int last) {
    for (int i = first; i < last; ++i) {
        rest -= column[i] * b[i];
    }
    return rest;
}

/// Row k of a solution with R^T whose row starts at start.
inline void SolveTransposedRow(const double* column, int start, int k, double* b) {
    const int recent = std::max(start, k - 4);
    const double rest = b[k] - Dot(recent - start, column + start, b + start);
    b[k] = TakeProducts(rest, column, b, recent, k) / column[k];
}

/// b[first .. last-1] := inverse of that part of R^T times it; only the elements from row first on are read.
template <class Columns>
void SolveTransposedUpper(Columns r, int first, int last, double* b) {
    int k = first;
    while (k < last) {
        const int recent = k - 4;
        const int common = last - k >= 4 ? std::max(r.FirstRow(k + 3), first) : k;
        if (recent - common < kWorthFour) {
            SolveTransposedRow(r.Column(k), std::max(r.FirstRow(k), first), k, b);
            ++k;
            continue;
        }
        const double* columns[4];
        double sums[4];
        for (int c = 0; c < 4; ++c) {
            columns[c] = r.Column(k + c) + common;
        }
        DotFour(recent - common, columns, b + common, sums);
        for (int c = 0; c < 4; ++c) {
            const double* column = columns[c] - common;
            const double rest = TakeProducts(b[k + c] - sums[c], column, b, std::max(r.FirstRow(k + c), first), common);
            b[k + c] = TakeProducts(rest, column, b, recent, k + c) / column[k + c];
        }
        k += 4;
    }
}

/// b := inverse of R times b. Each element of b meets the same operations as when column after column is taken.
template <class Columns>
void SolveUpper(Columns r, int n, double* b) {
    int k = n - 1;
    double value = n > 0 ? b[k] : 0.0;
    while (k >= 0) {
        const double* column = r.Column(k);
        const int first = r.FirstRow(k);
        const int above = k - 3;
        if (above - first < kWorthFour) {
            value /= column[k];
            b[k] = value;
            --k;
            const double factor = -value;
            value = k >= 0 ? b[k] : 0.0;
            if (first <= k && factor != 0.0) {
                value += factor * column[k];
                AddScaled(k - first, factor, column + first, b + first);
            }
            continue;
        }
        b[k] = value;
        const double* columns[4];
        double factors[4];
        for (int c = 0; c < 4; ++c) {
            const double* each = r.Column(k - c);
            const int start = r.FirstRow(k - c);
            b[k - c] /= each[k - c];
            factors[c] = -b[k - c];
            columns[c] = each + first;
            AddScaled(k - c - above, factors[c], each + above, b + above);
            AddScaled(first - start, factors[c], each + start, b + start);
        }
        AddFour(above - first, factors, columns, b + first);
        k -= 4;
        value = k >= 0 ? b[k] : 0.0;
    }
}

}  // namespace KwMath_930::linpack
