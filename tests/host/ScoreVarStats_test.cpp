// The missing-value replacements of a variable, and its set of missing values.
#include "host/ScoreVarStats.h"

#include <gtest/gtest.h>

#include <limits>

#include "host/NumericValue.h"
#include "host/ScoreMissingValueSet.h"
#include "host/StringValue.h"

namespace {

using KwBrevix_930::NumericValue;
using KwBrevix_930::ScoreMissingValueSet;
using KwBrevix_930::ScoreValue;
using KwBrevix_930::ScoreVarStats;
using KwBrevix_930::StringValue;

TEST(ScoreVarStats, HasNoReplacementUntilOneIsSet) {
    ScoreVarStats stats;
    EXPECT_EQ(stats.GetMissingReplacement(), nullptr);
    EXPECT_EQ(stats.GetEncodedMissingReplacement("red"), nullptr);
    stats.SetMissingReplacement(std::make_unique<NumericValue>(6.75));
    EXPECT_EQ(stats.GetMissingReplacement()->GetDouble(), 6.75);
    stats.SetMissingReplacement(std::make_unique<StringValue>("later"));
    EXPECT_EQ(stats.GetMissingReplacement()->GetString(), "later");
    stats.SetMissingReplacement(nullptr);
    EXPECT_EQ(stats.GetMissingReplacement(), nullptr);
}

TEST(ScoreVarStats, RegistersOneReplacementForEachEncodedValue) {
    ScoreVarStats stats;
    stats.SetEncodedMissingReplacement("red", "0.25");
    stats.SetEncodedMissingReplacement("green", "0.5");
    stats.SetEncodedMissingReplacement("red", "0.75");
    EXPECT_EQ(*stats.GetEncodedMissingReplacement("red"), "0.75");
    EXPECT_EQ(*stats.GetEncodedMissingReplacement("green"), "0.5");
    EXPECT_EQ(stats.GetEncodedMissingReplacement("Red"), nullptr);
}

TEST(ScoreVarStats, CopiesAreDeep) {
    ScoreVarStats stats;
    stats.SetMissingReplacement(std::make_unique<NumericValue>(6.75));
    stats.SetEncodedMissingReplacement("red", "0.25");
    const ScoreVarStats copy(stats);
    ScoreVarStats assigned;
    assigned.SetMissingReplacement(std::make_unique<NumericValue>(1.0));
    assigned = stats;
    const ScoreVarStats& self = assigned;
    assigned = self;
    stats.SetMissingReplacement(nullptr);
    stats.SetEncodedMissingReplacement("red", "changed");
    for (const ScoreVarStats* each : {&copy, static_cast<const ScoreVarStats*>(&assigned)}) {
        EXPECT_EQ(each->GetMissingReplacement()->GetDouble(), 6.75);
        EXPECT_EQ(*each->GetEncodedMissingReplacement("red"), "0.25");
    }
}

TEST(ScoreMissingValueSet, HoldsEqualValuesOfTheSameKind) {
    ScoreMissingValueSet set;
    EXPECT_FALSE(set.Contains(NumericValue(-9.0)));
    set.Add(std::make_unique<NumericValue>(-9.0));
    set.Add(std::make_unique<StringValue>("?"));
    EXPECT_TRUE(set.Contains(NumericValue(-9.0)));
    EXPECT_TRUE(set.Contains(StringValue("?")));
    EXPECT_FALSE(set.Contains(StringValue("-9")));
    EXPECT_FALSE(set.Contains(NumericValue(9.0)));
}

TEST(ScoreMissingValueSet, NaNIsHeldOnlyWhenAdded) {
    const NumericValue nan(std::numeric_limits<double>::quiet_NaN());
    ScoreMissingValueSet set;
    set.Add(std::make_unique<NumericValue>(1.0));
    set.Add(std::make_unique<StringValue>("nan"));
    EXPECT_FALSE(set.Contains(nan));
    set.Add(std::make_unique<NumericValue>(-std::numeric_limits<double>::quiet_NaN()));
    EXPECT_TRUE(set.Contains(nan));
    EXPECT_FALSE(set.Contains(NumericValue(2.0)));
}

TEST(ScoreMissingValueSet, CopiesAreDeep) {
    ScoreMissingValueSet set;
    set.Add(std::make_unique<StringValue>("none"));
    const ScoreMissingValueSet copy(set);
    ScoreMissingValueSet assigned;
    assigned = set;
    set.Add(std::make_unique<StringValue>("added later"));
    EXPECT_TRUE(copy.Contains(StringValue("none")));
    EXPECT_TRUE(assigned.Contains(StringValue("none")));
    EXPECT_FALSE(copy.Contains(StringValue("added later")));
    EXPECT_FALSE(assigned.Contains(StringValue("added later")));
}

}  // namespace
