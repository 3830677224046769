// Scoring one case, from the record to the result.
#include <cmath>
#include <sstream>
#include <tuple>

#include <gtest/gtest.h>

#include "host/CaseRecord.h"
#include "host/ScoringLog.h"
#include "host/transform/TransformationDictionary.h"
#include "svm/SVMClsResult.h"
#include "svm/SVMRegResult.h"
#include "tests/svm/svm_samples.h"

namespace KwBrevix_930 {
namespace {

using svm_samples::AddCategoryColumn;
using svm_samples::AddMachine;
using svm_samples::AddNumericColumn;
using svm_samples::AddScaledVar;
using svm_samples::AddSupportVector;
using svm_samples::Bench;
using svm_samples::FakeRecord;
using svm_samples::Indices;
using svm_samples::kNaN;
using svm_samples::NewClassification;
using svm_samples::NewRegression;
using svm_samples::Values;
using Status = SVMModelTestAccess::Status;

// Catches the trace while it lives.
class TraceCatcher {
public:
    TraceCatcher() : fWasTracing(ScoringLog::GetInstance().IsTracing()) {
        ScoringLog::GetInstance().SetStream(&fStream);
        ScoringLog::GetInstance().SetTracing(true);
    }
    ~TraceCatcher() {
        ScoringLog::GetInstance().SetTracing(fWasTracing);
        ScoringLog::GetInstance().SetStream(nullptr);
    }
    std::string Text() const { return fStream.str(); }

private:
    std::ostringstream fStream;
    bool fWasTracing;
};

// A regression over the numeric fields "a" and "b" and two categories of the text field "c":
// f = 2 x . (0.5, -1.25, 3, 0) - 0.75 x . (0, 4, 0, 7) + 0.1875
struct Regression : Bench {
    Regression() : a(AddVar("a")), b(AddVar("b")), c(AddVar("c", DictVar::kString, ScoreDictVar::kCategorical)) {
        for (const char* category : {"red", "green", "blue"})
            c.AddCategory(category);
        auto fresh = NewRegression();
        AddNumericColumn(*fresh, "a");
        AddNumericColumn(*fresh, "b");
        AddCategoryColumn(*fresh, "c", "blue");
        AddCategoryColumn(*fresh, "c", "red");
        ST_SUPPORTVECTORMACHINE& machine = AddMachine(*fresh, 0.1875);
        AddSupportVector(*fresh, machine, 2.0, {0, 1, 2}, {0.5, -1.25, 3.0});
        AddSupportVector(*fresh, machine, -0.75, {1, 3}, {4.0, 7.0});
        data = &TakeData(std::move(fresh));
    }

    static double Expected(double a, double b, double blue, double red) {
        double sum = 0.0;
        sum += (a * 0.5 + b * -1.25 + blue * 3.0) * 2.0;
        sum += (b * 4.0 + red * 7.0) * -0.75;
        return sum + 0.1875;
    }

    DictVar& a;
    DictVar& b;
    DictVar& c;
    SVMModelData* data;
};

// A full case of it: a, b, c and nothing else.
struct Case {
    explicit Case(bool isByIndex, double aValue = 1.625, double bValue = -0.375, const char* cText = "blue")
        : a(aValue), b(bValue), c(cText), record(isByIndex) {
        record.Add("a", &a);
        record.Add("b", &b);
        record.Add("c", &c);
    }

