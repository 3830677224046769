// AS 109 with the start of AS 64, then Newton steps on the smaller tail, in the variable (x or 1 - x) that is small.
// Sources: Cran, Martin and Thomas, Algorithm AS 109, Appl. Statist. 26 (1977); Majumder and Bhattacharjee, Algorithm
// AS 64, Appl. Statist. 22 (1973). Test: KwDistFun_beta_test.cpp.
#include "numerics/distributions/detail/beta_inverse.h"

#include <cmath>

#include "numerics/distributions/detail/incomplete_beta.h"
#include "numerics/distributions/detail/invert.h"

namespace KwMath_930::detail {

namespace {

// The start for the quantile of tail (at most 1/2), y its normal deviate.
double Start(double tail, double a, double b, double y) {
    if (a > 1.0 && b > 1.0) {
        const double r = (y * y - 3.0) / 6.0;
        const double s = 1.0 / (2.0 * a - 1.0);
        const double t = 1.0 / (2.0 * b - 1.0);
        const double h = 2.0 / (s + t);
        const double w = y * std::sqrt(h + r) / h - (t - s) * (r + 5.0 / 6.0 - 2.0 / (3.0 * h));
        return a / (a + b * std::exp(2.0 * w));
    }
    const double logBeta = LogBeta(a, b);
    const double t = 1.0 / (9.0 * b);
    const double root = 1.0 - t + y * std::sqrt(t);
    const double chi = 2.0 * b * root * root * root;
    if (chi <= 0.0) {
        return -std::expm1((std::log1p(-tail) + std::log(b) + logBeta) / b);
    }
    const double odds = (4.0 * a + 2.0 * b - 2.0) / chi;
    return odds <= 1.0 ? std::exp((std::log(tail * a) + logBeta) / a) : 1.0 - 2.0 / (odds + 1.0);
}

// x <= most with I_x(a, b) = target.
double Solve(double start, const Tails& target, double a, double b, double most, double lastStep) {
    return Refine(
        start, target, most, [a, b](double x) { return IncompleteBeta(UnitPoint(x), a, b); },
        [a, b](double x) {
            const UnitPoint at(x);
            return BetaPrefix(at, a, b) * a / at.y.hi;
        },
        lastStep);
}

}  // namespace

UnitPoint InvertBeta(const Tails& target, double a, double b, double deviate, double lastStep) {
    const bool byLower = target.lower <= target.upper;
    const double start = byLower ? Start(target.lower, a, b, deviate) : 1.0 - Start(target.upper, b, a, deviate);
    const double startY = byLower ? 1.0 - start : Start(target.upper, b, a, deviate);
    // A start far from the middle tells the side; should it be wrong, the solution sticks to the bound.
    constexpr double kSurely = 0.25;
    constexpr double kBound = 0.75;
    if (start < kSurely) {
        const double x = Solve(start, target, a, b, kBound, lastStep);
        if (x < kBound - 0.01) {
            return UnitPoint(x);
        }
    } else if (startY < kSurely) {
        const double y = Solve(startY, target.Swapped(), b, a, kBound, lastStep);
        if (y < kBound - 0.01) {
            return UnitPoint(y).Swapped();
        }
    }
    const Tails middle = IncompleteBeta(UnitPoint(0.5), a, b);
    const bool isRight = byLower ? middle.lower < target.lower : middle.upper > target.upper;
    if (isRight) {
        return UnitPoint(Solve(startY, target.Swapped(), b, a, 0.5, lastStep)).Swapped();
    }
    return UnitPoint(Solve(start, target, a, b, 0.5, lastStep));
}

}  // namespace KwMath_930::detail
