// The tiles of a product with registers of two doubles. Test: product_kernel_test.cpp.
#include "numerics/matrix/product_kernel_body.h"

namespace KwMath_930 {

void AddTileBaseline(int k, const double* const* a, const double* const* b, int column, double factor,
                     double* const* c) {
    AddTile<2>(k, a, b, column, factor, c);
}

void AddTransposedTileBaseline(int k, const double* const* a, const double* const* b, double* c, std::ptrdiff_t ldc) {
    AddTransposedTile<2>(k, a, b, c, ldc);
}

}  // namespace KwMath_930