    NumericValue a;
    NumericValue b;
    StringValue c;
    FakeRecord record;
};

std::unique_ptr<ScoreResult> Score(SVMModel& model, const ScoreCaseRecord* record, std::int32_t expectedCode = 0) {
    ScoreResult* result = nullptr;
    const Status status = model.GetScore(record, result, false);
    EXPECT_EQ(status.GetErrorCode(), expectedCode);
    EXPECT_EQ(status.IsError(), expectedCode != 0);
    return std::unique_ptr<ScoreResult>(result);
}

double Predicted(const std::unique_ptr<ScoreResult>& result) {
    return result->GetPrediction()->GetDouble();
}

// The whole way.

TEST(GetScore, PredictsByIndexAndByName) {
    for (const bool isByIndex : {true, false}) {
        Regression bench;
        const Case sample(isByIndex);
        const auto result = Score(bench.model, &sample.record);
        EXPECT_EQ(Predicted(result), Regression::Expected(1.625, -0.375, 1.0, 0.0));
        EXPECT_EQ(result->GetTarget(), bench.target);
        EXPECT_EQ(result->GetScoreResultType(), 19);
        EXPECT_EQ(sample.record.askedByIndex > 0, isByIndex);
        EXPECT_EQ(sample.record.askedByName > 0, !isByIndex);
    }
}

TEST(GetScore, PredictsFromTheHostsOwnRecord) {
    Regression bench;
    for (const CaseRecord::Access access : {CaseRecord::kByIndex, CaseRecord::kByName}) {
        CaseRecord record(bench.dictionary, access);
        record.SetNumber(record.GetIndex("a"), 0.6875);
        record.SetNumber(record.GetIndex("b"), 2.125);
        record.SetText(record.GetIndex("c"), "red");
        EXPECT_EQ(Predicted(Score(bench.model, &record)), Regression::Expected(0.6875, 2.125, 0.0, 1.0));
    }
}

TEST(GetScore, CreatesAResultForTheKindOfModel) {
    Bench bench({"no", "yes"});
    bench.AddVar("a");
    auto data = NewClassification(2);
    AddNumericColumn(*data, "a");
    bench.TakeData(std::move(data));
    const FakeRecord empty(true);
    const auto result = Score(bench.model, &empty, 90029);
    const auto* classification = dynamic_cast<const SVMClsResult*>(result.get());
    ASSERT_NE(classification, nullptr);
    EXPECT_EQ(classification->GetTarget(), bench.target);
    EXPECT_EQ(classification->GetConfidence(), -1.0);
    EXPECT_TRUE(classification->GetAllValuePercent().empty());
    Regression regression;
    EXPECT_NE(dynamic_cast<const SVMRegResult*>(Score(regression.model, &empty, 90029).get()), nullptr);
}

TEST(GetScore, FillsTheResultThatItIsGiven) {
    Regression bench;
    const Case first(true);
    const Case second(true, -3.5, 0.25, "green");
    ScoreResult* result = nullptr;
    bench.model.GetScore(&first.record, result, false);
    ScoreResult* const created = result;
    bench.model.GetScore(&second.record, result, true);
    EXPECT_EQ(result, created);
    EXPECT_EQ(result->GetPrediction()->GetDouble(), Regression::Expected(-3.5, 0.25, 0.0, 0.0));
    delete result;
}

TEST(GetScore, WithoutRecordDataOrTargetIs90029AndCreatesNothing) {
    Regression bench;
    EXPECT_EQ(Score(bench.model, nullptr, 90029), nullptr);
    const Case sample(true);
    bench.model.SetTargetVar(nullptr);
    EXPECT_EQ(Score(bench.model, &sample.record, 90029), nullptr);
    Bench empty;
    EXPECT_EQ(Score(empty.model, &sample.record, 90029), nullptr);
}

// Dictionary indices.

TEST(GetScore, SetsTheDictionaryIndicesUpOnceByTheFirstCaseAccessedByIndex) {
    Regression bench;
    const Case byName(false);
    Score(bench.model, &byName.record);
    EXPECT_FALSE(bench.access.AreIndicesReady());
    EXPECT_EQ(byName.record.askedForIndex, 0);
    const Case first(true);
    Score(bench.model, &first.record);
    EXPECT_TRUE(bench.access.AreIndicesReady());
    EXPECT_EQ(first.record.askedForIndex, bench.dictionary.GetVarCount());
    const Case second(true);
    Score(bench.model, &second.record);
    EXPECT_EQ(second.record.askedForIndex, 0);
}

TEST(GetScore, SetsTheDictionaryIndicesUpEvenWhenTheCaseFails) {
    Bench bench;
    const FakeRecord record(true);
    Score(bench.model, &record, 90029);
    EXPECT_TRUE(bench.access.AreIndicesReady());
}

TEST(GetScore, TheFlagHasNoOtherEffect) {
    for (const bool flag : {false, true}) {
        Regression bench;
        const Case sample(true);
        ScoreResult* result = nullptr;
        EXPECT_FALSE(bench.model.GetScore(&sample.record, result, flag).IsError());
        EXPECT_EQ(result->GetPrediction()->GetDouble(), Regression::Expected(1.625, -0.375, 1.0, 0.0));
        delete result;
    }
}

// The trace.

TEST(GetScore, TracesOneLineForACaseThatFails) {
    Regression bench;
    const Case good(true);
    const Case invalid(true, 1.5, 2.5, "pink");
    FakeRecord missing(true);
    const TraceCatcher trace;
    Score(bench.model, &good.record);
    EXPECT_EQ(trace.Text(), "");
    Score(bench.model, &invalid.record, 90027);
    EXPECT_EQ(trace.Text(), "KwStatus error code is :90027\n");
    Score(bench.model, &missing, 90029);
    EXPECT_EQ(trace.Text(), "KwStatus error code is :90027\nKwStatus error code is :90029\n");
    Score(bench.model, nullptr, 90029);
    EXPECT_EQ(trace.Text(),
              "KwStatus error code is :90027\nKwStatus error code is :90029\nKwStatus error code is :90029\n");
}

TEST(GetScore, TracesAtLevelOneOnly) {
    Regression bench;
    const TraceCatcher trace;
    ScoringLog::GetInstance().SetTracing(false);
    Score(bench.model, nullptr, 90029);
    EXPECT_EQ(trace.Text(), "");
}

// The input vector.

struct Filled {
    Status status;
    bool isComplete = false;
    Indices indices;
    Values values;
};

Filled Fill(Bench& bench, const ScoreCaseRecord& record, ScoreResult* result) {
    Filled filled;
    filled.status = bench.access.FillCaseRecord(result, &record, filled.isComplete, filled.indices, filled.values);
    return filled;
}

TEST(FillCaseRecord, GivesEveryColumnOfACompleteCaseOneEntry) {
    Regression bench;
    const Case sample(false, 1.625, -0.375, "blue");
    const Filled filled = Fill(bench, sample.record, nullptr);
    EXPECT_FALSE(filled.status.IsError());
    EXPECT_TRUE(filled.isComplete);
    EXPECT_EQ(filled.indices, (Indices{0, 1, 2, 3}));
    EXPECT_EQ(filled.values, (Values{1.625, -0.375, 1.0, 0.0}));
    EXPECT_EQ(Fill(bench, Case(false, 1.5, 2.5, "red").record, nullptr).values, (Values{1.5, 2.5, 0.0, 1.0}));
    const Filled neither = Fill(bench, Case(false, 1.5, 2.5, "green").record, nullptr);
    EXPECT_EQ(neither.indices, (Indices{0, 1, 2, 3})) << "a category that does not match still has an entry";
    EXPECT_EQ(neither.values, (Values{1.5, 2.5, 0.0, 0.0}));
}

TEST(FillCaseRecord, UsesTheVariablesIndexWhateverTheRecordsOrder) {
    Regression bench;
    const NumericValue a(1.625);
    const NumericValue b(-0.375);
    const StringValue c("red");
    FakeRecord record(true);
    record.Add("c", &c);
    record.Add("unused", nullptr);
    record.Add("b", &b);
    record.Add("a", &a);
    bench.access.SetUpDictVarIndex(&record, false);
    EXPECT_EQ(Fill(bench, record, nullptr).values, (Values{1.625, -0.375, 0.0, 1.0}));
}

TEST(FillCaseRecord, StopsAtTheFirstError) {
    Regression bench;
    SVMRegResult result(bench.target);
    Case sample(false);
    sample.record.Set(1, nullptr);
    const Filled filled = Fill(bench, sample.record, &result);
    EXPECT_EQ(filled.status.GetErrorCode(), 90029);
    EXPECT_FALSE(filled.isComplete);
    EXPECT_EQ(filled.indices, Indices{0});
    EXPECT_EQ(filled.values, Values{1.625});
    EXPECT_EQ(sample.record.askedByName, 2);
}

TEST(FillCaseRecord, WithMoreEntriesThanColumnsIs90027) {
    Regression bench;
    const Case sample(false);
    ScoreResult* result = nullptr;
    bool isComplete = true;
    Indices indices = {7};
    Values values = {7.5};
    EXPECT_EQ(bench.access.FillCaseRecord(result, &sample.record, isComplete, indices, values).GetErrorCode(), 90027);
    EXPECT_FALSE(isComplete);
    EXPECT_EQ(indices, (Indices{7, 0, 1, 2, 3})) << "entries are appended";
}

TEST(FillCaseRecord, GivesAColumnOfAnotherTypeZero) {
    Regression bench;
    const Case sample(false);
    bench.data->GetVectorFieldKinds()[0] = 2;
    bench.data->GetVectorFieldKinds()[2] = -1;
    const Filled filled = Fill(bench, sample.record, nullptr);
    EXPECT_EQ(filled.indices, (Indices{0, 1, 2, 3}));
    EXPECT_EQ(filled.values, (Values{0.0, -0.375, 0.0, 0.0}));
}

// The columns that are left close up; types are looked up at the places that they close up to.
TEST(FillCaseRecord, AfterASkippedColumnKindsAreThoseOfTheirPlaces) {
    Bench bench;
    for (const char* name : {"a", "b", "c"})
        bench.AddVar(name);
    auto data = NewRegression();
    for (const char* name : {"a", "b", "c"})
        AddNumericColumn(*data, name);
    data->GetVectorFieldKinds()[1] = 2;
    bench.TakeData(std::move(data));
    const NumericValue a(1.5);
    const NumericValue c(3.5);
    FakeRecord record(false);
    record.Add("a", &a);
    record.Add("c", &c);
    const Filled filled = Fill(bench, record, nullptr);
    EXPECT_EQ(filled.indices, (Indices{0, 1}));
    EXPECT_EQ(filled.values, (Values{1.5, 0.0}));
}

TEST(FillCaseRecord, UnknownCategoriesMatchNothing) {
    Bench bench;
    DictVar& number = bench.AddVar("n");
    bench.AddVar("t", DictVar::kString, ScoreDictVar::kCategorical);
    auto data = NewRegression();
    AddCategoryColumn(*data, "n", "no number");
    AddCategoryColumn(*data, "t", "known");
    SVMModelData& taken = bench.TakeData(std::move(data));
    const NumericValue five(5.0);
    const StringValue unknown("unknown");
    ASSERT_EQ(number.GetCategoryIndex(&five), -1);
    ASSERT_EQ(taken.GetVectorFields()[0]->categoryIndex, -2);
    FakeRecord record(false);
    record.Add("n", &five);
    record.Add("t", &unknown);
    EXPECT_EQ(Fill(bench, record, nullptr).values, (Values{0.0, 0.0}));
}

TEST(FillCaseRecord, CarriesNaNAndInfinityOfANumericColumn) {
    Bench bench;
    bench.AddVar("a");
    auto data = NewRegression();
    AddNumericColumn(*data, "a");
    bench.TakeData(std::move(data));
    const NumericValue infinity(svm_samples::kInfinity);
    FakeRecord record(false);
    record.Add("a", &infinity);
    EXPECT_EQ(Fill(bench, record, nullptr).values, Values{svm_samples::kInfinity});
}

TEST(FillCaseRecord, OfAColumnWithoutVariableIs90029) {
    Bench bench;
    auto data = NewRegression();
    AddNumericColumn(*data, "nowhere");
    bench.TakeData(std::move(data));
    const FakeRecord record(false);
    EXPECT_EQ(Fill(bench, record, nullptr).status.GetErrorCode(), 90029);
    Score(bench.model, &record, 90029);
}

// Invalid values.

TEST(FillCaseRecord, AnInvalidValueIs90027OnlyWhenThereIsAResult) {
    Regression bench;
    SVMRegResult result(bench.target);
    DictVar::Interval interval;
    interval.right = 2.0;
    bench.a.AddInterval(interval);
    const Case sample(false, 7.5);
    EXPECT_EQ(Fill(bench, sample.record, &result).status.GetErrorCode(), 90027);
    const Filled unguarded = Fill(bench, sample.record, nullptr);
    EXPECT_FALSE(unguarded.status.IsError());
    EXPECT_EQ(unguarded.values[0], 7.5);
}

TEST(GetScore, AnInvalidValueLeavesThePredictionAsItIs) {
    Regression bench;
    for (const ScoreModel::MVPolicy policy :
         {ScoreModel::kUseReplacement, ScoreModel::kMarkAsMissing, ScoreModel::kLeavePrediction}) {
        bench.model.SetMissingValuePolicy(policy);
        ScoreResult* result = new SVMRegResult(bench.target);
        result->SetPrediction(new NumericValue(4.625));
        const Case sample(true, 1.5, 2.5, "pink");
        EXPECT_EQ(bench.model.GetScore(&sample.record, result, false).GetErrorCode(), 90027);
        EXPECT_EQ(result->GetPrediction()->GetDouble(), 4.625);
        delete result;
    }
}

// Missing values.

struct MissingClassification : Bench {
    explicit MissingClassification(const std::vector<std::string>& categories) : Bench(categories), a(AddVar("a")) {
        auto data = NewClassification(2);
        AddNumericColumn(*data, "a");
        AddMachine(*data, 0.5, 0, 1);
        TakeData(std::move(data));
    }
    DictVar& a;
};

TEST(GetScore, AMissingInputWithATextTargetPredictsTheEmptyText) {
    for (const ScoreModel::MVPolicy policy : {ScoreModel::kUseReplacement, ScoreModel::kMarkAsMissing}) {
        MissingClassification bench({"no", "yes"});
        bench.model.SetMissingValuePolicy(policy);
        const FakeRecord record(true);
        const auto result = Score(bench.model, &record, 90029);
        ASSERT_NE(result->GetPrediction(), nullptr);
        EXPECT_EQ(result->GetPrediction()->GetType(), ScoreValue::kString);
        EXPECT_EQ(result->GetPrediction()->GetString(), "");
    }
}

TEST(GetScore, AMissingInputWithANumericTargetPredictsTheSystemMissingValue) {
    for (const ScoreModel::MVPolicy policy : {ScoreModel::kUseReplacement, ScoreModel::kMarkAsMissing}) {
        MissingClassification classification({});
        Regression regression;
        const FakeRecord record(true);
        for (Bench* bench : {static_cast<Bench*>(&classification), static_cast<Bench*>(&regression)}) {
            bench->model.SetMissingValuePolicy(policy);
            const auto result = Score(bench->model, &record, 90029);
            ASSERT_NE(result->GetPrediction(), nullptr);
            EXPECT_EQ(result->GetPrediction()->GetType(), ScoreValue::kNumeric);
            EXPECT_TRUE(result->GetPrediction()->IsSystemMissingValue());
        }
    }
}

TEST(GetScore, AMissingInputUnderAnyOtherPolicyLeavesThePrediction) {
    Regression bench;
    for (const int policy : {2, 3}) {
        bench.model.SetMissingValuePolicy(static_cast<ScoreModel::MVPolicy>(policy));
        ScoreResult* result = new SVMRegResult(bench.target);
        result->SetPrediction(new NumericValue(4.625));
        const FakeRecord record(true);
        EXPECT_EQ(bench.model.GetScore(&record, result, false).GetErrorCode(), 90029);
        EXPECT_EQ(result->GetPrediction()->GetDouble(), 4.625);
        delete result;
    }
    MissingClassification classification({"no", "yes"});
    classification.model.SetMissingValuePolicy(ScoreModel::kLeavePrediction);
    const FakeRecord record(true);
    EXPECT_EQ(Score(classification.model, &record, 90029)->GetPrediction(), nullptr);
}

TEST(GetScore, ADeclaredMissingValueIsMissing) {
    Regression bench;
    bench.a.AddMissingValue("-99");
    const Case sample(true, -99.0);
    EXPECT_TRUE(Score(bench.model, &sample.record, 90029)->GetPrediction()->IsSystemMissingValue());
}

TEST(GetScore, AMissingValueIsNotTestedForValidity) {
    Regression bench;
    DictVar::Interval interval;
    interval.left = 0.0;
    bench.a.AddInterval(interval);
    bench.a.AddMissingValue("-99");
    const Case sample(true, -99.0);
    Score(bench.model, &sample.record, 90029);
}

// The record's own value object is read; it must hold the replacement already.
TEST(GetScore, AReplacementExcusesAMissingValueUnderPolicyZeroAndTheRecordsValueIsRead) {
    Regression bench;
    bench.a.AddMissingValue("-99");
    bench.a.GetVarStats()->SetMissingReplacement(std::make_unique<NumericValue>(0.8125));
    const Case sample(true, -99.0);
    EXPECT_EQ(Predicted(Score(bench.model, &sample.record)), Regression::Expected(-99.0, -0.375, 1.0, 0.0));
    Case replaced(true);
    replaced.record.Set(0, bench.a.GetVarStats()->GetMissingReplacement());
    EXPECT_EQ(Predicted(Score(bench.model, &replaced.record)), Regression::Expected(0.8125, -0.375, 1.0, 0.0));
}

TEST(GetScore, TheHostsRecordHoldsTheReplacementOfAMissingCell) {
    Regression bench;
    bench.a.GetVarStats()->SetMissingReplacement(std::make_unique<NumericValue>(0.8125));
    bench.c.GetVarStats()->SetMissingReplacement(std::make_unique<StringValue>("red"));
    CaseRecord record(bench.dictionary);
    record.SetNumber(record.GetIndex("b"), -0.375);
    EXPECT_EQ(Predicted(Score(bench.model, &record)), Regression::Expected(0.8125, -0.375, 0.0, 1.0));
}

TEST(GetScore, AReplacementExcusesNothingUnderOtherPolicies) {
    for (const ScoreModel::MVPolicy policy : {ScoreModel::kMarkAsMissing, ScoreModel::kLeavePrediction}) {
        Regression bench;
        bench.a.GetVarStats()->SetMissingReplacement(std::make_unique<NumericValue>(0.8125));
        bench.model.SetMissingValuePolicy(policy);
        Case sample(true);
        sample.record.Set(0, bench.a.GetVarStats()->GetMissingReplacement());
        ScoreResult* result = new SVMRegResult(bench.target);
        result->SetPrediction(new NumericValue(4.625));
        EXPECT_EQ(bench.model.GetScore(&sample.record, result, false).GetErrorCode(), 90029);
        EXPECT_EQ(result->GetPrediction()->IsSystemMissingValue(), policy == ScoreModel::kMarkAsMissing);
        delete result;
    }
}

TEST(GetScore, ARecordWithoutAValueObjectOnTheReplacementPathIs90029) {
    Regression bench;
    bench.a.GetVarStats()->SetMissingReplacement(std::make_unique<NumericValue>(0.8125));
    for (const bool isByIndex : {true, false}) {
        Case sample(isByIndex);
        sample.record.Set(0, nullptr);
        const auto result = Score(bench.model, &sample.record, 90029);
        EXPECT_TRUE(result->GetPrediction()->IsSystemMissingValue()) << "as the result was created";
    }
}

TEST(GetScore, AResultUsedAgainAfterAMissingInputIsAsNew) {
    MissingClassification bench({"no", "yes"});
    const FakeRecord missing(true);
    NumericValue value(1.5);
    FakeRecord complete(true);
    complete.Add("a", &value);
    ScoreResult* result = nullptr;
    EXPECT_FALSE(bench.model.GetScore(&complete, result, false).IsError());
    EXPECT_EQ(result->GetPrediction(), bench.model.GetTargetCategories()[1]);
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(bench.model.GetScore(&missing, result, false).GetErrorCode(), 90029);
        EXPECT_EQ(result->GetPrediction()->GetString(), "");
        EXPECT_FALSE(bench.model.GetScore(&complete, result, false).IsError());
        EXPECT_EQ(result->GetPrediction(), bench.model.GetTargetCategories()[1]);
    }
    delete result;
}

TEST(GetScore, ARegressionWithATextTargetReplacesItsEmptyText) {
    Regression bench;
    const DictVar text("text", DictVar::kString, ScoreDictVar::kCategorical);
    bench.model.SetTargetVar(&text);
    const FakeRecord missing(true);
    const Case complete(true);
    ScoreResult* result = nullptr;
    bench.access.SetUpDictVarIndex(&complete.record, false);
    EXPECT_EQ(bench.model.GetScore(&missing, result, false).GetErrorCode(), 90029);
    EXPECT_EQ(result->GetPrediction()->GetType(), ScoreValue::kString);
    EXPECT_FALSE(bench.model.GetScore(&complete.record, result, false).IsError());
    EXPECT_EQ(result->GetPrediction()->GetDouble(), Regression::Expected(1.625, -0.375, 1.0, 0.0));
    delete result;
}

TEST(HandleMissInvalidValue, WithoutResultOrVariableDoesNothing) {
    Regression bench;
    ScoreResult* none = nullptr;
    EXPECT_FALSE(bench.access.HandleMissInvalid(true, true, &bench.a, none).IsError());
    EXPECT_EQ(none, nullptr);
    SVMRegResult result(bench.target);
    result.SetPredictedNumber(4.625);
    ScoreResult* place = &result;
    EXPECT_FALSE(bench.access.HandleMissInvalid(true, true, nullptr, place).IsError());
    EXPECT_EQ(result.GetPrediction()->GetDouble(), 4.625);
}

TEST(HandleMissInvalidValue, TakesMissingBeforeInvalidAndNeitherForSuccess) {
    Regression bench;
    SVMRegResult result(bench.target);
    ScoreResult* place = &result;
    result.SetPredictedNumber(4.625);
    EXPECT_FALSE(bench.access.HandleMissInvalid(false, false, &bench.a, place).IsError());
    EXPECT_EQ(bench.access.HandleMissInvalid(false, true, &bench.a, place).GetErrorCode(), 90027);
    EXPECT_EQ(result.GetPrediction()->GetDouble(), 4.625);
    EXPECT_EQ(bench.access.HandleMissInvalid(true, true, &bench.a, place).GetErrorCode(), 90029);
    EXPECT_TRUE(result.GetPrediction()->IsSystemMissingValue());
}

// Derived fields.

struct WithDerived : Bench {
    // "d" is four times "a"; the columns are the raw one, where it is named, and "d".
    explicit WithDerived(const std::string& raw = "") : a(AddVar("a")), b(AddVar("b")) {
        AddScaledVar(transformations, "d", "a", 4.0);
        transformations.SetUpDerivedCaseRecord();
        model.SetTransformationScoreDictionary(&transformations);
        auto data = NewRegression();
        if (!raw.empty())
            AddNumericColumn(*data, raw);
        AddNumericColumn(*data, "d");
        ST_SUPPORTVECTORMACHINE& machine = AddMachine(*data, 0.5);
        if (raw.empty())
            AddSupportVector(*data, machine, 1.0, {0}, {1.0});
        else
            AddSupportVector(*data, machine, 1.0, {0, 1}, {100.0, 1.0});
        TakeData(std::move(data));
    }

