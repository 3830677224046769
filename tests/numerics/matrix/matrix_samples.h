// Sample matrices of every kind, and naive arithmetic on plain two-dimensional copies to compare with.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

#include "numerics/matrix/KwRectMatrix.h"
#include "numerics/matrix/KwSparseRectMatrix.h"
#include "numerics/matrix/KwSymBlockDiagMatrix.h"
#include "numerics/matrix/KwSymMatrix.h"
#include "tests/numerics/matrix/symmetric_samples.h"

namespace matrix_samples {

using symmetric_samples::RandomMatrix;
using symmetric_samples::RandomVector;
using Square = symmetric_samples::Square;
using Vector = std::vector<double>;

/// A matrix of another dynamic type, so that members read it through its virtual operations.
class OtherSym : public KwMath_930::KwSymMatrix {
public:
    using KwSymMatrix::KwSymMatrix;
    explicit OtherSym(const KwSymMatrix& matrix) : KwSymMatrix(matrix) {}
};
class OtherRect : public KwMath_930::KwRectMatrix {
public:
    using KwRectMatrix::KwRectMatrix;
    explicit OtherRect(const KwRectMatrix& matrix) : KwRectMatrix(matrix) {}
};

inline KwMath_930::KwRectMatrix RandomRect(int nRows, int nCols, unsigned seed) {
    KwMath_930::KwRectMatrix matrix(nRows, nCols, true);
    matrix.AsVector() = RandomVector(nRows * nCols, seed);
    return matrix;
}

/// R^T R + n I: well conditioned.
inline KwMath_930::KwSymMatrix PositiveDefinite(int order, unsigned seed, double scale = 1.0) {
    KwMath_930::KwSymMatrix matrix;
    matrix.ComputeRTransByR(RandomRect(order + 3, order, seed));
    matrix.AddToDiagonal(order);
    matrix.MultiplyByNumber(scale);
    return matrix;
}

/// About half of the elements are 0, and every third row.
inline KwMath_930::KwSparseRectMatrix RandomSparse(int nRows, int nCols, unsigned seed) {
    KwMath_930::KwSparseRectMatrix matrix(nRows, nCols);
    const Vector values = RandomVector(nRows * nCols, seed);
    for (int i = 0; i < nRows; ++i) {
        for (int j = nCols - 1; j >= 0; --j) {
            const double value = values[static_cast<std::size_t>(i * nCols + j)];
            if (i % 3 != 2 && value > 0.5) {
                matrix.SetElem(i, j, value);
            }
        }
    }
    return matrix;
}

/// Blocks of sizes 1, 2, 3, 1, 2, .. until the order is reached, every other one diagonal.
inline KwMath_930::KwSymBlockDiagMatrix RandomBlocks(int order, unsigned seed) {
    std::vector<int> sizes;
    for (int rows = 0; rows < order; rows += sizes.back()) {
        sizes.push_back(std::min(static_cast<int>(sizes.size() % 3) + 1, order - rows));
    }
    KwMath_930::KwBitSet isDiagonal(static_cast<int>(sizes.size()));
    for (int k = 1; k < isDiagonal.Size(); k += 2) {
        isDiagonal.Set(k, true);
    }
    KwMath_930::KwSymBlockDiagMatrix matrix(sizes, isDiagonal);
    const KwMath_930::KwSymMatrix values = RandomMatrix(order, seed);
    for (int i = 0; i < order; ++i) {
        int first = 0;
        matrix.GetIndexFirstInRow(i, first);
        for (int j = first; j <= i; ++j) {
            matrix.SetElem(i, j, values.GetElem(i, j));
        }
    }
    return matrix;
}

/// Symmetric operands of the order: dense, of a derived type, block-diagonal.
inline std::vector<std::unique_ptr<KwMath_930::IKwSymMatrix>> SymOfEveryKind(int order, unsigned seed) {
    std::vector<std::unique_ptr<KwMath_930::IKwSymMatrix>> kinds;
    kinds.push_back(std::make_unique<KwMath_930::KwSymMatrix>(RandomMatrix(order, seed)));
    kinds.push_back(std::make_unique<OtherSym>(RandomMatrix(order, seed)));
    kinds.push_back(std::make_unique<KwMath_930::KwSymBlockDiagMatrix>(RandomBlocks(order, seed)));
    return kinds;
}

/// Rectangular operands of the size: dense, of a derived type, sparse.
inline std::vector<std::unique_ptr<KwMath_930::IKwRectMatrix>> RectOfEveryKind(int nRows, int nCols, unsigned seed) {
    std::vector<std::unique_ptr<KwMath_930::IKwRectMatrix>> kinds;
    kinds.push_back(std::make_unique<KwMath_930::KwRectMatrix>(RandomRect(nRows, nCols, seed)));
    kinds.push_back(std::make_unique<OtherRect>(RandomRect(nRows, nCols, seed)));
    kinds.push_back(std::make_unique<KwMath_930::KwSparseRectMatrix>(RandomSparse(nRows, nCols, seed)));
    return kinds;
}

inline Square ZeroSquare(int nRows, int nCols) {
    return Square(static_cast<std::size_t>(nRows), Vector(static_cast<std::size_t>(nCols)));
}

/// The elements of a matrix, one by one through the interface.
inline Square Full(const KwMath_930::IKwSymMatrix& matrix) {
    Square full = ZeroSquare(std::max(matrix.GetNRows(), 0), std::max(matrix.GetNRows(), 0));
    for (std::size_t i = 0; i < full.size(); ++i) {
        for (std::size_t j = 0; j < full.size(); ++j) {
            full[i][j] = matrix.GetElem(static_cast<int>(i), static_cast<int>(j));
        }
    }
    return full;
}
inline Square Full(const KwMath_930::IKwRectMatrix& matrix) {
    Square full = ZeroSquare(std::max(matrix.GetNRows(), 0), std::max(matrix.GetNCols(), 0));
    for (std::size_t i = 0; i < full.size(); ++i) {
        for (std::size_t j = 0; j < full[i].size(); ++j) {
            full[i][j] = matrix.GetElem(static_cast<int>(i), static_cast<int>(j));
        }
    }
    return full;
}

inline Square Lower(Square square) {
    for (std::size_t i = 0; i < square.size(); ++i) {
        std::fill(square[i].begin() + static_cast<std::ptrdiff_t>(i) + 1, square[i].end(), 0.0);
    }
    return square;
}

/// nCols says the width of an empty matrix.
inline Square Transposed(const Square& a, int nCols) {
    Square transposed = ZeroSquare(nCols, static_cast<int>(a.size()));
    for (std::size_t i = 0; i < a.size(); ++i) {
        for (std::size_t j = 0; j < a[i].size(); ++j) {
            transposed[j][i] = a[i][j];
        }
    }
    return transposed;
}
inline Square Transposed(const Square& a) {
    return Transposed(a, a.empty() ? 0 : static_cast<int>(a[0].size()));
}

/// A B; nCols says the width of B.
inline Square Times(const Square& a, const Square& b, int nCols) {
    Square product = ZeroSquare(static_cast<int>(a.size()), nCols);
    for (std::size_t i = 0; i < a.size(); ++i) {
        for (std::size_t j = 0; j < product[i].size(); ++j) {
            for (std::size_t k = 0; k < b.size(); ++k) {
                product[i][j] += a[i][k] * b[k][j];
            }
        }
    }
    return product;
}
inline Square Times(const Square& a, const Square& b) {
    return Times(a, b, b.empty() ? 0 : static_cast<int>(b[0].size()));
}

inline Vector Times(const Square& a, const Vector& v) {
    Vector product(a.size());
    for (std::size_t i = 0; i < a.size(); ++i) {
        for (std::size_t k = 0; k < a[i].size(); ++k) {
            product[i] += a[i][k] * v[k];
        }
    }
    return product;
}

inline double Dot(const Vector& v, const Vector& w) {
    double sum = 0.0;
    for (std::size_t k = 0; k < v.size(); ++k) {
        sum += v[k] * w[k];
    }
    return sum;
}

inline double Trace(const Square& a) {
    double sum = 0.0;
    for (std::size_t k = 0; k < a.size(); ++k) {
        sum += a[k][k];
    }
    return sum;
}

inline double Largest(const Square& a) {
    double largest = 0.0;
    for (const Vector& row : a) {
        for (const double element : row) {
            largest = std::max(largest, std::abs(element));
        }
    }
    return largest;
}

/// Sums of n products in another order differ by at most about n rounding errors of the sum of the absolute products;
/// relative to the largest element, 64 n eps leaves room for the cancellation of these samples.
inline double Tolerance(const Square& expected, int n = 8) {
    return 64.0 * 2.3e-16 * n * std::max(1.0, Largest(expected));
}

/// Compares the lower triangles only where lower is true.
inline void ExpectNear(const Square& actual, const Square& expected, bool lower = false, double factor = 1.0) {
    ASSERT_EQ(actual.size(), expected.size());
    const double tolerance = factor * Tolerance(expected, std::max(8, static_cast<int>(expected.size())));
    for (std::size_t i = 0; i < expected.size(); ++i) {
        ASSERT_EQ(actual[i].size(), expected[i].size());
        for (std::size_t j = 0; j < (lower ? i + 1 : expected[i].size()); ++j) {
            ASSERT_NEAR(actual[i][j], expected[i][j], tolerance) << i << ", " << j;
        }
    }
}

inline void ExpectNear(const Vector& actual, const Vector& expected) {
    ExpectNear(Square{actual}, Square{expected});
}

inline void ExpectNear(double actual, double expected, double scale = 1.0) {
    EXPECT_NEAR(actual, expected, 64.0 * 2.3e-16 * 40 * std::max(scale, std::abs(expected)));
}

}  // namespace matrix_samples
