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

constexpr int kBlockedOrder = 48;  // from here on by blocks
constexpr int kColumns = 16;       // of a block of the factorisation
constexpr int kDepth = 128;        // of its products, that a gathered panel of 16 KB holds
constexpr int kRows = 64;          // of a block of the other algorithms

// Takes the products of the columns before first out of the elements (row, first ..) of the rows from first + kColumns
// on: L(i, j) loses the sum of L(i, p) L(j, p), p < first.
void UpdateBelow(double* packed, int n, int first) {
    const TileKernel addTile = FastestTileKernel();
    double panel[kDepth * kColumns];
    const double* panelRows[kDepth];
    for (int depth = 0; depth < first; depth += kDepth) {
        const int count = std::min(kDepth, first - depth);
        for (int j = 0; j < kColumns; ++j) {
            const double* row = packed + RowStart(first + j) + depth;
            for (int p = 0; p < count; ++p) {
                panel[p * kColumns + j] = row[p];
            }
        }
        for (int p = 0; p < count; ++p) {
            panelRows[p] = panel + p * kColumns;
        }
        int i = first + kColumns;
        for (; i + kTileRows <= n; i += kTileRows) {
            const double* a[kTileRows];
            double* c[kTileRows];
            for (int column = 0; column < kColumns; column += kTileCols) {
                for (int q = 0; q < kTileRows; ++q) {
                    a[q] = packed + RowStart(i + q) + depth;
                    c[q] = packed + RowStart(i + q) + first + column;
                }
                addTile(count, a, panelRows, column, -1.0, c);
            }
        }
        for (; i < n; ++i) {
            double* row = packed + RowStart(i);
            for (int j = first; j < first + kColumns; ++j) {
                row[j] -= DotByFours(count, row + depth, packed + RowStart(j) + depth);
            }
        }
    }
}

// Row-wise factorisation of the columns first .. end-1, of which all products with columns before first are out.
int FactorColumns(double* packed, int n, int first, int end, const double* ref, double tol, KwBitSet* zeros,
                  int firstBit) {
    int zeroPivots = 0;
    for (int k = first; k < n; ++k) {
        double* row = packed + RowStart(k) + first;
        for (int j = first; j < std::min(k, end); ++j) {
            const double* other = packed + RowStart(j) + first;
            const int length = j - first;
            const double sum = DotByFours(length, row, other);
            row[length] = other[length] != 0.0 ? (row[length] - sum) / other[length] : 0.0;
        }
        if (k < end) {
            const double pivot = row[k - first] - DotByFours(k - first, row, row);
            const bool isKept = pivot > tol * ref[k];
            row[k - first] = isKept ? std::sqrt(pivot) : 0.0;
            zeroPivots += isKept ? 0 : 1;
            if (!isKept && zeros != nullptr) {
                zeros->Set(firstBit + k, true);
            }
        }
    }
    return zeroPivots;
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
    if (n < kBlockedOrder) {
        return FactorColumns(packed, n, 0, n, ref, tol, zeros, firstBit);
    }
    int zeroPivots = 0;
    for (int first = 0; first < n; first += kColumns) {
        const int end = std::min(n, first + kColumns);
        for (int i = first; i < end; ++i) {
            double* row = packed + RowStart(i);
            for (int j = first; j <= i; ++j) {
                row[j] -= DotByFours(first, row, packed + RowStart(j));
            }
        }
        if (end < n) {
            UpdateBelow(packed, n, first);
        }
        zeroPivots += FactorColumns(packed, n, first, end, ref, tol, zeros, firstBit);
    }
    return zeroPivots;
}

void SolveForward(const double* packed, int n, double* x) {
    for (int k = 0; k < n; ++k) {
        const double* row = packed + RowStart(k);
        x[k] = row[k] != 0.0 ? (x[k] - DotByFours(k, row, x)) / row[k] : 0.0;
    }
}

// Each element, once known, is taken out of those before it.
void SolveBackward(const double* packed, int n, double* x) {
    for (int k = n - 1; k >= 0; --k) {
        const double* row = packed + RowStart(k);
        x[k] = row[k] != 0.0 ? x[k] / row[k] : 0.0;
        AddMultiple(k, -x[k], row, x);
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
