// Choice of the version of the tiles. Test: product_kernel_test.cpp.
#include "numerics/matrix/product_kernel.h"

namespace KwMath_930 {

TileKernel FastestTileKernel() {
#if defined(__x86_64__)
    static const TileKernel fastest = __builtin_cpu_supports("avx2") ? AddTileAvx2 : AddTileBaseline;
    return fastest;
#else
    return AddTileBaseline;
#endif
}

TransposedTileKernel FastestTransposedTileKernel() {
#if defined(__x86_64__)
    static const TransposedTileKernel fastest =
        __builtin_cpu_supports("avx2") ? AddTransposedTileAvx2 : AddTransposedTileBaseline;
    return fastest;
#else
    return AddTransposedTileBaseline;
#endif
}

}  // namespace KwMath_930
