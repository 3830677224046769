// What the members of KwDistFun ask of their arguments and results.
#pragma once

#include <cmath>

#include "numerics/power/KwMV.h"

namespace KwMath_930::detail {

// The natural logarithm of a density or a probability below which it is taken to be 0.
constexpr double kExpFloor = -708.0;

inline double Missing() {
    return KwCommon_930::KwMV::Missing();
}

// A parameter that must be positive: false for NaN and infinity too.
inline bool IsPositive(double x) {
    return x > 0.0 && std::isfinite(x);
}

inline bool IsProbability(double p) {
    return p >= 0.0 && p <= 1.0;
}

// The value, or missing where arithmetic overflowed.
inline double FiniteOrMissing(double x) {
    return std::isfinite(x) ? x : Missing();
}

// The same for a probability, which rounding may have taken just out of [0, 1].
inline double ProbabilityOrMissing(double p) {
    return p > 1.0 ? 1.0 : p >= 0.0 ? p : std::isnan(p) ? Missing() : 0.0;
}

inline double Fail(long& ier, long flag) {
    ier = flag;
    return Missing();
}

}  // namespace KwMath_930::detail
