// Filling the result of a case.
#include <cmath>

#include <gtest/gtest.h>

#include "svm/SVMClsResult.h"
#include "svm/SVMRegResult.h"
#include "tests/svm/svm_samples.h"

namespace KwBrevix_930 {
namespace {

using svm_samples::AddExtension;
using svm_samples::AddMachine;
using svm_samples::Bench;
using svm_samples::kInfinity;
using svm_samples::kNaN;
using svm_samples::NewClassification;
using svm_samples::NewRegression;
using svm_samples::Values;
using Vote = SVMModelTestAccess::Vote;

struct EmptyClassification : Bench {
    EmptyClassification() : Bench({"red", "green", "blue"}), result(target), place(&result) {
        TakeData(NewClassification(3));
    }

    SVMClsResult result;
    ScoreResult* place;
};

TEST(FillClsResult, SetsTheCategoryTheListAndTheConfidence) {
    EmptyClassification bench;
    const Vote vote{1, 0.5625, {0.1875, 0.5625, 0.25}};
    EXPECT_FALSE(bench.access.FillCls(vote, bench.place).IsError());
    const auto& categories = bench.model.GetTargetCategories();
    EXPECT_EQ(bench.result.GetPrediction(), categories[1]) << "the model's own value, not a copy";
    EXPECT_EQ(bench.result.GetConfidence(), 0.5625);
    ASSERT_EQ(bench.result.GetAllValuePercent().size(), 3u);
    for (std::size_t k = 0; k < 3; ++k)
        EXPECT_EQ(bench.result.GetAllValuePercent()[k],
                  ScoreClsResult::ValuePercent(categories[k], vote.probabilities[k]));
}

TEST(FillClsResult, WithoutTheCategorysValueChoosesNothing) {
    EmptyClassification bench;
    const_cast<ScoreCategory&>((*bench.target->GetCategories())[1]).value.reset();
    bench.model.SetTargetCategories();
    EXPECT_EQ(bench.access.FillCls({1, 0.5, {0.25, 0.5, 0.25}}, bench.place).GetErrorCode(), 90027);
    EXPECT_EQ(bench.result.GetPrediction(), nullptr);
    EXPECT_TRUE(bench.result.GetAllValuePercent().empty());
    EXPECT_FALSE(bench.access.FillCls({0, 0.5, {0.5, 0.25, 0.25}}, bench.place).IsError());
}

TEST(FillClsResult, EmptiesTheListFirst) {
    EmptyClassification bench;
    StringValue stale("stale");
    bench.result.AddValuePercent(&stale, 0.5);
    bench.access.FillCls({0, 0.75, {0.75, 0.125, 0.125}}, bench.place);
    EXPECT_EQ(bench.result.GetAllValuePercent().size(), 3u);
    EXPECT_EQ(bench.result.GetPercent(&stale), -1.0);
}

TEST(FillClsResult, OfAnIndexOutsideTheCategoriesIsAnErrorThatLeavesTheResult) {
    EmptyClassification bench;
    for (const std::int32_t category : {-1, 3, -2147483647 - 1, 2147483647}) {
        const auto status = bench.access.FillCls({category, 0.5, {0.25, 0.5, 0.25}}, bench.place);
        EXPECT_TRUE(status.IsError());
        EXPECT_EQ(status.GetErrorCode(), 90027) << category;
        EXPECT_EQ(bench.result.GetPrediction(), nullptr);
        EXPECT_EQ(bench.result.GetConfidence(), -1.0);
        EXPECT_TRUE(bench.result.GetAllValuePercent().empty());
    }
}

TEST(FillClsResult, IntoNoResultOrARegressionResultIsAnError) {
    EmptyClassification bench;
    SVMRegResult regression(bench.target);
    ScoreResult* place = nullptr;
    EXPECT_EQ(bench.access.FillCls({1, 0.5, {}}, place).GetErrorCode(), 90027);
    place = &regression;
    EXPECT_EQ(bench.access.FillCls({1, 0.5, {0.25, 0.5, 0.25}}, place).GetErrorCode(), 90027);
    EXPECT_EQ(regression.GetPrediction()->GetDouble(), NumericValue::GetSysmisValue());
}

TEST(FillClsResult, WithProbabilitiesOfAnotherLengthSetsThePredictionAlone) {
    EmptyClassification bench;
    for (const Values& probabilities : {Values{}, Values{0.5, 0.5}, Values{0.25, 0.25, 0.25, 0.25}}) {
        EXPECT_FALSE(bench.access.FillCls({2, 0.5, probabilities}, bench.place).IsError());
        EXPECT_EQ(bench.result.GetPrediction(), bench.model.GetTargetCategories()[2]);
        EXPECT_EQ(bench.result.GetConfidence(), -1.0);
        EXPECT_TRUE(bench.result.GetAllValuePercent().empty());
    }
}

TEST(FillClsResult, InPredictionOnlyModeSetsThePredictionAlone) {
    EmptyClassification bench;
    bench.model.SetPredictionOnly(true);
    EXPECT_FALSE(bench.access.FillCls({2, 0.5, {0.25, 0.25, 0.5}}, bench.place).IsError());
    EXPECT_EQ(bench.result.GetPrediction(), bench.model.GetTargetCategories()[2]);
    EXPECT_EQ(bench.result.GetConfidence(), -1.0);
    EXPECT_TRUE(bench.result.GetAllValuePercent().empty());
}

TEST(FillZarnClsResult, OfAnIndexOutsideTheCategoriesDoesNothingAndSucceeds) {
    EmptyClassification bench;
    for (const std::int32_t category : {-1, 3})
        EXPECT_FALSE(bench.access.FillZarnCls({category, 0.5, {0.25, 0.25, 0.5}}, bench.place).IsError());
    EXPECT_EQ(bench.result.GetConfidence(), -1.0);
    EXPECT_TRUE(bench.result.GetAllValuePercent().empty());
}

// Regression.

struct EmptyRegression : Bench {
    EmptyRegression() : result(target), place(&result), data(TakeData(NewRegression())) {}

