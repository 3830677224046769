// The plan against the plain loops, as bits: random models and cases, every kernel, density and version of the loops.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>
#include <span>
#include <stdexcept>

#include <gtest/gtest.h>

#include "svm/elementary/elementary_kernels.h"
#include "svm/elementary/exact_exp.h"
#include "svm/elementary/exact_pow.h"
#include "svm/plan/ScoringPlan.h"
#include "tests/svm/plan/random_models.h"

namespace KwBrevix_930::plan {
namespace {

using random_models::AreSame;
using random_models::Generator;
using random_models::Numbers;
using random_models::Order;
using random_models::Shape;
using random_models::Values;

constexpr std::size_t kModels = 500;

// What was compared.
struct Tally {
    std::size_t single = 0;
    std::size_t inBatches = 0;
    std::size_t ordinaryNaNs = 0;
    // Decisions of the plain loops for models of odd numbers.
    std::size_t oddDecisions = 0;
    std::size_t oddNumbers = 0;
    std::size_t oddFinite = 0;
};

// exp and pow by the loops that are compiled for the same instructions as a version of the plan's.
struct ElementaryOf {
    explicit ElementaryOf(const Loops& loops) : exp(Find(loops)), pow(Find(loops)) {}

    static const KwSVM_700::ElementaryKernels& Find(const Loops& loops) {
        const auto usable = KwSVM_700::FindElementaryKernels();
        for (std::size_t i = 0; i < usable.count; ++i) {
            if (std::strcmp(usable.versions[i]->name, loops.name) == 0)
                return *usable.versions[i];
        }
        throw std::logic_error(loops.name);
    }

