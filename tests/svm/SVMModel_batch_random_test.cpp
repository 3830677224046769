// Random models of every kind and random cases: many in one call, one by one, and by the plain loops with memory of
// their own, all with the same bits.
#include <array>

#include <gtest/gtest.h>

#include "host/CaseRecord.h"
#include "svm/SVMClsResult.h"
#include "svm/SVMRegResult.h"
#include "tests/support/SVMModelTestAccess.h"
#include "tests/support/score_answers.h"
#include "tests/svm/plan/random_models.h"
#include "tests/svm/svm_samples.h"

namespace KwBrevix_930 {
namespace {

using random_models::Generator;
using random_models::Indices;
using random_models::Values;
using svm_samples::AddCategoryColumn;
using svm_samples::AddNumericColumn;
using svm_samples::Bench;
using test_support::Answers;
using test_support::Describe;
using test_support::Records;
using test_support::Results;

enum class Votes { kPairs, kExtreme, kCoupling };

// What keeps a model from having a plan, or its cases from being scored.
enum class Fault { kNone, kMachine, kVector, kVectorCount, kValueCount, kIndexCount, kField, kKernel, kColumns };

struct Choice {
    explicit Choice(Generator& random)
        : isRegression(random.IsTrue(0.25)),
          isTargetText(random.IsTrue(0.6)),
          categories(2 + static_cast<int>(random.UpTo(4))),
          votes(static_cast<Votes>(random.UpTo(2))),
          fault(random.IsTrue(0.75) ? Fault::kNone : static_cast<Fault>(random.UpTo(8))),
          policy(static_cast<ScoreModel::MVPolicy>(random.UpTo(3))),
          predictsOnly(random.IsTrue(0.2)),
          replaces(random.IsTrue(0.5)),
          derives(random.IsTrue(0.5)),
          sharesCategory(random.IsTrue(0.5)),
          byName(random.IsTrue(0.3)),
          seed(random.UpTo(~std::size_t{0})) {}

    bool isRegression;
    bool isTargetText;
    int categories;
    Votes votes;
    Fault fault;
    ScoreModel::MVPolicy policy;
    bool predictsOnly;
    bool replaces;
    bool derives;
    bool sharesCategory;
    bool byName;
    std::uint64_t seed;
};

// One of several equal models of one choice.
struct Model : Bench {
    explicit Model(const Choice& choice) : Bench(ListCategories(choice)), random(choice.seed) {
        if (!choice.isRegression && !choice.isTargetText)
            MakeTargetNumeric(choice);
        AddInputs(choice);
        auto data =
            choice.isRegression ? svm_samples::NewRegression() : svm_samples::NewClassification(choice.categories);
        AddColumns(choice, *data);
        AddMachines(choice, *data);
        model.SetMissingValuePolicy(choice.policy);
        model.SetPredictionOnly(choice.predictsOnly);
        TakeData(std::move(data));
    }

    static std::vector<std::string> ListCategories(const Choice& choice) {
        std::vector<std::string> names;
        for (int c = 0; choice.isTargetText && c < choice.categories; ++c)
            names.push_back("category " + std::to_string(c));
        return names;
    }

    void MakeTargetNumeric(const Choice& choice) {
        target->SetKind(ScoreDictVar::kCategorical);
        for (int c = 0; c < choice.categories; ++c)
            target->AddCategory(std::to_string(c) + ".5");
        model.SetTargetCategories();
    }

    void AddInputs(const Choice& choice) {
        AddVar("a");
        DictVar& b = AddVar("b");
        if (choice.replaces)
            b.GetVarStats()->SetMissingReplacement(std::make_unique<NumericValue>(0.625));
        DictVar& color = AddVar("color", DictVar::kString, ScoreDictVar::kCategorical);
        for (const char* name : {"red", "blue", "green"})
            color.AddCategory(name);
        if (!choice.derives)
            return;
        svm_samples::AddScaledVar(transformations, "half", "a", 0.5);
        svm_samples::AddScaledVar(transformations, "thrice", "b", 3.0);
        transformations.SetUpDerivedCaseRecord();
        model.SetTransformationScoreDictionary(&transformations);
    }

