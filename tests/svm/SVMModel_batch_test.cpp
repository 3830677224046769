// Many cases in one call against the same cases one by one.
#include <algorithm>
#include <cmath>
#include <random>
#include <set>
#include <stdexcept>

#include <gtest/gtest.h>

#include "host/CaseRecord.h"
#include "host/IBatchModel.h"
#include "svm/SVMRegResult.h"
#include "tests/support/SVMModelTestAccess.h"
#include "tests/support/score_answers.h"
#include "tests/support/virtual_slot.h"
#include "tests/svm/RecordThatThrows.h"
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
using svm_samples::RecordThatThrows;
using test_support::Answers;
using test_support::BitsOf;
using test_support::Describe;
using test_support::Records;
using test_support::Results;
using test_support::TraceText;

Answers OneByOne(SVMModel& model, const Records& records) {
    Results results(records.size());
    return test_support::ScoreOneByOne(model, records, results);
}

Answers Together(SVMModel& model, const Records& records) {
    Results results(records.size());
    return test_support::ScoreTogether(model, records, results);
}

void AddInputs(Bench& bench, SVMModelData& data) {
    bench.AddVar("a");
    bench.AddVar("b");
    bench.AddVar("color", DictVar::kString, ScoreDictVar::kCategorical).AddCategory("red");
    static_cast<DictVar&>(*bench.dictionary.FindVar("color")).AddCategory("blue");
    AddNumericColumn(data, "a");
    AddCategoryColumn(data, "color", "blue");
    AddNumericColumn(data, "b");
}

void AddFilledMachine(SVMModelData& data, std::int32_t i, std::int32_t j) {
    ST_SUPPORTVECTORMACHINE& machine = AddMachine(data, 0.375 * i - 0.25 * j, i, j);
    for (int vector = 0; vector < 9; ++vector)
        AddSupportVector(data, machine, vector - 4.125 + 0.375 * i, {0, 1, 2}, {0.25 * vector - i, 1.0, 0.75 * j});
    AddExtension(machine, i, j, -1.25, 0.125);
}

// Cases of which some have a missing or an invalid input.
struct Cases {
    Cases(const ScoreDictionary& dictionary, std::size_t count) {
        std::mt19937_64 engine(801);
        std::normal_distribution<double> number(0.0, 2.0);
        for (std::size_t i = 0; i < count; ++i) {
            auto& record = *owned.emplace_back(std::make_unique<CaseRecord>(dictionary));
            record.SetNumber(record.GetIndex("a"), number(engine));
            record.SetNumber(record.GetIndex("b"), number(engine));
            record.SetText(record.GetIndex("color"), i % 3 == 0 ? "red" : "blue");
            if (i % 11 == 4)
                record.SetMissing(record.GetIndex("b"));
            if (i % 13 == 5)
                record.SetText(record.GetIndex("color"), "green");
            all.push_back(&record);
        }
    }

    std::vector<std::unique_ptr<CaseRecord>> owned;
    Records all;
};

void ExpectTheSame(Bench& bench, Bench& other, std::size_t count = 200) {
    Cases cases(bench.dictionary, count);
    Cases twins(other.dictionary, count);
    if (count > 20)
        cases.all[17] = twins.all[17] = nullptr;
    // The batch meets its model's first case, so it has to set up the indices.
    const Answers together = Together(bench.model, cases.all);
    const Answers oneByOne = OneByOne(other.model, twins.all);
    EXPECT_EQ(together.results, oneByOne.results);
    EXPECT_EQ(together.statuses, oneByOne.statuses);
    EXPECT_EQ(together.trace, oneByOne.trace);
    EXPECT_EQ(SVMModelTestAccess(bench.model).AreIndicesReady(), count > 0);
}

