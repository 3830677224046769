// What a plan counts as its memory, beside what it has allocated.
#include <gtest/gtest.h>

#include "svm/plan/ScoringPlan.h"
#include "tests/support/failing_new.h"
#include "tests/svm/plan/random_models.h"

namespace KwBrevix_930::plan {
namespace {

using random_models::Generator;
using random_models::Numbers;
using random_models::Order;
using random_models::Shape;

constexpr std::size_t kNoCache = 0;
constexpr std::size_t kMuchCache = ~std::size_t{0};

// A plan that takes a hundredth less than it has allocated is refused, one that takes a hundredth more is made.
void ExpectAllMemoryCounted(const Shape& shape, std::size_t cacheShare) {
    const auto data = Generator(8881).Model(shape);
    const auto kernel = random_models::MakeKernel(*data);
    const auto make = [&](std::size_t largestPlan) {
        return ScoringPlan::Make(*data, *kernel, shape.columns, {.cacheShare = cacheShare, .largestPlan = largestPlan});
    };
    // Once, for what the first plan of a program allocates for all.
    ASSERT_TRUE(make(std::size_t{1} << 30));
    const std::size_t before = failing_new::GetLiveBytes();
    const auto plan = make(std::size_t{1} << 30);
    const std::size_t bytes = failing_new::GetLiveBytes() - before;
    EXPECT_FALSE(make(bytes - bytes / 100)) << bytes;
    EXPECT_TRUE(make(bytes + bytes / 100)) << bytes;
}

TEST(ScoringPlanMemory, OfBlocksIsCounted) {
    ExpectAllMemoryCounted({SVMModelData::kRadialBasis, 40, 203, 3}, kMuchCache);
    ExpectAllMemoryCounted({SVMModelData::kRadialBasis, 40, 203, 3, 0.9, Numbers::kFloats}, kNoCache);
    ExpectAllMemoryCounted({SVMModelData::kPolynomial, 40, 203, 3, 0.9}, kMuchCache);
}

TEST(ScoringPlanMemory, OfListsIsCounted) {
    ExpectAllMemoryCounted({SVMModelData::kLinear, 90, 203, 3, 0.1}, kMuchCache);
}

// With as many sums as there are columns, and more for the ones that meet none.
TEST(ScoringPlanMemory, OfBitsIsCounted) {
    ExpectAllMemoryCounted({SVMModelData::kRadialBasis, 4001, 20, 2, 0.5, Numbers::kBits}, kMuchCache);
    ExpectAllMemoryCounted({SVMModelData::kLinear, 4001, 20, 2, 0.01, Numbers::kBits}, kMuchCache);
    ExpectAllMemoryCounted({SVMModelData::kRadialBasis, 70, 200, 2, 0.9, Numbers::kBits, Order::kIrregular},
                           kMuchCache);
}

TEST(ScoringPlanMemory, OfRowsWithoutAPlaceInBlocksIsCounted) {
    ExpectAllMemoryCounted({SVMModelData::kRadialBasis, 30, 900, 1, 1.0, Numbers::kPlain, Order::kIrregular},
                           kMuchCache);
}

TEST(ScoringPlanMemory, OfManySmallMachinesIsCounted) {
    ExpectAllMemoryCounted({SVMModelData::kRadialBasis, 2, 12, 501}, kMuchCache);
}

}  // namespace
}  // namespace KwBrevix_930::plan
