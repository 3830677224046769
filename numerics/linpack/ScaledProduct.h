// A determinant on its way: a product kept as mantissa times a power of ten. Internal.
#pragma once

#include <cmath>

namespace KwMath_930::linpack {

class ScaledProduct {
public:
    void Negate() { fMantissa = -fMantissa; }

    /// Returns: false when the product has become 0; the exponent then stays.
    bool MultiplyBy(double factor) {
        fMantissa = factor * fMantissa;
        if (fMantissa == 0.0) {
            return false;
        }
        while (std::abs(fMantissa) < 1.0) {
            fMantissa *= 10.0;
            fExponent -= 1.0;
        }
        while (std::abs(fMantissa) >= 10.0 && std::isfinite(fMantissa)) {
            fMantissa /= 10.0;
            fExponent += 1.0;
        }
        return true;
    }

    void StoreTo(double* det) const {
        det[0] = fMantissa;
        det[1] = fExponent;
    }

private:
    double fMantissa = 1.0;
    double fExponent = 0.0;
};

}  // namespace KwMath_930::linpack