std::unique_ptr<SVMModelData> PairsOf(Bench& bench, std::int32_t n) {
    auto data = NewClassification(n);
    AddInputs(bench, *data);
    data->SetKernelType(SVMModelData::kRadialBasis);
    data->SetGamma(0.3125);
    for (std::int32_t i = 0; i < n; ++i) {
        for (std::int32_t j = i + 1; j < n; ++j)
            AddFilledMachine(*data, i, j);
    }
    return data;
}

// change: what makes the data other than a one-against-one vote.
template <class Change>
void ExpectTheSameOfPairs(const std::vector<std::string>& categories, const Change& change) {
    Bench benches[2] = {Bench(categories), Bench(categories)};
    for (Bench& bench : benches) {
        auto data = PairsOf(bench, static_cast<std::int32_t>(categories.size()));
        change(*data);
        bench.TakeData(std::move(data));
    }
    ExpectTheSame(benches[0], benches[1]);
}

TEST(SVMModelBatch, VotesAsOneByOne) {
    ExpectTheSameOfPairs({"a", "b", "c", "d"}, [](SVMModelData&) {});
    ExpectTheSameOfPairs({"a", "b"}, [](SVMModelData&) {});
}

TEST(SVMModelBatch, CouplesAsOneByOne) {
    ExpectTheSameOfPairs({"a", "b", "c", "d"}, [](SVMModelData& data) { data.SetIsZarnModel(true); });
    ExpectTheSameOfPairs({"a", "b"}, [](SVMModelData& data) { data.SetIsZarnModel(true); });
}

TEST(SVMModelBatch, TakesTheExtremeAsOneByOne) {
    ExpectTheSameOfPairs({"a", "b", "c"}, [](SVMModelData& data) { data.SetIsOneAgainstAll(true); });
}

TEST(SVMModelBatch, WithoutAKernelEveryCaseFailsAsOneByOne) {
    ExpectTheSameOfPairs({"a", "b", "c"}, [](SVMModelData& data) { data.SetKernelType(4); });
}

TEST(SVMModelBatch, WithoutAPlanScoresAsOneByOne) {
    Bench benches[2] = {Bench({"a", "b", "c"}), Bench({"a", "b", "c"})};
    for (Bench& bench : benches) {
        bench.TakeData(PairsOf(bench, 3));
        // A machine that is not there has no plan.
        SVMModelData& data = *SVMModelTestAccess(bench.model).Data();
        data.GetMachines()[1].reset();
        bench.model.SetSupportVectorMachineModel(&data);
        ASSERT_EQ(SVMModelTestAccess(bench.model).Plan(), nullptr);
    }
    ExpectTheSame(benches[0], benches[1]);
}

TEST(SVMModelBatch, PredictsNumbersAsOneByOne) {
    Bench benches[2];
    for (Bench& bench : benches) {
        auto data = NewRegression();
        AddInputs(bench, *data);
        data->SetHasStandardDeviation(true);
        AddFilledMachine(*data, 1, 2);
        AddFilledMachine(*data, 2, 3);
        bench.TakeData(std::move(data));
    }
    ExpectTheSame(benches[0], benches[1]);
}

TEST(SVMModelBatch, OfAnyLengthScoresAsOneByOne) {
    for (const std::size_t count : {0U, 1U, 2U, 7U, 8U, 9U, 63U, 64U, 65U, 129U}) {
        Bench benches[2] = {Bench({"a", "b", "c"}), Bench({"a", "b", "c"})};
        for (Bench& bench : benches)
            bench.TakeData(PairsOf(bench, 3));
        ExpectTheSame(benches[0], benches[1], count);
    }
}

TEST(SVMModelBatch, RegressionWithoutInputsLeavesResultsUntouched) {
    Bench bench;
    auto data = NewRegression();
    AddMachine(*data, 0.375, -1, -1);
    bench.TakeData(std::move(data));
    CaseRecord record(bench.dictionary);
    const Answers answers = Together(bench.model, Records(3, &record));
    EXPECT_EQ(answers, OneByOne(bench.model, Records(3, &record)));
    EXPECT_EQ(answers.statuses, std::vector<std::int32_t>(3, 0));
}

