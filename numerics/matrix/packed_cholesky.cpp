// Cholesky factor and its products, row by row: every inner loop runs along stored rows, which are contiguous. Larger
// orders go by blocks, so that most of the work is done in tiles of a product; gathered operands stand on the stack.
// Test: KwSymMatrix_cholesky_test.cpp.
#include "numerics/matrix/packed_cholesky.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "numerics/containers/KwBitSet.h"
#include "numerics/matrix/dense_kernels.h"
#include "numerics/matrix/packed_triangle.h"
#include "numerics/matrix/product_kernel.h"

namespace KwMath_930::packed_cholesky {

using dense_kernels::AddMultiple;
using dense_kernels::DotByFours;
using packed_triangle::RowStart;

namespace {

constexpr int kColumns = 16;       // of a block of the factorisation
constexpr int kDepth = 128;        // of its products, whose gathered panel takes 16 KB
constexpr int kRows = 64;          // of a block of the other algorithms
constexpr int kBlockedOrder = 48;  // from here on they go by blocks

// The diagonal block of the factorisation by columns: element (i, j), i >= j, at columns[j][i].
struct DiagonalBlock {
    double columns[kColumns][kColumns];
    int width;
};

// Gathers the columns depth .. depth+count-1 of the rows first .. first+width-1 as rows of a panel, 0 beyond width.
void GatherPanel(const double* packed, int first, int width, int depth, int count, double* panel) {
    std::fill_n(panel, count * kColumns, 0.0);
    for (int j = 0; j < width; ++j) {
        const double* row = packed + RowStart(first + j) + depth;
        for (int p = 0; p < count; ++p) {
            panel[p * kColumns + j] = row[p];
        }
    }
}

// Takes the products of count columns from depth on out of the block of columns: L(i, j) loses the sum of L(i, p) L(j,
// p) for rows i .. i+3 and columns j of the block. A tile that reaches beyond the matrix or the diagonal is formed
// aside.
void SubtractProducts(double* packed, int n, int i, int first, int width, int depth, int count,
                      const double* const* panelRows, TileKernel addTile) {
    const int height = std::min(kTileRows, n - i);
    const bool isWhole = height == kTileRows && i >= first + kColumns;
    const double* a[kTileRows];
    for (int q = 0; q < kTileRows; ++q) {
        a[q] = packed + RowStart(i + std::min(q, height - 1)) + depth;
    }
    for (int column = 0; column < width; column += kTileCols) {
        double aside[kTileRows][kTileCols] = {};
        double* c[kTileRows];
        for (int q = 0; q < kTileRows; ++q) {
            c[q] = isWhole ? packed + RowStart(i + q) + first + column : aside[q];
        }
        addTile(count, a, panelRows, column, -1.0, c);
        for (int q = 0; !isWhole && q < height; ++q) {
            double* row = packed + RowStart(i + q) + first + column;
            const int length = std::min({kTileCols, width - column, i + q + 1 - first - column});
            for (int j = 0; j < length; ++j) {
                row[j] += aside[q][j];
            }
        }
    }
}

// Takes the products of all columns before first out of the block of columns that starts there.
void UpdateColumns(double* packed, int n, int first, int width) {
    if (first == 0) {
        return;
    }
    const TileKernel addTile = FastestTileKernel();
    double panel[kDepth * kColumns];
    const double* panelRows[kDepth];
    for (int p = 0; p < kDepth; ++p) {
        panelRows[p] = panel + p * kColumns;
    }
    for (int depth = 0; depth < first; depth += kDepth) {
        const int count = std::min(kDepth, first - depth);
        GatherPanel(packed, first, width, depth, count, panel);
        for (int i = first; i < n; i += kTileRows) {
            SubtractProducts(packed, n, i, first, width, depth, count, panelRows, addTile);
        }
    }
}

// Takes the diagonal block out of the triangle, 0 above the diagonal and below the width.
void GatherBlock(const double* packed, int first, DiagonalBlock& block) {
    std::fill_n(block.columns[0], block.width * kColumns, 0.0);
    for (int i = 0; i < block.width; ++i) {
        const double* row = packed + RowStart(first + i) + first;
        for (int j = 0; j <= i; ++j) {
            block.columns[j][i] = row[j];
        }
    }
}

// Column j of the factor from those before it, in kGroups groups of four rows from first on, which hold row j: what
// stands above the diagonal is worked on too, and means nothing.
// Returns: false for a zero pivot.
template <int kGroups>
bool FactorColumn(DiagonalBlock& block, int first, int j, double threshold) {
    typedef double Pair __attribute__((vector_size(16)));
    constexpr int kPairs = 2 * kGroups;
    double* const column = block.columns[j];
    Pair elements[kPairs];
    __builtin_memcpy(elements, column + first, sizeof elements);
    // Also among the elements, but sooner at hand.
    double square = column[j];
    for (int k = 0; k < j; ++k) {
        const double* const other = block.columns[k] + first;
        const double factor = block.columns[k][j];
        square -= factor * factor;
        for (int p = 0; p < kPairs; ++p) {
            Pair pair;
            __builtin_memcpy(&pair, other + 2 * p, sizeof pair);
            elements[p] -= pair * factor;
        }
    }
    const bool isKept = square > threshold;
    const double pivot = isKept ? std::sqrt(square) : 0.0;
    if (pivot == 0.0) {
        std::fill(column + j, column + block.width, 0.0);
        return isKept;
    }
    for (Pair& pair : elements) {
        pair /= pivot;
    }
    __builtin_memcpy(column + first, elements, sizeof elements);
    column[j] = pivot;
    return true;
}

// Factorises the diagonal block column by column.
// Returns: the number of zero pivots.
int FactorBlock(DiagonalBlock& block, const double* ref, double tol, KwBitSet* zeros, int firstBit) {
    constexpr bool (*kFactorColumn[])(DiagonalBlock&, int, int, double) = {FactorColumn<1>, FactorColumn<2>,
                                                                           FactorColumn<3>, FactorColumn<4>};
    int zeroPivots = 0;
    for (int j = 0; j < block.width; ++j) {
        const int first = j / 4 * 4;
        if (!kFactorColumn[(block.width - 1 - first) / 4](block, first, j, tol * ref[j])) {
            ++zeroPivots;
            if (zeros != nullptr) {
                zeros->Set(firstBit + j, true);
            }
        }
    }
    return zeroPivots;
}

// Solves the elements of the block's columns in kCount rows below it; the rows go together, as each is a chain.
template <int kCount>
void SolveRows(const DiagonalBlock& block, double* const* rows) {
    double x[kCount][kColumns];
    for (int q = 0; q < kCount; ++q) {
        std::copy_n(rows[q], kColumns, x[q]);
    }
    for (int j = 0; j < kColumns; ++j) {
        const double* column = block.columns[j];
        for (int q = 0; q < kCount; ++q) {
            x[q][j] = column[j] != 0.0 ? x[q][j] / column[j] : 0.0;
            AddMultiple(kColumns - j - 1, -x[q][j], column + j + 1, x[q] + j + 1);
        }
    }
    for (int q = 0; q < kCount; ++q) {
        std::copy_n(x[q], kColumns, rows[q]);
    }
}

void SolveBelow(double* packed, int n, int first, const DiagonalBlock& block) {
    int i = first + block.width;
    for (; i + kTileRows <= n; i += kTileRows) {
        double* rows[kTileRows];
        for (int q = 0; q < kTileRows; ++q) {
            rows[q] = packed + RowStart(i + q) + first;
        }
        SolveRows<kTileRows>(block, rows);
    }
    for (; i < n; ++i) {
        double* const row = packed + RowStart(i) + first;
        SolveRows<1>(block, &row);
    }
}

// Adds to the rows of c, c[i] + column for column < width, the products of a block of rows: kTileRows rows a of count
// elements with the count rows b.
void AddRowsProduct(int count, const double* const* a, const double* const* b, int first, int width, double* const* c) {
    const TileKernel addTile = FastestTileKernel();
    int column = 0;
    for (; column + kTileCols <= width; column += kTileCols) {
        double* places[kTileRows];
        for (int q = 0; q < kTileRows; ++q) {
            places[q] = c[q] + first + column;
        }
        addTile(count, a, b, first + column, 1.0, places);
    }
    for (int q = 0; column < width && q < kTileRows; ++q) {
        for (int p = 0; p < count; ++p) {
            AddMultiple(width - column, a[q][p], b[p] + first + column, c[q] + first + column);
        }
    }
}

}  // namespace

int Factor(double* packed, int n, const double* ref, double tol, KwBitSet* zeros, int firstBit) {
    int zeroPivots = 0;
    for (int first = 0; first < n; first += kColumns) {
        DiagonalBlock block;
        block.width = std::min(kColumns, n - first);
        UpdateColumns(packed, n, first, block.width);
        GatherBlock(packed, first, block);
        zeroPivots += FactorBlock(block, ref + first, tol, zeros, firstBit + first);
        for (int i = 0; i < block.width; ++i) {
            double* const row = packed + RowStart(first + i) + first;
            for (int j = 0; j <= i; ++j) {
                row[j] = block.columns[j][i];
            }
        }
        SolveBelow(packed, n, first, block);
    }
    return zeroPivots;
}

// Each dot product is summed from left to right, as KwMathFun::DDot does; eight rows go together, as each is a chain.
void SolveForward(const double* packed, int n, double* x) {
    constexpr int kTogether = 8;
    for (int first = 0; first < n; first += kTogether) {
        double sums[kTogether] = {};
        const int height = std::min(kTogether, n - first);
        // Missing rows at the end are worth the last one's repetition only where the rows are long.
        const int before = height == kTogether || first >= 4 * kTogether ? first : 0;
        const double* rows[kTogether];
        for (int q = 0; q < kTogether; ++q) {
            rows[q] = packed + RowStart(first + std::min(q, height - 1));
        }
        for (int j = 0; j < before; ++j) {
            for (int q = 0; q < kTogether; ++q) {
                sums[q] += rows[q][j] * x[j];
            }
        }
        for (int q = 0; q < height; ++q) {
            const int k = first + q;
            double sum = sums[q];
            for (int j = before; j < k; ++j) {
                sum += rows[q][j] * x[j];
            }
            x[k] = rows[q][k] != 0.0 ? (x[k] - sum) / rows[q][k] : 0.0;
        }
    }
}

// Each element, once known, is taken out of those before it; four known ones go together.
void SolveBackward(const double* packed, int n, double* x) {
    int k = n - 1;
    const auto solve = [&](int to) {
        const double* row = packed + RowStart(k);
        x[k] = row[k] != 0.0 ? x[k] / row[k] : 0.0;
        AddMultiple(k - to, -x[k], row + to, x + to);
        --k;
    };
    while (k >= 3) {
        const int end = k - 3;
        const double* rows[] = {packed + RowStart(k), packed + RowStart(k - 1), packed + RowStart(k - 2),
                                packed + RowStart(k - 3)};
        while (k >= end) {
            solve(end);
        }
        const double known[] = {x[end + 3], x[end + 2], x[end + 1], x[end]};
        for (int j = 0; j < end; ++j) {
            x[j] = (((x[j] - known[0] * rows[0][j]) - known[1] * rows[1][j]) - known[2] * rows[2][j]) -
                   known[3] * rows[3][j];
        }
    }
    while (k >= 0) {
        solve(0);
    }
}

namespace {

// The columns first .. end-1 of kTileRows rows from row on: their elements move to taken, but 0 for a zero pivot, and
// their places become sums, 0 so far.
void TakeElements(double* packed, int row, int first, int end, double (*taken)[kRows]) {
    for (int q = 0; q < kTileRows; ++q) {
        double* elements = packed + RowStart(row + q);
        for (int k = first; k < end; ++k) {
            taken[q][k - first] = packed[RowStart(k) + static_cast<std::size_t>(k)] != 0.0 ? elements[k] : 0.0;
            elements[k] = 0.0;
        }
    }
}

// Rows row .. row+kTileRows-1 of the factor become the sums over k < row of L(i, k) times row k of the inverse; their
// elements from column row on stay.
void SumInverseRows(double* packed, int row) {
    double taken[kTileRows][kRows];
    const double* a[kTileRows];
    double* c[kTileRows];
    for (int q = 0; q < kTileRows; ++q) {
        a[q] = taken[q];
        c[q] = packed + RowStart(row + q);
    }
    for (int first = 0; first < row; first += kRows) {
        const int end = std::min(row, first + kRows);
        const double* b[kRows];
        for (int k = first; k < end; ++k) {
            b[k - first] = packed + RowStart(k);
        }
        TakeElements(packed, row, first, end, taken);
        AddRowsProduct(end - first, a, b, 0, first, c);
        for (int q = 0; q < kTileRows; ++q) {
            for (int k = first; k < end; ++k) {
                AddMultiple(k + 1 - first, taken[q][k - first], b[k - first] + first, c[q] + first);
            }
        }
    }
}

// Row i of the inverse from its sums over the columns before first: -1/L(i,i) times the sum of L(i,k) times row k of
// the inverse, k < i. Element k of row i is spent before it turns into a sum.
void FinishInverseRow(double* packed, int i, int first) {
    double* row = packed + RowStart(i);
    const bool isZero = row[i] == 0.0;
    for (int k = first; k < i; ++k) {
        const double* inverse = packed + RowStart(k);
        const double factor = row[k];
        row[k] = 0.0;
        if (inverse[k] != 0.0) {
            AddMultiple(k + 1, factor, inverse, row);
        }
    }
    if (isZero) {
        std::fill(row, row + i, 0.0);
        return;
    }
    row[i] = 1.0 / row[i];
    for (int k = 0; k < i; ++k) {
        row[k] *= -row[i];
    }
}

}  // namespace

void Invert(double* packed, int n) {
    int i = 0;
    for (; n >= kBlockedOrder && i + kTileRows <= n; i += kTileRows) {
        SumInverseRows(packed, i);
        for (int q = 0; q < kTileRows; ++q) {
            FinishInverseRow(packed, i + q, i);
        }
    }
    for (; i < n; ++i) {
        FinishInverseRow(packed, i, 0);
    }
}

namespace {

// Rows first .. end-1 add L(k,i) L(k,j) to every element (i, j) above them.
void AddProductsAbove(double* packed, int first, int end) {
    const double* b[kRows];
    for (int k = first; k < end; ++k) {
        b[k - first] = packed + RowStart(k);
    }
    for (int column = 0; column < first; column += kRows) {
        int i = column;
        for (; i + kTileRows <= first; i += kTileRows) {
            double gathered[kTileRows][kRows];
            const double* a[kTileRows];
            double* c[kTileRows];
            for (int q = 0; q < kTileRows; ++q) {
                for (int k = 0; k < end - first; ++k) {
                    gathered[q][k] = b[k][i + q];
                }
                a[q] = gathered[q];
                c[q] = packed + RowStart(i + q);
            }
            // As wide as the first row reaches; what the others have more goes one by one.
            const int width = std::min(kRows, i + 1 - column);
            AddRowsProduct(end - first, a, b, column, width, c);
            for (int q = 1; q < kTileRows; ++q) {
                const int more = std::min(kRows, i + q + 1 - column) - width;
                for (int k = 0; k < end - first; ++k) {
                    AddMultiple(more, a[q][k], b[k] + column + width, c[q] + column + width);
                }
            }
        }
        for (; i < first; ++i) {
            for (int k = 0; k < end - first; ++k) {
                AddMultiple(std::min(kRows, i + 1 - column), b[k][i], b[k] + column, packed + RowStart(i) + column);
            }
        }
    }
}

}  // namespace

// By blocks of rows: they add their products to the rows above, then row i of the block becomes the sum of L(k,i) times
// row k over the rest of the block.
void MultiplyTransposedByItself(double* packed, int n) {
    for (int first = 0; first < n; first += kRows) {
        const int end = std::min(n, first + kRows);
        AddProductsAbove(packed, first, end);
        for (int i = first; i < end; ++i) {
            double* row = packed + RowStart(i);
            const double diagonal = row[i];
            for (int j = 0; j <= i; ++j) {
                row[j] *= diagonal;
            }
            for (int k = i + 1; k < end; ++k) {
                const double* other = packed + RowStart(k);
                AddMultiple(i + 1, other[i], other, row);
            }
        }
    }
}

// From the last row up and in each row from the diagonal down, so that every element still finds its operands.
void MultiplyByTransposed(double* packed, int n) {
    for (int i = n - 1; i >= 0; --i) {
        double* row = packed + RowStart(i);
        for (int j = i; j >= 0; --j) {
            row[j] = DotByFours(j + 1, row, packed + RowStart(j));
        }
    }
}

}  // namespace KwMath_930::packed_cholesky