    TransformationDictionary transformations;
    DictVar& a;
    DictVar& b;
};

TEST(DerivedFields, AreReadByIndexAndByName) {
    for (const bool isByIndex : {true, false}) {
        WithDerived bench("a");
        const NumericValue value(1.375);
        FakeRecord record(isByIndex);
        record.Add("a", &value);
        EXPECT_EQ(Predicted(Score(bench.model, &record)), 5.5 + 137.5 + 0.5);
    }
}

TEST(DerivedFields, AreLookedUpBehindTheRecord) {
    WithDerived bench;
    const NumericValue raw(1.375);
    const NumericValue own(9.5);
    FakeRecord record(false);
    record.Add("a", &raw);
    record.Add("d", &own);
    EXPECT_EQ(Predicted(Score(bench.model, &record)), 10.0) << "the record's own value comes first";
}

TEST(DerivedFields, OfAMissingSourceAreMissing) {
    WithDerived bench;
    FakeRecord record(true);
    record.Add("a", nullptr);
    EXPECT_TRUE(Score(bench.model, &record, 90029)->GetPrediction()->IsSystemMissingValue());
}

TEST(DerivedFields, OfAnInvalidSourceAreInvalid) {
    WithDerived bench;
    DictVar::Interval interval;
    interval.right = 2.0;
    bench.a.AddInterval(interval);
    const NumericValue value(7.5);
    FakeRecord record(true);
    record.Add("a", &value);
    Score(bench.model, &record, 90027);
}

TEST(DerivedFields, NeverStandInForARawFieldThatIsMissing) {
    const NumericValue value(1.375);
    for (const bool isByIndex : {true, false}) {
        for (int before = 0; before < 3; ++before) {
            WithDerived bench("b");
            FakeRecord record(isByIndex);
            for (int i = 0; i < before; ++i)
                record.Add("other" + std::to_string(i), nullptr);
            record.Add("b", nullptr);
            record.Add("a", &value);
            EXPECT_TRUE(Score(bench.model, &record, 90029)->GetPrediction()->IsSystemMissingValue());
        }
    }
}

// Decision values.

TEST(RegressionScoring, WithAnAbsentFirstMachineIsZeroWithoutADeviation) {
    Regression bench;
    bench.data->GetMachines().front().reset();
    bench.model.SetSupportVectorMachineModel(bench.data);
    const NumericValue a(1.5);
    const NumericValue b(-0.5);
    const StringValue c("red");
    FakeRecord record(false);
    record.Add("a", &a);
    record.Add("b", &b);
    record.Add("c", &c);
    const auto result = Score(bench.model, &record);
    EXPECT_EQ(result->GetPrediction()->GetDouble(), 0.0);
    EXPECT_EQ(dynamic_cast<const SVMRegResult&>(*result).GetStdDev(), -1.0);
}

TEST(ScoreByKernel, AddsCoefficientTimesKernelInOrderAndThenTheBias) {
    Regression bench;
    AddMachine(*bench.data, -2.25);
    const Indices indices = {0, 1, 2, 3};
    const Values values = {1.625, -0.375, 1.0, 0.0};
    double value = 0.0;
    EXPECT_FALSE(bench.access.ScoreByKernel(indices, values, 0, value).IsError());
    EXPECT_EQ(value, Regression::Expected(1.625, -0.375, 1.0, 0.0));
    const double before = value;
    EXPECT_FALSE(bench.access.ScoreByKernel(indices, values, 1, value).IsError());
    EXPECT_EQ(value, before - 2.25) << "adds to what it is given; without coefficients the bias alone";
}

TEST(ScoreByKernel, SumsFromLeftToRight) {
    Bench bench;
    SVMModelData& data = bench.TakeData(NewRegression());
    ST_SUPPORTVECTORMACHINE& machine = AddMachine(data, 1.0);
    for (const double coefficient : {1e16, 1.0, 1.0, -1e16, 3.5})
        AddSupportVector(data, machine, coefficient, {0}, {1.0});
    double value = 0.0;
    bench.access.ScoreByKernel({0}, {1.0}, 0, value);
    EXPECT_EQ(value, 4.5);
}

TEST(ScoreByKernel, LeavesTheValueWhereThereIsNoMachine) {
    Regression bench;
    AddMachine(*bench.data);
    bench.data->GetMachines().back().reset();
    Bench empty;
    for (const std::int32_t machine : {-1, 1, 2, 2147483647, -2147483647 - 1}) {
        double value = 4.625;
        EXPECT_FALSE(bench.access.ScoreByKernel({0}, {1.5}, machine, value).IsError());
        EXPECT_FALSE(empty.access.ScoreByKernel({0}, {1.5}, machine, value).IsError());
        EXPECT_EQ(value, 4.625);
    }
}

TEST(ScoreByKernel, WithoutKernelIs90029) {
    Regression bench;
    bench.data->SetKernelType(4);
    bench.access.SetUpKernel(bench.data);
    double value = 4.625;
    EXPECT_EQ(bench.access.ScoreByKernel({0}, {1.5}, 0, value).GetErrorCode(), 90029);
    EXPECT_EQ(value, 4.625);
    const Case sample(true);
    Score(bench.model, &sample.record, 90029);
    bench.data->SetIsClassification(true);
    Score(bench.model, &sample.record, 90029);
}

TEST(ScoreByKernel, ACoefficientWithoutItsVectorIs90029) {
    for (const bool isNull : {true, false}) {
        Bench bench;
        SVMModelData& data = bench.TakeData(NewRegression());
        ST_SUPPORTVECTORMACHINE& machine = AddMachine(data, 1.0);
        AddSupportVector(data, machine, 0.375, {0}, {1.0});
        machine.coefficients.push_back(2.5);
        if (isNull)
            machine.supportVectors.push_back(nullptr);
        double value = 0.0;
        EXPECT_EQ(bench.access.ScoreByKernel({0}, {1.5}, 0, value).GetErrorCode(), 90029);
    }
}

// Only data that a host fills itself has these: the readers see to it that they are as many.
TEST(ScoreByKernel, AVectorWithFewerValuesThanIndicesIs90029AndMoreAreNotRead) {
    Bench bench;
    SVMModelData& data = bench.TakeData(NewRegression());
    ST_SUPPORTVECTORMACHINE& machine = AddMachine(data, 1.0);
    AddSupportVector(data, machine, 0.375, {0, 1}, {1.25, 3.0});
    SVMVectorInstance& vector = *machine.supportVectors[0];
    vector.values.pop_back();
    double value = 0.0;
    EXPECT_EQ(bench.access.ScoreByKernel({0, 1}, {1.5, 2.0}, 0, value).GetErrorCode(), 90029);
    vector.indices.pop_back();
    vector.values.push_back(77.0);
    value = 0.0;
    EXPECT_FALSE(bench.access.ScoreByKernel({0, 1}, {1.5, 2.0}, 0, value).IsError());
    EXPECT_EQ(value, 0.375 * 1.25 * 1.5 + 1.0);
}

TEST(GetScore, OfARegressionUsesTheFirstMachineAlone) {
    Regression bench;
    AddSupportVector(*bench.data, AddMachine(*bench.data, 1000.0), 500.0, {0}, {7.5});
    const Case sample(true);
    EXPECT_EQ(Predicted(Score(bench.model, &sample.record)), Regression::Expected(1.625, -0.375, 1.0, 0.0));
}

TEST(GetScore, OfARegressionWithoutInputsSucceedsAndLeavesTheResult) {
    for (const std::int32_t kernelType : {0, 4}) {
        Bench bench;
        auto data = NewRegression();
        data->SetKernelType(kernelType);
        AddMachine(*data, 2.5);
        bench.TakeData(std::move(data));
        const FakeRecord record(true);
        const auto fresh = Score(bench.model, &record);
        EXPECT_TRUE(fresh->GetPrediction()->IsSystemMissingValue());
        ScoreResult* result = new SVMRegResult(bench.target);
        result->SetPrediction(new NumericValue(4.625));
        EXPECT_FALSE(bench.model.GetScore(&record, result, false).IsError());
        EXPECT_EQ(result->GetPrediction()->GetDouble(), 4.625);
        delete result;
    }
}

TEST(GetScore, OfARegressionWithoutMachinesPredictsZero) {
    Regression bench;
    bench.data->GetMachines().clear();
    bench.model.SetSupportVectorMachineModel(bench.data);
    const Case sample(true);
    EXPECT_EQ(Predicted(Score(bench.model, &sample.record)), 0.0);
}

// Classification.

struct Classification : Bench {
    // Machines of the pairs (a, b), (a, c), (b, c): each is for its first category where x is below the threshold.
    explicit Classification(bool isZarn) : Bench({"a", "b", "c"}) {
        AddVar("x");
        auto fresh = NewClassification(3);
        fresh->SetIsZarnModel(isZarn);
        AddNumericColumn(*fresh, "x");
        for (const auto& [i, j, bias] : {std::tuple(0, 1, -1.0), std::tuple(0, 2, -2.0), std::tuple(1, 2, -3.0)}) {
            ST_SUPPORTVECTORMACHINE& machine = AddMachine(*fresh, bias, i, j);
            AddSupportVector(*fresh, machine, 1.0, {0}, {1.0});
            svm_samples::AddExtension(machine, i, j, 1.0, 0.0);
        }
        data = &TakeData(std::move(fresh));
    }