TEST(SVMModelBatch, WithoutDataEveryCaseIsMissing) {
    Bench bench;
    CaseRecord record(bench.dictionary);
    const Answers answers = Together(bench.model, {&record, &record});
    EXPECT_EQ(answers.statuses, (std::vector<std::int32_t>{90029, 90029}));
    EXPECT_EQ(answers.trace, "KwStatus error code is :90029\nKwStatus error code is :90029\n");
}

TEST(SVMModelBatch, FillsResultsThatAreHandedIn) {
    Bench bench({"a", "b", "c"});
    bench.TakeData(PairsOf(bench, 3));
    Cases cases(bench.dictionary, 30);
    Results results(cases.all.size());
    const Answers first = test_support::ScoreTogether(bench.model, cases.all, results);
    std::vector<const ScoreResult*> made;
    for (const auto& result : results)
        made.push_back(result.get());
    std::vector<ScoreResult*> handed;
    for (const auto& result : results)
        handed.push_back(result.get());
    std::vector<KwScore::KwStatus> statuses(cases.all.size());
    bench.model.ScoreCases(cases.all.size(), cases.all.data(), handed.data(), statuses.data(), false);
    for (std::size_t i = 0; i < made.size(); ++i) {
        EXPECT_EQ(handed[i], made[i]);
        EXPECT_EQ(Describe(handed[i]), first.results[i]);
    }
}

// Its value comes from a score of the same model, as that of a field that another case fills would.
class RecordThatScores : public CaseRecord {
public:
    RecordThatScores(SVMModel& model, const ScoreDictionary& dictionary, const Cases& others, bool inBatch)
        : CaseRecord(dictionary), fModel(model), fOthers(others.all), fInBatch(inBatch) {}

    const ScoreValue* GetValue(int index) const override {
        answers.push_back(fInBatch ? Together(fModel, fOthers) : OneByOne(fModel, fOthers));
        return CaseRecord::GetValue(index);
    }
    using CaseRecord::GetValue;

    mutable std::vector<Answers> answers;

private:
    SVMModel& fModel;
    Records fOthers;
    bool fInBatch;
};

void CopyCase(std::size_t i, CaseRecord& record) {
    record.SetNumber(record.GetIndex("a"), 0.375 * static_cast<double>(i) - 2.0);
    record.SetNumber(record.GetIndex("b"), 1.625);
    record.SetText(record.GetIndex("color"), "blue");
}

// While a record is read, the thread's workspace is in use.
TEST(SVMModelBatch, ARecordMayScoreTheSameModel) {
    Bench bench({"a", "b", "c"});
    auto data = PairsOf(bench, 3);
    data->SetIsZarnModel(true);
    bench.TakeData(std::move(data));
    const Cases inner(bench.dictionary, 9);
    const Answers ofInner = OneByOne(bench.model, inner.all);
    std::vector<std::unique_ptr<CaseRecord>> plain;
    for (const bool outerInBatch : {false, true}) {
        for (const bool innerInBatch : {false, true}) {
            std::vector<std::unique_ptr<RecordThatScores>> scorers;
            Records outer;
            Records twins;
            for (std::size_t i = 0; i < 12; ++i) {
                outer.push_back(scorers
                                    .emplace_back(std::make_unique<RecordThatScores>(bench.model, bench.dictionary,
                                                                                     inner, innerInBatch))
                                    .get());
                CopyCase(i, *scorers.back());
                CopyCase(i, *plain.emplace_back(std::make_unique<CaseRecord>(bench.dictionary)));
                twins.push_back(plain.back().get());
            }
            const Answers answers = outerInBatch ? Together(bench.model, outer) : OneByOne(bench.model, outer);
            EXPECT_EQ(answers, OneByOne(bench.model, twins));
            for (const auto& scorer : scorers) {
                EXPECT_FALSE(scorer->answers.empty());
                for (const Answers& one : scorer->answers) {
                    EXPECT_EQ(one.results, ofInner.results);
                    EXPECT_EQ(one.statuses, ofInner.statuses);
                }
            }
        }
    }
}

