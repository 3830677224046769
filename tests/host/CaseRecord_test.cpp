// The host's case record: what a cell holds, by index and by name.
#include "host/CaseRecord.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>
#include <typeinfo>

#include "host/BaseDictionary.h"
#include "host/DictVar.h"
#include "tests/host/ForeignDictVar.h"

namespace {

using KwBrevix_930::BaseDictionary;
using KwBrevix_930::CaseRecord;
using KwBrevix_930::DictVar;
using KwBrevix_930::NumericValue;
using KwBrevix_930::ScoreValue;
using KwBrevix_930::StringValue;

// Three fields: x, a number within [0, 10]; s, one of the texts a and b; b, a boolean.
class CaseRecordTest : public testing::Test {
protected:
    CaseRecordTest() {
        x = Add("x", DictVar::kNumber, DictVar::kContinuous);
        s = Add("s", DictVar::kString, DictVar::kCategorical);
        b = Add("b", DictVar::kBoolean, DictVar::kCategorical);
        x->AddInterval({0.0, 10.0, true, true});
        s->AddCategory("a");
        s->AddCategory("b");
    }

    DictVar* Add(const std::string& name, DictVar::DataType type, DictVar::Kind kind) {
        auto variable = std::make_unique<DictVar>(name, type, kind);
        DictVar* raw = variable.get();
        dictionary.AddVar(std::move(variable));
        return raw;
    }

    static void Replace(DictVar* variable, double number) {
        variable->GetVarStats()->SetMissingReplacement(std::make_unique<NumericValue>(number));
    }

