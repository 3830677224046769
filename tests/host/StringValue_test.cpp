// A string value.
#include "host/StringValue.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>

#include "host/DateTimeValue.h"
#include "host/NumericValue.h"

namespace {

using KwBrevix_930::DateTimeValue;
using KwBrevix_930::NumericValue;
using KwBrevix_930::ScoreValue;
using KwBrevix_930::StringValue;

bool AreEqual(const ScoreValue& left, const ScoreValue& right) {
    return left == right;
}

TEST(StringValue, IsBuiltFromACharacterString) {
    EXPECT_EQ(StringValue("Größe").GetString(), "Größe");
    EXPECT_EQ(StringValue(static_cast<const char*>(nullptr)).GetString(), "");
    EXPECT_EQ(StringValue(std::string("a\0b", 3)).GetText().size(), 3u);
}

TEST(StringValue, TellsWhatItHolds) {
    StringValue value("17.5");
    EXPECT_EQ(value.GetType(), ScoreValue::kString);
    EXPECT_EQ(std::get<std::string>(value.GetValue()), "17.5");
    EXPECT_EQ(value.GetDouble(), 17.5);
    EXPECT_EQ(value.GetInt(), 17);
    value.SetText("setosa");
    EXPECT_EQ(value.GetText(), "setosa");
    EXPECT_EQ(value.GetDouble(), NumericValue::GetSysmisValue());
    EXPECT_EQ(value.GetInt(), 0);
    value.SetText("-1e99");
    EXPECT_EQ(value.GetInt(), std::numeric_limits<int>::min());
}

TEST(StringValue, IsNeverSystemMissing) {
    EXPECT_FALSE(StringValue("").IsSystemMissingValue());
    EXPECT_FALSE(StringValue("-1.7976931348623157e308").IsSystemMissingValue());
}

TEST(StringValue, CloneIsAnEqualObjectOfItsOwn) {
    const StringValue value("versicolor");
    const std::unique_ptr<ScoreValue> clone(value.Clone());
    EXPECT_NE(clone.get(), &value);
    EXPECT_TRUE(AreEqual(*clone, value));
}

TEST(StringValue, TakesOverAnyValueAsText) {
    StringValue value("before");
    const NumericValue number(0.25);
    const StringValue text("after");
    const DateTimeValue time(60.0, "00:01:00");
    const NumericValue missing(NumericValue::GetSysmisValue());
    EXPECT_TRUE(value.SetValue(&number));
    EXPECT_EQ(value.GetString(), "0.25");
    EXPECT_TRUE(value.SetValue(&text));
    EXPECT_EQ(value.GetString(), "after");
    EXPECT_TRUE(value.SetValue(&time));
    EXPECT_EQ(value.GetString(), "00:01:00");
    EXPECT_TRUE(value.SetValue(&missing));
    EXPECT_EQ(value.GetString(), "");
    EXPECT_FALSE(value.SetValue(nullptr));
    EXPECT_EQ(value.GetString(), "");
}

TEST(StringValue, ComparesByteByByte) {
    const StringValue apple("apple");
    const StringValue pear("pear");
    EXPECT_TRUE(apple < pear);
    EXPECT_TRUE(apple <= pear);
    EXPECT_FALSE(apple > pear);
    EXPECT_FALSE(apple >= pear);
    EXPECT_FALSE(AreEqual(apple, pear));
    EXPECT_TRUE(pear > apple);
    EXPECT_TRUE(pear >= apple);
    EXPECT_TRUE(AreEqual(apple, StringValue("apple")));
    EXPECT_TRUE(apple <= StringValue("apple"));
    EXPECT_TRUE(apple >= StringValue("apple"));
    EXPECT_FALSE(AreEqual(apple, StringValue("Apple")));
    EXPECT_FALSE(AreEqual(apple, StringValue("apple ")));
    EXPECT_TRUE(StringValue("Zebra") < apple);
    EXPECT_TRUE(StringValue("") < apple);
    EXPECT_TRUE(StringValue("\xC3\xA4") > StringValue("z"));
}

TEST(StringValue, NoComparisonHoldsAcrossKinds) {
    const StringValue text("5");
    const NumericValue number(5.0);
    const DateTimeValue time(5.0, "5");
    for (const ScoreValue* other : {static_cast<const ScoreValue*>(&number), static_cast<const ScoreValue*>(&time)}) {
        EXPECT_FALSE(text == *other);
        EXPECT_FALSE(text < *other);
        EXPECT_FALSE(text <= *other);
        EXPECT_FALSE(text > *other);
        EXPECT_FALSE(text >= *other);
        EXPECT_FALSE(text.Equal(other, true, true));
    }
}

TEST(StringValue, EqualIgnoresCaseAndTrailingBlanksOnlyWhenAsked) {
    const StringValue text("Iris setosa");
    const StringValue otherCase("iris SETOSA");
    const StringValue blanks("Iris setosa  ");
    const StringValue both("IRIS SETOSA ");
    EXPECT_TRUE(text.Equal(&text, false, false));
    EXPECT_FALSE(text.Equal(&otherCase, false, true));
    EXPECT_TRUE(text.Equal(&otherCase, true, false));
    EXPECT_FALSE(text.Equal(&blanks, true, false));
    EXPECT_TRUE(text.Equal(&blanks, false, true));
    EXPECT_FALSE(text.Equal(&both, true, false));
    EXPECT_FALSE(text.Equal(&both, false, true));
    EXPECT_TRUE(text.Equal(&both, true, true));
    EXPECT_FALSE(text.Equal(nullptr, true, true));
}

TEST(StringValue, EqualOfBlanksAlone) {
    const StringValue empty("");
    const StringValue blanks("   ");
    EXPECT_TRUE(empty.Equal(&blanks, false, true));
    EXPECT_FALSE(empty.Equal(&blanks, false, false));
    const StringValue leading(" x");
    const StringValue plain("x");
    EXPECT_FALSE(plain.Equal(&leading, true, true));
}

}  // namespace
