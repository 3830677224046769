// What scoring allocates, and what it and coupling do when memory is short.
#include <memory>
#include <new>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "host/CaseRecord.h"
#include "svm/PairwiseCoupling.h"
#include "svm/SVMClsResult.h"
#include "svm/SVMKFRBF.h"
#include "svm/plan/ScoringPlan.h"
#include "tests/support/failing_new.h"
#include "tests/svm/svm_samples.h"

namespace KwBrevix_930 {
namespace {

using svm_samples::AddCategoryColumn;
using svm_samples::AddExtension;
using svm_samples::AddMachine;
using svm_samples::AddNumericColumn;
using svm_samples::AddSupportVector;
using svm_samples::Bench;
using svm_samples::NewClassification;
using svm_samples::NewRegression;
using svm_samples::Values;

// Two numeric columns, one category column, and support vectors in every machine.
void AddColumns(Bench& bench, SVMModelData& data) {
    bench.AddVar("a");
    bench.AddVar("b");
    bench.AddVar("color", DictVar::kString, ScoreDictVar::kCategorical).AddCategory("red");
    AddNumericColumn(data, "a");
    AddNumericColumn(data, "b");
    AddCategoryColumn(data, "color", "red");
}

void AddFilledMachine(SVMModelData& data, std::int32_t i, std::int32_t j) {
    ST_SUPPORTVECTORMACHINE& machine = AddMachine(data, 0.375, i, j);
    for (int vector = 0; vector < 20; ++vector)
        AddSupportVector(data, machine, vector - 9.5, {0, 1, 2}, {0.25 * vector, 1.5, 1.0});
    AddExtension(machine, i, j, -1.0, 0.125);
}

// The allocations of each of ten cases into one result, the first two left out.
std::vector<std::size_t> CountCases(Bench& bench) {
    CaseRecord record(bench.dictionary);
    ScoreResult* result = nullptr;
    std::vector<std::size_t> counts(10);
    for (std::size_t i = 0; i < counts.size(); ++i) {
        record.SetNumber(record.GetIndex("a"), 0.625 * static_cast<double>(i));
        record.SetNumber(record.GetIndex("b"), 2.5);
        record.SetText(record.GetIndex("color"), "red");
        const std::size_t before = failing_new::Count();
        const auto status = bench.model.GetScore(&record, result, false);
        counts[i] = failing_new::Count() - before;
        EXPECT_FALSE(status.IsError());
    }
    delete result;
    counts.erase(counts.begin(), counts.begin() + 2);
    return counts;
}

TEST(GetScoreAllocation, OfARegressionIsNone) {
    Bench bench;
    auto data = NewRegression();
    AddColumns(bench, *data);
    AddFilledMachine(*data, -1, -1);
    bench.TakeData(std::move(data));
    EXPECT_EQ(CountCases(bench), std::vector<std::size_t>(8, 0));
}

std::unique_ptr<SVMModelData> PairsOf(Bench& bench, std::int32_t n) {
    auto data = NewClassification(n);
    AddColumns(bench, *data);
    for (std::int32_t i = 0; i < n; ++i) {
        for (std::int32_t j = i + 1; j < n; ++j)
            AddFilledMachine(*data, i, j);
    }
    return data;
}

TEST(GetScoreAllocation, OfTwoCategoriesIsNone) {
    Bench bench({"no", "yes"});
    bench.TakeData(PairsOf(bench, 2));
    EXPECT_EQ(CountCases(bench), std::vector<std::size_t>(8, 0));
}

TEST(GetScoreAllocation, OfVotingIsNone) {
    Bench bench({"a", "b", "c", "d", "e"});
    bench.TakeData(PairsOf(bench, 5));
    EXPECT_EQ(CountCases(bench), std::vector<std::size_t>(8, 0));
}

TEST(GetScoreAllocation, OfOneAgainstAllIsNone) {
    Bench bench({"a", "b", "c", "d", "e"});
    auto data = PairsOf(bench, 5);
    data->SetIsOneAgainstAll(true);
    bench.TakeData(std::move(data));
    EXPECT_EQ(CountCases(bench), std::vector<std::size_t>(8, 0));
}

TEST(GetScoreAllocation, OfCouplingIsNone) {
    Bench bench({"a", "b", "c", "d", "e"});
    auto data = PairsOf(bench, 5);
    data->SetIsZarnModel(true);
    bench.TakeData(std::move(data));
    EXPECT_EQ(CountCases(bench), std::vector<std::size_t>(8, 0));
}

// 540 numbers and 60 categories of 6 variables, 700 vectors in 3 machines.
constexpr int kWideNumbers = 540;
constexpr int kWideTexts = 6;
constexpr int kWideCategories = 10;

std::string WideName(const char* kind, int k) {
    return kind + std::to_string(k);
}

void TakeWideData(Bench& bench) {
    auto data = NewClassification(3);
    data->SetKernelType(SVMModelData::kRadialBasis);
    data->SetGamma(0.001953125);
    for (int k = 0; k < kWideNumbers; ++k) {
        bench.AddVar(WideName("n", k));
        AddNumericColumn(*data, WideName("n", k));
    }
    for (int k = 0; k < kWideTexts; ++k) {
        DictVar& variable = bench.AddVar(WideName("t", k), DictVar::kString, ScoreDictVar::kCategorical);
        for (int c = 0; c < kWideCategories; ++c) {
            variable.AddCategory(WideName("a text that is long enough to need memory ", c));
            AddCategoryColumn(*data, WideName("t", k), WideName("a text that is long enough to need memory ", c));
        }
    }
    std::int32_t pairs[3][2] = {{0, 1}, {0, 2}, {1, 2}};
    for (int m = 0; m < 3; ++m) {
        ST_SUPPORTVECTORMACHINE& machine = AddMachine(*data, 0.25 - 0.5 * m, pairs[m][0], pairs[m][1]);
        for (int v = 0; v < 250 - 25 * m + 8; ++v) {
            svm_samples::Indices indices;
            Values values;
            for (int p = v % 3; p < kWideNumbers + kWideTexts * kWideCategories; p += 1 + v % 4) {
                indices.push_back(p);
                values.push_back(0.125 * ((v + 3 * p) % 17) - 1.0);
            }
            AddSupportVector(*data, machine, 0.5 * (v % 7) - 1.375, indices, values);
        }
    }
    bench.TakeData(std::move(data));
}

// Case after case by GetScore, then batch after batch of each kind: none of them allocates but the first.
TEST(GetScoreAllocation, OfAWideModelIsNoneFromTheSecondCaseOn) {
    Bench bench({"a", "b", "c"});
    TakeWideData(bench);
    ASSERT_TRUE(bench.access.Plan());
    constexpr std::size_t kCases = 70;
    std::vector<std::unique_ptr<CaseRecord>> records;
    std::vector<const ScoreCaseRecord*> pointers;
    for (std::size_t i = 0; i < kCases; ++i) {
        CaseRecord& record = *records.emplace_back(std::make_unique<CaseRecord>(bench.dictionary));
        pointers.push_back(&record);
        for (int k = 0; k < kWideNumbers; ++k)
            record.SetNumber(record.GetIndex(WideName("n", k)), 0.0625 * ((static_cast<int>(i) + 5 * k) % 31) - 1.0);
        for (int k = 0; k < kWideTexts; ++k)
            record.SetText(record.GetIndex(WideName("t", k)),
                           WideName("a text that is long enough to need memory ", (static_cast<int>(i) + k) % 10));
    }
    const auto count = [](const auto& score) {
        const std::size_t before = failing_new::Count();
        score();
        return failing_new::Count() - before;
    };
    std::vector<ScoreResult*> results(kCases);
    std::vector<KwScore::KwStatus> statuses(kCases);
    EXPECT_FALSE(bench.model.GetScore(pointers[0], results[0], false).IsError());
    for (std::size_t i = 1; i < kCases; ++i)
        EXPECT_EQ(count([&] { statuses[i] = bench.model.GetScore(pointers[i], results[0], false); }), 0u) << i;
    for (int turn = 0; turn < 3; ++turn) {
        const std::size_t allocated =
            count([&] { bench.model.ScoreCases(kCases, pointers.data(), results.data(), statuses.data(), false); });
        EXPECT_EQ(allocated == 0, turn > 0);
    }
    std::vector<std::vector<double>> numbers(bench.dictionary.GetVars().size());
    std::vector<const double*> columns;
    for (auto& column : numbers) {
        column.assign(kCases, 0.75);
        columns.push_back(column.data());
    }
    std::vector<double> answers(5 * kCases);
    for (int turn = 0; turn < 3; ++turn) {
        const std::size_t allocated = count([&] {
            EXPECT_TRUE(
                bench.model.ScoreNumbers(kCases, columns.data(), columns.size(), answers.data(), statuses.data()));
        });
        EXPECT_EQ(allocated, 0u) << turn;
    }
    for (ScoreResult* result : results)
        delete result;
}

// In a thread that has scored nothing before; the next call finds everything as it should be.
TEST(GetScoreAllocation, ThatFailsForPlainNumbersLeavesTheNextCallWhole) {
    Bench bench({"a", "b", "c"});
    bench.TakeData(PairsOf(bench, 3));
    const CaseRecord record(bench.dictionary);
    ScoreResult* result = nullptr;
    bench.model.GetScore(&record, result, false);
    delete result;
    constexpr std::size_t kCases = 70;
    const std::vector<double> values(kCases, 0.0);
    const std::vector<const double*> columns(bench.dictionary.GetVars().size(), values.data());
    const auto score = [&](std::vector<double>& numbers) {
        std::vector<KwScore::KwStatus> statuses(kCases, KwScore::KwStatus(4711, true));
        EXPECT_TRUE(bench.model.ScoreNumbers(kCases, columns.data(), columns.size(), numbers.data(), statuses.data()));
        for (const auto& status : statuses)
            EXPECT_FALSE(status.IsError());
    };
    std::vector<double> expected(5 * kCases);
    score(expected);
    std::size_t failures = 0;
    for (bool isFailing = true; isFailing; ++failures) {
        std::vector<double> numbers(5 * kCases);
        std::vector<KwScore::KwStatus> statuses(kCases);
        bool isThrown = false;
        std::thread([&] {
            {
                const failing_new::FailAfter failure(failures);
                try {
                    bench.model.ScoreNumbers(kCases, columns.data(), columns.size(), numbers.data(), statuses.data());
                } catch (const std::bad_alloc&) {
                    isThrown = true;
                }
                isFailing = failure.Failed();
            }
            score(numbers);
        }).join();
        EXPECT_EQ(isThrown, isFailing) << failures;
        EXPECT_EQ(numbers, expected) << failures;
    }
    EXPECT_GT(failures, 3u);
}

TEST(GetScoreAllocation, OfANewResultIsTheResult) {
    Bench bench;
    auto data = NewRegression();
    AddColumns(bench, *data);
    AddFilledMachine(*data, -1, -1);
    bench.TakeData(std::move(data));
    CaseRecord record(bench.dictionary);
    record.SetNumber(record.GetIndex("a"), 1.5);
    record.SetNumber(record.GetIndex("b"), 2.5);
    record.SetText(record.GetIndex("color"), "red");
    ScoreResult* result = nullptr;
    bench.model.GetScore(&record, result, false);
    delete result;
    result = nullptr;
    const std::size_t before = failing_new::Count();
    bench.model.GetScore(&record, result, false);
    EXPECT_EQ(failing_new::Count() - before, 2u) << "the result and its prediction";
    delete result;
}

TEST(GetScoreAllocation, OfAHugeCountOfCategoriesStaysSmall) {
    Bench bench({"a", "b"});
    SVMModelData& data = bench.TakeData(NewClassification(2147483647));
    data.SetIsZarnModel(true);
    AddExtension(AddMachine(data), 0, 1, -1.0, 0.0);
    std::vector<Values> pairs;
    const Values decisions = {0.5};
    const std::size_t before = failing_new::Count();
    EXPECT_EQ(bench.access.PairProbabilities(decisions, pairs).GetErrorCode(), 90027);
    EXPECT_EQ(failing_new::Count(), before);
}

// Short of memory while it is set up, a model does without its plan; the last part of the plan is built or none is.
TEST(PlanAllocation, WithoutMemoryThePlainLoopsScoreTheSame) {
    Bench bench({"a", "b", "c"});
    SVMModelData& data = bench.TakeData(PairsOf(bench, 3));
    ASSERT_TRUE(bench.access.Plan());
    const Values x = {0.625, 2.5, 1.0};
    Values planned(3);
    bench.access.Plan()->Decide(x.data(), planned.data());
    const auto& kernel = *bench.model.GetKernel();
    std::size_t failures = 0;
    for (bool isFailing = true; isFailing; ++failures) {
        std::unique_ptr<const plan::ScoringPlan> plan;
        const failing_new::FailAfter failure(failures);
        plan = plan::ScoringPlan::Make(data, kernel, 3);
        isFailing = failure.Failed();
        ASSERT_EQ(plan == nullptr, isFailing) << "allocation " << failures;
    }
    EXPECT_GT(failures, 10u);
    for (std::int32_t machine = 0; machine < 3; ++machine) {
        double plain = 0.0;
        bench.access.ScoreByKernel({0, 1, 2}, x, machine, plain);
        EXPECT_EQ(planned[static_cast<std::size_t>(machine)], plain);
    }
}

// A small document must not lead to a plan that is larger than the memory there is.
TEST(PlanAllocation, AboveTheLargestAllocationThereIsNoPlan) {
    auto data = NewRegression();
    data->SetKernelType(SVMModelData::kRadialBasis);
    ST_SUPPORTVECTORMACHINE& machine = AddMachine(*data, 0.5);
    for (int vector = 0; vector < 17; ++vector)
        AddSupportVector(*data, machine, 1.5, {vector}, {2.5});
    const KwSVM_700::SVMKFRBF kernel(0.25);
    plan::PlanTarget target;
    target.largestPlan = ~std::size_t{0};
    target.cacheShare = ~std::size_t{0};
    EXPECT_FALSE(plan::ScoringPlan::Make(*data, kernel, std::size_t{1} << 25, target));
    EXPECT_TRUE(plan::ScoringPlan::Make(*data, kernel, std::size_t{1} << 5, target));
}

// Short of memory. The iterations end at once, without an error.

const std::vector<Values> kPairs = {{0.0, 0.625, 0.25}, {0.375, 0.0, 0.875}, {0.75, 0.125, 0.0}};

TEST(CouplingAllocation, WithoutAMatrixProbabilitiesStayEven) {
    Values p(3);
    bool isError = true;
    {
        const failing_new::FailAfter failure(0);
        isError = PairwiseCoupling().Solve(kPairs, p).IsError();
        EXPECT_TRUE(failure.Failed());
    }
    EXPECT_FALSE(isError);
    EXPECT_EQ(p, Values(3, 1.0 / 3.0));
}

TEST(CouplingAllocation, WithoutAProductTheFirstIterationStands) {
    Values p(3);
    bool isError = true;
    {
        const failing_new::FailAfter failure(1);
        isError = PairwiseCoupling().Solve(kPairs, p).IsError();
        EXPECT_TRUE(failure.Failed());
    }
    EXPECT_FALSE(isError);
    Values first;
    int asked = 0;
    PairwiseCoupling coupling;
    coupling.SetInterruption([&asked] { return ++asked > 1; });
    coupling.Solve(kPairs, first);
    EXPECT_EQ(p, first);
    EXPECT_NE(p, Values(3, 1.0 / 3.0));
}

}  // namespace
}  // namespace KwBrevix_930
