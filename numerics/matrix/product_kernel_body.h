// The tiles of a product on packs of as many doubles as the source that includes it asks for. Included only by the
// sources product_kernel_<set>.cpp, each compiled for its own instruction set; everything here has internal linkage and
// calls nothing outside. Internal.
#pragma once

#include "numerics/matrix/product_kernel.h"

namespace KwMath_930 {
namespace {

template <int kPack>
inline void AddTile(int k, const double* const* a, const double* const* b, int column, double factor,
                    double* const* c) {
    typedef double Pack __attribute__((vector_size(kPack * sizeof(double))));
    constexpr int kPacks = kTileCols / kPack;
    Pack sums[kTileRows][kPacks] = {};
    for (int p = 0; p < k; ++p) {
        Pack row[kPacks];
        for (int q = 0; q < kPacks; ++q) {
            __builtin_memcpy(&row[q], b[p] + column + q * kPack, sizeof row[q]);
        }
        for (int i = 0; i < kTileRows; ++i) {
            for (int q = 0; q < kPacks; ++q) {
                sums[i][q] += row[q] * a[i][p];
            }
        }
    }
    for (int i = 0; i < kTileRows; ++i) {
        for (int q = 0; q < kPacks; ++q) {
            Pack place;
            __builtin_memcpy(&place, c[i] + q * kPack, sizeof place);
            place += sums[i][q] * factor;
            __builtin_memcpy(c[i] + q * kPack, &place, sizeof place);
        }
    }
}

template <int kPack>
inline void AddTransposedTile(int k, const double* const* a, const double* const* b, double* c, std::ptrdiff_t ldc) {
    typedef double Pack __attribute__((vector_size(kPack * sizeof(double))));
    constexpr int kPacks = kTileCols / kPack;
    const double* rowsOfA[kTileRows];
    __builtin_memcpy(rowsOfA, a, sizeof rowsOfA);
    // Two packs at a time, so that all rows of them stay in registers.
    for (int q = 0; q < kPacks; q += 2) {
        Pack left[kTileRows];
        Pack right[kTileRows];
        for (int i = 0; i < kTileRows; ++i) {
            __builtin_memcpy(&left[i], b[i] + q * kPack, sizeof left[i]);
            __builtin_memcpy(&right[i], b[i] + (q + 1) * kPack, sizeof right[i]);
        }
        double* place = c + q * kPack;
        for (int j = 0; j < k; ++j, place += ldc) {
            Pack leftSum;
            Pack rightSum;
            __builtin_memcpy(&leftSum, place, sizeof leftSum);
            __builtin_memcpy(&rightSum, place + kPack, sizeof rightSum);
            for (int i = 0; i < kTileRows; ++i) {
                const double factor = rowsOfA[i][j];
                leftSum += left[i] * factor;
                rightSum += right[i] * factor;
            }
            __builtin_memcpy(place, &leftSum, sizeof leftSum);
            __builtin_memcpy(place + kPack, &rightSum, sizeof rightSum);
        }
    }
}

}  // namespace
}  // namespace KwMath_930