    void AddColumns(const Choice& choice, SVMModelData& data) {
        if (choice.fault == Fault::kColumns)
            return;
        AddNumericColumn(data, "a");
        // No case has the last one.
        for (const char* category : {"red", "blue", "violet"}) {
            if (choice.sharesCategory || random.IsTrue(0.2))
                AddCategoryColumn(data, "color", category);
        }
        AddNumericColumn(data, "b");
        if (choice.derives) {
            AddNumericColumn(data, "half");
            AddNumericColumn(data, "thrice");
        }
        if (choice.fault == Fault::kField)
            AddNumericColumn(data, "nowhere");
    }

    void AddMachines(const Choice& choice, SVMModelData& data) {
        const bool isExtreme = !choice.isRegression && choice.votes == Votes::kExtreme;
        data.SetKernelType(choice.fault == Fault::kKernel ? 4 : static_cast<std::int32_t>(random.UpTo(3)));
        data.SetGamma(random.Real(0.05, 0.5));
        data.SetCoef0(random.Real(-1.0, 1.0));
        data.SetDegree(random.IsTrue(0.2) ? 2.5 : static_cast<double>(random.UpTo(5)));
        data.SetIsZarnModel(!choice.isRegression && choice.votes == Votes::kCoupling);
        data.SetIsOneAgainstAll(isExtreme);
        data.SetIsMaxWins(random.IsTrue(0.5));
        data.SetHasStandardDeviation(random.IsTrue(0.5));
        const std::size_t vectors = random.UpTo(random.IsTrue(0.3) ? 40 : 9);
        for (int i = 0; i < choice.categories; ++i) {
            if (isExtreme)
                AddMachine(data, vectors, i, -1);
            for (int j = i + 1; j < choice.categories && !isExtreme; ++j)
                AddMachine(data, vectors, i, j);
        }
        if (random.IsTrue(0.05))
            data.GetMachines().pop_back();
        Damage(choice.fault, data);
    }

    void AddMachine(SVMModelData& data, std::size_t vectors, std::int32_t i, std::int32_t j) {
        auto& machine = svm_samples::AddMachine(data, random.Real(-1.0, 1.0), i, j);
        machine.threshold = random.IsTrue(0.5) ? 0.0 : random.Real(-0.5, 0.5);
        const std::size_t columns = data.GetVectorFields().size();
        for (std::size_t v = 0; v < vectors; ++v) {
            Indices indices;
            Values values;
            for (std::size_t p = 0; p < columns; ++p) {
                if (!random.IsTrue(0.8))
                    continue;
                indices.push_back(static_cast<std::int32_t>(p + (random.IsTrue(0.05) ? 2 : 0)));
                values.push_back(random.IsTrue(0.3) ? 1.0 : random.Real(-2.0, 2.0));
            }
            if (indices.empty()) {
                indices = {0};
                values = {1.0};
            }
            svm_samples::AddSupportVector(data, machine, random.Real(-1.5, 1.5), indices, values);
        }
        if (random.IsTrue(0.9)) {
            svm_samples::AddExtension(machine, i, j, random.Real(-2.0, -0.5), random.Real(-0.5, 0.5));
            machine.extension->standardDeviation = random.Real(0.1, 2.0);
        }
    }

    static void Damage(Fault fault, SVMModelData& data) {
        if (data.GetMachines().empty())
            return;
        auto& machine = data.GetMachines().back();
        if (fault == Fault::kMachine)
            machine.reset();
        else if (machine->supportVectors.empty())
            return;
        else if (fault == Fault::kVector)
            machine->supportVectors.back() = nullptr;
        else if (fault == Fault::kVectorCount)
            machine->supportVectors.pop_back();
        else if (fault == Fault::kValueCount)
            machine->supportVectors.back()->values.pop_back();
        else if (fault == Fault::kIndexCount)
            machine->supportVectors.back()->indices.pop_back();
    }

