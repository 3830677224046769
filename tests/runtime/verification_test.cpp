// The rule by which a result is near enough to what is expected.
#include "runtime/verification.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace {

using brevix::Tolerance;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
const double kNan = std::nan("");

TEST(Tolerance, BordersOfThePrecisionAreAccepted) {
    const Tolerance tolerance{0.25, 0.0};
    EXPECT_TRUE(tolerance.accepts(2.5, 2.5 * 1.25));
    EXPECT_TRUE(tolerance.accepts(2.5, 2.5 * 0.75));
    EXPECT_FALSE(tolerance.accepts(2.5, std::nextafter(2.5 * 1.25, 9.0)));
    EXPECT_FALSE(tolerance.accepts(2.5, std::nextafter(2.5 * 0.75, 0.0)));
}

TEST(Tolerance, NegativeExpectationsHaveTheirBordersInOrder) {
    const Tolerance tolerance{0.25, 0.0};
    EXPECT_TRUE(tolerance.accepts(-2.5, -3.125));
    EXPECT_TRUE(tolerance.accepts(-2.5, -1.875));
    EXPECT_FALSE(tolerance.accepts(-2.5, -3.126));
    EXPECT_FALSE(tolerance.accepts(-2.5, 2.5));
}

TEST(Tolerance, ExpectationWithinTheZeroThresholdWantsAResultWithinItToo) {
    const Tolerance tolerance{0.5, 0.125};
    EXPECT_TRUE(tolerance.accepts(0.125, -0.125));
    EXPECT_TRUE(tolerance.accepts(0.0, 0.125));
    EXPECT_FALSE(tolerance.accepts(0.125, 0.126));
    EXPECT_TRUE(tolerance.accepts(0.126, 0.15));
    EXPECT_FALSE(tolerance.accepts(0.126, 0.05));
}

TEST(Tolerance, StandsAtTheStandardsDefaults) {
    const Tolerance tolerance;
    EXPECT_TRUE(tolerance.accepts(385.5, 385.5 * (1 + 0.9e-6)));
    EXPECT_FALSE(tolerance.accepts(385.5, 385.5 * (1 + 1.1e-6)));
    EXPECT_TRUE(tolerance.accepts(0.0, 1e-16));
    EXPECT_FALSE(tolerance.accepts(0.0, 1.1e-16));
}

TEST(Tolerance, NumbersThatAreNotFiniteAreNearThemselvesOnly) {
    const Tolerance tolerance{1.0, 1e300};
    EXPECT_TRUE(tolerance.accepts(kNan, kNan));
    EXPECT_FALSE(tolerance.accepts(kNan, 0.0));
    EXPECT_FALSE(tolerance.accepts(0.0, kNan));
    EXPECT_TRUE(tolerance.accepts(kInfinity, kInfinity));
    EXPECT_FALSE(tolerance.accepts(kInfinity, -kInfinity));
    EXPECT_FALSE(tolerance.accepts(kInfinity, 1.5e308));
    EXPECT_FALSE(tolerance.accepts(1.5e308, kInfinity));
}

}  // namespace
