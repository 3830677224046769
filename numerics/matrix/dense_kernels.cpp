// Matrix products by rows: four rows of B are added to a row of C in one pass. Test:
// KwRectMatrix_products_test.cpp.
#include "numerics/matrix/dense_kernels.h"

#include <algorithm>

#include "numerics/matrix/matrix_operand.h"
#include "numerics/matrix/packed_triangle.h"

namespace KwMath_930::dense_kernels {

void AddProduct(int m, int n, int k, const double* a, std::size_t lda, const double* b, std::size_t ldb, double* c,
                std::size_t ldc) {
    for (int i = 0; i < m; ++i) {
        const double* rowA = a + static_cast<std::size_t>(i) * lda;
        double* rowC = c + static_cast<std::size_t>(i) * ldc;
        int p = 0;
        for (; p + 4 <= k; p += 4) {
            const double* b0 = b + static_cast<std::size_t>(p) * ldb;
            const double* b1 = b0 + ldb;
            const double* b2 = b1 + ldb;
            const double* b3 = b2 + ldb;
            for (int j = 0; j < n; ++j) {
                rowC[j] =
                    (((rowC[j] + rowA[p] * b0[j]) + rowA[p + 1] * b1[j]) + rowA[p + 2] * b2[j]) + rowA[p + 3] * b3[j];
            }
        }
        for (; p < k; ++p) {
            AddMultiple(n, rowA[p], b + static_cast<std::size_t>(p) * ldb, rowC);
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