    void SetDeviation(double deviation) {
        AddExtension(AddMachine(data), -1, -1, 0.0, 0.0);
        data.GetMachines().back()->extension->standardDeviation = deviation;
        data.SetHasStandardDeviation(true);
    }

    SVMRegResult result;
    ScoreResult* place;
    SVMModelData& data;
};

void ExpectInterval(const SVMRegResult& result, double lower, double upper) {
    double itsLower = 0.0;
    double itsUpper = 0.0;
    result.GetCI(itsLower, itsUpper);
    EXPECT_EQ(itsLower, lower);
    EXPECT_EQ(itsUpper, upper);
}

void ExpectNoDeviation(const SVMRegResult& result) {
    EXPECT_EQ(result.GetStdDev(), -1.0);
    ExpectInterval(result, NumericValue::GetSysmisValue(), NumericValue::GetSysmisValue());
}

TEST(FillRegResult, SetsPredictionDeviationAndInterval) {
    EmptyRegression bench;
    bench.SetDeviation(1.6875);
    EXPECT_FALSE(bench.access.FillReg(12.375, bench.place).IsError());
    EXPECT_EQ(bench.result.GetPrediction()->GetDouble(), 12.375);
    EXPECT_EQ(bench.result.GetStdDev(), 1.6875);
    const double halfWidth = -(std::log(0.050000000000000044) * 1.6875);
    ExpectInterval(bench.result, 12.375 - halfWidth, 12.375 + halfWidth);
}

// Deliberate: the constant is the double that 1 - 0.95 gives, not 0.05.
TEST(FillRegResult, TakesTheIntervalsConstantFromOneMinusNinetyFiveHundredths) {
    EmptyRegression bench;
    // So wide that the constant's last digits show.
    bench.SetDeviation(1e15);
    bench.access.FillReg(0.0, bench.place);
    const double halfWidth = -(std::log(1.0 - 0.95) * 1e15);
    ExpectInterval(bench.result, -halfWidth, halfWidth);
    EXPECT_NE(halfWidth, -(std::log(0.05) * 1e15));
}

TEST(FillRegResult, WithoutTheFlagTheDeviationIsZeroAndTheIntervalEmpty) {
    EmptyRegression bench;
    bench.SetDeviation(1.6875);
    bench.data.SetHasStandardDeviation(false);
    bench.access.FillReg(12.375, bench.place);
    EXPECT_EQ(bench.result.GetStdDev(), 0.0);
    ExpectInterval(bench.result, 12.375, 12.375);
}

TEST(FillRegResult, WithoutExtensionOrMachinesThereIsNoDeviation) {
    EmptyRegression bench;
    bench.data.SetHasStandardDeviation(true);
    EXPECT_FALSE(bench.access.FillReg(12.375, bench.place).IsError());
    EXPECT_EQ(bench.result.GetPrediction()->GetDouble(), 12.375);
    ExpectNoDeviation(bench.result);
    AddMachine(bench.data);
    EXPECT_FALSE(bench.access.FillReg(13.375, bench.place).IsError());
    EXPECT_EQ(bench.result.GetPrediction()->GetDouble(), 13.375);
    ExpectNoDeviation(bench.result);
    bench.data.GetMachines().front().reset();
    EXPECT_FALSE(bench.access.FillReg(14.375, bench.place).IsError());
    ExpectNoDeviation(bench.result);
}

TEST(FillRegResult, OnlyTheFirstMachinesDeviationCounts) {
    EmptyRegression bench;
    AddMachine(bench.data);
    bench.SetDeviation(2.5);
    bench.access.FillReg(12.375, bench.place);
    ExpectNoDeviation(bench.result);
}

TEST(FillRegResult, ASystemMissingDeviationIsNone) {
    EmptyRegression bench;
    bench.SetDeviation(NumericValue::GetSysmisValue());
    EXPECT_FALSE(bench.access.FillReg(12.375, bench.place).IsError());
    EXPECT_EQ(bench.result.GetPrediction()->GetDouble(), 12.375);
    ExpectNoDeviation(bench.result);
}

TEST(FillRegResult, InPredictionOnlyModeSetsThePredictionAlone) {
    EmptyRegression bench;
    bench.SetDeviation(1.6875);
    bench.model.SetPredictionOnly(true);
    EXPECT_FALSE(bench.access.FillReg(12.375, bench.place).IsError());
    EXPECT_EQ(bench.result.GetPrediction()->GetDouble(), 12.375);
    ExpectNoDeviation(bench.result);
}

TEST(FillRegResult, CarriesNaNAndInfinity) {
    EmptyRegression bench;
    bench.SetDeviation(2.5);
    bench.access.FillReg(kNaN, bench.place);
    EXPECT_TRUE(std::isnan(bench.result.GetPrediction()->GetDouble()));
    bench.access.FillReg(kInfinity, bench.place);
    ExpectInterval(bench.result, kInfinity, kInfinity);
}

TEST(FillRegResult, WithoutDataSetsThePredictionAlone) {
    Bench bench;
    SVMRegResult result(bench.target);
    ScoreResult* place = &result;
    EXPECT_FALSE(bench.access.FillReg(12.375, place).IsError());
    EXPECT_EQ(result.GetPrediction()->GetDouble(), 12.375);
    ExpectNoDeviation(result);
}

TEST(FillRegResult, IntoNoResultOrAClassificationResultIsAnError) {
    EmptyRegression bench;
    SVMClsResult classification(bench.target);
    ScoreResult* place = nullptr;
    EXPECT_EQ(bench.access.FillReg(1.5, place).GetErrorCode(), 90027);
    place = &classification;
    EXPECT_EQ(bench.access.FillReg(1.5, place).GetErrorCode(), 90027);
    EXPECT_EQ(classification.GetPrediction(), nullptr);
}

TEST(FillZarnRegResult, LeavesThePrediction) {
    EmptyRegression bench;
    bench.SetDeviation(1.6875);
    EXPECT_FALSE(bench.access.FillZarnReg(2.5, bench.place).IsError());
    EXPECT_EQ(bench.result.GetPrediction()->GetDouble(), NumericValue::GetSysmisValue());
    EXPECT_EQ(bench.result.GetStdDev(), 1.6875);
}

}  // namespace
}  // namespace KwBrevix_930
