// A numeric value.
#include "host/NumericValue.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>

#include "host/DateTimeValue.h"
#include "host/StringValue.h"

namespace {

using KwBrevix_930::DateTimeValue;
using KwBrevix_930::NumericValue;
using KwBrevix_930::ScoreValue;
using KwBrevix_930::StringValue;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
const double kSysmis = NumericValue::GetSysmisValue();

bool AreEqual(const ScoreValue& left, const ScoreValue& right) {
    return left == right;
}

TEST(NumericValue, SystemMissingIsTheMostNegativeFiniteDouble) {
    EXPECT_EQ(kSysmis, -std::numeric_limits<double>::max());
    EXPECT_TRUE(NumericValue(kSysmis).IsSystemMissingValue());
    EXPECT_FALSE(NumericValue(std::nextafter(kSysmis, 0.0)).IsSystemMissingValue());
    EXPECT_FALSE(NumericValue(-kInfinity).IsSystemMissingValue());
    EXPECT_FALSE(NumericValue(kNaN).IsSystemMissingValue());
}

TEST(NumericValue, TellsWhatItHolds) {
    NumericValue value(2.385);
    EXPECT_EQ(value.GetType(), ScoreValue::kNumeric);
    EXPECT_EQ(value.GetDouble(), 2.385);
    EXPECT_EQ(value.GetString(), "2.385");
    EXPECT_EQ(std::get<double>(value.GetValue()), 2.385);
    value.SetDoubleValue(-7.25);
    EXPECT_EQ(value.GetDouble(), -7.25);
    EXPECT_EQ(NumericValue(kSysmis).GetString(), "");
    EXPECT_EQ(NumericValue(-kInfinity).GetString(), "-inf");
}

TEST(NumericValue, IntIsTruncatedAndKeptInRange) {
    EXPECT_EQ(NumericValue(2.9).GetInt(), 2);
    EXPECT_EQ(NumericValue(-2.9).GetInt(), -2);
    EXPECT_EQ(NumericValue(2147483647.0).GetInt(), 2147483647);
    EXPECT_EQ(NumericValue(2147483647.9).GetInt(), 2147483647);
    EXPECT_EQ(NumericValue(2147483648.0).GetInt(), 2147483647);
    EXPECT_EQ(NumericValue(-2147483648.9).GetInt(), std::numeric_limits<int>::min());
    EXPECT_EQ(NumericValue(-1e300).GetInt(), std::numeric_limits<int>::min());
    EXPECT_EQ(NumericValue(kInfinity).GetInt(), 2147483647);
    EXPECT_EQ(NumericValue(-kInfinity).GetInt(), std::numeric_limits<int>::min());
    EXPECT_EQ(NumericValue(kNaN).GetInt(), 0);
    EXPECT_EQ(NumericValue(kSysmis).GetInt(), 0);
}

TEST(NumericValue, CloneIsAnEqualObjectOfItsOwn) {
    const NumericValue value(31.25);
    const std::unique_ptr<ScoreValue> clone(value.Clone());
    EXPECT_NE(clone.get(), &value);
    EXPECT_EQ(clone->GetType(), ScoreValue::kNumeric);
    EXPECT_TRUE(AreEqual(*clone, value));
}

TEST(NumericValue, TakesOverNumbersTextsAndTimes) {
    NumericValue value(1.0);
    const NumericValue number(8.5);
    EXPECT_TRUE(value.SetValue(&number));
    EXPECT_EQ(value.GetDouble(), 8.5);
    const StringValue text(" -3.75 ");
    EXPECT_TRUE(value.SetValue(&text));
    EXPECT_EQ(value.GetDouble(), -3.75);
    const DateTimeValue time(86400.5, "1970");
    EXPECT_TRUE(value.SetValue(&time));
    EXPECT_EQ(value.GetDouble(), 86400.5);
    const NumericValue missing(kSysmis);
    EXPECT_TRUE(value.SetValue(&missing));
    EXPECT_TRUE(value.IsSystemMissingValue());
    EXPECT_TRUE(value.SetValue(&value));
}

TEST(NumericValue, RefusesANullPointerAndATextThatIsNoNumber) {
    NumericValue value(6.5);
    const StringValue text("6,5");
    const StringValue empty("");
    EXPECT_FALSE(value.SetValue(nullptr));
    EXPECT_FALSE(value.SetValue(&text));
    EXPECT_FALSE(value.SetValue(&empty));
    EXPECT_EQ(value.GetDouble(), 6.5);
}

TEST(NumericValue, ComparesAsItsNumber) {
    const NumericValue low(-1.5);
    const NumericValue high(4.25);
    EXPECT_TRUE(low < high);
    EXPECT_TRUE(low <= high);
    EXPECT_FALSE(low > high);
    EXPECT_FALSE(low >= high);
    EXPECT_FALSE(AreEqual(low, high));
    EXPECT_FALSE(high < low);
    EXPECT_TRUE(high > low);
    EXPECT_TRUE(high >= low);
    EXPECT_TRUE(low <= NumericValue(-1.5));
    EXPECT_TRUE(low >= NumericValue(-1.5));
    EXPECT_TRUE(AreEqual(low, NumericValue(-1.5)));
    EXPECT_FALSE(low < NumericValue(-1.5));
    EXPECT_FALSE(low > NumericValue(-1.5));
    EXPECT_TRUE(AreEqual(NumericValue(0.0), NumericValue(-0.0)));
    EXPECT_TRUE(AreEqual(NumericValue(kInfinity), NumericValue(kInfinity)));
    EXPECT_TRUE(AreEqual(NumericValue(kSysmis), NumericValue(kSysmis)));
    EXPECT_TRUE(NumericValue(-kInfinity) < NumericValue(kSysmis));
}

TEST(NumericValue, NaNComparesWithNothing) {
    const NumericValue nan(kNaN);
    EXPECT_FALSE(AreEqual(nan, nan));
    EXPECT_FALSE(nan < NumericValue(1.0));
    EXPECT_FALSE(nan <= nan);
    EXPECT_FALSE(nan > NumericValue(1.0));
    EXPECT_FALSE(nan >= nan);
    EXPECT_FALSE(nan.Equal(&nan, true, true));
}

TEST(NumericValue, NoComparisonHoldsAcrossKinds) {
    const NumericValue number(5.0);
    const StringValue text("5");
    const DateTimeValue time(5.0, "5");
    for (const ScoreValue* other : {static_cast<const ScoreValue*>(&text), static_cast<const ScoreValue*>(&time)}) {
        EXPECT_FALSE(number == *other);
        EXPECT_FALSE(number < *other);
        EXPECT_FALSE(number <= *other);
        EXPECT_FALSE(number > *other);
        EXPECT_FALSE(number >= *other);
        EXPECT_FALSE(number.Equal(other, false, false));
    }
}

TEST(NumericValue, EqualLooksAtTheNumberAlone) {
    const NumericValue number(12.75);
    const NumericValue same(12.75);
    for (const bool ignoreCase : {false, true}) {
        for (const bool ignoreBlanks : {false, true}) {
            EXPECT_TRUE(number.Equal(&same, ignoreCase, ignoreBlanks));
            EXPECT_FALSE(number.Equal(nullptr, ignoreCase, ignoreBlanks));
        }
    }
}

}  // namespace
