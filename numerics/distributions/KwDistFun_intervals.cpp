// Median with its interval, and percentiles, of weighted values. Test: KwDistFun_intervals_test.cpp.
#include "numerics/distributions/KwDistFun.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "numerics/distributions/detail/checks.h"

namespace KwMath_930 {

using detail::Fail;
using detail::IsPositive;
using detail::IsProbability;
using detail::Missing;

namespace {

using Values = std::vector<double>;

bool AreNumbers(const Values& values, std::size_t n) {
    return std::all_of(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(n),
                       [](double x) { return std::isfinite(x); });
}

bool AreWeights(const Values& weights, std::size_t n) {
    return AreNumbers(weights, n) && std::all_of(weights.begin(), weights.begin() + static_cast<std::ptrdiff_t>(n),
                                                 [](double w) { return w >= 0.0; });
}

bool IsCount(long n, const Values& values) {
    return n >= 1 && static_cast<std::size_t>(n) <= values.size();
}

// a + share (b - a) without overflow; a itself where both are the same.
double Between(double a, double b, double share) {
    return a == b ? a : (1.0 - share) * a + share * b;
}

// The value of the observation whose rank is given, when each value stands weight times.
double AtRank(const Values& values, const Values& cumulated, double rank, double tol) {
    const double least = rank - tol * rank;
    const auto found = std::lower_bound(cumulated.begin(), cumulated.end(), least);
    const auto index = std::min<std::ptrdiff_t>(found - cumulated.begin(), std::ssize(cumulated) - 1);
    return values[static_cast<std::size_t>(index)];
}

double WeightedMedian(const Values& values, const Values& cumulated, double tol) {
    const double half = 0.5 * cumulated.back();
    const double here = AtRank(values, cumulated, half, tol);
    // Where the cumulated weight is just half, the next value counts too.
    const auto next = std::upper_bound(cumulated.begin(), cumulated.end(), half + tol * half);
    if (next == cumulated.end()) {
        return here;
    }
    return Between(here, values[static_cast<std::size_t>(next - cumulated.begin())], 0.5);
}

// Where a cumulated weight falls: between value k - 1 and value k (counted from 0), gap beyond the former.
struct Place {
    std::size_t k;
    double gap;
    double share;  // gap in observations, or in weights of value k where those are below 1
};

Place Locate(double rank, std::size_t n, const Values& weights, const Values& cumulated) {
    const auto end = cumulated.begin() + static_cast<std::ptrdiff_t>(n);
    const auto k = static_cast<std::size_t>(std::upper_bound(cumulated.begin(), end, rank) - cumulated.begin());
    if (k == 0 || k == n) {
        return {k, 0.0, 0.0};
    }
    const double gap = rank - cumulated[k - 1];
    const double whole = std::min(1.0, weights[k]);
    return {k, gap, gap < whole ? gap / whole : gap > 0.0 ? 1.0 : 0.0};
}

// The value at a rank by weighted average.
double AverageAt(double rank, std::size_t n, const Values& values, const Values& weights, const Values& cumulated) {
    const Place place = Locate(rank, n, weights, cumulated);
    if (place.k == 0 || place.k == n) {
        return place.k == 0 ? values.front() : values[n - 1];
    }
    return Between(values[place.k - 1], values[place.k], place.share);
}

// The rank of the hinge (first, second, third quartile) nearest to p.
double HingeRank(double p, double total) {
    const double middle = 0.5 * (total + 1.0);
    const double depth = 0.5 * (std::floor(middle) + 1.0);
    return p < 0.375 ? depth : p > 0.625 ? total + 1.0 - depth : middle;
}

double ByRounding(double rank, std::size_t n, const Values& values, const Values& weights, const Values& cumulated,
                  long method) {
    const Place place = Locate(rank, n, weights, cumulated);
    if (place.k == 0 || place.k == n) {
        return place.k == 0 ? values.front() : values[n - 1];
    }
    const double before = values[place.k - 1];
    const double after = values[place.k];
    if (method == 1) {
        return place.share < 0.5 ? before : after;
    }
    if (place.gap > 0.0) {
        return after;
    }
    return method == 2 ? before : Between(before, after, 0.5);
}

}  // namespace

// Source: Hettmansperger and Sheather, Statist. Probab. Lett. 4 (1986), for the interpolation.
double KwDistFun::Mednci(long n, const Values& values, const Values& weights, double level, double tol,
                         bool interpolate, double& median, double& lower, double& upper) {
    median = lower = upper = Missing();
    if (!IsCount(n, values) || !IsCount(n, weights) || !(level > 0.0 && level < 1.0) || !(tol >= 0.0 && tol < 1.0)) {
        return median;
    }
    const auto count = static_cast<std::size_t>(n);
    if (!AreNumbers(values, count) || !AreWeights(weights, count)) {
        return median;
    }
    Values cumulated(count);
    double total = 0.0;
    for (std::size_t i = 0; i < count; ++i) {
        cumulated[i] = total += weights[i];
    }
    if (!IsPositive(total)) {
        return median;
    }
    median = WeightedMedian(values, cumulated, tol);
    const double trials = std::floor(total + tol * total);
    if (trials < 1.0) {
        return median;
    }
    const double alpha = 0.5 * (1.0 - level);
    long ier = 0;
    const double rank = IdfBin(alpha, trials, 0.5, ier);
    if (!(rank >= 1.0)) {
        return median;  // not even the extremes reach the level: no interval
    }
    lower = AtRank(values, cumulated, rank, tol);
    upper = AtRank(values, cumulated, trials + 1.0 - rank, tol);
    if (interpolate && rank + 1.0 <= trials - rank) {
        // Coverages of the interval at rank and of the next narrower one: 1 - 2 P(X < rank).
        const double wide = 1.0 - 2.0 * CdfBeta(0.5, trials - rank + 1.0, rank);
        const double narrow = 1.0 - 2.0 * CdfBeta(0.5, trials - rank, rank + 1.0);
        const double share = (wide - level) / (wide - narrow);
        const double weight = (trials - rank) * share / (rank + (trials - 2.0 * rank) * share);
        lower = Between(lower, AtRank(values, cumulated, rank + 1.0, tol), weight);
        upper = Between(upper, AtRank(values, cumulated, trials - rank, tol), weight);
    }
    return median;
}

double KwDistFun::GPTile(long n, double p, const Values& values, const Values& weights, const Values& cumulated,
                         long method, double& result, long& ier) {
    ier = 0;
    result = Missing();
    if (!IsCount(n, values) || !IsCount(n, weights) || !IsCount(n, cumulated) || !IsProbability(p) || method < 0 ||
        method > 4) {
        return Fail(ier, 1);
    }
    const auto count = static_cast<std::size_t>(n);
    const double total = cumulated[count - 1];
    if (!AreNumbers(values, count) || !AreWeights(weights, count) || !AreNumbers(cumulated, count) ||
        !std::is_sorted(cumulated.begin(), cumulated.begin() + n) || !(total > 0.0)) {
        return Fail(ier, 1);
    }
    if (method == 0 || method == 4) {
        const double rank = method == 0 ? (total + 1.0) * p : HingeRank(p, total);
        result = AverageAt(rank, count, values, weights, cumulated);
    } else {
        result = ByRounding(total * p, count, values, weights, cumulated, method);
    }
    return result;
}

}  // namespace KwMath_930
