// Digamma and trigamma: ten steps of the recurrence up to z = x + 10, where the asymptotic series has converged.
// Test: KwMathFun_gamma_test.cpp.
#include "numerics/mathfun/KwMathFun.h"

#include <cmath>

#include "numerics/power/KwMV.h"

namespace KwMath_930 {

using KwCommon_930::KwMV;

namespace {

constexpr double kSmallestArgument = 1e-16;
constexpr double kEulerGamma = 0.5772156649015329;
constexpr int kSteps = 10;

// term(z - k) summed over k = 1 .. 10, the small terms first; z - k is formed as x + (10 - k), which for small x loses
// none of its digits.
template <class Term>
double SumOfSteps(double x, Term term) {
    double sum = 0.0;
    for (int k = 1; k <= kSteps; ++k) {
        sum += term(x + (kSteps - k));
    }
    return sum;
}

}  // namespace

double KwMathFun::Digamma(double x) {
    if (x <= kSmallestArgument) {
        return KwMV::Missing();
    }
    if (x < 1e-5) {
        return -kEulerGamma - 1.0 / x;
    }
    const double z = x + kSteps;
    const double w = 1.0 / (z * z);
    const double series =
        w * (1.0 / 12 - w * (1.0 / 120 - w * (1.0 / 252 - w * (1.0 / 240 - w * (1.0 / 132 - w * (691.0 / 32760))))));
    return std::log(z) - 0.5 / z - series - SumOfSteps(x, [](double step) { return 1.0 / step; });
}

double KwMathFun::Trigamma(double x) {
    if (x <= kSmallestArgument) {
        return KwMV::Missing();
    }
    if (x < 1e-4) {
        return 1.0 / (x * x);
    }
    const double z = x + kSteps;
    const double w = 1.0 / (z * z);
    const double series =
        w * (1.0 / 6 - w * (1.0 / 30 - w * (1.0 / 42 - w * (1.0 / 30 - w * (5.0 / 66 - w * (691.0 / 2730))))));
    return SumOfSteps(x, [](double step) { return 1.0 / (step * step); }) + (1.0 + series) / z + w / 2.0;
}

}  // namespace KwMath_930
