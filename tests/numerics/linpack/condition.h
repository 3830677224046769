// What a condition estimate must keep to.
#pragma once

#include <gtest/gtest.h>
#include <lapacke.h>

#include "tests/numerics/linpack/Matrix.h"

namespace linpack_samples {

/// 1 / (norm1(A) norm1(inverse of A)), the inverse being LAPACK's; 0 for a matrix that it finds singular.
inline double TrueRcond(const Matrix& a) {
    Matrix inverse = a;
    std::vector<lapack_int> pivots(static_cast<std::size_t>(a.rows));
    if (LAPACKE_dgetrf(LAPACK_COL_MAJOR, a.rows, a.rows, inverse.values.data(), a.rows, pivots.data()) != 0) {
        return 0.0;
    }
    LAPACKE_dgetri(LAPACK_COL_MAJOR, a.rows, inverse.values.data(), a.rows, pivots.data());
    return 1.0 / (Norm1(a) * Norm1(inverse));
}

/// The estimate is never below the true value, up to rounding, and z is a null vector as near as rcond says; the factor
/// is the largest that the publication reports for well and ill conditioned matrices of many kinds.
inline void ExpectCondition(const Matrix& a, double rcond, const Vector& z) {
    constexpr double kKnownFactor = 10.0;
    const double exact = TrueRcond(a);
    const double rounding = 100.0 * a.rows * kEps;
    EXPECT_GE(rcond, exact * (1.0 - 1e-6) - rounding * exact);
    EXPECT_LE(rcond, kKnownFactor * exact + rounding) << "true " << exact;
    EXPECT_NEAR(Norm1(z), 1.0, rounding);
    EXPECT_NEAR(Norm1(a * z), rcond * Norm1(a) * Norm1(z), rounding * Norm1(a) * Norm1(z));
}

}  // namespace linpack_samples
