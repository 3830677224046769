// Householder transformations as LINPACK keeps them: I - u u^T / u[0], u scaled so that u[0] lies between 1 and 2.
// Internal.
#pragma once

#include <cmath>
#include <cstddef>

#include "numerics/blas1/Blas1.h"
#include "numerics/linpack/inner_products.h"

namespace KwMath_930::linpack {

/// A plain sum of squares between these has lost nothing to the range of double.
constexpr double kSmallestSafeSum = 1e-280;
constexpr double kLargestSafeSum = 1e280;

/// Returns: the Euclidean norm; by a plain sum of squares where that is safe, else by the scaled one.
inline double Norm(int n, double* x) {
    const double sum = Dot(n, x, x);
    if (sum > kSmallestSafeSum && sum < kLargestSafeSum) {
        return std::sqrt(sum);
    }
    return Blas1::DNrm2(n, x, 1);
}

/// Turns x into the vector u of the transformation that maps x to a multiple of the first unit vector.
/// Returns: minus that multiple, with the sign of x[0]; 0 for a zero x, which stays.
inline double MakeHouseholder(int n, double* x) {
    double norm = Norm(n, x);
    if (norm == 0.0) {
        return 0.0;
    }
    if (x[0] != 0.0) {
        norm = std::copysign(norm, x[0]);
    }
    Blas1::DScal(n, 1.0 / norm, x, 1);
    x[0] += 1.0;
    return norm;
}

/// y := the transformation of y.
inline void Reflect(int n, double* u, double* y) {
    AddScaled(n, -Dot(n, u, y) / u[0], u, y);
}

}  // namespace KwMath_930::linpack
