// Matrix products by tiles: panels of B are gathered on the stack, rows of A and C stay where they are.
// Test: KwRectMatrix_products_test.cpp.
#include "numerics/matrix/dense_kernels.h"

#include <algorithm>

#include "numerics/matrix/matrix_operand.h"
#include "numerics/matrix/packed_triangle.h"
#include "numerics/matrix/product_kernel.h"

namespace KwMath_930::dense_kernels {

namespace {

constexpr int kDepth = 256;  // a gathered panel of kDepth x kTileCols stands in 16 KB of stack

// Gathers width <= kTileCols columns of count rows of b from column on; the rest of a panel row is 0.
void GatherPanel(int count, const double* b, std::size_t ldb, int column, int width, double* panel) {
    for (int p = 0; p < count; ++p) {
        double* const row = panel + p * kTileCols;
        std::copy_n(b + static_cast<std::size_t>(p) * ldb + column, width, row);
        std::fill(row + width, row + kTileCols, 0.0);
    }
}

// Adds the product of height <= kTileRows rows of a with a panel to width columns of c; a tile that reaches beyond them
// is formed aside.
void AddPart(TileKernel addTile, int count, int height, int width, const double* a, std::size_t lda,
             const double* const* panelRows, double* c, std::size_t ldc) {
    double aside[kTileRows][kTileCols] = {};
    const bool isWhole = height == kTileRows && width == kTileCols;
    const double* rowsOfA[kTileRows];
    double* places[kTileRows];
    for (int q = 0; q < kTileRows; ++q) {
        // A row that is not there is taken for the last one, and its sums are dropped.
        rowsOfA[q] = a + static_cast<std::size_t>(std::min(q, height - 1)) * lda;
        places[q] = isWhole ? c + static_cast<std::size_t>(q) * ldc : aside[q];
    }
    addTile(count, rowsOfA, panelRows, 0, 1.0, places);
    for (int q = 0; !isWhole && q < height; ++q) {
        for (int j = 0; j < width; ++j) {
            c[static_cast<std::size_t>(q) * ldc + static_cast<std::size_t>(j)] += aside[q][j];
        }
    }
}

}  // namespace

void AddProduct(int m, int n, int k, const double* a, std::size_t lda, const double* b, std::size_t ldb, double* c,
                std::size_t ldc) {
    const TileKernel addTile = FastestTileKernel();
    double panel[kDepth * kTileCols];
    const double* panelRows[kDepth];
    for (int p = 0; p < kDepth; ++p) {
        panelRows[p] = panel + p * kTileCols;
    }
    for (int depth = 0; depth < k; depth += kDepth) {
        const int count = std::min(kDepth, k - depth);
        for (int j = 0; j < n; j += kTileCols) {
            const int width = std::min(kTileCols, n - j);
            GatherPanel(count, b + static_cast<std::size_t>(depth) * ldb, ldb, j, width, panel);
            for (int i = 0; i < m; i += kTileRows) {
                AddPart(addTile, count, std::min(kTileRows, m - i), width,
                        a + static_cast<std::size_t>(i) * lda + depth, lda, panelRows,
                        c + static_cast<std::size_t>(i) * ldc + j, ldc);
            }
        }
    }
}

std::vector<double> Product(int m, int n, int k, const double* a, const double* b) {
    std::vector<double> product = ZeroRows(m, n);
    const auto lengthOfB = static_cast<std::size_t>(std::max(n, 0));
    AddProduct(product.empty() ? 0 : m, n, k, a, static_cast<std::size_t>(std::max(k, 0)), b, lengthOfB, product.data(),
               lengthOfB);
    return product;
}

std::vector<double> LowerProduct(int n, int k, const double* a, const double* b) {
    // By panels of rows, each as wide as its last row reaches.
    constexpr int kPanel = 64;
    std::vector<double> packed(packed_triangle::Size(n));
    for (int first = 0; first < n; first += kPanel) {
        const int height = std::min(kPanel, n - first);
        const int width = first + height;
        std::vector<double> panel = ZeroRows(height, width);
        AddProduct(height, width, k, a + static_cast<std::size_t>(first) * static_cast<std::size_t>(k),
                   static_cast<std::size_t>(k), b, static_cast<std::size_t>(n), panel.data(),
                   static_cast<std::size_t>(width));
        for (int i = 0; i < height; ++i) {
            std::copy_n(panel.data() + static_cast<std::size_t>(i) * static_cast<std::size_t>(width), first + i + 1,
                        packed.data() + packed_triangle::RowStart(first + i));
        }
    }
    return packed;
}

}  // namespace KwMath_930::dense_kernels
