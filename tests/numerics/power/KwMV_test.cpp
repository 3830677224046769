// The missing value: its bits, and that only they are missing.
#include "numerics/power/KwMV.h"
#include "tests/numerics/special_values.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

namespace {

using KwCommon_930::KwMV;

using numerics_samples::kInfinity;

TEST(KwMV, MissingIsTheMostNegativeFiniteDouble) {
    EXPECT_EQ(std::bit_cast<std::uint64_t>(KwMV::Missing()), 0xFFEFFFFFFFFFFFFFu);
    EXPECT_EQ(KwMV::Missing(), -1.7976931348623157e308);
}

TEST(KwMV, IsMissingAcceptsTheMissingValue) {
    EXPECT_TRUE(KwMV::IsMissing(-1.7976931348623157e308));
    EXPECT_TRUE(KwMV::IsMissing(KwMV::Missing()));
}

TEST(KwMV, IsMissingRefusesNaNInfinityAndTheNextLargerDouble) {
    EXPECT_FALSE(KwMV::IsMissing(std::numeric_limits<double>::quiet_NaN()));
    EXPECT_FALSE(KwMV::IsMissing(-kInfinity));
    EXPECT_FALSE(KwMV::IsMissing(kInfinity));
    EXPECT_FALSE(KwMV::IsMissing(std::nextafter(KwMV::Missing(), 0.0)));
    EXPECT_FALSE(KwMV::IsMissing(-KwMV::Missing()));
    EXPECT_FALSE(KwMV::IsMissing(0.0));
}

}  // namespace