    BaseDictionary dictionary;
    DictVar* x;
    DictVar* s;
    DictVar* b;
};

TEST_F(CaseRecordTest, StandsInDictionaryOrder) {
    const CaseRecord record(dictionary);
    EXPECT_EQ(record.GetIndex("x"), 0);
    EXPECT_EQ(record.GetIndex("s"), 1);
    EXPECT_EQ(record.GetIndex("b"), 2);
    EXPECT_EQ(record.GetIndex("X"), -1);
    EXPECT_EQ(record.GetIndex(""), -1);
}

TEST_F(CaseRecordTest, SaysHowItIsAccessed) {
    EXPECT_TRUE(CaseRecord(dictionary).IsAccessedByIndex());
    EXPECT_TRUE(CaseRecord(dictionary, CaseRecord::kByIndex).IsAccessedByIndex());
    EXPECT_FALSE(CaseRecord(dictionary, CaseRecord::kByName).IsAccessedByIndex());
}

TEST_F(CaseRecordTest, GivesTheSameValueByIndexAndByName) {
    for (const auto access : {CaseRecord::kByIndex, CaseRecord::kByName}) {
        CaseRecord record(dictionary, access);
        record.SetNumber(0, 2.385);
        record.SetText(1, "b");
        EXPECT_EQ(record.GetValue(0)->GetDouble(), 2.385);
        EXPECT_EQ(record.GetValue("x"), record.GetValue(0));
        EXPECT_EQ(record.GetValue("s")->GetString(), "b");
    }
}

TEST_F(CaseRecordTest, AnswersNullForWhatItDoesNotHold) {
    const CaseRecord record(dictionary);
    for (const int index : {-1, 3, 1 << 30, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()})
        EXPECT_EQ(record.GetValue(index), nullptr) << index;
    EXPECT_EQ(record.GetValue("unknown"), nullptr);
    EXPECT_EQ(CaseRecord(BaseDictionary()).GetValue(0), nullptr);
}

TEST_F(CaseRecordTest, RefusesToSetWhatItDoesNotHold) {
    CaseRecord record(dictionary);
    EXPECT_THROW(record.SetNumber(3, 1.0), std::out_of_range);
    EXPECT_THROW(record.SetText(-1, "a"), std::out_of_range);
    EXPECT_THROW(record.SetMissing(99), std::out_of_range);
}

TEST_F(CaseRecordTest, StartsMissing) {
    const CaseRecord record(dictionary);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(record.GetValue(i), nullptr);
}

TEST_F(CaseRecordTest, AMissingCellHoldsTheReplacementObjectItself) {
    Replace(x, 4.5);
    CaseRecord record(dictionary);
    EXPECT_EQ(record.GetValue(0), x->GetVarStats()->GetMissingReplacement());
    record.SetNumber(0, 1.5);
    EXPECT_EQ(record.GetValue(0)->GetDouble(), 1.5);
    record.SetMissing(0);
    EXPECT_EQ(record.GetValue(0), x->GetVarStats()->GetMissingReplacement());
    record.SetNumber(0, 4.5);
    EXPECT_NE(record.GetValue(0), x->GetVarStats()->GetMissingReplacement());
}

TEST_F(CaseRecordTest, DeclaredMissingValuesBecomeMissing) {
    x->AddMissingValue("-9");
    x->AddMissingValue("NA");
    s->AddMissingValue("?");
    Replace(x, 4.5);
    CaseRecord record(dictionary);
    record.SetNumber(0, 3.0);
    record.SetNumber(0, -9.0);
    EXPECT_EQ(record.GetValue(0), x->GetVarStats()->GetMissingReplacement());
    record.SetNumber(0, 3.0);
    record.SetText(0, "-9.0");
    EXPECT_EQ(record.GetValue(0), x->GetVarStats()->GetMissingReplacement());
    record.SetNumber(0, 3.0);
    record.SetText(0, "NA");
    EXPECT_EQ(record.GetValue(0), x->GetVarStats()->GetMissingReplacement());
    record.SetText(1, "?");
    EXPECT_EQ(record.GetValue(1), nullptr);
    record.SetNumber(0, NumericValue::GetSysmisValue());
    EXPECT_EQ(record.GetValue(0), x->GetVarStats()->GetMissingReplacement());
}

TEST_F(CaseRecordTest, TextsOfNumberFieldsBecomeNumbers) {
    CaseRecord record(dictionary);
    record.SetText(0, " 7.25 ");
    EXPECT_EQ(record.GetValue(0)->GetType(), ScoreValue::kNumeric);
    EXPECT_EQ(record.GetValue(0)->GetDouble(), 7.25);
    record.SetText(2, "true");
    EXPECT_EQ(record.GetValue(2)->GetDouble(), 1.0);
    record.SetText(2, "false");
    EXPECT_EQ(record.GetValue(2)->GetDouble(), 0.0);
}

TEST_F(CaseRecordTest, ATextThatIsNoNumberIsAnInvalidValue) {
    CaseRecord record(dictionary);
    for (const char* text : {"7,25", "abc", "", "0x10", "1 2"}) {
        record.SetText(0, text);
        ASSERT_NE(record.GetValue(0), nullptr) << text;
        EXPECT_FALSE(x->IsMissing(record.GetValue(0))) << text;
        EXPECT_FALSE(x->IsValid(record.GetValue(0))) << text;
    }
    record.SetText(2, "maybe");
    EXPECT_FALSE(b->IsValid(record.GetValue(2)));
    record.SetText(2, "7");
    EXPECT_FALSE(b->IsValid(record.GetValue(2)));
}

TEST_F(CaseRecordTest, ANumberInATextFieldIsAnInvalidValue) {
    CaseRecord record(dictionary);
    record.SetNumber(1, 1.0);
    EXPECT_FALSE(s->IsValid(record.GetValue(1)));
}

TEST_F(CaseRecordTest, InvalidValuesStayUnderReturnInvalidAndAsIs) {
    for (const auto treatment : {DictVar::kReturnInvalid, DictVar::kAsIs}) {
        x->SetInvalidTreatment(treatment, nullptr);
        CaseRecord record(dictionary);
        record.SetNumber(0, 11.5);
        EXPECT_EQ(record.GetValue(0)->GetDouble(), 11.5);
        EXPECT_EQ(x->IsValid(record.GetValue(0)), treatment == DictVar::kAsIs);
    }
}

TEST_F(CaseRecordTest, AsMissingTurnsAnInvalidValueIntoAMissingOne) {
    x->SetInvalidTreatment(DictVar::kAsMissing, nullptr);
    CaseRecord record(dictionary);
    record.SetNumber(0, 11.5);
    EXPECT_EQ(record.GetValue(0), nullptr);
    record.SetText(0, "garbage");
    EXPECT_EQ(record.GetValue(0), nullptr);
    record.SetNumber(0, 9.5);
    EXPECT_EQ(record.GetValue(0)->GetDouble(), 9.5);
    Replace(x, 4.5);
    CaseRecord replaced(dictionary);
    replaced.SetNumber(0, std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(replaced.GetValue(0), x->GetVarStats()->GetMissingReplacement());
}

TEST_F(CaseRecordTest, AsValueTurnsAnInvalidValueIntoItsReplacement) {
    s->SetInvalidTreatment(DictVar::kAsValue, std::make_unique<StringValue>("other"));
    CaseRecord record(dictionary);
    record.SetText(1, "z");
    EXPECT_EQ(record.GetValue(1), s->GetInvalidReplacement());
    EXPECT_TRUE(s->IsValid(record.GetValue(1)));
    EXPECT_FALSE(s->IsMissing(record.GetValue(1)));
    record.SetText(1, "a");
    EXPECT_EQ(record.GetValue(1)->GetString(), "a");
    record.SetMissing(1);
    EXPECT_EQ(record.GetValue(1), nullptr);
}

TEST_F(CaseRecordTest, AMissingValueIsNotTreatedAsInvalid) {
    x->AddMissingValue("99");
    x->SetInvalidTreatment(DictVar::kAsValue, std::make_unique<NumericValue>(5.0));
    CaseRecord record(dictionary);
    record.SetNumber(0, 99.0);
    EXPECT_EQ(record.GetValue(0), nullptr);
    record.SetNumber(0, 98.0);
    EXPECT_EQ(record.GetValue(0)->GetDouble(), 5.0);
}

// What a cell of x holds: one of the variable's own objects or the value that was set.
enum class Holds { kNothing, kReplacement, kInvalidReplacement, kLow, kHigh, kItself, kNeverValid };

struct TreatmentRow {
    const char* text;  // empty: missing
    DictVar::InvalidTreatment invalid;
    DictVar::OutlierTreatment outliers;
    bool hasReplacement;
    bool missingIsInvalid;
    Holds holds;
    bool isValid;  // as the model asks: neither missing nor refused
};

// x is declared within [0, 10], -9 and NA stand for missing, 5 is declared invalid, usual are 2 to 8; 4.5 replaces a
// missing and 6.5 an invalid value.
class CellOfEachTreatment : public CaseRecordTest, public testing::WithParamInterface<TreatmentRow> {
protected:
    Holds holdsOf(const ScoreValue* value) const {
        if (!value)
            return Holds::kNothing;
        if (value == x->GetVarStats()->GetMissingReplacement())
            return Holds::kReplacement;
        if (value == x->GetInvalidReplacement())
            return Holds::kInvalidReplacement;
        if (value->GetType() == ScoreValue::kDateTime)
            return Holds::kNeverValid;
        if (value->GetDouble() == 2.0)
            return Holds::kLow;
        return value->GetDouble() == 8.0 ? Holds::kHigh : Holds::kItself;
    }
};

TEST_P(CellOfEachTreatment, HoldsWhatTheStandardSays) {
    const TreatmentRow& row = GetParam();
    x->AddMissingValue("-9");
    x->AddMissingValue("NA");
    x->AddInvalidValue("5");
    x->SetInvalidTreatment(row.invalid,
                           row.invalid == DictVar::kAsValue ? std::make_unique<NumericValue>(6.5) : nullptr);
    x->SetOutlierTreatment(row.outliers, 2.0, 8.0);
    x->SetMissingIsInvalid(row.missingIsInvalid);
    if (row.hasReplacement)
        Replace(x, 4.5);
    CaseRecord record(dictionary);
    if (*row.text)
        record.SetText(0, row.text);
    else
        record.SetMissing(0);
    const ScoreValue* value = record.GetValue(0);
    EXPECT_EQ(holdsOf(value), row.holds);
    EXPECT_EQ(x->IsMissing(value), row.holds == Holds::kNothing || row.holds == Holds::kReplacement);
    if (!x->IsMissing(value)) {
        EXPECT_EQ(x->IsValid(value), row.isValid);
    }
    if (row.holds == Holds::kItself && std::string(row.text) != "abc") {
        EXPECT_EQ(value->GetString(), row.text);
    }
}

constexpr auto kRI = DictVar::kReturnInvalid;
constexpr auto kAI = DictVar::kAsIs;
constexpr auto kAM = DictVar::kAsMissing;
constexpr auto kAV = DictVar::kAsValue;
constexpr auto kPlain = DictVar::kOutliersAsIs;
constexpr auto kMiss = DictVar::kOutliersAsMissing;
constexpr auto kClip = DictVar::kOutliersAsExtreme;
constexpr bool kYes = true;
constexpr bool kNo = false;

INSTANTIATE_TEST_SUITE_P(Missing, CellOfEachTreatment,
                         testing::Values(TreatmentRow{"", kRI, kPlain, kNo, kNo, Holds::kNothing, kNo},
                                         TreatmentRow{"", kRI, kPlain, kYes, kNo, Holds::kReplacement, kNo},
                                         TreatmentRow{"", kRI, kPlain, kNo, kYes, Holds::kNeverValid, kNo},
                                         TreatmentRow{"", kAI, kClip, kYes, kYes, Holds::kNeverValid, kNo},
                                         TreatmentRow{"", kAV, kMiss, kYes, kNo, Holds::kReplacement, kNo},
                                         TreatmentRow{"-9", kAV, kClip, kYes, kNo, Holds::kReplacement, kNo},
                                         TreatmentRow{"-9.0", kAI, kPlain, kNo, kNo, Holds::kNothing, kNo},
                                         TreatmentRow{"NA", kAI, kClip, kNo, kYes, Holds::kNeverValid, kNo},
                                         TreatmentRow{"NA", kRI, kPlain, kYes, kNo, Holds::kReplacement, kNo}));

INSTANTIATE_TEST_SUITE_P(Invalid, CellOfEachTreatment,
                         testing::Values(TreatmentRow{"11.5", kRI, kPlain, kYes, kNo, Holds::kItself, kNo},
                                         TreatmentRow{"11.5", kRI, kClip, kYes, kNo, Holds::kItself, kNo},
                                         TreatmentRow{"11.5", kRI, kMiss, kYes, kNo, Holds::kItself, kNo},
                                         TreatmentRow{"11.5", kAI, kPlain, kYes, kNo, Holds::kItself, kYes},
                                         TreatmentRow{"11.5", kAI, kClip, kYes, kNo, Holds::kHigh, kYes},
                                         TreatmentRow{"-3.5", kAI, kClip, kYes, kNo, Holds::kLow, kYes},
                                         TreatmentRow{"11.5", kAI, kMiss, kYes, kNo, Holds::kReplacement, kNo},
                                         TreatmentRow{"11.5", kAI, kMiss, kNo, kYes, Holds::kNeverValid, kNo},
                                         TreatmentRow{"11.5", kAM, kPlain, kNo, kNo, Holds::kNothing, kNo},
                                         TreatmentRow{"11.5", kAM, kClip, kYes, kNo, Holds::kReplacement, kNo},
                                         TreatmentRow{"11.5", kAM, kPlain, kYes, kYes, Holds::kNeverValid, kNo},
                                         TreatmentRow{"11.5", kAV, kPlain, kYes, kNo, Holds::kInvalidReplacement, kYes},
                                         TreatmentRow{"11.5", kAV, kClip, kYes, kYes, Holds::kInvalidReplacement, kYes},
                                         TreatmentRow{"5", kRI, kPlain, kYes, kNo, Holds::kItself, kNo},
                                         TreatmentRow{"5", kAV, kMiss, kYes, kNo, Holds::kInvalidReplacement, kYes},
                                         TreatmentRow{"abc", kRI, kClip, kYes, kNo, Holds::kItself, kNo},
                                         TreatmentRow{"abc", kAI, kClip, kYes, kNo, Holds::kItself, kNo},
                                         TreatmentRow{"abc", kAM, kMiss, kYes, kNo, Holds::kReplacement, kNo},
                                         TreatmentRow{"abc", kAV, kPlain, kNo, kNo, Holds::kInvalidReplacement, kYes},
                                         TreatmentRow{"nan", kAI, kClip, kYes, kNo, Holds::kItself, kYes},
                                         TreatmentRow{"nan", kRI, kClip, kYes, kNo, Holds::kItself, kNo}));

INSTANTIATE_TEST_SUITE_P(Outliers, CellOfEachTreatment,
                         testing::Values(TreatmentRow{"9.25", kRI, kPlain, kYes, kNo, Holds::kItself, kYes},
                                         TreatmentRow{"9.25", kRI, kClip, kYes, kNo, Holds::kHigh, kYes},
                                         TreatmentRow{"0.25", kRI, kClip, kNo, kNo, Holds::kLow, kYes},
                                         TreatmentRow{"9.25", kRI, kMiss, kNo, kNo, Holds::kNothing, kNo},
                                         TreatmentRow{"0.25", kAV, kMiss, kYes, kNo, Holds::kReplacement, kNo},
                                         TreatmentRow{"0.25", kRI, kMiss, kYes, kYes, Holds::kNeverValid, kNo},
                                         TreatmentRow{"7.75", kRI, kClip, kYes, kYes, Holds::kItself, kYes},
                                         TreatmentRow{"2.125", kAM, kMiss, kNo, kNo, Holds::kItself, kYes}));

TEST_F(CaseRecordTest, ALimitStandsEvenWhereTheDeclarationDoesNotAllowIt) {
    x->SetOutlierTreatment(DictVar::kOutliersAsExtreme, 12.5, std::nullopt);
    CaseRecord record(dictionary);
    record.SetNumber(0, 3.5);
    EXPECT_EQ(record.GetValue(0)->GetDouble(), 12.5);
    EXPECT_TRUE(x->IsValid(record.GetValue(0)));
    EXPECT_FALSE(x->IsDeclaredValid(*record.GetValue(0)));
}

TEST_F(CaseRecordTest, AReplacementOfInvalidValuesMayBeAnOutlier) {
    x->SetOutlierTreatment(DictVar::kOutliersAsExtreme, 2.0, 8.0);
    x->SetInvalidTreatment(DictVar::kAsValue, std::make_unique<NumericValue>(9.75));
    CaseRecord record(dictionary);
    record.SetText(0, "no number");
    EXPECT_EQ(record.GetValue(0)->GetDouble(), 8.0);
}

TEST_F(CaseRecordTest, ClearMakesEveryCellMissing) {
    Replace(x, 4.5);
    CaseRecord record(dictionary);
    record.SetNumber(0, 1.5);
    record.SetText(1, "a");
    record.SetNumber(2, 1.0);
    record.Clear();
    EXPECT_EQ(record.GetValue(0)->GetDouble(), 4.5);
    EXPECT_EQ(record.GetValue(1), nullptr);
    EXPECT_EQ(record.GetValue(2), nullptr);
}

TEST_F(CaseRecordTest, CellsDoNotDisturbEachOther) {
    CaseRecord record(dictionary);
    record.SetText(1, "a");
    const ScoreValue* before = record.GetValue(1);
    record.SetNumber(0, 2.5);
    record.SetNumber(2, 1.0);
    EXPECT_EQ(record.GetValue(1), before);
    EXPECT_EQ(before->GetString(), "a");
}

TEST_F(CaseRecordTest, KeepsTextsAsTheyAre) {
    Add("free", DictVar::kString, DictVar::kCategorical);
    CaseRecord record(dictionary);
    const std::string huge(1'000'000, 'h');
    record.SetText(3, huge);
    EXPECT_EQ(record.GetValue(3)->GetString(), huge);
    record.SetText(3, std::string_view(" a\0b ", 5));
    EXPECT_EQ(record.GetValue(3)->GetString(), std::string(" a\0b ", 5));
}

TEST_F(CaseRecordTest, TakesVariablesOfTheHostsClassOnly) {
    dictionary.AddVar(std::make_unique<ForeignDictVar>("foreign", false));
    EXPECT_THROW(CaseRecord record(dictionary), std::bad_cast);
}

TEST_F(CaseRecordTest, GivesTheValueOfAVariableAsItWantsToBeAsked) {
    CaseRecord byIndex(dictionary, CaseRecord::kByIndex);
    CaseRecord byName(dictionary, CaseRecord::kByName);
    byIndex.SetNumber(0, 2.385);
    byIndex.SetText(1, "a");
    byName.SetNumber(0, 4.75);
    x->SetIndex(1);
    EXPECT_EQ(byIndex.GetValueOf(*x), byIndex.GetValue(1)) << "by the variable's index, whatever its name";
    EXPECT_EQ(byName.GetValueOf(*x)->GetDouble(), 4.75) << "by the variable's name, whatever its index";
}

}  // namespace
