// Allocations that fail: records report it, keys, bit sets and generators throw and stay as they were; dumps are
// dropped.
#include <gtest/gtest.h>

#include <climits>
#include <new>
#include <vector>

#include "numerics/containers/KwBitSet.h"
#include "numerics/containers/KwHashKey.h"
#include "numerics/containers/Record.h"
#include "numerics/random/KwRandomTwister.h"
#include "tests/numerics/display/DumpCapture.h"
#include "tests/support/failing_new.h"

namespace {

using failing_new::FailAfter;
using KwCommon_930::Record;
using KwMath_930::KwBitSet;
using KwMath_930::KwHashKey;
using KwMath_930::KwRandomTwister;

TEST(RecordAllocation, FailedConstructionIsAnEmptyRecord) {
    const FailAfter failing(0);
    const Record record(7);
    EXPECT_TRUE(failing.Failed());
    EXPECT_EQ(record.Size(), 0);
    EXPECT_EQ(record.GetAll(), nullptr);
}

TEST(RecordAllocation, HostileSizeIsAnEmptyRecord) {
    const Record record(INT_MAX);
    EXPECT_EQ(record.Size(), 0);
    EXPECT_EQ(record.GetAll(), nullptr);
}

TEST(RecordAllocation, FailedCopyIsAnEmptyRecord) {
    Record source(3);
    source[1] = 2.385;
    const FailAfter failing(0);
    const Record copy(source);
    EXPECT_TRUE(failing.Failed());
    EXPECT_EQ(copy.Size(), 0);
    EXPECT_EQ(copy.GetAll(), nullptr);
}

TEST(RecordAllocation, FailedResizeLeavesTheRecord) {
    Record record(2);
    record[1] = 2.385;
    const double* const array = record.GetAll();
    {
        const FailAfter failing(0);
        EXPECT_FALSE(record.Resize(3));
        EXPECT_TRUE(failing.Failed());
    }
    EXPECT_FALSE(record.Resize(INT_MAX));
    EXPECT_EQ(record.Size(), 2);
    EXPECT_EQ(record.GetAll(), array);
    EXPECT_EQ(record[1], 2.385);
}

TEST(RecordAllocation, FailedAssignmentLeavesTheRecord) {
    Record record(2);
    record[1] = 2.385;
    const Record source(3);
    const FailAfter failing(0);
    record = source;
    EXPECT_TRUE(failing.Failed());
    EXPECT_EQ(record.Size(), 2);
    EXPECT_EQ(record[1], 2.385);
}

TEST(RecordAllocation, EqualSizesAndEmptyRecordsAllocateNothing) {
    Record record(3);
    const Record source(3);
    const std::size_t before = failing_new::Count();
    record = source;
    record.Resize(3);
    const Record empty(0);
    const Record copy(empty);
    record = empty;
    record.Resize(-1);
    EXPECT_EQ(failing_new::Count(), before);
}

TEST(RecordAllocation, AssignmentFreesTheOldArrayAfterTheNewOneIsThere) {
    Record record(1);
    const double* const old = record.GetAll();
    record = Record(2);
    EXPECT_NE(record.GetAll(), old);
}

template <class Action>
void ExpectBadAlloc(Action action) {
    bool thrown = false;
    const FailAfter failing(0);
    try {
        action();
    } catch (const std::bad_alloc&) {
        thrown = true;
    }
    EXPECT_TRUE(thrown);
}

TEST(KwHashKeyAllocation, FailureThrowsAndLeavesTheKey) {
    ExpectBadAlloc([] { KwHashKey key(3); });
    KwHashKey longer(3);
    KwHashKey key(2);
    key[1] = 7;
    key.UpdateHashCode();
    const int code = key.GetHashcode();
    ExpectBadAlloc([&] { KwHashKey copy(longer); });
    ExpectBadAlloc([&] { key = longer; });
    EXPECT_EQ(key.GetLength(), 2);
    EXPECT_EQ(key[1], 7);
    EXPECT_EQ(key.GetHashcode(), code);
}

TEST(KwHashKeyAllocation, AssignmentOfEqualLengthAllocatesNothing) {
    KwHashKey key(2);
    const KwHashKey source(2);
    const std::size_t before = failing_new::Count();
    key = source;
    EXPECT_EQ(failing_new::Count(), before);
    key = KwHashKey();
    EXPECT_EQ(failing_new::Count(), before);
}

TEST(KwHashKeyAllocation, DumpThatCannotBeBuiltIsDropped) {
    KwHashKey key(30);
    DumpCapture dump;
    {
        const FailAfter failing(0);
        key.Display();
        EXPECT_TRUE(failing.Failed());
    }
    EXPECT_EQ(dump.Take(), "");
}

TEST(KwBitSetAllocation, FailureThrowsAndLeavesTheSet) {
    KwBitSet set(5);
    set.Set(3, true);
    const KwBitSet before = set;
    const std::vector<bool> longBits(1000, true);
    const KwBitSet longer(longBits);
    ExpectBadAlloc([] { KwBitSet other(1000); });
    ExpectBadAlloc([&] { set = longer; });
    ExpectBadAlloc([&] { set.Set(longBits); });
    ExpectBadAlloc([&] { set.Resize(1000, true); });
    ExpectBadAlloc([&] { set.Duplicate(1000); });
    ExpectBadAlloc([&] { set.DoOR(longer, longer); });
    ExpectBadAlloc([&] { set.DoAND(longer, longer); });
    EXPECT_TRUE(set == before);
    KwBitSet copyOfLonger = longer;
    ExpectBadAlloc([&] { KwBitSet copy(longer); });
    ExpectBadAlloc([&] { copyOfLonger.GetSubset(0, 999); });
    ExpectBadAlloc([&] {
        for (int k = 0; k < 10000; ++k) {
            copyOfLonger.Append(false);
        }
    });
    // What was appended before the failure stays.
    EXPECT_EQ(copyOfLonger.InSet(), 1000);
    EXPECT_LT(copyOfLonger.Size(), 11000);
}

TEST(KwBitSetAllocation, SettersAndCountsAllocateNothing) {
    KwBitSet set(200);
    std::vector<int> listed = {0, 7, 199};
    const std::size_t before = failing_new::Count();
    set.Set(7, true);
    set.SetRange(3, 100, true);
    set.SetSubset(std::move(listed), false);
    set.Negate();
    EXPECT_EQ(set.InSet(), 200 - 98 + 1);
    EXPECT_EQ(set.InRange(0, 199), set.InRangeS(0, 200));
    EXPECT_TRUE(set.Duplicate(0));
    set.Clear();
    EXPECT_EQ(failing_new::Count(), before);
}

TEST(KwRandomTwisterAllocation, FailureThrows) {
    ExpectBadAlloc([] { KwRandomTwister generator; });
    const KwRandomTwister generator;
    ExpectBadAlloc([&] { KwRandomTwister copy(generator); });
}

TEST(KwRandomTwisterAllocation, OnlyConstructionAllocates) {
    KwRandomTwister one;
    KwRandomTwister other;
    const std::size_t before = failing_new::Count();
    std::uint32_t key[] = {1, 2};
    other.InitByArray(key, 2);
    other.Initialize(7);
    one = other;
    EXPECT_EQ(one.GetInteger32(), other.GetInteger32());
    EXPECT_EQ(failing_new::Count(), before);
}

}  // namespace
