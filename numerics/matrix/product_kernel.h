// The inner loops of matrix products, in one version for each instruction set. Internal.
#pragma once

#include <cstddef>

namespace KwMath_930 {

/// Rows and columns of the tile of a product that is formed in one go.
inline constexpr int kTileRows = 4;
inline constexpr int kTileCols = 8;

/// Adds factor times the product of kTileRows rows a, k elements each, with k rows b, of which columns column ..
/// column + kTileCols - 1 count, to the elements c[i][0 .. kTileCols-1].
/// Note:    each sum goes by ascending k; a product and a sum are rounded apart. factor is 1 or -1. All versions give
///          the same bits.
using TileKernel = void (*)(int k, const double* const* a, const double* const* b, int column, double factor,
                            double* const* c);

/// Adds to k rows of c, kTileCols elements each and ldc apart, the product of the transposed kTileRows rows a, k
/// elements each, with kTileRows rows b: row j gains a[0][j] b[0], then a[1][j] b[1] and so on. Note:    a product and
/// a sum are rounded apart. All versions give the same bits.
using TransposedTileKernel = void (*)(int k, const double* const* a, const double* const* b, double* c,
                                      std::ptrdiff_t ldc);

void AddTileBaseline(int k, const double* const* a, const double* const* b, int column, double factor,
                     double* const* c);
void AddTransposedTileBaseline(int k, const double* const* a, const double* const* b, double* c, std::ptrdiff_t ldc);
#if defined(__x86_64__)
void AddTileAvx2(int k, const double* const* a, const double* const* b, int column, double factor, double* const* c);
void AddTransposedTileAvx2(int k, const double* const* a, const double* const* b, double* c, std::ptrdiff_t ldc);
#endif

/// Returns: the fastest version that this processor can run, found once.
TileKernel FastestTileKernel();
TransposedTileKernel FastestTransposedTileKernel();

}  // namespace KwMath_930