    Generator random;
    TransformationDictionary transformations;
};

// The records of one model; equal models get equal ones.
struct RandomCases {
    RandomCases(const Model& model, const Choice& choice, std::size_t count, std::uint64_t seed) {
        Generator random(seed);
        for (std::size_t i = 0; i < count; ++i) {
            const bool isByName = choice.byName && random.IsTrue(0.5);
            auto& record = *owned.emplace_back(
                std::make_unique<CaseRecord>(model.dictionary, isByName ? CaseRecord::kByName : CaseRecord::kByIndex));
            Fill(record, random);
            all.push_back(random.IsTrue(0.03) ? nullptr : &record);
        }
    }

    static void Fill(CaseRecord& record, Generator& random) {
        for (const char* name : {"a", "b"}) {
            const int index = record.GetIndex(name);
            if (random.IsTrue(0.05))
                record.SetMissing(index);
            else if (random.IsTrue(0.02))
                record.SetText(index, "junk");
            else
                record.SetNumber(index, random.IsTrue(0.06) ? random.Odd() : random.Real(-2.0, 2.0));
        }
        const char* colors[] = {"red", "blue", "green", "violet", "pink"};
        if (!random.IsTrue(0.03))
            record.SetText(record.GetIndex("color"), colors[random.UpTo(random.IsTrue(0.1) ? 4 : 2)]);
    }

    std::vector<std::unique_ptr<CaseRecord>> owned;
    Records all;
};

// Some results that were there before, of either kind.
Results HandIn(const Model& model, std::size_t count, std::uint64_t seed) {
    Generator random(seed);
    Results results(count);
    for (auto& result : results) {
        if (random.IsTrue(0.05))
            result = std::make_unique<SVMClsResult>(model.target);
        else if (random.IsTrue(0.05))
            result = std::make_unique<SVMRegResult>(model.target);
    }
    return results;
}

// A new result of one case by the plain loops, the vote in memory of its own; empty for a case that fails.
std::string DescribePlain(Model& model, const ScoreCaseRecord* record) {
    const SVMModelData& data = *model.access.Data();
    std::unique_ptr<ScoreResult> made;
    if (data.GetIsClassification())
        made = std::make_unique<SVMClsResult>(model.target);
    else
        made = std::make_unique<SVMRegResult>(model.target);
    ScoreResult* result = made.get();
    Indices indices;
    Values values;
    bool isComplete = false;
    if (!record || model.access.FillCaseRecord(result, record, isComplete, indices, values).IsError())
        return {};
    if (!data.GetIsClassification() && indices.empty())
        return Describe(result);
    Values decisions(data.GetIsClassification() ? data.GetMachines().size() : 1);
    for (std::size_t m = 0; m < decisions.size(); ++m) {
        if (model.access.ScoreByKernel(indices, values, static_cast<std::int32_t>(m), decisions[m]).IsError())
            return {};
    }
    SVMModelTestAccess::Vote vote;
    const bool isFilled = data.GetIsClassification() ? !model.access.DoVoting(decisions, vote).IsError() &&
                                                           !model.access.FillCls(vote, result).IsError()
                                                     : !model.access.FillReg(decisions[0], result).IsError();
    return isFilled ? Describe(result) : std::string();
}

// What was compared.
struct Tally {
    std::size_t cases = 0;
    std::size_t succeeded = 0;
    std::size_t invalid = 0;
    std::size_t missing = 0;
    std::size_t planned = 0;
    // Against the plain loops with a vote of their own, by the kind of vote.
    std::array<std::size_t, 3> voted{};
    std::size_t regressed = 0;

