// When there is a plan, and the model that holds it.
#include <atomic>
#include <thread>
#if defined(__SSE__)
#include <xmmintrin.h>
#endif

#include <gtest/gtest.h>

#include "host/CaseRecord.h"
#include "svm/SVMClsResult.h"
#include "svm/elementary/elementary_kernels.h"
#include "svm/elementary/exact_exp.h"
#include "svm/elementary/exact_pow.h"
#include "svm/plan/ScoringPlan.h"
#include "tests/svm/plan/random_models.h"
#include "tests/svm/svm_samples.h"

namespace KwBrevix_930::plan {
namespace {

using random_models::AreSame;
using random_models::Generator;
using random_models::Shape;
using random_models::Values;

std::unique_ptr<SVMModelData> MakeData() {
    return Generator(5).Model({SVMModelData::kRadialBasis, 6, 30, 3});
}

std::unique_ptr<const ScoringPlan> MakePlan(const SVMModelData& data, std::size_t columns = 6,
                                            const PlanTarget& target = {}) {
    // Made for one call alone; the plans of these tests are not asked for decisions.
    return ScoringPlan::Make(data, *random_models::MakeKernel(data), columns, target);
}

ST_SUPPORTVECTORMACHINE& FilledMachine(SVMModelData& data) {
    for (const auto& machine : data.GetMachines()) {
        if (!machine->supportVectors.empty())
            return *machine;
    }
    throw std::logic_error("no machine has vectors");
}

TEST(ScoringPlanSetup, HasADecisionForEachMachineAndANumberForEachColumn) {
    const auto plan = MakePlan(*MakeData());
    ASSERT_TRUE(plan);
    EXPECT_EQ(plan->GetMachineCount(), 3u);
    EXPECT_EQ(plan->GetColumnCount(), 6u);
}

TEST(ScoringPlanSetup, OfARegressionIsForItsFirstMachineAlone) {
    const auto data = MakeData();
    data->SetIsClassification(false);
    data->GetMachines()[2].reset();
    const auto plan = MakePlan(*data);
    ASSERT_TRUE(plan);
    EXPECT_EQ(plan->GetMachineCount(), 1u);
}

TEST(ScoringPlanSetup, NeedsColumns) {
    EXPECT_FALSE(MakePlan(*MakeData(), 0));
}

TEST(ScoringPlanSetup, NeedsMachines) {
    const auto data = MakeData();
    data->GetMachines().clear();
    EXPECT_FALSE(MakePlan(*data));
    data->SetIsClassification(false);
    EXPECT_FALSE(MakePlan(*data));
}

TEST(ScoringPlanSetup, NeedsEveryMachineOfAClassification) {
    const auto data = MakeData();
    data->GetMachines()[2].reset();
    EXPECT_FALSE(MakePlan(*data));
}

TEST(ScoringPlanSetup, NeedsEverySupportVector) {
    const auto data = MakeData();
    FilledMachine(*data).supportVectors.back() = nullptr;
    EXPECT_FALSE(MakePlan(*data));
}

TEST(ScoringPlanSetup, NeedsAsManyCoefficientsAsVectors) {
    const auto data = MakeData();
    FilledMachine(*data).coefficients.push_back(0.5);
    EXPECT_FALSE(MakePlan(*data));
}

TEST(ScoringPlanSetup, NeedsAsManyValuesAsIndices) {
    const auto data = MakeData();
    FilledMachine(*data).supportVectors[0]->values.pop_back();
    EXPECT_FALSE(MakePlan(*data));
}

TEST(ScoringPlanSetup, NeedsAKnownKernel) {
    for (const std::int32_t kernel : {-1, 4}) {
        const auto data = MakeData();
        data->SetKernelType(kernel);
        EXPECT_FALSE(MakePlan(*data)) << kernel;
    }
}

TEST(ScoringPlanSetup, KeepsBelowTheLargestPlan) {
    // 30 vectors take two blocks of 16; the lists of the machines come on top.
    PlanTarget target;
    target.largestPlan = 32 * 6 * sizeof(double);
    EXPECT_FALSE(MakePlan(*MakeData(), 6, target));
    target.largestPlan = std::size_t{8} << 10;
    EXPECT_TRUE(MakePlan(*MakeData(), 6, target));
    EXPECT_FALSE(MakePlan(*MakeData(), 1000, target));
}

TEST(ScoringPlanSetup, DoesNotOverflowOnHugeCountsOfColumns) {
    EXPECT_FALSE(MakePlan(*MakeData(), std::size_t{1} << 31));
    EXPECT_FALSE(MakePlan(*MakeData(), (std::size_t{1} << 31) - 2));
}

TEST(ScoringPlanSetup, StartsItsNumbersAtACacheLine) {
    for (const std::size_t size : {0u, 1u, 7u, 1000u}) {
        const AlignedArray<double> numbers(size);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(numbers.data()) % 64, 0u);
        for (std::size_t i = 0; i < size; ++i)
            EXPECT_EQ(numbers[i], 0.0);
    }
}

#if defined(__SSE__)
// A thread may be set to read denormal numbers as zeros; those of single precision are none in double.
TEST(ScoringPlanSetup, StoresNoDenormalsInSinglePrecision) {
    constexpr unsigned kDenormalsAreZeros = 0x40;
    const auto data = svm_samples::NewClassification(2);
    data->SetKernelType(SVMModelData::kLinear);
    ST_SUPPORTVECTORMACHINE& machine = svm_samples::AddMachine(*data, 0.0, 0, 1);
    svm_samples::AddSupportVector(*data, machine, 1.0, {0, 1}, {double{1e-40F}, double{2e-41F}});
    const auto kernel = random_models::MakeKernel(*data);
    const auto plan = ScoringPlan::Make(*data, *kernel, 2, {.cacheShare = 0});
    ASSERT_TRUE(plan);
    const Values x = {1e40, 3e40};
    double decision = 0.0;
    const unsigned before = _mm_getcsr();
    _mm_setcsr(before | kDenormalsAreZeros);
    plan->Decide(x.data(), &decision);
    _mm_setcsr(before);
    EXPECT_EQ(decision, double{1e-40F} * 1e40 + double{2e-41F} * 3e40);
}
#endif

TEST(ScoringPlanSetup, OfAnEmptyBatchWritesNothing) {
    const auto data = MakeData();
    const auto kernel = random_models::MakeKernel(*data);
    const auto plan = ScoringPlan::Make(*data, *kernel, 6);
    ASSERT_TRUE(plan);
    double decision = -3.25;
    plan->DecideBatch(0, nullptr, 0, &decision);
    EXPECT_EQ(decision, -3.25);
}

int g_expCalls = 0;
int g_powCalls = 0;

void CountedExp(double factor, const double* x, double* y, std::size_t n, KwSVM_700::OpenPlaces& open) {
    ++g_expCalls;
    KwSVM_700::kBaselineElementaryKernels.exp(factor, x, y, n, open);
}

void CountedPow(const double* x, int degree, double* y, std::size_t n, KwSVM_700::OpenPlaces& open) {
    ++g_powCalls;
    KwSVM_700::kBaselineElementaryKernels.pow(x, degree, y, n, open);
}

TEST(ScoringPlanSetup, TakesExpAndPowOfItsTarget) {
    const KwSVM_700::ElementaryKernels counted = {"counted", CountedExp, CountedPow};
    const KwSVM_700::ExactExp exp(counted);
    const KwSVM_700::ExactPow pow(counted);
    // Where the platform multiplies, no loops do it.
    const bool isPowRounded = KwSVM_700::FindPowMethod(counted, 3) == KwSVM_700::PowMethod::kRounded;
    for (const std::int32_t type : {SVMModelData::kPolynomial, SVMModelData::kRadialBasis}) {
        const auto data = Generator(18).Model({type, 6, 30, 1});
        data->SetDegree(3.0);
        const auto kernel = random_models::MakeKernel(*data);
        const auto plan = ScoringPlan::Make(*data, *kernel, 6, {.elementary = {&exp, &pow}});
        ASSERT_TRUE(plan);
        const int expCalls = g_expCalls;
        const int powCalls = g_powCalls;
        const Values x = Generator(19).Case(6, random_models::Numbers::kPlain);
        double decision = 0.0;
        plan->Decide(x.data(), &decision);
        EXPECT_EQ(g_expCalls > expCalls, type == SVMModelData::kRadialBasis);
        EXPECT_EQ(g_powCalls > powCalls, type == SVMModelData::kPolynomial && isPowRounded);
        plan->DecideBatch(1, x.data(), 1, &decision);
        EXPECT_EQ(g_expCalls > expCalls + 1, type == SVMModelData::kRadialBasis);
        EXPECT_EQ(g_powCalls > powCalls + 1, type == SVMModelData::kPolynomial && isPowRounded);
    }
}

TEST(PlanLoops, AreThoseThatThisProcessorRunsSlowestFirst) {
    const Loops* const* version = RunnableLoops();
    ASSERT_TRUE(version[0]);
    EXPECT_STREQ(version[0]->name, "baseline");
    while (version[1])
        ++version;
    EXPECT_EQ(*version, &FastestLoops());
}

// Models that hold a plan.

struct Planned : svm_samples::Bench {
    explicit Planned(std::int32_t kernel = SVMModelData::kRadialBasis) : Bench({"a", "b", "c"}) {
        for (const char* name : {"p", "q", "r", "s", "t", "u"})
            AddVar(name);
        TakeData(MakeClassification(kernel, 3));
    }

