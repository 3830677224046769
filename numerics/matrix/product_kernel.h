// The inner loop of matrix products, in one version for each instruction set. Internal.
#pragma once

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

void AddTileBaseline(int k, const double* const* a, const double* const* b, int column, double factor,
                     double* const* c);
#if defined(__x86_64__) && !defined(_WIN32)
void AddTileAvx2(int k, const double* const* a, const double* const* b, int column, double factor, double* const* c);
#endif

/// Returns: the fastest version that this processor can run, found once.
TileKernel FastestTileKernel();

}  // namespace KwMath_930
