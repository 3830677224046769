// Refinement of inverses: safeguarded Newton steps on the logarithm of the smaller tail.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

#include "numerics/distributions/detail/tails.h"

namespace KwMath_930::detail {

inline constexpr int kMostRefinements = 200;

// Where a step in log x is this short, the next would change nothing; where more steps follow elsewhere, the longer one
// does.
inline constexpr double kLastStep = 1e-9;
inline constexpr double kLastRoughStep = 1e-5;

// The x in (0, most] with tails(x) = target. tails(x) is increasing in its lower tail; weighted(x) is x times the
// density. From start, Newton in log x on the logarithm of the smaller target tail; a step that leaves what is known to
// enclose the solution is replaced by a bisection of the logarithm.
template <class TailsOf, class Weighted>
double Refine(double start, const Tails& target, double most, const TailsOf& tails, const Weighted& weighted,
              double lastStep = kLastStep) {
    const bool byLower = target.lower <= target.upper;
    const double goal = byLower ? target.lower : target.upper;
    double low = std::numeric_limits<double>::denorm_min();
    bool lowIsBelow = false;  // whether low was seen to be below the solution
    double high = most;
    double x = start > low && start < high ? start : std::sqrt(low) * std::sqrt(high);
    for (int i = 0; i < kMostRefinements; ++i) {
        const Tails at = tails(x);
        const double reached = byLower ? at.lower : at.upper;
        const bool below = byLower ? reached < goal : reached > goal;
        (below ? low : high) = x;
        lowIsBelow = lowIsBelow || below;
        if (reached == goal) {
            return x;
        }
        // Newton on log(reached/goal) over log x; near the goal from the plain difference, which is more exact.
        const double slope = weighted(x);
        const double gap = reached - goal;
        const double rise = std::abs(gap) < 0.1 * goal ? gap / slope * (1.0 + 0.5 * gap / goal)
                                                       : std::log(reached / goal) * (reached / slope);
        const double step = byLower ? -rise : rise;
        if (std::abs(step) < lastStep) {
            return x + x * step;
        }
        double next = x * std::exp(step);
        if (!(next > low && next < high)) {
            next = high < 2.0 * low ? 0.5 * (low + high) : std::sqrt(low) * std::sqrt(high);
            if (!(next > low && next < high)) {
                return below ? high : lowIsBelow ? low : 0.0;
            }
        }
        x = next;
    }
    return x;
}

}  // namespace KwMath_930::detail
