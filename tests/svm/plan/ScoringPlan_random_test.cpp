// The plan against the plain loops, as bits: random models and cases, every kernel, density and version of the loops.
#include <algorithm>

#include <gtest/gtest.h>

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

constexpr std::size_t kCasesOfAModel = 26;
constexpr std::size_t kModels = 400;
static_assert(kCasesOfAModel * kModels >= 10000);

// Every version of the loops, storing in double and, where that may be exact, in single precision.
std::vector<PlanTarget> AllTargets(Numbers numbers) {
    std::vector<PlanTarget> targets;
    const bool mayBeNarrow = numbers == Numbers::kFloats || numbers == Numbers::kBits;
    for (const Loops* const* version = RunnableLoops(); *version; ++version) {
        for (const bool isNarrow : {false, true}) {
            // That other numbers are not stored so is enough to see once.
            if (isNarrow && !mayBeNarrow && version[1])
                continue;
            PlanTarget target;
            target.loops = *version;
            target.cacheShare = isNarrow ? 0 : ~std::size_t{0};
            targets.push_back(target);
        }
    }
    return targets;
}

std::vector<Values> MakeCases(Generator& random, const Shape& shape, std::size_t count) {
    std::vector<Values> cases;
    for (std::size_t i = 0; i < count; ++i) {
        const bool isOdd = shape.numbers == Numbers::kOdd && random.IsTrue(0.5);
        const bool isOther = random.IsTrue(0.1);
        cases.push_back(
            random.Case(shape.columns, isOdd ? Numbers::kOdd : (isOther ? Numbers::kPlain : shape.numbers)));
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

// A batch of the first cases. Beside them stand numbers that are none of theirs.
void CompareBatch(const ScoringPlan& plan, const std::vector<Values>& cases, const std::vector<Values>& expected,
                  std::size_t count) {
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

void CompareModel(const Shape& shape, Generator& random, std::size_t caseCount = kCasesOfAModel) {
    const auto data = random.Model(shape);
    const auto kernel = random_models::MakeKernel(*data);
    const auto cases = MakeCases(random, shape, caseCount);
    std::vector<Values> expected;
    for (const Values& x : cases)
        expected.push_back(random_models::PlainDecisions(*data, *kernel, x));
    const std::size_t count = random.UpTo(cases.size());
    for (const PlanTarget& target : AllTargets(shape.numbers)) {
        SCOPED_TRACE(target.loops->name);
        const auto plan = ScoringPlan::Make(*data, *kernel, shape.columns, target);
        ASSERT_TRUE(plan);
        CompareCases(*plan, cases, expected);
        CompareBatch(*plan, cases, expected, count);
    }
}

// Every kind of numbers, and both orders of indices, in turn.
void CompareModels(std::int32_t kernel, double density) {
    Generator random(static_cast<std::uint64_t>(kernel) * 1000 + static_cast<std::uint64_t>(density * 100.0));
    for (std::size_t model = 0; model < kModels && !testing::Test::HasFailure(); ++model) {
        Shape shape;
        shape.kernel = kernel;
        shape.density = density;
        shape.columns = 1 + random.UpTo(69);
        shape.vectors = random.UpTo(random.IsTrue(0.5) ? 200 : 20);
        shape.machines = 1 + random.UpTo(6);
        shape.numbers = static_cast<Numbers>(model % 4);
        shape.order = model / 4 % 2 == 0 ? Order::kAscending : Order::kIrregular;
        SCOPED_TRACE("model " + std::to_string(model));
        CompareModel(shape, random);
    }
}

// More columns than stay in the first-level cache at a time or on the stack, more support vectors than stay on the
// stack, more cases than are evaluated at a time, as many columns as bits in whole words.
TEST(ScoringPlan, OfWideAndLongModelsHasTheBitsOfThePlainLoops) {
    Generator random(8814);
    for (const std::size_t columns : {64u, 127u, 128u, 129u, 300u, 512u, 640u, 4200u}) {
        for (const std::int32_t kernel : {0, 1, 2, 3}) {
            for (const Numbers numbers : {Numbers::kPlain, Numbers::kFloats, Numbers::kBits, Numbers::kOdd}) {
                const double density = random.IsTrue(0.5) ? 0.7 : 0.05;
                const std::size_t vectors = columns < 100 ? 530 : 20 + random.UpTo(30);
                SCOPED_TRACE(std::to_string(columns) + " columns, kernel " + std::to_string(kernel));
                CompareModel({kernel, columns, vectors, 3, density, numbers, Order::kAscending}, random, 35);
            }
        }
    }
}

class ScoringPlanRandom : public testing::TestWithParam<std::tuple<std::int32_t, double>> {};

TEST_P(ScoringPlanRandom, HasTheBitsOfThePlainLoops) {
    CompareModels(std::get<0>(GetParam()), std::get<1>(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(KernelAndDensity, ScoringPlanRandom,
                         testing::Combine(testing::Values(0, 1, 2, 3), testing::Values(1.0, 0.6, 0.1)));

}  // namespace
}  // namespace KwBrevix_930::plan
