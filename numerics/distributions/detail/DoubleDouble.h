// Numbers of about 106 bits as unevaluated sums of two doubles: what the exponents of the distributions are computed
// in, so that exp of them keeps its relative accuracy far out in a tail. Operands stay below 1e290 (the splitting needs
// it). Source: Dekker, A floating-point technique for extending the available precision, Numer. Math. 18 (1971).
#pragma once

#include <bit>
#include <cstdint>

namespace KwMath_930::detail {

struct DoubleDouble {
    double hi = 0.0;
    double lo = 0.0;

    DoubleDouble() = default;
    DoubleDouble(double high, double low = 0.0) : hi(high), lo(low) {}
    double Value() const { return hi + lo; }
};

// a + b exactly.
inline DoubleDouble TwoSum(double a, double b) {
    const double sum = a + b;
    const double part = sum - a;
    return {sum, (a - (sum - part)) + (b - part)};
}

// a + b exactly, for |a| >= |b|.
inline DoubleDouble QuickTwoSum(double a, double b) {
    const double sum = a + b;
    return {sum, b - (sum - a)};
}

// The upper 26 bits of the mantissa: the square of it, or its product with another, is exact.
inline double TopHalf(double a) {
    return std::bit_cast<double>(std::bit_cast<std::uint64_t>(a) & 0xfffffffff8000000);
}

// a * b exactly.
inline DoubleDouble TwoProduct(double a, double b) {
    constexpr double kSplitter = 134217729.0;  // 2^27 + 1
    const double product = a * b;
    const double scaledA = kSplitter * a;
    const double scaledB = kSplitter * b;
    const double highA = scaledA - (scaledA - a);
    const double highB = scaledB - (scaledB - b);
    const double lowA = a - highA;
    const double lowB = b - highB;
    return {product, ((highA * highB - product) + highA * lowB + lowA * highB) + lowA * lowB};
}

// a * a exactly.
inline DoubleDouble TwoSquare(double a) {
    constexpr double kSplitter = 134217729.0;
    const double square = a * a;
    const double scaled = kSplitter * a;
    const double high = scaled - (scaled - a);
    const double low = a - high;
    return {square, ((high * high - square) + 2.0 * high * low) + low * low};
}

// The operations below are for the most part bound by their latency: they take their operands in registers, and leave
// an error of some 2^-104 of the larger operand.

inline DoubleDouble operator-(DoubleDouble a) {
    return {-a.hi, -a.lo};
}

inline DoubleDouble operator+(DoubleDouble a, DoubleDouble b) {
    const DoubleDouble sum = TwoSum(a.hi, b.hi);
    return QuickTwoSum(sum.hi, sum.lo + (a.lo + b.lo));
}

inline DoubleDouble operator-(DoubleDouble a, DoubleDouble b) {
    return a + -b;
}

inline DoubleDouble operator*(DoubleDouble a, DoubleDouble b) {
    const DoubleDouble product = TwoProduct(a.hi, b.hi);
    return QuickTwoSum(product.hi, product.lo + (a.hi * b.lo + a.lo * b.hi));
}

inline DoubleDouble Square(DoubleDouble a) {
    const DoubleDouble square = TwoSquare(a.hi);
    return QuickTwoSum(square.hi, square.lo + 2.0 * (a.hi * a.lo));
}

inline DoubleDouble operator/(DoubleDouble a, DoubleDouble b) {
    const double first = a.hi / b.hi;
    const DoubleDouble product = TwoProduct(first, b.hi);
    const double rest = ((a.hi - product.hi) - product.lo) + (a.lo - first * b.lo);
    return QuickTwoSum(first, rest / b.hi);
}

// log(x) to about 68 bits for finite x > 0; of what x.hi rounds, x.lo is the rest. Else as std::log(x.hi).
DoubleDouble Log(DoubleDouble x);

// u - log(1 + u) to about 66 bits, u > -1; near 0 without cancellation.
DoubleDouble MinusLog1p(DoubleDouble u);

// 1/3 - u/4 + u^2/5 - ..., so that u - log(1 + u) = u^2 (1/2 - u times this); |u| <= 1/32.
double MinusLog1pRest(double u);

// exp(x), rounded about once; 0 below -708.39, where the library's exponentials end, infinite above 709.
double Exp(DoubleDouble x);

}  // namespace KwMath_930::detail
