// Many threads score one model after its first case.
#include <algorithm>
#include <atomic>
#include <cmath>
#include <thread>

#include <gtest/gtest.h>

#include "host/CaseRecord.h"
#include "host/transform/TransformationDictionary.h"
#include "svm/SVMClsResult.h"
#include "tests/support/score_answers.h"
#include "tests/svm/svm_samples.h"

namespace KwBrevix_930 {
namespace {

using svm_samples::AddCategoryColumn;
using svm_samples::AddExtension;
using svm_samples::AddMachine;
using svm_samples::AddNumericColumn;
using svm_samples::AddScaledVar;
using svm_samples::AddSupportVector;
using svm_samples::Bench;
using svm_samples::NewClassification;
using test_support::Answers;
using test_support::Records;
using test_support::Results;

// Four categories, probabilities, a derived field, a category field and a radial basis kernel.
struct Busy : Bench {
    explicit Busy(bool hasDerivedField = true) : Bench({"a", "b", "c", "d"}) {
        AddVar("x");
        AddVar("color", DictVar::kString, ScoreDictVar::kCategorical).AddCategory("red");
        static_cast<DictVar&>(*dictionary.FindVar("color")).AddCategory("blue");
        if (hasDerivedField) {
            AddScaledVar(transformations, "half", "x", 0.5);
            transformations.SetUpDerivedCaseRecord();
            model.SetTransformationScoreDictionary(&transformations);
        }
        auto data = NewClassification(4);
        data->SetIsZarnModel(true);
        data->SetKernelType(SVMModelData::kRadialBasis);
        data->SetGamma(0.375);
        AddNumericColumn(*data, "x");
        AddNumericColumn(*data, hasDerivedField ? "half" : "x");
        AddCategoryColumn(*data, "color", "blue");
        double seed = 0.125;
        for (std::int32_t i = 0; i < 4; ++i) {
            for (std::int32_t j = i + 1; j < 4; ++j) {
                ST_SUPPORTVECTORMACHINE& machine = AddMachine(*data, seed - 0.5, i, j);
                for (int vector = 0; vector < 5; ++vector, seed = std::fmod(seed * 7.3125 + 0.4375, 2.0))
                    AddSupportVector(*data, machine, seed - 1.0, {0, 1, 2}, {seed, 1.5 - seed, 1.0});
                AddExtension(machine, i, j, -1.25, 0.0625);
            }
        }
        TakeData(std::move(data));
    }

