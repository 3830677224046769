// The tile of a product on packs of as many doubles as the source that includes it asks for. Included only by the
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

}  // namespace
}  // namespace KwMath_930
