// What a merge with a case amounts to, beside the merges of the kernels.
#include <gtest/gtest.h>

#include "svm/dot_products.h"
#include "svm/plan/merged_vector.h"
#include "tests/svm/plan/random_models.h"

namespace KwBrevix_930::plan {
namespace {

using random_models::AreSame;
using random_models::Generator;
using random_models::Indices;
using random_models::Values;

constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();

MergedVector Merge(const Indices& indices, const Values& values, std::size_t columns) {
    SVMVectorInstance vector;
    vector.indices = indices;
    vector.values = values;
    MergedVector merged;
    merged.unmatched = {99.5};
    merged.matched = {{7, 99.5}};
    MergeWithCase(vector, columns, merged);
    return merged;
}

Indices ColumnsOf(const MergedVector& merged) {
    Indices columns;
    for (const MergedVector::Entry& entry : merged.matched)
        columns.push_back(entry.column);
    return columns;
}

TEST(MergeWithCase, MatchesAscendingIndicesAmongTheColumns) {
    const auto merged = Merge({0, 2, 3}, {1.5, 2.5, -3.5}, 5);
    EXPECT_EQ(ColumnsOf(merged), (Indices{0, 2, 3}));
    EXPECT_EQ(merged.matched[2].value, -3.5);
    EXPECT_TRUE(merged.unmatched.empty());
}

TEST(MergeWithCase, LeavesIndicesBeyondTheColumnsAndAllBehindThemUnmatched) {
    const auto merged = Merge({1, 5, 2, kMost}, {1.5, 2.5, 3.5, 4.5}, 5);
    EXPECT_EQ(ColumnsOf(merged), Indices{1});
    EXPECT_EQ(merged.unmatched, (Values{2.5, 3.5, 4.5}));
}

TEST(MergeWithCase, LeavesNegativeRepeatedAndDescendingIndicesUnmatched) {
    const auto merged = Merge({-1, 2, 2, 1, 3, -kMost}, {1.5, 2.5, 3.5, 4.5, 5.5, 6.5}, 5);
    EXPECT_EQ(ColumnsOf(merged), (Indices{2, 3}));
    EXPECT_EQ(merged.unmatched, (Values{1.5, 3.5, 4.5, 6.5}));
}

TEST(MergeWithCase, OfAnEmptyVectorIsEmpty) {
    const auto merged = Merge({}, {}, 5);
    EXPECT_TRUE(merged.matched.empty());
    EXPECT_TRUE(merged.unmatched.empty());
}

// The products of the matched entries are the sparse dot product, whatever the indices.
TEST(MergeWithCase, GivesTheTermsOfTheSparseDotProduct) {
    Generator random(81);
    for (int round = 0; round < 5000; ++round) {
        const std::size_t columns = 1 + random.UpTo(9);
        const Values x = random.Case(columns, random_models::Numbers::kPlain);
        Indices all;
        for (std::size_t p = 0; p < columns; ++p)
            all.push_back(static_cast<std::int32_t>(p));
        Indices indices;
        Values values;
        for (std::size_t k = random.UpTo(12); k > 0; --k) {
            indices.push_back(static_cast<std::int32_t>(random.UpTo(columns + 3)) - 2);
            values.push_back(random.Real(-1.0, 1.0));
        }
        const auto merged = Merge(indices, values, columns);
        double sum = 0.0;
        for (const MergedVector::Entry& entry : merged.matched)
            sum += x[static_cast<std::size_t>(entry.column)] * entry.value;
        ASSERT_TRUE(AreSame(sum, KwSVM_700::SparseDotProduct(all, x, indices, values)));
        EXPECT_EQ(merged.matched.size() + merged.unmatched.size(), indices.size());
    }
}

}  // namespace
}  // namespace KwBrevix_930::plan
