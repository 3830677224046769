// Median with interval, and percentiles.
#include <gtest/gtest.h>

#include <limits>
#include <numeric>
#include <vector>

#include "numerics/distributions/KwDistFun.h"
#include "tests/numerics/special_values.h"

namespace {

using KwMath_930::KwDistFun;
using Values = std::vector<double>;

using numerics_samples::kMissing;

struct Interval {
    double median = 0.0;
    double lower = 0.0;
    double upper = 0.0;
};

Interval Median(const Values& values, const Values& weights, double level, bool interpolate) {
    Interval result;
    const double median = KwDistFun::Mednci(static_cast<long>(values.size()), values, weights, level, 1e-12,
                                            interpolate, result.median, result.lower, result.upper);
    EXPECT_EQ(median, result.median);
    return result;
}

Values Ramp(int n) {
    Values values(static_cast<std::size_t>(n));
    std::iota(values.begin(), values.end(), 1.0);
    return values;
}

// Of 10 observations the interval from the 2nd to the 9th covers 1 - 22/1024 = 0.9785, from the 3rd to the 8th 0.8906.
TEST(KwDistFunMednci, TakesTheOrderStatisticsThatReachTheLevel) {
    const Interval result = Median(Ramp(10), Values(10, 1.0), 0.95, false);
    EXPECT_EQ(result.median, 5.5);
    EXPECT_EQ(result.lower, 2.0);
    EXPECT_EQ(result.upper, 9.0);
    EXPECT_EQ(Median(Ramp(10), Values(10, 1.0), 0.89, false).lower, 3.0);
    EXPECT_EQ(Median(Ramp(10), Values(10, 1.0), 0.8907, false).lower, 2.0);
}

// Hettmansperger and Sheather: share (0.978516 - 0.95)/(0.978516 - 0.890625), weight 8 I / (2 + 6 I).
TEST(KwDistFunMednci, InterpolatesBetweenTheTwoCoverages) {
    const double wide = 1.0 - 22.0 / 1024.0;
    const double narrow = 1.0 - 112.0 / 1024.0;
    const double share = (wide - 0.95) / (wide - narrow);
    const double weight = 8.0 * share / (2.0 + 6.0 * share);
    const Interval result = Median(Ramp(10), Values(10, 1.0), 0.95, true);
    EXPECT_NEAR(result.lower, 2.0 + weight, 1e-13);
    EXPECT_NEAR(result.upper, 9.0 - weight, 1e-13);
}

TEST(KwDistFunMednci, WeightsCountAsRepetitions) {
    const Interval repeated = Median({1.5, 1.5, 2.25, 2.25, 2.25, 7.0, 7.0, 9.5}, Values(8, 1.0), 0.9, true);
    const Interval weighted = Median({1.5, 2.25, 7.0, 9.5}, {2.0, 3.0, 2.0, 1.0}, 0.9, true);
    EXPECT_EQ(repeated.median, weighted.median);
    EXPECT_EQ(repeated.lower, weighted.lower);
    EXPECT_EQ(repeated.upper, weighted.upper);
}

TEST(KwDistFunMednci, WithoutEnoughObservationsThereIsAMedianButNoInterval) {
    const Interval result = Median({1.25, 3.5, 8.0}, Values(3, 1.0), 0.95, false);
    EXPECT_EQ(result.median, 3.5);
    EXPECT_EQ(result.lower, kMissing);
    EXPECT_EQ(result.upper, kMissing);
}

TEST(KwDistFunMednci, RefusesBadArguments) {
    double m = 0.0, l = 0.0, u = 0.0;
    const Values v{1.0, 2.0}, w{1.0, 1.0};
    EXPECT_EQ(KwDistFun::Mednci(0, v, w, 0.9, 0.0, false, m, l, u), kMissing);
    EXPECT_EQ(KwDistFun::Mednci(3, v, w, 0.9, 0.0, false, m, l, u), kMissing);
    EXPECT_EQ(KwDistFun::Mednci(2, v, {1.0}, 0.9, 0.0, false, m, l, u), kMissing);
    EXPECT_EQ(KwDistFun::Mednci(2, v, {1.0, -1.0}, 0.9, 0.0, false, m, l, u), kMissing);
    EXPECT_EQ(KwDistFun::Mednci(2, v, {0.0, 0.0}, 0.9, 0.0, false, m, l, u), kMissing);
    EXPECT_EQ(KwDistFun::Mednci(2, v, w, 1.0, 0.0, false, m, l, u), kMissing);
    EXPECT_EQ(KwDistFun::Mednci(2, v, w, 0.9, -1.0, false, m, l, u), kMissing);
    EXPECT_EQ(m, kMissing);
    EXPECT_EQ(l, kMissing);
    EXPECT_EQ(u, kMissing);
}

double Percentile(double p, long method, const Values& values, const Values& weights, long& ier) {
    Values cumulated(weights.size());
    std::partial_sum(weights.begin(), weights.end(), cumulated.begin());
    double result = 0.0;
    const double value =
        KwDistFun::GPTile(static_cast<long>(values.size()), p, values, weights, cumulated, method, result, ier);
    EXPECT_EQ(value, result);
    return value;
}

double Percentile(double p, long method, const Values& values) {
    long ier = 7;
    const double value = Percentile(p, method, values, Values(values.size(), 1.0), ier);
    EXPECT_EQ(ier, 0);
    return value;
}

const Values kSample{1.5, 2.75, 4.0, 8.5, 9.25, 12.0, 20.5, 31.0};

TEST(KwDistFunGPTile, EachMethodHasItsRule) {
    // N = 8: (N + 1) 0.3 = 2.7, N 0.3 = 2.4
    EXPECT_DOUBLE_EQ(Percentile(0.3, 0, kSample), 2.75 + 0.7 * 1.25);
    EXPECT_EQ(Percentile(0.3, 1, kSample), 2.75);
    EXPECT_EQ(Percentile(0.35, 1, kSample), 4.0);  // 2.8 rounds to 3
    EXPECT_EQ(Percentile(0.3, 2, kSample), 4.0);
    EXPECT_EQ(Percentile(0.25, 2, kSample), 2.75);
    EXPECT_EQ(Percentile(0.3, 3, kSample), 4.0);
    EXPECT_EQ(Percentile(0.25, 3, kSample), 3.375);
    // Hinges: middle rank 4.5, depth 2.5
    EXPECT_EQ(Percentile(0.25, 4, kSample), 3.375);
    EXPECT_EQ(Percentile(0.5, 4, kSample), 8.875);
    EXPECT_EQ(Percentile(0.75, 4, kSample), 16.25);
}

TEST(KwDistFunGPTile, EndsAreTheExtremes) {
    for (long method = 0; method < 4; ++method) {
        EXPECT_EQ(Percentile(0.0, method, kSample), 1.5) << method;
        EXPECT_EQ(Percentile(1.0, method, kSample), 31.0) << method;
    }
}

TEST(KwDistFunGPTile, WeightsCountAsRepetitions) {
    const Values repeated{1.5, 1.5, 1.5, 4.0, 9.0, 9.0};
    for (long method = 0; method < 5; ++method) {
        for (const double p : {0.1, 0.25, 0.5, 0.61, 0.9}) {
            long ier = 0;
            const double weighted = Percentile(p, method, {1.5, 4.0, 9.0}, {3.0, 1.0, 2.0}, ier);
            EXPECT_DOUBLE_EQ(weighted, Percentile(p, method, repeated)) << method << ' ' << p;
        }
    }
}

TEST(KwDistFunGPTile, BetweenEqualValuesLiesThatValue) {
    for (double p = 0.0; p <= 1.0; p += 0.0371) {
        EXPECT_EQ(Percentile(p, 0, {0.1, 0.1, 0.1, 0.7, 0.7}) == 0.1, p * 6.0 <= 3.0) << p;
    }
}

TEST(KwDistFunGPTile, RefusesBadArguments) {
    const Values v{1.0, 2.0}, w{1.0, 1.0}, c{1.0, 2.0};
    double result = 0.0;
    const auto refused = [&](long n, double p, const Values& values, const Values& weights, const Values& cumulated,
                             long method) {
        long ier = 0;
        return KwDistFun::GPTile(n, p, values, weights, cumulated, method, result, ier) == kMissing && ier == 1 &&
               result == kMissing;
    };
    EXPECT_TRUE(refused(0, 0.5, v, w, c, 0));
    EXPECT_TRUE(refused(3, 0.5, v, w, c, 0));
    EXPECT_TRUE(refused(2, 1.1, v, w, c, 0));
    EXPECT_TRUE(refused(2, std::numeric_limits<double>::quiet_NaN(), v, w, c, 0));
    EXPECT_TRUE(refused(2, 0.5, v, w, c, 5));
    EXPECT_TRUE(refused(2, 0.5, v, w, c, -1));
    EXPECT_TRUE(refused(2, 0.5, v, {1.0, -1.0}, c, 0));
    EXPECT_TRUE(refused(2, 0.5, v, w, {2.0, 1.0}, 0));
    EXPECT_TRUE(refused(2, 0.5, v, w, {0.0, 0.0}, 0));
    EXPECT_TRUE(refused(2, 0.5, v, w, {1.0}, 0));
}

}  // namespace
