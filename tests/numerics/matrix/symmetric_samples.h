// Sample symmetric matrices and vectors for the tests, and their plain two-dimensional copies.
#pragma once

#include <random>
#include <vector>

#include "numerics/matrix/KwSymMatrix.h"

namespace symmetric_samples {

using Square = std::vector<std::vector<double>>;

/// Orders that hit every remainder of an unrolled loop, and some larger ones.
inline const std::vector<int> kOrders = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 17, 40};

inline std::vector<double> RandomVector(int size, unsigned seed) {
    std::mt19937 engine(seed);
    std::uniform_real_distribution<double> value(-3.0, 5.0);
    std::vector<double> v(static_cast<std::size_t>(size));
    for (double& element : v) {
        element = value(engine);
    }
    return v;
}

/// A matrix whose stored elements are the values given, row by row.
inline KwMath_930::KwSymMatrix FromPacked(int order, const std::vector<double>& packed) {
    KwMath_930::KwSymMatrix matrix(order, true);
    matrix.AsVector() = packed;
    return matrix;
}

inline KwMath_930::KwSymMatrix RandomMatrix(int order, unsigned seed) {
    return FromPacked(order, RandomVector(order * (order + 1) / 2, seed));
}

inline std::vector<double> Diagonal(const KwMath_930::KwSymMatrix& matrix) {
    std::vector<double> diagonal;
    matrix.GetDiagonal(diagonal);
    return diagonal;
}

/// The full square, read from the packed storage by the formula i(i+1)/2 + j.
inline Square ToSquare(const KwMath_930::KwSymMatrix& matrix) {
    const auto n = static_cast<std::size_t>(matrix.GetNRows());
    Square square(n, std::vector<double>(n));
    for (std::size_t i = 0; i < n; ++i) {
        for (std::size_t j = 0; j <= i; ++j) {
            square[i][j] = square[j][i] = matrix.AsVectorConst()[i * (i + 1) / 2 + j];
        }
    }
    return square;
}

}  // namespace symmetric_samples