// The cases before are scored and traced, whether they share a group with the one that throws or not; its own and
// those behind it are not.
TEST(SVMModelBatch, ExceptionOfARecordLeavesOutOnlyWhatComesBehind) {
    for (const std::size_t place : {std::size_t{0}, std::size_t{12}, std::size_t{70}}) {
        Bench benches[2] = {Bench({"a", "b", "c"}), Bench({"a", "b", "c"})};
        for (Bench& bench : benches)
            bench.TakeData(PairsOf(bench, 3));
        Cases cases(benches[0].dictionary, 80);
        const RecordThatThrows thrower(benches[0].dictionary);
        cases.all[place] = &thrower;
        std::vector<ScoreResult*> made(cases.all.size());
        std::vector<KwScore::KwStatus> statuses(cases.all.size());
        std::string text;
        {
            const TraceText trace;
            EXPECT_THROW(benches[0].model.ScoreCases(80, cases.all.data(), made.data(), statuses.data(), false),
                         std::runtime_error);
            text = trace.Take();
        }
        for (std::size_t i = place; i < 80; ++i)
            EXPECT_EQ(statuses[i].GetErrorCode(), 90029) << i;
        Results results;
        for (ScoreResult* result : made)
            results.emplace_back(result);
        results.resize(place);
        statuses.resize(place);
        Cases twins(benches[1].dictionary, 80);
        twins.all.resize(place);
        EXPECT_EQ(test_support::Summarise(results, statuses, text), OneByOne(benches[1].model, twins.all)) << place;
    }
}

// Plain values as columns: what records of them give.

const auto kNoChange = [](SVMModelData&) {};

// A model of pairs of categories, or a regression where there are none, and cases for it.
struct PlainBench {
    // change: what makes the data other than a vote of pairs by comparison with 0.
    template <class Change>
    PlainBench(const std::vector<std::string>& categories, std::size_t cases, const Change& change)
        : bench(categories), cells(cases), numbers(3) {
        const auto categoryCount = static_cast<std::int32_t>(categories.size());
        auto data = categories.empty() ? NewRegression() : NewClassification(categoryCount);
        bench.AddVar("a");
        bench.AddVar("color", DictVar::kString, ScoreDictVar::kCategorical).AddCategory("red");
        bench.AddVar("b");
        AddNumericColumn(*data, "b");
        AddCategoryColumn(*data, "color", "green");
        AddCategoryColumn(*data, "color", "red");
        AddNumericColumn(*data, "a");
        data->SetKernelType(SVMModelData::kRadialBasis);
        data->SetGamma(0.1875);
        for (std::int32_t i = 0; i < std::max(categoryCount, 2); ++i) {
            for (std::int32_t j = i + 1; j < std::max(categoryCount, 2); ++j)
                FillMachine(*data, AddMachine(*data, 0.125 * i - 0.0625 * j, j, i), i, j);
        }
        change(*data);
        bench.TakeData(std::move(data));
        std::mt19937_64 engine(83);
        std::normal_distribution<double> number(0.0, 2.0);
        for (std::size_t i = 0; i < cases; ++i) {
            const bool isRed = engine() % 2 == 0;
            cells[i] = std::make_unique<CaseRecord>(bench.dictionary);
            numbers[0].push_back(number(engine));
            numbers[1].push_back(isRed ? 0.0 : 1.0);
            numbers[2].push_back(number(engine));
            cells[i]->SetNumber(cells[i]->GetIndex("a"), numbers[0].back());
            cells[i]->SetText(cells[i]->GetIndex("color"), isRed ? "red" : "green");
            cells[i]->SetNumber(cells[i]->GetIndex("b"), numbers[2].back());
            records.push_back(cells[i].get());
        }
    }

