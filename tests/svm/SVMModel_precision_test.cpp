// Scores do not depend on the precision that the calling thread's x87 unit is set to, and leave it as it was.
#include <algorithm>
#include <cstdint>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <vector>

#include <gtest/gtest.h>

#include "host/CaseRecord.h"
#include "tests/support/control_word.h"
#include "tests/support/score_answers.h"
#include "tests/svm/RecordThatThrows.h"
#include "tests/svm/svm_samples.h"

namespace KwBrevix_930 {
namespace {

using svm_samples::AddExtension;
using svm_samples::AddMachine;
using svm_samples::AddNumericColumn;
using svm_samples::AddSupportVector;
using svm_samples::Bench;
using svm_samples::NewClassification;
using svm_samples::NewRegression;
using svm_samples::RecordThatThrows;
using test_support::Answers;
using ::test_support::controlWord;
using test_support::Results;
using ::test_support::UnderControlWord;

constexpr std::size_t kSmoothCases = 300;

void AddColumns(Bench& bench, SVMModelData& data) {
    for (const char* name : {"u", "v"}) {
        bench.AddVar(name);
        AddNumericColumn(data, name);
    }
}

void AddVectors(SVMModelData& data, ST_SUPPORTVECTORMACHINE& machine, double seed) {
    for (int i = 0; i < 7; ++i, seed += 0.40625)
        AddSupportVector(data, machine, i % 2 ? -0.75 * seed : seed, {0, 1}, {seed, 2.75 - seed});
}

// Probabilities go through exp.
std::unique_ptr<Bench> RadialBasis() {
    auto bench = std::make_unique<Bench>(std::vector<std::string>{"a", "b", "c"});
    auto data = NewClassification(3);
    data->SetIsZarnModel(true);
    data->SetKernelType(SVMModelData::kRadialBasis);
    data->SetGamma(0.375);
    AddColumns(*bench, *data);
    for (const auto& [first, second] : {std::pair{0, 1}, {0, 2}, {1, 2}}) {
        auto& machine = AddMachine(*data, 0.125 * second, first, second);
        AddVectors(*data, machine, 0.3 + 0.21 * first);
        AddExtension(machine, first, second, -1.25, 0.0625);
    }
    bench->TakeData(std::move(data));
    return bench;
}

std::unique_ptr<Bench> Polynomial(double degree) {
    auto bench = std::make_unique<Bench>();
    auto data = NewRegression();
    data->SetKernelType(SVMModelData::kPolynomial);
    data->SetGamma(0.4375);
    data->SetCoef0(1.0);
    data->SetDegree(degree);
    AddColumns(*bench, *data);
    AddVectors(*data, AddMachine(*data, -2.5), 0.3);
    bench->TakeData(std::move(data));
    return bench;
}

// The cases of a model as records and as columns.
struct SmoothCases {
    explicit SmoothCases(const Bench& bench) {
        for (std::size_t i = 0; i < kSmoothCases; ++i) {
            records.push_back(std::make_unique<CaseRecord>(bench.dictionary));
            for (const char* name : {"u", "v"}) {
                const double number = 0.0137 * static_cast<double>(i + 3) + (*name == 'v' ? 0.71 : 0.0);
                const int index = records.back()->GetIndex(name);
                records.back()->SetNumber(index, number);
                numbers.resize(std::max(numbers.size(), static_cast<std::size_t>(index) + 1));
                numbers[static_cast<std::size_t>(index)].push_back(number);
            }
            all.push_back(records.back().get());
        }
        for (const auto& column : numbers)
            columns.push_back(column.empty() ? nullptr : column.data());
    }

    std::vector<std::unique_ptr<CaseRecord>> records;
    std::vector<std::vector<double>> numbers;
    test_support::Records all;
    std::vector<const double*> columns;
};

// The bits of all numbers; a case has up to five.
std::vector<std::uint64_t> ScoreNumbers(SVMModel& model, const SmoothCases& cases) {
    std::vector<double> numbers(kSmoothCases * 5);
    std::vector<KwScore::KwStatus> statuses(kSmoothCases);
    EXPECT_TRUE(
        model.ScoreNumbers(kSmoothCases, cases.columns.data(), cases.columns.size(), numbers.data(), statuses.data()));
    std::vector<std::uint64_t> bits;
    std::transform(numbers.begin(), numbers.end(), std::back_inserter(bits), test_support::BitsOf);
    return bits;
}

struct AllWays {
    Answers alone;
    Answers together;
    std::vector<std::uint64_t> numbers;

    bool operator==(const AllWays&) const = default;
};

AllWays ScoreAllWays(Bench& bench, const SmoothCases& cases) {
    Results alone(kSmoothCases);
    Results together(kSmoothCases);
    return {test_support::ScoreOneByOne(bench.model, cases.all, alone),
            test_support::ScoreTogether(bench.model, cases.all, together), ScoreNumbers(bench.model, cases)};
}

TEST(SVMModelPrecision, IsNotThatOfTheThread) {
    for (const auto& bench : {RadialBasis(), Polynomial(3.0), Polynomial(2.375)}) {
        const SmoothCases cases(*bench);
        AllWays answers[2];
        for (const auto word : {::test_support::kDoublePrecision, ::test_support::kExtendedPrecision}) {
            const UnderControlWord control(word);
            answers[word == ::test_support::kExtendedPrecision] = ScoreAllWays(*bench, cases);
            EXPECT_EQ(controlWord(), word);
        }
        EXPECT_TRUE(answers[0] == answers[1]);
        EXPECT_NE(answers[0].alone.results.front(), answers[0].alone.results.back());
        EXPECT_EQ(answers[0].alone.statuses, std::vector<std::int32_t>(kSmoothCases, 0));
    }
}

TEST(SVMModelPrecision, IsPutBackAfterAnException) {
    const auto bench = Polynomial(3.0);
    const RecordThatThrows record(bench->dictionary);
    const ScoreCaseRecord* records[] = {&record};
    const UnderControlWord control(::test_support::kDoublePrecision);
    ScoreResult* result = nullptr;
    EXPECT_THROW(bench->model.GetScore(&record, result, false), std::runtime_error);
    EXPECT_EQ(controlWord(), ::test_support::kDoublePrecision);
    KwScore::KwStatus status;
    EXPECT_THROW(bench->model.ScoreCases(1, records, &result, &status, false), std::runtime_error);
    EXPECT_EQ(controlWord(), ::test_support::kDoublePrecision);
    delete result;
}

}  // namespace
}  // namespace KwBrevix_930
