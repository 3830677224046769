// A date or time value.
#include "host/DateTimeValue.h"

#include <gtest/gtest.h>

#include <memory>

#include "host/NumericValue.h"
#include "host/StringValue.h"

namespace {

using KwBrevix_930::DateTimeValue;
using KwBrevix_930::NumericValue;
using KwBrevix_930::ScoreValue;
using KwBrevix_930::StringValue;

bool AreEqual(const ScoreValue& left, const ScoreValue& right) {
    return left == right;
}

TEST(DateTimeValue, TellsSecondsAndText) {
    const DateTimeValue value(86461.75, "1970-01-02T00:01:01.75");
    EXPECT_EQ(value.GetType(), ScoreValue::kDateTime);
    EXPECT_EQ(value.GetDouble(), 86461.75);
    EXPECT_EQ(value.GetInt(), 86461);
    EXPECT_EQ(value.GetString(), "1970-01-02T00:01:01.75");
    EXPECT_EQ(std::get<double>(value.GetValue()), 86461.75);
    EXPECT_EQ(DateTimeValue(1e12, "").GetInt(), 2147483647);
}

TEST(DateTimeValue, IsSystemMissingByItsSeconds) {
    EXPECT_TRUE(DateTimeValue(NumericValue::GetSysmisValue(), "never").IsSystemMissingValue());
    EXPECT_FALSE(DateTimeValue(0.0, "").IsSystemMissingValue());
}

TEST(DateTimeValue, CloneIsAnEqualObjectOfItsOwn) {
    const DateTimeValue value(12.5, "a quarter past");
    const std::unique_ptr<ScoreValue> clone(value.Clone());
    EXPECT_NE(clone.get(), &value);
    EXPECT_TRUE(AreEqual(*clone, value));
    EXPECT_EQ(clone->GetString(), "a quarter past");
}

TEST(DateTimeValue, TakesOverOnlyItsOwnKind) {
    DateTimeValue value(1.5, "before");
    const DateTimeValue other(2.5, "after");
    const NumericValue number(3.5);
    const StringValue text("4.5");
    EXPECT_FALSE(value.SetValue(&number));
    EXPECT_FALSE(value.SetValue(&text));
    EXPECT_FALSE(value.SetValue(nullptr));
    EXPECT_EQ(value.GetString(), "before");
    EXPECT_TRUE(value.SetValue(&other));
    EXPECT_EQ(value.GetDouble(), 2.5);
    EXPECT_EQ(value.GetString(), "after");
}

TEST(DateTimeValue, ComparesSecondsNotTexts) {
    const DateTimeValue early(10.25, "z");
    const DateTimeValue late(20.5, "a");
    EXPECT_TRUE(early < late);
    EXPECT_TRUE(early <= late);
    EXPECT_FALSE(early > late);
    EXPECT_FALSE(early >= late);
    EXPECT_TRUE(late > early);
    EXPECT_TRUE(late >= early);
    const DateTimeValue same(10.25, "other words");
    EXPECT_TRUE(AreEqual(early, same));
    EXPECT_TRUE(early <= same);
    EXPECT_TRUE(early >= same);
    EXPECT_TRUE(early.Equal(&same, false, false));
    EXPECT_FALSE(early.Equal(&late, true, true));
    EXPECT_FALSE(early.Equal(nullptr, true, true));
}

TEST(DateTimeValue, NoComparisonHoldsAcrossKinds) {
    const DateTimeValue time(5.0, "5");
    const NumericValue number(5.0);
    const StringValue text("5");
    for (const ScoreValue* other : {static_cast<const ScoreValue*>(&number), static_cast<const ScoreValue*>(&text)}) {
        EXPECT_FALSE(time == *other);
        EXPECT_FALSE(time < *other);
        EXPECT_FALSE(time <= *other);
        EXPECT_FALSE(time > *other);
        EXPECT_FALSE(time >= *other);
        EXPECT_FALSE(time.Equal(other, true, true));
    }
}

}  // namespace
