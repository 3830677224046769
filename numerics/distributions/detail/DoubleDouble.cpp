// Logarithm and exponential of pairs of doubles. Test: DoubleDouble_test.cpp.
#include "numerics/distributions/detail/DoubleDouble.h"

#include <cmath>
#include <limits>

#include "numerics/distributions/detail/polynomial.h"
#include "numerics/distributions/detail/tables.h"
#include "numerics/power/KwPower.h"

namespace KwMath_930::detail {

namespace {

constexpr double kLog2High = 0x1.62e42fefa3800p-1;  // its last bits are 0: times an exponent it is exact
constexpr double kLog2Low = 0x1.ef35793c76730p-45;
constexpr double kThird[2] = {0x1.5555555555555p-2, 0x1.5555555555555p-56};

// (1/3 - log1p's next terms): log1p(r) = r - r^2/2 + r^3 * this, |r| <= 2^-6.
double CubicTail(double r) {
    static constexpr double kTerms[] = {1.0 / 3, -1.0 / 4, 1.0 / 5, -1.0 / 6, 1.0 / 7, -1.0 / 8, 1.0 / 9, -1.0 / 10};
    return Polynomial(kTerms, r);
}

// log of a mantissa m in [sqrt(1/2), sqrt(2)): a short reciprocal c brings m c near 1 exactly, and log m = log1p(m c -
// 1) - log c.
DoubleDouble LogMantissa(double m, double low) {
    const int slice = static_cast<int>(m * 128.0) - 90;
    const double c = kShortReciprocal[slice];
    const DoubleDouble product = TwoProduct(m, c);
    const DoubleDouble r = TwoSum(product.hi - 1.0, product.lo + low * c);
    const DoubleDouble square = r * r;
    const double cubic = square.hi * r.hi * CubicTail(r.hi);
    const DoubleDouble log1p = r + (DoubleDouble(-0.5 * square.hi, -0.5 * square.lo) + DoubleDouble(cubic));
    return DoubleDouble(kLogReciprocalHigh[slice], kLogReciprocalLow[slice]) + log1p;
}

}  // namespace

DoubleDouble Log(const DoubleDouble& x) {
    if (!(x.hi > 0.0) || std::isinf(x.hi)) {
        return std::log(x.hi);
    }
    int exponent = 0;
    double mantissa = std::frexp(x.hi, &exponent);
    if (mantissa < 0.70710678118654752) {
        mantissa *= 2.0;
        --exponent;
    }
    const double low = x.lo == 0.0 ? 0.0 : std::ldexp(x.lo, -exponent);
    const DoubleDouble log = LogMantissa(mantissa, low);
    if (exponent == 0) {
        return log;
    }
    return DoubleDouble(exponent * kLog2High, exponent * kLog2Low) + log;
}

DoubleDouble MinusLog1p(const DoubleDouble& u) {
    if (std::abs(u.hi) > 0.03125) {
        return u - Log(DoubleDouble(1.0) + u);
    }
    // u^2 (1/2 - u/3 + u^2/4 - u^3 (1/5 - ...)): the first three terms in full, the rest in double.
    static constexpr double kTerms[] = {1.0 / 5,   -1.0 / 6, 1.0 / 7,   -1.0 / 8, 1.0 / 9,
                                        -1.0 / 10, 1.0 / 11, -1.0 / 12, 1.0 / 13, -1.0 / 14};
    const DoubleDouble third(kThird[0], kThird[1]);
    const DoubleDouble inner = DoubleDouble(0.25) - DoubleDouble(u.hi * Polynomial(kTerms, u.hi));
    return u * u * (DoubleDouble(0.5) - u * (third - u * inner));
}

double Exp(const DoubleDouble& x) {
    if (KwPower::ExpUnderflow(x.hi)) {
        return 0.0;
    }
    if (KwPower::ExpOverflow(x.hi)) {
        return std::numeric_limits<double>::infinity();
    }
    const double leading = std::exp(x.hi);
    return leading + leading * x.lo;
}

}  // namespace KwMath_930::detail