    static void FillMachine(SVMModelData& data, ST_SUPPORTVECTORMACHINE& machine, int i, int j) {
        for (int v = 0; v < 11; ++v)
            AddSupportVector(data, machine, 0.75 - 1.625 * (v % 2) + 0.0625 * i, {0, 1, 2, 3},
                             {0.5 * v - 2.0 * i, 1.0 * (v % 2), 1.0 - v % 2, 0.75 * j - 0.25 * v});
        AddExtension(machine, i, j, -1.25, 0.125);
        machine.extension->standardDeviation = 0.4375;
    }

    // At the places of the records.
    std::vector<const double*> GetColumns() const {
        std::vector<const double*> columns(bench.dictionary.GetVars().size());
        const char* const names[] = {"a", "color", "b"};
        for (std::size_t i = 0; i < 3; ++i)
            columns[static_cast<std::size_t>(cells.front()->GetIndex(names[i]))] = numbers[i].data();
        return columns;
    }

    Bench bench;
    std::vector<std::unique_ptr<CaseRecord>> cells;
    Records records;
    std::vector<std::vector<double>> numbers;
};

using Numbers = std::vector<std::uint64_t>;

// The bits of what ScoreNumbers is to give in place of a result.
Numbers NumbersOf(const ScoreResult& result, const Bench& bench) {
    if (result.GetScoreResultType() == ScoreResult::kSVMRegression) {
        const auto& number = static_cast<const SVMRegResult&>(result);
        double lower = 0.0;
        double upper = 0.0;
        number.GetCI(lower, upper);
        return {BitsOf(number.GetPrediction()->GetDouble()), BitsOf(number.GetStdDev()), BitsOf(lower), BitsOf(upper)};
    }
    const auto& categories = bench.model.GetTargetCategories();
    const auto predicted = std::find(categories.begin(), categories.end(), result.GetPrediction());
    const auto& percents = static_cast<const ScoreClsResult&>(result).GetAllValuePercent();
    Numbers numbers = {BitsOf(static_cast<double>(predicted - categories.begin())), BitsOf(result.GetConfidence())};
    for (const auto& [value, percent] : percents)
        numbers.push_back(BitsOf(percent));
    numbers.resize(2 + categories.size(), BitsOf(0.0));
    return numbers;
}

// How many of the cases succeed, and of how many kinds their results are.
struct Spread {
    std::size_t succeeded = 0;
    std::set<Numbers> results = {};
};

// Compares ScoreNumbers with GetScore, results, statuses and trace lines.
Spread CompareNumbers(PlainBench& plain) {
    Bench& bench = plain.bench;
    // "green" is no declared category: as it stands, it is valid, and the look-up knows it behind the others.
    dynamic_cast<DictVar&>(*bench.dictionary.FindVar("color")).SetInvalidTreatment(DictVar::kAsIs, nullptr);
    const std::size_t count = plain.records.size();
    Results results(count);
    const Answers expected = test_support::ScoreOneByOne(bench.model, plain.records, results);
    const std::size_t width =
        bench.model.GetModelType() == ScoreModel::kSVMRegression ? 4 : 2 + bench.model.GetTargetCategories().size();
    constexpr double kGuard = 47.25;
    std::vector<double> numbers(count * width + 1, kGuard);
    std::vector<KwScore::KwStatus> statuses(count);
    const auto columns = plain.GetColumns();
    const TraceText trace;
    EXPECT_TRUE(bench.model.ScoreNumbers(count, columns.data(), columns.size(), numbers.data(), statuses.data()));
    EXPECT_EQ(trace.Take(), expected.trace);
    EXPECT_EQ(numbers.back(), kGuard);
    Spread spread;
    for (std::size_t i = 0; i < count; ++i) {
        EXPECT_EQ(statuses[i].GetErrorCode(), expected.statuses[i]) << i;
        if (statuses[i].IsError())
            continue;
        ++spread.succeeded;
        Numbers bits;
        for (std::size_t k = 0; k < width; ++k)
            bits.push_back(BitsOf(numbers[i * width + k]));
        EXPECT_EQ(bits, NumbersOf(*results[i], bench)) << i << " of " << count;
        spread.results.insert(bits);
    }
    return spread;
}

