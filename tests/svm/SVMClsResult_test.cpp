// The result of a classified case.
#include "svm/SVMClsResult.h"

#include <memory>

#include <gtest/gtest.h>

#include "host/DictVar.h"
#include "host/NumericValue.h"
#include "host/StringValue.h"

namespace KwBrevix_930 {
namespace {

// Tells its end.
class WatchedValue : public StringValue {
public:
    WatchedValue(const char* text, int& ends) : StringValue(text), fEnds(ends) {}
    ~WatchedValue() override { ++fEnds; }

private:
    int& fEnds;
};

const DictVar kTarget("y", DictVar::kString, ScoreDictVar::kCategorical);

TEST(SVMClsResult, StartsWithoutPredictionAndWithConfidenceMinusOne) {
    const SVMClsResult result(&kTarget);
    EXPECT_EQ(result.GetTarget(), &kTarget);
    EXPECT_EQ(result.GetPrediction(), nullptr);
    EXPECT_EQ(result.GetConfidence(), -1.0);
    EXPECT_TRUE(result.GetAllValuePercent().empty());
    EXPECT_EQ(result.GetScoreResultType(), 18);
}

TEST(SVMClsResult, KeepsWhatItIsTold) {
    StringValue yes("yes");
    SVMClsResult result(&kTarget);
    result.SetPrediction(&yes);
    result.SetConfidence(0.8125);
    EXPECT_EQ(result.GetPrediction(), &yes);
    EXPECT_EQ(result.GetConfidence(), 0.8125);
    result.SetPrediction(nullptr);
    EXPECT_EQ(result.GetPrediction(), nullptr);
}

TEST(SVMClsResult, ListsPairsInTheOrderInWhichTheyWereAdded) {
    StringValue yes("yes");
    StringValue no("no");
    SVMClsResult result(&kTarget);
    EXPECT_TRUE(result.AddValuePercent(&yes, 0.625));
    EXPECT_TRUE(result.AddValuePercent(&no, 0.375));
    const auto& list = result.GetAllValuePercent();
    ASSERT_EQ(list.size(), 2u);
    EXPECT_EQ(list[0], ScoreClsResult::ValuePercent(&yes, 0.625));
    EXPECT_EQ(list[1], ScoreClsResult::ValuePercent(&no, 0.375));
    result.RemoveValuePercent();
    EXPECT_TRUE(list.empty());
}

TEST(SVMClsResult, KeepsEqualValuesTwiceAndAnswersWithTheFirst) {
    StringValue yes("yes");
    StringValue alsoYes("yes");
    SVMClsResult result(&kTarget);
    EXPECT_TRUE(result.AddValuePercent(&yes, 0.625));
    EXPECT_TRUE(result.AddValuePercent(&yes, 0.125));
    EXPECT_TRUE(result.AddValuePercent(&alsoYes, 0.25));
    EXPECT_EQ(result.GetAllValuePercent().size(), 3u);
    EXPECT_EQ(result.GetPercent(&alsoYes), 0.625);
}

TEST(SVMClsResult, FindsPercentsByTheValuesOwnEquality) {
    StringValue yes("yes");
    NumericValue five(5.0);
    SVMClsResult result(&kTarget);
    result.AddValuePercent(nullptr, 0.5);
    result.AddValuePercent(&yes, 0.25);
    result.AddValuePercent(&five, 0.125);
    const StringValue sameText("yes");
    const StringValue otherText("YES");
    const StringValue blanks("yes ");
    const StringValue five_text("5");
    const NumericValue sameNumber(5.0);
    EXPECT_EQ(result.GetPercent(&sameText), 0.25);
    EXPECT_EQ(result.GetPercent(&sameNumber), 0.125);
    EXPECT_EQ(result.GetPercent(&otherText), -1.0);
    EXPECT_EQ(result.GetPercent(&blanks), -1.0);
    EXPECT_EQ(result.GetPercent(&five_text), -1.0);
    EXPECT_EQ(result.GetPercent(nullptr), -1.0);
    EXPECT_EQ(SVMClsResult(&kTarget).GetPercent(&yes), -1.0);
}

TEST(SVMClsResult, CopiesHoldAllMembers) {
    StringValue yes("yes");
    StringValue no("no");
    auto original = std::make_unique<SVMClsResult>(&kTarget);
    original->SetPrediction(&yes);
    original->SetConfidence(0.75);
    original->AddValuePercent(&yes, 0.75);
    original->AddValuePercent(&no, 0.25);
    const SVMClsResult copy(*original);
    SVMClsResult assigned(nullptr);
    assigned.AddValuePercent(&no, 0.5);
    assigned = *original;
    original.reset();
    for (const SVMClsResult* result : {&copy, static_cast<const SVMClsResult*>(&assigned)}) {
        EXPECT_EQ(result->GetTarget(), &kTarget);
        EXPECT_EQ(result->GetPrediction(), &yes) << "points at the category itself, not at a copy";
        EXPECT_EQ(result->GetConfidence(), 0.75);
        ASSERT_EQ(result->GetAllValuePercent().size(), 2u);
        EXPECT_EQ(result->GetAllValuePercent()[1], ScoreClsResult::ValuePercent(&no, 0.25));
    }
}

TEST(SVMClsResult, LeavesAPredictionThatItDoesNotOwn) {
    int ends = 0;
    WatchedValue yes("yes", ends);
    {
        SVMClsResult result(&kTarget);
        result.SetPrediction(&yes);
        const SVMClsResult copy(result);
        result.SetPrediction(nullptr);
    }
    EXPECT_EQ(ends, 0);
}

TEST(SVMClsResult, DeletesAPredictionThatItOwnsOnce) {
    int ends = 0;
    {
        SVMClsResult result(&kTarget);
        result.SetOwnedPrediction(std::make_unique<WatchedValue>("", ends));
        result.SetPrediction(const_cast<ScoreValue*>(result.GetPrediction()));
        EXPECT_EQ(ends, 0) << "the prediction that is there already";
    }
    EXPECT_EQ(ends, 1);
    StringValue yes("yes");
    SVMClsResult result(&kTarget);
    result.SetOwnedPrediction(std::make_unique<WatchedValue>("", ends));
    result.SetPrediction(&yes);
    EXPECT_EQ(ends, 2);
    EXPECT_EQ(result.GetPrediction(), &yes);
    result.SetOwnedPrediction(std::make_unique<WatchedValue>("", ends));
    result.SetOwnedPrediction(std::make_unique<WatchedValue>("", ends));
    EXPECT_EQ(ends, 3);
}

TEST(SVMClsResult, CopiesCloneAPredictionThatIsOwned) {
    auto original = std::make_unique<SVMClsResult>(&kTarget);
    original->SetOwnedPrediction(std::make_unique<StringValue>("absent"));
    const SVMClsResult copy(*original);
    SVMClsResult assigned(nullptr);
    assigned.SetOwnedPrediction(std::make_unique<StringValue>("old"));
    assigned = *original;
    EXPECT_NE(copy.GetPrediction(), original->GetPrediction());
    EXPECT_NE(assigned.GetPrediction(), original->GetPrediction());
    original.reset();
    EXPECT_EQ(copy.GetPrediction()->GetString(), "absent");
    EXPECT_EQ(assigned.GetPrediction()->GetString(), "absent");
}

TEST(SVMClsResult, AssignmentOfAPlainPredictionDeletesTheOwnedOne) {
    int ends = 0;
    StringValue yes("yes");
    SVMClsResult plain(&kTarget);
    plain.SetPrediction(&yes);
    SVMClsResult result(&kTarget);
    result.SetOwnedPrediction(std::make_unique<WatchedValue>("", ends));
    result = plain;
    EXPECT_EQ(ends, 1);
    EXPECT_EQ(result.GetPrediction(), &yes);
}

TEST(SVMClsResult, SelfAssignmentChangesNothing) {
    SVMClsResult result(&kTarget);
    result.SetOwnedPrediction(std::make_unique<StringValue>("absent"));
    const SVMClsResult& self = result;
    result = self;
    EXPECT_EQ(result.GetPrediction()->GetString(), "absent");
}

}  // namespace
}  // namespace KwBrevix_930
