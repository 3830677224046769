// Square root of a signed sum of two scaled squares. Test: KwExtremeNum_test.cpp.
#include "numerics/power/KwExtremeNum.h"

#include <cmath>
#include <numbers>

namespace KwMath_930 {

namespace {

// larger * sqrt(1 + sign * (smaller / larger)^2)
double ScaledRoot(double larger, double smaller, double sign) {
    const double ratio = smaller / larger;
    return larger * std::sqrt(1.0 + sign * (ratio * ratio));
}

// sqrt(p^2 + q^2) for p, q >= 0; NaN when one of them is NaN.
double RootOfSum(double p, double q) {
    if (p > q) {
        return ScaledRoot(p, q, 1.0);
    }
    if (q > p) {
        return ScaledRoot(q, p, 1.0);
    }
    return p == q ? std::numbers::sqrt2 * p : p + q;
}

// sqrt(p^2 - q^2) for p >= q >= 0; NaN when one of them is NaN.
double RootOfDifference(double p, double q) {
    if (p > q) {
        return ScaledRoot(p, q, -1.0);
    }
    return p == q ? 0.0 : p + q;
}

}  // namespace

bool KwExtremeNum::SumSqRoot(double a, double b, double c, double d, double& result) {
    const double p = std::abs(a) * std::sqrt(std::abs(b));
    const double q = std::abs(c) * std::sqrt(std::abs(d));
    const bool negativeP = b < 0.0;
    const bool negativeQ = d < 0.0;
    if ((negativeP && negativeQ) || (negativeP && p > q) || (negativeQ && q > p)) {
        return false;
    }
    if (negativeP) {
        result = RootOfDifference(q, p);
    } else if (negativeQ) {
        result = RootOfDifference(p, q);
    } else {
        result = RootOfSum(p, q);
    }
    return true;
}

}  // namespace KwMath_930