TEST(SVMModelBatch, PlainNumbersGiveTheResultsOfTheirRecords) {
    for (const std::size_t count : {1u, 3u, 4u, 8u, 63u, 64u, 65u, 131u}) {
        PlainBench plain({"no", "yes", "maybe"}, count, kNoChange);
        EXPECT_EQ(CompareNumbers(plain).succeeded, count);
    }
}

TEST(SVMModelBatch, PlainNumbersOfVotesAreThoseOfResults) {
    const std::vector<std::string> names = {"a", "b", "c", "d", "e"};
    for (const std::size_t categories : {2u, 3u, 4u, 5u}) {
        for (const bool isMaxWins : {false, true}) {
            for (const double threshold : {0.0, -0.375, svm_samples::kInfinity, svm_samples::kNaN}) {
                SCOPED_TRACE(testing::Message() << categories << ' ' << isMaxWins << ' ' << threshold);
                PlainBench plain({names.begin(), names.begin() + static_cast<std::ptrdiff_t>(categories)}, 300,
                                 [=](SVMModelData& data) {
                                     data.SetIsMaxWins(isMaxWins);
                                     data.GetMachines().front()->threshold = threshold;
                                 });
                const Spread spread = CompareNumbers(plain);
                EXPECT_EQ(spread.succeeded, 300u);
                EXPECT_GE(spread.results.size() + (std::isfinite(threshold) ? 0 : 1), categories);
            }
        }
    }
}

TEST(SVMModelBatch, PlainNumbersOfADecisionAtTheThresholdAreThoseOfItsResult) {
    for (const double decision : {0.25, svm_samples::kNaN, svm_samples::kInfinity, -svm_samples::kInfinity}) {
        for (const bool isMaxWins : {false, true}) {
            PlainBench plain({"no", "yes"}, 9, [=](SVMModelData& data) {
                ST_SUPPORTVECTORMACHINE& machine = *data.GetMachines().front();
                machine.coefficients.assign(machine.coefficients.size(), 0.0);
                machine.bias = decision;
                machine.threshold = 0.25;
                data.SetIsMaxWins(isMaxWins);
            });
            EXPECT_EQ(CompareNumbers(plain).succeeded, 9u);
        }
    }
}

TEST(SVMModelBatch, PlainNumbersOfOtherMethodsAreThoseOfResults) {
    const auto couple = [](SVMModelData& data) { data.SetIsZarnModel(true); };
    PlainBench coupled({"a", "b", "c"}, 150, couple);
    EXPECT_EQ(CompareNumbers(coupled).results.size(), 150u);
    PlainBench sigmoid({"a", "b"}, 150, couple);
    EXPECT_EQ(CompareNumbers(sigmoid).results.size(), 150u);
    PlainBench extreme({"a", "b", "c"}, 150, [](SVMModelData& data) { data.SetIsOneAgainstAll(true); });
    EXPECT_EQ(CompareNumbers(extreme).succeeded, 150u);
    PlainBench lacking({"a", "b", "c", "d"}, 150, [](SVMModelData& data) { data.GetMachines().pop_back(); });
    EXPECT_EQ(CompareNumbers(lacking).succeeded, 0u) << "no vote, no category";
    PlainBench unknown({"a", "b"}, 150, [](SVMModelData& data) { data.GetMachines()[0]->targetCategoryIndex = 2; });
    const std::size_t known = CompareNumbers(unknown).succeeded;
    EXPECT_GT(known, 0u);
    EXPECT_LT(known, 150u);
}

