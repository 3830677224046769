// The host's variable: declarations, look-ups, and the rules of missing and invalid values.
#include "host/DictVar.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>

#include "host/BaseDictionary.h"
#include "host/CaseRecord.h"
#include "host/DateTimeValue.h"
#include "host/NumericValue.h"
#include "host/StringValue.h"
#include "host/transform/FieldType.h"
#include "tests/host/ForeignDictVar.h"

namespace {

using KwBrevix_930::DateTimeValue;
using KwBrevix_930::DictVar;
using KwBrevix_930::NumericValue;
using KwBrevix_930::ScoreDictVar;
using KwBrevix_930::ScoreValue;
using KwBrevix_930::StringValue;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

bool IsValid(const DictVar& variable, const ScoreValue& value) {
    return variable.IsValid(&value);
}

bool IsMissing(const DictVar& variable, const ScoreValue& value) {
    return variable.IsMissing(&value);
}

int IndexOf(const DictVar& variable, const ScoreValue& value) {
    return variable.GetCategoryIndex(&value);
}

TEST(DictVar, TellsItsNameTypeAndKind) {
    DictVar variable("Sepal.Length", DictVar::kNumber, DictVar::kContinuous);
    EXPECT_EQ(variable.GetName(), "Sepal.Length");
    EXPECT_EQ(variable.GetDataType(), DictVar::kNumber);
    EXPECT_EQ(variable.GetKind(), ScoreDictVar::kContinuous);
    EXPECT_FALSE(variable.IsString());
    EXPECT_TRUE(DictVar("s", DictVar::kString, DictVar::kCategorical).IsString());
    EXPECT_FALSE(DictVar("b", DictVar::kBoolean, DictVar::kCategorical).IsString());
    variable.SetName("other");
    EXPECT_EQ(variable.GetName(), "other");
}

TEST(DictVar, CategoricalIsKindThree) {
    EXPECT_EQ(static_cast<int>(ScoreDictVar::kCategorical), 3);
}

TEST(DictVar, HasNoIndexUntilOneIsSet) {
    DictVar variable("x", DictVar::kNumber, DictVar::kContinuous);
    EXPECT_EQ(variable.GetIndex(), -1);
    variable.SetIndex(17);
    EXPECT_EQ(variable.GetIndex(), 17);
}

TEST(DictVar, HasNoCategoryListUntilOneIsDeclared) {
    DictVar variable("x", DictVar::kString, DictVar::kCategorical);
    EXPECT_EQ(variable.GetCategories(), nullptr);
    EXPECT_EQ(variable.GetCategoryIndex("anything"), -1);
    variable.RegisterCategory("registered");
    EXPECT_EQ(variable.GetCategories(), nullptr);
}

TEST(DictVar, FindsCategoriesOfTextsByTextAndByValue) {
    DictVar species("Species", DictVar::kString, DictVar::kCategorical);
    for (const char* name : {"setosa", "versicolor", "", "5"})
        EXPECT_TRUE(species.AddCategory(name));
    ASSERT_EQ(species.GetCategories()->size(), 4u);
    EXPECT_EQ(species.GetCategories()->at(1).name, "versicolor");
    EXPECT_EQ(species.GetCategories()->at(1).value->GetString(), "versicolor");
    EXPECT_EQ(species.GetCategories()->at(1).value->GetType(), ScoreValue::kString);
    EXPECT_EQ(species.GetCategoryIndex("versicolor"), 1);
    EXPECT_EQ(species.GetCategoryIndex(""), 2);
    EXPECT_EQ(species.GetCategoryIndex("Versicolor"), -1);
    EXPECT_EQ(species.GetCategoryIndex("versicolor "), -1);
    EXPECT_EQ(IndexOf(species, StringValue("setosa")), 0);
    EXPECT_EQ(IndexOf(species, StringValue("virginica")), -1);
    EXPECT_EQ(IndexOf(species, NumericValue(5.0)), -1);
    EXPECT_EQ(species.GetCategoryIndex(static_cast<const ScoreValue*>(nullptr)), -1);
}

TEST(DictVar, FindsCategoriesOfNumbersByNumberWhateverTheirText) {
    DictVar grade("grade", DictVar::kNumber, DictVar::kOrdinal);
    for (const char* name : {"1", "2.50", "-0"})
        EXPECT_TRUE(grade.AddCategory(name));
    EXPECT_EQ(grade.GetCategories()->at(1).name, "2.50");
    EXPECT_EQ(grade.GetCategories()->at(1).value->GetDouble(), 2.5);
    EXPECT_EQ(grade.GetCategoryIndex("2.50"), 1);
    EXPECT_EQ(grade.GetCategoryIndex("2.5"), 1);
    EXPECT_EQ(grade.GetCategoryIndex("25e-1"), 1);
    EXPECT_EQ(grade.GetCategoryIndex("0"), 2);
    EXPECT_EQ(grade.GetCategoryIndex("two"), -1);
    EXPECT_EQ(IndexOf(grade, NumericValue(1.0)), 0);
    EXPECT_EQ(IndexOf(grade, NumericValue(0.0)), 2);
    EXPECT_EQ(IndexOf(grade, NumericValue(1.0000000000000002)), -1);
    EXPECT_EQ(IndexOf(grade, NumericValue(kNaN)), -1);
    EXPECT_EQ(IndexOf(grade, StringValue("1")), -1);
}

TEST(DictVar, RefusesACategoryThatIsNoValueOfTheType) {
    DictVar number("n", DictVar::kNumber, DictVar::kOrdinal);
    EXPECT_FALSE(number.AddCategory("low"));
    EXPECT_FALSE(number.AddCategory(""));
    EXPECT_FALSE(number.AddCategory("1,5"));
    DictVar flag("b", DictVar::kBoolean, DictVar::kCategorical);
    EXPECT_FALSE(flag.AddCategory("yes"));
    EXPECT_FALSE(flag.AddCategory("2"));
    EXPECT_EQ(number.GetCategories(), nullptr);
    EXPECT_EQ(flag.GetCategories(), nullptr);
}

TEST(DictVar, KeepsTheFirstPlaceOfARepeatedCategory) {
    DictVar number("n", DictVar::kNumber, DictVar::kOrdinal);
    for (const char* name : {"7", "8", "7.0", "7"})
        EXPECT_TRUE(number.AddCategory(name));
    ASSERT_EQ(number.GetCategories()->size(), 2u);
    EXPECT_EQ(number.GetCategoryIndex("7.0"), 0);
    DictVar text("s", DictVar::kString, DictVar::kCategorical);
    for (const char* name : {"a", "b", "a"})
        EXPECT_TRUE(text.AddCategory(name));
    EXPECT_EQ(text.GetCategories()->size(), 2u);
    EXPECT_EQ(text.GetCategoryIndex("b"), 1);
}

TEST(DictVar, RegisteredCategoriesAreFoundBehindTheDeclaredOnes) {
    DictVar color("color", DictVar::kString, DictVar::kCategorical);
    color.AddCategory("red");
    color.AddCategory("green");
    EXPECT_EQ(color.RegisterCategory("green"), 1);
    EXPECT_EQ(color.RegisterCategory("blue"), 2);
    EXPECT_EQ(color.RegisterCategory("black"), 3);
    EXPECT_EQ(color.RegisterCategory("blue"), 2);
    EXPECT_EQ(color.GetCategoryIndex("black"), 3);
    EXPECT_EQ(IndexOf(color, StringValue("blue")), 2);
    EXPECT_EQ(color.GetCategories()->size(), 2u);
}

TEST(DictVar, RegisteredCategoriesAreNotValid) {
    DictVar color("color", DictVar::kString, DictVar::kCategorical);
    color.AddCategory("red");
    color.RegisterCategory("blue");
    EXPECT_TRUE(IsValid(color, StringValue("red")));
    EXPECT_FALSE(IsValid(color, StringValue("blue")));
    DictVar open("open", DictVar::kString, DictVar::kCategorical);
    open.RegisterCategory("blue");
    EXPECT_TRUE(IsValid(open, StringValue("blue")));
    EXPECT_TRUE(IsValid(open, StringValue("red")));
}

TEST(DictVar, RegistersNumbersByNumberAndRefusesOtherTexts) {
    DictVar grade("grade", DictVar::kNumber, DictVar::kOrdinal);
    grade.AddCategory("1");
    EXPECT_EQ(grade.RegisterCategory("1.0"), 0);
    EXPECT_EQ(grade.RegisterCategory("4.5"), 1);
    EXPECT_EQ(grade.RegisterCategory("45e-1"), 1);
    EXPECT_EQ(IndexOf(grade, NumericValue(4.5)), 1);
    EXPECT_EQ(grade.RegisterCategory("high"), -1);
    EXPECT_EQ(grade.RegisterCategory("5"), 2);
}

TEST(DictVar, DeclaresNothingBehindARegisteredCategory) {
    DictVar color("color", DictVar::kString, DictVar::kCategorical);
    color.AddCategory("red");
    color.RegisterCategory("blue");
    EXPECT_TRUE(color.AddCategory("red"));
    EXPECT_FALSE(color.AddCategory("green"));
    EXPECT_FALSE(color.AddCategory("blue"));
    EXPECT_EQ(color.GetCategories()->size(), 1u);
    EXPECT_EQ(color.GetCategoryIndex("blue"), 1);
}

TEST(DictVar, BooleanKnowsTrueAndFalseAsOneAndZero) {
    DictVar flag("flag", DictVar::kBoolean, DictVar::kCategorical);
    EXPECT_EQ(flag.ParseText("true"), 1.0);
    EXPECT_EQ(flag.ParseText("false"), 0.0);
    EXPECT_EQ(flag.ParseText("1"), 1.0);
    EXPECT_EQ(flag.ParseText("0.0"), 0.0);
    for (const char* text : {"yes", "2", "-1", "", "NaN"})
        EXPECT_EQ(flag.ParseText(text), std::nullopt) << text;
    flag.AddCategory("true");
    flag.AddCategory("false");
    EXPECT_EQ(IndexOf(flag, NumericValue(0.0)), 1);
    EXPECT_EQ(flag.GetCategoryIndex("1"), 0);
    EXPECT_EQ(flag.GetCategories()->at(0).name, "true");
}

TEST(DictVar, BooleanAllowsNoOtherNumber) {
    const DictVar flag("flag", DictVar::kBoolean, DictVar::kCategorical);
    EXPECT_TRUE(IsValid(flag, NumericValue(1.0)));
    EXPECT_TRUE(IsValid(flag, NumericValue(0.0)));
    EXPECT_FALSE(IsValid(flag, NumericValue(0.5)));
    EXPECT_FALSE(IsValid(flag, NumericValue(kNaN)));
}

TEST(DictVar, ParsesNumbersStrictlyAndTextsNever) {
    const DictVar number("n", DictVar::kNumber, DictVar::kContinuous);
    EXPECT_EQ(number.ParseText(" 2.5 "), 2.5);
    EXPECT_EQ(number.ParseText("2,5"), std::nullopt);
    EXPECT_EQ(number.ParseText("true"), std::nullopt);
    EXPECT_EQ(number.MakeValue("x"), nullptr);
    EXPECT_EQ(number.MakeValue("-3")->GetDouble(), -3.0);
    const DictVar text("s", DictVar::kString, DictVar::kCategorical);
    EXPECT_EQ(text.ParseText("2.5"), std::nullopt);
    EXPECT_EQ(text.MakeValue("2.5")->GetType(), ScoreValue::kString);
}

TEST(DictVar, ContinuousWithoutIntervalsAllowsEveryNumber) {
    const DictVar x("x", DictVar::kNumber, DictVar::kContinuous);
    for (const double number : {0.0, -1e308, 5e-324, kInfinity, -kInfinity})
        EXPECT_TRUE(IsValid(x, NumericValue(number))) << number;
    EXPECT_FALSE(IsValid(x, NumericValue(kNaN)));
    EXPECT_FALSE(IsValid(x, StringValue("1")));
    EXPECT_FALSE(IsValid(x, DateTimeValue(1.0, "1")));
    EXPECT_FALSE(x.IsValid(nullptr));
}

TEST(DictVar, TextWithoutCategoriesAllowsEveryText) {
    const DictVar s("s", DictVar::kString, DictVar::kCategorical);
    EXPECT_TRUE(IsValid(s, StringValue("")));
    EXPECT_TRUE(IsValid(s, StringValue("anything")));
    EXPECT_FALSE(IsValid(s, NumericValue(1.0)));
}

struct Closure {
    bool left;
    bool right;
};

class IntervalOfEachClosure : public testing::TestWithParam<Closure> {};

TEST_P(IntervalOfEachClosure, HoldsItsMarginsOnlyWhereClosed) {
    DictVar x("x", DictVar::kNumber, DictVar::kContinuous);
    x.AddInterval({-1.25, 3.5, GetParam().left, GetParam().right});
    EXPECT_EQ(IsValid(x, NumericValue(-1.25)), GetParam().left);
    EXPECT_EQ(IsValid(x, NumericValue(3.5)), GetParam().right);
    EXPECT_TRUE(IsValid(x, NumericValue(-1.2499999999999998)));
    EXPECT_TRUE(IsValid(x, NumericValue(3.4999999999999996)));
    EXPECT_FALSE(IsValid(x, NumericValue(-1.2500000000000002)));
    EXPECT_FALSE(IsValid(x, NumericValue(3.5000000000000004)));
    EXPECT_FALSE(IsValid(x, NumericValue(kNaN)));
}

INSTANTIATE_TEST_SUITE_P(DictVar, IntervalOfEachClosure,
                         testing::Values(Closure{true, true}, Closure{true, false}, Closure{false, true},
                                         Closure{false, false}),
                         [](const auto& row) {
                             return std::string(row.param.left ? "closed" : "open") +
                                    (row.param.right ? "Closed" : "Open");
                         });

TEST(DictVar, AnAbsentMarginIsOpenToInfinity) {
    DictVar x("x", DictVar::kNumber, DictVar::kContinuous);
    x.AddInterval({std::nullopt, -10.5, true, true});
    x.AddInterval({10.5, std::nullopt, false, true});
    EXPECT_TRUE(IsValid(x, NumericValue(-kInfinity)));
    EXPECT_TRUE(IsValid(x, NumericValue(-10.5)));
    EXPECT_FALSE(IsValid(x, NumericValue(0.0)));
    EXPECT_FALSE(IsValid(x, NumericValue(10.5)));
    EXPECT_TRUE(IsValid(x, NumericValue(kInfinity)));
    EXPECT_EQ(x.GetIntervals().size(), 2u);
}

TEST(DictVar, ADeclaredValueOfAContinuousFieldIsValidOutsideItsIntervals) {
    DictVar x("x", DictVar::kNumber, DictVar::kContinuous);
    x.AddInterval({0.0, 1.0, true, true});
    x.AddCategory("99");
    EXPECT_TRUE(IsValid(x, NumericValue(99.0)));
    EXPECT_FALSE(IsValid(x, NumericValue(98.0)));
}

TEST(DictVar, AContinuousFieldWithValuesAloneAllowsEveryNumber) {
    DictVar x("x", DictVar::kNumber, DictVar::kContinuous);
    x.AddCategory("99");
    EXPECT_TRUE(IsValid(x, NumericValue(98.0)));
}

TEST(DictVar, CategoricalAndOrdinalNumbersAllowTheirCategoriesOnly) {
    for (const auto kind : {DictVar::kCategorical, DictVar::kOrdinal}) {
        DictVar x("x", DictVar::kNumber, kind);
        x.AddCategory("1");
        x.AddCategory("2");
        EXPECT_TRUE(IsValid(x, NumericValue(2.0)));
        EXPECT_FALSE(IsValid(x, NumericValue(3.0)));
        EXPECT_FALSE(IsValid(x, StringValue("2")));
    }
}

TEST(DictVar, AnInvalidValueIsInvalidEvenInsideAnInterval) {
    DictVar x("x", DictVar::kNumber, DictVar::kContinuous);
    x.AddInterval({0.0, 100.0, true, true});
    x.AddInvalidValue("50");
    x.AddInvalidValue("n/a");
    EXPECT_FALSE(IsValid(x, NumericValue(50.0)));
    EXPECT_TRUE(IsValid(x, NumericValue(51.0)));
    EXPECT_FALSE(IsValid(x, StringValue("n/a")));
    DictVar s("s", DictVar::kString, DictVar::kCategorical);
    s.AddInvalidValue("bad");
    EXPECT_FALSE(IsValid(s, StringValue("bad")));
    EXPECT_TRUE(IsValid(s, StringValue("good")));
}

TEST(DictVar, MissingIsNullSystemMissingAndDeclaredMissing) {
    DictVar x("x", DictVar::kNumber, DictVar::kContinuous);
    x.AddMissingValue("-999");
    x.AddMissingValue("NA");
    x.AddMissingValue("NaN");
    EXPECT_TRUE(x.IsMissing(nullptr));
    EXPECT_TRUE(IsMissing(x, NumericValue(NumericValue::GetSysmisValue())));
    EXPECT_TRUE(IsMissing(x, NumericValue(-999.0)));
    EXPECT_TRUE(IsMissing(x, StringValue("NA")));
    EXPECT_TRUE(IsMissing(x, NumericValue(kNaN)));
    EXPECT_FALSE(IsMissing(x, NumericValue(999.0)));
    EXPECT_FALSE(IsMissing(x, StringValue("-999")));
    EXPECT_FALSE(IsMissing(x, StringValue("")));
    DictVar s("s", DictVar::kString, DictVar::kCategorical);
    s.AddMissingValue("");
    EXPECT_TRUE(IsMissing(s, StringValue("")));
    EXPECT_FALSE(IsMissing(s, StringValue(" ")));
}

TEST(DictVar, NaNIsNotMissingUnlessDeclared) {
    const DictVar x("x", DictVar::kNumber, DictVar::kContinuous);
    EXPECT_FALSE(IsMissing(x, NumericValue(kNaN)));
    EXPECT_FALSE(IsMissing(x, NumericValue(-kInfinity)));
}

TEST(DictVar, TheReplacementObjectItselfCountsAsMissingButNotItsEqual) {
    DictVar x("x", DictVar::kNumber, DictVar::kContinuous);
    x.GetVarStats()->SetMissingReplacement(std::make_unique<NumericValue>(2.5));
    EXPECT_TRUE(x.IsMissing(x.GetVarStats()->GetMissingReplacement()));
    EXPECT_FALSE(IsMissing(x, NumericValue(2.5)));
}

TEST(DictVar, AsIsAllowsEveryValueOfTheType) {
    DictVar s("s", DictVar::kString, DictVar::kCategorical);
    s.AddCategory("a");
    s.SetInvalidTreatment(DictVar::kAsIs, nullptr);
    EXPECT_TRUE(IsValid(s, StringValue("z")));
    EXPECT_FALSE(s.IsDeclaredValid(StringValue("z")));
    EXPECT_FALSE(IsValid(s, NumericValue(1.0)));
    DictVar x("x", DictVar::kNumber, DictVar::kContinuous);
    x.AddInterval({0.0, 1.0, true, true});
    x.SetInvalidTreatment(DictVar::kAsIs, nullptr);
    EXPECT_TRUE(IsValid(x, NumericValue(5.0)));
    EXPECT_TRUE(IsValid(x, NumericValue(kNaN)));
    EXPECT_FALSE(IsValid(x, StringValue("abc")));
}

TEST(DictVar, TheReplacementOfInvalidValuesIsValidItself) {
    DictVar s("s", DictVar::kString, DictVar::kCategorical);
    s.AddCategory("a");
    EXPECT_EQ(s.GetInvalidTreatment(), DictVar::kReturnInvalid);
    s.SetInvalidTreatment(DictVar::kAsValue, std::make_unique<StringValue>("other"));
    EXPECT_EQ(s.GetInvalidTreatment(), DictVar::kAsValue);
    EXPECT_TRUE(s.IsValid(s.GetInvalidReplacement()));
    EXPECT_FALSE(IsValid(s, StringValue("other")));
}

TEST(DictVar, CopyIsWholeAndItsOwn) {
    DictVar x("x", DictVar::kNumber, DictVar::kContinuous);
    x.AddCategory("5");
    x.RegisterCategory("6");
    x.AddMissingValue("-1");
    x.AddInvalidValue("0.5");
    x.AddInterval({0.0, 1.0, true, true});
    x.SetInvalidTreatment(DictVar::kAsValue, std::make_unique<NumericValue>(0.75));
    x.GetVarStats()->SetMissingReplacement(std::make_unique<NumericValue>(0.25));
    x.GetVarStats()->SetEncodedMissingReplacement("5", "0.125");
    x.SetIndex(3);

    const std::unique_ptr<DictVar> copy = DictVar::CopyOf(x);
    EXPECT_EQ(copy->GetName(), "x");
    EXPECT_EQ(copy->GetDataType(), DictVar::kNumber);
    EXPECT_EQ(copy->GetKind(), DictVar::kContinuous);
    EXPECT_EQ(copy->GetCategories()->size(), 1u);
    EXPECT_NE(copy->GetCategories()->at(0).value.get(), x.GetCategories()->at(0).value.get());
    EXPECT_EQ(copy->GetCategoryIndex("6"), 1);
    EXPECT_EQ(copy->RegisterCategory("7"), 2);
    EXPECT_EQ(x.GetCategoryIndex("7"), -1);
    EXPECT_TRUE(IsMissing(*copy, NumericValue(-1.0)));
    EXPECT_FALSE(copy->IsDeclaredValid(NumericValue(0.5)));
    EXPECT_FALSE(copy->IsDeclaredValid(NumericValue(2.0)));
    EXPECT_EQ(copy->GetInvalidTreatment(), DictVar::kAsValue);
    EXPECT_EQ(copy->GetInvalidReplacement()->GetDouble(), 0.75);
    EXPECT_NE(copy->GetInvalidReplacement(), x.GetInvalidReplacement());
    EXPECT_EQ(copy->GetVarStats()->GetMissingReplacement()->GetDouble(), 0.25);
    EXPECT_TRUE(copy->IsMissing(copy->GetVarStats()->GetMissingReplacement()));
    EXPECT_FALSE(copy->IsMissing(x.GetVarStats()->GetMissingReplacement()));
    EXPECT_EQ(*copy->GetVarStats()->GetEncodedMissingReplacement("5"), "0.125");
    EXPECT_EQ(copy->GetIndex(), 3);
}

TEST(DictVar, CopyOfAForeignVariableKeepsWhatItsInterfaceTells) {
    ForeignDictVar foreign("risk", false);
    foreign.AddCategory("low", new NumericValue(1.5));
    foreign.AddCategory("high", new NumericValue(2.5));
    foreign.GetVarStats()->SetMissingReplacement(std::make_unique<NumericValue>(1.5));
    foreign.SetIndex(9);
    const std::unique_ptr<DictVar> copy = DictVar::CopyOf(foreign);
    EXPECT_EQ(copy->GetName(), "risk");
    EXPECT_EQ(copy->GetKind(), ScoreDictVar::kOrdinal);
    EXPECT_FALSE(copy->IsString());
    ASSERT_EQ(copy->GetCategories()->size(), 2u);
    EXPECT_EQ(copy->GetCategories()->at(1).name, "high");
    EXPECT_EQ(copy->GetCategoryIndex("high"), 1);
    EXPECT_EQ(IndexOf(*copy, NumericValue(1.5)), 0);
    EXPECT_FALSE(IsValid(*copy, NumericValue(3.5)));
    EXPECT_EQ(copy->GetVarStats()->GetMissingReplacement()->GetDouble(), 1.5);
    EXPECT_EQ(copy->GetIndex(), 9);
}

TEST(DictVar, CopyOfAForeignTextVariableFindsNamesAndValues) {
    ForeignDictVar foreign("answer", true);
    foreign.AddCategory("Yes, please", new StringValue("y"));
    foreign.AddCategory("No", new StringValue("n"));
    const std::unique_ptr<DictVar> copy = DictVar::CopyOf(foreign);
    EXPECT_TRUE(copy->IsString());
    EXPECT_EQ(IndexOf(*copy, StringValue("n")), 1);
    EXPECT_EQ(copy->GetCategoryIndex("Yes, please"), 0);
    EXPECT_EQ(DictVar::CopyOf(ForeignDictVar("open", true))->GetCategories(), nullptr);
}

struct CalendarRow {
    const char* type;
    const char* text;
    bool isValid;
    double number;  // of a type that counts
};

class CellOfACalendarType : public testing::TestWithParam<CalendarRow> {};

TEST_P(CellOfACalendarType, IsReadByItsType) {
    const CalendarRow& row = GetParam();
    const auto type = KwBrevix_930::ParseFieldType(row.type);
    ASSERT_TRUE(type);
    DictVar variable("d", type->GetStorage(), ScoreDictVar::kOrdinal);
    variable.SetFieldType(*type);
    const DictVar copy(variable);
    const auto value = copy.MakeValue(row.text);
    EXPECT_EQ(value != nullptr, row.isValid);
    EXPECT_EQ(variable.AddCategory(row.text), row.isValid);
    const StringValue text(row.text);
    if (variable.IsString()) {
        EXPECT_EQ(IsValid(copy, text), row.isValid);
        variable.SetInvalidTreatment(DictVar::kAsIs, nullptr);
        EXPECT_EQ(IsValid(variable, text), row.isValid);
    } else if (row.isValid) {
        EXPECT_EQ(value->GetDouble(), row.number);
        EXPECT_EQ(variable.GetCategories()->front().name, row.text);
    }
}

INSTANTIATE_TEST_SUITE_P(
    DictVar, CellOfACalendarType,
    testing::Values(CalendarRow{"date", "2024-02-29", true, 0}, CalendarRow{"date", "2023-02-29", false, 0},
                    CalendarRow{"date", "2023-13-01", false, 0}, CalendarRow{"date", "yesterday", false, 0},
                    CalendarRow{"date", "2024-02-29T10:00:00", false, 0}, CalendarRow{"time", "23:59:59.5", true, 0},
                    CalendarRow{"time", "24:30:00", false, 0}, CalendarRow{"time", "2024-02-29", false, 0},
                    CalendarRow{"dateTime", "2024-02-29T23:59:59", true, 0},
                    CalendarRow{"dateTime", "2024-02-30T00:00:00", false, 0},
                    CalendarRow{"dateDaysSince[1970]", "1971-01-02", true, 366},
                    CalendarRow{"dateDaysSince[1970]", "366.5", true, 366.5},
                    CalendarRow{"dateDaysSince[1960]", "1959-12-31", true, -1},
                    CalendarRow{"dateDaysSince[1980]", "1980-02-30", false, 0},
                    CalendarRow{"dateDaysSince[1980]", "1980-02-29T01:00:00", false, 0},
                    CalendarRow{"timeSeconds", "01:02:03.25", true, 3723.25},
                    CalendarRow{"timeSeconds", "1:2", false, 0}, CalendarRow{"timeSeconds", "-5", true, -5},
                    CalendarRow{"dateTimeSecondsSince[1980]", "1980-01-02T00:00:01", true, 86401},
                    CalendarRow{"dateTimeSecondsSince[1960]", "1960-01-02", true, 86400},
                    CalendarRow{"dateTimeSecondsSince[1960]", "noon", false, 0}));

TEST(DictVar, TruthValuesAreReadInLettersOfEitherCase) {
    const DictVar b("b", DictVar::kBoolean, ScoreDictVar::kCategorical);
    for (const char* text : {"true", "True", "TRUE", "1", " 1 "})
        EXPECT_EQ(b.ParseText(text), 1.0) << text;
    for (const char* text : {"false", "False", "FALSE", "0", "0.0"})
        EXPECT_EQ(b.ParseText(text), 0.0) << text;
    for (const char* text : {"yes", "t", "truee", "", "2", "true "})
        EXPECT_EQ(b.ParseText(text), std::nullopt) << text;
}

TEST(DictVar, DisplayNamesTheVariableWithoutALineEnd) {
    std::ostringstream stream;
    DictVar("Sepal.Width", DictVar::kNumber, DictVar::kContinuous).Display(stream);
    EXPECT_EQ(stream.str(), "Sepal.Width (numeric, continuous)");
    stream.str("");
    DictVar("Species", DictVar::kString, DictVar::kCategorical).Display(stream);
    EXPECT_EQ(stream.str(), "Species (string, categorical)");
}

TEST(DictVar, EveryOneOfManyCategoriesIsFound) {
    DictVar s("s", DictVar::kString, DictVar::kCategorical);
    DictVar x("x", DictVar::kNumber, DictVar::kCategorical);
    for (int i = 0; i < 100'000; ++i) {
        s.AddCategory("c" + std::to_string(i));
        x.AddCategory(std::to_string(i));
    }
    for (int i = 0; i < 100'000; ++i) {
        ASSERT_EQ(s.GetCategoryIndex("c" + std::to_string(i)), i);
        ASSERT_EQ(IndexOf(x, NumericValue(i)), i);
    }
}

// With what may be read in front of the text: digits, which must not count.
bool ReadPlain(const DictVar& variable, const std::string& text, double& number) {
    const std::string inFront(KwBrevix_930::ShortDecimal::kFront, '7');
    return variable.ReadPlain(std::string_view(inFront + text).substr(inFront.size()), number);
}

// A text is plain just where a record holds it as it stands, and the variable takes it: all rules are tried on all
// texts.
TEST(DictVarReadPlain, TakesWhatNoRuleConcerns) {
    const auto make = [](DictVar::DataType type, DictVar::Kind kind) { return DictVar("v", type, kind); };
    std::vector<std::unique_ptr<DictVar>> variables;
    const auto add = [&](DictVar::DataType type, DictVar::Kind kind) -> DictVar& {
        return *variables.emplace_back(std::make_unique<DictVar>(make(type, kind)));
    };
    add(DictVar::kNumber, DictVar::kContinuous);
    add(DictVar::kNumber, DictVar::kContinuous).AddMissingValue("-9");
    add(DictVar::kNumber, DictVar::kContinuous).AddInvalidValue("2.5");
    add(DictVar::kNumber, DictVar::kContinuous).AddInterval({0.5, 7.25});
    add(DictVar::kNumber, DictVar::kContinuous).SetOutlierTreatment(DictVar::kOutliersAsExtreme, 0.0, 3.0);
    add(DictVar::kNumber, DictVar::kContinuous).SetInvalidTreatment(DictVar::kAsIs, nullptr);
    add(DictVar::kNumber, DictVar::kContinuous).SetInvalidTreatment(DictVar::kAsMissing, nullptr);
    add(DictVar::kNumber, DictVar::kContinuous)
        .SetInvalidTreatment(DictVar::kAsValue, std::make_unique<NumericValue>(1.5));
    add(DictVar::kNumber, DictVar::kCategorical).AddCategory("2.5");
    add(DictVar::kBoolean, DictVar::kCategorical);
    add(DictVar::kString, DictVar::kCategorical);
    DictVar& color = add(DictVar::kString, DictVar::kCategorical);
    color.AddCategory("red");
    color.AddCategory("2.5");
    color.AddMissingValue("none");
    color.RegisterCategory("blue");
    for (const auto& variable : variables) {
        KwBrevix_930::BaseDictionary dictionary;
        ASSERT_TRUE(dictionary.AddVar("v", *variable));
        const auto& declared = dynamic_cast<const DictVar&>(*dictionary.FindVar("v"));
        KwBrevix_930::CaseRecord record(dictionary);
        for (const char* text : {"2.5", "-9", "0.25", "100", "1e3", "NaN", "INF", "-1.7976931348623157e308", "abc", "",
                                 "true", "1", "red", "blue", "none", " 3", "0.30000000000000004"}) {
            record.SetText(0, text);
            const ScoreValue* held = record.GetValue(0);
            const bool isTaken = held && !declared.IsMissing(held) && declared.IsValid(held);
            double number = -77.0;
            if (!ReadPlain(declared, text, number))
                continue;
            ASSERT_TRUE(isTaken) << text;
            const double expected = declared.IsString() ? declared.GetCategoryIndex(held) : held->GetDouble();
            EXPECT_TRUE(number == expected || (std::isnan(number) && std::isnan(expected))) << text;
        }
    }
    double number = 0.0;
    EXPECT_TRUE(ReadPlain(*variables[0], "2.5", number));
    EXPECT_EQ(number, 2.5);
    EXPECT_FALSE(ReadPlain(*variables[1], "-9", number));
    EXPECT_FALSE(ReadPlain(*variables[2], "2.5", number));
    EXPECT_FALSE(ReadPlain(*variables[3], "7.5", number));
    EXPECT_TRUE(ReadPlain(*variables[3], "7.25", number));
    EXPECT_FALSE(ReadPlain(*variables[4], "3.5", number));
    EXPECT_TRUE(ReadPlain(color, "2.5", number));
    EXPECT_EQ(number, 1.0);
    EXPECT_FALSE(ReadPlain(color, "blue", number)) << "registered only";
    EXPECT_FALSE(ReadPlain(color, "none", number));
}

}  // namespace
