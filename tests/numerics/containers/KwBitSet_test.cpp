// Bit sets: setters and counts over every index and range, deliberate lengths, hostile arguments, the dump.
#include "numerics/containers/KwBitSet.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <random>
#include <string>
#include <utility>

#include "tests/numerics/display/DumpCapture.h"

namespace {

using KwMath_930::KwBitSet;

KwBitSet Bits(const std::string& text) {
    std::vector<bool> bits;
    for (const char c : text) {
        bits.push_back(c == '1');
    }
    return KwBitSet(bits);
}

std::string Text(const KwBitSet& set) {
    std::string text;
    for (int i = 0; i < set.Size(); ++i) {
        text += set.IsIn(i) ? '1' : '0';
    }
    return text;
}

std::string RandomText(std::size_t length, unsigned seed) {
    std::mt19937 engine(seed);
    std::string text(length, '0');
    for (char& c : text) {
        c = engine() % 3 == 0 ? '1' : '0';
    }
    return text;
}

TEST(KwBitSet, BeginsEmptyOrFalse) {
    EXPECT_EQ(KwBitSet().Size(), 0);
    EXPECT_EQ(Text(KwBitSet(5)), "00000");
    EXPECT_EQ(KwBitSet(0).Size(), 0);
    EXPECT_EQ(KwBitSet(-5).Size(), 0);
    EXPECT_EQ(KwBitSet(INT_MIN).Size(), 0);
    EXPECT_EQ(Text(KwBitSet(std::vector<bool>{true, false, true})), "101");
}

TEST(KwBitSet, CopiesAreTheirOwn) {
    KwBitSet source = Bits("101");
    const KwBitSet copy(source);
    KwBitSet assigned(7);
    assigned = source;
    source.Negate();
    EXPECT_EQ(Text(copy), "101");
    EXPECT_EQ(Text(assigned), "101");
    const KwBitSet moved(std::move(source));
    EXPECT_EQ(Text(moved), "010");
    assigned = KwBitSet(2);
    EXPECT_EQ(Text(assigned), "00");
}

TEST(KwBitSet, SetChangesOneValidBit) {
    KwBitSet set(5);
    EXPECT_TRUE(set.Set(0, true));
    EXPECT_TRUE(set.Set(4, true));
    EXPECT_EQ(Text(set), "10001");
    EXPECT_TRUE(set.Set(0, false));
    EXPECT_EQ(Text(set), "00001");
    for (const int i : {-1, 5, INT_MIN, INT_MAX}) {
        EXPECT_FALSE(set.Set(i, true)) << i;
    }
    EXPECT_EQ(Text(set), "00001");
}

TEST(KwBitSet, SetOfAllReplacesSizeAndBits) {
    KwBitSet set(5);
    set.Set(std::vector<bool>{true, true, false});
    EXPECT_EQ(Text(set), "110");
}

TEST(KwBitSet, RangesSetExactlyTheirBitsOrNone) {
    for (int lo = -2; lo <= 8; ++lo) {
        for (int hi = -2; hi <= 8; ++hi) {
            KwBitSet set(7);
            const bool isValid = 0 <= lo && lo <= hi && hi < 7;
            EXPECT_EQ(set.SetRange(lo, hi, true), isValid) << lo << " " << hi;
            for (int i = 0; i < 7; ++i) {
                EXPECT_EQ(set.IsIn(i), isValid && lo <= i && i <= hi) << lo << " " << hi;
            }
        }
    }
    KwBitSet set = Bits("11111");
    EXPECT_TRUE(set.SetRange(1, 2, false));
    EXPECT_EQ(Text(set), "10011");
    EXPECT_FALSE(set.SetRange(0, INT_MAX, true));
    EXPECT_FALSE(set.SetRange(INT_MIN, 4, true));
}

TEST(KwBitSet, SubsetIsSetWholeOrNotAtAll) {
    KwBitSet set(5);
    EXPECT_FALSE(set.SetSubset({0, 7}, true));
    EXPECT_EQ(Text(set), "00000");
    EXPECT_FALSE(set.SetSubset({0, -1}, true));
    EXPECT_FALSE(set.SetSubset({INT_MAX}, true));
    EXPECT_EQ(Text(set), "00000");
    EXPECT_TRUE(set.SetSubset({4, 0, 4, 2}, true));
    EXPECT_EQ(Text(set), "10101");
    EXPECT_TRUE(set.SetSubset({0}, false));
    EXPECT_EQ(Text(set), "00101");
    EXPECT_TRUE(set.SetSubset({}, true));
    EXPECT_EQ(Text(set), "00101");
}

TEST(KwBitSet, ResizeSetsOldBitsToo) {
    KwBitSet set(5);
    set.Resize(3, true);
    EXPECT_EQ(Text(set), "111");
    set.Resize(4, false);
    EXPECT_EQ(Text(set), "0000");
    for (const int n : {0, -1, INT_MIN}) {
        set.Resize(2, true);
        set.Resize(n, true);
        EXPECT_EQ(set.Size(), 0) << n;
    }
}

TEST(KwBitSet, ClearKeepsTheSize) {
    KwBitSet set = Bits("10110");
    set.Clear();
    EXPECT_EQ(Text(set), "00000");
}

TEST(KwBitSet, NegateInvertsEveryBit) {
    KwBitSet set = Bits(RandomText(131, 1));
    const KwBitSet before = set;
    set.Negate();
    ASSERT_EQ(set.Size(), 131);
    for (int i = 0; i < 131; ++i) {
        EXPECT_NE(set.IsIn(i), before.IsIn(i));
    }
    EXPECT_EQ(set.InSet() + before.InSet(), 131);
}

TEST(KwBitSet, AppendReturnsTheNewSize) {
    KwBitSet set;
    EXPECT_EQ(set.Append(true), 1);
    EXPECT_EQ(set.Append(false), 2);
    EXPECT_EQ(set.Append(true), 3);
    EXPECT_EQ(Text(set), "101");
}

TEST(KwBitSet, NothingOutsideIsIn) {
    const KwBitSet set = Bits("111");
    for (const int i : {-1, 3, INT_MIN, INT_MAX}) {
        EXPECT_FALSE(set.IsIn(i)) << i;
    }
    EXPECT_FALSE(KwBitSet().IsIn(0));
}

TEST(KwBitSet, CountsAreThoseOfAPlainLoop) {
    const std::string text = RandomText(70, 2);
    const KwBitSet set = Bits(text);
    EXPECT_EQ(set.InSet(), std::count(text.begin(), text.end(), '1'));
    for (int lo = -1; lo <= 71; ++lo) {
        for (int hi = -1; hi <= 71; ++hi) {
            const bool isValid = 0 <= lo && lo <= hi && hi < 70;
            const auto expected = isValid ? std::count(text.begin() + lo, text.begin() + hi + 1, '1') : -1;
            EXPECT_EQ(set.InRange(lo, hi), expected) << lo << " " << hi;
            if (lo >= 0 && hi >= lo - 1) {
                const int count = hi - lo + 1;
                EXPECT_EQ(set.InRangeS(lo, count), count == 0 && lo <= 70 ? 0 : expected) << lo << " " << count;
            }
        }
    }
}

TEST(KwBitSet, RangeByCountTestsItsBoundsBeforeTheCount) {
    const KwBitSet set(5);
    EXPECT_EQ(set.InRangeS(2, 0), 0);
    EXPECT_EQ(set.InRangeS(5, 0), 0);
    EXPECT_EQ(set.InRangeS(6, 0), -1);
    EXPECT_EQ(set.InRangeS(-1, 0), -1);
    EXPECT_EQ(set.InRangeS(0, -1), -1);
    EXPECT_EQ(set.InRangeS(0, 6), -1);
    EXPECT_EQ(set.InRangeS(INT_MAX, INT_MAX), -1);
    EXPECT_EQ(set.InRangeS(INT_MIN, INT_MIN), -1);
    EXPECT_EQ(KwBitSet().InRangeS(0, 0), 0);
    EXPECT_EQ(set.InRange(3, 2), -1);
}

TEST(KwBitSet, NewFalseIsABitThatTheOtherLacks) {
    EXPECT_TRUE(Bits("0110").IsNewFalse(Bits("0100"), 4));
    EXPECT_FALSE(Bits("0110").IsNewFalse(Bits("0100"), 2));
    EXPECT_FALSE(Bits("0110").IsNewFalse(Bits("1111"), 4));
    EXPECT_TRUE(Bits("0110").IsNewFalse(Bits("01"), 4));
    EXPECT_FALSE(Bits("0110").IsNewFalse(Bits("01"), 2));
    EXPECT_TRUE(Bits("0110").IsNewFalse(Bits("0100"), INT_MAX));
    EXPECT_FALSE(Bits("0110").IsNewFalse(Bits("0000"), 0));
    EXPECT_FALSE(Bits("0110").IsNewFalse(Bits("0000"), INT_MIN));
    EXPECT_FALSE(KwBitSet().IsNewFalse(Bits("1"), 5));
}

TEST(KwBitSet, SubsetIsCutToTheSet) {
    KwBitSet set = Bits("10110");
    EXPECT_EQ(Text(set.GetSubset(1, 3)), "011");
    EXPECT_EQ(Text(set.GetSubset(-7, 1)), "10");
    EXPECT_EQ(Text(set.GetSubset(3, 99)), "10");
    EXPECT_EQ(Text(set.GetSubset(INT_MIN, INT_MAX)), "10110");
    EXPECT_EQ(Text(set.GetSubset(3, 2)), "");
    EXPECT_EQ(Text(set.GetSubset(5, 9)), "");
    EXPECT_EQ(Text(set.GetSubset(-9, -1)), "");
    EXPECT_EQ(Text(KwBitSet().GetSubset(0, 0)), "");
    EXPECT_EQ(Text(set), "10110");
}

TEST(KwBitSet, DuplicateAppendsCopies) {
    KwBitSet set = Bits("10");
    EXPECT_TRUE(set.Duplicate(0));
    EXPECT_EQ(Text(set), "10");
    EXPECT_TRUE(set.Duplicate(2));
    EXPECT_EQ(Text(set), "101010");
    EXPECT_FALSE(set.Duplicate(-1));
    EXPECT_FALSE(set.Duplicate(INT_MIN));
    EXPECT_FALSE(set.Duplicate(INT_MAX));
    EXPECT_EQ(Text(set), "101010");
    KwBitSet empty;
    EXPECT_TRUE(empty.Duplicate(INT_MAX));
    EXPECT_EQ(empty.Size(), 0);
}

TEST(KwBitSet, OrAndAndAreAsLongAsTheShorter) {
    KwBitSet set(9);
    set.DoOR(Bits("100"), Bits("00111"));
    EXPECT_EQ(Text(set), "101");
    set.DoOR(Bits("00111"), Bits("100"));
    EXPECT_EQ(Text(set), "101");
    set.DoAND(Bits("0111"), Bits("11"));
    EXPECT_EQ(Text(set), "01");
    set.DoAND(KwBitSet(), Bits("11"));
    EXPECT_EQ(Text(set), "");
}

TEST(KwBitSet, OrAndAndTakeThisSetAsOperand) {
    KwBitSet set = Bits("10010");
    set.DoOR(set, Bits("0110"));
    EXPECT_EQ(Text(set), "1111");
    set.DoAND(Bits("011"), set);
    EXPECT_EQ(Text(set), "011");
}

TEST(KwBitSet, OrderIsLexicographic) {
    const std::vector<std::string> ascending = {"", "0", "00", "01", "010", "1", "10", "11"};
    for (std::size_t i = 0; i < ascending.size(); ++i) {
        for (std::size_t j = 0; j < ascending.size(); ++j) {
            EXPECT_EQ(Bits(ascending[i]) < Bits(ascending[j]), i < j) << ascending[i] << " " << ascending[j];
            EXPECT_EQ(Bits(ascending[i]) == Bits(ascending[j]), i == j) << ascending[i] << " " << ascending[j];
        }
    }
}

TEST(KwBitSet, DumpStandsBetweenStartAndEnd) {
    DumpCapture dump;
    Bits("101").Display();
    EXPECT_EQ(dump.Take(), "\nKwBitSet display start\nfbVec (size = 3) true false true\nKwBitSet display end");
    KwBitSet().Display();
    EXPECT_EQ(dump.Take(), "\nKwBitSet display start\nfbVec (size = 0)\nKwBitSet display end");
}

}  // namespace
