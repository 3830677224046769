// What the layouts of the plan rest on, of doubles as they are.
#include <bit>
#include <cmath>

#include <gtest/gtest.h>

#include "svm/dot_products.h"
#include "tests/svm/plan/random_models.h"

namespace {

using random_models::AreSame;
using random_models::Generator;
using random_models::Numbers;
using random_models::Values;

// Any bits at all, and every eighth time a number from the edges.
double AnyDouble(Generator& random, int number) {
    const auto bits = (static_cast<std::uint64_t>(random.UpTo(0xffffffff)) << 32) | random.UpTo(0xffffffff);
    return number % 8 == 0 ? random.Odd() : std::bit_cast<double>(bits);
}

TEST(PlanFacts, ASumFromPlusZeroOnNeverBecomesMinusZero) {
    Generator random(71);
    for (int round = 0; round < 5000; ++round) {
        double sum = 0.0;
        for (int i = 0; i < 12; ++i) {
            const double number = random.IsTrue(0.3) ? -0.0 : AnyDouble(random, i);
            // Now and then the exact opposite of the sum.
            sum += random.IsTrue(0.2) ? -sum : number;
            ASSERT_FALSE(sum == 0.0 && std::signbit(sum)) << "after adding " << number;
        }
    }
}

TEST(PlanFacts, AddingAZeroOfEitherSignLeavesSuchASumAsItIs) {
    Generator random(72);
    for (int i = 0; i < 20000; ++i) {
        const double sum = 0.0 + AnyDouble(random, i);
        EXPECT_TRUE(AreSame(sum + 0.0, sum));
        EXPECT_TRUE(AreSame(sum + -0.0, sum));
    }
}

TEST(PlanFacts, LessPlusZeroEveryNumberIsItself) {
    Generator random(73);
    for (int i = 0; i < 20000; ++i) {
        const double x = AnyDouble(random, i);
        EXPECT_TRUE(AreSame(x - 0.0, x)) << x;
    }
}

TEST(PlanFacts, ZerosFilledInChangeNoSquaredDistance) {
    Generator random(74);
    for (int round = 0; round < 2000; ++round) {
        const Values x = random.Case(20, Numbers::kOdd);
        Values dense(20);
        random_models::Indices indices(20);
        random_models::Indices present;
        Values values;
        for (std::int32_t p = 0; p < 20; ++p) {
            indices[static_cast<std::size_t>(p)] = p;
            if (random.IsTrue(0.5))
                continue;
            present.push_back(p);
            values.push_back(random.Number(Numbers::kOdd));
            dense[static_cast<std::size_t>(p)] = values.back();
        }
        ASSERT_TRUE(AreSame(KwSVM_700::DenseSquaredDistance(x, dense),
                            KwSVM_700::SparseSquaredDistance(indices, x, present, values)));
    }
}

// Zeros of both signs come of the zeros that are filled in.
TEST(PlanFacts, ZerosFilledInChangeNoDotProductOfFiniteCases) {
    Generator random(75);
    for (int round = 0; round < 2000; ++round) {
        Values x = random.Case(20, Numbers::kOdd);
        for (double& number : x)
            number = std::isfinite(number) ? number : -1.625;
        Values dense(20);
        random_models::Indices indices(20);
        random_models::Indices present;
        Values values;
        for (std::int32_t p = 0; p < 20; ++p) {
            indices[static_cast<std::size_t>(p)] = p;
            if (random.IsTrue(0.5))
                continue;
            present.push_back(p);
            values.push_back(random.Number(Numbers::kOdd));
            dense[static_cast<std::size_t>(p)] = values.back();
        }
        ASSERT_TRUE(
            AreSame(KwSVM_700::DenseDotProduct(x, dense), KwSVM_700::SparseDotProduct(indices, x, present, values)));
    }
}

TEST(PlanFacts, AZeroFilledInMakesNaNOfAnInfiniteCase) {
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_TRUE(std::isnan(KwSVM_700::DenseDotProduct({infinity, 2.5}, {0.0, 1.5})));
    EXPECT_EQ(KwSVM_700::SparseDotProduct({0, 1}, {infinity, 2.5}, {1}, {1.5}), 3.75);
}

TEST(PlanFacts, SumsOfZerosAndOnesAreTheSameInAnyOrder) {
    Generator random(76);
    for (int round = 0; round < 500; ++round) {
        const Values x = random.Case(70, Numbers::kBits);
        const Values y = random.Case(70, Numbers::kBits);
        int differing = 0;
        int common = 0;
        for (std::size_t p = x.size(); p-- > 0;) {
            differing += (x[p] == 1.0) != (y[p] == 1.0) ? 1 : 0;
            common += x[p] == 1.0 && y[p] == 1.0 ? 1 : 0;
        }
        EXPECT_TRUE(AreSame(KwSVM_700::DenseSquaredDistance(x, y), differing));
        EXPECT_TRUE(AreSame(KwSVM_700::DenseDotProduct(x, y), common));
    }
}

}  // namespace
