// Logarithm and exponential of pairs of doubles. Test: DoubleDouble_test.cpp.
#include "numerics/distributions/detail/DoubleDouble.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

#include "numerics/distributions/detail/polynomial.h"
#include "numerics/distributions/detail/tables.h"
#include "numerics/power/KwPower.h"

namespace KwMath_930::detail {

namespace {

constexpr double kLog2High = 0x1.62e42fefa3800p-1;  // its last bits are 0: times an exponent it is exact
constexpr double kLog2Low = 0x1.ef35793c76730p-45;
constexpr std::uint64_t kMantissaBits = 0x000fffffffffffff;
constexpr std::uint64_t kHalfBits = 0x3fe0000000000000;
constexpr double kThird[2] = {0x1.5555555555555p-2, 0x1.5555555555555p-56};

// (1/3 - log1p's next terms): log1p(r) = r - r^2/2 + r^3 * this, |r| <= 2^-6.
double CubicTail(double r) {
    static constexpr double kTerms[] = {1.0 / 3, -1.0 / 4, 1.0 / 5, -1.0 / 6, 1.0 / 7, -1.0 / 8, 1.0 / 9, -1.0 / 10};
    return Polynomial(kTerms, r);
}

// 1/4 - u/5 + u^2/6 - ..., |u| <= 2^-5.
double QuarticTail(double u) {
    static constexpr double kTerms[] = {1.0 / 4,  -1.0 / 5,  1.0 / 6,  -1.0 / 7,  1.0 / 8, -1.0 / 9,
                                        1.0 / 10, -1.0 / 11, 1.0 / 12, -1.0 / 13, 1.0 / 14};
    return Polynomial(kTerms, u);
}

// log of a mantissa m in [sqrt(1/2), sqrt(2)), of which low is the rest: a short reciprocal c brings m c near 1
// exactly, and log m = log1p(m c - 1) - log c.
DoubleDouble LogMantissa(double m, double low) {
    const int slice = static_cast<int>(m * 128.0) - 90;
    const double c = kShortReciprocal[slice];
    const double top = TopHalf(m);
    const DoubleDouble exact = TwoSum(top * c - 1.0, (m - top) * c);
    const DoubleDouble r = QuickTwoSum(exact.hi, exact.lo + low * c);
    const DoubleDouble square = Square(r);
    const double cubic = square.hi * r.hi * CubicTail(r.hi);
    const DoubleDouble log1p = QuickTwoSum(r.hi, -0.5 * square.hi);
    const DoubleDouble log = TwoSum(kLogReciprocalHigh[slice], log1p.hi);
    const double rest = kLogReciprocalLow[slice] + (log1p.lo + (r.lo - 0.5 * square.lo));
    return QuickTwoSum(log.hi, log.lo + (rest + cubic));
}

// 2^n for -1022 <= n <= 1023.
double PowerOfTwo(int n) {
    return std::bit_cast<double>(static_cast<std::uint64_t>(n + 1023) << 52);
}

}  // namespace

DoubleDouble Log(DoubleDouble x) {
    if (!(x.hi > 0.0) || std::isinf(x.hi)) {
        return std::log(x.hi);
    }
    if (x.hi < 0x1p-960) {
        return Log({x.hi * 0x1p120, x.lo * 0x1p120}) + DoubleDouble(-120 * kLog2High, -120 * kLog2Low);
    }
    const auto bits = std::bit_cast<std::uint64_t>(x.hi);
    int exponent = static_cast<int>(bits >> 52) - 1022;  // of a mantissa in [1/2, 1)
    double mantissa = std::bit_cast<double>((bits & kMantissaBits) | kHalfBits);
    if (mantissa < 0.70710678118654752) {
        mantissa *= 2.0;
        --exponent;
    }
    const double low = x.lo == 0.0 ? 0.0 : x.lo * PowerOfTwo(std::max(-exponent, -1022));
    const DoubleDouble log = LogMantissa(mantissa, low);
    return exponent == 0 ? log : DoubleDouble(exponent * kLog2High, exponent * kLog2Low) + log;
}

DoubleDouble MinusLog1p(DoubleDouble u) {
    if (std::abs(u.hi) > 0.03125) {
        return u - Log(DoubleDouble(1.0) + u);
    }
    // u^2 (1/2 - u/3 + u^2/4 - ...): the first two terms in full, the rest in double.
    const DoubleDouble inner = QuickTwoSum(kThird[0], kThird[1] - u.hi * QuarticTail(u.hi));
    const DoubleDouble slope = u * inner;
    const DoubleDouble bracket = QuickTwoSum(0.5, -slope.hi);
    return Square(u) * DoubleDouble(bracket.hi, bracket.lo - slope.lo);
}

double MinusLog1pRest(double u) {
    return kThird[0] - u * QuarticTail(u);
}

double Exp(DoubleDouble x) {
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