    TransformationDictionary transformations;
};

void Fill(CaseRecord& record, int number) {
    record.Clear();
    record.SetNumber(record.GetIndex("x"), 0.0078125 * number - 2.0);
    if (number % 17 != 0)
        record.SetText(record.GetIndex("color"), number % 2 ? "red" : "blue");
}

// The prediction, the confidence and all probabilities, or the code of the status.
std::vector<double> Answer(SVMModel& model, const CaseRecord& record, ScoreResult*& result) {
    const auto status = model.GetScore(&record, result, false);
    if (status.IsError())
        return {static_cast<double>(status.GetErrorCode())};
    const auto& classification = static_cast<const SVMClsResult&>(*result);
    std::vector<double> answer = {result->GetPrediction()->GetString()[0] * 1.0, result->GetConfidence()};
    for (const auto& [category, probability] : classification.GetAllValuePercent())
        answer.push_back(probability);
    return answer;
}

TEST(SVMModelThreads, GiveEqualResults) {
    constexpr int kCases = 500;
    constexpr int kThreads = 8;
    Busy bench;
    std::vector<std::vector<double>> expected;
    {
        CaseRecord record(bench.dictionary);
        ScoreResult* result = nullptr;
        for (int number = 0; number < kCases; ++number) {
            Fill(record, number);
            expected.push_back(Answer(bench.model, record, result));
        }
        delete result;
    }
    EXPECT_EQ(expected[0], std::vector<double>{90029.0});
    EXPECT_EQ(expected[1].size(), 6u);
    EXPECT_NE(expected[1], expected[399]);
    std::atomic<int> differences{0};
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&, thread] {
            CaseRecord record(bench.dictionary);
            ScoreResult* result = nullptr;
            for (int i = 0; i < kCases; ++i) {
                const int number = (i + thread * 61) % kCases;
                Fill(record, number);
                if (Answer(bench.model, record, result) != expected[static_cast<std::size_t>(number)])
                    ++differences;
            }
            delete result;
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(differences, 0);
}

// Every thread has records, results and statuses of its own; some score one by one meanwhile.
TEST(SVMModelThreads, GiveEqualResultsForManyCasesInOneCall) {
    constexpr std::size_t kCases = 200;
    constexpr std::size_t kThreads = 8;
    Busy bench;
    std::vector<std::unique_ptr<CaseRecord>> owned;
    Records records;
    for (std::size_t i = 0; i < kCases; ++i) {
        Fill(*owned.emplace_back(std::make_unique<CaseRecord>(bench.dictionary)), static_cast<int>(i));
        records.push_back(owned.back().get());
    }
    Results results(kCases);
    const Answers expected = test_support::ScoreOneByOne(bench.model, records, results);
    EXPECT_EQ(expected.statuses[0], 90029);
    EXPECT_EQ(expected.statuses[1], 0);
    std::atomic<int> differences{0};
    std::vector<std::thread> threads;
    for (std::size_t thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&, thread] {
            const std::size_t first = 11 * thread;
            std::vector<ScoreResult*> made(kCases - first);
            std::vector<KwScore::KwStatus> statuses(made.size());
            for (int turn = 0; turn < 5; ++turn)
                bench.model.ScoreCases(made.size(), records.data() + first, made.data(), statuses.data(), false);
            for (std::size_t i = 0; i < made.size(); ++i) {
                differences += test_support::Describe(made[i]) == expected.results[first + i] ? 0 : 1;
                differences += statuses[i].GetErrorCode() == expected.statuses[first + i] ? 0 : 1;
                ScoreResult* alone = nullptr;
                bench.model.GetScore(records[first + i], alone, false);
                differences += test_support::Describe(alone) == expected.results[first + i] ? 0 : 1;
                delete alone;
                delete made[i];
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(differences, 0);
}

TEST(SVMModelThreads, GiveEqualPlainNumbers) {
    constexpr std::size_t kCases = 150;
    Busy bench(false);
    const CaseRecord record(bench.dictionary);
    std::vector<double> values[2];
    for (std::size_t i = 0; i < kCases; ++i) {
        values[0].push_back(0.03125 * static_cast<double>(i) - 2.0);
        values[1].push_back(static_cast<double>(i % 2));
    }
    std::vector<const double*> columns(bench.dictionary.GetVars().size());
    columns[static_cast<std::size_t>(record.GetIndex("x"))] = values[0].data();
    columns[static_cast<std::size_t>(record.GetIndex("color"))] = values[1].data();
    const auto score = [&](std::vector<double>& numbers) {
        std::vector<KwScore::KwStatus> statuses(kCases, KwScore::KwStatus(4711, true));
        numbers.assign(6 * kCases, 47.25);
        const bool isTaken =
            bench.model.ScoreNumbers(kCases, columns.data(), columns.size(), numbers.data(), statuses.data());
        return isTaken &&
               std::none_of(statuses.begin(), statuses.end(), [](const auto& each) { return each.IsError(); });
    };
    ScoreResult* first = nullptr;
    bench.model.GetScore(&record, first, false);
    delete first;
    std::vector<double> expected;
    ASSERT_TRUE(score(expected));
    EXPECT_NE(expected[1], expected[6 * kCases - 5]);
    std::atomic<int> differences{0};
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 8; ++thread) {
        threads.emplace_back([&] {
            std::vector<double> numbers;
            for (int turn = 0; turn < 10; ++turn)
                differences += score(numbers) && numbers == expected ? 0 : 1;
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(differences, 0);
}

// Older in its thread than everything that scoring keeps there, so it ends last; then it scores once more.
struct LastCase {
    ~LastCase() {
        if (bench)
            *answer = Answer(bench->model, *record, *result);
    }

    Busy* bench = nullptr;
    const CaseRecord* record = nullptr;
    ScoreResult** result = nullptr;
    std::vector<double>* answer = nullptr;
};

// What a thread keeps for scoring has ended by then; the address sanitizer watches that nothing of it is used.
TEST(SVMModelThreads, ScoreWhileTheyEnd) {
#ifdef __MINGW32__
    GTEST_SKIP() << "this compiler's runtime frees the memory of LastCase before it calls its destructor";
#endif
    // A record of derived fields that is made so late stays for good, which would be reported.
    Busy bench(false);
    CaseRecord record(bench.dictionary);
    Fill(record, 399);
    ScoreResult* result = nullptr;
    std::vector<double> first;
    std::vector<double> last;
    std::thread([&] {
        static thread_local LastCase lastCase;
        lastCase = {&bench, &record, &result, &last};
        first = Answer(bench.model, record, result);
    }).join();
    delete result;
    EXPECT_EQ(first.size(), 6u);
    EXPECT_EQ(last, first);
}

}  // namespace
}  // namespace KwBrevix_930
