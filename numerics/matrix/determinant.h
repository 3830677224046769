// Determinants as two doubles: det[0] * 10^det[1]. Internal.
#pragma once

#include <cmath>

namespace KwMath_930 {

/// Brings det[0] into 1 <= |det[0]| < 10 without changing the value; 0, NaN and infinity stay.
inline void NormaliseDeterminant(double* det) {
    if (det[0] == 0.0 || !std::isfinite(det[0])) {
        return;
    }
    while (std::abs(det[0]) < 1.0) {
        det[0] *= 10.0;
        det[1] -= 1.0;
    }
    while (std::abs(det[0]) >= 10.0) {
        det[0] /= 10.0;
        det[1] += 1.0;
    }
}

/// Squares a normalised determinant.
inline void SquareDeterminant(double* det) {
    det[0] *= det[0];
    det[1] *= 2.0;
    NormaliseDeterminant(det);
}

}  // namespace KwMath_930
