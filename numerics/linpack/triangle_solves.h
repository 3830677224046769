// Solutions with an upper triangle, of which a view holds the columns. Where there is enough to do, four columns are
// taken in one pass. Internal.
#pragma once

#include <algorithm>

#include "numerics/linpack/inner_products.h"

namespace KwMath_930::linpack {

/// So many elements must four columns have in common to be worth a pass of their own.
constexpr int kWorthFour = 8;

/// b[first .. last-1] := inverse of that part of R^T times it; only the elements from row first on are read.
template <class Columns>
void SolveTransposedUpper(Columns r, int first, int last, double* b) {
    int k = first;
    while (k < last) {
        const int common = last - k >= 4 ? std::max(r.FirstRow(k + 3), first) : k;
        if (k - common < kWorthFour) {
            const double* column = r.Column(k);
            const int start = std::max(r.FirstRow(k), first);
            b[k] = (b[k] - Dot(k - start, column + start, b + start)) / column[k];
            ++k;
            continue;
        }
        const double* columns[4];
        double sums[4];
        for (int c = 0; c < 4; ++c) {
            columns[c] = r.Column(k + c) + common;
        }
        DotFour(k - common, columns, b + common, sums);
        for (int c = 0; c < 4; ++c) {
            const double* column = columns[c] - common;
            const int start = std::max(r.FirstRow(k + c), first);
            const double sum = sums[c] + Dot(common - start, column + start, b + start) + Dot(c, column + k, b + k);
            b[k + c] = (b[k + c] - sum) / column[k + c];
        }
        k += 4;
    }
}

/// b := inverse of R times b. Each element of b meets the same operations as when column after column is taken.
template <class Columns>
void SolveUpper(Columns r, int n, double* b) {
    int k = n - 1;
    while (k >= 0) {
        const int common = k >= 3 ? r.FirstRow(k) : k;
        const int above = k - 3;
        if (above - common < kWorthFour) {
            const double* column = r.Column(k);
            const int first = r.FirstRow(k);
            b[k] /= column[k];
            AddScaled(k - first, -b[k], column + first, b + first);
            --k;
            continue;
        }
        const double* columns[4];
        double factors[4];
        for (int c = 0; c < 4; ++c) {
            const double* column = r.Column(k - c);
            b[k - c] /= column[k - c];
            factors[c] = -b[k - c];
            columns[c] = column + common;
            AddScaled(k - c - above, factors[c], column + above, b + above);
            AddScaled(common - r.FirstRow(k - c), factors[c], column + r.FirstRow(k - c), b + r.FirstRow(k - c));
        }
        AddFour(above - common, factors, columns, b + common);
        k -= 4;
    }
}

}  // namespace KwMath_930::linpack