    static std::unique_ptr<SVMModelData> MakeClassification(std::int32_t kernel, std::size_t machines) {
        auto data = Generator(17).Model({kernel, 6, 40, machines, 0.8});
        data->SetTargetCategoryCount(3);
        data->SetIsOneAgainstAll(false);
        for (std::size_t m = 0; m < machines; ++m) {
            data->GetMachines()[m]->targetCategoryIndex = m == 2 ? 1 : 0;
            data->GetMachines()[m]->alternateTargetCategoryIndex = m == 0 ? 1 : 2;
            svm_samples::AddExtension(*data->GetMachines()[m], m == 2 ? 1 : 0, m == 0 ? 1 : 2, -1.25, 0.375);
        }
        data->SetIsZarnModel(true);
        for (const char* name : {"p", "q", "r", "s", "t", "u"})
            svm_samples::AddNumericColumn(*data, name);
        return data;
    }
};

TEST(ModelWithPlan, HasItFromTheHandOverOfItsDataOn) {
    Planned bench;
    ASSERT_TRUE(bench.access.Plan());
    EXPECT_EQ(bench.access.Plan()->GetMachineCount(), 3u);
    EXPECT_EQ(bench.access.Plan()->GetColumnCount(), 6u);
}

TEST(ModelWithPlan, BuildsItAnewForOtherData) {
    Planned bench;
    bench.TakeData(Planned::MakeClassification(SVMModelData::kLinear, 2));
    ASSERT_TRUE(bench.access.Plan());
    EXPECT_EQ(bench.access.Plan()->GetMachineCount(), 2u);
}

TEST(ModelWithPlan, DropsItWithTheDataThatItWasMadeFor) {
    Planned bench;
    bench.TakeData(svm_samples::NewClassification(3));
    EXPECT_FALSE(bench.access.Plan());
}

TEST(ModelWithPlan, DropsItWithTheKernelThatItWasMadeFor) {
    Planned bench;
    bench.access.SetUpKernel(bench.access.Data());
    EXPECT_FALSE(bench.access.Plan());
}

TEST(ModelWithPlan, HasNoneForDataThatHasNone) {
    Planned bench;
    auto data = Planned::MakeClassification(SVMModelData::kLinear, 3);
    data->GetMachines()[1].reset();
    bench.TakeData(std::move(data));
    EXPECT_FALSE(bench.access.Plan());
}

TEST(ModelWithPlan, HasNoneWithoutADictionary) {
    SVMModel model;
    model.SetSupportVectorMachineModel(Planned::MakeClassification(SVMModelData::kLinear, 3).release());
    EXPECT_FALSE(SVMModelTestAccess(model).Plan());
}

// The probabilities of a case by GetScore, and by the plain loops and the same voting.
void ExpectPlainAnswer(Planned& bench, const CaseRecord& record, const Values& x, bool isPlanned) {
    EXPECT_EQ(bench.access.Plan() != nullptr, isPlanned);
    ScoreResult* filled = nullptr;
    ASSERT_FALSE(bench.model.GetScore(&record, filled, false).IsError());
    const std::unique_ptr<ScoreResult> result(filled);
    Values decisions(bench.access.Data()->GetMachines().size());
    for (std::size_t m = 0; m < decisions.size(); ++m)
        bench.access.ScoreByKernel({0, 1, 2, 3, 4, 5}, x, static_cast<std::int32_t>(m), decisions[m]);
    SVMModelTestAccess::Vote vote;
    ASSERT_FALSE(bench.access.DoVoting(decisions, vote).IsError());
    const auto& percents = dynamic_cast<const SVMClsResult&>(*result).GetAllValuePercent();
    ASSERT_EQ(percents.size(), 3u);
    for (std::size_t c = 0; c < percents.size(); ++c)
        EXPECT_TRUE(AreSame(percents[c].second, vote.probabilities[c]));
}

TEST(ModelWithPlan, ScoresWithTheBitsOfThePlainLoops) {
    Generator random(29);
    for (const std::int32_t kernel : {0, 1, 2, 3}) {
        Planned bench(kernel);
        CaseRecord record(bench.dictionary);
        for (int i = 0; i < 100; ++i) {
            const Values x = random.Case(6, random_models::Numbers::kPlain);
            for (std::size_t p = 0; p < x.size(); ++p)
                record.SetNumber(record.GetIndex(std::string(1, static_cast<char>('p' + p))), x[p]);
            ExpectPlainAnswer(bench, record, x, true);
        }
    }
}

TEST(ModelWithPlan, ScoresByThePlainLoopsWhenItDoesNotFitTheMachines) {
    Planned bench;
    bench.access.Data()->GetMachines().push_back(nullptr);
    bench.access.Data()->GetMachines()[0]->bias += 2.625;
    CaseRecord record(bench.dictionary);
    for (const char* name : {"p", "q", "r", "s", "t", "u"})
        record.SetNumber(record.GetIndex(name), 0.625);
    ExpectPlainAnswer(bench, record, Values(6, 0.625), true);
}

// Threads.

TEST(ScoringPlanThreads, GiveEqualDecisions) {
    constexpr std::size_t kThreads = 8;
    constexpr std::size_t kCases = 203;
    const auto data = Generator(31).Model({SVMModelData::kRadialBasis, 9, 60, 5, 0.8});
    const auto kernel = random_models::MakeKernel(*data);
    const auto plan = ScoringPlan::Make(*data, *kernel, 9);
    ASSERT_TRUE(plan);
    Generator random(32);
    const Values columns = random.Case(9 * kCases, random_models::Numbers::kPlain);
    Values expected;
    for (std::size_t i = 0; i < kCases; ++i) {
        Values x(9);
        for (std::size_t p = 0; p < 9; ++p)
            x[p] = columns[p * kCases + i];
        for (const double decision : random_models::PlainDecisions(*data, *kernel, x))
            expected.push_back(decision);
    }
    std::atomic<int> differences{0};
    std::vector<std::thread> threads;
    for (std::size_t thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&, thread] {
            for (std::size_t round = 0; round < 20; ++round) {
                const std::size_t first = (thread * 23 + round) % 100;
                Values decisions(5 * (kCases - first));
                plan->DecideBatch(kCases - first, columns.data() + first, kCases, decisions.data());
                for (std::size_t i = 0; i < decisions.size(); ++i)
                    differences += AreSame(decisions[i], expected[5 * first + i]) ? 0 : 1;
                Values x(9);
                for (std::size_t p = 0; p < 9; ++p)
                    x[p] = columns[p * kCases + first];
                plan->Decide(x.data(), decisions.data());
                for (std::size_t m = 0; m < 5; ++m)
                    differences += AreSame(decisions[m], expected[5 * first + m]) ? 0 : 1;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(differences, 0);
}

}  // namespace
}  // namespace KwBrevix_930::plan
