// The result of a regression case.
#include "svm/SVMRegResult.h"

#include <memory>

#include <gtest/gtest.h>

#include "host/DictVar.h"
#include "host/StringValue.h"

namespace KwBrevix_930 {
namespace {

const DictVar kNumberTarget("y", DictVar::kNumber, ScoreDictVar::kContinuous);

// Tells its end.
class WatchedNumber : public NumericValue {
public:
    WatchedNumber(double number, int& ends) : NumericValue(number), fEnds(ends) {}
    ~WatchedNumber() override { ++fEnds; }

private:
    int& fEnds;
};

TEST(SVMRegResult, StartsWithTheSystemMissingValue) {
    const SVMRegResult result(&kNumberTarget);
    double lower = 0.0;
    double upper = 0.0;
    result.GetCI(lower, upper);
    EXPECT_EQ(result.GetTarget(), &kNumberTarget);
    ASSERT_NE(result.GetPrediction(), nullptr);
    EXPECT_EQ(result.GetPrediction()->GetDouble(), NumericValue::GetSysmisValue());
    EXPECT_EQ(result.GetStdDev(), -1.0);
    EXPECT_EQ(lower, NumericValue::GetSysmisValue());
    EXPECT_EQ(upper, NumericValue::GetSysmisValue());
    EXPECT_EQ(result.GetScoreResultType(), 19);
}

TEST(SVMRegResult, HasNoConfidence) {
    SVMRegResult result(&kNumberTarget);
    EXPECT_EQ(result.GetConfidence(), -1.0);
    result.SetConfidence(0.75);
    EXPECT_EQ(result.GetConfidence(), -1.0);
}

TEST(SVMRegResult, KeepsDeviationAndInterval) {
    SVMRegResult result(&kNumberTarget);
    double lower = 0.0;
    double upper = 0.0;
    result.SetStdDev(1.375);
    result.SetCI(-2.5, 7.25);
    result.GetCI(lower, upper);
    EXPECT_EQ(result.GetStdDev(), 1.375);
    EXPECT_EQ(lower, -2.5);
    EXPECT_EQ(upper, 7.25);
}

TEST(SVMRegResult, OwnsItsPrediction) {
    int ends = 0;
    {
        SVMRegResult result(&kNumberTarget);
        auto* first = new WatchedNumber(1.5, ends);
        result.SetPrediction(first);
        EXPECT_EQ(result.GetPrediction(), first);
        result.SetPrediction(first);
        EXPECT_EQ(ends, 0) << "the prediction that is there already";
        result.SetPrediction(new WatchedNumber(2.5, ends));
        EXPECT_EQ(ends, 1);
        EXPECT_EQ(result.GetPrediction()->GetDouble(), 2.5);
    }
    EXPECT_EQ(ends, 2);
    SVMRegResult result(&kNumberTarget);
    result.SetPrediction(nullptr);
    EXPECT_EQ(result.GetPrediction(), nullptr);
}

TEST(SVMRegResult, ChangesANumericPredictionInPlaceAndReplacesAnyOther) {
    SVMRegResult result(&kNumberTarget);
    const ScoreValue* before = result.GetPrediction();
    result.SetPredictedNumber(3.25);
    EXPECT_EQ(result.GetPrediction(), before);
    EXPECT_EQ(before->GetDouble(), 3.25);
    result.SetPrediction(new StringValue(""));
    result.SetPredictedNumber(4.75);
    EXPECT_EQ(result.GetPrediction()->GetType(), ScoreValue::kNumeric);
    EXPECT_EQ(result.GetPrediction()->GetDouble(), 4.75);
    result.SetPrediction(nullptr);
    result.SetPredictedNumber(5.75);
    EXPECT_EQ(result.GetPrediction()->GetDouble(), 5.75);
}

TEST(SVMRegResult, CopiesHoldAllMembersAndAPredictionOfTheirOwn) {
    auto original = std::make_unique<SVMRegResult>(&kNumberTarget);
    original->SetPredictedNumber(3.25);
    original->SetStdDev(0.5);
    original->SetCI(1.5, 4.5);
    const SVMRegResult copy(*original);
    SVMRegResult assigned(nullptr);
    assigned = *original;
    EXPECT_NE(copy.GetPrediction(), original->GetPrediction());
    EXPECT_NE(assigned.GetPrediction(), original->GetPrediction());
    original.reset();
    for (const SVMRegResult* result : {&copy, static_cast<const SVMRegResult*>(&assigned)}) {
        double lower = 0.0;
        double upper = 0.0;
        result->GetCI(lower, upper);
        EXPECT_EQ(result->GetTarget(), &kNumberTarget);
        EXPECT_EQ(result->GetPrediction()->GetDouble(), 3.25);
        EXPECT_EQ(result->GetStdDev(), 0.5);
        EXPECT_EQ(lower, 1.5);
        EXPECT_EQ(upper, 4.5);
    }
}

TEST(SVMRegResult, CopiesWithoutPredictionAndOntoItself) {
    SVMRegResult result(&kNumberTarget);
    const SVMRegResult& self = result;
    result.SetPredictedNumber(2.75);
    result = self;
    EXPECT_EQ(result.GetPrediction()->GetDouble(), 2.75);
    result.SetPrediction(nullptr);
    const SVMRegResult copy(result);
    EXPECT_EQ(copy.GetPrediction(), nullptr);
}

}  // namespace
}  // namespace KwBrevix_930