    KwSVM_700::ExactExp exp;
    KwSVM_700::ExactPow pow;
};

const ElementaryOf& GetElementaryOf(const Loops& loops) {
    static std::map<const Loops*, ElementaryOf> made;
    return made.try_emplace(&loops, loops).first->second;
}

// Every version of the loops, with exp and pow of its own, for a cache that holds all vectors and for one that holds
// none: those are stored in single precision where that is exact.
std::vector<PlanTarget> AllTargets(const Shape& shape) {
    std::vector<PlanTarget> targets;
    const bool mayBeNarrow =
        shape.numbers == Numbers::kFloats || shape.numbers == Numbers::kBits || shape.density < 0.2;
    for (const Loops* const* version = RunnableLoops(); *version; ++version) {
        for (const bool isNarrow : {false, true}) {
            // That others are not stored so is enough to see once.
            if (isNarrow && !mayBeNarrow && version[1])
                continue;
            PlanTarget target;
            target.loops = *version;
            target.elementary = {&GetElementaryOf(**version).exp, &GetElementaryOf(**version).pow};
            target.cacheShare = isNarrow ? 0 : ~std::size_t{0};
            targets.push_back(target);
        }
    }
    return targets;
}

std::vector<Values> MakeCases(Generator& random, const Shape& shape, std::size_t count) {
    std::vector<Values> cases;
    for (std::size_t i = 0; i < count; ++i) {
        const bool isOrdinary = random.IsTrue(shape.numbers == Numbers::kOdd ? 0.5 : 0.1);
        cases.push_back(random.Case(shape.columns, isOrdinary ? Numbers::kPlain : shape.numbers));
    }
    return cases;
}

void CompareCases(const ScoringPlan& plan, const std::vector<Values>& cases, const std::vector<Values>& expected) {
    for (std::size_t i = 0; i < cases.size(); ++i) {
        Values decisions(plan.GetMachineCount());
        plan.Decide(cases[i].data(), decisions.data());
        for (std::size_t m = 0; m < decisions.size(); ++m)
            ASSERT_TRUE(AreSame(decisions[m], expected[i][m]))
                << "case " << i << ", machine " << m << ": " << decisions[m] << " for " << expected[i][m];
    }
}

// A batch of some of the cases. Beside them stand numbers that are none of theirs.
void CompareBatch(const ScoringPlan& plan, std::span<const Values> cases, std::span<const Values> expected) {
    const std::size_t count = cases.size();
    const std::size_t stride = count + 3;
    Values values(stride * plan.GetColumnCount(), std::numeric_limits<double>::quiet_NaN());
    for (std::size_t i = 0; i < count; ++i) {
        for (std::size_t p = 0; p < plan.GetColumnCount(); ++p)
            values[stride * p + i] = cases[i][p];
    }
    constexpr double kGuard = -77.625;
    Values decisions(count * plan.GetMachineCount() + 1, kGuard);
    plan.DecideBatch(count, values.data(), stride, decisions.data());
    EXPECT_EQ(decisions.back(), kGuard);
    for (std::size_t i = 0; i < count; ++i) {
        for (std::size_t m = 0; m < plan.GetMachineCount(); ++m) {
            const double decision = decisions[i * plan.GetMachineCount() + m];
            ASSERT_TRUE(AreSame(decision, expected[i][m])) << "case " << i << " of " << count << ", machine " << m
                                                           << ": " << decision << " for " << expected[i][m];
        }
    }
}

// All cases in batches of any size, none of them included.
void CompareBatches(const ScoringPlan& plan, std::span<const Values> cases, std::span<const Values> expected,
                    std::span<const std::size_t> ends) {
    std::size_t first = 0;
    for (const std::size_t end : ends) {
        CompareBatch(plan, cases.subspan(first, end - first), expected.subspan(first, end - first));
        first = end;
    }
}

std::vector<std::size_t> CutAnywhere(Generator& random, std::size_t count) {
    std::vector<std::size_t> ends;
    for (std::size_t end = 0; end < count; ends.push_back(end))
        end += random.UpTo(count - end);
    return ends;
}

void Count(const std::vector<Values>& expected, bool isOdd, Tally& tally) {
    for (const Values& decisions : expected) {
        for (const double decision : decisions) {
            tally.ordinaryNaNs += !isOdd && std::isnan(decision) ? 1 : 0;
            tally.oddDecisions += isOdd ? 1 : 0;
            tally.oddNumbers += isOdd && !std::isnan(decision) ? 1 : 0;
            tally.oddFinite += isOdd && std::isfinite(decision) ? 1 : 0;
        }
    }
}

void CompareModel(const Shape& shape, Generator& random, std::size_t caseCount, Tally& tally) {
    const auto data = random.Model(shape);
    const auto kernel = random_models::MakeKernel(*data);
    const auto cases = MakeCases(random, shape, caseCount);
    std::vector<Values> expected;
    for (const Values& x : cases)
        expected.push_back(random_models::PlainDecisions(*data, *kernel, x));
    Count(expected, shape.numbers == Numbers::kOdd, tally);
    const auto ends = CutAnywhere(random, cases.size());
    for (const PlanTarget& target : AllTargets(shape)) {
        SCOPED_TRACE(target.loops->name);
        const auto plan = ScoringPlan::Make(*data, *kernel, shape.columns, target);
        ASSERT_EQ(plan != nullptr, shape.columns > 0);
        if (!plan)
            return;
        CompareCases(*plan, cases, expected);
        CompareBatches(*plan, cases, expected, ends);
    }
    tally.single += cases.size();
    tally.inBatches += ends.empty() ? 0 : ends.back();
}

// Every kind of numbers, and both orders of indices, in turn.
void CompareModels(std::int32_t kernel, double density, Tally& tally) {
    Generator random(static_cast<std::uint64_t>(kernel) * 1000 + static_cast<std::uint64_t>(density * 100.0));
    for (std::size_t model = 0; model < kModels && !testing::Test::HasFailure(); ++model) {
        Shape shape;
        shape.kernel = kernel;
        shape.density = density;
        shape.columns = random.UpTo(70);
        shape.vectors = random.UpTo(random.IsTrue(0.5) ? 200 : 20);
        shape.machines = 1 + random.UpTo(6);
        shape.numbers = static_cast<Numbers>(model % 4);
        shape.order = model / 4 % 2 == 0 ? Order::kAscending : Order::kIrregular;
        SCOPED_TRACE("model " + std::to_string(model));
        CompareModel(shape, random, model % 16 < 2 ? random.UpTo(200) : 26, tally);
    }
}

// More columns than a stretch has or than stay on the stack, more support vectors than stay on the
// stack, more cases than are evaluated at a time, as many columns as bits in whole words.
TEST(ScoringPlan, OfWideAndLongModelsHasTheBitsOfThePlainLoops) {
    Generator random(8814);
    Tally tally;
    for (const std::size_t columns : {64u, 127u, 128u, 129u, 300u, 512u, 640u, 1984u, 1985u, 4200u}) {
        for (const std::int32_t kernel : {0, 1, 2, 3}) {
            for (const Numbers numbers : {Numbers::kPlain, Numbers::kFloats, Numbers::kBits, Numbers::kOdd}) {
                const double density = random.IsTrue(0.5) ? 0.7 : 0.05;
                const std::size_t vectors = columns < 100 ? 530 : 20 + random.UpTo(30);
                SCOPED_TRACE(std::to_string(columns) + " columns, kernel " + std::to_string(kernel));
                CompareModel({kernel, columns, vectors, 3, density, numbers, Order::kAscending}, random, 35, tally);
            }
        }
    }
}

// So many ones that a byte does not hold how many of them there are in its place.
TEST(ScoringPlan, OfWideVectorsOfOnesCountsAllBits) {
    Generator random(8815);
    for (const std::int32_t kernel : {SVMModelData::kLinear, SVMModelData::kRadialBasis}) {
        const bool isDistance = kernel == SVMModelData::kRadialBasis;
        const Shape shape{kernel, 4200, 18, 2, 1.0, Numbers::kBits};
        const auto data = random.Model(shape);
        data->SetGamma(0.00037);
        for (const auto& [id, vector] : data->GetVectorInstances())
            std::fill(vector->values.begin(), vector->values.end(), 1.0);
        std::vector<Values> cases(11, Values(shape.columns, isDistance ? 0.0 : 1.0));
        std::vector<Values> expected;
        const auto evaluate = random_models::MakeKernel(*data);
        for (const Values& x : cases)
            expected.push_back(random_models::PlainDecisions(*data, *evaluate, x));
        for (const PlanTarget& target : AllTargets(shape)) {
            SCOPED_TRACE(target.loops->name);
            const auto plan = ScoringPlan::Make(*data, *evaluate, shape.columns, target);
            ASSERT_TRUE(plan);
            CompareCases(*plan, cases, expected);
            CompareBatch(*plan, cases, expected);
        }
    }
}

class ScoringPlanRandom : public testing::TestWithParam<std::tuple<std::int32_t, double>> {};

TEST_P(ScoringPlanRandom, HasTheBitsOfThePlainLoops) {
    Tally tally;
    CompareModels(std::get<0>(GetParam()), std::get<1>(GetParam()), tally);
    EXPECT_GE(tally.single, 10'000u);
    EXPECT_GE(tally.inBatches, 10'000u);
    // Any two NaNs are the same: enough other decisions must be left to compare, and some NaNs too.
    EXPECT_EQ(tally.ordinaryNaNs, 0u);
    EXPECT_GT(tally.oddFinite, tally.oddDecisions * 8 / 10);
    EXPECT_GE(tally.oddNumbers, tally.oddFinite);
    EXPECT_LT(tally.oddNumbers, tally.oddDecisions);
}

INSTANTIATE_TEST_SUITE_P(KernelAndDensity, ScoringPlanRandom,
                         testing::Combine(testing::Values(0, 1, 2, 3), testing::Values(1.0, 0.6, 0.1)));

}  // namespace
}  // namespace KwBrevix_930::plan
