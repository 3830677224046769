// Numbers of about 106 bits as unevaluated sums of two doubles: what the exponents of the distributions are computed
// in, so that exp of them keeps its relative accuracy far out in a tail. Operands stay below 1e290 (the splitting needs
// it). Source: Dekker, A floating-point technique for extending the available precision, Numer. Math. 18 (1971).
#pragma once

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

inline DoubleDouble operator-(const DoubleDouble& a) {
    return {-a.hi, -a.lo};
}

inline DoubleDouble operator+(const DoubleDouble& a, const DoubleDouble& b) {
    const DoubleDouble high = TwoSum(a.hi, b.hi);
    const DoubleDouble low = TwoSum(a.lo, b.lo);
    const DoubleDouble sum = QuickTwoSum(high.hi, high.lo + low.hi);
    return QuickTwoSum(sum.hi, sum.lo + low.lo);
}

inline DoubleDouble operator-(const DoubleDouble& a, const DoubleDouble& b) {
    return a + -b;
}

inline DoubleDouble operator*(const DoubleDouble& a, const DoubleDouble& b) {
    const DoubleDouble product = TwoProduct(a.hi, b.hi);
    return QuickTwoSum(product.hi, product.lo + (a.hi * b.lo + a.lo * b.hi));
}

// To about 104 bits.
inline DoubleDouble operator/(const DoubleDouble& a, const DoubleDouble& b) {
    const double first = a.hi / b.hi;
    const DoubleDouble rest = a - b * DoubleDouble(first);
    return QuickTwoSum(first, rest.hi / b.hi);
}

// log(x) to about 68 bits for finite x > 0; of what x.hi rounds, x.lo is the rest. Else as std::log(x.hi).
DoubleDouble Log(const DoubleDouble& x);

// u - log(1 + u) to about 66 bits, u > -1; near 0 without cancellation.
DoubleDouble MinusLog1p(const DoubleDouble& u);

// exp(x), rounded about once; 0 below -708.39, where the library's exponentials end, infinite above 709.
double Exp(const DoubleDouble& x);

}  // namespace KwMath_930::detail
