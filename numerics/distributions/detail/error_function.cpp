// erf by a polynomial in x^2 near 0, erfc by exp(-x^2) times a table of exp(x^2) erfc(x) in t = 4/(4+x).
// Test: KwDistFun_normal_test.cpp.
#include "numerics/distributions/detail/error_function.h"

#include <cmath>

#include "numerics/distributions/detail/DoubleDouble.h"
#include "numerics/distributions/detail/polynomial.h"
#include "numerics/distributions/detail/tables.h"
#include "numerics/power/KwPower.h"

namespace KwMath_930::detail {

namespace {

constexpr double kErfcEnd = 27.3;   // beyond it erfc is 0 in double precision
constexpr double kErfcFrom = -6.0;  // and before it 2
constexpr double kInverseRootPi = 0.5641895835477563;

// exp(-(hi + lo)) for a square that DoubleDouble holds.
double ExpOfMinus(DoubleDouble square) {
    if (KwPower::ExpUnderflow(-square.hi)) {
        return 0.0;
    }
    const double leading = std::exp(-square.hi);
    return leading - leading * square.lo;
}

}  // namespace

double ScaledErfc(double x) {
    if (x > 1e8) {
        return kInverseRootPi / x;
    }
    const double t = 4.0 / (4.0 + x);
    const double scaled = 16.0 * t;
    const int slice = t < 1.0 ? static_cast<int>(scaled) : 15;
    return t * Polynomial(kScaledErfc[slice], (scaled - slice) - 0.5);
}

double Erfc(double x) {
    if (std::abs(x) < 0.5) {
        return 1.0 - Erf(x);
    }
    if (x > kErfcEnd || x < kErfcFrom) {
        return x > 0.0 ? 0.0 : 2.0;
    }
    const double magnitude = std::abs(x);
    const double tail = ExpOfMinus(TwoProduct(x, x)) * ScaledErfc(magnitude);
    return x > 0.0 ? tail : 2.0 - tail;
}

double Erf(double x) {
    const double magnitude = std::abs(x);
    if (magnitude < 1.0) {
        return x * Polynomial(kErf, x * x);
    }
    const double value = magnitude < 6.0 ? 1.0 - Erfc(magnitude) : 1.0;
    return x > 0.0 ? value : -value;
}

}  // namespace KwMath_930::detail
