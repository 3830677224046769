// Data that no honest document holds.
#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "svm/PairwiseCoupling.h"
#include "svm/SVMClsResult.h"
#include "tests/svm/svm_samples.h"

namespace KwBrevix_930 {
namespace {

using svm_samples::AddExtension;
using svm_samples::AddMachine;
using svm_samples::AddNumericColumn;
using svm_samples::AddSupportVector;
using svm_samples::Bench;
using svm_samples::FakeRecord;
using svm_samples::Indices;
using svm_samples::kInfinity;
using svm_samples::kNaN;
using svm_samples::NewClassification;
using svm_samples::NewRegression;
using svm_samples::Values;
using Vote = SVMModelTestAccess::Vote;

constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();

TEST(HostileData, AHugeCountOfCategoriesChoosesNothing) {
    for (const bool isZarn : {false, true}) {
        for (const bool isOneAgainstAll : {false, true}) {
            Bench bench({"a", "b"});
            SVMModelData& data = bench.TakeData(NewClassification(kMost));
            data.SetIsZarnModel(isZarn);
            data.SetIsOneAgainstAll(isOneAgainstAll);
            for (int k = 0; k < 3; ++k)
                AddExtension(AddMachine(data, 0.5, 7, 8), 0, 1, 1.0, 0.0);
            const FakeRecord record(true);
            ScoreResult* result = nullptr;
            EXPECT_EQ(bench.model.GetScore(&record, result, false).GetErrorCode(), 90027);
            EXPECT_EQ(result->GetPrediction(), nullptr);
            delete result;
        }
    }
}

TEST(HostileData, PairsOfAHugeCountAreNotAllocated) {
    Bench bench({"a", "b"});
    SVMModelData& data = bench.TakeData(NewClassification(kMost));
    AddMachine(data);
    std::vector<Values> pairs;
    EXPECT_EQ(bench.access.PairProbabilities({0.5}, pairs).GetErrorCode(), 90027);
    EXPECT_TRUE(pairs.empty());
    Indices votes(2, 0);
    EXPECT_FALSE(bench.access.Tickets({0.5}, votes).IsError());
    EXPECT_EQ(votes, Indices(2, 0));
}

// The number of rows of the pair matrix that so many machines lead to, 0 with the status 90027.
std::size_t CountPairRows(std::int32_t categoryCount, std::size_t machineCount) {
    Bench bench({"a", "b"});
    SVMModelData& data = bench.TakeData(NewClassification(categoryCount));
    for (std::size_t k = 0; k < machineCount; ++k)
        AddExtension(AddMachine(data, 0.5, 0, 1), 0, 1, 1.0, 0.0);
    std::vector<Values> pairs;
    const auto status = bench.access.PairProbabilities(Values(machineCount, 0.5), pairs);
    EXPECT_EQ(status.GetErrorCode(), pairs.empty() ? 90027 : 0);
    return pairs.size();
}

TEST(HostileData, MoreThan512CategoriesAreCoupledOnlyWithAMachineForEachPair) {
    EXPECT_EQ(CountPairRows(512, 512), 512u);
    EXPECT_EQ(CountPairRows(513, 513), 0u);
    EXPECT_EQ(CountPairRows(513, 513 * 512 / 2 - 1), 0u);
    EXPECT_EQ(CountPairRows(513, 513 * 512 / 2), 513u);
}

TEST(HostileData, MoreCategoriesThanAreCoupledEndTheVoteWithTheirStatus) {
    Bench bench({"a", "b"});
    SVMModelData& data = bench.TakeData(NewClassification(513));
    for (int k = 0; k < 512; ++k)
        AddExtension(AddMachine(data, 0.5, 0, 1), 0, 1, 1.0, 0.0);
    Vote vote;
    EXPECT_EQ(bench.access.ZarnMultiTicket(Values(512, 0.5), vote).GetErrorCode(), 90027);
    EXPECT_TRUE(vote.probabilities.empty());
}

// One sweep over 4000 categories would outlast the time that a test is given.
TEST(HostileData, CategoriesThatNoPairCoversAreSettledWithoutASweep) {
    const std::vector<Values> pairs(4000, Values(4000, 0.0));
    Values p;
    EXPECT_FALSE(PairwiseCoupling().Solve(pairs, p).IsError());
    EXPECT_TRUE(std::isnan(p.front()) && std::isnan(p.back()));
}

TEST(HostileData, DataWithoutColumnsAfterDataWithColumnsIsReadWithinItsLists) {
    Bench bench;
    bench.AddVar("a");
    auto data = NewRegression();
    AddNumericColumn(*data, "a");
    bench.TakeData(std::move(data));
    AddMachine(bench.TakeData(NewRegression()), 2.5);
    const NumericValue value(1.5);
    FakeRecord record(true);
    record.Add("a", &value);
    ScoreResult* result = nullptr;
    EXPECT_FALSE(bench.model.GetScore(&record, result, false).IsError());
    EXPECT_EQ(result->GetPrediction()->GetDouble(), 2.5);
    delete result;
}

TEST(HostileData, SupportVectorsBeyondTheColumnsCountAsZeroInput) {
    Bench bench;
    bench.AddVar("a");
    auto data = NewRegression();
    AddNumericColumn(*data, "a");
    ST_SUPPORTVECTORMACHINE& machine = AddMachine(*data, 0.25);
    AddSupportVector(*data, machine, 1.0, {-5, 0, 7, kMost - 1}, {100.0, 2.0, 300.0, 400.0});
    bench.TakeData(std::move(data));
    const NumericValue value(1.5);
    FakeRecord record(true);
    record.Add("a", &value);
    ScoreResult* result = nullptr;
    EXPECT_FALSE(bench.model.GetScore(&record, result, false).IsError());
    EXPECT_EQ(result->GetPrediction()->GetDouble(), 3.25);
    delete result;
}

TEST(HostileData, NumbersThatAreNoneFlowIntoTheDecision) {
    for (const double odd : {kNaN, kInfinity}) {
        Bench bench;
        bench.AddVar("a");
        auto data = NewRegression();
        AddNumericColumn(*data, "a");
        AddSupportVector(*data, AddMachine(*data, 0.25), 1.0, {0}, {odd});
        bench.TakeData(std::move(data));
        const NumericValue value(1.5);
        FakeRecord record(true);
        record.Add("a", &value);
        ScoreResult* result = nullptr;
        EXPECT_FALSE(bench.model.GetScore(&record, result, false).IsError());
        EXPECT_EQ(std::isnan(result->GetPrediction()->GetDouble()), std::isnan(odd));
        EXPECT_FALSE(std::isfinite(result->GetPrediction()->GetDouble()));
        delete result;
    }
}

}  // namespace
}  // namespace KwBrevix_930
