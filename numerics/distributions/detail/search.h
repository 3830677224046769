// Root of a monotone probability: enclosed by widening steps, then by a secant that keeps the enclosure.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

#include "numerics/distributions/detail/checks.h"
#include "numerics/power/KwPower.h"

namespace KwMath_930::detail {

inline constexpr int kMostSearchSteps = 300;
inline constexpr double kSearchTolerance = 8.0;  // epsilons

// The x in [least, most] with f(x) = goal for an increasing f, from start by doubling steps; missing when f does not
// reach goal there. Ends when f(x) agrees within tol epsilons/16 or the enclosure within tol, or at the cap; a last
// secant takes from the enclosure what f tells about it.
template <class Function>
double SearchIncreasing(const Function& f, double goal, double start, double step, double least, double most,
                        double tol) {
    const double tolerance = tol > 0.0 ? tol : kSearchTolerance;
    // The logarithm straightens what is far out in a tail.
    const auto miss = [&](double x) {
        const double value = f(x);
        return value == Missing() ? std::numeric_limits<double>::quiet_NaN() : std::log(std::max(value, 1e-320) / goal);
    };
    double x = std::clamp(start, least, most);
    double here = miss(x);
    const double direction = here < 0.0 ? 1.0 : -1.0;
    double other = x;
    double there = here;
    int steps = 0;
    while (here != 0.0 && !((there < 0.0) != (here < 0.0)) && steps++ < kMostSearchSteps) {
        x = other;
        here = there;
        if (std::isnan(here) || x == (direction > 0.0 ? most : least)) {
            return Missing();
        }
        other = std::clamp(x + direction * step, least, most);
        there = miss(other);
        step *= 2.0;
    }
    if (here == 0.0) {
        return x;
    }
    if (std::isnan(there) || (there < 0.0) == (here < 0.0)) {
        return Missing();
    }
    double weightHere = here;
    double weightThere = there;
    while (steps++ < kMostSearchSteps && there != 0.0 && !KwPower::AlmostEqual(x, other, tolerance)) {
        double next = other - weightThere * ((other - x) / (weightThere - weightHere));
        if (!(next > std::min(x, other) && next < std::max(x, other)) || steps % 4 == 0) {
            next = 0.5 * x + 0.5 * other;
        }
        const double value = miss(next);
        if (std::isnan(value) || KwPower::AlmostEqual(std::exp(value), 1.0, tolerance / 16.0)) {
            return std::isnan(value) ? Missing() : next;
        }
        // Illinois: the end that stays has its weight halved.
        if ((value < 0.0) != (there < 0.0)) {
            x = other;
            here = weightHere = there;
        } else {
            weightHere *= 0.5;
        }
        other = next;
        there = weightThere = value;
    }
    const double last = other - there * ((other - x) / (there - here));
    return last >= std::min(x, other) && last <= std::max(x, other) ? last : other;
}

}  // namespace KwMath_930::detail
