// The host classes that models know only by name, and the interfaces: made without arguments, deleted through their
// bases.
#include <memory>
#include <type_traits>

#include <gtest/gtest.h>

#include "host/DateTimeValue.h"
#include "host/InlineTable.h"
#include "host/ScoreCaseRecord.h"
#include "host/ScoreClsResult.h"
#include "host/ScoreDictVar.h"
#include "host/ScoreDictionary.h"
#include "host/ScoreEncoder.h"
#include "host/ScoreMissingValueSet.h"
#include "host/ScoreModel.h"
#include "host/ScoreRegResult.h"
#include "host/ScoreValue.h"
#include "host/ScoreValueLabel.h"
#include "host/ScoreValueLabelSet.h"
#include "host/ScoreValueProbabilitySet.h"
#include "host/ScoreVarStats.h"

namespace {

using KwBrevix_930::DateTimeValue;
using KwBrevix_930::InlineTable;
using KwBrevix_930::ScoreCaseRecord;
using KwBrevix_930::ScoreClsResult;
using KwBrevix_930::ScoreDictionary;
using KwBrevix_930::ScoreDictVar;
using KwBrevix_930::ScoreEncoder;
using KwBrevix_930::ScoreMissingValueSet;
using KwBrevix_930::ScoreModel;
using KwBrevix_930::ScoreRegResult;
using KwBrevix_930::ScoreResult;
using KwBrevix_930::ScoreValue;
using KwBrevix_930::ScoreValueLabel;
using KwBrevix_930::ScoreValueLabelSet;
using KwBrevix_930::ScoreValueProbabilitySet;
using KwBrevix_930::ScoreVarStats;

template <typename T>
class HostClass : public testing::Test {};

using HostClasses = testing::Types<ScoreValueLabel, ScoreValueLabelSet, ScoreMissingValueSet, ScoreVarStats,
                                   ScoreValueProbabilitySet, ScoreEncoder, InlineTable>;
TYPED_TEST_SUITE(HostClass, HostClasses);

template <typename Base>
struct Counted : Base {
    explicit Counted(int& count) : fCount(count) {}
    ~Counted() override { ++fCount; }
    int& fCount;
};

TYPED_TEST(HostClass, IsMadeWithoutArgumentsAndDeletedThroughItsBase) {
    static_assert(std::is_default_constructible_v<TypeParam>);
    int count = 0;
    std::unique_ptr<TypeParam> object = std::make_unique<Counted<TypeParam>>(count);
    object.reset();
    EXPECT_EQ(count, 1);
}

template <typename T>
constexpr bool kIsInterface = std::is_abstract_v<T>&& std::has_virtual_destructor_v<T>;

static_assert(kIsInterface<ScoreValue> && kIsInterface<ScoreDictVar> && kIsInterface<ScoreDictionary> &&
              kIsInterface<ScoreCaseRecord> && kIsInterface<ScoreModel> && kIsInterface<ScoreResult> &&
              kIsInterface<ScoreClsResult> && kIsInterface<ScoreRegResult>);
static_assert(std::is_base_of_v<ScoreValue, DateTimeValue> && !std::is_abstract_v<DateTimeValue>);

}  // namespace
