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

namespace {

constexpr int kSymmetricDepth = 256;  // columns of the triangle that are worked on together

// Rows in panels of kTileCols columns, one panel after another, with zeros up to a multiple of kTileRows rows and
// beyond the last column: every tile of it is whole.
class Panels {
public:
    Panels(int nRows, int nCols)
        : fRows(nRows),
          fCols(nCols),
          fLength(static_cast<std::size_t>((nRows + kTileRows - 1) / kTileRows * kTileRows) * kTileCols),
          fElements(fLength * static_cast<std::size_t>((nCols + kTileCols - 1) / kTileCols)) {}

    double* Row(int i, int column) {
        return fElements.data() + fLength * static_cast<std::size_t>(column / kTileCols) +
               std::ptrdiff_t{i} * kTileCols;
    }

    // Calls copy(row of the panel, its place in the rows, count) for each row of each panel.
    template <class Element, class Copy>
    void Visit(Element* rows, Copy copy) {
        for (int column = 0; column < fCols; column += kTileCols) {
            const int width = std::min(kTileCols, fCols - column);
            for (int i = 0; i < fRows; ++i) {
                copy(Row(i, column), rows + std::ptrdiff_t{i} * fCols + column, width);
            }
        }
    }

private:
    int fRows;
    int fCols;
    std::size_t fLength;  // of one panel
    std::vector<double> fElements;
};

// The tile on the diagonal, rows i .. i+height-1 of the triangle: each element counts for itself and for its mirror.
void AddDiagonalTile(const double* packed, int i, int height, const double* b, double* c) {
    for (int q = 0; q < height; ++q) {
        const double* run = packed + packed_triangle::RowStart(i + q) + i;
        for (int r = 0; r < q; ++r) {
            AddMultiple(kTileCols, run[r], b + r * kTileCols, c + q * kTileCols);
            AddMultiple(kTileCols, run[r], b + q * kTileCols, c + r * kTileCols);
        }
        AddMultiple(kTileCols, run[q], b + q * kTileCols, c + q * kTileCols);
    }
}

// Adds to the panel c the product of the columns depth .. depth+count-1 of the triangle, and of their mirrors, with the
// panel b. Every row of c gains its terms from left to right.
void AddSymmetricPart(int n, const double* packed, int depth, const double* b, double* c) {
    static constexpr double kNoRow[kSymmetricDepth] = {};
    const TileKernel addTile = FastestTileKernel();
    const TransposedTileKernel addTransposed = FastestTransposedTileKernel();
    const int count = std::min(kSymmetricDepth, n - depth);
    const double* rowsOfB[kSymmetricDepth];
    for (int p = 0; p < count; ++p) {
        rowsOfB[p] = b + std::ptrdiff_t{depth + p} * kTileCols;
    }
    for (int i = depth; i < n; i += kTileRows) {
        const int height = std::min(kTileRows, n - i);
        const double* a[kTileRows];
        const double* tileOfB[kTileRows];
        double* tileOfC[kTileRows];
        for (int q = 0; q < kTileRows; ++q) {
            a[q] = q < height ? packed + packed_triangle::RowStart(i + q) + depth : kNoRow;
            tileOfB[q] = b + std::ptrdiff_t{i + q} * kTileCols;
            tileOfC[q] = c + std::ptrdiff_t{i + q} * kTileCols;
        }
        const int before = std::min(count, i - depth);
        addTile(before, a, rowsOfB, 0, 1.0, tileOfC);
        addTransposed(before, a, tileOfB, c + std::ptrdiff_t{depth} * kTileCols, kTileCols);
        if (i < depth + count) {
            AddDiagonalTile(packed, i, height, tileOfB[0], tileOfC[0]);
        }
    }
}

// S B in panels.
Panels SymmetricPanels(int n, const double* packed, int nCols, const double* b) {
    Panels panels(n, nCols);
    Panels product(n, nCols);
    panels.Visit(b, [](double* panelRow, const double* row, int count) {
        for (int k = 0; k < count; ++k) {
            panelRow[k] = row[k];
        }
    });
    for (int depth = 0; depth < n; depth += kSymmetricDepth) {
        for (int column = 0; column < nCols; column += kTileCols) {
            AddSymmetricPart(n, packed, depth, panels.Row(0, column), product.Row(0, column));
        }
    }
    return product;
}

}  // namespace

std::vector<double> SymmetricProduct(int n, const double* packed, int nCols, const double* b) {
    std::vector<double> product = ZeroRows(n, nCols);
    if (!product.empty()) {
        SymmetricPanels(n, packed, nCols, b).Visit(product.data(), [](const double* panelRow, double* row, int count) {
            for (int k = 0; k < count; ++k) {
                row[k] = panelRow[k];
            }
        });
    }
    return product;
}

std::vector<double> SymmetricForm(int n, const double* packed, int nCols, const double* b) {
    constexpr int kRowsAtATime = 64;
    std::vector<double> lower(packed_triangle::Size(nCols));
    if (n < 1 || nCols < 1) {
        return lower;
    }
    const TransposedTileKernel addTransposed = FastestTransposedTileKernel();
    Panels half = SymmetricPanels(n, packed, nCols, b);
    Panels square(nCols, nCols);
    // Row i of B times row i of S B, i by i, as far as the lower triangle reaches.
    for (int first = 0; first < n; first += kRowsAtATime) {
        for (int column = 0; column < nCols; column += kTileCols) {
            for (int i = first; i < std::min(n, first + kRowsAtATime); i += kTileRows) {
                const double* rowsOfB[kTileRows];
                const double* rowsOfHalf[kTileRows];
                for (int q = 0; q < kTileRows; ++q) {
                    // A row of the half that is not there is 0; of B, the last one stands in for it.
                    rowsOfB[q] = b + std::ptrdiff_t{std::min(i + q, n - 1)} * nCols + column;
                    rowsOfHalf[q] = half.Row(i + q, column);
                }
                addTransposed(nCols - column, rowsOfB, rowsOfHalf, square.Row(column, column), kTileCols);
            }
        }
    }
    for (int i = 0; i < nCols; ++i) {
        double* const row = lower.data() + packed_triangle::RowStart(i);
        for (int j = 0; j <= i; ++j) {
            row[j] = square.Row(i, j)[j % kTileCols];
        }
    }
    return lower;
}

}  // namespace KwMath_930::dense_kernels