    void Count(const std::vector<std::int32_t>& statuses) {
        for (const std::int32_t status : statuses) {
            ++cases;
            succeeded += status == 0 ? 1 : 0;
            invalid += status == 90027 ? 1 : 0;
            missing += status == 90029 ? 1 : 0;
        }
    }
};

void ComparePlain(Model& model, const Choice& choice, const Records& records, const Results& handedIn,
                  const Answers& answers, Tally& tally) {
    for (std::size_t i = 0; i < records.size(); ++i) {
        if (handedIn[i])
            continue;
        const std::string plain = DescribePlain(model, records[i]);
        ASSERT_EQ(plain.empty(), answers.statuses[i] != 0) << "case " << i << ": " << answers.statuses[i];
        if (plain.empty())
            continue;
        ASSERT_EQ(plain, answers.results[i]) << "case " << i;
        ++(choice.isRegression ? tally.regressed : tally.voted[static_cast<std::size_t>(choice.votes)]);
    }
}

void CompareModels(const Choice& choice, Generator& random, Tally& tally) {
    Model batch(choice);
    Model single(choice);
    Model plain(choice);
    plain.access.SetUpKernel(plain.access.Data());
    ASSERT_FALSE(plain.access.Plan());
    tally.planned += batch.access.Plan() ? 1 : 0;
    if (choice.fault == Fault::kKernel || choice.fault == Fault::kColumns) {
        ASSERT_FALSE(batch.access.Plan());
    }
    constexpr std::size_t kCounts[] = {0, 1, 7, 8, 9, 63, 64, 65, 200};
    const std::size_t count = kCounts[random.UpTo(std::size(kCounts) - 1)];
    const std::uint64_t seed = random.UpTo(1 << 30);
    Results results[] = {HandIn(batch, count, seed), HandIn(single, count, seed), HandIn(plain, count, seed)};
    const Results handedIn = HandIn(plain, count, seed);
    // The second time every result is used again, and the models say more or less.
    for (std::uint64_t turn = 0; turn < 2; ++turn) {
        const RandomCases cases[] = {{batch, choice, count, seed + turn},
                                     {single, choice, count, seed + turn},
                                     {plain, choice, count, seed + turn}};
        const Answers together = test_support::ScoreTogether(batch.model, cases[0].all, results[0]);
        ASSERT_EQ(together, test_support::ScoreOneByOne(single.model, cases[1].all, results[1]));
        ASSERT_EQ(together, test_support::ScoreOneByOne(plain.model, cases[2].all, results[2]));
        if (turn == 0) {
            ASSERT_NO_FATAL_FAILURE(ComparePlain(plain, choice, cases[2].all, handedIn, together, tally));
        }
        tally.Count(together.statuses);
        for (Model* model : {&batch, &single, &plain})
            model->model.SetPredictionOnly(choice.seed % 3 == 0);
    }
}

class SVMModelBatchRandom : public testing::TestWithParam<std::uint64_t> {};

TEST_P(SVMModelBatchRandom, ScoresAsOneByOneAndAsThePlainLoops) {
    Generator random(GetParam());
    Tally tally;
    for (int model = 0; model < 850 && !HasFatalFailure(); ++model) {
        SCOPED_TRACE("model " + std::to_string(model));
        CompareModels(Choice(random), random, tally);
    }
    EXPECT_GE(tally.cases, 70'000u);
    EXPECT_GE(tally.succeeded, tally.cases / 2);
    EXPECT_GE(tally.invalid, 5'000u);
    EXPECT_GE(tally.missing, 5'000u);
    EXPECT_GE(tally.planned, 500u);
    // By three seeds together more than 10,000 of each.
    for (const std::size_t voted : tally.voted)
        EXPECT_GE(voted, 3'500u);
    EXPECT_GE(tally.regressed, 3'500u);
}

INSTANTIATE_TEST_SUITE_P(Seeds, SVMModelBatchRandom, testing::Values(8831, 8832, 8833));

}  // namespace
}  // namespace KwBrevix_930