    std::unique_ptr<ScoreResult> ScoreX(double x, std::int32_t expectedCode = 0) {
        const NumericValue value(x);
        FakeRecord record(true);
        record.Add("x", &value);
        return Score(model, &record, expectedCode);
    }

    SVMModelData* data;
};

TEST(GetScore, OfAClassificationGivesPredictionConfidenceAndShares) {
    Classification bench(false);
    const auto result = bench.ScoreX(1.5);
    const auto& shares = dynamic_cast<const SVMClsResult&>(*result);
    EXPECT_EQ(shares.GetPrediction(), bench.model.GetTargetCategories()[1]);
    EXPECT_EQ(shares.GetConfidence(), 2.0 / 3.0);
    ASSERT_EQ(shares.GetAllValuePercent().size(), 3u);
    const StringValue a("a");
    EXPECT_EQ(shares.GetPercent(&a), 1.0 / 3.0);
    EXPECT_EQ(bench.ScoreX(0.5)->GetPrediction()->GetString(), "a");
    EXPECT_EQ(bench.ScoreX(3.5)->GetPrediction()->GetString(), "c");
    EXPECT_EQ(bench.ScoreX(3.0)->GetPrediction()->GetString(), "c") << "equality is for the alternate category";
}

TEST(GetScore, OfAClassificationWithProbabilitiesGivesThem) {
    Classification bench(true);
    const auto result = bench.ScoreX(1.5);
    const auto& coupled = dynamic_cast<const SVMClsResult&>(*result);
    double sum = 0.0;
    double largest = 0.0;
    for (const auto& [category, probability] : coupled.GetAllValuePercent()) {
        sum += probability;
        largest = std::fmax(largest, probability);
    }
    EXPECT_NEAR(sum, 1.0, 1e-15);
    EXPECT_EQ(coupled.GetConfidence(), largest);
    EXPECT_EQ(coupled.GetPercent(coupled.GetPrediction()), largest);
}

TEST(GetScore, OneAgainstAllKeepsConfidenceMinusOneAndAnEmptyList) {
    Classification bench(false);
    bench.data->SetIsOneAgainstAll(true);
    const auto result = bench.ScoreX(1.5);
    EXPECT_EQ(result->GetPrediction()->GetString(), "b");
    EXPECT_EQ(result->GetConfidence(), -1.0);
    EXPECT_TRUE(dynamic_cast<const SVMClsResult&>(*result).GetAllValuePercent().empty());
}

TEST(GetScore, TwoCategoriesWithoutProbabilitiesKeepConfidenceMinusOneAndAnEmptyList) {
    MissingClassification bench({"no", "yes"});
    const NumericValue value(1.5);
    FakeRecord record(true);
    record.Add("a", &value);
    const auto result = Score(bench.model, &record);
    EXPECT_EQ(result->GetPrediction()->GetString(), "yes");
    EXPECT_EQ(result->GetConfidence(), -1.0);
    EXPECT_TRUE(dynamic_cast<const SVMClsResult&>(*result).GetAllValuePercent().empty());
}

TEST(GetScore, ThatChoosesNothingIs90027) {
    Classification without(false);
    without.data->GetMachines().pop_back();
    EXPECT_EQ(without.ScoreX(1.5, 90027)->GetPrediction(), nullptr);
    without.data->GetMachines().clear();
    EXPECT_EQ(without.ScoreX(1.5, 90027)->GetPrediction(), nullptr);
    Classification coupled(true);
    coupled.data->GetMachines()[1]->extension.reset();
    coupled.data->GetMachines()[2]->extension.reset();
    EXPECT_EQ(coupled.ScoreX(1.5, 90027)->GetPrediction(), nullptr);
    coupled.data->GetMachines().resize(1);
    EXPECT_EQ(coupled.ScoreX(1.5, 90027)->GetPrediction(), nullptr);
}

TEST(GetScore, OfAClassificationWithoutInputsUsesTheBiases) {
    Bench bench({"no", "yes"});
    auto data = NewClassification(2);
    AddMachine(*data, -0.5, 0, 1);
    bench.TakeData(std::move(data));
    const FakeRecord record(true);
    EXPECT_EQ(Score(bench.model, &record)->GetPrediction()->GetString(), "no");
}

TEST(GetScore, IntoAResultOfTheOtherKindIs90027) {
    Classification classification(false);
    Regression regression;
    const NumericValue value(1.5);
    FakeRecord record(true);
    record.Add("x", &value);
    ScoreResult* result = new SVMRegResult(classification.target);
    EXPECT_EQ(classification.model.GetScore(&record, result, false).GetErrorCode(), 90027);
    delete result;
    const Case sample(true);
    result = new SVMClsResult(regression.target);
    EXPECT_EQ(regression.model.GetScore(&sample.record, result, false).GetErrorCode(), 90027);
    delete result;
}

// However many columns stand for its categories.
TEST(FillCaseRecord, AsksForACategoryOnceACase) {
    class CountingVar : public DictVar {
    public:
        CountingVar() : DictVar("color", kString, kCategorical) {
            for (const char* name : {"red", "green", "blue", "grey"})
                AddCategory(name);
        }
        using DictVar::GetCategoryIndex;
        int GetCategoryIndex(const ScoreValue* value) const override {
            ++lookUps;
            return DictVar::GetCategoryIndex(value);
        }
        mutable int lookUps = 0;
    };
    Bench bench;
    auto owned = std::make_unique<CountingVar>();
    const CountingVar& color = *owned;
    ASSERT_TRUE(bench.dictionary.AddVar(std::move(owned)));
    bench.AddVar("x");
    auto data = NewRegression();
    for (const char* category : {"grey", "red"})
        AddCategoryColumn(*data, "color", category);
    AddNumericColumn(*data, "x");
    for (const char* category : {"blue", "green", "blue"})
        AddCategoryColumn(*data, "color", category);
    bench.TakeData(std::move(data));
    CaseRecord record(bench.dictionary);
    const int place = record.GetIndex("color");
    record.SetNumber(record.GetIndex("x"), 0.375);
    ScoreResult* result = nullptr;
    record.SetText(place, "blue");
    bench.model.GetScore(&record, result, false);
    const std::unique_ptr<ScoreResult> owner(result);
    // One look-up is that of the validity test.
    color.lookUps = 0;
    bench.model.GetScore(&record, result, false);
    EXPECT_EQ(color.lookUps, 2);
    for (const auto& [name, expected] : {std::pair<const char*, Values>{"blue", {0, 0, 0.375, 1, 0, 1}},
                                         std::pair<const char*, Values>{"red", {0, 1, 0.375, 0, 0, 0}}}) {
        record.SetText(place, name);
        bool isComplete = false;
        Indices indices;
        Values values;
        EXPECT_FALSE(bench.access.FillCaseRecord(result, &record, isComplete, indices, values).IsError());
        EXPECT_EQ(values, expected) << name;
    }
}

}  // namespace
}  // namespace KwBrevix_930
