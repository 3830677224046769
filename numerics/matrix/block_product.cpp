// Product of the blocks with plain rows: each stored element serves for itself and for its mirror, so that the terms of
// every row come from left to right. Test: KwSymBlockDiagMatrix_test.cpp.
#include "numerics/matrix/block_product.h"

#include <cmath>
#include <cstddef>

#include "numerics/matrix/dense_kernels.h"
#include "numerics/matrix/matrix_operand.h"

namespace KwMath_930 {

namespace {

// Adds 0 times the element (k, column) of R to the rows whose element k is not stored.
void AddUnstoredTerms(const KwSymBlockDiagMatrix& b, int k, double element, double* column, std::ptrdiff_t ld) {
    for (int i = 0; i < b.GetNRows(); ++i) {
        int first = 0;
        b.GetIndexFirstInRow(i > k ? i : k, first);
        if (first > (i < k ? i : k)) {
            column[i * ld] += 0.0 * element;
        }
    }
}

}  // namespace

std::vector<double> BlockProduct(const KwSymBlockDiagMatrix& b, int nCols, const double* r) {
    std::vector<double> product = ZeroRows(b.GetNRows(), nCols);
    const auto ld = static_cast<std::ptrdiff_t>(nCols);
    for (int i = 0; !product.empty() && i < b.GetNRows(); ++i) {
        int first = 0;
        const double* run = nullptr;
        b.GetIndexFirstInRow(i, first, run);
        for (int j = first; j <= i; ++j) {
            dense_kernels::AddMultiple(nCols, run[j - first], r + j * ld, product.data() + i * ld);
            if (j < i) {
                dense_kernels::AddMultiple(nCols, run[j - first], r + i * ld, product.data() + j * ld);
            }
        }
    }
    for (int i = 0; !product.empty() && i < b.GetNRows(); ++i) {
        for (int column = 0; column < nCols; ++column) {
            const double element = r[i * ld + column];
            if (!std::isfinite(element)) {
                AddUnstoredTerms(b, i, element, product.data() + column, ld);
            }
        }
    }
    return product;
}

}  // namespace KwMath_930