TEST(SVMModelBatch, PlainNumbersOfARegressionHaveDeviationAndInterval) {
    for (const bool hasDeviation : {false, true}) {
        PlainBench plain({}, 150, [=](SVMModelData& data) { data.SetHasStandardDeviation(hasDeviation); });
        EXPECT_EQ(CompareNumbers(plain).results.size(), 150u);
    }
    PlainBench without({}, 20, [](SVMModelData& data) { data.GetMachines().front()->extension.reset(); });
    EXPECT_EQ(CompareNumbers(without).succeeded, 20u);
}

TEST(SVMModelBatch, PlainNumbersOfThePredictionAloneHaveNothingElse) {
    PlainBench votes({"a", "b", "c"}, 50, kNoChange);
    CompareNumbers(votes);
    for (const bool predictsOnly : {true, false}) {
        votes.bench.model.SetPredictionOnly(predictsOnly);
        for (const Numbers& numbers : CompareNumbers(votes).results)
            EXPECT_EQ(numbers[1] == BitsOf(-1.0), predictsOnly);
    }
    PlainBench number({}, 50, kNoChange);
    number.bench.model.SetPredictionOnly(true);
    for (const Numbers& numbers : CompareNumbers(number).results)
        EXPECT_EQ(numbers[1], BitsOf(-1.0));
}

TEST(SVMModelBatch, PlainNumbersFollowDataThatIsHandedOverAgain) {
    PlainBench plain({"a", "b", "c"}, 100, kNoChange);
    CompareNumbers(plain);
    SVMModelData& data = *plain.bench.access.Data();
    for (const auto& machine : data.GetMachines())
        machine->threshold = 0.8125;
    data.GetMachines().front()->targetCategoryIndex = 2;
    plain.bench.model.SetSupportVectorMachineModel(&data);
    EXPECT_EQ(CompareNumbers(plain).succeeded, 100u);
}

TEST(SVMModelBatch, PlainNumbersAreRefusedWhereTheModelNeedsMore) {
    PlainBench plain({"no", "yes", "maybe"}, 5, kNoChange);
    auto columns = plain.GetColumns();
    const auto isTaken = [&](std::size_t count, std::size_t columnCount, double* numbers) {
        std::vector<KwScore::KwStatus> statuses(count);
        return plain.bench.model.ScoreNumbers(count, columns.data(), columnCount, numbers, statuses.data());
    };
    EXPECT_FALSE(isTaken(0, columns.size(), nullptr)) << "no indices yet";
    OneByOne(plain.bench.model, plain.records);
    EXPECT_TRUE(isTaken(0, columns.size(), nullptr));
    std::vector<double> numbers(25, 47.25);
    EXPECT_FALSE(isTaken(5, columns.size() - 1, numbers.data()));
    columns[static_cast<std::size_t>(plain.cells.front()->GetIndex("color"))] = nullptr;
    EXPECT_FALSE(isTaken(5, columns.size(), numbers.data()));
    EXPECT_EQ(numbers, std::vector<double>(25, 47.25));
    columns = plain.GetColumns();
    plain.bench.target->AddCategory("perhaps");
    EXPECT_FALSE(isTaken(0, columns.size(), nullptr)) << "the model does not know the last category";
    plain.bench.model.SetTargetCategories();
    EXPECT_TRUE(isTaken(0, columns.size(), nullptr));
    plain.bench.access.SetUpKernel(plain.bench.access.Data());
    EXPECT_FALSE(isTaken(0, columns.size(), nullptr)) << "no plan";
}

TEST(SVMModelBatch, InterfaceHasTwoSlotsBehindItsDestructor) {
    EXPECT_EQ(VirtualSlot(&IBatchModel::ScoreCases), 1);
    EXPECT_EQ(VirtualSlot(&IBatchModel::ScoreNumbers), 2);
}

}  // namespace
}  // namespace KwBrevix_930
